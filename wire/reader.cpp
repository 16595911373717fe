// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "reader.hpp"

#include <algorithm>
#include <array>

#include "bgp_datatype/values.h"
#include "texts.hpp"
#include "toolkit/words.hpp"

namespace bgpdt::wire {
namespace {

using toolkit::counted;

std::string at_byte(std::size_t at) { return " at byte " + std::to_string(at); }

constexpr std::size_t protocol_offset = offsetof(SYSDT_LsHead, protocolId);

} // namespace

bool is_zero(Octets octets)
{
    return std::ranges::all_of(octets, [](std::uint8_t octet) { return octet == 0; });
}

std::size_t usual_router_id_size(Octets value, std::size_t place)
{
    const Octets id = value.subspan(place, SYSDT_LS_ROUTER_ID_SIZE);
    if (is_zero(id))
        return 0;
    const auto protocol = load<std::uint32_t>(value, protocol_offset);
    if (protocol == SYSDT_LS_ISIS_LEVEL_1 || protocol == SYSDT_LS_ISIS_LEVEL_2)
        return id[6] == 0 ? 6 : 7;
    return is_zero(id.subspan(4, 4)) ? 4 : 8;
}

Octets Reader::take_octets(const char *name, std::size_t size)
{
    if (size > left()) {
        throw BadBytes(at_ + left(), 0,
                       counted(size, "byte") + " of the " + name + " must stand" + at_byte(at_) + ", and " +
                           (left() == 0   ? "the bytes end there"
                            : left() == 1 ? "1 byte follows"
                                          : counted(left(), "byte") + " follow"));
    }
    const Octets taken = octets_.first(size);
    octets_ = octets_.subspan(size);
    at_ += size;
    return taken;
}

void Reader::refuse(std::size_t size, const std::string &name, const std::string &expected,
                    const std::string &found) const
{
    throw BadBytes(at_ - size, size,
                   "the " + name + at_byte(at_ - size) + " must be " + expected + ", and " + found + " stands there");
}

void Reader::end(const char *name) const
{
    if (left() != 0) {
        throw BadBytes(at_, left(),
                       "the " + std::string(name) + " must end" + at_byte(at_) + ", and " + counted(left(), "byte") +
                           " more " + (left() == 1 ? "stands" : "stand") + " in it");
    }
}

Reader Reader::part(const char *name, std::size_t size, std::size_t length_size, std::string_view group)
{
    if (size > left()) {
        refuse(length_size, "length of the " + std::string(name),
               "at most " + std::to_string(left()) + ", the bytes behind it", std::to_string(size));
    }
    const std::size_t at = at_;
    return {take_octets(name, size), at, item_, group.empty() ? group_ : group};
}

// ------------------------------------------------------------------------------------------------ numbers and octets

void Reader::octets(const char *name, std::size_t place, std::size_t size)
{
    std::ranges::copy(take_octets(name, size), item_.value.begin() + static_cast<std::ptrdiff_t>(place));
}

void Reader::fixed(const char *name, std::size_t place, std::uint8_t expected)
{
    number<std::uint8_t>(name, place);
    if (const std::uint8_t found = item_.value[place]; found != expected)
        refuse(1, name, std::to_string(expected), std::to_string(found));
}

void Reader::rd() { put_beside("RD", rd_text(take_octets("route distinguisher", rd_size))); }

void Reader::beside_esi(const char *name) { put_beside(name, esi_text(take_octets(name, esi_size))); }

void Reader::beside_label(const char *name)
{
    const std::uint64_t label = number_in(take_octets(name, 3));
    put_beside(name, label);
    put_beside(std::string("MPLS ") + name, label >> 4);
}

// ------------------------------------------------------------------------------------------------ addresses

void Reader::beside_address(const char *name, std::size_t place)
{
    put_beside(name, address_text(take_octets(name, item_.value[place + family_offset] == 0 ? 4 : 16)));
}

void Reader::family_by_size(const char *name, std::size_t place, std::size_t ipv4, std::size_t ipv6)
{
    if (left() != ipv4 && left() != ipv6) {
        throw BadBytes(at_, left(),
                       counted(ipv4, "byte") + " must follow" + at_byte(at_) + " for an IPv4 " + name + ", or " +
                           std::to_string(ipv6) + " for an IPv6 one, and " + counted(left(), "byte") +
                           (left() == 1 ? " does" : " do"));
    }
    item_.value[place + family_offset] = left() == ipv4 ? 0 : 1;
}

void Reader::family_by_flag(std::size_t place, std::size_t flags, std::uint8_t bit)
{
    item_.value[place + family_offset] = (item_.value[flags] & bit) == 0 ? 0 : 1;
}

void Reader::address(const char *name, std::size_t place)
{
    if (item_.value[place + family_offset] == 0)
        number<std::uint32_t>(name, place);
    else
        octets(name, place + ipv6_offset, 16);
}

/// The length of an address in bits.
std::size_t Reader::take_bits(const char *name, bool ipv4, bool ipv6, bool none)
{
    const auto bits = take<std::uint8_t>(name);
    if ((bits == 32 && ipv4) || (bits == 128 && ipv6) || (bits == 0 && none))
        return bits;
    std::vector<std::string> allowed;
    for (const auto &[is_allowed, number] :
         {std::pair(none, "0"), std::pair(ipv4, "32, of IPv4"), std::pair(ipv6, "128, of IPv6")})
        if (is_allowed)
            allowed.emplace_back(number);
    refuse(1, "length in bits of the " + std::string(name), toolkit::joined(allowed, " or "), std::to_string(bits));
}

void Reader::sized_address(const char *name, std::size_t place)
{
    const std::size_t bits = take_bits(name, true, true, true);
    item_.value[place] = static_cast<std::uint8_t>(bits);
    item_.value[place + 1 + family_offset] = bits == 128 ? 1 : 0;
    if (bits != 0)
        address(name, place + 1);
}

void Reader::bits_and_address(const char *name, std::size_t place)
{
    item_.value[place + family_offset] = take_bits(name, true, true, false) == 128 ? 1 : 0;
    address(name, place);
}

void Reader::bits_and_address(const char *name, std::size_t place, std::size_t other)
{
    const std::uint8_t family = item_.value[other + family_offset];
    take_bits(name, family == 0, family != 0, false);
    item_.value[place + family_offset] = family;
    address(name, place);
}

void Reader::take_prefix(const char *name, std::size_t length, std::span<std::uint8_t> address)
{
    number<std::uint8_t>(name, length);
    const std::size_t bits = item_.value[length];
    if (bits > 8 * address.size())
        refuse(1, "length of the " + std::string(name), "at most " + std::to_string(8 * address.size()),
               std::to_string(bits));
    std::ranges::copy(take_octets(name, (bits + 7) / 8), address.begin());
}

void Reader::beside_prefix(std::size_t bits, std::size_t size)
{
    const Octets octets = take_octets("prefix", left());
    Bytes address(octets.begin(), octets.end());
    address.resize(size);
    put_beside("prefix", address_text(address) + "/" + std::to_string(bits));
}

void Reader::prefix_ipv4(const char *name, std::size_t place, std::size_t length)
{
    std::array<std::uint8_t, 4> address{};
    take_prefix(name, length, address);
    set(place, static_cast<std::uint32_t>(number_in(address)));
}

void Reader::prefix_ipv6(const char *name, std::size_t place, std::size_t length)
{
    std::array<std::uint8_t, 16> address{};
    take_prefix(name, length, address);
    std::ranges::copy(address, item_.value.begin() + static_cast<std::ptrdiff_t>(place));
}

// ------------------------------------------------------------------------------------------------ TLVs

std::uint32_t Reader::take_tlv_type()
{
    const auto type = take<std::uint16_t>("TLV's type");
    if (any_tlv_ && type <= last_tlv_) {
        refuse(2, "TLV's type", "above " + std::to_string(last_tlv_) + ", as they stand in ascending order, each once",
               std::to_string(type));
    }
    any_tlv_ = true;
    last_tlv_ = type;
    return type;
}

/// Takes the TLVs of lower types; whether one of the type is next.
bool Reader::reach(std::uint32_t type)
{
    while (left() != 0) {
        Reader ahead = *this;
        const std::uint32_t next = ahead.take_tlv_type();
        if (next >= type)
            return next == type;
        take_tlv_type();
        Reader inner = part("TLV", take<std::uint16_t>("TLV's length"), sizeof(std::uint16_t));
        put_beside(tlv_name(next), octets_text(inner.take_octets("TLV", inner.left())));
    }
    return false;
}

void Reader::refuse_missing(std::uint16_t type, const char *name) const
{
    throw BadBytes(at_, 0,
                   "the " + std::string(name) + ", TLV " + std::to_string(type) + ", must stand" + at_byte(at_) +
                       ", and it does not");
}

void Reader::igp_router_id(std::size_t place)
{
    const std::size_t size = left();
    const Octets id = take_octets("IGP router identifier", size);
    if (size != 4 && size != 6 && size != 7 && size != 8)
        refuse(size, grouped("IGP router identifier"), "4, 6, 7 or 8 bytes long", counted(size, "byte"));
    std::ranges::copy(id, item_.value.begin() + static_cast<std::ptrdiff_t>(place));
    if (size != usual_router_id_size(item_.value, place))
        put_beside(grouped("IGP router identifier length"), size);
}

void Reader::mt_id(std::size_t place)
{
    constexpr unsigned bits = 12;
    const unsigned number = take<std::uint16_t>("MT-ID");
    set(place, std::uint32_t{number & ((1U << bits) - 1)});
    if (number >> bits != 0)
        put_beside("MT-ID reserved bits", number >> bits);
}

} // namespace bgpdt::wire
