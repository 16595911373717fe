// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Texts that people bring from elsewhere, and what each refusal teaches: a sentence, what of the text is marked, the
/// text that would be accepted and what that makes of the value, and the other types that take the text as it stands.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "toolkit/conversions.hpp"
#include "toolkit/errors.hpp"
#include "toolkit/other_types.hpp"
#include "toolkit/session.hpp"
#include "vector_values.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr Change spelling = Change::spelling;
constexpr Change example = Change::example;
constexpr Change value = Change::value;

struct Row {
    const char *type;
    std::string text;
    std::string marked; ///< of the text; empty for what is missing
    std::string reason;
    std::string repair = {}; ///< none: nothing that would be accepted is near what was meant
    Change change = value;
    std::string types = {}; ///< what is said of the types that take it
};

std::string communities(int count)
{
    std::string list = "64496:1";
    for (int i = 2; i <= count; ++i)
        list += " 64496:" + std::to_string(i);
    return list;
}

std::vector<Row> rows()
{
    const std::string ls_node = "[as64496][bgp-ls-identifier192.0.2.1][ospf-area-id0.0.0.0]";
    const std::string ls_local = "[IDENTIFIER0][LOCAL" + ls_node + "[igp-router-id";
    const std::string names = "is none of the names here, which are internet, no-export, no-advertise and "
                              "no-export-subconfed; its number is ";
    const std::string in_brackets = "fields stand without brackets here, and without the type of the route";
    const std::string units = "days, hours, minutes and seconds are all named here: ";
    const std::string targets = "it is a text of VRFRD (route distinguisher), VRFRT (route target), "
                                "EXTCOMMUNITY (extended community) and 4 more types";
    return {
        {"EVNPREFIX", "ffff.ffff.ffff.ffff.ffff:1", "ffff.ffff.ffff.ffff.ffff",
         "an Ethernet segment identifier of all ones is refused"},
        {"EVNPREFIX", "0000.0000.0000.0000.0000", "0000.0000.0000.0000.0000",
         "an Ethernet segment identifier of all zeros is refused here"},
        {"EVNPREFIX", "[2]:[0]:[48]:[00:00:5e:00:53:01]:[32]:[192.0.2.1]",
         "[2]:[0]:[48]:[00:00:5e:00:53:01]:[32]:[192.0.2.1]", in_brackets, "0:48:0000-5e00-5301:32:192.0.2.1",
         spelling},
        {"EVNPREFIX", "[2]:[0]:[48]:[00:00:5E:00:53:01]:[128]:[2001:db8::1]", "[2]:[0]:[48]:[00:00:5E:00:53:01]:[128]",
         in_brackets, "0:48:0000-5E00-5301:128:[2001:db8::1]", spelling},
        {"EVNPREFIX", "[3]:[100]:[32]:[192.0.2.1]", "[3]:[100]:[32]:[192.0.2.1]", in_brackets, "100:32:192.0.2.1",
         spelling},
        {"EVNPREFIX", "[4]:[00:11:22:33:44:55:66:77:88:99]:[32]:[192.0.2.1]",
         "[4]:[00:11:22:33:44:55:66:77:88:99]:[32]:[192.0.2.1]", in_brackets, "0011.2233.4455.6677.8899:32:192.0.2.1",
         spelling},
        {"BOLPREFIX", "[5]:[0]:[24]:[192.0.2.0]", "[5]:[0]:[24]:[192.0.2.0]", in_brackets, "0:192.0.2.0:24", spelling},
        {"EVNPREFIX", "0011.2233.4455.6677.8899:192.0.2.1", "", R"(the length of the address, "32:", is missing here)",
         "0011.2233.4455.6677.8899:32:192.0.2.1", spelling},
        {"EVNPREFIX", "0011.2233.4455.6677.8899:[2001:db8::1]", "",
         R"(the length of the address, "128:", is missing here)", "0011.2233.4455.6677.8899:128:[2001:db8::1]",
         spelling},
        {"EVNPREFIX", "100:256:0000-5e00-5301:32:192.0.2.1", "256", "a MAC address has the length 48",
         "100:48:0000-5e00-5301:32:192.0.2.1", spelling},
        {"EVNPREFIX", "100:48:0000-5e00-5301:32:192.0.2.1:7", ":7", R"(":7" is too much)",
         "100:48:0000-5e00-5301:32:192.0.2.1", value},

        {"CMNTY_ENHANCE", communities(33), "64496:33", "33 entries are too many: at most 32"},
        {"CMNTY_ENHANCE", "64496:1;64496:2", ";", "blanks alone separate the entries of a list", "64496:1 64496:2",
         spelling},
        {"CMNTY_ENHANCE", "64496:1 blackhole", "blackhole", R"("blackhole" )" + names + "65535:666",
         "64496:1 65535:666", spelling},
        {"ASNUM_ENHANCE", "{64496 64497}", "{64496 64497}", "blanks alone separate the entries of a list",
         "64496 64497", spelling},
        {"ASNUM_ENHANCE", "64496,64497", ",", "blanks alone separate the entries of a list", "64496 64497", spelling},

        {"MDTPREFIX", "192.0.2.0/255.255.255.0", "255.255.255.0",
         R"("255.255.255.0" is a network mask, the length of the prefix stands here: 24)", "192.0.2.0/24", spelling},
        {"MDTPREFIX", "192.0.2.0 255.255.255.252", " 255.255.255.252",
         R"("255.255.255.252" is a network mask, the length of the prefix stands here: 30)", "192.0.2.0/30", spelling},
        {"EVNPREFIX", "100:192.0.2.0/255.255.255.0", "/255.255.255.0",
         R"("255.255.255.0" is a network mask, the length of the prefix stands here: 24)", "100:192.0.2.0:24",
         spelling},
        {"VRFRD", "192.0.2.0/255.255.255.0", "255.255.255.0",
         R"("255.255.255.0" is a network mask, and no prefix stands here)"},
        {"VRFRT",
         "00:02:fb:f0:00:00:00:64",
         "00:02:fb:f0:00:00:00:64",
         "it is 8 bytes in hexadecimal, and no text",
         {},
         value,
         "it is a text of BOLPREFIX (route key of any kind)"},
        {"LARGECOMMUNITY", "10:20:30:40", ":40", R"(":40" is too much)", "10:20:30", value},
        {"LARGECOMMUNITY", "10:20:30:40:50", ":40:50", R"(":40:50" is too much)", "10:20:30", value},
        {"SOO", "fe:01:02", "fe:01:02", "it is 3 bytes in hexadecimal, and no text"},
        {"EVNPREFIX", "00:11:22:33:44:55:66:77:88:99", "00:11:22:33:44:55:66:77:88:99",
         R"("00:11:22:33:44:55:66:77:88:99" is written "0011.2233.4455.6677.8899" here)", "0011.2233.4455.6677.8899",
         spelling},
        {"TIME_RANGE", "01:00:00", "01:00:00", units + "0d1h0m0s", "0d1h0m0s", spelling},

        {"MDTPREFIX", "192.0.2.0/-1", "-1", "-1 cannot stand here: 0 to 32 can"},
        {"VPNV4MCPREFIX", "192.0.2.0/-24", "-24", "-24 cannot stand here: 0 to 32 can"},
        {"BOLPREFIX", "64496:192.0.2.1:233.252.0.1:7", ":7", R"(":7" is too much)", "64496:192.0.2.1:233.252.0.1",
         value},
        {"BOLPREFIX", "64496:2001:db8::1", ":", R"(":" cannot separate the parts here, "-" can)", "64496-2001:db8::1",
         spelling},
        {"BOLPREFIX", "1:2:3:192.0.2.1", ":2:3:", R"(":" cannot separate the parts here, "-" can)", "1-2-3-192.0.2.1",
         spelling},
        {"BOLPREFIX", "1-192.0.2.1-100", "-192.0.2.1-", R"("-" cannot separate the parts here, "/" can)",
         "1/192.0.2.1/100", spelling},
        {"BOLPREFIX", "1/192.0.2.1", "", R"(something is missing at the end, such as "/100")", "1/192.0.2.1/100",
         example},
        {"BOLPREFIX", "(1)(2)(192.0.2.1)", "(1)(2)(192.0.2.1)", "brackets are square here", "[1][2][192.0.2.1]",
         spelling},
        {"BOLPREFIX", "192.0.2.0/24", "/24", "there is no prefix length here", "", value,
         "it is a text of VPNV4MCPREFIX (VPNv4 multicast route key) and MDTPREFIX (multicast distribution tree route "
         "key)"},
        {"BOLPREFIX", "2001:db8::/32", "/32", "there is no prefix length here", "2001:db8::", value},

        {"BGPLSPREFIX", "[NODE][ISIS-LEVEL-1]" + ls_local + "0000.0000.001.00]]", "001",
         R"(each group has four digits here, "001" has 3)", "[NODE][ISIS-LEVEL-1]" + ls_local + "0000.0000.0001.00]]",
         example},
        {"BGPLSPREFIX", "[LINK][OSPFv2]" + ls_local + "192.0.2.2]]", "", "the groups REMOTE and LINK are missing",
         "[LINK][OSPFv2]" + ls_local + "192.0.2.2]][REMOTE" + ls_node +
             "[igp-router-id192.0.2.3]][LINK[if-address192.0.2.4][peer-address192.0.2.5][mt-id0]]",
         example},
        {"BGPLSPREFIX", "[NODE][OSPFv2][LOCAL" + ls_node + "]", "", "the group IDENTIFIER is missing",
         "[NODE][OSPFv2][LOCAL" + ls_node + "][IDENTIFIER0]", example},
        {"BGPLSPREFIX", "[NODE]", "", "the groups PROTOCOL, IDENTIFIER and LOCAL are missing",
         "[NODE][OSPFv2]" + ls_local + "192.0.2.2]]", example},
        {"BGPLSPREFIX", "[NODE][ISIS-L2]" + ls_local + "0000.0000.0001.00]]", "ISIS-L2",
         R"("ISIS-L2" cannot stand here, "ISIS-LEVEL-2" can)",
         "[NODE][ISIS-LEVEL-2]" + ls_local + "0000.0000.0001.00]]", spelling},

        {"COMMUNITY", "70000:70000", "70000", "70000 is too large here: at most 65535; more is wrong behind it"},
        {"COMMUNITY", "31210:0:31210", ":31210", R"(":31210" is too much)", "", value,
         "it is a text of LARGECOMMUNITY (large community)"},
        {"COMMUNITY", "1:2:3", ":3", R"(":3" is too much)", "", value,
         "it is a text of LARGECOMMUNITY (large community)"},
        {"COMMUNITY", "64496 1", " ", R"(" " cannot stand here, ":" can)", "64496:1", spelling},
        {"COMMUNITY", "65551:100", "65551", "65551 is too large here: at most 65535", "", value, targets},
        {"COMMUNITY", "0x10", "0x10", "numbers are decimal here: 0x10 is 16", "16", spelling},
        {"COMMUNITY", "0x00010001", "0x00010001", "numbers are decimal here: 0x00010001 is 65537", "65537", spelling},
        {"COMMUNITY", "64496:1e3", "1e3", "numbers are written out here: 1e3 is 1000", "64496:1000", spelling},
        {"COMMUNITY", "blackhole", "blackhole", R"("blackhole" )" + names + "65535:666", "65535:666", spelling},
        {"COMMUNITY", "Graceful_Shutdown", "Graceful_Shutdown", R"("Graceful_Shutdown" )" + names + "65535:0",
         "65535:0", spelling},
        {"COMMUNITY", "nopeer", "nopeer", R"("nopeer" )" + names + "65535:65284", "65535:65284", spelling},

        {"ASNUM", "AS64496", "AS", R"("AS" is too much)", "64496", spelling},
        {"VRFRT", "RT:64496:1", "RT:", R"("RT:" is too much)", "64496:1", spelling},
        {"EXTCOMMUNITY", "target:64496:1", "target:", R"("target:" is too much)", "64496:1", spelling},
        {"LARGECOMMUNITY", "64496.1.2", ".1.", R"("." cannot separate the parts here, ":" can)", "64496:1:2", spelling},
        {"TIME_RANGE", "1 day 2 h", "1 day 2 h", units + "1d2h0m0s", "1d2h0m0s", spelling},
        {"ASNUM", "0.64496", "0.", "no 0 stands in front of the dot here", "64496", spelling},
        {"ASNUM", "65,536", "65,536", "digits are not grouped here: 65,536 is 65536", "65536", spelling},
        {"ASNUM", "64496:1", ":1", R"(":1" is too much)", "", value,
         "it is a text of COMMUNITY (community), VRFRD (route distinguisher), VRFRT (route target) and 6 more types"},
        {"VRFRD", "1:0:0", ":0", R"(":0" is too much)", "", value, "it is a text of LARGECOMMUNITY (large community)"},
        {"VRFRD", "192.0.2.1:70000", "70000", "70000 is too large here: at most 65535", "192.0.2.1:65535", value},
        {"VRFRT", "1.2.3.4.5:6", "1.2.3.4.5", "an IPv4 address has four numbers, this has 5"},
        {"VRFRTV6", "fe80::1%eth0.1", "%eth0", "an address has no zone here", "fe80::1.1", spelling},

        {"TIME_RANGE", "1w2d", "1w2d", units + "9d0h0m0s", "9d0h0m0s", spelling},
        {"TIME_RANGE", "1h", "1h", units + "0d1h0m0s", "0d1h0m0s", spelling},
        {"TIME_RANGE", "3600", "3600", units + "0d1h0m0s", "0d1h0m0s", spelling},
        {"VRFID2VRFNAME", "vpn1", "vpn1", "it is a name, and no names are known"},

        {"VRFRD", "64496:1\xc2\xa0", "\xc2\xa0", "an invisible character stands here, NO-BREAK SPACE (U+00A0)",
         "64496:1", spelling},
        {"ASNUM",
         "\xef\xbb\xbf"
         "64496",
         "\xef\xbb\xbf", "an invisible character stands here, BYTE ORDER MARK (U+FEFF)", "64496", spelling},
    };
}

