// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Addresses from and to text: IPv4, IPv6 (RFC 4291 in, RFC 5952 out) and MAC.
#include <arpa/inet.h>

#include <array>
#include <cstring>
#include <iterator>

#include "host/ascii.hpp"
#include "host/services.hpp"

using namespace bgpdt::host;

namespace {

constexpr int32_t family_ipv4 = 2;
constexpr int32_t family_ipv6 = 10;
constexpr uint32_t ipv6_text_size = 46; // the longest IPv6 text with a dotted tail, and its NUL
constexpr size_t group_count = 8;

uint32_t decimal_digit(char character) { return static_cast<uint8_t>(character) - uint32_t{'0'}; }

/// Reads one decimal octet without leading zeros and moves behind it. A fourth digit is left to who reads on.
bool read_octet(const char *&at, uint32_t &octet)
{
    octet = decimal_digit(*at);
    if (octet > 9)
        return false;
    uint32_t digit = decimal_digit(*++at);
    if (digit > 9)
        return true;
    if (octet == 0)
        return false;
    octet = octet * 10 + digit;
    digit = decimal_digit(*++at);
    if (digit > 9)
        return true;
    octet = octet * 10 + digit;
    ++at;
    return octet <= 255;
}

uint32_t read_ipv4(const char *text, uint32_t *address)
{
    if (text == nullptr || address == nullptr)
        return SYSDT_ERR_NULL_PTR;
    uint32_t value = 0;
    uint32_t octet = 0;
    for (int left = 3; left != 0; --left) {
        if (!read_octet(text, octet) || *text++ != '.')
            return SYSDT_ERR_FAIL;
        value = value << 8 | octet;
    }
    if (!read_octet(text, octet) || *text != '\0')
        return SYSDT_ERR_FAIL;
    *address = value << 8 | octet;
    return SYSDT_OK;
}

/// 1 to `most` hexadecimal digits, behind those that the group has; moves behind them.
template <int most>
[[gnu::always_inline]] inline bool read_digits(const char *&at, uint32_t &group)
{
    const uint32_t digit = digit_value(*at);
    if (digit > 15)
        return false;
    group = group << 4 | digit;
    ++at;
    if constexpr (most > 1)
        read_digits<most - 1>(at, group);
    return true;
}

/// The groups of an IPv6 text.
struct Groups {
    uint8_t bytes[sizeof(in6_addr)];
    uint8_t *gap = nullptr; ///< where the "::" stands, if there is one

