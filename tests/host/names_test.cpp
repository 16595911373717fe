// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "host/host.hpp"

namespace {

using bgpdt::host::Host;
using bgpdt::host::HostError;

std::filesystem::path fresh_folder()
{
    std::string path = std::filesystem::temp_directory_path() / "bgpdt-host-XXXXXX";
    if (mkdtemp(path.data()) == nullptr)
        throw std::filesystem::filesystem_error("mkdtemp", path, std::error_code(errno, std::generic_category()));
    return path;
}

class NamesFile : public testing::Test {
protected:
    ~NamesFile() override { std::filesystem::remove_all(folder); }

    void load(std::string_view content)
    {
        std::ofstream(file, std::ios::binary) << content;
        host.load_names(file);
    }

    /// What loading the content complains about; empty when it does not.
    std::string complaint(std::string_view content)
    {
        try {
            load(content);
        } catch (const HostError &error) {
            return error.what();
        }
        return {};
    }

    std::string print(std::uint32_t index)
    {
        const auto *const bytes = reinterpret_cast<const std::uint8_t *>(&index);
        return std::string(host.print(*type, {bytes, sizeof index}, 2).text());
    }

    /// The index behind the text, -1 when it is refused.
    std::int64_t parse(std::string_view text)
    {
        const bgpdt::host::Converted converted = host.parse(*type, text, 2);
        if (converted.status == SYSDT_ERR_INVALID_VALUE)
            return -1;
        EXPECT_EQ(converted.status, SYSDT_OK);
        std::uint32_t index = 0;
        std::copy(converted.data.begin(), converted.data.end(), reinterpret_cast<std::uint8_t *>(&index));
        return index;
    }

    const std::filesystem::path folder = fresh_folder();
    const std::filesystem::path file = folder / "names";
    Host host{HOST_TEST_PLUGIN};
    const SYSDT_Record *const type = host.find("INDEX");
};

TEST_F(NamesFile, NamesStandForTheirIndexes)
{
    load("1 public\n"
         "4294967295 vpn-red\n");
    EXPECT_EQ(print(1), "public");
    EXPECT_EQ(print(4294967295), "vpn-red");
    EXPECT_EQ(print(2), "2");
    EXPECT_EQ(parse("public"), 1);
    EXPECT_EQ(parse("  vpn-red "), 4294967295);
    EXPECT_EQ(parse("1"), 1);
    EXPECT_EQ(parse("2"), 2);
    EXPECT_EQ(parse("Public"), -1); // letter case counts
    EXPECT_EQ(parse("vpn-blue"), -1);
    EXPECT_EQ(parse(""), -1);
}

TEST_F(NamesFile, ToleratesBlankLinesCommentsAndAnyWhiteSpace)
{
    load("# the names\r\n"
         "\r\n"
         "   \t\n"
         "\t7\tseven # lucky\n"
         "8 eight#comment\r\n"
         "009 nine");
    EXPECT_EQ(print(7), "seven");
    EXPECT_EQ(print(8), "eight");
    EXPECT_EQ(print(9), "nine");
    load("");
    EXPECT_EQ(print(7), "7"); // the names before are replaced
}

TEST_F(NamesFile, ANameOfDigitsComesBeforeTheIndex)
{
    load("1 2\n2 1\n");
    EXPECT_EQ(parse("2"), 1);
    EXPECT_EQ(print(1), "2");
    EXPECT_EQ(parse("1"), 2);
}

TEST_F(NamesFile, TellsWhereItIsWrong)
{
    load("5 kept\n");
    struct {
        const char *content;
        const char *line;
        const char *word;
    } const samples[] = {
        {"1 a\nx b\n", ":2: ", "\"x\""},
        {"-1 a\n", ":1: ", "\"-1\""},
        {"4294967296 a\n", ":1: ", "\"4294967296\""},
        {"1 a\n\n2\n", ":3: ", "index 2 has no name"},
        {"2 # b\n", ":1: ", "index 2 has no name"},
        {"1 a b\n", ":1: ", "\"b\""},
        {"1 a\n1 b\n", ":2: ", "\"a\""},
        {"1 a\n2 a\n", ":2: ", "index 1"},
        {"name 1", ":1: ", "\"name\""},
    };
    for (const auto &[content, line, word] : samples) {
        const std::string text = complaint(content);
        EXPECT_EQ(text.find(file.string() + line), 0u) << text;
        EXPECT_NE(text.find(word), std::string::npos) << text;
        EXPECT_EQ(print(5), "kept"); // nothing of the bad file is taken
        EXPECT_EQ(print(1), "1");
    }
}

TEST_F(NamesFile, NamesFitATextBlock)
{
    const std::string longest(255, 'x');
    load("1 " + longest + "\n");
    EXPECT_EQ(print(1), longest);
    EXPECT_EQ(parse(longest), 1);
    EXPECT_NE(complaint("1 x" + longest + "\n"), "");
}

TEST_F(NamesFile, MustBeReadable)
{
    EXPECT_THROW(host.load_names(folder / "missing"), HostError);
    EXPECT_THROW(host.load_names(folder), HostError); // no file but a folder
    try {
        host.load_names(folder / "missing");
    } catch (const HostError &error) {
        EXPECT_NE(std::string(error.what()).find("missing: No such file"), std::string::npos) << error.what();
    }
}

} // namespace
