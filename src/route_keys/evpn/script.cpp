// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// EVPN route keys in scripts: the text, the sub-kind and the route type.
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (25) A script sees the printed text, the sub-kind and the route type; a key that does not print has an empty text.
///  (26) A script's ESI has type 00 or 01, in an auto-discovery route 00 to 05; BOL prefixes read any.
///  (27) A script's text that does not parse is no failure, and what is no string is as good as an empty one; BOL
///      prefixes refuse both.
///  (28) The route type is the script's number, cut to 8 bits, whatever the text is.
///  (29) A script's sub-kind other than 1 is stored, and fails then.
///  (30) 183 bytes of a script's text are read, though what prints may be longer.
#include "common/script.hpp"
#include "bgp_datatype/bgp_datatype.h"
#include "route_keys/evpn/print.hpp"

using namespace bgpdt;

namespace {

constexpr char text_key[] = "bolPrefixRtValue";
constexpr std::span<const Field> numbers = evpn_fields; // the sub-kind and the route type

using ScriptText = char[184]; // (30)

} // namespace

u32 SYSDT_EVNPrefixLuaSet(void *state, i32 table, const char *name, u32, u32 length, const void *data)
{
    if (const u32 status = script::check_call(state, name, data, length, SYSDT_BOL_SIZE); status != SYSDT_OK)
        return status;
    const auto *const value = static_cast<const SYSDT_BolEvpn *>(data);
    char text[256];
    Writer out(text, sizeof text);
    evpn::print_key(value->key.routeType, value->key, out); // (25)
    out.finish();
    const auto parent = script::Table::at(state, table);
    const auto key = script::Table::create(state, 0, 3);
    key.set_text(text_key, text);
    key.set_fields(numbers, static_cast<const u8 *>(data));
    parent.set(name);
    return SYSDT_OK;
}

u32 SYSDT_EVNPrefixLuaGet(void *state, i32 table, const char *name, u32, u32 length, void *data)
{
    if (const u32 status = script::check_call(state, name, data, length, SYSDT_BOL_SIZE); status != SYSDT_OK)
        return status;
    const auto source = table == -1 ? script::Table::at(state, -2) : script::Table::field(state, table, name);
    if (!source.is_table())
        return SYSDT_ERR_PARAM;
    const i32 height = SYSDT_SPTI_GetTop(state);
    ScriptText text{};
    if (source.get_text(text_key, text) == SYSDT_ERR_TOO_LONG) // (30)
        return SYSDT_ERR_TOO_LONG;
    auto *const value = static_cast<SYSDT_BolEvpn *>(data);
    SYSDT_Str2EvnPrefix(text, value, 0); // (26) (27)
    if (const u32 status = source.get_fields(numbers.first(1), static_cast<u8 *>(data)); status != SYSDT_OK)
        return status;
    if (value->subKind != SYSDT_BOL_EVN)
        return SYSDT_ERR_FAIL;                                                         // (29)
    const u32 status = source.get_fields(numbers.subspan(1), static_cast<u8 *>(data)); // (28)
    if (status == SYSDT_OK)
        script::pop_to(state, height);
    return status;
}

u32 SYSDT_EVNPrefixNewLuaGet(void *state, void *value, i32 table)
{
    if (state == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const i32 height = SYSDT_SPTI_GetTop(state);
    const auto source = script::Table::at(state, table);
    ScriptText text{};
    if (const u32 status = source.get_text(text_key, text); status != SYSDT_OK)
        return status; // (27) (30)
    if (const u32 status = SYSDT_Str2EvnPrefix(text, static_cast<SYSDT_BolEvpn *>(value), 1); status != SYSDT_OK)
        return status;                                                                  // (26) (27)
    const u32 status = source.get_fields(numbers.subspan(1), static_cast<u8 *>(value)); // (28)
    if (status == SYSDT_OK)
        script::pop_to(state, height);
    return status;
}
