// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "type_aliases.hpp"

#include <algorithm>
#include <iterator>

#include "near_names.hpp"

namespace bgpdt::toolkit {
namespace {

struct Alias {
    std::string_view word;
    std::string_view type;
};

constexpr Alias aliases[] = {
    {"as", "ASNUM"},
    {"asn", "ASNUM"},
    {"as-number", "ASNUM"},
    {"as-list", "ASNUM_ENHANCE"},
    {"as-path", "ASNUM_ENHANCE"},
    {"communities", "CMNTY_ENHANCE"},
    {"community-list", "CMNTY_ENHANCE"},
    {"large", "LARGECOMMUNITY"},
    {"large-community", "LARGECOMMUNITY"},
    {"extended-community", "EXTCOMMUNITY"},
    {"ext-community", "EXTCOMMUNITY"},
    {"link-bandwidth", "EXTCOMMUNITY_BW"},
    {"rd", "VRFRD"},
    {"route-distinguisher", "VRFRD"},
    {"rt", "VRFRT"},
    {"route-target", "VRFRT"},
    {"site-of-origin", "SOO"},
    {"ipv6-rt", "VRFRTV6"},
    {"ipv6-route-target", "VRFRTV6"},
    {"vpn-id", "VPNID"},
    {"evpn", "EVNPREFIX"},
    {"evpn-key", "EVNPREFIX"},
    {"evpn-route", "EVNPREFIX"},
    {"bgp-ls", "BGPLSPREFIX"},
    {"bgpls", "BGPLSPREFIX"},
    {"link-state", "BGPLSPREFIX"},
    {"mdt", "MDTPREFIX"},
    {"l2vpn", "L2VPNPREFIX"},
    {"route-key", "BOLPREFIX"},
    {"mvpn", "BOLPREFIX"},
    {"multicast-vpn", "BOLPREFIX"},
    {"sr-policy", "BOLPREFIX"},
    {"sd-wan", "BOLPREFIX"},
    {"duration", "TIME_RANGE"},
    {"time-range", "TIME_RANGE"},
    {"sid", "SID_STRUCTURE"},
    {"attribute-bitmap", "ATTRIDBITMAP"},
};

} // namespace

std::string type_of_alias(std::string_view word)
{
    std::string plain = lower(word);
    std::ranges::replace_if(
        plain, [](char c) { return c == '_' || c == ' '; }, '-');
    const auto *const found = std::ranges::find(aliases, plain, &Alias::word);
    return found == std::end(aliases) ? "" : std::string(found->type);
}

} // namespace bgpdt::toolkit
