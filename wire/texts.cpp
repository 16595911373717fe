// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "texts.hpp"

#include <arpa/inet.h>

#include <array>
#include <charconv>
#include <initializer_list>
#include <system_error>

#include "numbers.hpp"
#include "toolkit/errors.hpp"
#include "toolkit/field_values.hpp"

namespace bgpdt::wire {
namespace {

constexpr std::uint64_t largest16 = 0xffff;
constexpr std::uint64_t largest32 = 0xffffffff;

std::string pair_text(const std::string &administrator, std::uint64_t number)
{
    return administrator + ":" + std::to_string(number);
}

/// The octets of numbers of so many bits each.
struct Sized {
    std::uint64_t number;
    std::size_t size;
};

Bytes octets(std::initializer_list<Sized> numbers)
{
    Bytes bytes;
    for (const Sized &sized : numbers)
        append_number(bytes, sized.number, sized.size);
    return bytes;
}

Bytes pair_octets(const std::optional<std::uint64_t> &administrator, std::uint64_t number)
{
    if (administrator && *administrator <= largest16 && number <= largest32)
        return octets({{0, 2}, {*administrator, 2}, {number, 4}});
    if (administrator && *administrator <= largest32 && number <= largest16)
        return octets({{2, 2}, {*administrator, 4}, {number, 2}});
    return {};
}

} // namespace

std::string rd_text(Octets rd)
{
    const std::uint64_t administrator = number_in(rd.subspan(2, 4));
    switch (number_in(rd.first(2))) {
    case 0: return pair_text(std::to_string(number_in(rd.subspan(2, 2))), number_in(rd.subspan(4)));
    case 1: return pair_text(address_text(rd.subspan(2, 4)), number_in(rd.subspan(6)));
    case 2:
        return pair_text((administrator <= largest16 ? "0." : "") + std::to_string(administrator),
                         number_in(rd.subspan(6)));
    default: return octets_text(rd);
    }
}

Bytes rd_octets(std::string_view text)
{
    if (text.starts_with("0x"))
        return octets_of(text).value_or(Bytes{});
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return {};
    const std::string_view administrator = text.substr(0, colon);
    const std::optional<std::uint64_t> number = number_of(text.substr(colon + 1));
    if (!number)
        return {};
    const Bytes address = address_octets(administrator);
    if (address.size() == 4 && *number <= largest16)
        return octets({{1, 2}, {number_in(address), 4}, {*number, 2}});
    const std::size_t dot = administrator.find('.');
    if (dot == std::string_view::npos)
        return pair_octets(number_of(administrator), *number);
    const std::optional<std::uint64_t> high = number_of(administrator.substr(0, dot));
    const std::optional<std::uint64_t> low = number_of(administrator.substr(dot + 1));
    if (!high || !low || *high > largest16 || *low > largest16 || *number > largest16)
        return {};
    return octets({{2, 2}, {*high, 2}, {*low, 2}, {*number, 2}});
}

std::string esi_text(Octets esi) { return toolkit::grouped(esi, 2, '.'); }

Bytes esi_octets(std::string_view text)
{
    constexpr std::size_t group = 5; // with its dot
    std::string digits;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool dot = i % group == group - 1;
        if (dot != (text[i] == '.'))
            return {};
        if (!dot)
            digits += text[i];
    }
    const std::optional<Bytes> esi = octets_of("0x" + digits);
    return esi && esi->size() == esi_size ? *esi : Bytes();
}

std::string address_text(Octets address)
{
    std::array<char, INET6_ADDRSTRLEN> text{};
    const int family = address.size() == 4 ? AF_INET : AF_INET6;
    return inet_ntop(family, address.data(), text.data(), text.size());
}

Bytes address_octets(std::string_view text)
{
    const std::string name(text);
    std::array<std::uint8_t, 16> address{};
    if (inet_pton(AF_INET, name.c_str(), address.data()) == 1)
        return {address.begin(), address.begin() + 4};
    if (inet_pton(AF_INET6, name.c_str(), address.data()) == 1)
        return {address.begin(), address.end()};
    return {};
}

std::string octets_text(Octets octets) { return "0x" + toolkit::to_hex(octets); }

std::optional<Bytes> octets_of(std::string_view text)
{
    if (!text.starts_with("0x"))
        return {};
    try {
        return toolkit::from_hex(text);
    } catch (const toolkit::Refusal &) {
        return {};
    }
}

std::optional<std::uint64_t> number_of(std::string_view text)
{
    std::uint64_t number = 0;
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace bgpdt::wire
