// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the vectors cannot say of the EVPN keys: the readers and printers of single pieces, small buffers, the orders of
/// single fields, and the table below the top of the script stack.
#include <cstdint>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <string>

#include <gtest/gtest.h>
#include <lua.hpp>

#include "bgp_datatype/bgp_datatype.h"
#include "support/guarded.hpp"
#include "support/plugin_test.hpp"

namespace bgpdt::test::evpn {

namespace {

using Address = SYSDT_EvpnAddress;

constexpr Address source{0xC0000201, {}, 0};
constexpr Address group{0xE9FC0001, {}, 0};
constexpr Address originator{0xC6336401, {}, 0};
constexpr Address ipv6{0, {0x20, 0x01, 0x0D, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}, 1};
constexpr Address unwritten{0xC0000201, {0x20, 0x01}, 2}; ///< of a family that is not printed
constexpr std::uint8_t esi[10] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0xFF};
constexpr char esi_text[] = "0011.2233.4455.6677.88ff";

Bytes bytes_of(const auto &object)
{
    const auto *first = reinterpret_cast<const std::uint8_t *>(&object);
    return {first, first + sizeof object};
}

template <class Part>
SYSDT_BolEvpn key_of(std::uint8_t route_type, const Part &part)
{
    SYSDT_BolEvpn value{};
    value.subKind = SYSDT_BOL_EVN;
    value.key.routeType = route_type;
    std::memcpy(value.key.bytes, &part, sizeof part);
    return value;
}

SYSDT_EvpnSync sync_of(const Address &sender)
{
    SYSDT_EvpnSync sync{{}, {100, {32, source}, {32, group}, {128, sender}}, 4294967295};
    std::memcpy(sync.esi, esi, sizeof esi);
    return sync;
}

class EvpnTest : public PluginTest {
protected:
    ~EvpnTest() override { lua_close(lua_); }

    lua_State *lua_ = luaL_newstate();
};

// ---------------------------------------------------------------------------------------------------- segment types

struct TypeCase {
    const char *type;
    std::uint8_t octet;
    bool basic;          ///< strictly allowed
    bool auto_discovery; ///< strictly allowed in an auto-discovery route
};

constexpr TypeCase types[] = {
    {"00", 0x00, true, true},   {"01", 0x01, true, true},   {"02", 0x02, false, true},
    {"03", 0x03, false, true},  {"04", 0x04, false, true},  {"05", 0x05, false, true},
    {"06", 0x06, false, false}, {"10", 0x10, false, false}, {"aa", 0xAA, false, false},
};

class SegmentTypeTest : public EvpnTest {
protected:
    void expect(const std::string &text, std::uint32_t lenient, bool allowed, std::uint8_t route_type,
                std::uint8_t octet)
    {
        auto *parse = exported<decltype(SYSDT_Str2EvnPrefix)>("SYSDT_Str2EvnPrefix");
        std::string copy = text;
        SYSDT_BolEvpn value{};
        EXPECT_EQ(allowed ? SYSDT_OK : SYSDT_ERR_FAIL, parse(copy.data(), &value, lenient))
            << text << " lenient " << lenient;
        if (allowed) {
            EXPECT_EQ(route_type, value.key.routeType) << text;
            EXPECT_EQ((Bytes{octet, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99}),
                      bytes_of(value.key.segment.esi))
                << text;
            EXPECT_EQ(0U, std::uint32_t{value.subKind}) << text;
        }
    }
};

TEST_F(SegmentTypeTest, AreAllAllowedLeniently)
{
    for (const TypeCase &sample : types) {
        const std::string segment = std::string(sample.type) + "11.2233.4455.6677.8899";
        expect(segment + ":100", 0, sample.auto_discovery, 1, sample.octet);
        expect(segment + ":100", 1, true, 1, sample.octet);
        for (const char *address : {"", ":32:192.0.2.1", ":128:[2001:db8::1]"}) {
            expect(segment + address, 0, sample.basic, 4, sample.octet);
            expect(segment + address, 1, true, 4, sample.octet);
        }
    }
}

TEST_F(SegmentTypeTest, AreReadStrictlyInSynchronisationRoutesWhateverTheFlag)
{
    for (const TypeCase &sample : types) {
        const std::string join =
            std::string(sample.type) + "11.2233.4455.6677.8899:100:32:192.0.2.1:32:233.252.0.1:32:198.51.100.1";
        for (const std::uint32_t lenient : {0U, 1U}) {
            expect(join, lenient, sample.basic, 7, sample.octet);
            expect(join + ":5", lenient, sample.basic, 8, sample.octet);
        }
    }
}

TEST_F(EvpnTest, AKeyNeedsTextAndValue)
{
    auto *parse = exported<decltype(SYSDT_Str2EvnPrefix)>("SYSDT_Str2EvnPrefix");
    char text[] = "100:24:192.0.2.1";
    SYSDT_BolEvpn value{};
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, parse(nullptr, &value, 1));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, parse(text, nullptr, 1));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, parse(nullptr, nullptr, 0));
    for (const char *refused : {"", " ", "x", "100:24:192.0.2.1/", "100 :24:192.0.2.1"}) {
        std::string copy = refused;
        EXPECT_EQ(SYSDT_ERR_FAIL, parse(copy.data(), &value, 1)) << refused;
    }
}

TEST_F(EvpnTest, CharactersOfASegmentType)
{
    auto *basic = exported<decltype(SYSDT_CheckEsiTopTwo)>("SYSDT_CheckEsiTopTwo");
    auto *auto_discovery = exported<decltype(SYSDT_CheckEsiTopTwoForAd)>("SYSDT_CheckEsiTopTwoForAd");
    for (const char character : std::string("0123456789abcdefABCDEF./:")) {
        const auto status = [&](bool allowed) { return allowed ? SYSDT_OK : SYSDT_ERR_FAIL; };
        EXPECT_EQ(status(character == '0'), basic(character, 0, 0)) << character;
        EXPECT_EQ(status(character == '0' || character == '1'), basic(character, 1, 0)) << character;
        EXPECT_EQ(status(character == '0'), auto_discovery(character, 0, 0)) << character;
        EXPECT_EQ(status(character >= '0' && character <= '5'), auto_discovery(character, 1, 0)) << character;
        for (const std::uint32_t position : {0U, 1U}) {
            EXPECT_EQ(SYSDT_OK, basic(character, position, 1)) << character;
            EXPECT_EQ(SYSDT_OK, auto_discovery(character, position, 1)) << character;
        }
        EXPECT_EQ(SYSDT_OK, basic(character, 2, 0)) << character; // only the first two are looked at
        EXPECT_EQ(SYSDT_OK, auto_discovery(character, 2, 0)) << character;
    }
}

// ---------------------------------------------------------------------------------------------------- route types

