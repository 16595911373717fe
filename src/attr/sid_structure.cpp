// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// SID_STRUCTURE: the structure of an SRv6 SID (RFC 9252, section 3.2.1), printed and handed to scripts only.
///
///      0               1              2          3          4                    5                    6        7
///     +---------------+--------------+----------+----------+--------------------+--------------------+--------+
///     | locator block | locator node | function | argument | transposed, length | transposed, offset | exists |
///     +---------------+--------------+----------+----------+--------------------+--------------------+--------+
///
/// Printed form: "40-24-16-0-16-64", or "-" if there is none.
///
/// Irregularities, all deliberate:
///  (1) There is a structure only if the last byte is 1; anything else prints "-".
///  (2) Every mode but 4 prints text.
///  (3) A script sees the structure as its text, beside the byte as it is.
#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"
#include "common/print.hpp"

using namespace bgpdt;

namespace {

u32 print_value(const SYSDT_SidStructure &value, u8, Writer &out)
{
    const auto &f = value.field;
    if (value.exists == 1) // (1)
        print<"%hhu-%hhu-%hhu-%hhu-%hhu-%hhu">(out, f[0], f[1], f[2], f[3], f[4], f[5]);
    else
        out.put('-');
    return SYSDT_OK;
}

constexpr Type<SYSDT_SidStructure> sid_structure{
    .kind = SYSDT_TYPE_SID_STRUCTURE,
    .output = open_screen,
    .mode3 = Mode3::text, // (2)
    .clears_before_output = true,
    .reads = Input::passed,
    .print = print_value,
};

} // namespace

u32 SYSDT_PrefixSidStruct2Str(const SYSDT_SidStructure *value, char *buffer, u32 *characters)
{
    if (value == nullptr || buffer == nullptr || characters == nullptr)
        return SYSDT_ERR_NULL_PTR;
    Writer out(buffer, sid_structure.limit);
    print_value(*value, 0, out);
    *characters = out.finish();
    return SYSDT_OK;
}

BGPDT_FORMAT_OUT(SYSDT_PrefixSidStructureFormatOut, sid_structure)

u32 SYSDT_PrefixSidStructureLuaSet(void *state, i32 table, const char *name, u32, u32 length, const void *data)
{
    if (const u32 status = script::check_call(state, name, data, length, sizeof(SYSDT_SidStructure));
        status != SYSDT_OK)
        return status;
    char text[sid_structure.limit];
    u32 characters = 0;
    SYSDT_PrefixSidStruct2Str(static_cast<const SYSDT_SidStructure *>(data), text, &characters);
    const auto parent = script::Table::at(state, table);
    const auto structure = script::Table::create(state, 0, 3);
    structure.set_text("sidStructure", text); // (3)
    structure.set_fields(sid_structure_layout.fields.last(1), static_cast<const u8 *>(data));
    parent.set(name);
    return SYSDT_OK;
}