    bool read(const char *text);

private:
    uint8_t *read_groups(const char *at);
};

uint8_t *put_group(uint8_t *to, uint32_t group)
{
    to[0] = static_cast<uint8_t>(group >> 8);
    to[1] = static_cast<uint8_t>(group);
    return to + 2;
}

/// Reads all groups in front of the text's end or its dotted tail.
///
/// @return where they end; null if they are refused
uint8_t *Groups::read_groups(const char *at)
{
    if (*at == ':' && *++at != ':')
        return nullptr;
    for (uint8_t *to = bytes;;) {
        if (*at == ':') {
            if (gap != nullptr)
                return nullptr;
            gap = to;
            if (*++at == '\0')
                return to;
        }
        const char *const first = at;
        uint32_t group = 0;
        const bool has_digits = read_digits<4>(at, group); // behind a fifth there is no separator
        if (*at == '.') {
            uint32_t tail = 0;
            if (std::end(bytes) - to < 4 || read_ipv4(first, &tail) != SYSDT_OK)
                return nullptr;
            return put_group(put_group(to, tail >> 16), tail);
        }
        if (!has_digits || to == std::end(bytes))
            return nullptr;
        to = put_group(to, group);
        if (*at == '\0')
            return to;
        if (*at++ != ':')
            return nullptr;
    }
}

bool Groups::read(const char *text)
{
    const uint8_t *const end = read_groups(text);
    if (end == nullptr || gap == nullptr)
        return end == std::end(bytes);
    const auto behind = static_cast<size_t>(end - gap);
    const auto missing = static_cast<size_t>(std::end(bytes) - end);
    std::memmove(std::end(bytes) - behind, gap, behind);
    std::memset(gap, 0, missing);
    return missing != 0;
}

uint32_t read_ipv6(const char *text, void *address)
{
    if (text == nullptr || address == nullptr)
        return SYSDT_ERR_NULL_PTR;
    Groups groups;
    if (!groups.read(text))
        return SYSDT_ERR_FAIL;
    std::memcpy(address, groups.bytes, sizeof groups.bytes);
    return SYSDT_OK;
}

/// Every octet in decimal.
struct OctetText {
    char text[3];
    uint8_t length;
};

constexpr auto octets = [] {
    std::array<OctetText, 256> table{};
    for (unsigned octet = 0; octet < table.size(); ++octet) {
        OctetText &written = table[octet];
        for (const unsigned unit : {100U, 10U, 1U})
            if (octet >= unit || unit == 1)
                written.text[written.length++] = static_cast<char>('0' + octet / unit % 10);
    }
    return table;
}();

char *write_octet(char *out, uint32_t octet)
{
    const OctetText &written = octets[octet];
    for (uint8_t i = 0; i < written.length; ++i)
        *out++ = written.text[i];
    return out;
}

char *write_ipv4(char *out, uint32_t address)
{
    for (int shift = 24; shift > 0; shift -= 8) {
        out = write_octet(out, address >> shift & 0xFF);
        *out++ = '.';
    }
    return write_octet(out, address & 0xFF);
}

/// Hexadecimal without leading zeros.
char *write_group(char *out, uint32_t group)
{
    constexpr const char *digits = "0123456789abcdef";
    if (group > 0xFFF)
        *out++ = digits[group >> 12];
    if (group > 0xFF)
        *out++ = digits[group >> 8 & 0xF];
    if (group > 0xF)
        *out++ = digits[group >> 4 & 0xF];
    *out++ = digits[group & 0xF];
    return out;
}

/// A run of zero groups.
struct Run {
    uint8_t start;
    uint8_t length;
};

/// The longest run for every set of zero groups, a bit each; the first of equal ones.
constexpr auto longest_runs = [] {
    std::array<Run, 1 << group_count> table{};
    for (unsigned zeros = 0; zeros < table.size(); ++zeros) {
        Run run{0, 0};
        for (uint8_t i = 0; i < group_count; ++i) {
            run = (zeros >> i & 1) == 0 ? Run{static_cast<uint8_t>(i + 1), 0}
                                        : Run{run.start, static_cast<uint8_t>(run.length + 1)};
            if (run.length > table[zeros].length)
                table[zeros] = run;
        }
    }
    return table;
}();

/// Writes RFC 5952 text of less than ipv6_text_size characters, NUL-terminated, and returns its end.
///
/// The dotted tail (section 5) is for ::ffff:0:0/96 and for what looks like an IPv4-compatible address: six zero
/// groups and no more, so that "::" and "::1" are none.
char *write_ipv6(char *out, const uint8_t *address)
{
    uint32_t groups[group_count];
    unsigned zero_groups = 0;
    for (size_t i = 0; i < group_count; ++i) {
        groups[i] = static_cast<uint32_t>(address[2 * i] << 8 | address[2 * i + 1]);
        zero_groups |= (groups[i] == 0 ? 1U : 0U) << i;
    }
    const Run zeros = longest_runs[zero_groups];
    const bool dotted = zeros.start == 0 && (zeros.length == 6 || (zeros.length == 5 && groups[5] == 0xFFFF));
    const size_t end = dotted ? 6 : group_count;
    bool separated = true; // nothing, or a colon, stands before the next group
    for (size_t i = 0; i < end;) {
        if (i == zeros.start && zeros.length > 1) {
            *out++ = ':';
            *out++ = ':';
            separated = true;
            i += zeros.length;
            continue;
        }
        if (!separated)
            *out++ = ':';
        out = write_group(out, groups[i++]);
        separated = false;
    }
    if (dotted) {
        if (!separated)
            *out++ = ':';
        out = write_ipv4(out, groups[6] << 16 | groups[7]);
    }
    *out = '\0';
    return out;
}

/// The 21 bytes of an address field: IPv4 as a number in the processor's order, IPv6, family.
struct AddressField {
    static constexpr size_t ipv6_offset = 4;
    static constexpr size_t family_offset = 20;

