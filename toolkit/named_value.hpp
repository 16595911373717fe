// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What has a name in a value.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace bgpdt::toolkit {

/// A field, or what is split off one, by its name.
struct NamedValue {
    std::string name;
    std::string text;
    std::optional<std::uint64_t> number =
        {}; ///< of a field that is one and stands for nothing else; the text is it in decimal
};

/// Gives a cleared value of the name, for the caller to fill.
using AddNamed = std::function<NamedValue &(std::string_view name)>;

} // namespace bgpdt::toolkit
