// SPDX-License-Identifier: Apache-2.0
/// @file
/// Nothing stands twice in the plug-in's tables, and no type borrows a callback that it is not known to borrow.
#include <algorithm>
#include <cstring>
#include <dlfcn.h>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "support/plugin_test.hpp"
#include "support/subject.hpp"

namespace bgpdt::test {

namespace {

/// How the callbacks of a type or row begin.
struct Family {
    std::string_view name;
    const char *prefix;
};

constexpr Family record_families[] = {
    {"ASNUM", "SYSDT_AsNum"},
    {"ASNUMEXT", "SYSDT_AsNumExt"},
    {"ASNUM_ENHANCE", "SYSDT_AsNumEnhance"},
    {"COMMUNITY", "SYSDT_Community"},
    {"CMNTY_ENHANCE", "SYSDT_CMNTYEnhance"},
    {"LARGECOMMUNITY", "SYSDT_LargeCommunity"},
    {"EXTCOMMUNITY", "SYSDT_ExtCommunity"},
    {"EXTCOMMUNITY_BW", "SYSDT_ExtCommunityBw"},
    {"VRFRD", "SYSDT_VrfRd"},
    {"VRFRT", "SYSDT_VrfRt"},
    {"SOO", "SYSDT_Soo"},
    {"VRFRTV6", "SYSDT_VrfRtV6"},
    {"RTPRD", "SYSDT_RtpRd"},
    {"VPNID", "SYSDT_VpnId"},
    {"BOLRD", "SYSDT_BolRd"},
    {"BOLPREFIX", "SYSDT_BolPrefix"},
    {"EVNPREFIX", "SYSDT_EVNPrefix"},
    {"L2VPNPREFIX", "SYSDT_L2VPNPrefix"},
    {"VPNV4MCPREFIX", "SYSDT_VPNV4MCASTPrefix"},
    {"MDTPREFIX", "SYSDT_MdtPrefix"},
    {"BGPLSPREFIX", "SYSDT_LSPrefix"},
    {"ATTRIDBITMAP", "SYSDT_AttrIdBitmap"},
    {"TIME_RANGE", "SYSDT_TimeRange"},
    {"SID_STRUCTURE", "SYSDT_PrefixSidStructure"},
    {"CVRFNAME", "SYS_DT_APPCVRFNAME_"},
};

constexpr Family row_families[] = {
    {"IPV4", "SYSDT_VplsAdPrefix"},
    {"EVN", "SYSDT_EVNPrefix"},
    {"NG_TYPE_2", "SYSDT_NGPrefix2"},
    {"NG_TYPE_3", "SYSDT_NGPrefix3"},
    {"NG_TYPE_4_2", "SYSDT_NGPrefix42"},
    {"NG_TYPE_4-3", "SYSDT_NGPrefix43"},
    {"NG_TYPE_5", "SYSDT_NGPrefix5"},
    {"NG_TYPE_6", "SYSDT_NGPrefix6"},
    {"VRFRTEXT", "SYSDT_VrfRtExt"},
    {"L2VPN", "SYSDT_L2VPNPrefix"},
    {"VPNV4MCAST", "SYSDT_VPNV4MCASTPrefix"},
    {"MDT", "SYSDT_MdtPrefix"},
    {"RPD", "SYSDT_RpdPrefix"},
    {"NG_TYPE_4-1", "SYSDT_NGPrefix41"},
    {"SRPOLICY", "SYSDT_SrPolicyPrefix"},
    {"IPV6", "SYSDT_Ipv6BolPrefix"},
    {"SD-WAN", "SYSDT_SdwanPrefix"},
    {"RT", "SYSDT_VplsRD"},
};

/// Callbacks that a type or row of that name has on purpose though they are another family's, or bear another name.
struct Sharing {
    const char *callback;
    std::vector<std::string_view> users;
};

const std::vector<Sharing> &sharings()
{
    using Users = std::vector<std::string_view>;
    static const Users multicast{"NG_TYPE_2", "NG_TYPE_3", "NG_TYPE_4_2", "NG_TYPE_4-3",
                                 "NG_TYPE_5", "NG_TYPE_6", "NG_TYPE_4-1"};
    static const auto with = [](Users users, const Users &more) {
        users.insert(users.end(), more.begin(), more.end());
        return users;
    };
    static const std::vector<Sharing> all{
        {"SYSDT_AsNumHelp", {"ASNUMEXT"}},
        {"SYSDT_AsNumLuaSet", {"ASNUMEXT"}},
        {"SYSDT_AsNumLuaGet", {"ASNUMEXT"}},
        {"SYSDT_AsNumLuaEndian", {"ASNUMEXT"}},
        {"SYSDT_VplsAdPrefixCheck", {"L2VPNPREFIX", "L2VPN"}},
        {"SYSDT_VplsAdPrefixHelp", {"L2VPNPREFIX", "L2VPN"}},
        {"SYSDT_VplsAdPrefixCompare", {"L2VPNPREFIX", "L2VPN"}},
        {"SYSDT_NGPrefixFormatIn", multicast},
        {"SYSDT_NGPrefixFormatOut", multicast},
        {"SYSDT_EVNPrefixCheck", with({"VRFRTEXT", "IPV6"}, multicast)},
        {"SYSDT_EVNPrefixHelp", with({"IPV6"}, multicast)},
        {"SYSDT_EVNPrefixCompare", with({"IPV6"}, multicast)},
        {"SYSDT_EVNPrefixLuaGet", multicast},
        {"SYSDT_VrfRtHelp", {"VRFRTEXT"}},
        {"SYSDT_VrfRtCompare", {"VRFRTEXT"}},
        // Irregular names.
        {"SYSDT_AsNumEnLuaSet", {"ASNUM_ENHANCE"}},
        {"SYSDT_AsNumEnLuaGet", {"ASNUM_ENHANCE"}},
        {"SYSDT_CmntyEnLuaSet", {"CMNTY_ENHANCE"}},
        {"SYSDT_CmntyEnLuaGet", {"CMNTY_ENHANCE"}},
        {"SYSDT_CmntyEnhanceLuaEndian", {"CMNTY_ENHANCE"}},
        {"SYSDT_EXTCommunityEndian", {"EXTCOMMUNITY"}},
        {"SYSDT_EXTCommunityBwEndian", {"EXTCOMMUNITY_BW"}},
        {"SYSDT_VPNV4MCASTLuaEndian", {"VPNV4MCPREFIX"}},
        {"SYSDT_MdtLuaEndian", {"MDTPREFIX"}},
        // The host's.
        {"SYSDT_Uint32Compare", {"ASNUM", "ASNUMEXT"}},
        {"SYSDT_BlockCompare", {"ASNUM_ENHANCE", "CMNTY_ENHANCE"}},
        {"SYSDT_StringFormatIn", {"CVRFNAME"}},
        {"SYSDT_StringHelp", {"CVRFNAME"}},
        {"SYSDT_StringCompare", {"CVRFNAME"}},
        {"SYSDT_StringLuaSet", {"CVRFNAME"}},
        {"SYSDT_StringLuaGet", {"CVRFNAME"}},
    };
    return all;
}

/// A slot: the endings that the names of its callbacks have, and what stands in it.
struct Slot {
    std::vector<const char *> endings;
    const void *callback;
};

template <class Row>
std::vector<Slot> slots_of(const Row &row)
{
    const auto address = [](auto *callback) { return reinterpret_cast<const void *>(callback); };
    std::vector<Slot> slots{
        {{"FormatIn"}, address(row.formatIn)}, {{"FormatOut"}, address(row.formatOut)},
        {{"Check"}, address(row.check)},       {{"Help"}, address(row.help)},
        {{"Compare"}, address(row.compare)},   {{"LuaSet"}, address(row.luaSet)},
        {{"LuaGet"}, address(row.luaGet)},
    };
    if constexpr (requires { row.endian; })
        slots.push_back({{"Endian", "LuaEndian"}, address(row.endian)});
    return slots;
}

class FamiliesTest : public PluginTest {
protected:
    template <class Row>
    static std::string name_of(const Row &row)
    {
        return {row.name, strnlen(row.name, sizeof row.name)};
    }
    /// The plug-in's or the host's.
    const void *symbol(const std::string &name) const
    {
        const void *own = host_.symbol(name.c_str());
        return own != nullptr ? own : dlsym(RTLD_DEFAULT, name.c_str());
    }
    bool is_own(const Slot &slot, const std::string &prefix) const
    {
        return std::ranges::any_of(slot.endings,
                                   [&](const char *ending) { return symbol(prefix + ending) == slot.callback; });
    }
    /// Whether the sharing of the slot's callback is deliberate; it is then one that is needed.
    bool is_shared(const Slot &slot, const std::string &user);

