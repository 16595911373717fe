// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fills the line template's pieces with the values behind it: that makes the label.
#pragma once

#include "attr/record_reader.hpp"

namespace bgpdt::attr {

/// Prints the value into the template's next piece, and takes that off the template.
///
/// @param position    where the piece goes, with room for `limit` characters with their NUL
/// @param characters  told how many it has; left alone if that is none
u32 fill_piece(u32 handle, const Entry &value, char *line_template, char *position, u32 limit, u32 &characters);

} // namespace bgpdt::attr
