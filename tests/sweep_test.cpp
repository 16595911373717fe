// SPDX-License-Identifier: Apache-2.0
/// @file
/// Every text that the vectors say is accepted, with one character changed, dropped or doubled: it is read or refused
/// with the type's own status, nothing outside it is looked at, and no block is left.
#include <cstdio>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "host/host.hpp"
#include "support/conversion.hpp"
#include "support/setting.hpp"
#include "support/subject.hpp"
#include "support/vector_file.hpp"

namespace bgpdt::test {

namespace {

/// One of every sort of character that a grammar knows, and some that none does.
constexpr std::string_view replacements = "09afgZ.:-/[]* \t+%\xff";

/// Longer texts are swept at their start and their end.
constexpr std::size_t swept_at_each_end = 48;

class Sweep {
public:
    Sweep(const Subject &subject, const Line &line, Report &report) : subject_(subject), line_(line), report_(report) {}

    void run()
    {
        for (std::size_t at = 0; at < line_.text.size(); ++at) {
            if (at >= swept_at_each_end && at + swept_at_each_end < line_.text.size()) {
                continue;
            }
            for (const char character : replacements) {
                std::string text = line_.text;
                text[at] = character;
                expect_answer(text);
            }
            expect_answer(std::string(line_.text).erase(at, 1));
            expect_answer(std::string(line_.text).insert(at, 1, line_.text[at]));
        }
    }
    std::size_t texts() const { return texts_; }

private:
    void expect_answer(const std::string &text)
    {
        ++texts_;
        AttackHost::instance().begin();
        const std::uint8_t mode = line_.modes.front();
        const Converted result = parse(subject_, text, mode, report_);
        const bool quoted = subject_.expect.in_letter(mode) == 'q' && result.status == SYSDT_ERR_UNSUPPORTED;
        if (result.status == SYSDT_OK) {
            AttackHost::instance().collect(result.data);
        } else if (result.status != subject_.expect.unparsed && !quoted) {
            report_.fail("\"" + text + "\" is answered with " + host::status_name(result.status));
        }
        settle(report_);
    }

    const Subject &subject_;
    const Line &line_;
    Report &report_;
    std::size_t texts_ = 0;
};

TEST(Sweep, NoChangeOfACharacterLeadsAstray)
{
    const host::Host host(plugin_path());
    const Vectors vectors = read_vector_folder(vectors_folder());
    std::set<std::pair<std::string, std::string>> swept;
    std::size_t texts = 0;
    for (const Line &line : vectors.lines) {
        if (line.verb != Verb::in || !swept.emplace(line.subject, line.text).second) {
            continue;
        }
        const Subject subject = subject_of(host, line);
        Report report;
        Sweep sweep(subject, line, report);
        sweep.run();
        texts += sweep.texts();
        for (const std::string &problem : report.problems()) {
            ADD_FAILURE_AT(line.file.c_str(), line.number) << line.content << "\n" << problem;
        }
    }
    EXPECT_LT(100000U, texts);
    std::printf("%zu changed texts of %zu accepted ones\n", texts, swept.size());
}

} // namespace

} // namespace bgpdt::test
