// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What --value says of the values that fill a line template.
#pragma once

#include <string>
#include <string_view>

#include "toolkit/display_record.hpp"

namespace bgpdt::tool {

/// The words that name a kind, separated by commas.
std::string display_kind_names();

/// Reads "KIND=VALUE".
/// @throws UsageError if there is no such kind, Refusal if the value is none of it
toolkit::DisplayValue read_display_value(std::string_view argument);

} // namespace bgpdt::tool
