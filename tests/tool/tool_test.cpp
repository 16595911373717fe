// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Runs the command lines of *.cases with the shell and compares what they answer.
///
///     # what the case is for
///     $ a command line; bgpdt is the program under test
///     > a line of standard output; without any '>', '~' or '=' it must be empty
///     ~ a part of standard output
///     = /json/pointer and the JSON value there; standard output must then be one line of JSON
///     ! a part of standard error; without any it must be empty
///     ? the exit status, 0 unless it is said
///
/// Whatever line of the two outputs is a JSON object with a schema is valid by docs/bgpdt.schema.json.
///
/// Environment: BGPDT names the program, BGPDT_PLUGIN the plug-in, SHAPES the plug-in of shapes.cpp.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "json_schema.hpp"

namespace {

namespace fs = std::filesystem;

struct Case {
    std::string place;
    std::string command;
    std::vector<std::string> lines;
    std::vector<std::string> parts;
    std::vector<std::string> values;
    std::vector<std::string> errors;
    int exit = 0;
};

void add(Case &test, char mark, const std::string &rest, const std::string &place)
{
    switch (mark) {
    case '>': test.lines.push_back(rest); return;
    case '~': test.parts.push_back(rest); return;
    case '=': test.values.push_back(rest); return;
    case '!': test.errors.push_back(rest); return;
    case '?': test.exit = std::stoi(rest); return;
    default: throw std::runtime_error(place + ": a line begins with none of # $ > ~ = ! ?");
    }
}

std::vector<Case> read_cases(const fs::path &file)
{
    std::ifstream stream(file);
    std::vector<Case> cases;
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        const std::string place = file.filename().string() + ":" + std::to_string(number);
        const std::string rest = line.size() > 2 ? line.substr(2) : "";
        if (line.empty() || line[0] == '#')
            continue;
        if (line[0] == '$') {
            Case &test = cases.emplace_back();
            test.place = place;
            test.command = rest;
        } else if (cases.empty()) {
            throw std::runtime_error(place + ": a command must come first");
        } else {
            add(cases.back(), line[0], rest, place);
        }
    }
    return cases;
}

std::string contents(const fs::path &file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

void expect_json(const Case &test, const std::string &out)
{
    const auto json = nlohmann::json::parse(out, nullptr, false);
    ASSERT_FALSE(json.is_discarded()) << out;
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 1);
    for (const std::string &value : test.values) {
        const std::size_t blank = value.find(' ');
        const nlohmann::json::json_pointer pointer(value.substr(0, blank));
        ASSERT_TRUE(json.contains(pointer)) << pointer << " in " << out;
        EXPECT_EQ(json[pointer], nlohmann::json::parse(value.substr(blank + 1))) << pointer << " in " << out;
    }
}

std::size_t validated = 0;

/// Answers of the tool in JSON.
void expect_valid(const std::string &output)
{
    static const bgpdt::test::JsonSchema schema(nlohmann::json::parse(contents("../../docs/bgpdt.schema.json")));
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        const auto json = nlohmann::json::parse(line, nullptr, false);
        if (json.is_object() && json.contains("schema")) {
            EXPECT_EQ(schema.fault(json), "") << line;
            ++validated;
        }
    }
}

class CommandLine : public testing::Test {
public:
    explicit CommandLine(const Case &test) : test_(test) {}

    void TestBody() override
    {
        const fs::path out = fs::temp_directory_path() / ("tool_test." + std::to_string(getpid()));
        const fs::path err = out.string() + ".err";
        const std::string redirected = "{ " + test_.command + "\n} >'" + out.string() + "' 2>'" + err.string() + "'";
        const int status = std::system(redirected.c_str()); // NOLINT(cert-env33-c): the cases are the shell's
        const std::string printed = contents(out);
        const std::string complaints = contents(err);
        fs::remove(out);
        fs::remove(err);

        SCOPED_TRACE(test_.place + ": " + test_.command + "\n" + complaints);
        ASSERT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), test_.exit);
        expect_output(printed);
        expect_valid(printed);
        expect_valid(complaints);
        EXPECT_EQ(complaints.empty(), test_.errors.empty());
        for (const std::string &part : test_.errors)
            EXPECT_NE(complaints.find(part), std::string::npos) << "must say: " << part;
    }

private:
    void expect_output(const std::string &printed) const
    {
        for (const std::string &part : test_.parts)
            EXPECT_NE(printed.find(part), std::string::npos) << "must print: " << part << "\nprinted: " << printed;
        if (!test_.values.empty()) {
            expect_json(test_, printed);
        } else if (test_.parts.empty()) {
            std::string wanted;
            for (const std::string &line : test_.lines)
                wanted += line + "\n";
            EXPECT_EQ(printed, wanted);
        }
    }

    const Case &test_;
};

} // namespace

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const char *program = std::getenv("BGPDT");
    if (argc != 2 || program == nullptr) {
        std::cerr << "usage: BGPDT=<program> tool_test <folder of the cases>\n";
        return 2;
    }
    const std::string path = fs::path(program).parent_path().string() + ":" + std::getenv("PATH");
    setenv("PATH", path.c_str(), 1);
    fs::current_path(argv[1]);

    std::vector<std::vector<Case>> files;
    for (const fs::directory_entry &entry : fs::directory_iterator("."))
        if (entry.path().extension() == ".cases")
            files.push_back(read_cases(entry.path()));
    for (const auto &file : files) {
        for (const Case &test : file) {
            testing::RegisterTest("CommandLine", test.place.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                                  [&test]() -> testing::Test * { return new CommandLine(test); });
        }
    }
    const int failed = files.empty() ? 2 : RUN_ALL_TESTS();
    constexpr std::size_t least = 150; // of all cases; a filter runs fewer
    return failed == 0 && validated < least && testing::GTEST_FLAG(filter) == "*" ? 1 : failed;
}
