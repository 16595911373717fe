// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// BOLRD: a route distinguisher (RFC 4364) behind a sub-kind word, which chooses a row of a table. Its only row, 0,
/// holds that of a VPLS (RFC 4761).
///
///      0          4      6               12     16
///     +----------+------+---------------+------+
///     | sub-kind | type | value         | form |   sub-kind and form u32 in host order, the rest in network order
///     +----------+------+---------------+------+
///
/// Text: the route distinguisher's.
///
/// Irregularities, all deliberate:
///  (1) Every mode is served, 0, 3 and 5 too, but for 4 and those above 6.
///  (2) Whatever a row answers but 0 becomes SYSDT_ERR_INVALID_VALUE.
///  (3) Compare tells equal (0) from unequal (SYSDT_ERR_INVALID_VALUE) and gives no order; the row's own Compare does.
///  (4) Mode 3 gives the text without terminator, no copy of the value.
///  (5) An unset one (eight zero octets behind the sub-kind) prints as empty text in mode 2 only.
///  (6) A sub-kind other than 0 does not print, though Check, Compare and scripts take it; the row's own callbacks
///      never look at it.
///  (7) The all-zero value is refused as 0:0 and 0.0:0, but accepted as 0.0.0.0:0.
///  (8) The form decides how the octets are split when printed; a pair without a format prints as empty text.
///  (9) A type above 2 fails, yet the block is handed back.
///  (10) "RdType" and "RdValue" stand at both levels of the script form: outside the sub-kind and the distinguisher,
///      inside the form and the eight octets; when read the sub-kind comes last.
///  (11) A script's numbers are cut to their low 8 bits, the two words' too, and no value is refused.
#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"
#include "common/dispatch.hpp"
#include "vpn_id/rd_text.hpp"

using namespace bgpdt;

namespace {

u32 parse_value(u32, char *text, SYSDT_BolRd &value)
{
    value.subKind = 0;
    return SYSDT_Str2VrfRd(text, &value.rd); // (7)
}

u32 print_value(const SYSDT_BolRd &value, u8 mode, Writer &out)
{
    return mode == 2 && is_unset(value.rd.octets) ? SYSDT_OK
                                                  : print_rd(value.rd, route_distinguisher_codes, out); // (5)
}

constexpr Type<SYSDT_BolRd> vpls_rd{
    .kind = SYSDT_TYPE_BOLRD,
    .input = open_screen, // (1)
    .parse = parse_value,
    .output = open_screen,
    .mode3 = Mode3::bare_text, // (4)
    .print = print_value,
    .help = {"STRING<3-21>"},
};

constexpr std::span<const Field> sub_kind_fields = std::span(bol_rd_fields).first(1);
constexpr std::span<const Field> rd_fields = std::span(bol_rd_fields).subspan(1);

constexpr DispatchTable rows{g_astBOL_RD_ProcTable};

} // namespace

BGPDT_FORMAT_IN(SYSDT_VplsRDFormatIn, vpls_rd)
BGPDT_FORMAT_OUT(SYSDT_VplsRDFormatOut, vpls_rd)
BGPDT_CHECK(SYSDT_VplsRDCheck, vpls_rd)
BGPDT_HELP(SYSDT_VplsRDHelp, vpls_rd)
BGPDT_COMPARE_BYTES(SYSDT_VplsRDCompare)

u32 SYSDT_VplsRDLuaSet(void *state, i32 table, const char *name, u32, u32 length, const void *data)
{
    if (const u32 status = script::check_call(state, name, data, length, sizeof(SYSDT_BolRd)); status != SYSDT_OK)
        return status;
    table = script::absolute(state, table);
    const u8 *const value = static_cast<const u8 *>(data);
    const auto outer = script::Table::create(state, 0, 2);
    outer.set_fields(sub_kind_fields, value);
    script::Table::create(state, 0, 2).set_fields(rd_fields, value);
    outer.set("RdValue"); // (10)
    SYSDT_SPTI_SetField(state, table, name);
    return SYSDT_OK;
}

