// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "writer.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "bgp_datatype/values.h"
#include "reader.hpp"
#include "texts.hpp"
#include "toolkit/shown_text.hpp"
#include "toolkit/words.hpp"

namespace bgpdt::wire {
namespace {

constexpr std::uint64_t largest_label = 0xffffff;
constexpr std::uint64_t largest_mpls_label = 0xfffff;
constexpr std::uint8_t bottom_of_stack = 1; // of an MPLS label's lower 4 bits

NotSent no_such(const std::string &name, const std::string &text, const std::string &expected)
{
    return NotSent(name + " is " + expected + ", not " + toolkit::lua_quoted(text));
}

/// A text's octets, if they are as many as wanted.
Bytes sized(Bytes octets, std::size_t size, const std::string &name, const std::string &text,
            const std::string &expected)
{
    if (octets.size() != size)
        throw no_such(name, text, expected);
    return octets;
}

} // namespace

// ------------------------------------------------------------------------------------------------ what is given

const NamedValue *Given::find(const std::string &name)
{
    asked_.insert(name);
    const auto found = std::ranges::find(values_, name, &NamedValue::name);
    if (found == values_.end())
        return nullptr;
    used_[static_cast<std::size_t>(found - values_.begin())] = true;
    return &*found;
}

const std::string &Given::text(const std::string &name, const std::string &example)
{
    const NamedValue *const found = find(name);
    if (found == nullptr)
        throw NotSent("the " + name + ", for which the value has no room, must be told beside it", {name, example});
    return found->text;
}

std::optional<std::uint64_t> Given::number(const std::string &name, std::uint64_t largest)
{
    const NamedValue *const found = find(name);
    if (found == nullptr)
        return {};
    const std::optional<std::uint64_t> number = number_of(found->text);
    if (!number || *number > largest)
        throw no_such(name, found->text, "a number up to " + std::to_string(largest));
    return number;
}

std::vector<std::pair<std::uint32_t, Bytes>> Given::tlvs(const std::string &group, std::uint32_t from,
                                                         std::uint32_t below)
{
    std::vector<std::pair<std::uint32_t, Bytes>> tlvs;
    const std::string front = group + "TLV ";
    for (std::size_t i = 0; i < values_.size(); ++i) {
        const auto &[name, text, number] = values_[i];
        if (!name.starts_with(front))
            continue;
        const std::uint64_t type = number_of(std::string_view(name).substr(front.size())).value_or(below);
        std::optional<Bytes> octets = octets_of(text);
        if (type < from || type >= below || !octets || octets->size() > 0xffff)
            continue;
        used_[i] = true;
        tlvs.emplace_back(static_cast<std::uint32_t>(type), std::move(*octets));
    }
    std::ranges::sort(tlvs);
    return tlvs;
}

void Given::require_all_used() const
{
    const auto unused = std::ranges::find(used_, false);
    if (unused == used_.end())
        return;
    std::vector<std::string> names;
    std::ranges::copy_if(asked_, std::back_inserter(names),
                         [](const std::string &name) { return name.find("TLV ") == std::string::npos; });
    const std::string &name = values_[static_cast<std::size_t>(unused - used_.begin())].name;
    throw NotSent("nothing called " + toolkit::lua_quoted(name) + " stands beside such a value" +
                  (names.empty() ? "" : ", only " + toolkit::joined(names, ", ")));
}

// ------------------------------------------------------------------------------------------------ numbers and octets

void Writer::count(std::size_t place, std::size_t size)
{
    std::ranges::copy(value_.subspan(place, size), sent_.begin() + static_cast<std::ptrdiff_t>(place));
}

void Writer::octets(const char *, std::size_t place, std::size_t size)
{
    append(value_.subspan(place, size));
    count(place, size);
}

void Writer::fixed(const char *name, std::size_t place, std::uint8_t expected)
{
    if (value_[place] != expected) {
        throw NotSent("the " + std::string(name) + " is " + std::to_string(expected) + " on the wire, not " +
                      std::to_string(value_[place]));
    }
    number<std::uint8_t>(name, place);
}

void Writer::small_number(const char *name, std::size_t place)
{
    constexpr std::uint32_t largest = 0xff;
    const auto number = load<std::uint32_t>(value_, place);
    if (number > largest)
        throw NotSent("the " + std::string(name) + " is at most 255 on the wire, not " + std::to_string(number));
    put(static_cast<std::uint8_t>(number));
    count(place, sizeof number);
}

void Writer::rd()
{
    const std::string &text = given_.text("RD", "64496:100");
    append(sized(rd_octets(text), rd_size, "RD", text, "a route distinguisher such as 64496:100 or 192.0.2.1:7"));
}

void Writer::beside_esi(const char *name)
{
    const std::string example = "0000.0000.0000.0000.0000";
    const std::string &text = given_.text(name, example);
    append(sized(esi_octets(text), esi_size, name, text, "five groups of four hexadecimal digits, as in " + example));
}

std::uint64_t Writer::beside_choice(const char *name, std::uint64_t first, std::uint64_t last)
{
    given_.text(name, std::to_string(first));
    const std::uint64_t number = *given_.number(name, last);
    if (number < first)
        throw no_such(name, std::to_string(number), "from " + std::to_string(first) + " to " + std::to_string(last));
    return number;
}

void Writer::beside_label(const char *name)
{
    const std::string mpls_name = std::string("MPLS ") + name;
    const std::optional<std::uint64_t> mpls = given_.number(mpls_name, largest_mpls_label);
    std::optional<std::uint64_t> label = given_.number(name, largest_label);
    if (label && mpls && *label >> 4 != *mpls)
        throw NotSent(mpls_name + " must be the upper 20 bits of " + name + ", " + std::to_string(*label >> 4));
    if (!label && mpls)
        label = *mpls << 4 | bottom_of_stack;
    if (!label)
        given_.text(name, "16001"); // which tells that it is missing
    append_number(octets_, *label, 3);
}

void Writer::beside_second_label(const char *name)
{
    if (given_.find(name) != nullptr || given_.find(std::string("MPLS ") + name) != nullptr)
        beside_label(name);
}

// ------------------------------------------------------------------------------------------------ addresses

/// By the family of an address, which counts as sent.
bool Writer::is_ipv6(const char *name, std::size_t place)
{
    const std::uint8_t family = value_[place + family_offset];
    if (family > 1)
        throw NotSent("the family of the " + std::string(name) + " is 0 or 1, not " + std::to_string(family));
    count(place + family_offset, 1);
    return family == 1;
}

void Writer::beside_address(const char *name, std::size_t place)
{
    const bool ipv6 = is_ipv6(name, place);
    const std::string example = ipv6 ? "::" : "0.0.0.0";
    const std::string &text = given_.text(name, example);
    append(sized(address_octets(text), ipv6 ? 16 : 4, name, text,
                 std::string("an ") + (ipv6 ? "IPv6" : "IPv4") + " address, as the value has one, such as " + example));
}

void Writer::family_by_size(const char *name, std::size_t place, std::size_t, std::size_t) { is_ipv6(name, place); }

void Writer::family_by_flag(std::size_t place, std::size_t flags, std::uint8_t bit)
{
    if (is_ipv6("address", place) != ((value_[flags] & bit) != 0)) {
        throw NotSent("the flags have bit " + octets_text(Octets(&bit, 1)) +
                      " set where an address is IPv6, and here they say otherwise");
    }
}

void Writer::address(const char *name, std::size_t place)
{
    if (is_ipv6(name, place))
        octets(name, place + ipv6_offset, 16);
    else
        number<std::uint32_t>(name, place);
}

void Writer::sized_address(const char *name, std::size_t place)
{
    const std::uint8_t bits = value_[place];
    const bool ipv6 = is_ipv6(name, place + 1);
    if (bits != 0 && bits != (ipv6 ? 128 : 32)) {
        throw NotSent("the length of the " + std::string(name) + " is 0 or " + (ipv6 ? "128" : "32") +
                      " on the wire, not " + std::to_string(bits));
    }
    number<std::uint8_t>(name, place);
    if (bits != 0)
        address(name, place + 1);
    else if (ipv6)
        throw NotSent("without an address there is no IPv6 " + std::string(name));
}

void Writer::bits_and_address(const char *name, std::size_t place)
{
    put<std::uint8_t>(is_ipv6(name, place) ? 128 : 32);
    address(name, place);
}

void Writer::bits_and_address(const char *name, std::size_t place, std::size_t other)
{
    if (value_[place + family_offset] != value_[other + family_offset])
        throw NotSent("the " + std::string(name) + " is of another family than what stands in front of it");
    bits_and_address(name, place);
}

void Writer::put_prefix(const char *name, std::size_t length, Octets address)
{
    const std::size_t bits = value_[length];
    if (bits > 8 * address.size()) {
        throw NotSent("the " + std::string(name) + "'s length is at most " + std::to_string(8 * address.size()) +
                      ", not " + std::to_string(bits));
    }
    number<std::uint8_t>(name, length);
    const std::size_t size = (bits + 7) / 8;
    if (!is_zero(address.subspan(size)))
        throw NotSent("the " + std::string(name) + " has bits behind its length, which are not sent");
    append(address.first(size));
}

/// Its length in bits.
std::size_t Writer::beside_prefix(std::size_t size)
{
    const std::string example = size == 4 ? "192.0.2.0/24" : "2001:db8::/32";
    const std::string &text = given_.text("prefix", example);
    const std::size_t slash = std::min(text.find('/'), text.size());
    const Bytes address = address_octets(std::string_view(text).substr(0, slash));
    const std::uint64_t bits =
        number_of(std::string_view(text).substr(std::min(slash + 1, text.size()))).value_or(8 * size + 1);
    const auto sent = static_cast<std::size_t>((std::min<std::uint64_t>(bits, 8 * size) + 7) / 8);
    if (address.size() != size || bits > 8 * size || !is_zero(Octets(address).subspan(sent)))
        throw no_such("prefix", text, "a prefix such as " + example + ", without addresses of hosts");
    append(Octets(address).first(sent));
    return static_cast<std::size_t>(bits);
}

void Writer::prefix_ipv4(const char *name, std::size_t place, std::size_t length)
{
    Bytes address;
    append_number(address, load<std::uint32_t>(value_, place), 4);
    put_prefix(name, length, address);
    count(place, 4);
}

void Writer::prefix_ipv6(const char *name, std::size_t place, std::size_t length)
{
    put_prefix(name, length, value_.subspan(place, 16));
    count(place, 16);
}

// ------------------------------------------------------------------------------------------------ TLVs

bool Writer::is_there(std::uint16_t type, bool usual)
{
    const std::string name = std::string(group_) + "TLV " + std::to_string(type);
    const NamedValue *const given = given_.find(name);
    if (given != nullptr && given->text != "present" && given->text != "absent")
        throw no_such(name, given->text, R"("present" or "absent")");
    return given == nullptr ? usual : given->text == "present";
}

/// The TLVs up to the type that the value has no room for.
void Writer::put_others(std::uint32_t below)
{
    for (const auto &[type, octets] : given_.tlvs(std::string(group_), next_tlv_, below)) {
        put(static_cast<std::uint16_t>(type));
        put(static_cast<std::uint16_t>(octets.size()));
        append(octets);
    }
    next_tlv_ = below + 1;
}

void Writer::igp_router_id(std::size_t place)
{
    constexpr std::uint64_t longest = 8;
    const std::optional<std::uint64_t> size =
        given_.number(std::string(group_) + "IGP router identifier length", longest);
    octets("IGP router identifier", place,
           static_cast<std::size_t>(size.value_or(usual_router_id_size(value_, place))));
}

void Writer::mt_id(std::size_t place)
{
    constexpr unsigned bits = 12;
    const std::uint64_t reserved = given_.number("MT-ID reserved bits", 0xf).value_or(0);
    const auto number = load<std::uint32_t>(value_, place);
    if (number >> bits != 0)
        throw NotSent("an MT-ID is at most 4095, not " + std::to_string(number));
    put(static_cast<std::uint16_t>(reserved << bits | number));
    count(place, sizeof number);
}

} // namespace bgpdt::wire
