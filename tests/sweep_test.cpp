// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Every text that the vectors say is accepted, changed in small ways: it is read or refused with the type's own status,
/// nothing outside it is looked at, no block is left, and what is accepted has exactly the numbers that are written.
///
/// The changes: each character replaced by each of the 256, dropped and doubled; every start and every end of the text;
/// each number replaced by those around the limits of 8, 16, 24, 32 and 64 bits, alone and with itself added, which
/// a number that wraps would not be told from.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "host/host.hpp"
#include "support/conversion.hpp"
#include "support/irregular_texts.hpp"
#include "support/setting.hpp"
#include "support/share.hpp"
#include "support/subject.hpp"
#include "support/vector_file.hpp"

namespace bgpdt::test {

namespace {

/// The mode in which every type prints what it prints.
constexpr std::uint8_t shown = 1;

/// Longer texts are swept at their start and their end.
constexpr std::size_t swept_at_each_end = 100;

bool is_decimal(char character) { return character >= '0' && character <= '9'; }
bool is_hexadecimal(char character)
{
    return is_decimal(character) || (character >= 'a' && character <= 'f') || (character >= 'A' && character <= 'F');
}

/// The numbers to try in place of one.
std::vector<std::string> around_limits(std::string_view number)
{
    static constexpr std::array<std::string_view, 5> sizes{"256", "65536", "16777216", "4294967296",
                                                           "18446744073709551616"};
    static constexpr std::array<std::string_view, 6> limits{
        "255", "65535", "16777215", "4294967295", "18446744073709551615", "99999999999999999999"};
    std::vector<std::string> numbers(limits.begin(), limits.end());
    for (const std::string_view size : sizes) {
        numbers.emplace_back(size);
        numbers.push_back(sum(size, number));
    }
    return numbers;
}

/// What came of all texts of all types.
struct Tally {
    std::size_t texts = 0;
    std::size_t accepted = 0;
    std::size_t exact = 0;
    std::size_t left_out = 0;
    std::map<const Irregularity *, std::size_t> excused;
    Turns turns;
};

class Sweep {
public:
    Sweep(const Subject &subject, const Line &line, Report &report, Tally &tally)
        : subject_(subject), line_(line), report_(report), tally_(tally)
    {
    }

    void run()
    {
        expect_answer(line_.text);
        for (std::size_t at = 0; at < line_.text.size(); ++at) {
            if (at >= swept_at_each_end && at + swept_at_each_end < line_.text.size()) {
                ++tally_.left_out;
                continue;
            }
            change_character(at);
        }
        change_numbers(is_decimal, false);
        change_numbers(is_hexadecimal, true);
    }

private:
    void change_character(std::size_t at)
    {
        const std::string &text = line_.text;
        for (int character = 0; character < 256; ++character)
            try_text([&] { return std::string(text).replace(at, 1, 1, static_cast<char>(character)); });
        try_text([&] { return std::string(text).erase(at, 1); });
        try_text([&] { return std::string(text).insert(at, 1, text[at]); });
        try_text([&] { return text.substr(0, at); });
        try_text([&] { return text.substr(at + 1); });
    }

    void change_numbers(bool (*is_digit)(char), bool hex)
    {
        const std::string &text = line_.text;
        for (auto at = text.begin(); (at = std::find_if(at, text.end(), is_digit)) != text.end();) {
            const auto end = std::find_if_not(at, text.end(), is_digit);
            const std::string number(at, end);
            for (const std::string &other :
                 hex ? std::vector<std::string>{"1" + number, number + "0"} : around_limits(number))
                expect_answer(std::string(text.begin(), at) + other + std::string(end, text.end()));
            at = end;
        }
    }

    /// The text is made if it is its turn: in most sweeps few are.
    template <class Make>
    void try_text(Make make)
    {
        if (tally_.turns.next())
            expect_answer(make());
    }

    void expect_answer(const std::string &text)
    {
        ++tally_.texts;
        AttackHost::instance().begin();
        const std::uint8_t mode = line_.modes.front();
        const Converted result = parse(subject_, text, mode, report_);
        const bool quoted = subject_.expect.in_letter(mode) == 'q' && result.status == SYSDT_ERR_UNSUPPORTED;
        Bytes value;
        if (result.status == SYSDT_OK)
            value = AttackHost::instance().collect(result.data).value_or(Bytes{});
        else if (result.status != subject_.expect.unparsed && !quoted)
            report_.fail(show(text) + " is answered with " + host::status_name(result.status));
        settle(report_);
        if (!value.empty())
            expect_numbers(text, std::move(value));
    }

