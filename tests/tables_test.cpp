// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Nothing stands twice in the plug-in's tables, and everything in its place. What stands there is told by
/// interface/interface.txt.
#include <algorithm>
#include <cstring>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "support/plugin_test.hpp"
#include "support/subject.hpp"

namespace bgpdt::test::tables {

namespace {

class TablesTest : public PluginTest {
protected:
    /// The name in the field, which is padded with NUL.
    template <class Row>
    static std::string name_of(const Row &row)
    {
        const std::string name(row.name, strnlen(row.name, sizeof row.name));
        std::string padded = name;
        padded.resize(sizeof row.name);
        EXPECT_EQ(padded, std::string(row.name, sizeof row.name));
        return name;
    }
};

TEST_F(TablesTest, NoTypeIsRegisteredTwice)
{
    std::set<std::uint16_t> ids;
    std::set<std::string> names;
    for (const SYSDT_Record *record : host_.types()) {
        EXPECT_TRUE(ids.insert(record->typeId).second) << record->typeId;
        EXPECT_TRUE(names.insert(name_of(*record)).second) << name_of(*record);
        EXPECT_EQ(nullptr, record->reserved) << name_of(*record);
    }
    EXPECT_EQ(SYSDT_NAME_INDEX_TYPE_COUNT + SYSDT_EXTEND_TYPE_COUNT, ids.size());
}

TEST_F(TablesTest, EveryRowStandsAtItsKind)
{
    for (const char *dispatcher : {"BOLPREFIX", "BOLRD"}) {
        std::uint32_t kind = 0;
        std::set<std::string> names;
        for (const SYSDT_DispatchRow &row : dispatch_rows(host_, dispatcher)) {
            EXPECT_EQ(kind++, row.kind);
            EXPECT_TRUE(names.insert(name_of(row)).second) << name_of(row);
        }
        EXPECT_NE(0U, kind) << dispatcher;
    }
}

TEST_F(TablesTest, EveryKindHasItsScriptReader)
{
    const auto *table = static_cast<const SYSDT_ScriptReadRow *>(host_.symbol("g_astBOL_PREFIX_LuaGetTable"));
    ASSERT_NE(nullptr, table);
    for (std::uint32_t kind = 0; kind < SYSDT_BOL_KINDS; ++kind) {
        EXPECT_EQ(kind, table[kind].index);
        EXPECT_NE(nullptr, table[kind].reader);
    }
}

/// No group of a BGP-LS table stands behind a row that takes it too: it would never be found.
TEST_F(TablesTest, EveryKeywordCanBeFound)
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

} // namespace bgpdt::test::tables
