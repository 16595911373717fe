// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The plug-in is linked in.
#include "bgp_datatype/bgp_datatype.h"
#include "library.hpp"
#include "toolkit/errors.hpp"

namespace bgpdt::library {
namespace {

#define BGPDT_SYMBOL(table)                                                                                            \
    host::LinkedPlugin::Symbol { #table, const_cast < void *>(static_cast <const void *>(table)) }

const host::LinkedPlugin::Symbol symbols[] = {
    BGPDT_SYMBOL(g_astBOL_PREFIX_ProcTable),
    BGPDT_SYMBOL(g_astBOL_PREFIX_LuaGetTable),
    BGPDT_SYMBOL(g_astBOL_RD_ProcTable),
};

#undef BGPDT_SYMBOL

} // namespace

std::unique_ptr<toolkit::Session> new_session(toolkit::Settings settings)
{
    if (!settings.plugin.empty())
        throw toolkit::Error("the plug-in is linked in: no other is loaded");
    return std::make_unique<toolkit::Session>(std::move(settings), host::LinkedPlugin{Bgp_InitDataType, symbols});
}

bool names_plugin(const toolkit::Settings &asked, const toolkit::Settings & /*opened*/) { return asked.plugin.empty(); }

} // namespace bgpdt::library
