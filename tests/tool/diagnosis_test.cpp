// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a diagnosis claims of any text that a vector refuses, and of longer ones, holds when the type is asked again.
#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/share.hpp"
#include "support/vector_file.hpp"
#include "toolkit/conversions.hpp"
#include "toolkit/diagnosis.hpp"
#include "toolkit/kinds.hpp"
#include "toolkit/samples.hpp"
#include "toolkit/session.hpp"
#include "toolkit/shown_text.hpp"
#include "vector_values.hpp"

namespace bgpdt::toolkit {
namespace {

struct Refused {
    const SYSDT_Record *type;
    std::string text;
    std::uint8_t mode;
};

/// Stands between the diagnosis and a type, and counts.
struct Counter {
    static inline SYSDT_FormatIn *behind = nullptr;
    static inline std::size_t calls = 0;

    static std::uint32_t format_in(SYSDT_Context *context, std::uint32_t unused, std::uint32_t length, char *text,
                                   std::uint16_t *kind, std::uint16_t *out_length, void **data)
    {
        ++calls;
        return behind(context, unused, length, text, kind, out_length, data);
    }
};

class DiagnosisTest : public testing::Test {
protected:
    void TearDown() override { RecordProperty("longest_us", std::to_string(longest_ * 1'000'000 / CLOCKS_PER_SEC)); }

    bool takes(const SYSDT_Record &type, const std::string &text, std::uint8_t mode)
    {
        const host::Converted converted = session_.host().parse(type, text, mode);
        return converted.ok() && !converted.data.empty();
    }

    /// The texts of the lines `bad`, those of a dispatch table's rows as texts of the type that dispatches to them.
    std::vector<Refused> refused_by_vectors()
    {
        std::vector<Refused> all;
        const test::Vectors vectors = test::read_vector_folder(BGPDT_SOURCE_VECTORS);
        EXPECT_TRUE(vectors.errors.empty());
        for (const test::Line &line : vectors.lines) {
            const SYSDT_Record *type = session_.host().find(line.row ? "BOLPREFIX" : line.subject);
            const bool text = line.text.find('\0') == std::string::npos;
            if (line.verb == test::Verb::bad && type != nullptr && text && !takes(*type, line.text, line.modes[0]))
                all.push_back({type, line.text, line.modes[0]});
        }
        return all;
    }

    /// What is claimed of the refused text must be what the type says.
    void expect_true(const Refused &refused)
    {
        SYSDT_Record counted = *refused.type;
        Counter::behind = std::exchange(counted.formatIn, Counter::format_in);
        Counter::calls = 0;
        const std::clock_t begin = std::clock();
        const std::optional<Diagnosis> diagnosis = diagnose(session_, counted, refused.text, refused.mode);
        longest_ = std::max(longest_, std::clock() - begin);
        EXPECT_LE(Counter::calls, most_tries + 50); // and the samples that take its number
        if (!diagnosis)
            return;
        SCOPED_TRACE(name_of(*refused.type) + " " + lua_quoted(shortened(refused.text)) + ": " + diagnosis->reason +
                     ": " + diagnosis->repair);
        EXPECT_TRUE(diagnosis->repair.empty() || takes(*refused.type, diagnosis->repair, refused.mode));
        repairs_ += diagnosis->repair.empty() ? 0 : 1;
        EXPECT_LE(diagnosis->at + diagnosis->length, refused.text.size());
        EXPECT_EQ(diagnosis->text, refused.text);
        EXPECT_FALSE(diagnosis->reason.empty());
        expect_true_limit(refused, *diagnosis);
    }

    void expect_true_limit(const Refused &refused, const Diagnosis &diagnosis)
    {
        const std::string &repair = diagnosis.repair;
        std::smatch limit;
        const bool smaller = !repair.empty() && diagnosis.change == Change::value;
        if (smaller && std::regex_search(diagnosis.reason, limit, std::regex(" here: at most ([0-9]+)( digits?)?"))) {
            const std::string most = limit[2].matched ? std::string(std::stoul(limit[1]), '9') : limit[1].str();
            EXPECT_EQ(repair.substr(diagnosis.at, most.size()), most);
            std::string beyond = repair;
            beyond.replace(diagnosis.at, most.size(),
                           most == "18446744073709551615" ? "18446744073709551616"
                                                          : std::to_string(std::stoull(most) + 1));
            EXPECT_FALSE(takes(*refused.type, beyond, refused.mode)) << beyond;
            ++limits_;
        }
    }

