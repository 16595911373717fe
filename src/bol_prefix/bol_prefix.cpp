// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// BOLPREFIX: one of many kinds of route key behind a sub-kind word.
///
///      0          4                                                    89
///     +----------+----------------------------------------------------+
///     | sub-kind | key, laid out by its kind; unused bytes are zero    |   sub-kind u32 in host order
///     +----------+----------------------------------------------------+
///
/// The kinds are those of the table in values.h; nothing here knows any of them. Which texts a row may read it tells in
/// its own file, from what the text is made of (text_offer.hpp).
///
/// Irregularities, all deliberate:
///  (1) A text goes to the rows in their order, and the first that takes it wins. A row that trims it cuts its trailing
///      blanks for the rows behind.
///  (2) Whatever a row answers but 0 becomes SYSDT_ERR_INVALID_VALUE, a mode that it does not support too.
///  (3) Check, Help and Compare ask the rows in order too, whatever the sub-kind: a value is sound when any row says
///      so, and equal when any row says so; there is no order.
///  (4) Scripts are read by the second table, not by the rows' own LuaGet. The sub-kind is stored first and stays.
///  (5) Row 0 is called "IPV4" but has the VPLS names; the names mix "_" and "-"; kind 13 stands behind "RPD"; rows 9
///      to 11 take no text, rows 14 to 16 have no LuaGet, and several rows borrow the callbacks of others.
#include <algorithm>
#include <cstring>
#include <utility>

#include "common/bol_row.hpp"
#include "common/bytes.hpp"
#include "common/dispatch.hpp"
#include "common/text_offer.hpp"
#include "common/trimmed.hpp"

using namespace bgpdt;

#pragma GCC diagnostic ignored "-Wmissing-field-initializers" // the slots that a row does not name are null

// NOLINTBEGIN(bugprone-macro-parentheses): no part of an initializer can stand in any
#define BGPDT_ROW(row, text, layout, reader, about, texts, slots) {.kind = SYSDT_BOL_##row, .name = text, slots},
#define BGPDT_SLOT(slot, callback) .slot = callback,
#define BGPDT_READER(row, text, layout, reader, about, texts, slots) {SYSDT_BOL_##row, reader},
// NOLINTEND(bugprone-macro-parentheses)

constexpr SYSDT_DispatchRow g_astBOL_PREFIX_ProcTable[SYSDT_BOL_KINDS] = {SYSDT_BOL_ROWS(BGPDT_ROW, BGPDT_SLOT)};

constinit const SYSDT_ScriptReadRow g_astBOL_PREFIX_LuaGetTable[SYSDT_BOL_KINDS] = {SYSDT_BOL_ROWS(BGPDT_READER, )};

namespace {

constexpr DispatchTable rows{g_astBOL_PREFIX_ProcTable};

/// The sub-kind word of a value that may be shorter than it.
u32 sub_kind(u32 length, const void *value)
{
    u8 word[sizeof(u32)]{};
    std::memcpy(word, value, std::min<std::size_t>(length, sizeof word));
    return load<u32>(word);
}

/// Trims the text in place if it may have to be. (1)
///
/// @return whether it had blanks, and must be counted anew
bool cut_blanks(TextOffer &offer)
{
    if (offer.shape.others == 0 && !offer.shape.is_too_long())
        return false;
    const char last = offer.text[offer.shape.all.length() - 1]; // there is one: the empty text has no others
    if (may_be_blank(offer.shape.first()) || may_be_blank(last)) {
        offer.counted = SYSDT_BTrim(offer.text);
        offer.had_blanks = std::strlen(offer.counted) != offer.shape.all.length();
    }
    return offer.had_blanks;
}

/// How many of the first rows have that FormatIn.
constexpr std::ptrdiff_t rows_with(SYSDT_FormatIn *format_in, std::size_t first = rows.size())
{
    return std::ranges::count(rows.first(first), format_in, &SYSDT_DispatchRow::formatIn);
}

/// What refuses a text for one of its rows refuses it for all, but one that lacked memory may have it for the next.
[[gnu::cold, gnu::noinline]] u32 ask_again(u32 (*ask)(const TextOffer &), std::ptrdiff_t rows_left,
                                           const TextOffer &offer)
{
    u32 status = SYSDT_ERR_NO_MEMORY;
    for (; status == SYSDT_ERR_NO_MEMORY && rows_left != 0; --rows_left)
        status = ask(offer);
    return status;
}

/// Asks at the first of the rows that share a FormatIn.
template <std::size_t row>
bool row_takes(const TextOffer &offer)
{
    constexpr SYSDT_FormatIn *format_in = rows[row].formatIn;
    if constexpr (format_in != nullptr && rows_with(format_in, row) == 0) {
        u32 status = ask<format_in>(offer);
        if (constexpr auto others = rows_with(format_in) - 1; others != 0 && status == SYSDT_ERR_NO_MEMORY)
            status = ask_again(ask<format_in>, others, offer);
        return status == SYSDT_OK;
    }
    return false;
}

template <std::size_t... row>
u32 offer_text(const TextOffer &offer, std::index_sequence<row...>)
{
    return (row_takes<row>(offer) || ...) ? SYSDT_OK : SYSDT_ERR_INVALID_VALUE; // (2)
}

} // namespace

