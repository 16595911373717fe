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
    /// The number of a colon that no text has.
    static constexpr u32 no_colon = 256;

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

    /// Counts the characters; those not in Known are strangers.
    template <FixedString Known>
    static constexpr Census of(const char *text)
    {
        u32 counts = 0;
        const char *at = text;
        for (; *at != '\0'; ++at)
            counts += weight<Known>[static_cast<u8>(*at)];
        return {counts, static_cast<std::size_t>(at - text)};
    }

    /// Counts the known characters that the text begins with; the third counter is that of the Marks.
    template <FixedString Known, FixedString Marks = "-*">
    static constexpr Census of_start(const char *text)
    {
        return ahead_of<Known, Marks>(text, no_colon);
    }

    /// Counts the known characters ahead of the first that is none, or ahead of the colon of that number, from 1.
    template <FixedString Known, FixedString Marks = "-*">
    static constexpr Census ahead_of(const char *text, u32 colon)
    {
        // Begins where the colon, or a stranger, as the NUL is one, is what sets the top bit.
        const u32 start = 0x7F000000 + ((no_colon - colon) << 16);
        const char *at = text;
        u32 counts = start + weight<Known, Marks>[static_cast<u8>(*at)];
        while (counts >> 31 == 0)
            counts += weight<Known, Marks>[static_cast<u8>(*++at)];
        counts -= start;
        counts -= counts >= stranger ? stranger : one_colon;
        return {counts, static_cast<std::size_t>(at - text)};
    }

    /// Of two texts together.
    constexpr Census &operator+=(const Census &other)
    {
        counts_ += other.counts_;
        length_ += other.length_;
        return *this;
    }

private:
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

} // namespace bgpdt