u32 SYSDT_VplsRDLuaGet(void *state, i32 table, const char *name, u32, u32 length, void *data)
{
    if (const u32 status = script::check_call(state, name, data, length, sizeof(SYSDT_BolRd)); status != SYSDT_OK)
        return status;
    u8 *const value = static_cast<u8 *>(data);
    const auto outer = script::Table::field(state, table, name);
    if (!outer.is_table())
        return SYSDT_ERR_PARAM;
    const auto inner = outer.field("RdValue"); // (10)
    if (!inner.is_table())
        return SYSDT_ERR_PARAM;
    if (const u32 status = inner.get_fields(rd_fields, value); status != SYSDT_OK)
        return status;
    const u32 status = outer.get_fields(sub_kind_fields, value);
    if (status == SYSDT_OK)
        script::pop_to(state, outer.index());
    return status;
}

#pragma GCC diagnostic ignored "-Wmissing-field-initializers" // the slots that a row does not name are null

// NOLINTBEGIN(bugprone-macro-parentheses): no part of an initializer can stand in any
#define BGPDT_ROW(row, text, about, texts, slots) {.kind = SYSDT_BOLRD_##row, .name = text, slots},
#define BGPDT_SLOT(slot, callback) .slot = callback,
// NOLINTEND(bugprone-macro-parentheses)

constinit const SYSDT_DispatchRow g_astBOL_RD_ProcTable[SYSDT_BOLRD_KINDS] = {SYSDT_BOLRD_ROWS(BGPDT_ROW, BGPDT_SLOT)};

u32 SYSDT_BolRdFormatIn(Context *context, u32 unused, u32 textLength, char *text, u16 *kind, u16 *length, void **data)
{
    if (context == nullptr || text == nullptr || !Output{kind, length, data}.complete())
        return SYSDT_ERR_NULL_PTR;
    return offer<&SYSDT_DispatchRow::formatIn>(rows, context, unused, textLength, text, kind, length, data); // (2)
}

u32 SYSDT_BolRdFormatOut(Context *context, u32 type, u32 size, const void *value, u16 *kind, u16 *length, void **data)
{
    if (context == nullptr || value == nullptr || !Output{kind, length, data}.complete())
        return SYSDT_ERR_NULL_PTR;
    return offer<&SYSDT_DispatchRow::formatOut>(row_of(rows, load<u32>(value)), context, type, size, value, kind,
                                                length,
                                                data); // (6)
}

u32 SYSDT_BolRdCheck(const void *first, u32 unused, u32 length, const void *data)
{
    if (first == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return offer<&SYSDT_DispatchRow::check>(rows, first, unused, length, data);
}

u32 SYSDT_BolRdHelp(Context *context, u32 unused2, u32 unused3, const void *fourth, const HelpRequest *request,
                    HelpInfo *info)
{
    if (context == nullptr || fourth == nullptr || request == nullptr || info == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return offer<&SYSDT_DispatchRow::help>(rows, context, unused2, unused3, fourth, request, info);
}

i32 SYSDT_BolRdCompare(const void *unused, u32 length, const void *first, const void *second)
{
    if (first == nullptr || second == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return static_cast<i32>(offer<&SYSDT_DispatchRow::compare>(rows, unused, length, first, second)); // (3)
}

u32 SYSDT_BolRdLuaSet(void *state, i32 table, const char *name, u32 unused, u32 length, const void *data)
{
    if (state == nullptr || name == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return offer<&SYSDT_DispatchRow::luaSet>(rows, state, table, name, unused, length, data);
}

u32 SYSDT_BolRdLuaGet(void *state, i32 table, const char *name, u32 unused, u32 length, void *data)
{
    if (state == nullptr || name == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return offer<&SYSDT_DispatchRow::luaGet>(rows, state, table, name, unused, length, data);
}
