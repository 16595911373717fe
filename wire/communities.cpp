// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Communities (RFC 1997), extended ones (RFC 4360, RFC 5668, RFC 7153), large ones (RFC 8092), route distinguishers
/// (RFC 4364). How a value was written is not on the wire: it gets the notation whose text is read as the same octets.
#include <algorithm>
#include <array>

#include "bgp_datatype/values.h"
#include "layouts.hpp"
#include "texts.hpp"

namespace bgpdt::wire {
namespace {

constexpr std::size_t octets_size = sizeof(SYSDT_Octets::octets);
constexpr std::size_t form_offset = offsetof(SYSDT_Octets, form);
constexpr std::size_t notation_offset = offsetof(SYSDT_Community, type);

std::uint32_t notation_of(std::uint32_t community)
{
    constexpr std::array<std::uint32_t, 4> named{0, 0xffffff01, 0xffffff02, 0xffffff03};
    return std::ranges::find(named, community) != named.end() ? SYSDT_COMMUNITY_NUMBER : SYSDT_COMMUNITY_PAIR;
}

/// @param type  of the administrator: 0 an AS number of two octets, 1 an IPv4 address, 2 an AS number of four octets
std::uint32_t form_of(unsigned type, Octets value)
{
    switch (type) {
    case 0: return VRF_RD_FORM_AS2;
    case 2: return number_in(value.first(4)) <= 0xffff ? VRF_RD_FORM_AS4DOT : VRF_RD_FORM_AS4;
    default: return VRF_RD_FORM_IPV4;
    }
}

/// Takes eight octets whose code is one of three: the sub-type behind the types of an administrator.
void read_one_of(Reader &in, const char *name, unsigned sub_type)
{
    in.octets(name, 0, octets_size);
    const Octets octets = in.value().first(octets_size);
    if (octets[0] > 2 || octets[1] != sub_type) {
        const std::string low = octets_text(std::array{static_cast<std::uint8_t>(sub_type)}).substr(2);
        in.refuse(octets_size, std::string(name) + "'s code", "0x00" + low + ", 0x01" + low + " or 0x02" + low,
                  octets_text(octets.first(2)));
    }
    in.set(form_offset, form_of(octets[0], octets.subspan(2)));
}

} // namespace

void read_community(Reader &in)
{
    in.number<std::uint32_t>("community", offsetof(SYSDT_Community, community));
    in.set(notation_offset, notation_of(load<std::uint32_t>(in.value(), offsetof(SYSDT_Community, community))));
}

void write_community(Writer &out)
{
    out.number<std::uint32_t>("community", offsetof(SYSDT_Community, community));
    out.count(notation_offset, sizeof(SYSDT_Community::type));
}

void read_community_list(Reader &in)
{
    if (const std::size_t most = SYSDT_COMMUNITY_LIST_ENTRIES * sizeof(std::uint32_t); in.left() > most) {
        throw BadBytes(in.at() + most, in.left() - most,
                       "a list has room for " + std::to_string(SYSDT_COMMUNITY_LIST_ENTRIES) +
                           " communities, and more stand from byte " + std::to_string(in.at() + most));
    }
    for (std::size_t place = 0; place < sizeof(SYSDT_CommunityList); place += sizeof(SYSDT_CommunityEntry)) {
        std::uint8_t notation = SYSDT_COMMUNITY_EMPTY;
        if (in.left() != 0) {
            in.number<std::uint32_t>("community", place);
            notation = static_cast<std::uint8_t>(notation_of(load<std::uint32_t>(in.value(), place)));
        }
        in.set(place + offsetof(SYSDT_CommunityEntry, type), notation);
    }
}

void write_community_list(Writer &out)
{
    for (std::size_t place = 0; place < sizeof(SYSDT_CommunityList); place += sizeof(SYSDT_CommunityEntry)) {
        const std::size_t notation = place + offsetof(SYSDT_CommunityEntry, type);
        if (out.value()[notation] != SYSDT_COMMUNITY_EMPTY)
            out.number<std::uint32_t>("community", place);
        out.count(notation, sizeof(SYSDT_CommunityEntry::type));
    }
}

void read_extended_community(Reader &in)
{
    constexpr unsigned type_bits = 0x3f; // without those of who assigned it and whether it is transitive
    in.octets("extended community", 0, octets_size);
    in.set(form_offset, form_of(in.value()[0] & type_bits, in.value().subspan(2)));
}

void read_route_target(Reader &in) { read_one_of(in, "route target", 0x02); }

void read_site_of_origin(Reader &in) { read_one_of(in, "site of origin", 0x03); }

void read_rd(Reader &in)
{
    in.octets("route distinguisher", 0, octets_size);
    const Octets octets = in.value().first(octets_size);
    const std::uint64_t type = number_in(octets.first(2));
    if (type > 2)
        in.refuse(octets_size, "route distinguisher's type", "0, 1 or 2", std::to_string(type));
    in.set(form_offset, form_of(static_cast<unsigned>(type), octets.subspan(2)));
}

void write_octets(Writer &out)
{
    out.octets("octets", 0, octets_size);
    out.count(form_offset, sizeof(SYSDT_Octets::form));
}

namespace {

template <class Io>
void large_community(Io &io)
{
    for (std::size_t i = 0; i < 3; ++i)
        io.template number<std::uint32_t>("large community", i * sizeof(std::uint32_t));
}

} // namespace

void read_large_community(Reader &in) { large_community(in); }

void write_large_community(Writer &out)
{
    large_community(out);
    out.count(offsetof(SYSDT_LargeCommunity, type), sizeof(SYSDT_LargeCommunity::type));
}

} // namespace bgpdt::wire
