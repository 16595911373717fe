// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// BOLPREFIX reads a text without asking all its rows. This must not show: whatever the text, the mode and the memory,
/// the answer is that of the plain walk, which asks one row after the other.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <ostream>
#include <random>
#include <set>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "bgp_datatype/bgp_datatype.h"
#include "support/attack_host.hpp"
#include "support/conversion.hpp"
#include "support/plugin_test.hpp"
#include "support/share.hpp"
#include "support/vector_file.hpp"

namespace bgpdt::test {

namespace {

/// Everything that a caller can see of a FormatIn.
struct Seen {
    std::uint32_t status = 0;
    std::uint16_t kind = Outputs::untouched_kind;
    std::uint16_t length = Outputs::untouched_length;
    void *data = nullptr;
    Bytes value;
    std::string text; ///< all of its buffer
    std::size_t requests = 0;
    std::vector<std::string> problems;

    bool operator==(const Seen &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Seen &seen)
{
    return out << std::hex << seen.status << ' ' << seen.kind << ' ' << seen.length << ' ' << show(seen.data) << ' '
               << show(seen.value) << ' ' << show(seen.text) << ' ' << seen.requests << " requests "
               << seen.problems.size() << " problems";
}

class PlainWalkTest : public PluginTest {
protected:
    /// The same answers from both, in one mode, with memory failing as told.
    void expect_same(const std::string &text, std::uint8_t mode, Failing failing = {})
    {
        const auto walk = [this](auto... arguments) { return this->walk(arguments...); };
        const Seen plain = seen(walk, text, mode, failing);
        EXPECT_EQ(plain, seen(*dispatcher_, text, mode, failing))
            << show(text) << " in mode " << unsigned{mode} << ", failing " << failing.first << " onward "
            << failing.onward;
        ++compared_;
        requests_ = plain.requests;
    }

    /// With every allocation failing that the walk asks for, alone and with all after it.
    void expect_same_without_memory(const std::string &text, std::uint8_t mode)
    {
        expect_same(text, mode);
        for (const bool onward : {false, true}) {
            requests_ = 1;
            for (std::size_t first = 1; first <= requests_; ++first)
                expect_same(text, mode, {first, onward});
        }
    }

    static std::set<std::string> texts_of_vectors()
    {
        std::set<std::string> texts;
        for (const Line &line : read_vector_folder(vectors_folder()).lines)
            if (line.text.size() < 400)
                texts.insert(line.text);
        return texts;
    }

    std::size_t compared_ = 0;

private:
    template <class FormatIn>
    static Seen seen(const FormatIn &format_in, const std::string &text, std::uint8_t mode, Failing failing)
    {
        AttackHost &host = AttackHost::instance();
        host.begin(failing);
        Seen seen;
        seen.data = forbidden_address();
        seen.text = text;
        SYSDT_Context context{};
        context.mode = mode;
        context.handle = owner_handle;
        seen.status = format_in(&context, std::uint32_t{0}, static_cast<std::uint32_t>(text.size() + 1),
                                seen.text.data(), &seen.kind, &seen.length, &seen.data);
        if (seen.status == SYSDT_OK) {
            seen.value = host.collect(seen.data).value_or(Bytes{});
            seen.data = nullptr;
        }
        seen.requests = host.requests();
        seen.problems = host.settle();
        return seen;
    }

    template <class... Arguments>
    std::uint32_t walk(Arguments... arguments) const
    {
        for (std::size_t i = 0; i < SYSDT_BOL_KINDS; ++i)
            if (rows_[i].formatIn != nullptr && rows_[i].formatIn(arguments...) == SYSDT_OK)
                return SYSDT_OK;
        return SYSDT_ERR_INVALID_VALUE;
    }

    const SYSDT_DispatchRow *rows_ = static_cast<const SYSDT_DispatchRow *>(host_.symbol("g_astBOL_PREFIX_ProcTable"));
    SYSDT_FormatIn *dispatcher_ = exported<SYSDT_FormatIn>("SYSDT_BolPrefixFormatIn");
    std::size_t requests_ = 0;
};

constexpr std::string_view alphabet = "0123456789abcdefABCDEF..::::----[]//gZ* \t+%\xff";

TEST_F(PlainWalkTest, EveryTextOfTheVectors)
{
    Turns turns;
    for (const std::string &text : texts_of_vectors()) {
        if (!turns.next())
            continue;
        for (std::uint8_t mode = 0; mode <= 7; ++mode)
            expect_same_without_memory(text, mode);
        expect_same_without_memory(" " + text, 2);
        expect_same_without_memory(text + " ", 2);
    }
    EXPECT_LT(10000U / share(), compared_);
    std::printf("proved: %zu answers of the dispatcher are those of a plain walk\n", compared_);
}

TEST_F(PlainWalkTest, TextsOfTheVectorsChanged)
{
    std::mt19937 random(seed());
    const std::size_t rounds = std::max<std::size_t>(200 / share(), 1);
    for (const std::string &text : texts_of_vectors()) {
        for (std::size_t round = 0; round < rounds && !text.empty(); ++round) {
            std::string changed = text;
            const int changes = 1 + static_cast<int>(random() % 3);
            for (int change = 0; change < changes && !changed.empty(); ++change) {
                const std::size_t at = random() % changed.size();
                switch (random() % 4) {
                case 0: changed.erase(at, 1 + random() % 3); break;
                case 1: changed.insert(at, 1, alphabet[random() % alphabet.size()]); break;
                case 2: changed.insert(at, changed, random() % changed.size(), random() % 20); break;
                default: changed[at] = alphabet[random() % alphabet.size()]; break;
                }
            }
            expect_same(changed, 2);
            expect_same(changed, 2, {1, false});
        }
    }
    EXPECT_LT(1000000U / share(), compared_);
    std::printf("proved: %zu answers of the dispatcher are those of a plain walk\n", compared_);
}

TEST_F(PlainWalkTest, RandomTexts)
{
    std::mt19937 random(seed());
    for (std::size_t round = 0; round < 1000000 / share(); ++round) {
        std::string text(random() % 40, ' ');
        for (char &character : text)
            character = alphabet[random() % alphabet.size()];
        expect_same(text, 2);
    }
    std::printf("proved: %zu answers of the dispatcher are those of a plain walk\n", compared_);
}

} // namespace

} // namespace bgpdt::test