    Session &session_ = test::session();
    std::size_t limits_ = 0;
    std::size_t repairs_ = 0;
    std::clock_t longest_ = 0; ///< of processor time, that a diagnosis took
};

TEST_F(DiagnosisTest, ClaimsWhatTheTypeSays)
{
    const std::vector<Refused> all = refused_by_vectors();
    ASSERT_GT(all.size(), 2000U);
    const std::size_t every = test::small_share();
    test::Turns turns(every);
    for (const Refused &refused : all)
        if (turns.next())
            expect_true(refused);
    EXPECT_GT(limits_, 50U / every);
    EXPECT_GT(repairs_ * 2, all.size() / every);
}

/// A text that a type takes, spoilt in ways that are not the vectors'.
TEST_F(DiagnosisTest, ClaimsWhatTheTypeSaysOfSpoiltSamples)
{
    test::Turns turns(test::small_share());
    for (const SYSDT_Record *type : session_.host().types()) {
        const std::uint8_t mode = session_.mode_for(*type);
        for (const std::string &sample : sample_of(type->typeId).texts) {
            for (std::size_t i = 0; i < sample.size(); i += sample.size() / 3 + 1) {
                for (const char *by : {"", "\x01", "99999999999999999999999", "\xc3\xa4", "]", "x:"}) {
                    std::string text = sample;
                    text.replace(i, 1, by);
                    if (turns.next() && !takes(*type, text, mode))
                        expect_true({type, text, mode});
                }
            }
        }
    }
}

/// Most of what is mistyped in one place is mended in that place.
TEST_F(DiagnosisTest, FindsOneWrongCharacterOfEverySample)
{
    std::size_t spoilt = 0;
    std::size_t found = 0;
    for (const SYSDT_Record *type : session_.host().types()) {
        const std::uint8_t mode = session_.mode_for(*type);
        for (const std::string &sample : sample_of(type->typeId).texts) {
            for (std::size_t i = 0; i < sample.size(); i += sample.size() / 12 + 1) {
                std::string text = sample;
                text[i] = '%';
                const bool taken = takes(*type, text, mode);
                const std::optional<Diagnosis> diagnosis = taken ? std::nullopt : diagnose(session_, *type, text, mode);
                spoilt += taken ? 0 : 1;
                found += diagnosis && diagnosis->at <= i && i <= diagnosis->at + diagnosis->length ? 1 : 0;
            }
        }
    }
    EXPECT_GT(spoilt, 500U);
    EXPECT_GE(found * 100, spoilt * 95) << found << " of " << spoilt;
}

TEST_F(DiagnosisTest, EndsSoon)
{
    std::vector<std::string> texts;
    for (const char *piece :
         {"x", "1:", "[", "]", "[NODE", "64496 ", "0011.", "1-", "\xc3\xa4", "%", "no-export ", "[]", "a_"}) {
        for (const std::size_t length : {100U, 300U, 1000U, 4000U, 65000U}) {
            std::string text;
            while (text.size() < length)
                text += piece;
            texts.push_back(text + "?");
        }
    }
    test::Turns turns(test::small_share());
    for (const SYSDT_Record *type : session_.host().types()) {
        const std::uint8_t mode = session_.mode_for(*type);
        for (const std::string &text : texts)
            if (type->formatIn != nullptr && turns.next() && !takes(*type, text, mode))
                expect_true({type, text, mode});
    }
}

TEST_F(DiagnosisTest, EverySampleParses)
{
    for (const SYSDT_Record *type : session_.host().types())
        for (const std::string &text : sample_of(type->typeId).texts)
            EXPECT_TRUE(takes(*type, text, session_.mode_for(*type))) << name_of(*type) << " " << text;
}

TEST_F(DiagnosisTest, EveryKindThatTakesTextHasASample)
{
    for (const char *name : {"BOLPREFIX", "BOLRD"}) {
        const SYSDT_Record &type = session_.type(name);
        for (const Kind &kind : kinds(session_, type)) {
            const std::vector<std::string> texts = sample_of(type.typeId).texts;
            const auto is_of_kind = [&](const std::string &text) {
                return kind_of(session_.host().parse(type, text, session_.mode_for(type)).data) == kind.number;
            };
            EXPECT_EQ(std::ranges::any_of(texts, is_of_kind), kind.takes_text) << name << " " << kind.name;
        }
    }
}

TEST(ShownTextTest, UnderlinesWhatItSays)
{
    EXPECT_EQ(underlined("1:22", 2, 2), "  1:22\n    ^~\n");
    EXPECT_EQ(underlined("1:", 2, 0), "  1:\n    ^\n");
    EXPECT_EQ(underlined("", 0, 0), "  \n  ^\n");
    EXPECT_EQ(underlined("abc", 1, 0), "  abc\n   ^\n");
}

TEST(ShownTextTest, CountsCharactersNotBytes)
{
    EXPECT_EQ(underlined("\xc3\xa4\xe2\x80\x93x1", 5, 1), "  \xc3\xa4\xe2\x80\x93x1\n    ^\n");
    EXPECT_EQ(underlined("\t\xc3\xa4", 1, 2), "  \\x09\xc3\xa4\n      ^\n");
    EXPECT_EQ(underlined("\x1b[\xff", 2, 1), "  \\x1b[\\xff\n       ^~~~\n");
    EXPECT_EQ(underlined("\xc2\x9bx", 2, 1), "  \\xc2\\x9bx\n          ^\n");
}

TEST(ShownTextTest, ShowsAWindowOfALongText)
{
    std::string text(1000, 'a');
    text[500] = 'X';
    const std::string lines = underlined(text, 500, 1);
    const std::size_t feed = lines.find('\n');
    EXPECT_LE(feed, 84U);
    EXPECT_EQ(lines.substr(0, 5), "  ...");
    EXPECT_EQ(lines.substr(feed - 3, 3), "...");
    EXPECT_EQ(lines.find('X'), lines.find('^') - feed - 1);
}

} // namespace
} // namespace bgpdt::toolkit
