// SPDX-License-Identifier: Apache-2.0
/// @file
/// The dispatch tables read back: order, names, and the symbol in every slot.
#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "support/plugin_test.hpp"

namespace bgpdt::test {

namespace {

constexpr const char *none = nullptr;

struct ExpectedRow {
    std::uint32_t kind;
    std::string_view name;
    std::array<const char *, 7> callbacks; ///< FormatIn, FormatOut, Check, Help, Compare, LuaSet, LuaGet
};

constexpr ExpectedRow prefix_rows[] = {
    {0,
     "IPV4",
     {"SYSDT_VplsAdPrefixFormatIn", "SYSDT_VplsAdPrefixFormatOut", "SYSDT_VplsAdPrefixCheck", "SYSDT_VplsAdPrefixHelp",
      "SYSDT_VplsAdPrefixCompare", "SYSDT_VplsAdPrefixLuaSet", "SYSDT_VplsAdPrefixLuaGet"}},
    {1,
     "EVN",
     {"SYSDT_EVNPrefixFormatIn", "SYSDT_EVNPrefixFormatOut", "SYSDT_EVNPrefixCheck", "SYSDT_EVNPrefixHelp",
      "SYSDT_EVNPrefixCompare", "SYSDT_EVNPrefixLuaSet", "SYSDT_EVNPrefixLuaGet"}},
    {2,
     "NG_TYPE_2",
     {"SYSDT_NGPrefixFormatIn", "SYSDT_NGPrefixFormatOut", "SYSDT_EVNPrefixCheck", "SYSDT_EVNPrefixHelp",
      "SYSDT_EVNPrefixCompare", "SYSDT_NGPrefix2LuaSet", "SYSDT_EVNPrefixLuaGet"}},
    {3,
     "NG_TYPE_3",
     {"SYSDT_NGPrefixFormatIn", "SYSDT_NGPrefixFormatOut", "SYSDT_EVNPrefixCheck", "SYSDT_EVNPrefixHelp",
      "SYSDT_EVNPrefixCompare", "SYSDT_NGPrefix3LuaSet", "SYSDT_EVNPrefixLuaGet"}},
    {4,
     "NG_TYPE_4_2",
     {"SYSDT_NGPrefixFormatIn", "SYSDT_NGPrefixFormatOut", "SYSDT_EVNPrefixCheck", "SYSDT_EVNPrefixHelp",
      "SYSDT_EVNPrefixCompare", "SYSDT_NGPrefix42LuaSet", "SYSDT_EVNPrefixLuaGet"}},
    {5,
     "NG_TYPE_4-3",
     {"SYSDT_NGPrefixFormatIn", "SYSDT_NGPrefixFormatOut", "SYSDT_EVNPrefixCheck", "SYSDT_EVNPrefixHelp",
      "SYSDT_EVNPrefixCompare", "SYSDT_NGPrefix43LuaSet", "SYSDT_EVNPrefixLuaGet"}},
    {6,
     "NG_TYPE_5",
     {"SYSDT_NGPrefixFormatIn", "SYSDT_NGPrefixFormatOut", "SYSDT_EVNPrefixCheck", "SYSDT_EVNPrefixHelp",
      "SYSDT_EVNPrefixCompare", "SYSDT_NGPrefix5LuaSet", "SYSDT_EVNPrefixLuaGet"}},
    {7,
     "NG_TYPE_6",
     {"SYSDT_NGPrefixFormatIn", "SYSDT_NGPrefixFormatOut", "SYSDT_EVNPrefixCheck", "SYSDT_EVNPrefixHelp",
      "SYSDT_EVNPrefixCompare", "SYSDT_NGPrefix6LuaSet", "SYSDT_EVNPrefixLuaGet"}},
    {8,
     "VRFRTEXT",
     {"SYSDT_VrfRtExtFormatIn", "SYSDT_VrfRtExtFormatOut", "SYSDT_EVNPrefixCheck", "SYSDT_VrfRtHelp",
      "SYSDT_VrfRtCompare", "SYSDT_VrfRtExtLuaSet", "SYSDT_VrfRtExtLuaGet"}},
    {9,
     "L2VPN",
     {none, "SYSDT_L2VPNPrefixFormatOut", "SYSDT_VplsAdPrefixCheck", "SYSDT_VplsAdPrefixHelp",
      "SYSDT_VplsAdPrefixCompare", "SYSDT_L2VPNPrefixLuaSet", "SYSDT_L2VPNPrefixLuaGet"}},
    {10,
     "VPNV4MCAST",
     {none, "SYSDT_VPNV4MCASTPrefixFormatOut", "SYSDT_VPNV4MCASTPrefixCheck", "SYSDT_VPNV4MCASTPrefixHelp",
      "SYSDT_VPNV4MCASTPrefixCompare", "SYSDT_VPNV4MCASTPrefixLuaSet", "SYSDT_VPNV4MCASTPrefixLuaGet"}},
    {11,
     "MDT",
     {none, "SYSDT_MdtPrefixFormatOut", "SYSDT_MdtPrefixCheck", "SYSDT_MdtPrefixHelp", "SYSDT_MdtPrefixCompare",
      "SYSDT_MdtPrefixLuaSet", "SYSDT_MdtPrefixLuaGet"}},
    {12,
     "RPD",
     {"SYSDT_RpdPrefixFormatIn", "SYSDT_RpdPrefixFormatOut", "SYSDT_RpdPrefixCheck", "SYSDT_RpdPrefixHelp",
      "SYSDT_RpdPrefixCompare", "SYSDT_RpdPrefixLuaSet", "SYSDT_RpdPrefixLuaGet"}},
    {13,
     "NG_TYPE_4-1",
     {"SYSDT_NGPrefixFormatIn", "SYSDT_NGPrefixFormatOut", "SYSDT_EVNPrefixCheck", "SYSDT_EVNPrefixHelp",
      "SYSDT_EVNPrefixCompare", "SYSDT_NGPrefix41LuaSet", "SYSDT_EVNPrefixLuaGet"}},
    {14,
     "SRPOLICY",
     {"SYSDT_SrPolicyPrefixFormatIn", "SYSDT_SrPolicyPrefixFormatOut", "SYSDT_SrPolicyPrefixCheck",
      "SYSDT_SrPolicyPrefixHelp", "SYSDT_SrPolicyPrefixCompare", "SYSDT_SrPolicyPrefixLuaSet", none}},
    {15,
     "IPV6",
     {"SYSDT_Ipv6BolPrefixFormatIn", "SYSDT_Ipv6BolPrefixFormatOut", "SYSDT_EVNPrefixCheck", "SYSDT_EVNPrefixHelp",
      "SYSDT_EVNPrefixCompare", "SYSDT_Ipv6BolPrefixLuaSet", none}},
    {16,
     "SD-WAN",
     {"SYSDT_SdwanPrefixFormatIn", "SYSDT_SdwanPrefixFormatOut", "SYSDT_SdwanPrefixCheck", "SYSDT_SdwanPrefixHelp",
      "SYSDT_SdwanPrefixCompare", "SYSDT_SdwanPrefixLuaSet", none}},
};

constexpr ExpectedRow rd_rows[] = {
    {0,
     "RT",
     {"SYSDT_VplsRDFormatIn", "SYSDT_VplsRDFormatOut", "SYSDT_VplsRDCheck", "SYSDT_VplsRDHelp", "SYSDT_VplsRDCompare",
      "SYSDT_VplsRDLuaSet", "SYSDT_VplsRDLuaGet"}},
};

constexpr const char *readers[] = {
    "SYSDT_VplsAdPrefixNewLuaGet",  "SYSDT_EVNPrefixNewLuaGet",        "SYSDT_NGPrefix2NewLuaGet",
    "SYSDT_NGPrefix3NewLuaGet",     "SYSDT_NGPrefix42NewLuaGet",       "SYSDT_NGPrefix43NewLuaGet",
    "SYSDT_NGPrefix5NewLuaGet",     "SYSDT_NGPrefix6NewLuaGet",        "SSYSDT_VrfRtExtNewLuaGet",
    "SYSDT_L2VPNPrefixNewLuaGet",   "SYSDT_VPNV4MCASTPrefixNewLuaGet", "SYSDT_MdtPrefixNewLuaGet",
    "SYSDT_RpdPrefixNewLuaGet",     "SYSDT_NGPrefix41NewLuaGet",       "SYSDT_SrPolicyPrefixNewLuaGet",
    "SYSDT_Ipv6BolPrefixNewLuaGet", "SYSDT_SdwanPrefixNewLuaGet",
};

class DispatchTest : public PluginTest {
protected:
    /// The name's address as a slot holds it; an empty slot is null.
    const void *slot(const char *name) const { return name == nullptr ? nullptr : host_.symbol(name); }

