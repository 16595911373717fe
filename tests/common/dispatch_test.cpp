// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The dispatcher's walk over rows that no table has.
#include "common/dispatch.hpp"

#include <gtest/gtest.h>

using namespace bgpdt;

namespace {

std::uint32_t refuse(const void *, std::uint32_t, std::uint32_t, const void *) { return SYSDT_ERR_LENGTH; }
std::uint32_t take_four(const void *, std::uint32_t, std::uint32_t length, const void *)
{
    return length == 4 ? SYSDT_OK : SYSDT_ERR_FAIL;
}

constexpr auto check = [](const auto &rows, std::uint32_t length) {
    return offer<&SYSDT_DispatchRow::check>(rows, nullptr, 0U, length, nullptr);
};

TEST(Offer, skips_rows_without_the_slot)
{
    SYSDT_DispatchRow rows[3]{};
    EXPECT_EQ(SYSDT_ERR_INVALID_VALUE, check(rows, 4));
    rows[0].check = refuse;
    rows[2].check = take_four;
    EXPECT_EQ(SYSDT_OK, check(rows, 4));
    EXPECT_EQ(SYSDT_ERR_INVALID_VALUE, check(rows, 5));
}

} // namespace
