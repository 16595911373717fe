// SPDX-FileCopyrightText: 2026 The bgpdt authors
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
/// Whether an argument asks for numbers in the machine's order; null is "big", the target's.
/// @throws Raised: ValueError for an order that is neither
bool is_native(PyObject *byte_order);
/// As the type prints it, text or bytes; none, without an error, if it refuses to.
Ref printed(Value &value, const bgpdt_type *type);

} // namespace bgpdt::python