class RouteTypeTest : public EvpnTest {
protected:
    /// The parser's status of a trimmed text, and the 89 bytes if it is 0.
    template <class... Lenient>
    Bytes parsed(const char *parser, const std::string &text, std::uint32_t status, Lenient... lenient) const
    {
        using Parser = std::uint32_t(char *, SYSDT_BolEvpn *, Lenient...);
        Guarded page({reinterpret_cast<const std::uint8_t *>(text.c_str()), text.size() + 1});
        Guarded value(sizeof(SYSDT_BolEvpn), Place::end, 0);
        char *const at = reinterpret_cast<char *>(page.data());
        auto *const key = reinterpret_cast<SYSDT_BolEvpn *>(value.data());
        EXPECT_EQ(status, exported<Parser>(parser)(at, key, lenient...)) << parser << " " << text;
        EXPECT_TRUE(value.intact()) << parser << " " << text;
        expect_pointers_needed<Parser>(parser, SYSDT_ERR_NULL_PTR, at, key, lenient...);
        return status == SYSDT_OK ? value.bytes() : Bytes{};
    }
    /// 89 bytes, zero but for these.
    static Bytes key_with(std::initializer_list<std::pair<std::size_t, Bytes>> pieces)
    {
        Bytes bytes(sizeof(SYSDT_BolEvpn));
        for (const auto &[at, piece] : pieces)
            std::copy(piece.begin(), piece.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
        return bytes;
    }
};

TEST_F(RouteTypeTest, MulticastRoutesAreToldByTheirColons)
{
    const char *const parser = "SYSDT_Str2EvpnMcRoute";
    const std::string membership = "100:32:192.0.2.1:32:233.252.0.1:128:[2001:db8::1]";
    EXPECT_EQ(6, parsed(parser, membership, SYSDT_OK)[4]);
    EXPECT_EQ(7, parsed(parser, esi_text + (":" + membership), SYSDT_OK)[4]);
    const std::string ipv4_only = "100:32:192.0.2.1:32:233.252.0.1:32:198.51.100.1";
    EXPECT_EQ(8, parsed(parser, esi_text + (":" + ipv4_only) + ":5", SYSDT_OK)[4]);
    for (const std::string &text : {std::string(), std::string("100:24:192.0.2.1"), membership.substr(4),
                                    esi_text + (":" + ipv4_only) + ":5:5", ipv4_only + "x", membership + " "})
        parsed(parser, text, SYSDT_ERR_FAIL);
}

TEST_F(RouteTypeTest, Ipv6FormsRefuseIpv4)
{
    const Bytes address = bytes_of(ipv6.ipv6);
    const Bytes tag = bytes_of(std::uint32_t{100});
    const Bytes one{1};
    EXPECT_EQ(key_with({{4, {2}}, {5, tag}, {9, {48, 0, 0, 0x5E, 0, 0x53, 1, 128}}, {21, address}, {37, one}}),
              parsed("SYSDT_Str2Ipv6EvnMac", "100:48:0000-5e00-5301:128:[2001:db8::1]", SYSDT_OK));
    parsed("SYSDT_Str2Ipv6EvnMac", "100:48:0000-5e00-5301:32:192.0.2.1", SYSDT_ERR_FAIL);
    EXPECT_EQ(key_with({{4, {3}}, {5, tag}, {9, {128}}, {14, address}, {30, one}}),
              parsed("SYSDT_Str2Ipv6EvnInc", "100:128:[2001:db8::1]", SYSDT_OK));
    parsed("SYSDT_Str2Ipv6EvnInc", "100:32:192.0.2.1", SYSDT_ERR_FAIL);

    const std::string strict = std::string(esi_text) + ":64:[2001:db8::1]";
    const std::string type_2 = "02" + strict.substr(2);
    const Bytes segment = key_with({{4, {4}}, {5, bytes_of(esi)}, {15, {64}}, {20, address}, {36, one}});
    EXPECT_EQ(segment, parsed("SYSDT_Str2Ipv6EvpnEs", strict, SYSDT_OK, 0U));
    parsed("SYSDT_Str2Ipv6EvpnEs", type_2, SYSDT_ERR_FAIL, 0U);
    EXPECT_EQ(2, parsed("SYSDT_Str2Ipv6EvpnEs", type_2, SYSDT_OK, 1U)[5]);
    parsed("SYSDT_Str2Ipv6EvpnEs", std::string(esi_text) + ":32:192.0.2.1", SYSDT_ERR_FAIL, 0U);
    parsed("SYSDT_Str2Ipv6EvpnEs", esi_text, SYSDT_ERR_FAIL, 0U);
}

TEST_F(RouteTypeTest, AnEsiOfZerosIsStored)
{
    auto *parse = exported<decltype(SYSDT_Str2Ad)>("SYSDT_Str2Ad");
    char text[] = "0000.0000.0000.0000.0000:100";
    SYSDT_BolEvpn value;
    std::memset(&value, 0xA5, sizeof value);
    EXPECT_EQ(SYSDT_OK, parse(text, &value, 0));
    EXPECT_EQ(Bytes(10), bytes_of(value.key.autoDiscovery.esi));
    EXPECT_EQ(100U, std::uint32_t{value.key.autoDiscovery.tag});
}

TEST_F(RouteTypeTest, EndsOfTexts)
{
    EXPECT_EQ(key_with({{16, {64}}, {21, bytes_of(ipv6.ipv6)}, {37, {1}}}),
              parsed("SYSDT_Str2Ipv6EvnMacFillPrefix", "64:[2001:db8::1]", SYSDT_OK));
    for (const char *text : {"", "64", "32:192.0.2.1", "129:[2001:db8::1]", "64:[2001:db8::1]x"})
        parsed("SYSDT_Str2Ipv6EvnMacFillPrefix", text, SYSDT_ERR_FAIL);
    EXPECT_EQ(key_with({{15, {255}}, {16, bytes_of(std::uint32_t{0xC0000201})}}),
              parsed("SYSDT_Str2EsDetail", "255:192.0.2.1", SYSDT_OK));
    for (const char *text : {"", "32", "256:192.0.2.1", "0032:192.0.2.1", "32:192.0.2", "64:[2001:db8::1]"})
        parsed("SYSDT_Str2EsDetail", text, SYSDT_ERR_FAIL);
}

// ---------------------------------------------------------------------------------------------------- segments

class SegmentTest : public EvpnTest {
protected:
    using Reader = decltype(SYSDT_Str2EsiBas);

