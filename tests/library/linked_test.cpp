// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// The plug-in is in the program: none is loaded, whatever the environment names.
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "opened.hpp"

namespace bgpdt::test {
namespace {

TEST(Linked, NoPluginIsLoaded)
{
    setenv("BGPDT_PLUGIN", "/nowhere/plugin.so", 1);
    const Library library;
    EXPECT_EQ(bgpdt_type_count(library.get()), 33U);
    std::ifstream maps("/proc/self/maps");
    const std::string loaded{std::istreambuf_iterator<char>(maps), {}};
    EXPECT_NE(loaded.find("libc.so"), std::string::npos);
    EXPECT_EQ(loaded.find("libbgp_datatype"), std::string::npos);
    EXPECT_EQ(loaded.find("libbgpdt"), std::string::npos);
}

TEST(Linked, NoOtherIsTaken)
{
    Error error;
    bgpdt_library *library = nullptr;
    const bgpdt_options options{sizeof options, {BGPDT_BUILT_PLUGIN, sizeof BGPDT_BUILT_PLUGIN - 1}, {}};
    EXPECT_EQ(bgpdt_open(&options, &library, error.out()), BGPDT_NO_PLUGIN);
    EXPECT_EQ(string_of(error->message), "the plug-in is linked in: no other is loaded");
}

} // namespace
} // namespace bgpdt::test
