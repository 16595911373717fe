// SPDX-License-Identifier: Apache-2.0
#include "grammars.hpp"

#include "bgp_datatype/values.h"
#include "samples.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr const char *pair = "A:N, H.L:N or IPV4:N. N is up to 4294967295 behind an A up to 65535, else up to 65535; "
                             "A is up to 4294967295, H and L are up to 65535";

} // namespace

std::string grammar_of(std::uint16_t type_id)
{
    switch (type_id) {
    case SYSDT_TYPE_ASNUM: return "a number from 1 to 4294967295, or H.L, both up to 65535 and H not 0";
    case SYSDT_TYPE_ASNUMEXT: return "a number from 0 to 4294967295, or H.L, both up to 65535 and H not 0";
    case SYSDT_TYPE_ASNUM_ENHANCE: return "1 to 256 AS numbers as ASNUM takes them, blanks between them";
    case SYSDT_TYPE_COMMUNITY:
        return "A:N, both up to 65535; a number up to 4294967295; or internet, no-export, no-advertise, "
               "no-export-subconfed";
    case SYSDT_TYPE_CMNTY_ENHANCE: return "1 to 32 communities as COMMUNITY takes them, blanks between them";
    case SYSDT_TYPE_LARGECOMMUNITY: return "A:N:M, each up to 4294967295";
    case SYSDT_TYPE_VRFRD:
    case SYSDT_TYPE_VRFRT:
    case SYSDT_TYPE_SOO:
    case SYSDT_TYPE_BOLRD: return std::string(pair) + "; 0:0 and 0.0:0 are refused";
    case SYSDT_TYPE_EXTCOMMUNITY: return pair;
    case SYSDT_TYPE_RTPRD: return std::string(pair) + "; * for N is any number";
    case SYSDT_TYPE_VRFRTV6: return "IPV6.N, N being 0 or 1";
    case SYSDT_TYPE_VPNID: return "X:X, hexadecimal in small letters, up to ffffff and up to ffffffff; 0:0 is refused";
    case SYSDT_TYPE_EVNPREFIX:
        return "the parts of a route, colons between them: ESI:TAG; TAG:LENGTH:MAC:LENGTH:IP; TAG:LENGTH:IP; "
               "ESI:LENGTH:IP; "
               "ESI; TAG:IP:LENGTH; the three addresses of a multicast route, a LENGTH in front of each. IPv6 "
               "addresses "
               "stand in brackets, an ESI is five groups of hexadecimal digits, a MAC three";
    case SYSDT_TYPE_BOLPREFIX:
        return "what its kinds take: IPV4 or IPV6; an EVPN route; a route target; AS numbers and addresses of a "
               "multicast "
               "VPN route with \":\" between them, with \"-\" if one is IPv6; TYPE/IPV4/N; TYPE-PORT-SITE-IP; "
               "[N][COLOUR][IP]";
    case SYSDT_TYPE_VPNV4MCPREFIX:
    case SYSDT_TYPE_MDTPREFIX: return "IPV4/LENGTH, the length up to 32";
    case SYSDT_TYPE_BGPLSPREFIX:
        return "groups in brackets: [TYPE][PROTOCOL][IDENTIFIERn][LOCAL[...]], then [REMOTE[...]][LINK[...]], "
               "[PREFIX[...]], [TE[...]] or [SID[...]] as the type has it";
    case SYSDT_TYPE_TIME_RANGE:
        return "days, hours, minutes and seconds, all named: up to 10000d23h59m59s, in 8 to 15 characters";
    case SYSDT_TYPE_CVRFNAME: return "a name of up to 31 characters";
    default: return is_name_index(type_id) ? "a number up to 4294967295, or its name in a names file" : "";
    }
}

} // namespace bgpdt::toolkit
