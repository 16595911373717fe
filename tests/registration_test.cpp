// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the plug-in registers, and in which order.
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "host/host.hpp"
#include "support/registry.hpp"
#include "support/setting.hpp"

namespace bgpdt::test::registration {

namespace {

constexpr std::size_t all_types = SYSDT_NAME_INDEX_TYPE_COUNT + SYSDT_EXTEND_TYPE_COUNT;

class RegistrationTest : public testing::Test {
protected:
    host::Host host_{plugin_path()};

    std::uint32_t call(const char *function, std::uint32_t handle) const
    {
        return reinterpret_cast<std::uint32_t (*)(std::uint32_t)>(host_.symbol(function))(handle);
    }
    template <class Element>
    std::span<const Element> table(const char *name, std::size_t count) const
    {
        return {static_cast<const Element *>(host_.symbol(name)), count};
    }
    std::span<const SYSDT_Record> name_index_table() const
    {
        return table<SYSDT_Record>("g_astBgpDataTypeNameIndexDefineTbl", SYSDT_NAME_INDEX_TYPE_COUNT);
    }
    std::span<const SYSDT_Record> extended_table() const
    {
        return table<SYSDT_Record>("g_astBgpDataTypeExtendDefineTbl", SYSDT_EXTEND_TYPE_COUNT);
    }
};

TEST_F(RegistrationTest, HandsOverTheExportedTables)
{
    std::vector<const SYSDT_Record *> rows;
    for (const SYSDT_Record &row : name_index_table())
        rows.push_back(&row);
    for (const SYSDT_Record &row : extended_table())
        rows.push_back(&row);
    const auto types = host_.types();
    EXPECT_EQ(rows, std::vector<const SYSDT_Record *>(types.begin(), types.end()));
    EXPECT_TRUE(host_.diagnostics().empty());
}

TEST_F(RegistrationTest, RecordsHaveTheSizeOfTheBoundary)
{
    EXPECT_EQ(sizeof(void *) == 4 ? 60U : 96U, sizeof(SYSDT_Record));
    const auto rows = name_index_table();
    EXPECT_EQ(sizeof(SYSDT_Record), static_cast<std::size_t>(reinterpret_cast<const char *>(&rows[1]) -
                                                             reinterpret_cast<const char *>(rows.data())));
}

TEST_F(RegistrationTest, PassesTheHandleOn)
{
    for (const std::uint32_t handle : {0U, 1U, 0x80000001U, 0xFFFFFFFFU}) {
        Registry registry;
        EXPECT_EQ(0U, call("Bgp_InitDataType", handle));
        ASSERT_EQ(all_types, registry.calls.size());
        for (const Registration &registration : registry.calls)
            EXPECT_EQ(handle, registration.handle);
    }
}

TEST_F(RegistrationTest, EachFunctionRegistersItsOwnTable)
{
    const auto registered_by = [&](const char *function) {
        Registry registry;
        EXPECT_EQ(0U, call(function, 7));
        return registry.calls;
    };
    const auto expect_table = [](std::span<const SYSDT_Record> rows, const std::vector<Registration> &calls) {
        ASSERT_EQ(rows.size(), calls.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(&rows[i], calls[i].record);
        }
    };
    expect_table(name_index_table(), registered_by("BGP_RegisterDataType"));
    expect_table(extended_table(), registered_by("BGP_RegisterExtendDataType"));
}

TEST(Registration, AHostMissesOnlyTheTypesThatItRefuses)
{
    const char *const refused = "BGPLSPREFIX";
    const host::Host host(
        plugin_path(), [&](const SYSDT_Record &record) { return std::string(record.name) == refused ? 5U : SYSDT_OK; });
    EXPECT_EQ(all_types - 1, host.types().size());
    EXPECT_EQ(nullptr, host.find(refused));
    ASSERT_EQ(1U, host.diagnostics().size());
    EXPECT_EQ(210U, host.diagnostics()[0].line);
    EXPECT_EQ("RegisterDataTypeExt Ret:5", host.diagnostics()[0].message);
}

} // namespace

} // namespace bgpdt::test::registration
