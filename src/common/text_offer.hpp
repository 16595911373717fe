// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A text on its way to the rows of the BOL prefix. It is counted once; from its characters each row tells, in its own
/// file, whether it may be one of its texts, so that a walk of all rows then asks one, seldom two.
#pragma once

#include "bgp_datatype/bgp_datatype.h"
#include "common/census.hpp"
#include "common/contract.hpp"

namespace bgpdt {

/// What a text is made of: hexadecimal digits, dots, colons, hyphens, and others.
struct TextShape {
    static constexpr std::size_t longest = 183; ///< that any row reads: an EVPN key

    const char *text;
    Census field; ///< ahead of the first colon, which is counted, or other
    Census all;   ///< others count in the length alone
    u32 others;

    static TextShape of(const char *text)
    {
        CensusWalk<"0123456789abcdefABCDEF.:-"> walk(text, 1);
        char stop = walk.next();
        const auto field = walk.census();
        u32 others = 0;
        for (; stop != '\0'; stop = walk.next())
            others += stop == ':' ? 0 : 1;
        return {text, field, walk.census(), others};
    }

    /// Then the counts do not hold.
    constexpr bool is_too_long() const { return all.length() > longest; }

    constexpr char first() const { return *text; }
    constexpr char behind_field() const { return text[field.length()]; }
    /// Behind the first colon, if there is one.
    constexpr char behind_colon() const { return text[field.length() + 1]; }
    constexpr u32 dots_behind_field() const { return all.dots() - field.dots(); }
    constexpr u32 dots() const { return all.dots(); }
    constexpr u32 colons() const { return all.colons(); }
    constexpr u32 hyphens() const { return all.marks(); }
};

/// What is offered: FormatIn's arguments, in a mode that the rows serve, and the counted text.
struct TextOffer {
    Context *context;
    u32 unused;
    u32 length;
    char *text; ///< the host's
    Output out;
    char *counted;   ///< where the text begins behind its blanks
    bool had_blanks; ///< which are cut off at its end
    TextShape shape;

    u32 pass_to(SYSDT_FormatIn *format_in) const
    {
        return format_in(context, unused, length, text, out.kind, out.length, out.data);
    }
};

/// Asks the rows with that FormatIn: as it answers, or SYSDT_ERR_PARAM where the shape alone tells that it would refuse,
/// having trimmed the text and done nothing else.
template <SYSDT_FormatIn *format_in>
u32 ask(const TextOffer &offer);

#define BGPDT_ROW(kind, name, layout, reader, about, texts, slots) slots
#define BGPDT_SLOT(slot, callback) BGPDT_ASK_##slot(callback)
#define BGPDT_ASK_formatIn(callback)                                                                                   \
    template <>                                                                                                        \
    u32 ask<callback>(const TextOffer &offer);
#define BGPDT_ASK_formatOut(callback)
#define BGPDT_ASK_check(callback)
#define BGPDT_ASK_help(callback)
#define BGPDT_ASK_compare(callback)
#define BGPDT_ASK_luaSet(callback)
#define BGPDT_ASK_luaGet(callback)

SYSDT_BOL_ROWS(BGPDT_ROW, BGPDT_SLOT)

#undef BGPDT_ROW
#undef BGPDT_SLOT
#undef BGPDT_ASK_formatIn
#undef BGPDT_ASK_formatOut
#undef BGPDT_ASK_check
#undef BGPDT_ASK_help
#undef BGPDT_ASK_compare
#undef BGPDT_ASK_luaSet
#undef BGPDT_ASK_luaGet

} // namespace bgpdt

/// Asks rows that may read texts of which the condition on the `shape` holds. It holds for every text that they read, and
/// for some that they do not. FormatIn stays one function, which is not repeated here.
#define BGPDT_MAY_READ(name, condition)                                                                                \
    extern "C" __attribute__((noinline)) SYSDT_FormatIn name;                                                          \
    template <>                                                                                                        \
    std::uint32_t bgpdt::ask<name>(const TextOffer &offer)                                                             \
    {                                                                                                                  \
        const TextShape &shape = offer.shape;                                                                          \
        return (condition) ? offer.pass_to(name) : std::uint32_t{SYSDT_ERR_PARAM};                                     \
    }
