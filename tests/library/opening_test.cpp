// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// How the library is opened: with the files that are there, and those that are not.
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "opened.hpp"

namespace bgpdt::test {
namespace {

bgpdt_text text_of(std::string_view text) { return {text.data(), text.size()}; }

TEST(Opening, AgainGivesTheSame)
{
    const Library library;
    Error error;
    bgpdt_library *again = nullptr;
    EXPECT_EQ(bgpdt_open(nullptr, &again, nullptr), BGPDT_OK);
    EXPECT_EQ(again, library.get());
    bgpdt_close(again);
    EXPECT_FALSE(parsed(library.type("VRFRD"), "1:1").empty());
    const bgpdt_options other{sizeof other, text_of("/nowhere/plugin.so"), {}};
    EXPECT_EQ(bgpdt_open(&other, &again, error.out()), BGPDT_NO_PLUGIN);
    EXPECT_EQ(again, nullptr);
    EXPECT_EQ(string_of(error->message).rfind("the process has the library open with ", 0), 0U);
    const bgpdt_options same{sizeof same, text_of(BGPDT_BUILT_PLUGIN), {}};
    EXPECT_EQ(bgpdt_open(&same, &again, nullptr), BGPDT_OK);
    EXPECT_EQ(again, library.get());
    bgpdt_close(again);
    const bgpdt_options other_names{sizeof other_names, {}, text_of("/nowhere/names")};
    EXPECT_EQ(bgpdt_open(&other_names, &again, error.out()), BGPDT_NO_PLUGIN);
    EXPECT_EQ(again, nullptr);
    EXPECT_EQ(string_of(error->message), "the process has the library open with other names");
}

TEST(Opening, Fails)
{
    Error error;
    bgpdt_library *library = nullptr;
    const bgpdt_options nowhere{sizeof nowhere, text_of("/nowhere/plugin.so"), {}};
    EXPECT_EQ(bgpdt_open(&nowhere, &library, error.out()), BGPDT_NO_PLUGIN);
    EXPECT_EQ(library, nullptr);
    EXPECT_EQ(string_of(error->message).rfind("cannot load the plug-in: /nowhere/plugin.so", 0), 0U);
    const bgpdt_options no_names{sizeof no_names, text_of(BGPDT_BUILT_PLUGIN), text_of("/nowhere/names")};
    EXPECT_EQ(bgpdt_open(&no_names, &library, error.out()), BGPDT_NO_PLUGIN);
    EXPECT_NE(string_of(error->message).find("/nowhere/names"), std::string::npos);
    bgpdt_close(nullptr);
}

TEST(Opening, WithNames)
{
    const std::string file = testing::TempDir() + "bgpdt_names";
    std::ofstream(file) << "7 red\n";
    bgpdt_library *library = nullptr;
    const bgpdt_options options{sizeof options, text_of(BGPDT_BUILT_PLUGIN), text_of(file)};
    ASSERT_EQ(bgpdt_open(&options, &library, nullptr), BGPDT_OK);
    const bgpdt_type *type = nullptr;
    ASSERT_EQ(bgpdt_find(library, "PDID2PDNAME", 11, &type, nullptr), BGPDT_OK);
    EXPECT_EQ(parsed(type, "red"), (Bytes{0, 0, 0, 7}));
    EXPECT_EQ(printed(type, {0, 0, 0, 7}), "red");
    bgpdt_library *again = nullptr;
    EXPECT_EQ(bgpdt_open(&options, &again, nullptr), BGPDT_OK);
    EXPECT_EQ(again, library);
    bgpdt_close(again);
    bgpdt_close(library);
    static_cast<void>(std::remove(file.c_str()));
}

TEST(Opening, OtherNames)
{
    const Library library;
    const bgpdt_type *const type = library.type("PDID2PDNAME");
    const std::string file = testing::TempDir() + "bgpdt_other_names";
    const auto load = [&](const char *content, Error &error) {
        std::ofstream(file) << content;
        return bgpdt_load_names(library.get(), file.data(), file.size(), error.out());
    };
    Error error;
    EXPECT_EQ(load("7 red\n", error), BGPDT_OK);
    EXPECT_EQ(printed(type, {0, 0, 0, 7}), "red");
    EXPECT_EQ(load("7 blue\n", error), BGPDT_OK);
    EXPECT_EQ(printed(type, {0, 0, 0, 7}), "blue");
    EXPECT_EQ(load("seven green\n", error), BGPDT_NO_PLUGIN);
    EXPECT_NE(string_of(error->message).find("\"seven\" is no index"), std::string::npos);
    EXPECT_EQ(printed(type, {0, 0, 0, 7}), "blue");
    static_cast<void>(std::remove(file.c_str()));
}

} // namespace
} // namespace bgpdt::test
