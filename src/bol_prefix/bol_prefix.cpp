// SPDX-License-Identifier: Apache-2.0
/// @file
/// BOLPREFIX: one of seventeen kinds of route key behind a sub-kind word.
///
///      0          4                                                    89
///     +----------+----------------------------------------------------+
///     | sub-kind | key, laid out by its kind; unused bytes are zero    |   sub-kind u32 in host order
///     +----------+----------------------------------------------------+
///
/// The two tables are the only place where the kinds are told; nothing else here knows any of them. Which rows are worth
/// asking for a text is told in text_shape.hpp.
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
#include <bit>
#include <cstring>

#include "bol_prefix/text_shape.hpp"
#include "common/bol_row.hpp"
#include "common/bytes.hpp"
#include "common/dispatch.hpp"

using namespace bgpdt;

constinit const SYSDT_DispatchRow g_astBOL_PREFIX_ProcTable[SYSDT_BOL_KINDS] = {
    {0, "IPV4", SYSDT_VplsAdPrefixFormatIn, SYSDT_VplsAdPrefixFormatOut, SYSDT_VplsAdPrefixCheck,
     SYSDT_VplsAdPrefixHelp, SYSDT_VplsAdPrefixCompare, SYSDT_VplsAdPrefixLuaSet, SYSDT_VplsAdPrefixLuaGet},
    {1, "EVN", SYSDT_EVNPrefixFormatIn, SYSDT_EVNPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
     SYSDT_EVNPrefixCompare, SYSDT_EVNPrefixLuaSet, SYSDT_EVNPrefixLuaGet},
    {2, "NG_TYPE_2", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
     SYSDT_EVNPrefixCompare, SYSDT_NGPrefix2LuaSet, SYSDT_EVNPrefixLuaGet},
    {3, "NG_TYPE_3", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
     SYSDT_EVNPrefixCompare, SYSDT_NGPrefix3LuaSet, SYSDT_EVNPrefixLuaGet},
    {4, "NG_TYPE_4_2", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
     SYSDT_EVNPrefixCompare, SYSDT_NGPrefix42LuaSet, SYSDT_EVNPrefixLuaGet},
    {5, "NG_TYPE_4-3", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
     SYSDT_EVNPrefixCompare, SYSDT_NGPrefix43LuaSet, SYSDT_EVNPrefixLuaGet},
    {6, "NG_TYPE_5", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
     SYSDT_EVNPrefixCompare, SYSDT_NGPrefix5LuaSet, SYSDT_EVNPrefixLuaGet},
    {7, "NG_TYPE_6", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
     SYSDT_EVNPrefixCompare, SYSDT_NGPrefix6LuaSet, SYSDT_EVNPrefixLuaGet},
    {8, "VRFRTEXT", SYSDT_VrfRtExtFormatIn, SYSDT_VrfRtExtFormatOut, SYSDT_EVNPrefixCheck, SYSDT_VrfRtHelp,
     SYSDT_VrfRtCompare, SYSDT_VrfRtExtLuaSet, SYSDT_VrfRtExtLuaGet},
    {9, "L2VPN", nullptr, SYSDT_L2VPNPrefixFormatOut, SYSDT_VplsAdPrefixCheck, SYSDT_VplsAdPrefixHelp,
     SYSDT_VplsAdPrefixCompare, SYSDT_L2VPNPrefixLuaSet, SYSDT_L2VPNPrefixLuaGet},
    {10, "VPNV4MCAST", nullptr, SYSDT_VPNV4MCASTPrefixFormatOut, SYSDT_VPNV4MCASTPrefixCheck,
     SYSDT_VPNV4MCASTPrefixHelp, SYSDT_VPNV4MCASTPrefixCompare, SYSDT_VPNV4MCASTPrefixLuaSet,
     SYSDT_VPNV4MCASTPrefixLuaGet},
    {11, "MDT", nullptr, SYSDT_MdtPrefixFormatOut, SYSDT_MdtPrefixCheck, SYSDT_MdtPrefixHelp, SYSDT_MdtPrefixCompare,
     SYSDT_MdtPrefixLuaSet, SYSDT_MdtPrefixLuaGet},
    {12, "RPD", SYSDT_RpdPrefixFormatIn, SYSDT_RpdPrefixFormatOut, SYSDT_RpdPrefixCheck, SYSDT_RpdPrefixHelp,
     SYSDT_RpdPrefixCompare, SYSDT_RpdPrefixLuaSet, SYSDT_RpdPrefixLuaGet},
    {13, "NG_TYPE_4-1", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
     SYSDT_EVNPrefixCompare, SYSDT_NGPrefix41LuaSet, SYSDT_EVNPrefixLuaGet},
    {14, "SRPOLICY", SYSDT_SrPolicyPrefixFormatIn, SYSDT_SrPolicyPrefixFormatOut, SYSDT_SrPolicyPrefixCheck,
     SYSDT_SrPolicyPrefixHelp, SYSDT_SrPolicyPrefixCompare, SYSDT_SrPolicyPrefixLuaSet, nullptr},
    {15, "IPV6", SYSDT_Ipv6BolPrefixFormatIn, SYSDT_Ipv6BolPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
     SYSDT_EVNPrefixCompare, SYSDT_Ipv6BolPrefixLuaSet, nullptr},
    {16, "SD-WAN", SYSDT_SdwanPrefixFormatIn, SYSDT_SdwanPrefixFormatOut, SYSDT_SdwanPrefixCheck, SYSDT_SdwanPrefixHelp,
     SYSDT_SdwanPrefixCompare, SYSDT_SdwanPrefixLuaSet, nullptr},
};