    /// Reads a text that ends at an inaccessible page into ten bytes that do so too.
    void expect(const char *reader, const std::string &text, std::uint32_t mode, std::uint32_t lenient,
                const Bytes &wanted)
    {
        const Guarded page({reinterpret_cast<const std::uint8_t *>(text.c_str()), text.size() + 1});
        Guarded out(10, Place::end, 0);
        EXPECT_EQ(wanted.empty() ? SYSDT_ERR_FAIL : SYSDT_OK,
                  exported<Reader>(reader)(reinterpret_cast<const char *>(page.constant()), out.data(), mode, lenient))
            << reader << " \"" << text << "\" mode " << mode << " lenient " << lenient;
        EXPECT_TRUE(out.intact());
        if (!wanted.empty()) {
            EXPECT_EQ(wanted, out.bytes()) << reader << " " << text;
        }
    }
    /// The same of both readers, modes and flags.
    void expect_always(const std::string &text, const Bytes &wanted)
    {
        for (const char *reader : {"SYSDT_Str2EsiBas", "SYSDT_Str2EsiForAd"}) {
            for (const std::uint32_t mode : {0U, 1U}) {
                expect(reader, text, mode, 0, wanted);
                expect(reader, text, mode, 1, wanted);
            }
        }
    }
};

TEST_F(SegmentTest, TheModeNarrowsTheTypeOfAStrictlyReadOne)
{
    for (const TypeCase &sample : types) {
        const std::string text = std::string(sample.type) + "11.2233.4455.6677.8899";
        const Bytes value{sample.octet, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99};
        expect("SYSDT_Str2EsiBas", text, 0, 0, sample.octet == 0 ? value : Bytes{});
        expect("SYSDT_Str2EsiBas", text, 1, 0, sample.basic ? value : Bytes{});
        for (const std::uint32_t mode : {0U, 1U}) {
            expect("SYSDT_Str2EsiBas", text, mode, 1, value);
            expect("SYSDT_Str2EsiForAd", text, mode, 0, sample.auto_discovery ? value : Bytes{});
            expect("SYSDT_Str2EsiForAd", text, mode, 1, value);
        }
    }
}

TEST_F(SegmentTest, TheModeIsLookedAtWithTheThirdDigitOfTheFirstGroup)
{
    const Bytes two_digits{0, 0x01, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99};
    expect("SYSDT_Str2EsiBas", "01.2233.4455.6677.8899  ", 0, 0, two_digits);
    expect("SYSDT_Str2EsiBas", "01.2233.4455.6677.8899  ", 1, 0, two_digits);
    const Bytes three_digits{0, 0x12, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99};
    expect("SYSDT_Str2EsiBas", "012.2233.4455.6677.8899 ", 0, 0, {});
    expect("SYSDT_Str2EsiBas", "012.2233.4455.6677.8899 ", 1, 0, three_digits);
    expect("SYSDT_Str2EsiBas", "012.2233.4455.6677.8899 ", 0, 1, three_digits);
    expect("SYSDT_Str2EsiForAd", "012.2233.4455.6677.8899 ", 0, 0, three_digits);
}

TEST_F(SegmentTest, AllZerosAndAllOnesAreNone)
{
    expect_always("0000.0000.0000.0000.0000", {});
    expect_always("0000.0000.0000.0000.0001", {0, 0, 0, 0, 0, 0, 0, 0, 0, 1});
    expect_always("0010.0000.0000.0000.0000", {0, 0x10, 0, 0, 0, 0, 0, 0, 0, 0});
    for (const char *ones : {"ffff.ffff.ffff.ffff.ffff", "FFFF.FFFF.FFFF.FFFF.FFFF", "fFfF.FfFf.ffff.FFFF.fffF"})
        expect_always(ones, {});
    for (const char *reader : {"SYSDT_Str2EsiBas", "SYSDT_Str2EsiForAd"}) {
        expect(reader, "ffff.ffff.ffff.ffff.fffe", 1, 1, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE});
        expect(reader, "FFFF.ffff.FF0f.ffff.ffff", 0, 1, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x0F, 0xFF, 0xFF, 0xFF, 0xFF});
    }
}

TEST_F(SegmentTest, HasTwentyFourCharactersInFiveGroups)
{
    const Bytes value{0, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99};
    expect_always("0011.2233.4455.6677.8899", value);
    expect_always(" 001.2233.4455.6677.8899", {0, 0x01, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99});
    expect_always("0011.2233.4455.6677.889 ", {0, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x08, 0x89});
    expect_always("00aB.CdEf.4455.6677.8899", {0, 0xAB, 0xCD, 0xEF, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99});
    for (const char *text :
         {"", "0", "0011.2233.4455.6677.889", "0011.2233.4455.6677.8899 ", " 0011.2233.4455.6677.8899",
          "0011.2233.4455.6677.88990", "0011.2233.4455.6677.8899.", "00112.233.4455.6677.8899",
          "0011.2233.4455.667.78899", "0011.2233.4455.6677.889.", "0011..233.4455.6677.8899",
          ".011.2233.4455.6677.8899", "0011.2233.44.5.6677.8899", "0011.2233.4455.6677-8899",
          "0011.2233.4455.6677.889g", "0011.2233.4455.6677:8899", "0011.2233.44 5.6677.8899"})
        expect_always(text, {});
}

TEST_F(SegmentTest, NeedsItsPointers)
{
    for (const char *reader : {"SYSDT_Str2EsiBas", "SYSDT_Str2EsiForAd"}) {
        std::uint8_t out[10]{};
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, exported<Reader>(reader)(nullptr, out, 1, 1)) << reader;
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, exported<Reader>(reader)(esi_text, nullptr, 1, 1)) << reader;
    }
}

// ---------------------------------------------------------------------------------------------------- cursor readers

/// A text that can be written to, and where its cursor went.
struct Cursor {
    explicit Cursor(const char *content) : text(content), at(text.data()) {}
    std::ptrdiff_t offset() const { return at - text.data(); }

    std::string text;
    char *at;
};

TEST_F(EvpnTest, NumberAtACursor)
{
    struct Case {
        const char *text;
        std::uint32_t digits, min, max, last;
        std::uint32_t status, number;
        std::ptrdiff_t end;
    };
    constexpr std::uint32_t most = 0xFFFFFFFF;
    constexpr std::uint32_t fail = SYSDT_ERR_FAIL;
    auto *read = exported<decltype(SYSDT_Str2EvpnUintNum)>("SYSDT_Str2EvpnUintNum");
    for (const Case &sample : {
             Case{"100:5", 10, 0, most, 0, 0, 100, 3},
             Case{"0:", 10, 0, most, 0, 0, 0, 1},
             Case{"4294967295:1", 10, 0, most, 0, 0, most, 10},
             Case{"4294967295", 10, 0, most, 1, 0, most, 10},
             Case{"0000000007:1", 10, 0, most, 0, 0, 7, 10},
             Case{"128:x", 3, 1, 128, 0, 0, 128, 3},
             Case{"1:x", 3, 1, 128, 0, 0, 1, 1},
             Case{"12", 3, 0, 128, 1, 0, 12, 2},
             Case{"4294967296:1", 10, 0, most, 0, fail, 0, 0},
             Case{"00000000007:1", 10, 0, most, 0, fail, 0, 0}, // eleven digits
             Case{"0001:1", 3, 0, 128, 0, fail, 0, 0},
             Case{"129:1", 3, 0, 128, 0, fail, 0, 0},
             Case{"0:1", 3, 1, 128, 0, fail, 0, 0},
             Case{"100", 3, 0, 128, 0, fail, 0, 0}, // no colon, but not the last
             Case{"100:", 4, 0, 128, 1, fail, 0, 0},
             Case{"", 3, 0, 128, 1, fail, 0, 0},
             Case{":1", 3, 0, 128, 0, fail, 0, 0},
             Case{"+1:", 3, 0, 128, 0, fail, 0, 0},
             Case{"-1:", 3, 0, 128, 0, fail, 0, 0},
             Case{"1f:", 3, 0, 128, 0, fail, 0, 0},
             Case{"1 :", 3, 0, 128, 0, fail, 0, 0},
         }) {
        SCOPED_TRACE(sample.text);
        Cursor cursor(sample.text);
        std::uint32_t number = 0;
        EXPECT_EQ(sample.status, read(&cursor.at, &number, sample.digits, sample.min, sample.max, sample.last));
        if (sample.status == SYSDT_OK) {
            EXPECT_EQ(sample.number, number);
            EXPECT_EQ(sample.end, cursor.offset());
        }
    }
    Cursor cursor("1:");
    std::uint32_t number = 0;
    char *nowhere = nullptr;
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, read(nullptr, &number, 3, 0, 9, 0));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, read(&nowhere, &number, 3, 0, 9, 0));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, read(&cursor.at, nullptr, 3, 0, 9, 0));
}

