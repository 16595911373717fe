// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A census of a text's characters in one pass: the grammars choose their form by how many separators there are.
#pragma once

#include <array>

#include "common/format.hpp"

namespace bgpdt {

/// What a text is made of. The counts hold for a text of at most 255 characters.
class Census {
public:
    constexpr Census() = default;

    /// Whether the text has so many characters (`longest` at most 255), and all are known. That answers the
    /// host's question for white space too: no grammar's characters are.
    constexpr bool admits(std::size_t shortest, std::size_t longest) const
    {
        return length_ >= shortest && length_ <= longest && strangers() == 0;
    }

    constexpr std::size_t length() const { return length_; }
    constexpr u32 dots() const { return counts_ >> 8 & 0xFF; }
    constexpr u32 colons() const { return counts_ >> 16 & 0xFF; }
    /// The grammar's third separator: hyphens or stars, if it does not name others.
    constexpr u32 marks() const { return counts_ & 0xFF; }
    /// Characters that the grammar does not know.
    constexpr u32 strangers() const { return counts_ >> 24; }

    /// Counts the known characters that the text begins with, and the stranger behind them, if there is one.
    template <FixedString Known>
    static Census of(const char *text);

    /// Counts the known characters that the text begins with; the third counter is that of the Marks.
    template <FixedString Known, FixedString Marks = "-*">
    static Census of_start(const char *text);

private:
    template <FixedString Known, FixedString Marks>
    friend class CensusWalk;

    constexpr Census(u32 counts, std::size_t length) : counts_(counts), length_(length) {}

    // What a character adds to the four counters, a byte each.
    static constexpr u32 one_mark = 1;
    static constexpr u32 one_dot = 1U << 8;
    static constexpr u32 one_colon = 1U << 16;
    static constexpr u32 stranger = 1U << 24;

    /// By the character.
    template <FixedString Known, FixedString Marks = "-*">
    static constexpr std::array<u32, 256> weight = [] {
        std::array<u32, 256> table{};
        table.fill(stranger);
        for (std::size_t i = 0; i < Known.length; ++i) {
            const char character = Known.text[i];
            table[static_cast<u8>(character)] = character == '.' ? one_dot : character == ':' ? one_colon : 0U;
        }
        for (std::size_t i = 0; i < Marks.length; ++i)
            if (u32 &mark = table[static_cast<u8>(Marks.text[i])]; mark != stranger)
                mark = one_mark;
        return table;
    }();

    u32 counts_;
    std::size_t length_;
};

struct CensusStop {
    const char *at;
    u32 counts;
};

/// Adds the characters' weights up to the one that sets the top bit: a stranger, or the carry of a colon. Every text is
/// walked here, four characters at a time.
[[gnu::noinline]] inline CensusStop count_to_stop(const char *at, u32 counts, const u32 *weights)
{
    for (;; at += 4) {
#pragma GCC unroll 4
        for (int i = 0; i < 4; ++i) {
            counts += weights[static_cast<u8>(at[i])];
            if (counts >> 31 != 0)
                return {at + i, counts};
        }
    }
}

/// A census on its way: it stops at every character that the grammar does not know, and at one colon.
template <FixedString Known, FixedString Marks = "-*">
class CensusWalk {
public:
    /// The number of a colon that no text has.
    static constexpr u32 no_colon = 256;

    /// @param colon  the number of the one to stop at, from 1
    constexpr CensusWalk(const char *text, u32 colon)
        : text_(text), at_(text), start_((1U << 31) - colon * Census::one_colon), counts_(start_)
    {
    }

    /// Moves behind the next stop and returns it; the NUL is one.
    char next()
    {
        const auto [stop, counts] = count_to_stop(at_, counts_, Census::weight<Known, Marks>.data());
        counts_ = counts - Census::stranger;
        at_ = stop + 1;
        return *stop;
    }

    /// Of what stands ahead of the stop, that colon counted already; former strangers count in the length alone.
    constexpr Census census() const
    {
        return {(counts_ - start_) % Census::stranger, static_cast<std::size_t>(at_ - 1 - text_)};
    }

private:
    const char *text_;
    const char *at_;
    u32 start_; ///< so far ahead of the top bit
    u32 counts_;
};

template <FixedString Known>
Census Census::of(const char *text)
{
    CensusWalk<Known> walk(text, CensusWalk<Known>::no_colon);
    const bool ends = walk.next() == '\0';
    Census census = walk.census();
    census.counts_ += ends ? 0 : stranger;
    return census;
}

template <FixedString Known, FixedString Marks>
Census Census::of_start(const char *text)
{
    CensusWalk<Known, Marks> walk(text, CensusWalk<Known, Marks>::no_colon);
    walk.next();
    return walk.census();
}

} // namespace bgpdt
