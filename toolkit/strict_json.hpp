// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// JSON as it is read: of few levels, lest what walks over it runs out of stack, and with no member twice.
#pragma once

#include <optional>
#include <string_view>

#include <nlohmann/json_fwd.hpp>

namespace bgpdt::toolkit {

/// Nothing if the text is no JSON.
/// @throws Refusal if it is nested too deeply or tells a member twice
std::optional<nlohmann::ordered_json> read_json(std::string_view text);

} // namespace bgpdt::toolkit
