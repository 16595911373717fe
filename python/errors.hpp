// SPDX-License-Identifier: Apache-2.0
/// @file
/// What goes wrong in the library, as exceptions of Python's.
#pragma once

#include "state.hpp"

namespace bgpdt::python {

/// The class for a code that a function of the library answered.
PyObject *exception_for(const State &state, int code);

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

} // namespace bgpdt::python