    template <class Row>
    void expect_family(const Row &row, std::span<const Family> families)
    {
        const std::string name = name_of(row);
        const auto family = std::ranges::find(families, name, &Family::name);
        ASSERT_NE(families.end(), family) << "no family is told for " << name;
        for (const Slot &slot : slots_of(row))
            if (slot.callback != nullptr && !is_own(slot, family->prefix)) {
                EXPECT_TRUE(is_shared(slot, name)) << name << " has the " << slot.endings[0] << " of another family";
            }
    }
    /// The name-index types have nothing but the host's callbacks.
    static bool is_name_index(const SYSDT_Record &record) { return record.typeId >= 0x6000; }

    std::set<std::string> needed_;
};

bool FamiliesTest::is_shared(const Slot &slot, const std::string &user)
{
    return std::ranges::any_of(sharings(), [&](const Sharing &sharing) {
        const bool listed =
            symbol(sharing.callback) == slot.callback && std::ranges::find(sharing.users, user) != sharing.users.end();
        if (listed)
            needed_.insert(sharing.callback + std::string(" ") + user);
        return listed;
    });
}

TEST_F(FamiliesTest, NoTypeBorrowsUnknownCallbacks)
{
    for (const SYSDT_Record *record : host_.types())
        if (!is_name_index(*record))
            expect_family(*record, record_families);
    for (const char *dispatcher : {"BOLPREFIX", "BOLRD"})
        for (const SYSDT_DispatchRow &row : dispatch_rows(host_, dispatcher))
            expect_family(row, row_families);
    for (const Sharing &sharing : sharings()) {
        for (const std::string_view user : sharing.users) {
            const std::string listed = sharing.callback + std::string(" ").append(user);
            EXPECT_TRUE(needed_.contains(listed)) << listed << " is listed and not shared";
        }
    }
}

TEST_F(FamiliesTest, NoTypeIsRegisteredTwice)
{
    std::set<std::uint16_t> ids;
    std::set<std::string> names;
    for (const SYSDT_Record *record : host_.types()) {
        EXPECT_TRUE(ids.insert(record->typeId).second) << record->typeId;
        EXPECT_TRUE(names.insert(name_of(*record)).second) << name_of(*record);
    }
}

TEST_F(FamiliesTest, NoRowStandsTwice)
{
    for (const char *dispatcher : {"BOLPREFIX", "BOLRD"}) {
        std::set<std::uint32_t> kinds;
        std::set<std::string> names;
        const auto rows = dispatch_rows(host_, dispatcher);
        EXPECT_FALSE(rows.empty()) << dispatcher;
        for (const SYSDT_DispatchRow &row : rows) {
            EXPECT_TRUE(kinds.insert(row.kind).second) << row.kind;
            EXPECT_TRUE(names.insert(name_of(row)).second) << name_of(row);
        }
    }
}

/// No group of a BGP-LS table stands behind a row that takes it too: it would never be found.
TEST_F(FamiliesTest, EveryKeywordCanBeFound)
{
    const auto expect_found = [&](const char *name, std::size_t count) {
        const std::span rows(static_cast<const LsPrefixPattern *>(host_.symbol(name)), count);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            for (std::size_t before = 0; before < i; ++before) {
                const std::string_view keyword = rows[i].keyword;
                const std::string_view earlier = rows[before].keyword;
                const bool hides =
                    rows[before].exact == 0 ? keyword.starts_with(earlier) : rows[i].exact != 0 && keyword == earlier;
                EXPECT_FALSE(hides) << name << ": " << keyword;
            }
        }
    };
    expect_found("g_bgplsPrefixPattern", std::extent_v<decltype(g_bgplsPrefixPattern)>);
    expect_found("g_bgplsPrefixNodeDescPartten", std::extent_v<decltype(g_bgplsPrefixNodeDescPartten)>);
    expect_found("g_bgplsPrefixLinkPartten", std::extent_v<decltype(g_bgplsPrefixLinkPartten)>);
    expect_found("g_bgplsPrefixPrefixPartten", std::extent_v<decltype(g_bgplsPrefixPrefixPartten)>);
    expect_found("g_bgplsPrefixTePartten", std::extent_v<decltype(g_bgplsPrefixTePartten)>);
    expect_found("g_bgplsPrefixSidPartten", std::extent_v<decltype(g_bgplsPrefixSidPartten)>);
}

} // namespace

} // namespace bgpdt::test