TEST_F(EvpnTest, AddressAtACursor)
{
    struct Case {
        const char *text;
        std::uint32_t last;
        const Address *wanted; ///< null: a failure
        std::ptrdiff_t end;
    };
    constexpr std::ptrdiff_t anywhere = -1;
    auto *read = exported<decltype(SYSDT_Str2EvpnIpAddr)>("SYSDT_Str2EvpnIpAddr");
    for (const Case &sample : {
             Case{"192.0.2.1:32", 0, &source, 9},
             Case{"192.0.2.1", 1, &source, 9},
             Case{"[2001:db8::1]-32", 0, &ipv6, 13},
             Case{"[2001:db8::1]", 0, &ipv6, 13},
             Case{"[2001:db8::1]", 1, &ipv6, 13},
             Case{"[2001:db8:0000:0000:0000:0000:0000:0001]", 1, &ipv6, 40},
             Case{"[2001:db8::1]:rest", 1, &ipv6, anywhere},
             Case{"[2001:db8::1]x", 1, &ipv6, anywhere},
             Case{"[2001:db8::1]:32", 0, nullptr, 0},
             Case{"[2001:db8::1]:", 0, nullptr, 0},
             Case{"[2001:db8::1", 1, nullptr, 0},
             Case{"[]", 1, nullptr, 0},
             Case{"[192.0.2.1]", 1, nullptr, 0},
             Case{"[2001:db8::1/64]", 1, nullptr, 0},
             Case{"2001:db8::1", 1, nullptr, 0},
             Case{"192.0.2.1:32", 1, nullptr, 0},
             Case{"192.0.2:32", 0, nullptr, 0},
             Case{"192.0.2.256:32", 0, nullptr, 0},
             Case{":32", 0, nullptr, 0},
             Case{"", 1, nullptr, 0},
         }) {
        SCOPED_TRACE(std::string(sample.text) + (sample.last == 1 ? " at the end" : ""));
        Cursor cursor(sample.text);
        Address field{};
        EXPECT_EQ(sample.wanted != nullptr ? SYSDT_OK : SYSDT_ERR_FAIL, read(&cursor.at, &field, sample.last));
        if (sample.wanted != nullptr) {
            EXPECT_EQ(bytes_of(*sample.wanted), bytes_of(field));
            if (sample.end != anywhere) {
                EXPECT_EQ(sample.end, cursor.offset());
            }
        }
    }
    // As long as an address may get, one more, and far beyond: none of them is one.
    for (const std::size_t zeros : {49U, 50U, 500U}) {
        Cursor cursor(("[" + std::string(zeros, '0') + "]").c_str());
        Address field{};
        EXPECT_EQ(SYSDT_ERR_FAIL, read(&cursor.at, &field, 1)) << zeros;
        Cursor plain((std::string(zeros, '0') + ":").c_str());
        EXPECT_EQ(SYSDT_ERR_FAIL, read(&plain.at, &field, 0)) << zeros;
    }
    Cursor cursor("192.0.2.1:");
    Address field{};
    char *nowhere = nullptr;
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, read(nullptr, &field, 0));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, read(&nowhere, &field, 0));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, read(&cursor.at, nullptr, 0));
}

TEST_F(EvpnTest, SegmentAtACursor)
{
    struct Case {
        const char *text;
        std::uint32_t last;
        std::uint32_t status;
    };
    constexpr std::uint32_t fail = SYSDT_ERR_FAIL;
    auto *read = exported<decltype(SYSDT_Str2EvpnEsi)>("SYSDT_Str2EvpnEsi");
    for (const Case &sample : {
             Case{"0011.2233.4455.6677.88ff:5", 0, 0},
             Case{"0011.2233.4455.6677.88ff", 1, 0},
             Case{"0011.2233.4455.6677.88ff", 0, fail}, // no colon
             Case{"0011.2233.4455.6677.88ff:5", 1, fail},
             Case{"0211.2233.4455.6677.88ff:5", 0, fail}, // strict, whatever the unused argument
             Case{"0011.2233.4455.6677.88ff0:5", 0, fail},
             Case{"0011.2233.4455.6677.88f:5", 0, fail},
             Case{"0000.0000.0000.0000.0000:5", 0, fail},
             Case{":5", 0, fail},
             Case{"", 1, fail},
         }) {
        for (const std::uint32_t unused : {0U, 1U}) {
            SCOPED_TRACE(sample.text);
            Cursor cursor(sample.text);
            Guarded out(10, Place::end, 0);
            EXPECT_EQ(sample.status, read(&cursor.at, out.data(), sample.last, unused));
            EXPECT_TRUE(out.intact());
            if (sample.status == SYSDT_OK) {
                EXPECT_EQ(bytes_of(esi), out.bytes());
                EXPECT_EQ(24, cursor.offset());
            }
        }
    }
    Cursor cursor("0011.2233.4455.6677.88ff:5");
    std::uint8_t out[10];
    char *nowhere = nullptr;
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, read(nullptr, out, 0, 0));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, read(&nowhere, out, 0, 0));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, read(&cursor.at, nullptr, 0, 0));
}

TEST_F(EvpnTest, Ipv6AddressBehindItsLength)
{
    auto *read = exported<decltype(SYSDT_Str2EvpnIpv6)>("SYSDT_Str2EvpnIpv6");
    const auto status_of = [&](const std::string &text, std::uint32_t wanted) {
        std::string copy = text;
        Guarded out(16, Place::end, 0);
        std::uint32_t length = 999;
        const std::uint32_t status = read(copy.data(), out.data(), &length);
        EXPECT_TRUE(out.intact()) << text;
        if (status == SYSDT_OK) {
            EXPECT_EQ(bytes_of(ipv6.ipv6), out.bytes()) << text;
            EXPECT_EQ(wanted, length) << text;
        }
        return status;
    };
    EXPECT_EQ(SYSDT_OK, status_of("128:[2001:db8::1]", 128));
    EXPECT_EQ(SYSDT_OK, status_of("0:[2001:db8::1]", 0));
    EXPECT_EQ(SYSDT_OK, status_of("064:[2001:DB8:0:0::1]", 64));
    for (const std::string text : {"129:[2001:db8::1]", "255:[2001:db8::1]", "0128:[2001:db8::1]", ":[2001:db8::1]",
                                   "[2001:db8::1]", "64[2001:db8::1]", "64:2001:db8::1", "64:[2001:db8::1",
                                   "64:[2001:db8::1]x", "64:[2001:db8::1]]", "64:[2001:db8::1]:", "64:[]", "64:", "64",
                                   "", "6x:[2001:db8::1]", "-1:[2001:db8::1]", "64:[192.0.2.1]", "64: [2001:db8::1]"})
        EXPECT_EQ(SYSDT_ERR_FAIL, status_of(text, 0)) << text;
    for (const std::size_t zeros : {49U, 50U, 500U})
        EXPECT_EQ(SYSDT_ERR_FAIL, status_of("64:[" + std::string(zeros, '0') + "]", 0)) << zeros;
    char text[] = "64:[2001:db8::1]";
    std::uint8_t out[16];
    std::uint32_t length = 0;
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, read(nullptr, out, &length));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, read(text, nullptr, &length));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, read(text, out, nullptr));
}

