// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What each route type of a BGP-LS key is made of, and how the key takes over what the groups of its text told. The
/// groups and the irregularities are told in text.cpp.
#include <cstring>

#include "bgpls/key.hpp"

using namespace bgpdt;
using namespace bgpdt::bgpls;

namespace {

constexpr u32 any_key = key_bit::route_type | key_bit::protocol | key_bit::identifier | key_bit::local;

} // namespace

// Route type, required groups; then protocol, identifier, local node, remote node, link, prefix, TE, SID.
constinit const LsPrefixNlriParser g_bgplsPrefixParsers[SYSDT_LS_ROUTE_TYPES] = {
    {0, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr},
    {SYSDT_LS_NODE, any_key, BgpLsNodeParseProtocol, BgpLsNodeParseIdentifier, BgpLsNodeParseLocalNode, nullptr,
     nullptr, nullptr, nullptr, nullptr},
    {SYSDT_LS_LINK, any_key | key_bit::remote | key_bit::link, BgpLsLinkParseProtocol, BgpLsLinkParseIdentifier,
     BgpLsLinkParseLocalNode, BgpLsLinkParseRemoteNode, BgpLsLinkParseLink, nullptr, nullptr, nullptr},
    {SYSDT_LS_IPV4_PREFIX, any_key | key_bit::prefix, BgpLsIpv4PrefixParseProtocol, BgpLsIpv4PrefixParseIdentifier,
     BgpLsIpv4PrefixParseLocalNode, nullptr, nullptr, BgpLsIPv4PrefixParsePrefix, nullptr, nullptr},
    {SYSDT_LS_IPV6_PREFIX, any_key | key_bit::prefix, BgpLsIpv6PrefixParseProtocol, BgpLsIpv6PrefixParseIdentifier,
     BgpLsIpv6PrefixParseLocalNode, nullptr, nullptr, BgpLsIPv6PrefixParsePrefix, nullptr, nullptr},
    {SYSDT_LS_TE_POLICY, any_key | key_bit::te, BgpLsTePolicyParseProtocol, BgpLsTePolicyParseIdentifier,
     BgpLsTePolicyParseLocalNode, nullptr, nullptr, nullptr, BgpLsTePolicyParseTe, nullptr},
    {SYSDT_LS_SRV6_SID, any_key | key_bit::sid, BgpLsSrv6SidParseProtocol, BgpLsSrv6SidParseIdentifier,
     BgpLsSrv6SidParseLocalNode, nullptr, nullptr, nullptr, nullptr, BgpLsSrv6SidParseSid},
};

