// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Digits in the order of their values.
#pragma once

#include <string_view>

namespace bgpdt::toolkit {

inline constexpr std::string_view digits = "0123456789";
inline constexpr std::string_view hex_digits = "0123456789abcdef";

} // namespace bgpdt::toolkit