// ---------------------------------------------------------------------------------------------------- printers

class EvpnPrintTest : public EvpnTest {
protected:
    /// A printer without its position.
    using Piece = std::function<std::uint32_t(char **position, std::uint32_t *size, std::uint32_t *length)>;
    using Whole = std::function<std::uint32_t(char *buffer, std::uint32_t size, std::uint32_t *length)>;

    /// In every size, the text as far as it fits with its NUL: position, size and length move by what was printed.
    static void expect_piece(const std::string &text, const Piece &print)
    {
        for (std::uint32_t room = 0; room <= text.size() + 3; ++room) {
            SCOPED_TRACE(text + " in " + std::to_string(room));
            Guarded buffer(room);
            auto *const begin = reinterpret_cast<char *>(buffer.data());
            char *position = begin;
            std::uint32_t size = room;
            std::uint32_t length = 1000;
            EXPECT_EQ(room == 0 ? SYSDT_ERR_FAIL : SYSDT_OK, print(&position, &size, &length));
            const std::string wanted = text.substr(0, room == 0 ? 0 : room - 1);
            if (room > 0) {
                EXPECT_STREQ(wanted.c_str(), begin);
            }
            EXPECT_EQ(static_cast<std::ptrdiff_t>(wanted.size()), position - begin);
            EXPECT_EQ(room - wanted.size(), size);
            EXPECT_EQ(1000 + wanted.size(), length);
            EXPECT_TRUE(buffer.intact());
        }
    }
    /// In every size up to 256, the text as far as it fits with its NUL, its length added.
    static void expect_whole(const std::string &text, const Whole &print)
    {
        for (std::uint32_t room = 0; room <= 256; ++room) {
            SCOPED_TRACE(text + " in " + std::to_string(room));
            Guarded buffer(room);
            std::uint32_t length = 1000;
            auto *const begin = reinterpret_cast<char *>(buffer.data());
            EXPECT_EQ(room == 0 ? SYSDT_ERR_FAIL : SYSDT_OK, print(begin, room, &length));
            const std::string wanted = text.substr(0, room == 0 ? 0 : room - 1);
            if (room > 0) {
                EXPECT_STREQ(wanted.c_str(), begin);
            }
            EXPECT_EQ(1000 + wanted.size(), length);
            EXPECT_TRUE(buffer.intact());
        }
    }
    void expect_key(const char *printer, const SYSDT_BolEvpn &key, const std::string &text)
    {
        SCOPED_TRACE(printer);
        auto *print = exported<decltype(SYSDT_EVN_AdKeyToStr)>(printer);
        for (const Place place : {Place::end, Place::odd}) {
            const Guarded value(bytes_of(key), place);
            const auto *at = reinterpret_cast<const SYSDT_BolEvpn *>(value.constant());
            expect_whole(text, [&](char *buffer, std::uint32_t size, std::uint32_t *length) {
                return print(at, buffer, size, length);
            });
        }
    }
};

TEST_F(EvpnPrintTest, Segments)
{
    auto *print = exported<decltype(SYSDT_EVPN_EsiToStr)>("SYSDT_EVPN_EsiToStr");
    const Guarded value(bytes_of(esi));
    expect_piece(esi_text, [&](char **position, std::uint32_t *size, std::uint32_t *length) {
        return print(position, size, length, value.constant());
    });
}

TEST_F(EvpnPrintTest, Numbers)
{
    auto *print = exported<decltype(SYSDT_EVPN_NumToStr)>("SYSDT_EVPN_NumToStr");
    const auto expect = [&](const char *text, std::uint32_t number, std::uint32_t first) {
        expect_piece(text, [&](char **position, std::uint32_t *size, std::uint32_t *length) {
            return print(position, size, length, number, first);
        });
    };
    expect("0", 0, 1);
    expect("4294967295", 4294967295, 1);
    expect(":0", 0, 0);
    expect(":4294967295", 4294967295, 0);
}

TEST_F(EvpnPrintTest, Addresses)
{
    auto *piece = exported<decltype(SYSDT_EVPN_IpAddrToStr)>("SYSDT_EVPN_IpAddrToStr");
    auto *whole = exported<decltype(SYSDT_EVPN_OriginIpToStr)>("SYSDT_EVPN_OriginIpToStr");
    const auto expect = [&](const char *text, const Address &address, std::uint32_t length_byte) {
        const Guarded field(bytes_of(address));
        const auto *at = reinterpret_cast<const Address *>(field.constant());
        expect_piece(text, [&](char **position, std::uint32_t *size, std::uint32_t *length) {
            return piece(position, size, length, at, length_byte);
        });
        expect_whole(text, [&](char *buffer, std::uint32_t size, std::uint32_t *length) {
            return whole(at, buffer, size, length, length_byte);
        });
    };
    expect(":32:192.0.2.1", source, 32);
    expect(":255:255.255.255.255", {0xFFFFFFFF, {}, 0}, 255);
    expect(":0:0.0.0.0", {}, 0);
    expect(":128:[2001:db8::1]", ipv6, 128);
    expect(":1:[2001:db8:1111:2222:3333:4444:5555:6666]",
           {0xC0000201,
            {0x20, 0x01, 0x0D, 0xB8, 0x11, 0x11, 0x22, 0x22, 0x33, 0x33, 0x44, 0x44, 0x55, 0x55, 0x66, 0x66},
            1},
           1);
}

TEST_F(EvpnPrintTest, NothingOfAnotherFamily)
{
    auto *piece = exported<decltype(SYSDT_EVPN_IpAddrToStr)>("SYSDT_EVPN_IpAddrToStr");
    auto *whole = exported<decltype(SYSDT_EVPN_OriginIpToStr)>("SYSDT_EVPN_OriginIpToStr");
    for (const std::uint8_t family : Bytes{2, 255}) {
        Address field = source;
        field.family = family;
        char text[8] = "";
        char *position = text;
        std::uint32_t size = sizeof text;
        std::uint32_t length = 1000;
        EXPECT_EQ(SYSDT_OK, piece(&position, &size, &length, &field, 32));
        EXPECT_EQ(SYSDT_OK, whole(&field, text, size, &length, 32));
        EXPECT_EQ(text, position);
        EXPECT_EQ(sizeof text, size);
        EXPECT_EQ(1000U, length);
        EXPECT_STREQ("", text);
    }
}

