// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The reader of the vectors takes what their grammar allows and reports everything else.
#include <string>

#include <gtest/gtest.h>

#include "bgp_datatype/host.h"
#include "support/vector_file.hpp"

namespace bgpdt::test::vector_file {

namespace {

Vectors read_lines(const std::string &lines)
{
    Vectors vectors;
    read_vectors(vectors, "type ASNUM\n" + lines, "x.vec");
    return vectors;
}

Line only_line(const std::string &lines)
{
    const Vectors vectors = read_lines(lines);
    for (const std::string &error : vectors.errors)
        ADD_FAILURE() << error;
    EXPECT_EQ(1U, vectors.lines.size()) << lines;
    return vectors.lines.empty() ? Line{} : vectors.lines[0];
}

Bytes bytes_of(const std::string &word) { return only_line("skip " + word).bytes; }
std::string text_of(const std::string &word) { return only_line("help " + word).text; }
std::vector<std::string> steps_of(const std::string &word) { return only_line("tables - " + word).steps; }
std::string script_of(const std::string &word) { return to_text(only_line("noget " + word + " PARAM").script); }

TEST(VectorFile, Texts)
{
    EXPECT_EQ("", text_of("\"\""));
    EXPECT_EQ("a\"b\\c\td\ne\rf\x7f", text_of(R"("a\"b\\c\td\ne\rf\x7F")"));
    EXPECT_EQ("ababab", text_of("\"ab\"*3"));
    EXPECT_EQ("[[[x", text_of("\"[\"*3\"x\""));
    EXPECT_EQ("a#b", text_of("\"a#b\" # a comment"));
    EXPECT_EQ("", text_of("\"ab\"*0"));
}

TEST(VectorFile, Bytes)
{
    EXPECT_EQ((Bytes{}), bytes_of("-"));
    EXPECT_EQ((Bytes{0, 0x64, 0xFB}), bytes_of("0064_fB"));
    EXPECT_EQ((Bytes{1, 0, 0, 0, 2}), bytes_of("01_00*3_02"));
    EXPECT_EQ((Bytes{1, 2, 1, 2, 3}), bytes_of("(01_02)*2_03"));
    EXPECT_EQ((Bytes{1, 2, 2, 1, 2, 2}), bytes_of("(0102*2)*2"));
}

TEST(VectorFile, ScriptValues)
{
    EXPECT_EQ("{ a = 100, b = -1 }", script_of("{ a = 100, b=-1 }"));
    EXPECT_EQ("{ 0, 0, 0, 1 }", script_of("{0, 0*2, 1}"));
    EXPECT_EQ("{ { x = 1 }, { x = 1 } }", script_of("{{x=1}*2}"));
    EXPECT_EQ("{ a = \"x\", b = true, c = nil, d = { } }", script_of(R"({a = "x", b = true, c = nil, d = {}})"));
    EXPECT_EQ("7", script_of("7"));
    EXPECT_EQ("nil", script_of("nil"));
    EXPECT_EQ("255", script_of("0xff"));
    EXPECT_EQ("1.500000", script_of("1.5"));
    EXPECT_EQ("\"x\"", script_of("\"x\""));
}

TEST(VectorFile, TheMakingOfTables)
{
    using Steps = std::vector<std::string>;
    EXPECT_EQ((Steps{}), steps_of("-"));
    EXPECT_EQ((Steps{"(0,3)", "a", "b"}), steps_of("3: a b"));
    EXPECT_EQ((Steps{"(0,1)", "(2,0)", "[1]", "[2]", "a", "b"}), steps_of("1: a[2] b"));
    EXPECT_EQ((Steps{"(0,1)", "(0,2)", "b", "c", "a"}), steps_of("1: a(2: b c)"));
    EXPECT_EQ((Steps{"(0,1)", "(2,0)", "(0,1)", "b", "[1]", "(0,1)", "b", "[2]", "a"}), steps_of("1: a[2](1: b)"));
    EXPECT_EQ((Steps{"(1,0)", "[1]"}), steps_of("[1]"));
}

TEST(VectorFile, Modes)
{
    EXPECT_EQ((std::vector<std::uint8_t>{2}), only_line("nohelp").modes);
    EXPECT_EQ((std::vector<std::uint8_t>{0, 3, 255}), only_line("nohelp@0,3,255").modes);
}

TEST(VectorFile, StatusesAndOrders)
{
    EXPECT_EQ(static_cast<std::int32_t>(SYSDT_ERR_TOO_LONG), only_line("check - TOO_LONG").status);
    EXPECT_EQ(0, only_line("check - 0").status);
    EXPECT_EQ(-1, only_line("cmp 00 01 -1").status);
    EXPECT_EQ(1, only_line("cmp 00 01 1").status);
    EXPECT_EQ(static_cast<std::int32_t>(SYSDT_ERR_FAIL), only_line("cmp 00 01 FAIL").status);
    EXPECT_EQ(Fate::released, only_line("noout 00 FAIL released").fate);
}

TEST(VectorFile, OptionalWords)
{
    EXPECT_FALSE(only_line("noget {} PARAM").result.has_value());
    EXPECT_EQ((Bytes{1}), only_line("noget {} PARAM 01").result.value());
    EXPECT_TRUE(only_line("in \"x\" 00 !reprint").marked);
    EXPECT_EQ("SYSDT_Str2AsNum", only_line("fn SYSDT_Str2AsNum \"1\" 0 01").function);
}

TEST(VectorFile, LinesGoOn)
{
    EXPECT_EQ((Bytes{0, 1}), only_line("skip \\\n   00_\\\n   01\n").bytes);
    EXPECT_EQ("ab", only_line("help \"a\"\\\n   \"b\"\n").text);
    EXPECT_EQ(3, only_line("\nskip \\\n 00\n").number);
    EXPECT_EQ("x.vec:2: no blank before '\"x\" 0'", read_lines("fn A\\\n \"x\" 0\n").errors.at(0));
}

TEST(VectorFile, Subjects)
{
    Vectors vectors;
    read_vectors(vectors, "row NG_TYPE_4-3\nreports 0x117 89\nnohelp\nrow RD:RT\nnohelp\n", "x.vec");
    ASSERT_EQ(2U, vectors.lines.size());
    EXPECT_EQ("NG_TYPE_4-3", vectors.lines[0].subject);
    EXPECT_TRUE(vectors.lines[0].row);
    EXPECT_EQ(0x117, vectors.lines[0].reports.value().kind);
    EXPECT_EQ(89, vectors.lines[0].reports.value().length);
    EXPECT_EQ("RD:RT", vectors.lines[1].subject);
    EXPECT_FALSE(vectors.lines[1].reports.has_value());
}

TEST(VectorFile, EveryMistakeIsReportedWithItsLine)
{
    for (const char *line : {"inn \"1\" 00",
                             "in",
                             "in \"1\"",
                             "in \"1\" 00 11",
                             "in \"1 00",
                             "in 1 00",
                             "in \"\\q\" 00",
                             "in \"\\x1\" 00",
                             "in \"1\"x 00",
                             "in \"1\" 0",
                             "in \"1\" 0g",
                             "in \"1\" 00*",
                             "in \"1\" 00*x",
                             "in \"1\" (00",
                             "in \"1\" 00)",
                             "in \"1\" 00 !reget",
                             "in \"1\" 00 !",
                             "in@ \"1\" 00",
                             "in@256 \"1\" 00",
                             "in@1, \"1\" 00",
                             "in@x \"1\" 00",
                             "bad \"1\"",
                             "bad \"1\" FAILED",
                             "bad \"1\" 1",
                             "bad \"1\" fail",
                             "check 00",
                             "check@2 00 0",
                             "check 00 0 0",
                             "cmp 00 01",
                             "cmp 00 01 2",
                             "cmp 00 0",
                             "noout 00 FAIL",
                             "noout 00 FAIL lost",
                             "set 00 {",
                             "set 00 { a = }",
                             "set 00 { a 1 }",
                             "set 00 { 1 2 }",
                             "set 00 { a = 1*2 }",
                             "set 00 x",
                             "set 00 { 1..2 }",
                             "tables 00",
                             "tables 00 a",
                             "tables 00 1 a",
                             "tables 00 x: a",
                             "tables 00 1: a[]",
                             "tables 00 1: a[2",
                             "tables 00 1: a(b)",
                             "tables 00 1: a(1: b",
                             "tables 00 1: a, b",
                             "tables 00 - 1: a",
                             "tables@2 00 -",
                             "get {}",
                             "swap 00",
                             "help",
                             "help STRING",
                             "nohelp x",
                             "fn \"1\" 0 00",
                             "fn NAME \"1\"",
                             "type",
                             "type A B",
                             "reports 1",
                             "reports 0x10000 1",
                             "reports x 1",
                             "skip 00*99999999"}) {
        const Vectors vectors = read_lines(std::string("\n") + line + "\n");
        EXPECT_TRUE(vectors.lines.empty()) << line;
        ASSERT_EQ(1U, vectors.errors.size()) << line;
        EXPECT_TRUE(vectors.errors[0].starts_with("x.vec:3: ")) << vectors.errors[0];
    }
}

TEST(VectorFile, ALineNeedsASubject)
{
    Vectors vectors;
    read_vectors(vectors, "nohelp\n", "x.vec");
    EXPECT_EQ(1U, vectors.errors.size());
    EXPECT_TRUE(vectors.lines.empty());
}

} // namespace

} // namespace bgpdt::test::vector_file
