// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The classes of values: what Python sees of them.
#pragma once

#include "state.hpp"

namespace bgpdt::python {

/// Makes the class of all values, and that of a type.
Ref new_value_class(PyObject *module);
Ref new_class(PyObject *module, Type &type);

} // namespace bgpdt::python
