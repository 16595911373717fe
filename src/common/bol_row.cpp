// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "common/bol_row.hpp"

#include "common/bytes.hpp"

namespace bgpdt {

u32 get_bol_row(void *state, i32 table, const char *name, u32 length, void *data, const Layout &layout, u32 kind)
{
    if (const u32 status = script::check_call(state, name, data, length, SYSDT_BOL_SIZE); status != SYSDT_OK)
        return status;
    u8 *const value = static_cast<u8 *>(data);
    const auto source = script::Table::field(state, table, name);
    if (!source.is_table())
        return SYSDT_ERR_PARAM;
    if (const u32 status = source.get_fields(layout.fields.first(1), value); status != SYSDT_OK)
        return status;
    if (load<u32>(value) != kind)
        return SYSDT_ERR_FAIL;
    const u32 status = source.get_fields(key_fields(layout), value);
    if (status == SYSDT_OK)
        script::pop_to(state, source.index());
    return status;
}

u32 read_bol_fields(void *state, void *value, i32 table, std::span<const Field> fields)
{
    if (state == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const i32 height = SYSDT_SPTI_GetTop(state);
    const u32 status = script::Table::at(state, table).get_fields(fields, static_cast<u8 *>(value));
    if (status == SYSDT_OK)
        script::pop_to(state, height);
    return status;
}

} // namespace bgpdt
