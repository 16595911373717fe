// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the floors are made of: readers that move a cursor, writers that return the new end, bytes.
#pragma once

#include <array>
#include <bit>
#include <cstring>

#include "kind.hpp"

namespace bgpdt::bench {

// ------------------------------------------------------------------------------------------------ bytes

template <class Number>
Number swapped(Number number)
{
    if constexpr (std::endian::native == std::endian::big)
        return number;
    else if constexpr (sizeof number == 2)
        return __builtin_bswap16(number);
    else if constexpr (sizeof number == 4)
        return __builtin_bswap32(number);
    else
        return __builtin_bswap64(number);
}

/// Network order.
template <class Number>
void put(u8 *at, Number number)
{
    number = swapped(number);
    std::memcpy(at, &number, sizeof number);
}

template <class Number>
Number get(const u8 *at)
{
    Number number;
    std::memcpy(&number, at, sizeof number);
    return swapped(number);
}

// ------------------------------------------------------------------------------------------------ readers

inline bool skip(const char *&at, char character)
{
    if (*at != character)
        return false;
    ++at;
    return true;
}

/// One to ten digits, at most `max`.
inline bool number(const char *&at, u32 &out, u32 max = UINT32_MAX)
{
    const char *const start = at;
    u32 digit = static_cast<u32>(static_cast<u8>(*at)) - '0';
    if (digit > 9)
        return false;
    u64 value = 0;
    do {
        value = value * 10 + digit;
        digit = static_cast<u32>(static_cast<u8>(*++at)) - '0';
    } while (digit <= 9);
    out = static_cast<u32>(value);
    return value <= max && at - start <= 10;
}

/// A number, and the character behind it.
inline bool number_and(const char *&at, u32 &out, char behind, u32 max = UINT32_MAX)
{
    return number(at, out, max) && skip(at, behind);
}

/// A number that ends the text.
inline bool last_number(const char *at, u32 &out, u32 max = UINT32_MAX) { return number(at, out, max) && *at == '\0'; }

/// One to three digits without leading zeros, at most 255.
inline bool octet(const char *&at, u32 &out)
{
    out = static_cast<u32>(static_cast<u8>(*at)) - '0';
    if (out > 9)
        return false;
    u32 digit = static_cast<u32>(static_cast<u8>(*++at)) - '0';
    if (digit > 9)
        return true;
    if (out == 0)
        return false;
    out = out * 10 + digit;
    digit = static_cast<u32>(static_cast<u8>(*++at)) - '0';
    if (digit > 9)
        return true;
    out = out * 10 + digit;
    ++at;
    return out <= 255;
}

/// The octets behind the first one, which is read already.
inline bool ipv4_rest(const char *&at, u32 first, u32 &out)
{
    u32 second;
    u32 third;
    u32 fourth;
    if (!skip(at, '.') || !octet(at, second) || !skip(at, '.') || !octet(at, third) || !skip(at, '.') ||
        !octet(at, fourth))
        return false;
    out = first << 24 | second << 16 | third << 8 | fourth;
    return true;
}

inline bool ipv4(const char *&at, u32 &out)
{
    u32 first;
    return octet(at, first) && ipv4_rest(at, first, out);
}

inline constexpr auto hex_values = [] {
    std::array<u8, 256> values{};
    values.fill(0xFF);
    for (u8 i = 0; i < 10; ++i)
        values[static_cast<u8>('0' + i)] = i;
    for (u8 i = 0; i < 6; ++i)
        values[static_cast<u8>('a' + i)] = values[static_cast<u8>('A' + i)] = static_cast<u8>(10 + i);
    return values;
}();

inline u32 hex_value(char character) { return hex_values[static_cast<u8>(character)]; }

/// Up to `digits` hexadecimal digits; how many there were.
inline u32 hex(const char *&at, u32 &out, u32 digits)
{
    out = 0;
    const char *const start = at;
    for (u32 value; digits != 0 && (value = hex_value(*at)) < 16; --digits, ++at)
        out = out << 4 | value;
    return static_cast<u32>(at - start);
}

/// One to four hexadecimal digits.
inline bool group(const char *&at, u32 &out)
{
    const u32 first = hex_value(at[0]);
    if (first > 15)
        return false;
    out = first;
    const u32 second = hex_value(*++at);
    if (second > 15)
        return true;
    out = out << 4 | second;
    const u32 third = hex_value(*++at);
    if (third > 15)
        return true;
    out = out << 4 | third;
    const u32 fourth = hex_value(*++at);
    if (fourth > 15)
        return true;
    out = out << 4 | fourth;
    ++at;
    return true;
}

/// Exactly four.
inline bool hex4(const char *&at, u8 *out)
{
    u32 number = 0;
    for (int i = 0; i < 4; ++i, ++at) {
        const u32 digit = hex_value(*at);
        if (digit > 15)
            return false;
        number = number << 4 | digit;
    }
    put(out, static_cast<u16>(number));
    return true;
}

/// RFC 4291 text, up to the first character that is none of it.
bool ipv6(const char *&at, u8 *out);

inline bool mac(const char *&at, u8 *out)
{
    for (int i = 0; i < 3; ++i) {
        u32 number;
        if (!group(at, number) || (i < 2 && !skip(at, '-')))
            return false;
        put(out + 2 * i, static_cast<u16>(number));
    }
    return true;
}

/// Five groups of four digits, neither all 0 nor all F unless `any`.
inline bool esi(const char *&at, u8 *out, bool any = false)
{
    for (int i = 0; i < 5; ++i)
        if (!hex4(at, out + 2 * i) || (i < 4 && !skip(at, '.')))
            return false;
    const u64 front = get<u64>(out);
    const u16 back = get<u16>(out + 8);
    return any || !((front == 0 && back == 0) || (front == UINT64_MAX && back == UINT16_MAX));
}

// ------------------------------------------------------------------------------------------------ writers

inline constexpr auto digit_pairs = [] {
    std::array<char, 200> pairs{};
    for (u32 i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

inline char *put_pair(char *out, u32 number)
{
    std::memcpy(out, &digit_pairs[number * 2], 2);
    return out + 2;
}

inline char *put(char *out, char character)
{
    *out = character;
    return out + 1;
}

template <std::size_t size>
char *put(char *out, const char (&text)[size])
{
    std::memcpy(out, text, size - 1);
    return out + size - 1;
}

/// Below 100, without a leading zero.
inline char *put_small(char *out, u32 number)
{
    return number < 10 ? put(out, static_cast<char>('0' + number)) : put_pair(out, number);
}

inline char *put(char *out, u32 number)
{
    if (number < 100)
        return put_small(out, number);
    if (number < 10'000)
        return put_pair(put_small(out, number / 100), number % 100);
    if (number < 100'000'000) {
        const u32 high = number / 10'000;
        const u32 low = number % 10'000;
        out = high < 100 ? put_small(out, high) : put_pair(put_small(out, high / 100), high % 100);
        return put_pair(put_pair(out, low / 100), low % 100);
    }
    const u32 low = number % 100'000'000;
    out = put_small(out, number / 100'000'000);
    out = put_pair(put_pair(out, low / 1'000'000), low / 10'000 % 100);
    return put_pair(put_pair(out, low / 100 % 100), low % 100);
}

/// Three characters and their count.
inline constexpr auto octet_texts = [] {
    struct Text {
        char text[3];
        u8 length;
    };
    std::array<Text, 256> texts{};
    for (u32 i = 0; i < 256; ++i) {
        auto &[text, length] = texts[i];
        if (i >= 100)
            text[length++] = static_cast<char>('0' + i / 100);
        if (i >= 10)
            text[length++] = static_cast<char>('0' + i / 10 % 10);
        text[length++] = static_cast<char>('0' + i % 10);
    }
    return texts;
}();

inline char *put_octet(char *out, u32 octet)
{
    const auto &[text, length] = octet_texts[octet];
    std::memcpy(out, text, 3); // a block has room for it behind every octet
    return out + length;
}

inline char *put_ipv4(char *out, u32 address)
{
    out = put(put_octet(out, address >> 24), '.');
    out = put(put_octet(out, address >> 16 & 0xFF), '.');
    out = put(put_octet(out, address >> 8 & 0xFF), '.');
    return put_octet(out, address & 0xFF);
}

inline constexpr auto hex_pairs = [] {
    std::array<char, 512> pairs{};
    for (u32 i = 0; i < 256; ++i) {
        pairs[2 * i] = "0123456789abcdef"[i >> 4];
        pairs[2 * i + 1] = "0123456789abcdef"[i & 15];
    }
    return pairs;
}();

inline char *put_hex2(char *out, u32 octet)
{
    std::memcpy(out, &hex_pairs[octet * 2], 2);
    return out + 2;
}

/// Up to eight digits, without leading zeros.
inline char *put_hex(char *out, u32 number)
{
    if (number < 0x10)
        return put(out, "0123456789abcdef"[number]);
    if (number < 0x100)
        return put_hex2(out, number);
    if (number < 0x10000) {
        const u32 high = number >> 8;
        return put_hex2(high < 0x10 ? put(out, "0123456789abcdef"[high]) : put_hex2(out, high), number & 0xFF);
    }
    out = put_hex(out, number >> 16);
    return put_hex2(put_hex2(out, number >> 8 & 0xFF), number & 0xFF);
}

/// RFC 5952 text, without a NUL.
char *put_ipv6(char *out, const u8 *address);

inline char *put_mac(char *out, const u8 *mac)
{
    out = put(put_hex2(put_hex2(out, mac[0]), mac[1]), '-');
    out = put(put_hex2(put_hex2(out, mac[2]), mac[3]), '-');
    return put_hex2(put_hex2(out, mac[4]), mac[5]);
}

inline char *put_esi(char *out, const u8 *esi)
{
    for (int i = 0; i < 10; i += 2) {
        out = put_hex2(put_hex2(out, esi[i]), esi[i + 1]);
        if (i != 8)
            out = put(out, '.');
    }
    return out;
}

} // namespace bgpdt::bench
