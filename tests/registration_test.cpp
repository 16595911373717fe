// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the plug-in registers, and in which order.
#include <algorithm>
#include <cstring>
#include <dlfcn.h>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "host/host.hpp"
#include "support/expected_records.hpp"
#include "support/registry.hpp"
#include "support/setting.hpp"

namespace bgpdt::test {

namespace {

std::vector<ExpectedRecord> expected_all()
{
    std::vector<ExpectedRecord> records(expected::name_index_records.begin(), expected::name_index_records.end());
    std::ranges::copy(expected::extended_records, std::back_inserter(records));
    return records;
}

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
        return table<SYSDT_Record>("g_astBgpDataTypeNameIndexDefineTbl", expected::name_index_records.size());
    }
    std::span<const SYSDT_Record> extended_table() const
    {
        return table<SYSDT_Record>("g_astBgpDataTypeExtendDefineTbl", expected::extended_records.size());
    }
    /// The plug-in's own symbol, or the host's.
    const void *symbol(const char *name) const
    {
        if (name == nullptr)
            return nullptr;
        const void *own = host_.symbol(name);
        return own != nullptr ? own : dlsym(RTLD_DEFAULT, name);
    }
    void expect_record(const ExpectedRecord &expected, const SYSDT_Record &record) const;
};

std::vector<const void *> callbacks(const SYSDT_Record &record)
{
    const auto address = [](auto *function) { return reinterpret_cast<const void *>(function); };
    return {address(record.formatIn), address(record.formatOut), address(record.check),  address(record.help),
            address(record.compare),  address(record.luaSet),    address(record.luaGet), address(record.endian)};
}

void RegistrationTest::expect_record(const ExpectedRecord &expected, const SYSDT_Record &record) const
{
    EXPECT_EQ(expected.head.type_id, record.typeId);
    EXPECT_EQ(expected.head.length, record.dataLength);
    EXPECT_EQ(expected.head.kind, record.baseKind);
    std::string padded(expected.head.name);
    padded.resize(sizeof record.name);
    EXPECT_EQ(padded, std::string(record.name, sizeof record.name));
    EXPECT_EQ(nullptr, record.reserved);
    const std::vector<const void *> slots = callbacks(record);
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        const char *name = expected.callbacks[slot];
        EXPECT_EQ(symbol(name), slots[slot]) << (name == nullptr ? "an empty slot" : name);
        EXPECT_EQ(name == nullptr, slots[slot] == nullptr) << (name == nullptr ? "an empty slot" : name);
    }
}

TEST_F(RegistrationTest, HandsOverTheExpectedRecordsInOrder)
{
    const std::vector<ExpectedRecord> expected = expected_all();
    const auto types = host_.types();
    ASSERT_EQ(expected.size(), types.size());
    for (std::size_t i = 0; i < types.size(); ++i) {
        SCOPED_TRACE(expected[i].head.name);
        expect_record(expected[i], *types[i]);
    }
    EXPECT_TRUE(host_.diagnostics().empty());
}

TEST_F(RegistrationTest, HandsOverTheExportedTables)
{
    EXPECT_EQ(expected::extended_records.size(), SYSDT_EXTEND_TYPE_COUNT);
    EXPECT_EQ(expected::name_index_records.size(), SYSDT_NAME_INDEX_TYPE_COUNT);
    std::vector<const SYSDT_Record *> rows;
    for (const SYSDT_Record &row : name_index_table())
        rows.push_back(&row);
    for (const SYSDT_Record &row : extended_table())
        rows.push_back(&row);
    const auto types = host_.types();
    EXPECT_EQ(rows, std::vector<const SYSDT_Record *>(types.begin(), types.end()));
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
        ASSERT_EQ(expected_all().size(), registry.calls.size());
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
    const std::vector<ExpectedRecord> expected = expected_all();
    const std::size_t refused = std::min<std::size_t>(8 + 4, expected.size() - 1);
    const std::uint16_t type_id = expected[refused].head.type_id;
    const host::Host host(plugin_path(),
                          [&](const SYSDT_Record &record) { return record.typeId == type_id ? 5U : SYSDT_OK; });
    EXPECT_EQ(expected.size() - 1, host.types().size());
    EXPECT_EQ(nullptr, host.find(expected[refused].head.name));
    ASSERT_EQ(1U, host.diagnostics().size());
    EXPECT_EQ(210U, host.diagnostics()[0].line);
    EXPECT_EQ("RegisterDataTypeExt Ret:5", host.diagnostics()[0].message);
}

} // namespace

} // namespace bgpdt::test