TEST_F(EvpnPrintTest, PiecesNeedTheirPointers)
{
    char text[32];
    char *position = text;
    std::uint32_t size = sizeof text;
    std::uint32_t length = 0;
    constexpr std::uint32_t null_ptr = SYSDT_ERR_NULL_PTR;
    auto *segment = exported<decltype(SYSDT_EVPN_EsiToStr)>("SYSDT_EVPN_EsiToStr");
    EXPECT_EQ(null_ptr, segment(nullptr, &size, &length, esi));
    EXPECT_EQ(null_ptr, segment(&position, nullptr, &length, esi));
    EXPECT_EQ(null_ptr, segment(&position, &size, nullptr, esi));
    EXPECT_EQ(null_ptr, segment(&position, &size, &length, nullptr));
    auto *number = exported<decltype(SYSDT_EVPN_NumToStr)>("SYSDT_EVPN_NumToStr");
    EXPECT_EQ(null_ptr, number(nullptr, &size, &length, 1, 1));
    EXPECT_EQ(null_ptr, number(&position, nullptr, &length, 1, 1));
    EXPECT_EQ(null_ptr, number(&position, &size, nullptr, 1, 1));
    auto *address = exported<decltype(SYSDT_EVPN_IpAddrToStr)>("SYSDT_EVPN_IpAddrToStr");
    EXPECT_EQ(null_ptr, address(nullptr, &size, &length, &source, 1));
    EXPECT_EQ(null_ptr, address(&position, nullptr, &length, &source, 1));
    EXPECT_EQ(null_ptr, address(&position, &size, nullptr, &source, 1));
    EXPECT_EQ(null_ptr, address(&position, &size, &length, nullptr, 1));
    auto *origin = exported<decltype(SYSDT_EVPN_OriginIpToStr)>("SYSDT_EVPN_OriginIpToStr");
    EXPECT_EQ(null_ptr, origin(nullptr, text, size, &length, 1));
    EXPECT_EQ(null_ptr, origin(&source, nullptr, size, &length, 1));
    EXPECT_EQ(null_ptr, origin(&source, text, size, nullptr, 1));
    EXPECT_EQ(text, position);
    EXPECT_EQ(sizeof text, size);
    EXPECT_EQ(0U, length);
}

TEST_F(EvpnPrintTest, KeysOfUpToFiveInEverySize)
{
    SYSDT_EvpnAutoDiscovery auto_discovery{{}, 4294967295};
    std::memcpy(auto_discovery.esi, esi, sizeof esi);
    expect_key("SYSDT_EVN_AdKeyToStr", key_of(1, auto_discovery), "0011.2233.4455.6677.88ff:4294967295");

    SYSDT_EvpnMacIp mac_ip{100, 48, {0x00, 0x00, 0x5E, 0x00, 0x53, 0x0A}, {32, source}};
    expect_key("SYSDT_EVN_MacKeyToStr", key_of(2, mac_ip), "100:48:0000-5e00-530a:32:192.0.2.1");
    mac_ip.ip = {128, ipv6};
    expect_key("SYSDT_EVN_MacKeyToStr", key_of(2, mac_ip), "100:48:0000-5e00-530a:128:[2001:db8::1]");
    mac_ip.ip = {128, unwritten};
    expect_key("SYSDT_EVN_MacKeyToStr", key_of(2, mac_ip), "100:48:0000-5e00-530a");

    expect_key("SYSDT_EVN_IncKeyToStr", key_of(3, SYSDT_EvpnTaggedAddress{100, {24, source}}), "100:24:192.0.2.1");
    expect_key("SYSDT_EVN_IncKeyToStr", key_of(3, SYSDT_EvpnTaggedAddress{100, {128, ipv6}}), "100:128:[2001:db8::1]");
    expect_key("SYSDT_EVN_IncKeyToStr", key_of(3, SYSDT_EvpnTaggedAddress{100, {128, unwritten}}), "100");

    SYSDT_EvpnSegment segment{{}, {32, source}};
    std::memcpy(segment.esi, esi, sizeof esi);
    expect_key("SYSDT_EVN_EsKeyToStr", key_of(4, segment), "0011.2233.4455.6677.88ff:32:192.0.2.1");
    segment.ip = {128, ipv6};
    expect_key("SYSDT_EVN_EsKeyToStr", key_of(4, segment), "0011.2233.4455.6677.88ff:128:[2001:db8::1]");
    segment.ip = {};
    expect_key("SYSDT_EVN_EsKeyToStr", key_of(4, segment), "0011.2233.4455.6677.88ff:0:0.0.0.0");

    expect_key("SYSDT_EVN_IpPrefixKeyToStr", key_of(5, SYSDT_EvpnTaggedAddress{100, {24, source}}), "100:192.0.2.1:24");
    expect_key("SYSDT_EVN_IpPrefixKeyToStr", key_of(5, SYSDT_EvpnTaggedAddress{100, {64, ipv6}}),
               "100:[2001:db8::1]:64");
    expect_key("SYSDT_EVN_IpPrefixKeyToStr", key_of(5, SYSDT_EvpnTaggedAddress{100, {64, unwritten}}), "100");
}

TEST_F(EvpnPrintTest, MulticastKeysInEverySize)
{
    const SYSDT_EvpnSync ipv4 = sync_of(originator);
    const std::string flow = ":32:192.0.2.1:32:233.252.0.1:128:198.51.100.1";
    expect_key("SYSDT_EVPN_SmetKeyToStr", key_of(6, ipv4.membership), "100" + flow);
    expect_key("SYSDT_EVPN_JoinKeyToStr", key_of(7, ipv4), std::string(esi_text) + ":100" + flow);
    expect_key("SYSDT_EVPN_LeaveKeyToStr", key_of(8, ipv4), std::string(esi_text) + ":100" + flow + ":4294967295");

    SYSDT_EvpnSync mixed = sync_of(ipv6);
    mixed.membership.group.address = ipv6;
    mixed.membership.source.address = unwritten;
    const std::string written = ":32:[2001:db8::1]:128:[2001:db8::1]";
    expect_key("SYSDT_EVPN_SmetKeyToStr", key_of(6, mixed.membership), "100" + written);
    expect_key("SYSDT_EVPN_JoinKeyToStr", key_of(7, mixed), std::string(esi_text) + ":100" + written);
    expect_key("SYSDT_EVPN_LeaveKeyToStr", key_of(8, mixed), std::string(esi_text) + ":100" + written + ":4294967295");
}

