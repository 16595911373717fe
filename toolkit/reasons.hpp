// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The words for what is wrong in one place of a text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "text_pieces.hpp"

namespace bgpdt::toolkit {

/// Quoted, or nothing but "what stands here" for a long piece.
std::string named(std::string_view piece);
/// "A", "A or B", "A, B or C"
std::string listed(const Texts &words, const std::string &conjunction);
/// What single characters have in common: "a digit".
std::string described(const std::string &characters);

std::string cannot_stand(std::string_view piece);
std::string cannot_stand(std::string_view piece, const std::string &what_can);
std::string exceeds(const std::string &number, std::uint64_t limit);

} // namespace bgpdt::toolkit
