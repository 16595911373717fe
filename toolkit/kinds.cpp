// SPDX-License-Identifier: Apache-2.0
#include "kinds.hpp"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <set>
#include <span>
#include <type_traits>

#include "bgp_datatype/bgp_datatype.h"
#include "operations.hpp"

namespace bgpdt::toolkit {
namespace {

/// The tables behind a type. Without readers, scripts are read by the rows themselves.
struct Tables {
    std::span<const SYSDT_DispatchRow> rows;
    std::span<const SYSDT_ScriptReadRow> readers;
};

/// The table that the plug-in exports under the name, as large as it is declared; empty if it does not.
template <class Table>
std::span<const std::remove_extent_t<Table>> exported(Session &session, const char *name)
{
    using Row = std::remove_extent_t<Table>;
    const auto *first = static_cast<const Row *>(session.host().symbol(name));
    return {first, first == nullptr ? 0 : std::extent_v<Table>};
}

#define BGPDT_EXPORTED(table) exported<decltype(table)>(session, #table)

Tables tables_of(Session &session, const SYSDT_Record &type)
{
    switch (type.typeId) {
    case SYSDT_TYPE_BOLPREFIX:
        return {BGPDT_EXPORTED(g_astBOL_PREFIX_ProcTable), BGPDT_EXPORTED(g_astBOL_PREFIX_LuaGetTable)};
    case SYSDT_TYPE_BOLRD: return {BGPDT_EXPORTED(g_astBOL_RD_ProcTable), {}};
    default: return {};
    }
}

#undef BGPDT_EXPORTED

/// In the order of the numbers (RFC 6514 for the route types of multicast VPNs).
constexpr const char *route_keys[] = {
    "originating router by its IPv4 address: VPLS auto-discovery, multicast VPN type 1",
    "EVPN route",
    "multicast VPN type 2, inter-AS: AS number",
    "multicast VPN type 3, selective tunnel: source, group, originator",
    "multicast VPN type 4, leaf of a type 2: AS number, originator",
    "multicast VPN type 4, leaf of a type 3: source, group, originators",
    "multicast VPN type 5, active source: source, group",
    "multicast VPN types 6 and 7, join of a shared or source tree: AS number, source, group",
    "route target",
    "L2VPN route: site, label offset",
    "VPNv4 multicast route: prefix",
    "multicast distribution tree: prefix, group",
    "route policy distribution: policy type, peer, distinguisher",
    "multicast VPN type 4, leaf of a type 1: originators",
    "SR policy: distinguisher, colour, endpoint",
    "originating router by its IPv6 address: multicast VPN type 1",
    "SD-WAN route: route type, port, site, node",
};

const char *about_kind(const SYSDT_Record &type, std::uint32_t number)
{
    if (type.typeId == SYSDT_TYPE_BOLRD)
        return "VPLS route distinguisher";
    return number < std::size(route_keys) ? route_keys[number] : "";
}

/// Check, Help and Compare do not ask for the kind.
std::vector<std::string> operations_of(const SYSDT_DispatchRow &row, bool read_from_scripts)
{
    SYSDT_Record slots{};
    slots.formatIn = row.formatIn;
    slots.formatOut = row.formatOut;
    slots.luaSet = row.luaSet;
    std::vector<std::string> words = operations(slots);
    if (read_from_scripts)
        words.emplace_back("value");
    return words;
}

std::string help_of(Session &session, const SYSDT_Record &type, const SYSDT_DispatchRow &row)
{
    SYSDT_Record with_its_help = type;
    with_its_help.help = row.help;
    std::string help;
    for (const std::string &text : help_texts(session, with_its_help))
        help.append(help.empty() ? "" : " or ").append(text);
    return help;
}

} // namespace

std::vector<Kind> kinds(Session &session, const SYSDT_Record &type)
{
    const Tables tables = tables_of(session, type);
    std::vector<Kind> kinds;
    std::set<std::string> told;
    for (const SYSDT_DispatchRow &row : tables.rows) {
        const bool read =
            tables.readers.empty() ? row.luaGet != nullptr : tables.readers[kinds.size()].reader != nullptr;
        const bool takes_text = row.formatIn != nullptr;
        std::string help = help_of(session, type, row);
        const bool first = told.insert(help).second;
        kinds.push_back({.number = row.kind,
                         .name = {row.name, strnlen(row.name, sizeof row.name)},
                         .about = about_kind(type, row.kind),
                         .takes_text = takes_text,
                         .operations = operations_of(row, read),
                         .form = takes_text && first ? std::move(help) : ""});
    }
    return kinds;
}

std::uint32_t kind_of(std::span<const std::uint8_t> value)
{
    std::uint32_t number = 0;
    std::memcpy(&number, value.data(), std::min(value.size(), sizeof number));
    return number;
}

} // namespace bgpdt::toolkit
