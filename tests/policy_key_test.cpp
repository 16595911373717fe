// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What no record and no row leads to: the policy keys' printers, and Endian on the bare keys.
#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "support/guarded.hpp"
#include "support/plugin_test.hpp"

namespace bgpdt::test::policy_key {

namespace {

class PolicyKeyTest : public PluginTest {
protected:
    /// Prints into a buffer of the promised 256 characters that ends at an inaccessible page.
    template <class Key>
    std::string printed(const char *printer, const Key &key) const
    {
        auto *print = exported<std::uint32_t(const Key *, char *, std::uint32_t *)>(printer);
        const Guarded value({reinterpret_cast<const std::uint8_t *>(&key), sizeof key}, Place::odd);
        const Key *at = reinterpret_cast<const Key *>(value.constant());
        Guarded buffer(256);
        char *text = reinterpret_cast<char *>(buffer.data());
        std::uint32_t length = 999;
        EXPECT_EQ(SYSDT_OK, print(at, text, &length)) << printer;
        EXPECT_EQ(std::strlen(text), length) << printer;
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(nullptr, text, &length)) << printer;
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(at, nullptr, &length)) << printer;
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(at, text, nullptr)) << printer;
        EXPECT_TRUE(buffer.intact()) << printer;
        return text;
    }

    void expect_swap(const char *function, const Bytes &before, const Bytes &after) const
    {
        auto *swap = exported<SYSDT_Endian>(function);
        for (const Place place : {Place::end, Place::odd}) {
            Guarded key(before, place);
            EXPECT_EQ(SYSDT_OK, swap(key.data(), 0, 0, key.data())) << function;
            EXPECT_EQ(after, key.bytes()) << function;
            EXPECT_EQ(SYSDT_OK, swap(key.data(), 0, 0, key.data())) << function;
            EXPECT_EQ(before, key.bytes()) << function;
            EXPECT_EQ(SYSDT_ERR_NULL_PTR, swap(nullptr, 0, 0, key.data())) << function;
            EXPECT_EQ(SYSDT_ERR_NULL_PTR, swap(key.data(), 0, 0, nullptr)) << function;
            EXPECT_EQ(before, key.bytes()) << function;
            EXPECT_TRUE(key.intact()) << function;
        }
    }
};

/// 1, 2, 3, ...
Bytes counted(std::size_t size)
{
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<std::uint8_t>(i + 1);
    return bytes;
}

/// The numbers of these sizes at these places turned round.
Bytes turned(Bytes bytes, std::initializer_list<std::pair<std::size_t, std::size_t>> numbers)
{
    for (const auto &[at, size] : numbers) {
        std::reverse(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                     bytes.begin() + static_cast<std::ptrdiff_t>(at + size));
    }
    return bytes;
}

Bytes with_family(Bytes key, std::uint8_t family)
{
    key.back() = family;
    return key;
}

TEST_F(PolicyKeyTest, EndianOfRpdTurnsDistinguisherAndPeer)
{
    expect_swap("SYSDT_RpdPrefixEndian", counted(27), turned(counted(27), {{2, 4}, {6, 4}}));
}

TEST_F(PolicyKeyTest, EndianTurnsTheIpv4AddressOnlyOfItsFamily)
{
    const Bytes sr_policy = with_family(counted(29), 0);
    expect_swap("SYSDT_SrPolicyPrefixEndian", sr_policy, turned(sr_policy, {{0, 4}, {4, 4}, {8, 4}}));
    const Bytes sdwan = with_family(counted(33), 0);
    expect_swap("SYSDT_SdwanPrefixEndian", sdwan, turned(sdwan, {{0, 2}, {4, 4}, {8, 4}, {12, 4}}));
    for (const std::uint8_t family : Bytes{1, 2, 255}) {
        const Bytes policy = with_family(sr_policy, family);
        expect_swap("SYSDT_SrPolicyPrefixEndian", policy, turned(policy, {{0, 4}, {4, 4}}));
        const Bytes route = with_family(sdwan, family);
        expect_swap("SYSDT_SdwanPrefixEndian", route, turned(route, {{0, 2}, {4, 4}, {8, 4}}));
    }
}

TEST_F(PolicyKeyTest, PrintersOfRpd)
{
    EXPECT_EQ("1/192.0.2.1/100", printed("SYSDT_RpdPrefix2Str", SYSDT_Rpd{1, 0, 100, 0xC0000201, {}}));
    EXPECT_EQ("255/255.255.255.255/4294967295",
              printed("SYSDT_RpdPrefix2Str", SYSDT_Rpd{255, 7, 0xFFFFFFFF, 0xFFFFFFFF, {1, 2, 3}}));
}

TEST_F(PolicyKeyTest, PrintersOfSrPolicy)
{
    SYSDT_SrPolicy key{1, 2, 0xC0000201, {0x20, 0x01, 0x0D, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}, 0};
    EXPECT_EQ("[1][2][192.0.2.1]", printed("SYSDT_SrPolicyPrefix2Str", key));
    key.family = 2;
    EXPECT_EQ("[1][2][2001:db8::1]", printed("SYSDT_SrPolicyPrefix2Str", key));
    for (const std::uint8_t family : Bytes{0, 1}) { // these do not look at it
        key.family = family;
        EXPECT_EQ("[1][2][192.0.2.1]", printed("SYSDT_Srv4PolicyPrefix2Str", key));
        EXPECT_EQ("[1][2][2001:db8::1]", printed("SYSDT_Srv6PolicyPrefix2Str", key));
    }
}

TEST_F(PolicyKeyTest, PrintersOfSdwan)
{
    SYSDT_BolSdwan value{};
    value.key = {65535, 0, 2, 3, 0xC0000201, {0x20, 0x01, 0x0D, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}, 0};
    EXPECT_EQ("65535-2-3-192.0.2.1", printed("SYSDT_SdwanPrefix2Str", value)); // whatever the sub-kind
    value.key.family = 255;
    EXPECT_EQ("65535-2-3-2001:db8::1", printed("SYSDT_SdwanPrefix2Str", value));
    for (const std::uint8_t family : Bytes{0, 1}) {
        value.key.family = family;
        EXPECT_EQ("65535-2-3-192.0.2.1", printed("SYSDT_SdwanV4Prefix2Str", value));
        EXPECT_EQ("65535-2-3-2001:db8::1", printed("SYSDT_SdwanV6Prefix2Str", value));
    }
}

TEST_F(PolicyKeyTest, GroupsOfAnIpv6Endpoint)
{
    auto *groups_of = exported<decltype(SYSDT_Ipv6AddrNtoH)>("SYSDT_Ipv6AddrNtoH");
    const SYSDT_SrPolicy key{1, 2, 3, {0x20, 0x01, 0x0D, 0xB8, 0, 3, 0, 4, 0, 5, 0, 6, 0xFF, 7, 0, 0x80}, 0};
    Guarded groups(8 * sizeof(std::uint16_t));
    auto *out = reinterpret_cast<std::uint16_t *>(groups.data());
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, groups_of(nullptr, out));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, groups_of(&key, nullptr));
    EXPECT_EQ(SYSDT_OK, groups_of(&key, out));
    EXPECT_TRUE(std::ranges::equal(std::array{0x2001, 0x0DB8, 3, 4, 5, 6, 0xFF07, 0x80}, std::span(out, 8)));
    EXPECT_TRUE(groups.intact());
}

} // namespace

} // namespace bgpdt::test::policy_key
