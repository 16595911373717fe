// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a value holds: fields by their names, script tables, explanations.
#pragma once

#include <string_view>

#include "value.hpp"

namespace bgpdt::python {

/// A function of the library that gives JSON of a value.
using JsonFunction = decltype(bgpdt_table);

/// What it gives, as Python has it.
Ref loaded(Value &value, JsonFunction *function);
/// How other BGP speakers read a text.
Ref dialects_of(const Type &type, PyObject *text);
/// The value that a script table says.
Ref from_table(const Type &type, PyObject *table);

/// All fields of the value, by name.
Ref fields_of(Value &value);
/// What one says; none, without an error, if this value has not got it.
Ref field_of(Value &value, std::string_view name);
/// @throws Raised: KeyError
Ref field_named(Value &value, PyObject *name);
/// What a field says: a number, or a text.
Ref content_of(const bgpdt_named_field &field);

/// The attributes of the type's class, a getter for each; and those that every value of the type has.
void add_attributes(Type &type);
Ref match_arguments(const Type &type);

} // namespace bgpdt::python