namespace bgpdt::bgpls {
namespace {

u32 fill_protocol(const u32 &protocol, SYSDT_LsPrefix &key, const ParseContext &)
{
    key.head.protocolId = protocol;
    return SYSDT_OK;
}

u32 fill_identifier(const u32 &identifier, SYSDT_LsPrefix &key, const ParseContext &)
{
    key.head.identifier = identifier;
    return SYSDT_OK;
}

/// Whether all that must have been seen was, and nothing that must not.
bool complete(u32 seen, u32 must, u32 must_not = 0) { return (seen & must) == must && (seen & must_not) == 0; }

template <class Desc>
void fill_desc(const LsNodeDescScratch &parsed, Desc &desc)
{
    desc.as = parsed.as;
    desc.bgpLsId = parsed.bgpLsId;
    if constexpr (requires { desc.memberAs; })
        desc.memberAs = parsed.memberAs;
    desc.ospfArea = parsed.ospfArea;
    std::memcpy(desc.igpRouterId, parsed.igpRouterId, sizeof desc.igpRouterId);
}

/// Of a node or a prefix, which have their local node at the same place.
u32 fill_plain_node(const LsNodeDescScratch &parsed, SYSDT_LsPrefix &key, const ParseContext &)
{
    if (!complete(parsed.seen, node_bit::bgp_ls_id, node_bit::bgp_router_id | node_bit::member_as))
        return SYSDT_ERR_FAIL;
    fill_desc(parsed, key.node.local);
    return SYSDT_OK;
}

bool complete_member_node(const LsNodeDescScratch &parsed, const ParseContext &context)
{
    return complete(parsed.seen, BgpLsNodeDescMandentoryFields(context.protocolId),
                    BgpLsNodeDescUnsupportFields(context.protocolId));
}

u32 fill_link_local(const LsNodeDescScratch &parsed, SYSDT_LsPrefix &key, const ParseContext &context)
{
    if (!complete_member_node(parsed, context))
        return SYSDT_ERR_FAIL;
    fill_desc(parsed, key.link.local);
    key.link.localBgpRouterId = parsed.bgpRouterId;
    return SYSDT_OK;
}

u32 fill_link_remote(const LsNodeDescScratch &parsed, SYSDT_LsPrefix &key, const ParseContext &)
{
    if (!complete(parsed.seen, node_bit::bgp_ls_id)) // (12)
        return SYSDT_ERR_FAIL;
    fill_desc(parsed, key.link.remote);
    key.link.remoteBgpRouterId = parsed.bgpRouterId;
    return SYSDT_OK;
}

u32 fill_sid_local(const LsNodeDescScratch &parsed, SYSDT_LsPrefix &key, const ParseContext &context)
{
    if (!complete_member_node(parsed, context))
        return SYSDT_ERR_FAIL;
    fill_desc(parsed, key.srv6Sid.local);
    key.srv6Sid.bgpRouterId = parsed.bgpRouterId;
    return SYSDT_OK;
}

u32 fill_te_local(const LsNodeDescScratch &parsed, SYSDT_LsPrefix &key, const ParseContext &)
{
    if (!complete(parsed.seen, node_bit::bgp_ls_id, node_bit::member_as))
        return SYSDT_ERR_FAIL;
    auto &policy = key.tePolicy; // (13)
    policy.as = parsed.as;
    policy.bgpLsId = parsed.bgpLsId;
    policy.bgpRouterId = parsed.bgpRouterId;
    policy.ipv4RouterId = parsed.ipv4RouterId;
    std::memcpy(policy.ipv6RouterId, parsed.ipv6RouterId, sizeof policy.ipv6RouterId);
    return SYSDT_OK;
}

u32 fill_link(const LsLinkScratch &parsed, SYSDT_LsPrefix &key, const ParseContext &context)
{
    constexpr u32 bgp_link = link_bit::identifier | link_bit::local | link_bit::remote;
    if (context.protocolId == SYSDT_LS_BGP && !complete(parsed.seen, bgp_link)) // (16)
        return SYSDT_ERR_FAIL;
    auto &link = key.link;
    link.linkLocalId = parsed.linkLocalId;
    link.linkRemoteId = parsed.linkRemoteId;
    link.ipv4Interface = parsed.ipv4Interface;
    link.ipv4Neighbor = parsed.ipv4Neighbor;
    std::memcpy(link.ipv6Interface, parsed.ipv6Interface, sizeof link.ipv6Interface);
    std::memcpy(link.ipv6Neighbor, parsed.ipv6Neighbor, sizeof link.ipv6Neighbor);
    link.mtId = parsed.mtId;
    return SYSDT_OK;
}

u32 fill_ipv4_prefix(const LsPrefixScratch &parsed, SYSDT_LsPrefix &key, const ParseContext &)
{
    if (!complete(parsed.seen, prefix_bit::ospf_route_type | prefix_bit::prefix))
        return SYSDT_ERR_FAIL;
    auto &prefix = key.ipv4Prefix;
    prefix.mtId = parsed.mtId;
    prefix.ospfRouteType = parsed.ospfRouteType;
    prefix.prefix = parsed.ipv4Prefix;
    prefix.prefixLength = parsed.ipv4Length;
    return SYSDT_OK;
}

u32 fill_ipv6_prefix(const LsPrefixScratch &parsed, SYSDT_LsPrefix &key, const ParseContext &context)
{
    constexpr u32 any_prefix = prefix_bit::ospf_route_type | prefix_bit::prefix;
    const u32 must = context.protocolId == SYSDT_LS_OSPFV3 ? any_prefix : any_prefix | prefix_bit::mt_id; // (17)
    if (!complete(parsed.seen, must))
        return SYSDT_ERR_FAIL;
    auto &prefix = key.ipv6Prefix;
    prefix.mtId = parsed.mtId;
    prefix.ospfRouteType = parsed.ospfRouteType;
    std::memcpy(prefix.prefix, parsed.ipv6Prefix, sizeof prefix.prefix);
    prefix.prefixLength = parsed.ipv6Length;
    return SYSDT_OK;
}

u32 fill_te(const LsTeScratch &parsed, SYSDT_LsPrefix &key, const ParseContext &)
{
    if (!complete(parsed.seen, te_bit::protocol_origin | te_bit::flag | te_bit::endpoint | te_bit::color |
                                   te_bit::originator_as | te_bit::originator_address | te_bit::discriminator))
        return SYSDT_ERR_FAIL;
    auto &policy = key.tePolicy;
    policy.protocolOrigin = parsed.protocolOrigin;
    policy.flags = parsed.flags;
    policy.endpoint = parsed.endpoint;
    policy.color = parsed.color;
    policy.originatorAs = parsed.originatorAs;
    policy.originatorAddress = parsed.originatorAddress;
    policy.discriminator = parsed.discriminator;
    return SYSDT_OK;
}

u32 fill_sid(const LsSidScratch &parsed, SYSDT_LsPrefix &key, const ParseContext &)
{
    if (!complete(parsed.seen, sid_bit::sid))
        return SYSDT_ERR_FAIL;
    key.srv6Sid.mtId = parsed.mtId;
    std::memcpy(key.srv6Sid.sid, parsed.sid, sizeof key.srv6Sid.sid);
    return SYSDT_OK;
}

template <class Parsed>
u32 call(u32 (*fill)(const Parsed &, SYSDT_LsPrefix &, const ParseContext &), const void *parsed, void *record,
         const ParseContext *context)
{
    return fill(*static_cast<const Parsed *>(parsed), *static_cast<SYSDT_LsPrefix *>(record), *context);
}

} // namespace
} // namespace bgpdt::bgpls

