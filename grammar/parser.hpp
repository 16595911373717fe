// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The plug-in's parser of a type or kind, asked by text.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/host.hpp"

namespace bgpdt::grammar {

class Parser {
public:
    /// @param name  of a type, or "TYPE KIND"
    Parser(const host::Host &host, const std::string &name);

    /// Whether the type, or the kind's row, takes the text; of a kind if the value is of that kind.
    bool takes(std::string_view text);
    /// The value of the text that was taken last, until the next is asked for.
    std::span<const std::uint8_t> value() const { return value_; }
    /// How many bytes a value has, and the number of the kind, which stands in front of all values of one.
    std::size_t value_size() const;
    std::optional<std::uint32_t> kind() const { return row_.kind; }
    bool prints() const { return row_.record.formatOut != nullptr; }
    /// As what the value of the text that was taken last prints.
    std::string_view printed() { return printed(value_); }
    /// Empty if the value does not print, and if what is told to be its text is NULs.
    std::string_view printed(std::span<const std::uint8_t> value);

private:
    struct Row {
        SYSDT_Record record;
        std::optional<std::uint32_t> kind;
    };
    static Row row_of(const host::Host &host, const std::string &name);

    const Row row_;
    host::Converter reader_;
    host::Converter writer_;
    std::vector<char> text_;
    std::span<const std::uint8_t> value_;
};

} // namespace bgpdt::grammar
