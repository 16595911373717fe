// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The route keys of RPD, SR policy and SD-WAN: numbers and an address, which a text holds only if it is as long as
/// what they print as.
#pragma once

#include "common/bol_row.hpp"
#include "common/ipv6.hpp"
#include "common/key_address.hpp"
#include "common/print.hpp"
#include "common/scan.hpp"
#include "common/text_offer.hpp"
#include "common/trimmed.hpp"

namespace bgpdt::policy {

/// Reads the numbers of a text of so many characters.
///
/// @return whether all are there, and the text is as long as what it prints as
template <FixedString Format, class... Numbers>
bool scan_back(const char *text, std::size_t length, Numbers &...numbers)
{
    return scan<Format>(text, numbers...) == int{sizeof...(numbers)} && printed_length<Format>(numbers...) == length;
}

/// The lengths that a text may have.
struct Lengths {
    std::size_t shortest;
    std::size_t longest;

    bool admit(std::size_t length) const { return length >= shortest && length <= longest; }
};

// What follows serves the keys with an address of either family. How one is written, a structure `Text` tells:
//
//     Key, Numbers                what it is, and the types of the numbers in front of the address
//     numbers_of, store           these numbers from a key, and into one
//     ipv4_form, ipv6_form        the formats for both directions
//     ipv4_lengths, ipv6_lengths  of the texts
//     dropped                     how many characters at the end of an IPv6 text are not its address's

template <class Text>
u32 parse_ipv4_form(const char *text, std::size_t length, typename Text::Key &key)
{
    typename Text::Numbers numbers;
    u32 address = 0;
    const auto read = [&](auto &...number) { return scan_back<Text::ipv4_form>(text, length, number..., address); };
    if (!Text::ipv4_lengths.admit(length) || !std::apply(read, numbers))
        return SYSDT_ERR_FAIL;
    Text::store(key, numbers);
    key.ipv4 = address;
    return SYSDT_OK;
}

template <class Text>
u32 parse_ipv6_form(const char *text, std::size_t length, typename Text::Key &key)
{
    typename Text::Numbers numbers;
    char address[Text::ipv6_lengths.longest + 1];
    const auto read = [&](auto &...number) {
        return scan<Text::ipv6_form>(text, number..., std::span(address)) == int{sizeof...(number)} + 1;
    };
    if (!Text::ipv6_lengths.admit(length) || !std::apply(read, numbers))
        return SYSDT_ERR_FAIL;
    address[std::strlen(address) - Text::dropped] = '\0';
    if (parse_inet6(address, key.ipv6) != SYSDT_OK)
        return SYSDT_ERR_PARAM;
    PAL_Inet_ntoa_b_ipv6(key.ipv6, address);
    const auto printed = [&](auto... number) { return printed_length<Text::ipv6_form>(number..., address); };
    if (std::apply(printed, numbers) != length)
        return SYSDT_ERR_FAIL;
    Text::store(key, numbers);
    key.family = family_ipv6;
    return SYSDT_OK;
}

/// Any dot makes a text the IPv4 form.
template <class Text>
u32 parse_either_form(char *text, typename Text::Key &key)
{
    const auto [kept, length] = trimmed(text, 0, SIZE_MAX);
    if (kept == nullptr)
        return SYSDT_ERR_FAIL;
    return std::strchr(kept, '.') != nullptr ? parse_ipv4_form<Text>(kept, length, key)
                                             : parse_ipv6_form<Text>(kept, length, key);
}

template <class Text>
u32 print_ipv4_form(const typename Text::Key &key, Writer &out)
{
    std::apply([&](auto... number) { print<Text::ipv4_form>(out, number..., u32{key.ipv4}); }, Text::numbers_of(key));
    return SYSDT_OK;
}

template <class Text>
u32 print_ipv6_form(const typename Text::Key &key, Writer &out)
{
    char address[ipv6_text_size];
    PAL_Inet_ntoa_b_ipv6(key.ipv6, address);
    std::apply([&](auto... number) { print<Text::ipv6_form>(out, number..., address); }, Text::numbers_of(key));
    return SYSDT_OK;
}

template <class Text>
u32 print_either_form(const typename Text::Key &key, Writer &out)
{
    return (key.family == family_ipv4 ? print_ipv4_form<Text> : print_ipv6_form<Text>)(key, out);
}

/// The declaration of a kind: a value of another kind does not print and takes the block with it, the caller's too.
template <class Value, u32 kind, auto print_text>
constexpr Type<Value> policy_row(std::string_view help, const Layout &layout)
{
    auto type = bol_row<Value>();
    type.print = [](const Value &value, u8, Writer &out) {
        return value.subKind == kind ? print_text(value.key, out) : u32{SYSDT_ERR_FAIL};
    };
    type.on_print_failure = OnPrintFailure::release;
    type.help = {.text = help, .allocator = Allocator::plain};
    type.layout = layout;
    return type;
}

inline i32 compare_policy(u32 length, const void *first, const void *second)
{
    return first == nullptr || second == nullptr ? static_cast<i32>(SYSDT_ERR_NULL_PTR)
                                                 : compare_bytes(length, first, second);
}

/// Endian works on the bare key: it swaps the numbers, and the IPv4 address unless the family is another.
template <class Key>
u32 swap_key(const void *first, void *data, const Layout &layout)
{
    if (first == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    bool ipv4 = true;
    if constexpr (requires(Key key) { key.family; })
        ipv4 = static_cast<const Key *>(data)->family == family_ipv4;
    for (const Field &field : key_fields(layout)) {
        u8 *const at = static_cast<u8 *>(data) + field.offset - sizeof(u32);
        if (field.form == Form::number || (field.form == Form::ipv4 && ipv4))
            std::reverse(at, at + field.width);
    }
    return SYSDT_OK;
}

} // namespace bgpdt::policy
