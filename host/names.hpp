// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The names behind the name-index types.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace bgpdt::host {

/// A one-to-one mapping between indexes and names.
class Names {
public:
    static constexpr std::size_t max_length = 255; ///< with its NUL a name fits any text block

    Names() = default;
    /// Reads lines of "INDEX NAME".
    /// @throws HostError with file and line
    explicit Names(const std::filesystem::path &file);

    std::optional<std::uint32_t> index_of(std::string_view name) const;
    /// Null for an index without a name.
    const std::string *name_of(std::uint32_t index) const;

private:
    void add_line(std::string_view line);
    void add(std::uint32_t index, std::string_view name);

    std::unordered_map<std::uint32_t, std::string> names_;
    std::map<std::string, std::uint32_t, std::less<>> indexes_;
};

} // namespace bgpdt::host