TEST_F(EvpnPrintTest, KeyPrintersNeedTheirPointers)
{
    const SYSDT_BolEvpn value = key_of(1, SYSDT_EvpnAutoDiscovery{});
    char text[256];
    std::uint32_t length = 0;
    for (const char *name : {"SYSDT_EVN_AdKeyToStr", "SYSDT_EVN_MacKeyToStr", "SYSDT_EVN_IncKeyToStr",
                             "SYSDT_EVN_EsKeyToStr", "SYSDT_EVN_IpPrefixKeyToStr", "SYSDT_EVPN_SmetKeyToStr",
                             "SYSDT_EVPN_JoinKeyToStr", "SYSDT_EVPN_LeaveKeyToStr"}) {
        auto *print = exported<decltype(SYSDT_EVN_AdKeyToStr)>(name);
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(nullptr, text, sizeof text, &length)) << name;
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(&value, nullptr, sizeof text, &length)) << name;
        EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(&value, text, sizeof text, nullptr)) << name;
    }
    auto *print = exported<decltype(SYSDT_EvnPrefix2Str)>("SYSDT_EvnPrefix2Str");
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(nullptr, text, &length));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(&value, nullptr, &length));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(&value, text, nullptr));
}

TEST_F(EvpnPrintTest, AKeyIsPrintedByItsRouteType)
{
    auto *print = exported<decltype(SYSDT_EvnPrefix2Str)>("SYSDT_EvnPrefix2Str");
    const auto printed = [&](std::uint8_t route_type, std::uint32_t status) {
        SYSDT_BolEvpn value{}; // all zero but for the route type; the sub-kind is not looked at
        value.key.routeType = route_type;
        Guarded buffer(256);
        auto *text = reinterpret_cast<char *>(buffer.data());
        *text = '\0';
        std::uint32_t length = 1000;
        EXPECT_EQ(status, print(&value, text, &length)) << unsigned{route_type};
        EXPECT_EQ(1000 + std::strlen(text), length) << unsigned{route_type};
        EXPECT_TRUE(buffer.intact()) << unsigned{route_type};
        return std::string(text);
    };
    const std::string none = "0000.0000.0000.0000.0000";
    const std::string flow = ":0:0.0.0.0:0:0.0.0.0:0:0.0.0.0";
    EXPECT_EQ(none + ":0", printed(1, SYSDT_OK));
    EXPECT_EQ("0:0:0000-0000-0000:0:0.0.0.0", printed(2, SYSDT_OK));
    EXPECT_EQ("0:0:0.0.0.0", printed(3, SYSDT_OK));
    EXPECT_EQ(none + ":0:0.0.0.0", printed(4, SYSDT_OK));
    EXPECT_EQ("0:0.0.0.0:0", printed(5, SYSDT_OK));
    EXPECT_EQ("0" + flow, printed(6, SYSDT_OK));
    EXPECT_EQ(none + ":0" + flow, printed(7, SYSDT_OK));
    EXPECT_EQ(none + ":0" + flow + ":0", printed(8, SYSDT_OK));
    for (const std::uint8_t unknown : Bytes{0, 9, 128, 255})
        EXPECT_EQ("", printed(unknown, SYSDT_ERR_FAIL));
}

// ---------------------------------------------------------------------------------------------------- orders

class EvpnOrderTest : public EvpnTest {
protected:
    using Order = decltype(SYSDT_EVPN_SmetCompare);
    using Change = std::function<void(SYSDT_EvpnKey &)>;

    static std::int32_t compare(Order *order, const SYSDT_EvpnKey &first, const SYSDT_EvpnKey &second)
    {
        const Guarded one(bytes_of(first), Place::end);
        const Guarded other(bytes_of(second), Place::odd);
        return order(reinterpret_cast<const SYSDT_EvpnKey *>(one.constant()),
                     reinterpret_cast<const SYSDT_EvpnKey *>(other.constant()));
    }
    static void expect_ascending(Order *order, const SYSDT_EvpnKey &lower, const SYSDT_EvpnKey &higher)
    {
        EXPECT_EQ(-1, compare(order, lower, higher));
        EXPECT_EQ(1, compare(order, higher, lower));
        EXPECT_EQ(0, compare(order, lower, lower));
        EXPECT_EQ(0, compare(order, higher, higher));
    }
    /// Each change makes a key greater, whatever all the changes behind it do the other way.
    static void expect_order(Order *order, const std::vector<Change> &changes)
    {
        for (std::size_t i = 0; i < changes.size(); ++i) {
            SCOPED_TRACE("field " + std::to_string(i));
            SYSDT_EvpnKey lower{};
            SYSDT_EvpnKey higher{};
            changes[i](higher);
            expect_ascending(order, lower, higher);
            for (std::size_t behind = i + 1; behind < changes.size(); ++behind)
                changes[behind](lower);
            expect_ascending(order, lower, higher);
        }
    }
    static void expect_equal(Order *order, const Change &change)
    {
        const SYSDT_EvpnKey plain{};
        SYSDT_EvpnKey changed{};
        change(changed);
        EXPECT_EQ(0, compare(order, plain, changed));
        EXPECT_EQ(0, compare(order, changed, plain));
    }
    static void expect_null_equal(Order *order)
    {
        SYSDT_EvpnKey key{};
        std::memset(&key, 1, sizeof key);
        EXPECT_EQ(0, order(nullptr, &key));
        EXPECT_EQ(0, order(&key, nullptr));
        EXPECT_EQ(0, order(nullptr, nullptr));
    }

    /// The fields of a membership in their order; `member` finds it in a key.
    template <class Member>
    static std::vector<Change> membership_changes(Member member)
    {
        std::vector<Change> changes{
            [member](SYSDT_EvpnKey &key) { member(key).tag = 0x80000000; },
        };
        for (const auto address :
             {&SYSDT_EvpnMembership::source, &SYSDT_EvpnMembership::group, &SYSDT_EvpnMembership::originator}) {
            changes.emplace_back([=](SYSDT_EvpnKey &key) { (member(key).*address).length = 128; });
            changes.emplace_back([=](SYSDT_EvpnKey &key) { (member(key).*address).address.family = 1; });
        }
        return changes;
    }
    /// Differences within numbers and addresses, of which the most significant byte counts first.
    template <class Member>
    static void expect_numbers_in_order(Order *order, Member member)
    {
        const auto expect = [&](const Change &less, const Change &more) {
            SYSDT_EvpnKey lower{};
            SYSDT_EvpnKey higher{};
            less(lower);
            more(higher);
            expect_ascending(order, lower, higher);
        };
        expect([&](SYSDT_EvpnKey &key) { member(key).tag = 0x000000FF; },
               [&](SYSDT_EvpnKey &key) { member(key).tag = 0x00000100; });
        expect([&](SYSDT_EvpnKey &key) { member(key).tag = 0x7FFFFFFF; },
               [&](SYSDT_EvpnKey &key) { member(key).tag = 0xFFFFFFFF; });
        for (const auto part :
             {&SYSDT_EvpnMembership::source, &SYSDT_EvpnMembership::group, &SYSDT_EvpnMembership::originator}) {
            const auto at = [member, part](SYSDT_EvpnKey &key) -> SYSDT_EvpnSizedAddress & {
                return member(key).*part;
            };
            expect([&](SYSDT_EvpnKey &key) { at(key).length = 127; },
                   [&](SYSDT_EvpnKey &key) { at(key).length = 128; });
            expect([&](SYSDT_EvpnKey &key) { at(key).address.ipv4 = 0x0A0000FF; },
                   [&](SYSDT_EvpnKey &key) { at(key).address.ipv4 = 0xC0000201; });
            const auto one_byte = [&](std::size_t byte, std::uint8_t value) {
                return [&at, byte, value](SYSDT_EvpnKey &key) {
                    at(key).address.family = 1;
                    at(key).address.ipv6[byte] = value;
                };
            };
            expect(one_byte(15, 0xFF), one_byte(0, 0x80));
            expect_equal(order, [&](SYSDT_EvpnKey &key) { at(key).address.ipv6[0] = 1; }); // not the family's
        }
    }
    template <class Member>
    static std::vector<Change> with_segment(std::vector<Change> behind, Member segment)
    {
        std::vector<Change> changes;
        for (std::size_t i = 0; i < 10; ++i)
            changes.emplace_back([=](SYSDT_EvpnKey &key) { segment(key)[i] = 0x80; });
        changes.insert(changes.end(), behind.begin(), behind.end());
        return changes;
    }
};

