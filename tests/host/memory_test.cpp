// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstring>

#include "host/host.hpp"
#include "test_memory.hpp"

namespace {

constexpr std::uint32_t some_handle = 17;

class Memory : public testing::Test {
protected:
    const int blocks_before = test_memory::blocks;
    ~Memory() override { EXPECT_EQ(test_memory::blocks, blocks_before); }
};

TEST_F(Memory, FreeTakesBlocksOfEitherAllocatorAndNull)
{
    void *const owned = SYS_DataTypeMallocByHandle(some_handle, 257);
    void *const plain = SYS_DataTypeMalloc(257);
    ASSERT_NE(owned, nullptr);
    ASSERT_NE(plain, nullptr);
    std::memset(owned, 1, 257);
    std::memset(plain, 2, 257);
    SYS_DataTypeFree(owned);
    SYS_DataTypeFree(plain);
    SYS_DataTypeFree(nullptr);
}

TEST_F(Memory, AnEmptyBlockIsABlock)
{
    void *const owned = SYS_DataTypeMallocByHandle(some_handle, 0);
    void *const plain = SYS_DataTypeMalloc(0);
    EXPECT_NE(owned, nullptr);
    EXPECT_NE(plain, nullptr);
    SYS_DataTypeFree(owned);
    SYS_DataTypeFree(plain);
}

TEST_F(Memory, HelpHasNullEntriesAndIsReleasedWhole)
{
    SYSDT_HelpInfo info{};
    ASSERT_EQ(SYSDT_InitHelpInfo(some_handle, &info, 3), SYSDT_OK);
    EXPECT_EQ(test_memory::last_handle, some_handle);
    ASSERT_EQ(info.count, 3u);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(info.entries[i], nullptr);
    info.entries[0] = static_cast<char *>(SYS_DataTypeMallocByHandle(some_handle, 1));
    info.entries[2] = static_cast<char *>(SYS_DataTypeMallocByHandle(some_handle, 1));
    SYSDT_ClearHelpInfo(&info);
    EXPECT_EQ(info.count, 0u);
    EXPECT_EQ(info.entries, nullptr);
    SYSDT_ClearHelpInfo(&info);
    SYSDT_ClearHelpInfo(nullptr);
}

TEST_F(Memory, HelpWithoutMemory)
{
    SYSDT_HelpInfo info{7, nullptr};
    const test_memory::Shortage shortage(0);
    EXPECT_EQ(SYSDT_InitHelpInfo(some_handle, &info, 1), SYSDT_ERR_NO_MEMORY);
    EXPECT_EQ(info.count, 0u);
    EXPECT_EQ(info.entries, nullptr);
    EXPECT_EQ(SYSDT_InitHelpInfo(some_handle, nullptr, 1), SYSDT_ERR_NULL_PTR);
}

TEST_F(Memory, HelpOfMoreThanABlockHolds)
{
    SYSDT_HelpInfo info{};
    EXPECT_EQ(SYSDT_InitHelpInfo(some_handle, &info, 0x40000000), SYSDT_ERR_NO_MEMORY); // 2^32 bytes at least
}

TEST_F(Memory, AddressesMayBeEnteredAnywhere)
{
    SYSDT_Context context{};
    const SYSDT_HelpRequest request{1, 1};
    SYSDT_HelpInfo info{};
    EXPECT_EQ(KPL_CheckBySymbolForIPV4(&context, &request, &info), SYSDT_OK);
    EXPECT_EQ(info.entries, nullptr);
}

} // namespace