    void expect_row(const ExpectedRow &expected, const SYSDT_DispatchRow &row) const
    {
        SCOPED_TRACE(std::string(expected.name));
        EXPECT_EQ(expected.kind, row.kind);
        std::string padded(expected.name);
        padded.resize(sizeof row.name, '\0');
        EXPECT_EQ(0, std::memcmp(padded.data(), row.name, sizeof row.name));
        const std::array<const void *, 7> slots{
            reinterpret_cast<const void *>(row.formatIn), reinterpret_cast<const void *>(row.formatOut),
            reinterpret_cast<const void *>(row.check),    reinterpret_cast<const void *>(row.help),
            reinterpret_cast<const void *>(row.compare),  reinterpret_cast<const void *>(row.luaSet),
            reinterpret_cast<const void *>(row.luaGet)};
        for (std::size_t i = 0; i < slots.size(); ++i) {
            const char *const name = expected.callbacks[i];
            EXPECT_EQ(slot(name), slots[i]) << (name == nullptr ? "an empty slot" : name);
            EXPECT_EQ(name == nullptr, slots[i] == nullptr) << i;
        }
    }
};

TEST_F(DispatchTest, PrefixRowsStandInOrderWithEverySlot)
{
    static_assert(std::size(prefix_rows) == SYSDT_BOL_KINDS);
    const auto *table = static_cast<const SYSDT_DispatchRow *>(host_.symbol("g_astBOL_PREFIX_ProcTable"));
    ASSERT_NE(nullptr, table);
    for (const ExpectedRow &expected : prefix_rows)
        expect_row(expected, table[expected.kind]);
}

TEST_F(DispatchTest, TheDistinguisherHasOneRow)
{
    const auto *table = static_cast<const SYSDT_DispatchRow *>(host_.symbol("g_astBOL_RD_ProcTable"));
    ASSERT_NE(nullptr, table);
    expect_row(rd_rows[0], table[0]);
}

TEST_F(DispatchTest, EveryKindHasItsScriptReader)
{
    static_assert(std::size(readers) == SYSDT_BOL_KINDS);
    const auto *table = static_cast<const SYSDT_ScriptReadRow *>(host_.symbol("g_astBOL_PREFIX_LuaGetTable"));
    ASSERT_NE(nullptr, table);
    for (std::uint32_t kind = 0; kind < SYSDT_BOL_KINDS; ++kind) {
        EXPECT_EQ(kind, table[kind].index);
        ASSERT_NE(nullptr, slot(readers[kind])) << readers[kind];
        EXPECT_EQ(slot(readers[kind]), reinterpret_cast<const void *>(table[kind].reader)) << readers[kind];
    }
}

} // namespace

} // namespace bgpdt::test