Refusal refusal_of(Session &session, const SYSDT_Record &type, const std::string &text)
{
    try {
        static_cast<void>(parse_text(session, type, text, session.mode_for(type)));
    } catch (const Refusal &refusal) {
        return refusal;
    }
    return Refusal("");
}

void expect_row(Session &session, const Row &row)
{
    SCOPED_TRACE(std::string(row.type) + " " + row.text);
    const SYSDT_Record &type = session.type(row.type);
    const Refusal refusal = refusal_of(session, type, row.text);
    ASSERT_TRUE(refusal.diagnosis().has_value()) << refusal.what();
    const Diagnosis &diagnosis = *refusal.diagnosis();
    EXPECT_EQ(diagnosis.reason, row.reason);
    EXPECT_EQ(row.text.substr(diagnosis.at, diagnosis.length), row.marked);
    EXPECT_EQ(diagnosis.repair, row.repair);
    EXPECT_TRUE(row.repair.empty() || diagnosis.change == row.change);
    EXPECT_TRUE(row.repair.empty() || session.host().parse(type, row.repair, session.mode_for(type)).ok());
    EXPECT_EQ(types_sentence(diagnosis.types.value_or(std::vector<TypeName>{})), row.types);
}

TEST(TrueRefusals, TeachWhatIsTrue)
{
    for (const Row &row : rows())
        expect_row(test::session(), row);
}

} // namespace
} // namespace bgpdt::toolkit
