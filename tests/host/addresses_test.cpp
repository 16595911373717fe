// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <random>
#include <vector>

#include "host/host.hpp"
#include "tests/support/share.hpp"

namespace {

using Ipv6 = std::array<std::uint8_t, 16>;

/// The address of eight groups.
Ipv6 groups(const std::array<std::uint16_t, 8> &values)
{
    Ipv6 address;
    for (std::size_t i = 0; i < values.size(); ++i) {
        address[2 * i] = static_cast<std::uint8_t>(values[i] >> 8);
        address[2 * i + 1] = static_cast<std::uint8_t>(values[i]);
    }
    return address;
}

std::string text_of(const Ipv6 &address)
{
    char buffer[46];
    EXPECT_EQ(PAL_Inet_ntoa_b_ipv6(address.data(), buffer), buffer);
    return buffer;
}

TEST(Ipv4, ReadsFourDecimalOctets)
{
    struct {
        const char *text;
        std::uint32_t address;
    } const good[] = {
        {"192.0.2.1", 0xC0000201}, {"0.0.0.0", 0}, {"255.255.255.255", 0xFFFFFFFF}, {"1.2.3.4", 0x01020304}};
    const char *const bad[] = {
        "",          "1",          "1.2.3",   "1.2.3.",   "1.2.3.4.",         "1.2.3.4.5", "01.2.3.4",   "1.2.3.00",
        "1.2.3.256", "1.2.3.1000", "1..3.4",  ".1.2.3.4", " 1.2.3.4",         "1.2.3.4 ",  "1.2.3.4/24", "+1.2.3.4",
        "1.2.3.-4",  "0x1.2.3.4",  "1.2.3.a", "1,2,3,4",  "1.2.3.4294967297", "3221225985"};
    for (const auto read : {SYSDT_Str2Ipv4, PAL_StrToIpAddr}) {
        for (const auto &[text, expected] : good) {
            std::uint32_t address = 7;
            EXPECT_EQ(read(text, &address), SYSDT_OK) << text;
            EXPECT_EQ(address, expected) << text;
        }
        for (const char *text : bad) {
            std::uint32_t address = 7;
            EXPECT_NE(read(text, &address), SYSDT_OK) << text;
            EXPECT_EQ(address, 7u) << text;
        }
        std::uint32_t address = 7;
        EXPECT_NE(read(nullptr, &address), SYSDT_OK);
        EXPECT_NE(read("1.2.3.4", nullptr), SYSDT_OK);
    }
}

TEST(Ipv4, Prints)
{
    struct {
        std::uint32_t address;
        const char *text;
    } const samples[] = {
        {0, "0.0.0.0"}, {0xC0000201, "192.0.2.1"}, {0xFFFFFFFF, "255.255.255.255"}, {0x0A64090B, "10.100.9.11"}};
    for (const auto &[address, expected] : samples) {
        std::vector<char> buffer(16);
        EXPECT_EQ(PAL_IpAddrToStr(address, buffer.data()), buffer.data());
        EXPECT_STREQ(buffer.data(), expected);
    }
}

TEST(Ipv4, EveryOctetComesBack)
{
    for (std::uint32_t octet = 0; octet < 256; ++octet) {
        const std::uint32_t address = octet << 24 | (255 - octet) << 16 | octet << 8 | octet;
        char buffer[16];
        std::uint32_t again = 0;
        EXPECT_EQ(SYSDT_Str2Ipv4(PAL_IpAddrToStr(address, buffer), &again), SYSDT_OK);
        EXPECT_EQ(again, address) << buffer;
    }
}

TEST(Ipv6Text, ReadsRfc4291)
{
    struct {
        const char *text;
        Ipv6 address;
    } const good[] = {
        {"::", groups({0, 0, 0, 0, 0, 0, 0, 0})},
        {"::1", groups({0, 0, 0, 0, 0, 0, 0, 1})},
        {"1::", groups({1, 0, 0, 0, 0, 0, 0, 0})},
        {"2001:DB8:0:0:8:800:200C:417A", groups({0x2001, 0xDB8, 0, 0, 8, 0x800, 0x200C, 0x417A})},
        {"2001:db8::8:800:200c:417a", groups({0x2001, 0xDB8, 0, 0, 8, 0x800, 0x200C, 0x417A})},
        {"2001:0db8::0001", groups({0x2001, 0xDB8, 0, 0, 0, 0, 0, 1})},
        {"1:2:3:4:5:6:7::", groups({1, 2, 3, 4, 5, 6, 7, 0})},
        {"::2:3:4:5:6:7:8", groups({0, 2, 3, 4, 5, 6, 7, 8})},
        {"::192.0.2.1", groups({0, 0, 0, 0, 0, 0, 0xC000, 0x0201})},
        {"::ffff:192.0.2.1", groups({0, 0, 0, 0, 0, 0xFFFF, 0xC000, 0x0201})},
        {"0:0:0:0:0:0:192.0.2.1", groups({0, 0, 0, 0, 0, 0, 0xC000, 0x0201})},
        {"2001:db8::192.0.2.1", groups({0x2001, 0xDB8, 0, 0, 0, 0, 0xC000, 0x0201})},
    };
    const char *const bad[] = {"",
                               ":",
                               ":::",
                               "1:",
                               ":1:2:3:4:5:6:7",
                               "1::2::3",
                               "12345::",
                               "::00001",
                               "1:2:3:4:5:6:7",
                               "1:2:3:4:5:6:7:8:9",
                               "1:2:3:4:5:6:7:8::",
                               "1:2:3:4:5:6:7:192.0.2.1",
                               "::192.0.2",
                               "::192.0.2.256",
                               "::192.0.02.1",
                               "192.0.2.1",
                               "192.0.2.1::",
                               "fe80::1%eth0",
                               "::1/64",
                               "[::1]",
                               " ::1",
                               "::1 ",
                               "::g",
                               "2001-db8::"};
    const auto read_by_family = [](const char *text, std::uint8_t *address) { return SMP_InetAToN(10, text, address); };
    using Read = std::uint32_t(const char *, std::uint8_t *);
    for (Read *const read : {static_cast<Read *>(SYSDT_Str2Ipv6), static_cast<Read *>(SMP_InetAToN6),
                             static_cast<Read *>(read_by_family)}) {
        for (const auto &[text, expected] : good) {
            Ipv6 address{9};
            EXPECT_EQ(read(text, address.data()), SYSDT_OK) << text;
            EXPECT_EQ(address, expected) << text;
        }
        for (const char *text : bad) {
            Ipv6 address{9};
            EXPECT_NE(read(text, address.data()), SYSDT_OK) << text;
            EXPECT_EQ(address, Ipv6{9}) << text;
        }
        Ipv6 address{9};
        EXPECT_NE(read(nullptr, address.data()), SYSDT_OK);
        EXPECT_NE(read("::", nullptr), SYSDT_OK);
    }
}

TEST(AddressFamilies, ChooseTheForm)
{
    std::array<std::uint8_t, 5> address{0, 0, 0, 0, 0xEE};
    EXPECT_EQ(SMP_InetAToN(2, "192.0.2.1", address.data()), SYSDT_OK);
    EXPECT_EQ(address, (std::array<std::uint8_t, 5>{192, 0, 2, 1, 0xEE}));
    EXPECT_NE(SMP_InetAToN(2, "::1", address.data()), SYSDT_OK);
    EXPECT_NE(SMP_InetAToN(2, "192.0.2.01", address.data()), SYSDT_OK);
    EXPECT_NE(SMP_InetAToN(10, "192.0.2.1", address.data()), SYSDT_OK);
    EXPECT_NE(SMP_InetAToN(2, nullptr, address.data()), SYSDT_OK);
    EXPECT_NE(SMP_InetAToN(2, "192.0.2.1", nullptr), SYSDT_OK);
    for (const int family : {-1, 0, 1, 3, 30})
        EXPECT_NE(SMP_InetAToN(family, "192.0.2.2", address.data()), SYSDT_OK) << family;
    EXPECT_EQ(address, (std::array<std::uint8_t, 5>{192, 0, 2, 1, 0xEE}));
}

struct Canonical {
    std::array<std::uint16_t, 8> groups;
    const char *text;
};

const Canonical canonical[] = {
    {{0, 0, 0, 0, 0, 0, 0, 0}, "::"},
    {{0, 0, 0, 0, 0, 0, 0, 1}, "::1"},
    {{1, 0, 0, 0, 0, 0, 0, 0}, "1::"},
    {{0xFE80, 0, 0, 0, 0, 0, 0, 1}, "fe80::1"},
    {{0x2001, 0xDB8, 0, 0, 0, 0, 2, 1}, "2001:db8::2:1"},              // RFC 5952, 4.2.1
    {{0x2001, 0xDB8, 0, 1, 1, 1, 1, 1}, "2001:db8:0:1:1:1:1:1"},       // 4.2.2: one group is not shortened
    {{0x2001, 0, 0, 1, 0, 0, 0, 1}, "2001:0:0:1::1"},                  // 4.2.3: the longest run
    {{0x2001, 0xDB8, 0, 0, 1, 0, 0, 1}, "2001:db8::1:0:0:1"},          // 4.2.3: the first of equal runs
    {{0x2001, 0xDB8, 0xABCD, 0xEF, 0, 0, 0, 0}, "2001:db8:abcd:ef::"}, // 4.1, 4.3
    {{1, 2, 3, 4, 5, 6, 7, 0}, "1:2:3:4:5:6:7:0"},
    {{0, 2, 3, 4, 5, 6, 7, 8}, "0:2:3:4:5:6:7:8"},
    {{0, 0, 3, 4, 5, 6, 7, 8}, "::3:4:5:6:7:8"},
    {{1, 2, 3, 4, 5, 6, 0, 0}, "1:2:3:4:5:6::"},
    {{1, 0x10, 0x100, 0x1000, 0xF, 0xFF, 0xFFF, 0xFFFF}, "1:10:100:1000:f:ff:fff:ffff"},
    {{0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF}, "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"},
    {{0, 0, 0, 0, 0, 0xFFFF, 0xC000, 0x0201}, "::ffff:192.0.2.1"}, // IPv4-mapped
    {{0, 0, 0, 0, 0, 0xFFFF, 0, 0}, "::ffff:0.0.0.0"},
    {{0, 0, 0, 0, 0, 0xFFFF, 0xFFFF, 0xFFFF}, "::ffff:255.255.255.255"},
    {{0, 0, 0, 0, 0, 0, 0xC000, 0x0201}, "::192.0.2.1"}, // IPv4-compatible
    {{0, 0, 0, 0, 0, 0, 0, 0xFFFF}, "::ffff"},           // seven zero groups: no IPv4 address
    {{0, 0, 0, 0, 0, 0xFFFE, 0xC000, 0x0201}, "::fffe:c000:201"},
    {{0, 0, 0, 0, 0xFFFF, 0, 0xC000, 0x0201}, "::ffff:0:c000:201"},
    {{1, 0, 0, 0, 0, 0xFFFF, 0xC000, 0x0201}, "1::ffff:c000:201"},
    {{0x64, 0xFF9B, 0, 0, 0, 0, 0xC000, 0x0201}, "64:ff9b::c000:201"},
};

TEST(Ipv6Text, IsCanonical)
{
    for (const Canonical &sample : canonical)
        EXPECT_EQ(text_of(groups(sample.groups)), sample.text);
}

TEST(Ipv6Text, FitsOrIsRefused)
{
    for (const Canonical &sample : canonical) {
        const Ipv6 address = groups(sample.groups);
        const auto needed = static_cast<std::uint32_t>(std::strlen(sample.text) + 1);
        for (const std::uint32_t size : {needed, 46u, 257u}) {
            std::vector<char> buffer(size);
            EXPECT_EQ(inet_ntop6(address.data(), buffer.data(), size), buffer.data());
            EXPECT_STREQ(buffer.data(), sample.text);
        }
        for (std::uint32_t size = 0; size < needed; ++size) {
            std::vector<char> buffer(size);
            EXPECT_EQ(inet_ntop6(address.data(), buffer.data(), size), nullptr) << sample.text << ' ' << size;
        }
    }
}

TEST(Ipv6Text, AgreesWithTheCLibraryAndComesBack)
{
    std::mt19937 random(5952);
    for (int i = 0; i < 20000; ++i) {
        std::array<std::uint16_t, 8> values;
        for (std::uint16_t &value : values)
            value = static_cast<std::uint16_t>(random() % 2 == 0 ? 0 : random() >> random() % 17);
        if (random() % 8 == 0)
            values[5] = 0xFFFF;
        const Ipv6 address = groups(values);
        const std::string text = text_of(address);
        char other[INET6_ADDRSTRLEN];
        EXPECT_STREQ(text.c_str(), inet_ntop(AF_INET6, address.data(), other, sizeof other));
        Ipv6 again{};
        EXPECT_EQ(SYSDT_Str2Ipv6(text.c_str(), again.data()), SYSDT_OK) << text;
        EXPECT_EQ(again, address) << text;
    }
}

/// The 21 bytes of an address field.
std::array<std::uint8_t, 21> field(std::uint32_t ipv4, const Ipv6 &ipv6, std::uint8_t family)
{
    std::array<std::uint8_t, 21> bytes;
    std::memcpy(bytes.data(), &ipv4, sizeof ipv4);
    std::memcpy(bytes.data() + 4, ipv6.data(), ipv6.size());
    bytes[20] = family;
    return bytes;
}

TEST(AddressFields, AreOrderedByFamilyThenAddress)
{
    const Ipv6 low = groups({0x2001, 0xDB8, 0, 0, 0, 0, 0, 1});
    const Ipv6 high = groups({0x2001, 0xDB8, 0, 0, 0, 0, 1, 0});
    const auto compare = [](const auto &a, const auto &b) {
        EXPECT_EQ(SYSDT_Ipv4Ipv6Compare(21, a.data(), b.data()), -SYSDT_Ipv4Ipv6Compare(21, b.data(), a.data()));
        return SYSDT_Ipv4Ipv6Compare(21, a.data(), b.data());
    };
    EXPECT_EQ(compare(field(9, high, 0), field(1, low, 1)), -1); // family before address
    EXPECT_EQ(compare(field(9, high, 2), field(1, low, 1)), 1);
    EXPECT_EQ(compare(field(0x01000000, low, 0), field(2, low, 0)), 1); // a number, whatever the byte order
    EXPECT_EQ(compare(field(1, low, 0), field(0xFFFFFFFF, low, 0)), -1);
    EXPECT_EQ(compare(field(1, low, 0), field(1, high, 0)), 0); // the other address does not count
    EXPECT_EQ(compare(field(9, low, 1), field(1, high, 1)), -1);
    EXPECT_EQ(compare(field(9, low, 1), field(1, low, 1)), 0);
    EXPECT_EQ(compare(field(1, high, 255), field(9, low, 255)), 1); // any family but 0 is IPv6
}

TEST(Mac, HasThreeGroupsOfHexDigits)
{
    using Mac = std::array<std::uint8_t, 6>;
    struct {
        const char *text;
        Mac mac;
    } const good[] = {
        {"0000-5e00-5301", {0x00, 0x00, 0x5E, 0x00, 0x53, 0x01}},
        {"0-5E00-5301", {0x00, 0x00, 0x5E, 0x00, 0x53, 0x01}},
        {"1-02-003", {0, 1, 0, 2, 0, 3}},
        {"ffff-FFFF-fFfF", {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
    };
    for (const auto &[text, expected] : good) {
        Mac mac{};
        EXPECT_EQ(SMP_Str2Mac(text, mac.data()), SYSDT_OK) << text;
        EXPECT_EQ(mac, expected) << text;
    }
    for (const char *text : {"", "1", "1-2", "1-2-", "1-2-3-", "1-2-3-4", "-1-2-3", "1--3", "00000-1-2", "1-2-00003",
                             "1-2-g", "1:2:3", "00-00-5e-00-53-01", " 1-2-3", "1-2-3 ", "0x1-2-3"}) {
        Mac mac{7};
        EXPECT_NE(SMP_Str2Mac(text, mac.data()), SYSDT_OK) << text;
        EXPECT_EQ(mac, Mac{7}) << text;
    }
    Mac mac{};
    EXPECT_NE(SMP_Str2Mac(nullptr, mac.data()), SYSDT_OK);
    EXPECT_NE(SMP_Str2Mac("1-2-3", nullptr), SYSDT_OK);
}

TEST(Ipv6, ReadsWhatTheCLibraryReads)
{
    std::mt19937 random(bgpdt::test::seed());
    constexpr std::string_view alphabet = "0123456789abcdefABCDEF:::::....g ";
    const std::size_t rounds = 1000000 / bgpdt::test::small_share();
    std::size_t accepted = 0;
    for (std::size_t round = 0; round < rounds; ++round) {
        Ipv6 address{};
        for (std::uint8_t &octet : address)
            octet = random() % 3 == 0 ? static_cast<std::uint8_t>(random()) : 0;
        std::string text = text_of(address);
        for (auto changes = random() % 3; changes != 0; --changes) {
            const std::size_t at = random() % text.size();
            const char character = alphabet[random() % alphabet.size()];
            random() % 2 == 0 ? text.insert(at, 1, character) : text.replace(at, 1, 1, character);
        }
        Ipv6 expected{};
        Ipv6 read{};
        const bool valid = inet_pton(AF_INET6, text.c_str(), expected.data()) == 1;
        ASSERT_EQ(SYSDT_Str2Ipv6(text.c_str(), read.data()) == SYSDT_OK, valid) << text;
        ASSERT_EQ(valid ? expected : Ipv6{}, read) << text;
        accepted += valid ? 1 : 0;
    }
    EXPECT_LT(rounds * 3 / 10, accepted);
    EXPECT_GT(rounds * 9 / 10, accepted);
}

} // namespace
