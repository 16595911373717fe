// SPDX-License-Identifier: Apache-2.0
/// @file
/// Values: immutable, of the class of their type, which is a bgpdt.Value.
#pragma once

#include <cstdint>
#include <span>

#include "state.hpp"

namespace bgpdt::python {

/// An object: its bytes, numbers in the target's order, stand behind it.
struct Value {
    PyObject_VAR_HEAD Type *type;

    std::uint8_t *data() { return reinterpret_cast<std::uint8_t *>(this + 1); }
    std::span<const std::uint8_t> bytes() { return {data(), type->size}; }
};

/// A value whose bytes are still to be written.
Ref new_value(const Type &type);
inline Value &value_in(PyObject *object) { return *reinterpret_cast<Value *>(object); }

/// The value of a text.
Ref parsed(Type &type, PyObject *text, PyObject *mode);
/// The value of bytes in the byte order, null is "big".
Ref from_bytes(const Type &type, PyObject *bytes, PyObject *byte_order);
/// The value of bytes that a column holds.
Ref value_of(const Type &type, const std::uint8_t *bytes);
/// As the type prints it, text or bytes; none, without an error, if it refuses to.
Ref printed(Value &value, const bgpdt_type *type);

/// Makes the class of all values, and that of a type.
Ref new_value_class(PyObject *module);
Ref new_class(PyObject *module, Type &type);

} // namespace bgpdt::python
