// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A BGP-LS key as a script table, whose fields depend on the route type. The field tables of fields.hpp tell their
/// names and the order in which they are set; the order in which they are read stands here. IPv4 addresses, areas and
/// router identifiers of BGP are numbers, IPv6 addresses and SIDs arrays of 16 numbers, AS numbers, addresses of either
/// family, the identifier and the prefix tables of their own, IGP router identifiers strings.
///
/// Irregularities, all deliberate:
///  (1) Scripts always see eight bytes of an IGP router identifier; its told length is 8 for IS-IS, for any other
///      protocol 8 or 4, by whether the last four bytes are zero.
///  (2) When read, the told length is not used: the string has its own, up to 50 bytes.
///  (3) A field that a node, a link or an IPv4 prefix lacks ends the reading; what was read stays.
///  (4) Of these, a bad AS is passed over, and so is a node's bad identifier.
///  (5) An IPv6 prefix, a TE policy and a SID are always read with success; a number that is missing or no number
///      becomes the status for it, 0x801707, its low byte in a byte.
///  (6) Of these, a bad array, string or table within ends the reading; what was read stays.
///  (7) A route type of 0 or above 6 has nothing but its route type, both ways.
///  (8) Prefix length, protocol origin, flags and family keep their low 8 bits.
///  (9) The names differ: uiLocIgpRtIdLen and uiRmtIgpRtIdLen, uiLocOspfAreaId and uiRemOspfAreaId.
///  (10) The tables of a link and of a SID are made for fewer fields than they hold.
#include <array>
#include <cstring>
#include <string_view>

#include "bgp_datatype/bgp_datatype.h"
#include "bgp_datatype/fields.hpp"
#include "common/bytes.hpp"
#include "common/script.hpp"

