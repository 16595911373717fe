// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "coded_octets.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

#include "host/host.hpp"

namespace bgpdt::toolkit {
namespace {

using Value = std::span<const std::uint8_t>;

enum Split { as2_number4, ipv4_number2, as4_number2, six_octets, ipv6_number2 };

constexpr std::size_t ipv6_octets = sizeof(SYSDT_VrfRtV6::octets);

bool is_ipv6(const Field &field) { return field.form == Form::bytes && field.count == ipv6_octets; }

/// A route distinguisher's code is a number (RFC 4364, section 4.2), a community's a type and a sub-type (RFC 4360,
/// section 3, without the transitivity bit; RFC 5668).
Split split_of(const Field &field, Value octets)
{
    if (is_ipv6(field))
        return ipv6_number2;
    const auto code = static_cast<unsigned>(octets[0] << 8 | octets[1]);
    const unsigned chosen = field.form == Form::rd ? code : octets[0] & ~0x40U;
    return chosen < six_octets ? static_cast<Split>(chosen) : six_octets;
}

/// A community's sub-type.
struct SubType {
    std::uint8_t type; ///< without the transitivity bit; that of two octets stands for all that are split
    std::uint8_t sub_type;
    const char *name;
};

/// RFC 4360, 7153, 9012, 7432, 9135.
constexpr SubType sub_types[] = {
    {0, 0x02, "route target"}, {0, 0x03, "site of origin"},         {0, 0x04, "link bandwidth"},
    {0, 0x05, "OSPF domain"},  {0, 0x08, "BGP data collection"},    {3, 0x06, "OSPF route type"},
    {3, 0x0b, "colour"},       {3, 0x0c, "encapsulation"},          {6, 0x00, "MAC mobility"},
    {6, 0x01, "ESI label"},    {6, 0x02, "ES-import route target"}, {6, 0x03, "router's MAC"},
};

/// What the community is; "type" for what is not known.
const char *sub_type_name(const Field &field, Value octets)
{
    const std::uint8_t type = octets[0] & 0x3fU;
    const std::uint8_t family = type < six_octets ? 0 : type;
    const auto *const found = std::ranges::find_if(
        sub_types, [&](const SubType &row) { return row.type == family && row.sub_type == octets[1]; });
    return field.form == Form::rd || found == std::end(sub_types) ? "type" : found->name;
}

void set_number(NamedValue &value, Value bytes)
{
    char digits[20];
    value.number = network_number(bytes);
    value.text.assign(digits, std::to_chars(digits, std::end(digits), *value.number).ptr);
}

void set_address(NamedValue &value, Value bytes)
{
    std::array<char, 46> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): written next
    value.text = bytes.size() == ipv6_octets - 4
                     ? PAL_Inet_ntoa_b_ipv6(bytes.data(), buffer.data())
                     : PAL_IpAddrToStr(static_cast<std::uint32_t>(network_number(bytes)), buffer.data());
}

} // namespace

bool is_coded(const Field &field) { return field.form == Form::rd || field.form == Form::community || is_ipv6(field); }

std::string coded_meaning(const Field &field, Value octets)
{
    constexpr const char *splits[] = {"2-octet AS, number", "IPv4 address, number", "4-octet AS, number", "six octets",
                                      "IPv6 address, number"};
    return std::string(sub_type_name(field, octets)) + " 0x" + to_hex(octets.first(2)) + ": " +
           splits[split_of(field, octets)];
}

void add_coded_pieces(const Field &field, Value octets, const AddNamed &add)
{
    constexpr const char *administrator = "administrator";
    constexpr const char *assigned = "assigned number";
    add("type code").text.append("0x").append(to_hex(octets.first(2)));
    switch (split_of(field, octets)) {
    case as2_number4:
        set_number(add(administrator), octets.subspan(2, 2));
        return set_number(add(assigned), octets.subspan(4, 4));
    case ipv4_number2:
        set_address(add(administrator), octets.subspan(2, 4));
        return set_number(add(assigned), octets.subspan(6, 2));
    case as4_number2:
        set_number(add(administrator), octets.subspan(2, 4));
        return set_number(add(assigned), octets.subspan(6, 2));
    case ipv6_number2:
        set_address(add(administrator), octets.subspan(2, 16));
        return set_number(add(assigned), octets.subspan(18, 2));
    case six_octets: add("octets").text = to_hex(octets.subspan(2, 6));
    }
}

} // namespace bgpdt::toolkit
