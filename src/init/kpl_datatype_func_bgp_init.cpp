// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Registration: the records, which follow from the tables of the types in values.h, in the order in which the host
/// receives them, and the module's entry.
#include <span>

#include "bgp_datatype/bgp_datatype.h"
#include "common/print.hpp"

using namespace bgpdt;

namespace {

constexpr char source_name[] = "kpl_datatype_func_bgp_init";

/// Offers every record to the host; one that it rejects is reported, and the next is offered.
template <FixedString Message>
void register_types(u32 handle, std::span<const SYSDT_Record> records, u32 line)
{
    for (const SYSDT_Record &record : records) {
        const u32 status = SYS_Drm_RegisterDataType(handle, &record);
        if (status == SYSDT_OK)
            continue;
        char message[128];
        Writer out(message, sizeof message);
        print<Message>(out, status);
        out.finish();
        KPL_Assert(source_name, line, message);
    }
}

} // namespace

#pragma GCC diagnostic ignored "-Wmissing-field-initializers" // the slots that a row does not name are null

// A 32-bit index that the host maps to a name: every callback is the host's.
#define BGPDT_RECORD(type, id, about)                                                                                  \
    {.typeId = SYSDT_TYPE_##type,                                                                                      \
     .dataLength = sizeof(u32),                                                                                        \
     .baseKind = SYSDT_KIND_BINARY,                                                                                    \
     .name = #type,                                                                                                    \
     .formatIn = SYS_DT_UINT32IndexFormatIn,                                                                           \
     .formatOut = SYS_DT_IndexFormatOut,                                                                               \
     .compare = SYSDT_Uint32Compare,                                                                                   \
     .luaSet = SYSDT_Uint32LuaSet,                                                                                     \
     .luaGet = SYSDT_Uint32LuaGet},

constinit const SYSDT_Record g_astBgpDataTypeNameIndexDefineTbl[SYSDT_NAME_INDEX_TYPE_COUNT] = {
    SYSDT_NAME_INDEX_TYPES(BGPDT_RECORD)};

#undef BGPDT_RECORD

// NOLINTBEGIN(bugprone-macro-parentheses): no part of an initializer can stand in any
#define BGPDT_RECORD(type, id, kind, size, layout, about, grammar, texts, slots)                                       \
    {.typeId = SYSDT_TYPE_##type, .dataLength = size, .baseKind = SYSDT_KIND_##kind, .name = #type, slots},
#define BGPDT_SLOT(slot, callback) .slot = callback,
// NOLINTEND(bugprone-macro-parentheses)

constinit const SYSDT_Record g_astBgpDataTypeExtendDefineTbl[SYSDT_EXTEND_TYPE_COUNT] = {
    SYSDT_EXTEND_TYPES(BGPDT_RECORD, BGPDT_SLOT)};

u32 BGP_RegisterDataType(u32 handle)
{
    register_types<"RegisterDataType Ret:%u">(handle, g_astBgpDataTypeNameIndexDefineTbl, 197);
    return SYSDT_OK;
}

u32 BGP_RegisterExtendDataType(u32 handle)
{
    register_types<"RegisterDataTypeExt Ret:%u">(handle, g_astBgpDataTypeExtendDefineTbl, 210);
    return SYSDT_OK;
}

u32 Bgp_InitDataType(u32 handle)
{
    BGP_RegisterDataType(handle);
    BGP_RegisterExtendDataType(handle);
    return SYSDT_OK;
}