namespace bgpdt::bgpls {
namespace {

using script::Table;

/// What scripts see as one: a field, or all fields of a table.
using Group = std::span<const Field>;

constexpr bool stands_in(const Field &field, std::string_view table)
{
    return field.table != nullptr && field.table == table;
}

/// The first field, with it those of its table.
constexpr Group first_group(Group fields)
{
    std::size_t count = 1;
    while (count < fields.size() && fields[0].table != nullptr && stands_in(fields[count], fields[0].table))
        ++count;
    return fields.first(count);
}

/// The kinds of group that are not plain numbers and arrays.
constexpr bool is_identifier(const Field &field) { return field.width == sizeof(u64); }
constexpr bool is_router_id(const Field &field) { return field.form == Form::bytes; }
constexpr bool is_router_id_length(const Field &field) { return field.count == 0; }
constexpr bool is_as(Group group) { return std::string_view(group.back().key) == "asType"; }

/// The group under a name: a table's, or the field's. With an unknown one it runs past the end, and the build stops.
consteval Group group_named(Group fields, std::string_view name)
{
    for (;; fields = fields.subspan(1)) {
        if (stands_in(fields[0], name))
            return first_group(fields);
        if (name == fields[0].key)
            return fields.first(1);
    }
}

template <std::size_t Count>
consteval auto reading_order(Group fields, const char *const (&names)[Count])
{
    std::array<Group, Count> order;
    for (std::size_t i = 0; i < Count; ++i)
        order[i] = group_named(fields, names[i]);
    return order;
}

constexpr auto node_order =
    reading_order(ls_node_fields, {"uiProtocolId", "uiLocIgpRtIdLen", "stLocIgpRtId", "uiLocOspfAreaId",
                                   "stLocalBgpLsId", "stLocalAs", "uiIdentifier"});
constexpr auto link_order = reading_order(
    ls_link_fields,
    {"uiProtocolId",    "uiMtId",         "stIpv6PeerAddr",  "stIpv6IntfAddr",  "stIpv4PeerAddr",  "stIpv4IntfAddr",
     "uiLinkRemId",     "uiLinkLocId",    "uiRmtIgpRtIdLen", "stRemIgpRtId",    "uiRemOspfAreaId", "uiRemoteBgpRtId",
     "stRemoteBgpLsId", "stRemoteAs",     "remoteMemberAs",  "uiLocIgpRtIdLen", "stLocIgpRtId",    "uiLocOspfAreaId",
     "uiLocalBgpRtId",  "stLocalBgpLsId", "stLocalAs",       "localMemberAs",   "uiIdentifier"});

consteval auto prefix_order(Group fields, const char *address)
{
    return reading_order(fields, {"uiProtocolId", "uiPrefixLen", address, "uiOspfRtType", "uiMtId", "uiLocIgpRtIdLen",
                                  "stLocIgpRtId", "uiLocOspfAreaId", "stLocalBgpLsId", "stLocalAs", "uiIdentifier"});
}

constexpr auto ipv4_prefix_order = prefix_order(ls_ipv4_prefix_fields, "stIpv4Prefix");
constexpr auto ipv6_prefix_order = prefix_order(ls_ipv6_prefix_fields, "stIpv6Prefix");
constexpr auto te_policy_order = reading_order(
    ls_te_policy_fields,
    {"uiProtocolId", "stLocalBgpLsId", "uiLocalBgpRtId", "teRouterId", "ipv6TeRouterId", "protocolOrigin", "flags",
     "endpoint", "color", "originatorAs", "originatorAddr", "discriminator", "stLocalAs", "uiIdentifier"});
constexpr auto srv6_sid_order = reading_order(
    ls_srv6_sid_fields, {"uiProtocolId", "srv6SidInfo", "uiMtId", "uiLocIgpRtIdLen", "stLocIgpRtId", "uiLocOspfAreaId",
                         "uiLocalBgpRtId", "stLocalBgpLsId", "stLocalAs", "localMemberAs", "uiIdentifier"});

/// Whether a reading order has all fields but the route type, which is read ahead of it.
constexpr bool complete(std::span<const Group> order, Group fields)
{
    std::size_t count = 1;
    for (const Group group : order)
        count += group.size();
    return count == fields.size();
}

static_assert(complete(node_order, ls_node_fields) && complete(link_order, ls_link_fields) &&
              complete(ipv4_prefix_order, ls_ipv4_prefix_fields) &&
              complete(ipv6_prefix_order, ls_ipv6_prefix_fields) && complete(te_policy_order, ls_te_policy_fields) &&
              complete(srv6_sid_order, ls_srv6_sid_fields));

/// How scripts and a route type go together.
struct RouteTypeScript {
    std::span<const Group> order{};
    i32 slots;                      ///< what the table is made for
    bool lenient = false;           ///< (5) (6)
    bool passes_identifier = false; ///< (4)
};

constexpr RouteTypeScript route_types[SYSDT_LS_ROUTE_TYPES] = {
    {.slots = 1}, // (7)
    {.order = node_order, .slots = 8, .passes_identifier = true},
    {.order = link_order, .slots = 22}, // (10)
    // SYSDT_LsPrefixLuaSetIpv4Prefix
    {.order = ipv4_prefix_order, .slots = 11},
    // SYSDT_LsPrefixLuaGetIpv6Prefix
    {.order = ipv6_prefix_order, .slots = 11, .lenient = true},
    // SYSDT_LsPrefixLuaSetTePolicy, SYSDT_LSPrefixLuaGetTePolicy
    {.order = te_policy_order, .slots = 15, .lenient = true},
    // SYSDT_LsPrefixLuaSetSrv6Sid, SYSDT_LsPrefixLuaGetSrv6Sid
    {.order = srv6_sid_order, .slots = 11, .lenient = true}, // (10)
};

const RouteTypeScript &script_of(u32 route_type)
{
    return route_types[route_type < SYSDT_LS_ROUTE_TYPES ? route_type : 0];
}

u32 told_router_id_length(const SYSDT_LsPrefix &key, const u8 *router_id) // (1)
{
    const u32 protocol = key.head.protocolId;
    const bool isis = protocol == SYSDT_LS_ISIS_LEVEL_1 || protocol == SYSDT_LS_ISIS_LEVEL_2;
    return isis || load<u32>(router_id + 4) != 0 ? 8 : 4;
}

void SYSDT_LsPrefixLuaSet_LocIgpRtId(const Table &out, const Field &field, const u8 *router_id)
{
    out.set_octets(field.key, {router_id, 8}); // (1)
}

void SYSDT_LsPrefixLuaSet_Identifier(void *state, const Table &out, const Field &field, const SYSDT_LsHead &head)
{
    const auto words = Table::create(state, 0, 2);
    words.set_number("hUint32", static_cast<u32>(head.identifier >> 32));
    words.set_number("lUint32", static_cast<u32>(head.identifier));
    out.set(field.key);
}

void set_table(void *state, const Table &out, Group group, const SYSDT_LsPrefix &key)
{
    Table::create(state, 0, static_cast<i32>(group.size())).set_fields(group, key.bytes);
    out.set(group[0].table);
}

void set_group(void *state, const Table &out, Group group, const SYSDT_LsPrefix &key)
{
    const Field &field = group[0];
    const u8 *const at = key.bytes + field.offset;
    if (is_router_id(field))
        SYSDT_LsPrefixLuaSet_LocIgpRtId(out, field, at);
    else if (is_router_id_length(field))
        out.set_number(field.key, told_router_id_length(key, at));
    else if (is_identifier(field))
        SYSDT_LsPrefixLuaSet_Identifier(state, out, field, key.head);
    else if (field.table != nullptr)
        set_table(state, out, group, key); // SYSDT_LsPrefixLuaSet_AsNum, SYSDT_LsPrefixLuaSet_Sysipv4ipv6
    else
        out.set_fields(group, key.bytes); // SYSDT_LsPrefixLuaSet_Sysipv6, SYSDT_LsPrefixLuaSetIpv4PrefixProtId
}

u32 get_router_id(const Table &source, const Field &field, u8 *at) // (2)
{
    u8 router_id[SYSDT_LS_ROUTER_ID_SIZE]{};
    const u32 status = source.get_octets(field.key, router_id);
    if (status == SYSDT_OK)
        std::memcpy(at, router_id, sizeof router_id);
    return status;
}

u32 SYSDT_LsPrefixLuaGet_Identifier(const Table &words, SYSDT_LsHead &head)
{
    u32 word = 0;
    if (!words.is_table() || !words.get_number("hUint32", word))
        return SYSDT_ERR_PARAM;
    head.identifier = u64{word} << 32 | static_cast<u32>(head.identifier);
    if (!words.get_number("lUint32", word))
        return SYSDT_ERR_PARAM;
    head.identifier = head.identifier >> 32 << 32 | word;
    return SYSDT_OK;
}

/// A number, or in its place the status. (5)
u32 SYSDT_LsPrefixLuaGet_Uinteger(const Table &source, const char *key)
{
    u32 number = SYSDT_ERR_PARAM;
    source.get_number(key, number);
    return number;
}

void store_number(const Field &field, u8 *at, u32 number)
{
    if (field.width == 1)
        *at = static_cast<u8>(number); // (8)
    else
        store(at, number);
}

u32 get_group(const Table &source, Group group, SYSDT_LsPrefix &key, bool lenient)
{
    const Field &field = group[0];
    u8 *const at = key.bytes + field.offset;
    u32 number = 0;
    if (is_router_id(field))
        return get_router_id(source, field, at);
    if (is_router_id_length(field))
        return source.get_number(field.key, number) || lenient ? SYSDT_OK : SYSDT_ERR_PARAM; // (2)
    if (is_identifier(field))
        return SYSDT_LsPrefixLuaGet_Identifier(source.field(field.key), key.head);
    const Table holder = field.table != nullptr ? source.field(field.table) : source;
    if (!holder.is_table())
        return SYSDT_ERR_PARAM;
    if (!lenient || group.size() > 1 || field.count > 1)
        // SYSDT_LsPrefixLuaGet_AsNum, SYSDT_LsPrefixLuaGet_Sysipv4ipv6, SYSDT_LsPrefixLuaGet_Sysipv6
        return holder.get_fields(group, key.bytes);
    store_number(field, at, SYSDT_LsPrefixLuaGet_Uinteger(holder, field.key));
    return SYSDT_OK;
}

/// Whether a failure does not matter. (4)
bool passes(const RouteTypeScript &type, Group group)
{
    return (is_as(group) && !type.lenient) || (is_identifier(group[0]) && type.passes_identifier);
}

u32 get_key(void *state, const Table &source, SYSDT_LsPrefix &key)
{
    u32 route_type = 0;
    if (!source.is_table() || !source.get_number("uiRouteType", route_type))
        return SYSDT_ERR_PARAM;
    key.head.routeType = route_type;
    const RouteTypeScript &type = script_of(route_type);
    for (const Group group : type.order) {
        const u32 status = get_group(source, group, key, type.lenient);
        script::pop_to(state, source.index());
        if (status != SYSDT_OK && !passes(type, group))
            return type.lenient ? SYSDT_OK : status; // (3) (6)
    }
    return SYSDT_OK;
}

} // namespace
} // namespace bgpdt::bgpls