u32 SYSDT_BolPrefixFormatIn(Context *context, u32 unused, u32 textLength, char *text, u16 *kind, u16 *length,
                            void **data)
{
    if (context == nullptr || text == nullptr || !Output{kind, length, data}.complete())
        return SYSDT_ERR_NULL_PTR;
    if (open_screen.status(context->mode) != SYSDT_OK)
        return SYSDT_ERR_INVALID_VALUE; // (2)
    TextOffer offer{context, unused, textLength, text, {kind, length, data}, text, false, TextShape::of(text)};
    if (cut_blanks(offer))
        offer.shape = TextShape::of(offer.counted);
    if (offer.shape.is_too_long())
        return SYSDT_ERR_INVALID_VALUE; // (2)
    return offer_text(offer, std::make_index_sequence<rows.size()>{});
}

u32 SYSDT_BolPrefixFormatOut(Context *context, u32 type, u32 size, const void *value, u16 *kind, u16 *length,
                             void **data)
{
    if (context == nullptr || value == nullptr || !Output{kind, length, data}.complete())
        return SYSDT_ERR_NULL_PTR;
    return offer<&SYSDT_DispatchRow::formatOut>(row_of(rows, sub_kind(size, value)), context, type, size, value, kind,
                                                length, data);
}

u32 SYSDT_BolPrefixCheck(const void *first, u32 unused, u32 length, const void *data)
{
    if (first == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return offer<&SYSDT_DispatchRow::check>(rows, first, unused, length, data); // (3)
}

u32 SYSDT_BolPrefixHelp(Context *context, u32 unused2, u32 unused3, const void *fourth, const HelpRequest *request,
                        HelpInfo *info)
{
    if (context == nullptr || fourth == nullptr || request == nullptr || info == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return offer<&SYSDT_DispatchRow::help>(rows, context, unused2, unused3, fourth, request, info); // (3)
}

i32 SYSDT_BolPrefixCompare(const void *unused, u32 length, const void *first, const void *second)
{
    if (first == nullptr || second == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return static_cast<i32>(offer<&SYSDT_DispatchRow::compare>(rows, unused, length, first, second)); // (3)
}

u32 SYSDT_BolPrefixLuaSet(void *state, i32 table, const char *name, u32 unused, u32 length, const void *data)
{
    if (state == nullptr || name == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (length < SYSDT_BOL_SIZE)
        return SYSDT_ERR_INVALID_VALUE;
    return offer<&SYSDT_DispatchRow::luaSet>(row_of(rows, load<u32>(data)), state, table, name, unused, length, data);
}

u32 SYSDT_BolPrefixLuaGet(void *state, i32 table, const char *name, u32, u32 length, void *data)
{
    if (const u32 status = script::check_call(state, name, data, length, SYSDT_BOL_SIZE); status != SYSDT_OK)
        return status;
    const auto value = script::Table::field(state, table, name);
    u32 kind = 0;
    if (!value.is_table() || !value.get_number("bolType", kind))
        return SYSDT_ERR_PARAM;
    if (kind >= SYSDT_BOL_KINDS)
        return SYSDT_ERR_INVALID_VALUE;
    store(data, kind); // (4)
    const u32 status = g_astBOL_PREFIX_LuaGetTable[kind].reader(state, data, value.index());
    return status == SYSDT_OK ? SYSDT_OK : SYSDT_ERR_INVALID_VALUE;
}
