// SPDX-License-Identifier: Apache-2.0
#include "samples.hpp"

#include "bgp_datatype/values.h"

namespace bgpdt::tool {
namespace {

constexpr const char *ls_node = "[NODE][OSPFv2][IDENTIFIER0][LOCAL[as64496][bgp-ls-identifier192.0.2.1]"
                                "[ospf-area-id0.0.0.0][igp-router-id192.0.2.2]]";

std::vector<std::string> pairs() { return {"64496:1", "65551:1", "1.15:1", "192.0.2.1:1"}; }

std::vector<std::string> evpn_keys()
{
    return {"0011.2233.4455.6677.8899:100", "100:48:0000-5e00-5301:32:192.0.2.1", "100:32:192.0.2.1",
            "0011.2233.4455.6677.8899:32:192.0.2.1", "100:192.0.2.0:24"};
}

} // namespace

Sample sample_of(std::uint16_t type_id)
{
    switch (type_id) {
    case SYSDT_TYPE_ASNUM: return {"AS number", {"64496", "1.10"}};
    case SYSDT_TYPE_ASNUMEXT: return {"AS number or 0", {"0", "64496", "1.10"}};
    case SYSDT_TYPE_ASNUM_ENHANCE: return {"list of up to 256 AS numbers", {"64496 1.10"}};
    case SYSDT_TYPE_COMMUNITY: return {"community", {"64496:1", "4226809857", "no-export"}};
    case SYSDT_TYPE_CMNTY_ENHANCE: return {"list of up to 32 communities", {"64496:1 no-export"}};
    case SYSDT_TYPE_LARGECOMMUNITY: return {"large community", {"64496:1:2"}};
    case SYSDT_TYPE_EXTCOMMUNITY: return {"extended community", pairs()};
    case SYSDT_TYPE_EXTCOMMUNITY_BW: return {"link bandwidth community", {}};
    case SYSDT_TYPE_VRFRD: return {"route distinguisher", pairs()};
    case SYSDT_TYPE_VRFRT: return {"route target", pairs()};
    case SYSDT_TYPE_SOO: return {"site of origin", pairs()};
    case SYSDT_TYPE_VRFRTV6: return {"IPv6 route target", {"2001:db8::1.1"}};
    case SYSDT_TYPE_RTPRD: return {"route distinguisher, any number of it", {"64496:1", "64496:*", "192.0.2.1:*"}};
    case SYSDT_TYPE_VPNID: return {"global VPN identifier in hexadecimal", {"5e:1f"}};
    case SYSDT_TYPE_BOLRD: return {"route distinguisher behind its kind", pairs()};
    case SYSDT_TYPE_BOLPREFIX: return {"route key of any kind", {}};
    case SYSDT_TYPE_EVNPREFIX: return {"EVPN route key", evpn_keys()};
    case SYSDT_TYPE_L2VPNPREFIX: return {"L2VPN route key", {}};
    case SYSDT_TYPE_VPNV4MCPREFIX: return {"VPNv4 multicast route key", {"192.0.2.0/24"}};
    case SYSDT_TYPE_MDTPREFIX: return {"multicast distribution tree route key", {"192.0.2.0/24"}};
    case SYSDT_TYPE_BGPLSPREFIX: return {"BGP-LS route key", {ls_node}};
    case SYSDT_TYPE_TIME_RANGE: return {"duration", {"1d2h3m4s"}};
    case SYSDT_TYPE_ATTRIDBITMAP: return {"set of attribute identifiers", {}};
    case SYSDT_TYPE_SID_STRUCTURE: return {"structure of an SRv6 SID", {}};
    case SYSDT_TYPE_CVRFNAME: return {"client VRF name", {"vpn1"}};
    case 0x6003: // the name-index types
    case 0x600e:
    case 0x601b:
    case 0x6052:
    case 0x605c:
    case 0x606a:
    case 0x6077:
    case 0x6083: return {"index or its name in --names FILE", {"7"}};
    default: return {};
    }
}

} // namespace bgpdt::tool