    std::string printed(const Bytes &bytes)
    {
        if (subject_.format_out == nullptr)
            return {};
        Guarded value(bytes);
        AttackHost::instance().begin();
        const Converted result =
            print(subject_, value, static_cast<std::uint32_t>(bytes.size()), shown, nullptr, report_);
        const Bytes block = AttackHost::instance().collect(result.data).value_or(Bytes{});
        settle(report_);
        return result.status == SYSDT_OK ? std::string(block.begin(), std::ranges::find(block, 0)) : "";
    }

    void expect_numbers(const std::string &text, Bytes value)
    {
        ++tally_.accepted;
        const Writing writing = writing_of(subject_, value);
        AcceptedText accepted;
        accepted.written = numbers_in(text, writing);
        accepted.print = printed(value);
        accepted.printed = numbers_in(accepted.print, writing);
        if (accepted.written == accepted.printed) {
            ++tally_.exact;
            return;
        }
        accepted.text = text;
        accepted.family = family_of(value);
        accepted.fields = numbers_of(subject_, value);
        accepted.value = std::move(value);
        for (const Irregularity &irregularity : irregular_texts()) {
            if (irregularity.concerns(accepted.family) && irregularity.holds(accepted)) {
                ++tally_.excused[&irregularity];
                return;
            }
        }
        report_.fail(show(text) + " of " + std::string(accepted.family) + " is read as " + show(accepted.print) + ", " +
                     show(accepted.value));
    }

    /// A route key's texts are told by its row.
    std::string_view family_of(const Bytes &value) const
    {
        const Expectation *dispatcher = subject_.expect.script_size == 0 ? nullptr : expectation_of("BOLPREFIX");
        const Expectation *row =
            dispatcher == nullptr ? nullptr : expectation_behind(*dispatcher, selecting_word(value));
        return row == nullptr ? std::string_view(subject_.name) : row->name;
    }

    static std::uint32_t selecting_word(const Bytes &value)
    {
        std::uint32_t word = 0;
        std::memcpy(&word, value.data(), std::min(sizeof word, value.size()));
        return word;
    }

    const Subject &subject_;
    const Line &line_;
    Report &report_;
    Tally &tally_;
};

void print_tally(const Tally &tally, std::size_t swept)
{
    std::printf("proved: %zu changed texts of %zu accepted ones, 1 in %zu tried; %zu characters in the middle of long "
                "texts left "
                "out\n",
                tally.texts, swept, share(), tally.left_out);
    std::printf("%zu accepted, %zu with the very numbers that they print as\n", tally.accepted, tally.exact);
    for (const Irregularity &row : irregular_texts()) {
        const auto found = tally.excused.find(&row);
        std::printf("%8zu excused: %s (%.*s) %.*s\n", found == tally.excused.end() ? 0 : found->second,
                    joined(row.families).c_str(), static_cast<int>(row.number.size()), row.number.data(),
                    static_cast<int>(row.why.size()), row.why.data());
    }
}

TEST(Sweep, NoChangeOfATextLeadsAstray)
{
    const host::Host host(plugin_path());
    const Vectors vectors = read_vector_folder(vectors_folder());
    std::set<std::pair<std::string, std::string>> swept;
    Tally tally;
    for (const Line &line : vectors.lines) {
        if (line.verb != Verb::in || !swept.emplace(line.subject, line.text).second)
            continue;
        const Subject subject = subject_of(host, line);
        Report report;
        Sweep(subject, line, report, tally).run();
        for (const std::string &problem : report.problems())
            ADD_FAILURE_AT(line.file.c_str(), line.number) << line.content << "\n" << problem;
    }
    EXPECT_LT(8000000U / share(), tally.texts);
    for (const Irregularity &irregularity : irregular_texts()) {
        EXPECT_TRUE(share() != 1 || tally.excused.contains(&irregularity))
            << joined(irregularity.families) << " (" << irregularity.number << ") excuses nothing";
    }
    print_tally(tally, swept.size());
}

} // namespace

} // namespace bgpdt::test
