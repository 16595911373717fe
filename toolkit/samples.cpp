// SPDX-License-Identifier: Apache-2.0
#include "samples.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "bgp_datatype/values.h"

namespace bgpdt::toolkit {
namespace {

std::vector<std::string> pairs() { return {"64496:1", "65551:1", "1.15:1", "192.0.2.1:1"}; }

std::vector<std::string> pairs_or_any()
{
    std::vector<std::string> texts = pairs();
    for (const char *any : {"64496:*", "65551:*", "1.15:*", "192.0.2.1:*"})
        texts.emplace_back(any);
    return texts;
}

std::vector<std::string> evpn_keys()
{
    return {"0011.2233.4455.6677.8899:100",
            "100:48:0000-5e00-5301:32:192.0.2.1",
            "100:48:0000-5e00-5301:128:[2001:db8::1]",
            "100:32:192.0.2.1",
            "100:128:[2001:db8::1]",
            "0011.2233.4455.6677.8899",
            "0011.2233.4455.6677.8899:32:192.0.2.1",
            "0011.2233.4455.6677.8899:128:[2001:db8::1]",
            "100:192.0.2.0:24",
            "100:[2001:db8::]:64",
            "100:32:192.0.2.1:32:233.252.0.1:32:192.0.2.2",
            "100:32:192.0.2.1:32:233.252.0.1:128:[2001:db8::1]",
            "0011.2233.4455.6677.8899:100:32:192.0.2.1:32:233.252.0.1:32:192.0.2.2",
            "0011.2233.4455.6677.8899:100:32:192.0.2.1:32:233.252.0.1:128:[2001:db8::1]",
            "0011.2233.4455.6677.8899:100:32:192.0.2.1:32:233.252.0.1:32:192.0.2.2:100"};
}

/// Those that the dispatch gives to each kind.
std::vector<KindTexts> route_keys()
{
    std::vector<std::string> targets = pairs();
    targets.emplace_back("aabb-ccdd-eeff");
    return {{SYSDT_BOL_IPV4, {"192.0.2.1"}},
            {SYSDT_BOL_IPV6, {"2001:db8::1"}},
            {SYSDT_BOL_EVN, evpn_keys()},
            {SYSDT_BOL_VRFRTEXT, targets},
            {SYSDT_BOL_NG_TYPE_2, {"64496", "1.10"}},
            {SYSDT_BOL_NG_TYPE_4_2, {"64496:192.0.2.1", "64496-2001:db8::1"}},
            {SYSDT_BOL_NG_TYPE_5, {"192.0.2.1:233.252.0.1", "2001:db8::1-ff0e::db8:0:1"}},
            {SYSDT_BOL_NG_TYPE_4_1, {"192.0.2.1:192.0.2.2", "2001:db8::1-2001:db8::2"}},
            {SYSDT_BOL_NG_TYPE_6, {"64496:192.0.2.1:233.252.0.1", "64496-2001:db8::1-ff0e::db8:0:1"}},
            {SYSDT_BOL_NG_TYPE_3, {"192.0.2.1:233.252.0.1:192.0.2.9", "2001:db8::1-ff0e::db8:0:1-2001:db8::9"}},
            {SYSDT_BOL_NG_TYPE_4_3,
             {"192.0.2.1:233.252.0.1:192.0.2.9:192.0.2.10", "2001:db8::1-ff0e::db8:0:1-2001:db8::9-2001:db8::a"}},
            {SYSDT_BOL_RPD, {"1/192.0.2.1/100"}},
            {SYSDT_BOL_SRPOLICY, {"[1][2][192.0.2.1]", "[1][2][2001:db8::1]"}},
            {SYSDT_BOL_SDWAN, {"1-2-3-192.0.2.1", "1-2-3-2001:db8::1"}}};
}

constexpr std::uint32_t only_kind = 0; ///< behind the sub-kind word of a BOLRD

Sample sample_by_kinds(const char *about, std::vector<KindTexts> kinds)
{
    Sample sample{about, {}};
    for (const KindTexts &of_kind : kinds)
        sample.texts.insert(sample.texts.end(), of_kind.texts.begin(), of_kind.texts.end());
    sample.kinds = std::move(kinds);
    return sample;
}

std::vector<std::string> ls_keys()
{
    const std::string speaker = "[as64496][bgp-ls-identifier192.0.2.1]";
    const std::string node = speaker + "[ospf-area-id0.0.0.0]";
    return {"[NODE][OSPFv2][IDENTIFIER0][LOCAL" + node + "[igp-router-id192.0.2.2]]",
            "[NODE][ISIS-LEVEL-1][IDENTIFIER0][LOCAL" + node + "[igp-router-id0000.0000.0001.00]]",
            "[LINK][OSPFv2][IDENTIFIER0][LOCAL" + node + "[igp-router-id192.0.2.2]][REMOTE" + node +
                "[igp-router-id192.0.2.3]][LINK[if-address192.0.2.4][peer-address192.0.2.5][mt-id0]]",
            "[LINK][BGP][IDENTIFIER5][LOCAL" + speaker + "[bgp-router-id192.0.2.1]][REMOTE" + speaker +
                "[bgp-router-id192.0.2.2]][LINK[identifier0.0.0.1.0.0.0.2][local198.51.100.1][remote198.51.100.2]]",
            "[IPV4-PREFIX][OSPFv2][IDENTIFIER0][LOCAL" + node +
                "[igp-router-id192.0.2.2]][PREFIX[mt-id0][ospf-route-type1][prefix192.0.2.0/24]]",
            "[IPV6-PREFIX][OSPFv3][IDENTIFIER0][LOCAL" + node +
                "[igp-router-id192.0.2.2]][PREFIX[mt-id0][ospf-route-type1][prefix2001:db8::/32]]",
            "[TEPOLICY][SEGMENT-ROUTING][IDENTIFIER0][LOCAL" + speaker +
                "[bgp-router-id192.0.2.2][ipv4-router-id192.0.2.3][ipv6-router-id2001:db8::3]]" +
                "[TE[protocol-origin2][Flag128][endpoint192.0.2.9][color100][originator-as64496]" +
                "[originator-address192.0.2.1][discriminator7]]",
            "[SRV6-SID][ISIS-LEVEL-2][IDENTIFIER0][LOCAL" + node +
                "[igp-router-id0000.0000.0001.00]][SID[mt-id2][sid2001:db8::1]]"};
}

std::vector<std::string> community_words() { return {"internet", "no-export", "no-advertise", "no-export-subconfed"}; }

std::vector<std::string> ls_words()
{
    return {"NODE",         "LINK",
            "IPV4-PREFIX",  "IPV6-PREFIX",
            "TEPOLICY",     "SRV6-SID",
            "ISIS-LEVEL-1", "ISIS-LEVEL-2",
            "OSPFv2",       "OSPFv3",
            "DIRECT",       "STATIC",
            "BGP",          "SEGMENT-ROUTING",
            "IDENTIFIER",   "LOCAL",
            "REMOTE",       "PREFIX",
            "TE",           "SID",
            "as",           "member-as",
            "identifier",   "bgp-ls-identifier",
            "ospf-area-id", "bgp-router-id",
            "local",        "igp-router-id",
            "remote",       "ipv4-router-id",
            "if-address",   "ipv6-router-id",
            "peer-address", "link-local-id",
            "mt-id",        "link-remote-id",
            "prefix",       "ospf-route-type",
            "Flag",         "protocol-origin",
            "endpoint",     "originator-as",
            "color",        "originator-address",
            "sid",          "discriminator"};
}

} // namespace

std::vector<std::string> Sample::texts_of(std::uint32_t kind) const
{
    const auto found = std::ranges::find(kinds, kind, &KindTexts::kind);
    return found == kinds.end() ? std::vector<std::string>() : found->texts;
}

bool is_name_index(std::uint16_t type_id)
{
    constexpr std::uint16_t ids[] = {0x6003, 0x600e, 0x601b, 0x6052, 0x605c, 0x606a, 0x6077, 0x6083};
    return std::ranges::find(ids, type_id) != std::end(ids);
}

Sample sample_of(std::uint16_t type_id)
{
    switch (type_id) {
    case SYSDT_TYPE_ASNUM: return {"AS number", {"64496", "1.10"}};
    case SYSDT_TYPE_ASNUMEXT: return {"AS number or 0", {"0", "64496", "1.10"}};
    case SYSDT_TYPE_ASNUM_ENHANCE: return {"list of up to 256 AS numbers", {"64496 1.10"}};
    case SYSDT_TYPE_COMMUNITY: return {"community", {"64496:1", "4226809857", "no-export"}, community_words()};
    case SYSDT_TYPE_CMNTY_ENHANCE:
        return {"list of up to 32 communities", {"64496:1 4226809857 no-export"}, community_words()};
    case SYSDT_TYPE_LARGECOMMUNITY: return {"large community", {"64496:1:2"}};
    case SYSDT_TYPE_EXTCOMMUNITY: return {"extended community", pairs()};
    case SYSDT_TYPE_EXTCOMMUNITY_BW: return {"link bandwidth community", {}};
    case SYSDT_TYPE_VRFRD: return {"route distinguisher", pairs()};
    case SYSDT_TYPE_VRFRT: return {"route target", pairs()};
    case SYSDT_TYPE_SOO: return {"site of origin", pairs()};
    case SYSDT_TYPE_VRFRTV6: return {"IPv6 route target", {"2001:db8::1.1"}};
    case SYSDT_TYPE_RTPRD: return {"route distinguisher, any number of it", pairs_or_any()};
    case SYSDT_TYPE_VPNID: return {"global VPN identifier in hexadecimal", {"5e:1f"}};
    case SYSDT_TYPE_BOLRD: return sample_by_kinds("route distinguisher behind its kind", {{only_kind, pairs()}});
    case SYSDT_TYPE_BOLPREFIX: return sample_by_kinds("route key of any kind", route_keys());
    case SYSDT_TYPE_EVNPREFIX: return {"EVPN route key", evpn_keys()};
    case SYSDT_TYPE_L2VPNPREFIX: return {"L2VPN route key", {}};
    case SYSDT_TYPE_VPNV4MCPREFIX: return {"VPNv4 multicast route key", {"192.0.2.0/24"}};
    case SYSDT_TYPE_MDTPREFIX: return {"multicast distribution tree route key", {"192.0.2.0/24"}};
    case SYSDT_TYPE_BGPLSPREFIX: return {"BGP-LS route key", ls_keys(), ls_words()};
    case SYSDT_TYPE_TIME_RANGE: return {"duration", {"1d2h3m4s"}};
    case SYSDT_TYPE_ATTRIDBITMAP: return {"set of attribute identifiers", {}};
    case SYSDT_TYPE_SID_STRUCTURE: return {"structure of an SRv6 SID", {}};
    case SYSDT_TYPE_CVRFNAME: return {"client VRF name", {"vpn1"}};
    default: return is_name_index(type_id) ? Sample{"index, or its name in a names file", {"7"}} : Sample{};
    }
}

} // namespace bgpdt::toolkit