SYSDT_EvpnMembership &selective_of(SYSDT_EvpnKey &key) { return key.selective; }
SYSDT_EvpnMembership &sync_membership_of(SYSDT_EvpnKey &key) { return key.sync.membership; }
std::uint8_t *segment_of(SYSDT_EvpnKey &key) { return key.sync.esi; }
void set_sequence(SYSDT_EvpnKey &key) { key.sync.sequence = 0x80000000; }
void set_route_type(SYSDT_EvpnKey &key) { key.routeType = 8; }

TEST_F(EvpnOrderTest, SelectiveTagKeys)
{
    auto *order = exported<Order>("SYSDT_EVPN_SmetCompare");
    expect_order(order, membership_changes(selective_of));
    expect_numbers_in_order(order, selective_of);
    expect_equal(order, [](SYSDT_EvpnKey &key) { key.bytes[70] = 1; }); // behind the originator
    expect_equal(order, set_route_type);
    expect_null_equal(order);
}

TEST_F(EvpnOrderTest, JoinKeys)
{
    auto *order = exported<Order>("SYSDT_EVPN_JoinCompare");
    expect_order(order, with_segment(membership_changes(sync_membership_of), segment_of));
    expect_numbers_in_order(order, sync_membership_of);
    expect_equal(order, set_sequence);
    expect_equal(order, set_route_type);
    expect_null_equal(order);
}

TEST_F(EvpnOrderTest, LeaveKeys)
{
    auto *order = exported<Order>("SYSDT_EVPN_LeaveCompare");
    std::vector<Change> changes = with_segment(membership_changes(sync_membership_of), segment_of);
    changes.emplace_back(set_sequence);
    expect_order(order, changes);
    expect_numbers_in_order(order, sync_membership_of);
    SYSDT_EvpnKey lower{};
    SYSDT_EvpnKey higher{};
    lower.sync.sequence = 0x000000FF;
    higher.sync.sequence = 0x00000100;
    expect_ascending(order, lower, higher);
    expect_equal(order, set_route_type);
    expect_null_equal(order);
}

// ---------------------------------------------------------------------------------------------------- scripts

TEST_F(EvpnTest, IndexMinusOneIsTheTableBelowTheTop)
{
    auto *get = exported<SYSDT_LuaGet>("SYSDT_EVNPrefixLuaGet");
    const auto read = [&](const char *stack, SYSDT_BolEvpn &value) {
        lua_settop(lua_, 0);
        EXPECT_EQ(LUA_OK, luaL_dostring(lua_, stack));
        return get(lua_, -1, "key", 0, sizeof value, &value);
    };
    SYSDT_BolEvpn value{};
    EXPECT_EQ(SYSDT_OK, read("return {bolPrefixRtValue = '100:24:192.0.2.1', bolType = 1, bolPrefixRtType = 3},"
                             " {bolPrefixRtValue = '0011.2233.4455.6677.88ff:5', bolType = 1, bolPrefixRtType = 1}",
                             value));
    EXPECT_EQ(2, lua_gettop(lua_));
    EXPECT_EQ(bytes_of(key_of(3, SYSDT_EvpnTaggedAddress{100, {24, source}})), bytes_of(value));

    value = {};
    EXPECT_EQ(SYSDT_OK,
              read("return {bolPrefixRtValue = '100:24:192.0.2.1', bolType = 1, bolPrefixRtType = 5}, 7", value));
    ASSERT_EQ(2, lua_gettop(lua_));
    EXPECT_EQ(7, lua_tointeger(lua_, 2));
    EXPECT_EQ(bytes_of(key_of(5, SYSDT_EvpnTaggedAddress{100, {24, source}})), bytes_of(value));

    // The field name is not looked at, a table of that name not read.
    EXPECT_EQ(
        SYSDT_ERR_PARAM,
        read("return {key = {bolPrefixRtValue = '100:24:192.0.2.1', bolType = 1, bolPrefixRtType = 3}}, 7", value));
    EXPECT_EQ(SYSDT_ERR_PARAM,
              read("return 7, {bolPrefixRtValue = '100:24:192.0.2.1', bolType = 1, bolPrefixRtType = 3}", value));
}

/// What a failure had fetched stays on the stack.
TEST_F(EvpnTest, AFailureOfAScriptPopsNothing)
{
    auto *get = exported<SYSDT_LuaGet>("SYSDT_EVNPrefixLuaGet");
    const auto expect = [&](std::uint32_t status, int fetched, const std::string &table) {
        SCOPED_TRACE(table);
        SYSDT_BolEvpn value{};
        lua_settop(lua_, 0);
        ASSERT_EQ(LUA_OK, luaL_dostring(lua_, ("return {" + table + "}, 7").c_str()));
        EXPECT_EQ(status, get(lua_, -1, "key", 0, sizeof value, &value));
        EXPECT_EQ(2 + fetched, lua_gettop(lua_));

        lua_settop(lua_, 0);
        ASSERT_EQ(LUA_OK, luaL_dostring(lua_, ("return {key = {" + table + "}}").c_str()));
        EXPECT_EQ(status, get(lua_, 1, "key", 0, sizeof value, &value));
        EXPECT_EQ(2 + fetched, lua_gettop(lua_)); // the sub-table too
    };
    const auto text = [](std::size_t characters) {
        return "bolPrefixRtValue = '" + std::string(characters, '1') + "'";
    };
    expect(SYSDT_OK, 0, text(183) + ", bolType = 1, bolPrefixRtType = 3");
    expect(SYSDT_ERR_TOO_LONG, 1, text(184) + ", bolType = 1, bolPrefixRtType = 3");
    expect(SYSDT_ERR_PARAM, 2, text(1) + ", bolPrefixRtType = 3");
    expect(SYSDT_ERR_FAIL, 2, text(1) + ", bolType = 2, bolPrefixRtType = 3");
    expect(SYSDT_ERR_PARAM, 3, text(1) + ", bolType = 1");
}

} // namespace

} // namespace bgpdt::test::evpn
