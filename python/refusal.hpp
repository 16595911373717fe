// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the library refuses, as exceptions.
///
/// bgpdt.Refusal is a ValueError. That of a text keeps the type, the text and the mode, and asks for the reason, which
/// takes a millisecond, when somebody wants to know it; that of anything else has a sentence.
#pragma once

#include "state.hpp"

namespace bgpdt::python {

/// An error that a function of the library may give.
class Error {
public:
    Error() = default;
    ~Error() { bgpdt_error_free(error_); }
    Error(const Error &) = delete;
    Error &operator=(const Error &) = delete;

    bgpdt_error **out() { return &error_; }
    const bgpdt_error *operator->() const { return error_; }
    /// As an exception, Refusal if it is one.
    [[noreturn]] void raise(const State &state) const;

private:
    bgpdt_error *error_ = nullptr;
};

/// A Refusal of the text.
Ref refusal_of(const Type &type, PyObject *text, PyObject *mode);

/// Why parsing answered that code: a Refusal of the text if that is why.
[[noreturn]] void raise_unparsed(const Type &type, int code, PyObject *text, PyObject *mode);

/// Makes the class.
Ref new_refusal_class(PyObject *module);

} // namespace bgpdt::python
