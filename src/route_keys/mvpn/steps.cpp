// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The exported parsers of single kinds of multicast-VPN route keys and of their addresses, which nothing of the plug-in
/// calls. A kind's parser gets the text cut into its sections, and where the sections behind the first begin.
#include "route_keys/mvpn/text.hpp"

using namespace bgpdt;
using namespace bgpdt::mvpn;

namespace {

[[gnu::noinline]] u32 parse_kind(const Kind &kind, char *text, SYSDT_BolValue *value, const u32 positions[3],
                                 ReadAddress *read_address)
{
    if (text == nullptr || value == nullptr || positions == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const Split split{text, kind.count - 1U, {positions[0], positions[1], positions[2]}};
    return read_sections(kind, split, read_address, *value);
}

} // namespace

u32 SYSDT_Str2IPv4IPv6(const char *text, SYSDT_EvpnAddress *field)
{
    return text == nullptr || field == nullptr ? SYSDT_ERR_NULL_PTR : read_either(text, *field);
}

u32 SYSDT_IsIpv6MultiCastAddr(const char *text)
{
    SYSDT_EvpnAddress field{};
    if (text == nullptr || read_ipv6(text, field) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    return is_ipv6_multicast(field) ? 1 : 0;
}

u32 SYSDT_Str2NGPrefix_Type5_41(char *text, SYSDT_BolValue *value, u32 secondSection)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    read_ipv4_pair({text, 1, {secondSection}}, *value);
    return SYSDT_OK;
}

u32 SYSDT_Str2NGIpv6Prefix_Type1(const char *text, SYSDT_BolIpv6 *value)
{
    if (text == nullptr || value == nullptr)
        return SYSDT_ERR_NULL_PTR;
    value->subKind = SYSDT_BOL_IPV6;
    return SYSDT_Str2Ipv6(text, value->address) == SYSDT_OK ? SYSDT_OK : SYSDT_ERR_FAIL;
}

#define BGPDT_NG_PARSER(name, sub_kind, read_address)                                                                  \
    u32 name(char *text, SYSDT_BolValue *value, const u32 positions[3])                                                \
    {                                                                                                                  \
        return parse_kind(kind<sub_kind>, text, value, positions, read_address);                                       \
    }

BGPDT_NG_PARSER(SYSDT_Str2NGIpv6Prefix_Type3, SYSDT_BOL_NG_TYPE_3, read_either)
BGPDT_NG_PARSER(SYSDT_Str2NGIpv6Prefix_Type43, SYSDT_BOL_NG_TYPE_4_3, read_either)
BGPDT_NG_PARSER(SYSDT_Str2NGIpv6Prefix_Type5, SYSDT_BOL_NG_TYPE_5, read_either)
BGPDT_NG_PARSER(SYSDT_Str2NGIpv6Prefix_Type41, SYSDT_BOL_NG_TYPE_4_1, read_either)
BGPDT_NG_PARSER(SYSDT_Str2NGIpv6Prefix_Type42, SYSDT_BOL_NG_TYPE_4_2, read_either)
BGPDT_NG_PARSER(SYSDT_Str2NGIpv6Prefix_Type6_7, SYSDT_BOL_NG_TYPE_6, read_ipv6)

u32 SYSDT_Str2NGIpv6Prefix_Type5_41_42(char *text, SYSDT_BolValue *value, const u32 positions[3])
{
    if (text == nullptr || value == nullptr || positions == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return read_pair({text, 1, {positions[0]}}, *value);
}
