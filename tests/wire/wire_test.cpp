// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Values from the wire and back: the samples, what becomes of them broken off and changed, what is refused.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iostream>

#include <gtest/gtest.h>

#include "bgp_datatype/values.h"
#include "samples.hpp"
#include "support/share.hpp"
#include "toolkit/conversions.hpp"
#include "toolkit/session.hpp"
#include "wire/texts.hpp"
#include "wire/update.hpp"

namespace bgpdt::wire {
namespace {

const std::vector<Sample> &samples()
{
    static const std::vector<Sample> all = read_samples(BGPDT_WIRE_SAMPLES);
    return all;
}

const Sample &sample_of(const std::string &form, const std::string &text)
{
    const auto is_it = [&](const Sample &sample) { return sample.form->name == form && sample.text == text; };
    return *std::ranges::find_if(samples(), is_it);
}

/// Of a BGP-LS key whose text begins so.
const Sample &sample_with(const std::string &front)
{
    return *std::ranges::find_if(samples(), [&](const Sample &sample) { return sample.text.starts_with(front); });
}

toolkit::Session &session()
{
    static toolkit::Session opened({.plugin = BGPDT_BUILT_PLUGIN});
    return opened;
}

Bytes value_of(const Sample &sample)
{
    const auto types = session().host().types();
    const SYSDT_Record &type = **std::ranges::find(types, sample.form->type, &SYSDT_Record::typeId);
    if (!sample.text.empty())
        return toolkit::parse_text(session(), type, sample.text, session().mode_for(type)).data;
    Bytes value = sample.value;
    toolkit::turn_to_native(type, value);
    return value;
}

std::vector<std::string> told(const std::vector<NamedValue> &beside)
{
    std::vector<std::string> words;
    for (const NamedValue &value : beside)
        words.push_back(value.name + "=" + value.text);
    std::ranges::sort(words);
    return words;
}

/// What the octets say, said again. Empty if they are refused, for a reason that lies within them.
Bytes again(const Form &form, Octets octets)
{
    Bytes written;
    try {
        for (const Item &item : read(form, octets)) {
            const Bytes one = write(form, item.value, item.beside);
            written.insert(written.end(), one.begin(), one.end());
        }
    } catch (const BadBytes &bad) {
        EXPECT_LE(bad.at() + bad.size(), octets.size()) << bad.what();
        return {};
    }
    return written;
}

std::string reason(const Form &form, const std::string &hex)
{
    try {
        read(form, toolkit::from_hex(hex));
    } catch (const BadBytes &bad) {
        return bad.what();
    }
    return "nothing is wrong";
}

std::string reason_not_sent(const Form &form, Octets value, const std::vector<NamedValue> &beside)
{
    try {
        write(form, value, beside);
    } catch (const NotSent &none) {
        return none.what();
    }
    return "it is sent";
}

TEST(Wire, SaysTheValuesOfTheSamples)
{
    ASSERT_GT(samples().size(), 50U);
    for (const Sample &sample : samples()) {
        SCOPED_TRACE(sample.place);
        std::vector<Item> items;
        ASSERT_NO_THROW(items = read(*sample.form, sample.octets));
        ASSERT_EQ(items.size(), 1U);
        EXPECT_EQ(toolkit::to_hex(items[0].value), toolkit::to_hex(value_of(sample)));
        EXPECT_EQ(told(items[0].beside), told(sample.beside));
        EXPECT_EQ(items[0].at, 0U);
        EXPECT_EQ(items[0].size, sample.octets.size());
    }
}

TEST(Wire, SaysTheOctetsOfTheSamples)
{
    for (const Sample &sample : samples()) {
        SCOPED_TRACE(sample.place);
        Bytes octets;
        ASSERT_NO_THROW(octets = write(*sample.form, value_of(sample), sample.beside));
        EXPECT_EQ(toolkit::to_hex(octets), toolkit::to_hex(sample.octets));
    }
}

TEST(Wire, HasASampleOfEachForm)
{
    for (const Form &form : forms())
        EXPECT_TRUE(std::ranges::any_of(samples(), [&](const Sample &sample) { return sample.form == &form; }))
            << form.name;
}

TEST(Wire, ReadsValuesOneBehindTheOther)
{
    for (const Sample &sample : samples()) {
        SCOPED_TRACE(sample.place);
        if (sample.form->name == "CMNTY_ENHANCE") // takes all there is
            continue;
        Bytes twice = sample.octets;
        twice.insert(twice.end(), sample.octets.begin(), sample.octets.end());
        const std::vector<Item> items = read(*sample.form, twice, 100);
        ASSERT_EQ(items.size(), 2U);
        EXPECT_EQ(items[0].value, items[1].value);
        EXPECT_EQ(items[1].at, 100 + sample.octets.size());
    }
}

TEST(Wire, RefusesWhatIsBrokenOff)
{
    for (const Sample &sample : samples()) {
        SCOPED_TRACE(sample.place);
        for (std::size_t size = 0; size < sample.octets.size(); ++size) {
            const Bytes octets(sample.octets.begin(), sample.octets.begin() + static_cast<std::ptrdiff_t>(size));
            const bool is_list = sample.form->name == "CMNTY_ENHANCE" && size != 0 && size % 4 == 0;
            EXPECT_EQ(again(*sample.form, octets), is_list ? octets : Bytes()) << size;
        }
    }
}

/// Whatever is taken is told whole: the way back leads to the same octets.
TEST(Wire, TakesChangedOctetsWholeOrNot)
{
    std::size_t taken = 0;
    std::size_t refused = 0;
    test::Turns turns(test::small_share());
    for (const Sample &sample : samples()) {
        SCOPED_TRACE(sample.place);
        Bytes octets = sample.octets;
        for (std::size_t i = 0; i < octets.size(); ++i) {
            for (unsigned change = 1; change < 256; ++change) {
                if (!turns.next())
                    continue;
                octets[i] = static_cast<std::uint8_t>(sample.octets[i] ^ change);
                const Bytes written = again(*sample.form, octets);
                (written.empty() ? refused : taken) += 1;
                if (!written.empty()) {
                    ASSERT_EQ(toolkit::to_hex(written), toolkit::to_hex(octets)) << i;
                }
            }
            octets[i] = sample.octets[i];
        }
    }
    EXPECT_GT(taken, 0U);
    EXPECT_GT(refused, 0U);
    std::cout << "proved: " << taken << " changed samples are read whole, " << refused << " are refused\n";
}

TEST(Wire, SaysWhatIsExpectedWhere)
{
    const Form &evpn = *find_form("EVPN");
    EXPECT_EQ(reason(evpn, ""), "a value must stand at byte 0, and the bytes end there");
    EXPECT_EQ(reason(evpn, "02"), "1 byte of the EVPN route must stand at byte 1, and the bytes end there");
    EXPECT_EQ(reason(evpn, "0902"), "the EVPN route type at byte 0 must be from 1 to 8, and 9 stands there");
    EXPECT_EQ(reason(evpn, "0309 00"),
              "the length of the EVPN route at byte 1 must be at most 1, the bytes behind it, and 9 stands there");
    EXPECT_EQ(reason(evpn, "0309 0001c00002010007 00"),
              "4 bytes of the Ethernet tag must stand at byte 10, and 1 byte follows");
    EXPECT_EQ(reason(evpn, "0312 0001c00002010007 00000064 20 c0000201 00"),
              "the EVPN route must end at byte 19, and 1 byte more stands in it");
    EXPECT_EQ(reason(evpn, "0311 0001c00002010007 00000064 21 c0000201"),
              "the length in bits of the originator at byte 14 must be 0 or 32, of IPv4 or 128, of IPv6, and 33 stands "
              "there");
    EXPECT_EQ(reason(*find_form("mvpn"), "0512 0000fbf000000064 20 c0000201 80 e9fc0001"),
              "the length in bits of the group at byte 15 must be 32, of IPv4, and 128 stands there");
    EXPECT_EQ(reason(*find_form("mvpn"), "050e 0000fbf000000064 00 20 e9fc0001"),
              "the length in bits of the source at byte 10 must be 32, of IPv4 or 128, of IPv6, and 0 stands there");
    EXPECT_EQ(reason(*find_form("sr-policy"), "61 00000001 00000002 c0000201"),
              "the length in bits of the SR policy at byte 0 must be a multiple of 8, and 97 stands there");
    EXPECT_EQ(reason(*find_form("vpnv4"), "79 003e81 0000fbf000000064 c000020100"),
              "the length in bits of the VPN route at byte 0 must be from 88 to 120, and 121 stands there");
    EXPECT_EQ(reason(*find_form("rd"), "0003fbf000000064"),
              "the route distinguisher's type at byte 0 must be 0, 1 or 2, and 3 stands there");
    EXPECT_EQ(reason(*find_form("rt"), "0003fbf000000064"),
              "the route target's code at byte 0 must be 0x0002, 0x0102 or 0x0202, and 0x0003 stands there");
    EXPECT_EQ(reason(*find_form("bgp-ls"), "0001 0009 03 0000000000000000"),
              "the local node, TLV 256, must stand at byte 13, and it does not");
    EXPECT_EQ(
        reason(*find_form("bgp-ls"), "0001 0021 03 0000000000000000 0100 0010 0201 0004 c0000201 0200 0004 0000fbf0"),
        "the length of the BGP-LS NLRI at byte 2 must be at most 29, the bytes behind it, and 33 stands there");
    EXPECT_EQ(
        reason(*find_form("bgp-ls"), "0001 001d 03 0000000000000000 0100 0010 0201 0004 c0000201 0200 0004 0000fbf0"),
        "the TLV's type at byte 25 must be above 513, as they stand in ascending order, each once, and 512 stands "
        "there");
    EXPECT_EQ(reason(*find_form("communities"), "fbf0"),
              "4 bytes of the community must stand at byte 0, and 2 bytes follow");
}

/// More of a message than the values is not taken for them, and told.
TEST(Wire, AdvisesWhereMoreIsGiven)
{
    const auto advised = [](const char *form, const char *hex) {
        return advice(*find_form(form), toolkit::from_hex(hex));
    };
    const std::string attribute = "the values begin behind the attribute's flags, code and length, 3 bytes";
    const std::string family = "the NLRI begins behind the attribute's address family and next hop";
    EXPECT_EQ(advised("communities", "c0 08 04 fbf00064"), attribute);
    EXPECT_EQ(advised("communities", "c0 08 03 fbf00064"), "");
    EXPECT_EQ(advised("communities", "c0 08"), "");
    EXPECT_EQ(advised("large", "c0 08 04 fbf00064"), "");
    EXPECT_EQ(advised("rd", "0000"), "");
    EXPECT_EQ(advised("EVPN", "0019 46 04 c0000201 00 0311"), family);
    EXPECT_EQ(advised("mvpn", "0002 05"), family);
    EXPECT_EQ(advised("mvpn", "0019 46"), "");
    EXPECT_EQ(advised("EVPN", "0019"), "");
}

TEST(Wire, SaysWhyAValueIsNotSent)
{
    const Sample &inclusive = sample_of("EVNPREFIX", "100:32:192.0.2.1");
    const Bytes value = value_of(inclusive);
    const Form &evpn = *inclusive.form;
    EXPECT_EQ(reason_not_sent(evpn, value, {}), "the RD, for which the value has no room, must be told beside it");
    EXPECT_EQ(reason_not_sent(evpn, value, {{"RD", "x"}}),
              "RD is a route distinguisher such as 64496:100 or 192.0.2.1:7, not \"x\"");
    EXPECT_EQ(reason_not_sent(evpn, value, {{"RD", "64496:1"}, {"label", "3"}}),
              "nothing called \"label\" stands beside such a value, only RD");
    EXPECT_EQ(reason_not_sent(*find_form("mvpn"), value, {}), "the value is no key of multicast VPN");
    Bytes longer = value;
    longer.back() = 1;
    EXPECT_EQ(reason_not_sent(evpn, longer, {{"RD", "64496:1"}}), "the value's byte 88 has no place on the wire");
    Bytes five = value;
    five[offsetof(SYSDT_BolEvpn, key.inclusive.ip.length)] = 5;
    EXPECT_EQ(reason_not_sent(evpn, five, {{"RD", "64496:1"}}),
              "the length of the originator is 0 or 32 on the wire, not 5");
}

/// Why the sample's value is not sent with another number at a place in it.
template <class Number>
std::string reason_changed(const Sample &sample, std::size_t place, Number number)
{
    Bytes value = value_of(sample);
    std::memcpy(value.data() + place, &number, sizeof number);
    return reason_not_sent(*sample.form, value, sample.beside);
}

TEST(Wire, SendsNoOtherKindsOfKeys)
{
    const Sample &evpn = sample_of("EVNPREFIX", "100:32:192.0.2.1");
    constexpr std::size_t route_type = offsetof(SYSDT_BolEvpn, key.routeType);
    EXPECT_EQ(reason_changed(evpn, 0, std::uint32_t{SYSDT_BOL_IPV4}), "the value is no key of EVPN");
    EXPECT_EQ(reason_changed(evpn, route_type, std::uint8_t{0}), "the value is no key of EVPN");
    EXPECT_EQ(reason_changed(evpn, route_type, std::uint8_t{9}), "the value is no key of EVPN");
    const Sample &policy = sample_of("SRPOLICY", "[1][2][192.0.2.1]");
    EXPECT_EQ(reason_changed(policy, 0, std::uint32_t{SYSDT_BOL_IPV4}), "the value is no key of SR policy");
    const Sample &router = sample_of("L2VPN", "192.0.2.1");
    EXPECT_EQ(reason_changed(router, 0, std::uint32_t{SYSDT_BOL_IPV6}), "the value is no key of VPLS");
    const Sample &node = *std::ranges::find(samples(), find_form("BGP-LS"), &Sample::form);
    for (const std::uint32_t route : {0U, 7U})
        EXPECT_EQ(reason_changed(node, offsetof(SYSDT_LsHead, routeType), route), "the value is no key of BGP-LS");
}

TEST(Wire, SaysWhichNumbersAreNotSent)
{
    const Sample &mac = sample_of("EVNPREFIX", "100:48:0000-5e00-5301:0:0.0.0.0");
    EXPECT_EQ(reason_changed(mac, offsetof(SYSDT_BolEvpn, key.macIp.macLength), std::uint8_t{47}),
              "the MAC length is 48 on the wire, not 47");
    const Sample &prefix = sample_with("[IPV4-PREFIX]");
    constexpr std::size_t length = offsetof(SYSDT_LsIpv4Prefix, prefixLength);
    EXPECT_EQ(reason_changed(prefix, offsetof(SYSDT_LsIpv4Prefix, ospfRouteType), std::uint32_t{256}),
              "the OSPF route type is at most 255 on the wire, not 256");
    EXPECT_EQ(reason_changed(prefix, offsetof(SYSDT_LsIpv4Prefix, mtId), std::uint32_t{4096}),
              "an MT-ID is at most 4095, not 4096");
    EXPECT_EQ(reason_changed(prefix, length, std::uint8_t{33}), "the prefix's length is at most 32, not 33");
    EXPECT_EQ(reason_changed(prefix, length, std::uint8_t{16}),
              "the prefix has bits behind its length, which are not sent");
    const Sample &policy = sample_with("[TEPOLICY]");
    constexpr std::size_t flags = offsetof(SYSDT_LsTePolicy, flags);
    EXPECT_EQ(reason_changed(policy, flags, std::uint8_t{0x80}),
              "the flags have bit 0x80 set where an address is IPv6, and here they say otherwise");
    EXPECT_EQ(reason_changed(policy, flags, std::uint8_t{0x40}),
              "the flags have bit 0x40 set where an address is IPv6, and here they say otherwise");
}

TEST(Wire, SaysWhichAddressesAreNotSent)
{
    constexpr std::size_t ip = offsetof(SYSDT_BolEvpn, key.inclusive.ip);
    const Sample &ipv4 = sample_of("EVNPREFIX", "100:32:192.0.2.1");
    EXPECT_EQ(reason_changed(ipv4, offsetof(SYSDT_BolEvpn, key.inclusive.ip.address.family), std::uint8_t{2}),
              "the family of the originator is 0 or 1, not 2");
    EXPECT_EQ(reason_changed(ipv4, ip, std::uint8_t{128}),
              "the length of the originator is 0 or 32 on the wire, not 128");
    const Sample &ipv6 = sample_of("EVNPREFIX", "4294967295:128:[2001:db8::1]");
    EXPECT_EQ(reason_changed(ipv6, ip, std::uint8_t{32}),
              "the length of the originator is 0 or 128 on the wire, not 32");
    EXPECT_EQ(reason_changed(ipv6, ip, std::uint8_t{0}), "without an address there is no IPv6 originator");
    const Sample &source_active = sample_of("MVPN", "192.0.2.1:233.252.0.1");
    EXPECT_EQ(reason_changed(source_active, offsetof(SYSDT_BolNg5, group.family), std::uint8_t{1}),
              "the group is of another family than what stands in front of it");
}

/// A field whose TLV is said to be absent is not lost silently.
TEST(Wire, NamesTheFieldThatIsNotSent)
{
    const Sample &node = *std::ranges::find(samples(), find_form("BGP-LS"), &Sample::form);
    EXPECT_EQ(reason_not_sent(*node.form, value_of(node), {{"local TLV 513", "absent"}}),
              "the value's BGP-LS identifier has no place on the wire");
    const Sample &link = sample_with("[LINK][OSPFv2]");
    EXPECT_EQ(reason_not_sent(*link.form, value_of(link), {{"local TLV 515", "absent"}}),
              "the value's local IGP router identifier has no place on the wire");
    EXPECT_EQ(reason_not_sent(*node.form, value_of(node), {{"local TLV 513", "maybe"}}),
              R"(local TLV 513 is "present" or "absent", not "maybe")");
    EXPECT_EQ(reason_not_sent(*node.form, value_of(node), {{"local TLV 513", "present"}}), "it is sent");
}

TEST(Wire, SaysWhatMustStandBeside)
{
    const auto beside = [](const Sample &sample, const std::string &name, const std::string &text) {
        std::vector<NamedValue> all = sample.beside;
        std::erase_if(all, [&](const NamedValue &value) { return value.name == name || value.name == "MPLS " + name; });
        if (!text.empty())
            all.push_back({name, text});
        return reason_not_sent(*sample.form, value_of(sample), all);
    };
    const Sample &segment = sample_of("EVNPREFIX", "0011.2233.4455.6677.8899:100");
    EXPECT_EQ(beside(segment, "label", ""), "the label, for which the value has no room, must be told beside it");
    EXPECT_EQ(beside(segment, "label", "x"), R"(label is a number up to 16777215, not "x")");
    EXPECT_EQ(beside(segment, "label", "16777216"), R"(label is a number up to 16777215, not "16777216")");
    EXPECT_EQ(beside(segment, "MPLS label", "1048576"), R"(MPLS label is a number up to 1048575, not "1048576")");
    EXPECT_EQ(beside(segment, "RD", "4294967296:1"),
              R"(RD is a route distinguisher such as 64496:100 or 192.0.2.1:7, not "4294967296:1")");
    const Sample &mac = sample_of("EVNPREFIX", "100:48:0000-5e00-5301:0:0.0.0.0");
    for (const std::string text : {"0000.0000.0000.0000.000", "00000.000.0000.0000.0000", "0000.0000.0000.0000.000g",
                                   "0000.0000.0000.0000.0000.0000", "00000000000000000000"})
        EXPECT_EQ(beside(mac, "ESI", text),
                  "ESI is five groups of four hexadecimal digits, as in 0000.0000.0000.0000.0000, not \"" + text +
                      "\"");
    const Sample &ipv4 = sample_of("EVNPREFIX", "100:192.0.2.0:24");
    EXPECT_EQ(beside(ipv4, "gateway", "::1"),
              R"(gateway is an IPv4 address, as the value has one, such as 0.0.0.0, not "::1")");
    const Sample &ipv6 = sample_of("EVNPREFIX", "0:[2001:db8::]:64");
    EXPECT_EQ(beside(ipv6, "gateway", "192.0.2.1"),
              R"(gateway is an IPv6 address, as the value has one, such as ::, not "192.0.2.1")");
    const Sample &join = sample_of("MVPN", "64496:192.0.2.1:233.252.0.1");
    EXPECT_EQ(beside(join, "route type", "5"), R"(route type is from 6 to 7, not "5")");
    EXPECT_EQ(beside(join, "route type", "8"), R"(route type is a number up to 7, not "8")");
    const Sample &community = sample_of("COMMUNITY", "64496:100");
    EXPECT_EQ(beside(community, "label", "3"), R"(nothing called "label" stands beside such a value)");
}

/// TLVs that no length of two bytes can say.
TEST(Wire, SaysWhichTlvsAreNotSent)
{
    const Sample &node = *std::ranges::find(samples(), find_form("BGP-LS"), &Sample::form);
    const auto with_tlv = [&](const std::string &name, const std::string &text) {
        return reason_not_sent(*node.form, value_of(node), {{name, text}});
    };
    const auto octets = [](std::size_t size) { return "0x" + std::string(2 * size, '0'); };
    const std::string none = R"(nothing called "TLV 300" stands beside such a value, only )"
                             "local IGP router identifier length";
    EXPECT_EQ(with_tlv("TLV 300", octets(2)), "it is sent");
    EXPECT_EQ(with_tlv("TLV 300", octets(0xffff)), "more would be sent than a length of 2 bytes can say");
    EXPECT_EQ(with_tlv("TLV 300", octets(0x10000)), none);
    EXPECT_EQ(with_tlv("TLV 300", "0x0"), none);
    EXPECT_EQ(with_tlv("TLV 300", "00"), none);
}

TEST(Wire, TakesTheSecondLabelInEitherWay)
{
    const Sample &mac = sample_of("EVNPREFIX", "0:48:0000-5e00-5301:128:[2001:db8::1]");
    const std::vector<NamedValue> beside{
        {"RD", "64496:100"}, {"ESI", "0000.0000.0000.0000.0000"}, {"label", "10100"}, {"MPLS second label", "631"}};
    Bytes expected = mac.octets;
    expected.back() = 0x71; // 631, at the bottom of the stack
    EXPECT_EQ(write(*mac.form, value_of(mac), beside), expected);
}

TEST(Wire, ReadsNoListThatIsTooLong)
{
    const Form &list = *find_form("CMNTY_ENHANCE");
    Bytes octets(4 * SYSDT_COMMUNITY_LIST_ENTRIES, 1);
    EXPECT_EQ(again(list, octets), octets);
    octets.resize(octets.size() + 4, 1);
    EXPECT_EQ(reason(list, toolkit::to_hex(octets)),
              "a list has room for 32 communities, and more stand from byte 128");
}

TEST(Wire, SendsPrefixesThatAreOnes)
{
    const Sample &sample = *std::ranges::find(samples(), find_form("VPNV4"), &Sample::form);
    const Bytes value = value_of(sample);
    const auto sent = [&](const char *prefix) {
        return write(*sample.form, value, {{"label", "16001"}, {"prefix", prefix}});
    };
    EXPECT_EQ(sent("192.0.2.0/24"), sample.octets);
    for (const char *prefix :
         {"192.0.2.0/33", "192.0.2.1/24", "192.0.2.0", "192.0.2.0/", "2001:db8::/32", "/24", "x/24"})
        EXPECT_THROW(sent(prefix), NotSent) << prefix;
}

/// A label may be told as MPLS has it alone; both must agree.
TEST(Wire, TakesALabelInEitherWay)
{
    const Sample &sample = sample_of("EVNPREFIX", "0011.2233.4455.6677.8899:100");
    const Bytes value = value_of(sample);
    EXPECT_EQ(write(*sample.form, value, {{"RD", "192.0.2.1:7"}, {"MPLS label", "1000"}}), sample.octets);
    EXPECT_EQ(write(*sample.form, value, {{"RD", "192.0.2.1:7"}, {"label", "16001"}}), sample.octets);
    EXPECT_EQ(reason_not_sent(*sample.form, value, {{"RD", "64496:1"}, {"label", "16001"}, {"MPLS label", "1"}}),
              "MPLS label must be the upper 20 bits of label, 1000");
}

/// How an AS number or a community was written is not sent.
TEST(Wire, SendsValuesWhateverTheirNotation)
{
    const Form &form = *find_form("MVPN");
    const auto types = session().host().types();
    const SYSDT_Record &type = **std::ranges::find(types, form.type, &SYSDT_Record::typeId);
    const Bytes dotted = toolkit::parse_text(session(), type, "1.15", session().mode_for(type)).data;
    const Sample &plain = sample_of("MVPN", "65551");
    EXPECT_NE(dotted, value_of(plain));
    EXPECT_EQ(write(form, dotted, plain.beside), plain.octets);
}

TEST(Wire, WritesEachRdInAWayOfItsOwn)
{
    for (const char *text : {"0:0", "65535:4294967295", "192.0.2.1:65535", "65536:1", "0.0:0", "0.100:1",
                             "4294967295:65535", "0x0003000000000001"}) {
        const Bytes rd = rd_octets(text);
        ASSERT_EQ(rd.size(), rd_size) << text;
        EXPECT_EQ(rd_text(rd), text);
    }
    for (const char *text :
         {"", "1", "1:", ":1", "1:2:3", "1.2.3:4", "192.0.2.1:65536", "65536:65536", "65535:4294967296", "1.65536:1",
          "65536.1:1", "x.1:1", "1.x:1", "1.1:65536", "4294967296:1", "0x00", "x:1", "1:x", "+1:1"})
        EXPECT_NE(rd_octets(text).size(), rd_size) << text;
}

// ------------------------------------------------------------------------------------------------ messages

Bytes with_header(std::uint8_t type, const std::string &body)
{
    const Bytes rest = toolkit::from_hex(body);
    Bytes message(16, 0xff);
    message.push_back(0);
    message.push_back(static_cast<std::uint8_t>(19 + rest.size()));
    message.push_back(type);
    message.insert(message.end(), rest.begin(), rest.end());
    return message;
}

/// ORIGIN, communities of both kinds of length, EVPN routes told and taken back.
const std::string attributes =
    "40 01 01 00  c0 08 04 fbf00064  d0 10 0008 0002fbf000000064  80 0e 1c 0019 46 04 c0000201 00 "
    "0311 0001c00002010007 00000064 20 c0000201  80 0f 16 0019 46 0311 0001c00002010007 00000064 "
    "20 c0000201  80 0f 04 0001 01 00";

TEST(Message, TellsWhereValuesStand)
{
    const Bytes message = with_header(2, "0000 0056" + attributes);
    const std::vector<Stretch> stretches = stretches_of(message);
    ASSERT_EQ(stretches.size(), 4U);
    EXPECT_EQ(stretches[0].form, find_form("COMMUNITY"));
    EXPECT_EQ(stretches[0].at, 30U);
    EXPECT_EQ(stretches[1].form, find_form("EXTCOMMUNITY"));
    EXPECT_EQ(toolkit::to_hex(stretches[1].octets), "0002fbf000000064");
    EXPECT_EQ(stretches[2].form, find_form("EVPN"));
    EXPECT_FALSE(stretches[2].withdrawn);
    EXPECT_EQ(toolkit::to_hex(stretches[2].octets), "03110001c000020100070000006420c0000201");
    EXPECT_TRUE(stretches[3].withdrawn);
    EXPECT_EQ(toolkit::to_hex(stretches[3].octets), "03110001c000020100070000006420c0000201");
}

TEST(Message, KnowsTheFamilies)
{
    const std::pair<const char *, const char *> families[] = {
        {"0019 46", "EVPN"},       {"0001 05", "MVPN"},     {"0002 05", "MVPN"},
        {"0001 49", "SRPOLICY"},   {"0002 49", "SRPOLICY"}, {"0019 41", "L2VPN"},
        {"0001 80", "VPNV4"},      {"0002 80", "VPNV6"},    {"4004 47", "BGP-LS"},
        {"4004 48", "BGP-LS-VPN"}, {"0001 46", ""},         {"0019 05", ""},
        {"0000 46", ""},           {"0001 01", ""}};
    for (const auto &[family, name] : families) {
        const Bytes message = with_header(2, "0000 0007 80 0f 04" + std::string(family) + "ff");
        const std::vector<Stretch> stretches = stretches_of(message);
        EXPECT_EQ(stretches.empty() ? nullptr : stretches[0].form, find_form(name)) << family;
    }
}

TEST(Message, HasNoValuesIfItIsNoUpdate)
{
    EXPECT_TRUE(stretches_of(with_header(4, "")).empty());
    EXPECT_TRUE(stretches_of(with_header(1, "04 fbf0 00b4 c0000201 00")).empty());
    EXPECT_TRUE(stretches_of(with_header(2, "0000 0000")).empty());
    EXPECT_TRUE(stretches_of(with_header(2, "0000 0006 80 0f 03 0019 46")).empty()); // the end of a table
}

TEST(Message, HasNoValuesInOtherAttributes)
{
    EXPECT_TRUE(stretches_of(with_header(2, "0000 000c  c0 00 04 fbf00064  c0 63 02 0000")).empty());
}

TEST(Message, IsRefusedWithoutAType)
{
    Bytes message(18, 0xff);
    message[16] = 0;
    message[17] = 18;
    try {
        stretches_of(message);
        FAIL();
    } catch (const BadBytes &bad) {
        EXPECT_EQ(bad.at(), 16U);
        EXPECT_EQ(bad.size(), 2U);
    }
}

TEST(Message, IsRefusedBrokenOff)
{
    const Bytes message = with_header(2, "0000 0056" + attributes);
    for (std::size_t size = 0; size < message.size(); ++size) {
        Bytes part(message.begin(), message.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_THROW(stretches_of(part), BadBytes) << size;
        if (size > 18) {
            part[17] = static_cast<std::uint8_t>(size);
            EXPECT_THROW(stretches_of(part), BadBytes) << size;
        }
    }
}

} // namespace
} // namespace bgpdt::wire
