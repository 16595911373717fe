// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the bytes of one field say: in numbers, as people read them, and what they stand for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bytes.hpp"
#include "named_value.hpp"

namespace bgpdt::toolkit {

struct FieldValue {
    std::string meaning; ///< what its number stands for, else how it is read
    std::string shown;
    std::vector<std::uint64_t> numbers = {};
    bool in_words = false; ///< the meaning says what its number stands for
    std::vector<NamedValue> pieces = {};
};

/// What is said of an entry of a list that holds nothing.
inline constexpr std::string_view unused_entry = "unused entry";

/// Reads the fields of one value.
class FieldReader {
public:
    using Value = std::span<const std::uint8_t>;

    /// A value without fields.
    explicit FieldReader(Value bytes) : value(bytes) {}
    /// @param kind  the sub-kind's name
    FieldReader(Value bytes, std::string kind, const Layout &layout);

    FieldValue read(const Field &field, Value bytes) const;

    const Value value;

private:
    std::string meaning(const Field &field, Value bytes, std::span<const std::uint64_t> numbers) const;
    std::string shown(const Field &field, Value bytes, std::span<const std::uint64_t> numbers) const;

    std::string kind_;
    std::uint64_t protocol_ = 0; ///< of a BGP-LS key
};

/// In hexadecimal; a long row of zeros at the end is cut.
std::string octets_text(std::span<const std::uint8_t> bytes);
/// Hexadecimal digits, so many bytes joined by a separator.
std::string grouped(std::span<const std::uint8_t> bytes, std::size_t group, char separator);

/// Longer rows of equal bytes are counted.
inline constexpr std::size_t longest_row = 8;

} // namespace bgpdt::toolkit
