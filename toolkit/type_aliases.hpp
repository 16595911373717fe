// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What people call the types that have other names.
#pragma once

#include <string>
#include <string_view>

namespace bgpdt::toolkit {

/// The name of the type that the word is usual for, whatever its case, "_" or blanks for "-"; empty if it is for none.
std::string type_of_alias(std::string_view word);

} // namespace bgpdt::toolkit