    const uint8_t *bytes;

    uint8_t family() const { return bytes[family_offset]; }
    const uint8_t *ipv6() const { return bytes + ipv6_offset; }
    uint32_t ipv4() const
    {
        uint32_t number;
        std::memcpy(&number, bytes, sizeof number);
        return number;
    }
};

} // namespace

uint32_t SYSDT_Str2Ipv4(const char *text, uint32_t *address) { return read_ipv4(text, address); }

uint32_t PAL_StrToIpAddr(const char *text, uint32_t *address) { return read_ipv4(text, address); }

uint32_t SYSDT_Str2Ipv6(const char *text, uint8_t address[16]) { return read_ipv6(text, address); }

uint32_t SMP_InetAToN6(const char *text, uint8_t address[16]) { return read_ipv6(text, address); }

uint32_t SMP_InetAToN(int32_t family, const char *text, void *address)
{
    if (family == family_ipv6)
        return read_ipv6(text, address);
    if (family != family_ipv4)
        return SYSDT_ERR_UNSUPPORTED;
    uint32_t number = 0;
    const uint32_t status = address == nullptr ? SYSDT_ERR_NULL_PTR : read_ipv4(text, &number);
    if (status == SYSDT_OK) {
        number = htonl(number);
        std::memcpy(address, &number, sizeof number);
    }
    return status;
}

char *PAL_IpAddrToStr(uint32_t address, char *buffer)
{
    *write_ipv4(buffer, address) = '\0';
    return buffer;
}

char *PAL_Inet_ntoa_b_ipv6(const uint8_t address[16], char *buffer)
{
    write_ipv6(buffer, address);
    return buffer;
}

const char *inet_ntop6(const uint8_t address[16], char *buffer, uint32_t size)
{
    if (size >= ipv6_text_size) {
        write_ipv6(buffer, address);
        return buffer;
    }
    char text[ipv6_text_size];
    const auto needed = static_cast<size_t>(write_ipv6(text, address) - text) + 1;
    if (needed > size)
        return nullptr;
    std::memcpy(buffer, text, needed);
    return buffer;
}

int32_t SYSDT_Ipv4Ipv6Compare(uint32_t, const void *first, const void *second)
{
    const AddressField a{static_cast<const uint8_t *>(first)};
    const AddressField b{static_cast<const uint8_t *>(second)};
    if (a.family() != b.family())
        return a.family() > b.family() ? 1 : -1;
    if (a.family() != 0)
        return order(std::memcmp(a.ipv6(), b.ipv6(), sizeof(in6_addr)));
    return (a.ipv4() > b.ipv4()) - (a.ipv4() < b.ipv4());
}

uint32_t SMP_Str2Mac(const char *text, uint8_t mac[6])
{
    if (text == nullptr || mac == nullptr)
        return SYSDT_ERR_NULL_PTR;
    uint8_t value[6];
    for (int i = 0; i < 6; i += 2) {
        uint32_t group = 0;
        if (!read_digits<4>(text, group) || *text++ != (i == 4 ? '\0' : '-'))
            return SYSDT_ERR_FAIL;
        value[i] = static_cast<uint8_t>(group >> 8);
        value[i + 1] = static_cast<uint8_t>(group);
    }
    std::memcpy(mac, value, sizeof value);
    return SYSDT_OK;
}