u32 BgpLsNodeDescMandentoryFields(u32 protocol) // (12)
{
    return node_bit::bgp_ls_id | (protocol == SYSDT_LS_BGP ? node_bit::bgp_router_id : node_bit::ospf_area);
}

u32 BgpLsNodeDescUnsupportFields(u32 protocol) // (12)
{
    return protocol == SYSDT_LS_BGP ? node_bit::ospf_area : node_bit::bgp_router_id;
}

#define BGPDT_LS_SLOT(name, fill)                                                                                      \
    std::uint32_t name(const void *parsed, void *record, LsPrefixParseContext *context)                                \
    {                                                                                                                  \
        return call(fill, parsed, record, context);                                                                    \
    }

BGPDT_LS_SLOT(BgpLsNodeParseProtocol, fill_protocol)
BGPDT_LS_SLOT(BgpLsLinkParseProtocol, fill_protocol)
BGPDT_LS_SLOT(BgpLsIpv4PrefixParseProtocol, fill_protocol)
BGPDT_LS_SLOT(BgpLsIpv6PrefixParseProtocol, fill_protocol)
BGPDT_LS_SLOT(BgpLsTePolicyParseProtocol, fill_protocol)
BGPDT_LS_SLOT(BgpLsSrv6SidParseProtocol, fill_protocol)

BGPDT_LS_SLOT(BgpLsNodeParseIdentifier, fill_identifier)
BGPDT_LS_SLOT(BgpLsLinkParseIdentifier, fill_identifier)
BGPDT_LS_SLOT(BgpLsIpv4PrefixParseIdentifier, fill_identifier)
BGPDT_LS_SLOT(BgpLsIpv6PrefixParseIdentifier, fill_identifier)
BGPDT_LS_SLOT(BgpLsTePolicyParseIdentifier, fill_identifier)
BGPDT_LS_SLOT(BgpLsSrv6SidParseIdentifier, fill_identifier)

BGPDT_LS_SLOT(BgpLsNodeParseLocalNode, fill_plain_node)
BGPDT_LS_SLOT(BgpLsLinkParseLocalNode, fill_link_local)
BGPDT_LS_SLOT(BgpLsIpv4PrefixParseLocalNode, fill_plain_node)
BGPDT_LS_SLOT(BgpLsIpv6PrefixParseLocalNode, fill_plain_node)
BGPDT_LS_SLOT(BgpLsTePolicyParseLocalNode, fill_te_local)
BGPDT_LS_SLOT(BgpLsSrv6SidParseLocalNode, fill_sid_local)

BGPDT_LS_SLOT(BgpLsLinkParseRemoteNode, fill_link_remote)
BGPDT_LS_SLOT(BgpLsLinkParseLink, fill_link)
BGPDT_LS_SLOT(BgpLsIPv4PrefixParsePrefix, fill_ipv4_prefix)
BGPDT_LS_SLOT(BgpLsIPv6PrefixParsePrefix, fill_ipv6_prefix)
BGPDT_LS_SLOT(BgpLsTePolicyParseTe, fill_te)
BGPDT_LS_SLOT(BgpLsSrv6SidParseSid, fill_sid)
