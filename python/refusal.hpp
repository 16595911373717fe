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

/// Why parsing answered that code: a Refusal of the text if that is why.
[[noreturn]] void raise_unparsed(const Type &type, int code, PyObject *text, PyObject *mode);

/// Makes the class.
Ref new_refusal_class(PyObject *module);

} // namespace bgpdt::python
