// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the bytes of one field say: in numbers, as people read them, and what they stand for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
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

/// The fields of an entry of the layout, in the order of their bytes: of those that share bytes the first, without those
/// beyond so many bytes, and without what scripts alone know, which has no bytes.
std::vector<const Field *> fields_in_order(const Layout &layout, std::size_t size);

/// The only field of a value without fields: a number if it is as long as one, else octets, all there are.
Field whole_field(const SYSDT_Record &type);

/// Reads the fields of one value.
class FieldReader {
public:
    using Value = std::span<const std::uint8_t>;

    /// A value without fields.
    explicit FieldReader(Value bytes) : value(bytes) {}
    /// @param kind  the sub-kind's name, which outlives the reader
    FieldReader(Value bytes, std::string_view kind, const Layout &layout);

    FieldValue read(const Field &field, Value bytes) const;

    // Parts of that.
    std::string meaning(const Field &field, Value bytes) const;
    /// Of a field without pieces into a cleared value of its name: what its number stands for, else what is shown, and the
    /// number if that is one.
    void read(const Field &field, Value bytes, NamedValue &into) const;

    /// How many entries of the layout's list are told, which are not like all behind them; or hold nothing.
    struct Entries {
        std::size_t told;
        bool empty; ///< those behind them
    };
    Entries entries(const Layout &layout) const;

    const Value value;

private:
    std::optional<std::string_view> word(const Field &field, Value bytes) const;
    std::string shown(const Field &field, Value bytes) const;
    void append_shown(std::string &out, const Field &field, Value bytes) const;
    bool is_empty(const Layout &layout, std::size_t entry) const;

    std::string_view kind_;
    std::uint64_t protocol_ = 0; ///< of a BGP-LS key
};

/// Whether the field's values are made of more than one piece.
bool has_pieces(const Field &field);
/// Those pieces; none of any other field.
void add_pieces(const Field &field, std::span<const std::uint8_t> bytes, const AddNamed &add);

/// In hexadecimal; a long row of zeros at the end is cut.
std::string octets_text(std::span<const std::uint8_t> bytes);
/// Hexadecimal digits, so many bytes joined by a separator.
std::string grouped(std::span<const std::uint8_t> bytes, std::size_t group, char separator);

/// Longer rows of equal bytes are counted.
inline constexpr std::size_t longest_row = 8;

} // namespace bgpdt::toolkit
