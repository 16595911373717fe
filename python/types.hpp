// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Finds types, as arguments name them.
#pragma once

#include "state.hpp"

namespace bgpdt::python {

/// The type of a class, or of a name in any case.
/// @throws Raised: TypeError, or KeyError with names like it
Type &type_of(State &state, PyObject *object);

/// The type in the mode that an argument tells; null or None is the usual one.
const bgpdt_type *in_mode(const Type &type, PyObject *mode);

} // namespace bgpdt::python
