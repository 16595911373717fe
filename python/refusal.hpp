// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the library refuses, as exceptions.
///
/// bgpdt.Refusal is a ValueError. That of a text keeps the type, the text and the mode, and asks for the reason, which
/// takes a millisecond, when somebody wants to know it; that of anything else has a sentence.
#pragma once

#include "errors.hpp"

namespace bgpdt::python {

/// A Refusal of the text.
Ref refusal_of(const Type &type, PyObject *text, PyObject *mode);

/// Sets the interpreter's error for the code that parsing answered, a Refusal of the text if that is why. Gives none: to
/// throw would cost ten times as much.
Ref refused(const Type &type, int code, PyObject *text, PyObject *mode);

/// Makes the class.
Ref new_refusal_class(PyObject *module);

} // namespace bgpdt::python