using namespace bgpdt;
using namespace bgpdt::bgpls;

u32 SYSDT_LSPrefixLuaSet(void *state, i32 table, const char *name, u32, u32 length, const void *data)
{
    if (const u32 status = script::check_call(state, name, data, length, SYSDT_LS_SIZE); status != SYSDT_OK)
        return status;
    const auto &key = *static_cast<const SYSDT_LsPrefix *>(data);
    table = script::absolute(state, table);
    const auto out = script::Table::create(state, 0, script_of(key.head.routeType).slots);
    for (Group fields = ls_layout_of(key.head.routeType).fields; !fields.empty();) {
        const Group group = first_group(fields);
        set_group(state, out, group, key);
        fields = fields.subspan(group.size());
    }
    SYSDT_SPTI_SetField(state, table, name);
    return SYSDT_OK;
}

u32 SYSDT_LSPrefixLuaGet(void *state, i32 table, const char *name, u32, u32 length, void *data)
{
    if (const u32 status = script::check_call(state, name, data, length, SYSDT_LS_SIZE); status != SYSDT_OK)
        return status;
    const i32 top = SYSDT_SPTI_GetTop(state);
    const u32 status = get_key(state, script::Table::field(state, table, name), *static_cast<SYSDT_LsPrefix *>(data));
    script::pop_to(state, top);
    return status;
}
