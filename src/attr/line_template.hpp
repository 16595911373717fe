// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Pieces of a line template: text with at most one conversion, written as printf's. The host supplies them, so nothing
/// about them is certain.
#pragma once

#include "common/writer.hpp"

namespace bgpdt {

/// What fills a piece.
struct PieceValue {
    bool is_text;
    u32 number;
    std::string_view text;
};

/// Prints the value by the piece, as snprintf would: d i u o x X, alone or with h or hh, for a number, s for a text,
/// with flags, width and precision in digits; flags that mean nothing to a conversion have no effect. A piece without
/// conversion is printed as it is.
///
/// @return whether the conversion fits the value; nothing is written if it does not
bool print_piece(const char *piece, const PieceValue &value, Writer &out);

} // namespace bgpdt
