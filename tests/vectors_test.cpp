// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// One test for every line of the vectors, and one for their files.
///
/// The environment may name another plug-in (BGPDT_PLUGIN) and another folder of vectors (BGPDT_VECTORS).
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <exception>
#include <initializer_list>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "host/host.hpp"
#include "support/facts.hpp"
#include "support/setting.hpp"

namespace bgpdt::test {

namespace {

class LineTest : public testing::Test {
public:
    LineTest(const host::Host &host, const Line &line) : host_(host), line_(line) {}

    void TestBody() override
    {
        Report report;
        try {
            check_line(line_, subject_of(host_, line_), report);
        } catch (const std::exception &error) {
            report.fail(error.what());
        }
        for (const std::string &problem : report.problems())
            ADD_FAILURE_AT(line_.file.c_str(), line_.number) << line_.content << "\n" << problem;
    }

private:
    const host::Host &host_;
    const Line &line_;
};

/// The files are well-formed, and no callback and no row of the plug-in's own is without a line.
class FilesTest : public testing::Test {
public:
    FilesTest(const host::Host &host, const Vectors &vectors) : host_(host), vectors_(vectors) {}

    void TestBody() override
    {
        for (const std::string &error : vectors_.errors)
            ADD_FAILURE() << error;
        EXPECT_FALSE(vectors_.lines.empty()) << vectors_folder() << " holds no vectors";
        for (const SYSDT_Record *record : host_.types())
            expect_lines(*record);
        expect_rows("BOLPREFIX", "");
        expect_rows("BOLRD", "RD:");
    }

private:
    bool has_line(const std::string &subject, std::initializer_list<Verb> verbs) const
    {
        return std::ranges::any_of(vectors_.lines, [&](const Line &line) {
            return line.subject == subject && (verbs.size() == 0 || std::ranges::find(verbs, line.verb) != verbs.end());
        });
    }
    /// Whether the callback is the plug-in's, not the host's.
    template <class Callback>
    bool is_own(Callback *callback) const
    {
        Dl_info where{};
        Dl_info own{};
        return callback != nullptr && dladdr(reinterpret_cast<void *>(callback), &where) != 0 &&
               dladdr(host_.symbol("Bgp_InitDataType"), &own) != 0 && where.dli_fbase == own.dli_fbase;
    }
    void expect_lines(const SYSDT_Record &record) const;
    void expect_rows(const char *type, const std::string &prefix) const;

    const host::Host &host_;
    const Vectors &vectors_;
};

void FilesTest::expect_lines(const SYSDT_Record &record) const
{
    const std::string name(record.name, strnlen(record.name, sizeof record.name));
    std::string missing;
    const auto expect = [&](bool own, std::initializer_list<Verb> verbs, const char *what) {
        missing += !own || has_line(name, verbs) ? "" : std::string(" ") + what;
    };
    expect(is_own(record.formatIn), {Verb::bad}, "bad");
    expect(is_own(record.formatOut), {Verb::out, Verb::bare, Verb::copy}, "out");
    expect(is_own(record.formatOut), {Verb::noout}, "noout");
    expect(is_own(record.check), {Verb::check}, "check");
    expect(is_own(record.help), {Verb::help}, "help");
    expect(is_own(record.help), {Verb::nohelp}, "nohelp");
    expect(is_own(record.compare), {Verb::cmp}, "cmp");
    expect(is_own(record.luaSet), {Verb::set}, "set");
    expect(is_own(record.luaSet), {Verb::tables}, "tables");
    expect(is_own(record.luaGet), {Verb::get}, "get");
    expect(is_own(record.luaGet), {Verb::noget}, "noget");
    expect(is_own(record.endian), {Verb::swap}, "swap");
    EXPECT_EQ("", missing) << "are the verbs without a line about " << name;
}

void FilesTest::expect_rows(const char *type, const std::string &prefix) const
{
    for (const SYSDT_DispatchRow &row : dispatch_rows(host_, type)) {
        const std::string name = prefix + std::string(row.name, strnlen(row.name, sizeof row.name));
        EXPECT_TRUE(has_line(name, {})) << type << " has a row " << name << " and no line about it";
        EXPECT_TRUE(row.luaSet == nullptr || has_line(name, {Verb::tables}))
            << "no line tells which tables the row " << name << " of " << type << " makes";
    }
}

std::string identifier(std::string name)
{
    std::ranges::replace_if(
        name, [](unsigned char character) { return std::isalnum(character) == 0; }, '_');
    return name;
}

void register_lines(const host::Host &host, const Vectors &vectors)
{
    for (const Line &line : vectors.lines) {
        const std::string name = line.verb_name + "_line" + std::to_string(line.number);
        testing::RegisterTest(identifier(line.subject).c_str(), name.c_str(), nullptr, nullptr, line.file.c_str(),
                              line.number, [&host, &line]() -> LineTest * { return new LineTest(host, line); });
    }
    testing::RegisterTest("Vectors", "files", nullptr, nullptr, __FILE__, __LINE__,
                          [&]() -> FilesTest * { return new FilesTest(host, vectors); });
}

/// What no head of the vectors tells of a type or a row, a line each.
std::string untold(const host::Host &host)
{
    std::string untold;
    const auto expect_contract = [&](const std::string &name, const char *statement) {
        if (expectation_of(name) == nullptr)
            untold += name + ": its vectors, " + vectors_folder() + "/FAMILY/" + name + ".vec, do not begin with '" +
                      statement + " " + name + "' and a line 'contract', for which see " + vectors_folder() +
                      "/README.md\n";
    };
    for (const SYSDT_Record *record : host.types())
        if (record->formatIn != SYS_DT_UINT32IndexFormatIn)
            expect_contract(record->name, "type");
    for (const SYSDT_DispatchRow &row : dispatch_rows(host, "BOLPREFIX"))
        expect_contract(row.name, "row");
    for (const SYSDT_DispatchRow &row : dispatch_rows(host, "BOLRD"))
        expect_contract(std::string("RD:") + row.name, "row");
    return untold;
}

int run(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const host::Host host(plugin_path());
    if (const std::string missing = untold(host); !missing.empty())
        throw std::runtime_error(missing);
    const Vectors vectors = read_vector_folder(vectors_folder());
    register_lines(host, vectors);
    const int failed = RUN_ALL_TESTS();
    std::printf("proved: %zu vector lines of %zu files\n", vectors.lines.size(), vectors.files);
    // A filter may have left out the test that says so.
    if (failed == 0 && (!vectors.errors.empty() || vectors.lines.empty()))
        throw std::runtime_error(vectors.errors.empty() ? vectors_folder() + " holds no vectors" : vectors.errors[0]);
    return failed;
}

} // namespace

} // namespace bgpdt::test

int main(int argc, char **argv)
{
    try {
        return bgpdt::test::run(argc, argv);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