constinit const SYSDT_ScriptReadRow g_astBOL_PREFIX_LuaGetTable[SYSDT_BOL_KINDS] = {
    {0, SYSDT_VplsAdPrefixNewLuaGet},   {1, SYSDT_EVNPrefixNewLuaGet},         {2, SYSDT_NGPrefix2NewLuaGet},
    {3, SYSDT_NGPrefix3NewLuaGet},      {4, SYSDT_NGPrefix42NewLuaGet},        {5, SYSDT_NGPrefix43NewLuaGet},
    {6, SYSDT_NGPrefix5NewLuaGet},      {7, SYSDT_NGPrefix6NewLuaGet},         {8, SSYSDT_VrfRtExtNewLuaGet},
    {9, SYSDT_L2VPNPrefixNewLuaGet},    {10, SYSDT_VPNV4MCASTPrefixNewLuaGet}, {11, SYSDT_MdtPrefixNewLuaGet},
    {12, SYSDT_RpdPrefixNewLuaGet},     {13, SYSDT_NGPrefix41NewLuaGet},       {14, SYSDT_SrPolicyPrefixNewLuaGet},
    {15, SYSDT_Ipv6BolPrefixNewLuaGet}, {16, SYSDT_SdwanPrefixNewLuaGet},
};

namespace {

constexpr DispatchTable rows{g_astBOL_PREFIX_ProcTable};

/// The sub-kind word of a value that may be shorter than it.
u32 sub_kind(u32 length, const void *value)
{
    u8 word[sizeof(u32)]{};
    std::memcpy(word, value, std::min<std::size_t>(length, sizeof word));
    return load<u32>(word);
}

/// The rows worth asking for a text, which is trimmed in place if it may have to be.
u32 rows_worth_asking(char *text)
{
    auto shape = TextShape::of(text);
    if (shape.others() == 0 && !shape.is_too_long())
        return rows_for(shape);
    const char *const trimmed = SYSDT_BTrim(text);
    if (std::strlen(trimmed) != shape.all.length())
        shape = TextShape::of(trimmed);
    return rows_for(shape) & ~rows_of(SYSDT_BOL_IPV4); // (1): it has refused the blanks
}

/// Offers a text to rows in their order. A parser that has just refused it for one row is not asked for the next, but
/// one that only lacked memory is.
template <class Ask>
u32 offer_text(u32 left, Ask ask)
{
    for (SYSDT_FormatIn *refused = nullptr; left != 0; left &= left - 1) {
        SYSDT_FormatIn *const parse = rows[static_cast<u32>(std::countr_zero(left))].formatIn;
        if (parse == refused)
            continue;
        const u32 status = ask(parse);
        if (status == SYSDT_OK)
            return SYSDT_OK;
        if (status != SYSDT_ERR_NO_MEMORY)
            refused = parse;
    }
    return SYSDT_ERR_INVALID_VALUE; // (2)
}

} // namespace

u32 SYSDT_BolPrefixFormatIn(Context *context, u32 unused, u32 textLength, char *text, u16 *kind, u16 *length,
                            void **data)
{
    if (context == nullptr || text == nullptr || !Output{kind, length, data}.complete())
        return SYSDT_ERR_NULL_PTR;
    const auto ask = [&](SYSDT_FormatIn *parse) {
        return parse(context, unused, textLength, text, kind, length, data);
    };
    const bool served = open_screen.status(context->mode) == SYSDT_OK;
    return offer_text(served ? rows_worth_asking(text) : 0, ask);
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
