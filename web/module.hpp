// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The front for JavaScript, libbgpdt behind functions that WebAssembly can export: JavaScript writes what a call is
/// given into room that it asks for, and reads what is answered. A negative code is answered with JSON of the
/// bgpdt_error. Values are in the target's byte order; of two they stand one behind the other.
#pragma once

#include <cstddef>

#include "bgpdt/bgpdt.h"

extern "C" {

/// Room for what the next call is given.
char *bgpdt_web_given(std::size_t size);
/// What the last call answered, if it answered more than a code.
const char *bgpdt_web_answered();
std::size_t bgpdt_web_answered_size();

/// Before all others.
int bgpdt_web_open();
/// All types in the order of their registration, as the tool describes them.
int bgpdt_web_types();
/// The type of the number in a mode of conversion, in its usual one for a negative mode; null beyond the last.
const bgpdt_type *bgpdt_web_type(std::size_t index, int mode);
/// The number of the type that has the given name, or that people call so.
int bgpdt_web_find();
/// The names of the types that take the given text, the likeliest first.
int bgpdt_web_guess();

int bgpdt_web_parse(const bgpdt_type *type);
/// As parse, without a reason.
int bgpdt_web_try_parse(const bgpdt_type *type);
int bgpdt_web_why(const bgpdt_type *type);
int bgpdt_web_print(const bgpdt_type *type);
int bgpdt_web_check(const bgpdt_type *type);
int bgpdt_web_swap(const bgpdt_type *type);
int bgpdt_web_from_hex(const bgpdt_type *type);
/// The value with its numbers in little-endian order, which WebAssembly has.
int bgpdt_web_to_native(const bgpdt_type *type);
/// The router's order of two values: answers 1, 2 or 3 for -1, 0 or 1.
int bgpdt_web_compare(const bgpdt_type *type);
/// The order in which they are sorted, likewise.
int bgpdt_web_order(const bgpdt_type *type);

int bgpdt_web_explain(const bgpdt_type *type);
int bgpdt_web_fields(const bgpdt_type *type);
/// The fields in which two values differ.
int bgpdt_web_differences(const bgpdt_type *type);
int bgpdt_web_table(const bgpdt_type *type);
/// The script table as Lua writes it.
int bgpdt_web_lua(const bgpdt_type *type);
int bgpdt_web_read_table(const bgpdt_type *type);
}
