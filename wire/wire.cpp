// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "wire.hpp"

#include <algorithm>
#include <bit>
#include <string>

#include "bgp_datatype/fields.hpp"
#include "layouts.hpp"
#include "toolkit/near_names.hpp"

namespace bgpdt::wire {
namespace {

constexpr std::uint16_t ipv4_afi = 1;
constexpr std::uint16_t ipv6_afi = 2;
constexpr std::uint16_t l2vpn_afi = 25;
constexpr std::uint16_t link_state_afi = 16388;

constexpr Form table_of_forms[] = {
    {"COMMUNITY", "communities", "attribute COMMUNITIES (RFC 1997)", SYSDT_TYPE_COMMUNITY, sizeof(SYSDT_Community),
     read_community, write_community, 8},
    {"CMNTY_ENHANCE", "community-list", "the same, as one list", SYSDT_TYPE_CMNTY_ENHANCE, sizeof(SYSDT_CommunityList),
     read_community_list, write_community_list},
    {"EXTCOMMUNITY", "extended-community ext-community", "attribute EXTENDED COMMUNITIES (RFC 4360)",
     SYSDT_TYPE_EXTCOMMUNITY, sizeof(SYSDT_Octets), read_extended_community, write_octets, 16},
    {"VRFRT", "rt route-target", "the same, of route targets alone", SYSDT_TYPE_VRFRT, sizeof(SYSDT_Octets),
     read_route_target, write_octets},
    {"SOO", "site-of-origin", "the same, of sites of origin alone", SYSDT_TYPE_SOO, sizeof(SYSDT_Octets),
     read_site_of_origin, write_octets},
    {"LARGECOMMUNITY", "large large-community", "attribute LARGE COMMUNITY (RFC 8092)", SYSDT_TYPE_LARGECOMMUNITY,
     sizeof(SYSDT_LargeCommunity), read_large_community, write_large_community, 32},
    {"VRFRD", "rd route-distinguisher", "route distinguishers (RFC 4364)", SYSDT_TYPE_VRFRD, sizeof(SYSDT_Octets),
     read_rd, write_octets},
    {"VPNV4",
     "vpn-ipv4",
     "NLRI of IPv4 VPNs: their route distinguishers (RFC 4364)",
     SYSDT_TYPE_VRFRD,
     sizeof(SYSDT_Octets),
     read_vpn_ipv4,
     write_vpn_ipv4,
     0,
     {ipv4_afi},
     128},
    {"VPNV6",
     "vpn-ipv6",
     "NLRI of IPv6 VPNs: their route distinguishers (RFC 4659)",
     SYSDT_TYPE_VRFRD,
     sizeof(SYSDT_Octets),
     read_vpn_ipv6,
     write_vpn_ipv6,
     0,
     {ipv6_afi},
     128},
    {"EVNPREFIX",
     "evpn evn evpn-route",
     "NLRI of EVPN, route types 1 to 8 (RFC 7432, RFC 9136, RFC 9251)",
     SYSDT_TYPE_EVNPREFIX,
     SYSDT_BOL_SIZE,
     read_evpn,
     write_evpn,
     0,
     {l2vpn_afi},
     70},
    {"MVPN",
     "multicast-vpn ng-type-2 ng-type-3 ng-type-4-1 ng-type-4-2 ng-type-4-3 ng-type-5 ng-type-6",
     "NLRI of multicast VPN, route types 1 to 7 (RFC 6514)",
     SYSDT_TYPE_BOLPREFIX,
     SYSDT_BOL_SIZE,
     read_mvpn,
     write_mvpn,
     0,
     {ipv4_afi, ipv6_afi},
     5},
    {"SRPOLICY",
     "sr-policy",
     "NLRI of SR policies (RFC 9830)",
     SYSDT_TYPE_BOLPREFIX,
     SYSDT_BOL_SIZE,
     read_sr_policy,
     write_sr_policy,
     0,
     {ipv4_afi, ipv6_afi},
     73},
    {"L2VPN",
     "vpls",
     "NLRI of VPLS (RFC 4761, RFC 6074)",
     SYSDT_TYPE_BOLPREFIX,
     SYSDT_BOL_SIZE,
     read_l2vpn,
     write_l2vpn,
     0,
     {l2vpn_afi},
     65},
    {"BGPLSPREFIX",
     "bgp-ls bgpls link-state",
     "NLRI of BGP-LS, types 1 to 6 (RFC 9552, RFC 9514, RFC 9857)",
     SYSDT_TYPE_BGPLSPREFIX,
     SYSDT_LS_SIZE,
     read_link_state,
     write_link_state,
     0,
     {link_state_afi},
     71},
    {"BGP-LS-VPN",
     "bgpls-vpn",
     "the same, each behind a route distinguisher",
     SYSDT_TYPE_BGPLSPREFIX,
     SYSDT_LS_SIZE,
     read_vpn_link_state,
     write_vpn_link_state,
     0,
     {link_state_afi},
     72},
};

std::string plain(std::string_view name)
{
    std::string word = toolkit::lower(name);
    std::ranges::replace(word, '_', '-');
    return word;
}

bool goes_by(const Form &form, const std::string &word)
{
    return plain(form.name) == word ||
           (" " + std::string(form.other_names) + " ").find(" " + word + " ") != std::string::npos;
}

/// What differs must be a field that its bytes on the wire do not say.
void require_same(const Form &form, Octets value, Octets sent)
{
    const auto differs = std::ranges::mismatch(value, sent).in1;
    if (differs == value.end())
        return;
    const auto place = static_cast<std::size_t>(differs - value.begin());
    const auto is_field = [place](const Field &field) {
        return field.offset <= place && place - field.offset < field.size();
    };
    const auto fields = layout_of(form.type, value, std::endian::native).fields;
    const auto field = std::ranges::find_if(fields, is_field);
    throw NotSent("the value's " +
                  (field == fields.end() ? "byte " + std::to_string(place) : std::string(field->name)) +
                  " has no place on the wire");
}

/// What has numbers that no reader takes is not sent.
void require_readable(const Form &form, Octets octets)
{
    try {
        read(form, octets);
    } catch (const BadBytes &bad) {
        throw NotSent(std::string("nobody could read it: ") + bad.what());
    }
}

} // namespace

void refuse_kind(const char *nlri) { throw NotSent("the value is no key of " + std::string(nlri)); }

std::span<const Form> forms() { return table_of_forms; }

const Form *find_form(std::string_view name)
{
    const auto found =
        std::ranges::find_if(table_of_forms, [word = plain(name)](const Form &form) { return goes_by(form, word); });
    return found == std::end(table_of_forms) ? nullptr : found;
}

const Form *form_of_attribute(std::uint8_t attribute)
{
    const auto found = std::ranges::find(table_of_forms, attribute, &Form::attribute);
    return attribute == 0 || found == std::end(table_of_forms) ? nullptr : found;
}

const Form *form_of_family(std::uint16_t afi, std::uint8_t safi)
{
    const auto found = std::ranges::find_if(table_of_forms, [=](const Form &form) {
        return afi != 0 && form.safi == safi && std::ranges::find(form.afis, afi) != std::end(form.afis);
    });
    return found == std::end(table_of_forms) ? nullptr : found;
}

std::vector<Item> read(const Form &form, Octets octets, std::size_t at)
{
    if (octets.empty())
        throw BadBytes(at, 0, "a value must stand at byte " + std::to_string(at) + ", and the bytes end there");
    std::vector<Item> items;
    for (std::size_t begin = 0; begin < octets.size();) {
        Item item{.value = Bytes(form.value_size), .at = at + begin};
        Reader reader(octets.subspan(begin), item.at, item);
        form.read(reader);
        item.size = reader.at() - item.at;
        begin += item.size;
        items.push_back(std::move(item));
    }
    return items;
}

std::string advice(const Form &form, Octets octets)
{
    constexpr std::size_t attribute_head = 3;
    constexpr std::size_t family_size = 3;
    const bool is_attribute = form.attribute != 0 && octets.size() >= attribute_head && octets[1] == form.attribute &&
                              octets[2] == octets.size() - attribute_head;
    if (is_attribute)
        return "the values begin behind the attribute's flags, code and length, 3 bytes";
    const bool is_family = form.safi != 0 && octets.size() >= family_size &&
                           form_of_family(static_cast<std::uint16_t>(number_in(octets.first(2))), octets[2]) == &form;
    return is_family ? "the NLRI begins behind the attribute's address family and next hop" : "";
}

Bytes write(const Form &form, Octets value, const std::vector<NamedValue> &beside)
{
    Bytes sent(value.size());
    Given given(beside);
    Writer writer(value, sent, given);
    form.write(writer);
    given.require_all_used();
    require_same(form, value, sent);
    require_readable(form, writer.octets());
    return writer.octets();
}

} // namespace bgpdt::wire
