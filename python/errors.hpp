// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What goes wrong in the library, as exceptions of Python's.
#pragma once

#include "bgpdt/bgpdt.hpp"
#include "state.hpp"

namespace bgpdt::python {

/// The class for a code that a function of the library answered.
PyObject *exception_for(const State &state, int code);

/// An error that a function of the library may give.
class Error : public bgpdt::Error {
public:
    /// As an exception, Refusal if it is one.
    [[noreturn]] void raise(const State &state) const;
};

} // namespace bgpdt::python
