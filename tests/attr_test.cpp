// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Client VRF names outside their structured form, and the printer of SID structures.
#include <cstring>
#include <dlfcn.h>
#include <string>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "support/conversion.hpp"
#include "support/plugin_test.hpp"

namespace bgpdt::test::attr {

namespace {

bool numbers_fail = false; ///< PAL_Uint32ToStr writes nothing then

class AttrTest : public PluginTest {
protected:
    AttackHost &services_ = AttackHost::instance();
    SYSDT_FormatOut *format_out_ = exported<SYSDT_FormatOut>("SYS_DT_APPCVRFNAME_FormatOut");
    const SYSDT_CVrfName red_{"red", 7, 1};

    Converted call(std::uint8_t mode, std::uint32_t type, std::uint32_t size, void *block = nullptr)
    {
        Context context(mode);
        Outputs outputs(block);
        services_.begin();
        const std::uint32_t status =
            format_out_(context.get(), type, size, &red_, &outputs.kind, &outputs.length, &outputs.data);
        EXPECT_TRUE(outputs.intact());
        return {status, outputs.kind, outputs.length, outputs.data};
    }

    std::string taken(const Converted &result)
    {
        const Bytes block = services_.collect(result.data).value_or(Bytes{});
        EXPECT_EQ(std::vector<std::string>{}, services_.settle());
        const std::size_t length = std::min<std::size_t>(result.length, block.size());
        return {block.begin(), block.begin() + static_cast<std::ptrdiff_t>(length)};
    }
};

TEST_F(AttrTest, OtherModesOfAClientVrfNameAreTheHosts)
{
    for (const std::uint8_t mode : Bytes{1, 6}) {
        const Converted printed = call(mode, SYSDT_TYPE_CVRFNAME, 32);
        EXPECT_EQ(SYSDT_OK, printed.status);
        EXPECT_EQ(SYSDT_KIND_STRING, printed.kind);
        EXPECT_EQ(std::string("red\0", 4), taken(printed));
    }
    const Converted cut = call(1, 0, 2); // whatever type and length
    EXPECT_EQ(std::string("re\0", 3), taken(cut));
    const Converted copied = call(3, SYSDT_TYPE_CVRFNAME, 5);
    EXPECT_EQ(SYSDT_OK, copied.status);
    EXPECT_EQ(SYSDT_KIND_BINARY, copied.kind);
    EXPECT_EQ(std::string("red\0\0", 5), taken(copied));
    for (const std::uint8_t mode : Bytes{0, 5})
        EXPECT_EQ(SYSDT_ERR_FAIL, call(mode, SYSDT_TYPE_CVRFNAME, 32).status);
    for (const std::uint8_t mode : Bytes{4, 7, 255})
        EXPECT_EQ(SYSDT_ERR_UNSUPPORTED, call(mode, SYSDT_TYPE_CVRFNAME, 32).status);
    char block[257]; // the caller's, which mode 2 alone leaves
    EXPECT_EQ(block, call(1, SYSDT_TYPE_CVRFNAME, 32, block).data);
    EXPECT_STREQ("red", block);
}

TEST_F(AttrTest, TheStructuredFormWantsTypeAndLength)
{
    EXPECT_EQ(SYSDT_OK, call(2, SYSDT_TYPE_CVRFNAME, 40).status);
    for (const std::uint32_t type : {0U, 0x0123U, 0x10124U, 0x2401U}) {
        const Converted refused = call(2, type, 40);
        EXPECT_EQ(SYSDT_ERR_MISMATCH, refused.status);
        EXPECT_EQ(nullptr, refused.data);
        EXPECT_EQ(std::vector<std::string>{}, services_.settle());
    }
    EXPECT_EQ(SYSDT_ERR_MISMATCH, call(2, SYSDT_TYPE_CVRFNAME, 39).status);
    EXPECT_EQ(SYSDT_ERR_MISMATCH, call(2, SYSDT_TYPE_CVRFNAME, 41).status);
}

TEST_F(AttrTest, ANumberThatCannotBeWritten)
{
    numbers_fail = true;
    const Converted failed = call(2, SYSDT_TYPE_CVRFNAME, 40);
    numbers_fail = false;
    EXPECT_EQ(SYSDT_ERR_OUTPUT, failed.status);
    EXPECT_EQ(SYSDT_TYPE_CVRFNAME, failed.kind);
    EXPECT_NE(nullptr, failed.data);
    EXPECT_EQ("", taken(failed));
}

TEST_F(AttrTest, TheBuilderNeedsItsPointers)
{
    auto *build = exported<decltype(SYS_DT_CVrfName_Str2Cplx)>("SYS_DT_CVrfName_Str2Cplx");
    std::uint16_t length = 0;
    char buffer[257];
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, build(nullptr, &length, buffer));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, build(&red_, nullptr, buffer));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, build(&red_, &length, nullptr));
    EXPECT_EQ(SYSDT_OK, build(&red_, &length, buffer));
    EXPECT_EQ(4 + 2 + 4 + 4, length);
}

TEST_F(AttrTest, PrintedSidStructure)
{
    auto *print = exported<decltype(SYSDT_PrefixSidStruct2Str)>("SYSDT_PrefixSidStruct2Str");
    const SYSDT_SidStructure none{{1, 2, 3, 4, 5, 6}, 0};
    const SYSDT_SidStructure value{{1, 2, 3, 4, 5, 255}, 1};
    Guarded buffer(256);
    char *text = reinterpret_cast<char *>(buffer.data());
    std::uint32_t characters = 0;
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(nullptr, text, &characters));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(&value, nullptr, &characters));
    EXPECT_EQ(SYSDT_ERR_NULL_PTR, print(&value, text, nullptr));
    EXPECT_EQ(SYSDT_OK, print(&value, text, &characters));
    EXPECT_STREQ("1-2-3-4-5-255", text);
    EXPECT_EQ(13U, characters);
    EXPECT_EQ(SYSDT_OK, print(&none, text, &characters));
    EXPECT_STREQ("-", text);
    EXPECT_EQ(1U, characters);
    EXPECT_TRUE(buffer.intact());
}

} // namespace

} // namespace bgpdt::test::attr

#pragma GCC visibility push(default)
extern "C" uint32_t PAL_Uint32ToStr(uint32_t value, char *buffer, uint32_t base)
{
    static auto *const next = reinterpret_cast<decltype(PAL_Uint32ToStr) *>(dlsym(RTLD_NEXT, "PAL_Uint32ToStr"));
    return bgpdt::test::attr::numbers_fail ? 1 : next(value, buffer, base);
}
#pragma GCC visibility pop
