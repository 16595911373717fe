// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Cuts a text's groups in brackets where they stand, and hands each to the first row of a pattern table whose keyword
/// it begins with. It knows no group: what the keywords mean is told in text.cpp.
#pragma once

#include <array>
#include <cstring>
#include <string_view>
#include <utility>

#include "bgp_datatype/bgp_datatype.h"
#include "common/bytes.hpp"
#include "common/cut.hpp"
#include "common/types.hpp"

namespace bgpdt::bgpls {

/// A place in a text.
struct Cursor {
    char *at;
    const char *end; ///< the text's NUL
};

/// Whether so many characters are equal, at least one chunk.
template <class Chunk>
bool equal_chunks(const char *first, const char *second, std::size_t size)
{
    const std::size_t last = size - sizeof(Chunk);
    for (std::size_t i = 0; i < last; i += sizeof(Chunk))
        if (load<Chunk>(first + i) != load<Chunk>(second + i))
            return false;
    return load<Chunk>(first + last) == load<Chunk>(second + last);
}

/// Whether so many characters, two or more, are equal. Keywords are short: a call would cost more than its work.
inline bool equal(const char *first, const char *second, std::size_t size)
{
    return size >= sizeof(u64)   ? equal_chunks<u64>(first, second, size)
           : size >= sizeof(u32) ? equal_chunks<u32>(first, second, size)
                                 : equal_chunks<u16>(first, second, size);
}

/// Tells a pattern table's rows by the first two characters of their keywords. Rows without a handler are left out:
/// what is not found is refused all the same.
class Index {
public:
    template <std::size_t Rows>
    explicit consteval Index(const LsPrefixPattern (&rows)[Rows])
    {
        static_assert(Rows <= most_rows);
        first_.fill(none);
        for (std::size_t i = Rows; i-- != 0;) { // backwards: each chain is in the table's order
            if (rows[i].handler == nullptr)
                continue;
            length_[i] = static_cast<u8>(std::string_view(rows[i].keyword).size());
            next_[i] = std::exchange(first_[slot(rows[i].keyword)], static_cast<u8>(i));
        }
    }

    /// The first row for the group behind the cursor, which moves behind the keyword; null if there is none.
    const LsPrefixPattern *find(Cursor &text, const LsPrefixPattern *rows) const
    {
        if (*text.at == '\0')
            return nullptr;
        for (u32 i = first_[slot(text.at)]; i != none; i = next_[i]) {
            const LsPrefixPattern &row = rows[i];
            const std::ptrdiff_t length = length_[i];
            if (text.end - text.at >= length && equal(text.at, row.keyword, static_cast<std::size_t>(length)) &&
                (row.exact == 0 || text.at[length] == ']')) {
                text.at += length;
                return &row;
            }
        }
        return nullptr;
    }

private:
    static constexpr std::size_t most_rows = 24;
    static constexpr u8 none = UINT8_MAX;

    /// Different for all beginnings in one table.
    static constexpr u32 slot(const char *keyword)
    {
        return (u32{3} * static_cast<u8>(keyword[0]) + u32{4} * static_cast<u8>(keyword[1])) % 64;
    }

    std::array<u8, 64> first_{};
    std::array<u8, most_rows> next_{};
    std::array<u8, most_rows> length_{};
};

template <const auto &rows>
inline constexpr Index index_of{rows};

/// A pattern table that is searched by its index.
struct Patterns {
    const LsPrefixPattern *rows;
    const Index *index; ///< apart from the rows' address, so that it needs no relocation
};

template <const auto &rows>
constexpr Patterns patterns()
{
    return {rows, &index_of<rows>};
}

/// The bracket that closes the one ahead of the text; null if there is none.
template <class Char>
Char *closing_bracket(Char *text)
{
    static constexpr auto is_structure = [] {
        std::array<bool, 256> table{};
        for (const char character : {'[', ']', '\0'})
            table[static_cast<u8>(character)] = true;
        return table;
    }();
    for (u32 depth = 1;; ++text) {
        const auto character = static_cast<u8>(*text);
        if (!is_structure[character])
            continue;
        if (character == ']' && --depth == 0)
            return text;
        if (character == '\0')
            return nullptr;
        depth += character == '[' ? 1 : 0;
    }
}

/// Hands the value at the cursor to the row's handler, cut off as long as that works, and moves to its closing bracket.
inline u32 parse_value(const LsPrefixPattern &row, Cursor &text, void *target, LsPrefixParseContext &context)
{
    char *const value = text.at;
    char *const end = closing_bracket(value);
    if (end == nullptr)
        return SYSDT_ERR_FAIL;
    text.at = end;
    const Cut cut(value, end);
    return row.handler(row.bit, value, target, &context);
}

inline constexpr std::ptrdiff_t longest_group = 498; ///< what stands between its brackets

/// Parses the groups at the cursor, behind which `last` must stand, and moves there.
///
/// @param parse  gets the row of a group and the cursor behind the keyword, which it moves to the closing bracket
template <class Parse>
u32 parse_groups(Cursor &text, char last, Patterns patterns, Parse parse)
{
    Cursor at = text;
    if (*at.at != '[')
        return SYSDT_ERR_FAIL;
    do {
        const char *const group = ++at.at;
        const auto *const row = patterns.index->find(at, patterns.rows);
        if (row == nullptr)
            return SYSDT_ERR_FAIL;
        if (const u32 status = parse(*row, at); status != SYSDT_OK)
            return status;
        if (at.at - group > longest_group)
            return SYSDT_ERR_FAIL;
        ++at.at;
    } while (*at.at == '[');
    text.at = at.at;
    return *at.at == last ? SYSDT_OK : SYSDT_ERR_FAIL;
}

} // namespace bgpdt::bgpls
