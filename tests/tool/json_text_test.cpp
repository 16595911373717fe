// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// JSON that is written as text is what another writer makes of the same, but for the control characters that terminals
/// obey: those are escaped too.
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "toolkit/json_text.hpp"

namespace bgpdt::toolkit {
namespace {

/// As the other writer has it; DEL and the controls of C1, which stand as they are there, escaped.
std::string expected(const std::string &text)
{
    const std::string json = nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    constexpr const char *digits = "0123456789abcdef";
    std::string escaped;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const auto byte = static_cast<std::uint8_t>(json[i]);
        const auto next = static_cast<std::uint8_t>(i + 1 < json.size() ? json[i + 1] : 0);
        const bool c1 = byte == 0xc2 && next < 0xa0;
        if (byte == 0x7f || c1) {
            const std::uint8_t code = c1 ? next : byte;
            escaped += std::string("\\u00") + digits[code >> 4] + digits[code & 0x0f];
            i += c1 ? 1 : 0;
        } else {
            escaped += json[i];
        }
    }
    return escaped;
}

TEST(JsonText, EveryPairOfBytes)
{
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string text{static_cast<char>(first), static_cast<char>(second), 'a'};
            ASSERT_EQ(to_json(text), expected(text)) << first << " " << second;
        }
    }
}

/// Texts are copied in words: those of every length up to some of them, with every byte at each place.
TEST(JsonText, EveryByteAtEachPlace)
{
    for (std::size_t size = 1; size <= 20; ++size) {
        for (std::size_t at = 0; at < size; ++at) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string text(size, '~');
                text[at] = static_cast<char>(byte);
                ASSERT_EQ(to_json(text), expected(text)) << size << " " << at << " " << byte;
            }
        }
    }
    EXPECT_EQ(to_json(std::string()), R"("")");
}

/// Characters of up to four bytes, whole, cut and spoilt.
TEST(JsonText, AnyBytes)
{
    using namespace std::string_view_literals; // with a NUL in it
    constexpr std::string_view pieces = "\x00\x1f\x7f\x80\x8f\x90\x9f\xa0\xbf\xc0\xc1\xc2\xdf\xe0\xe1\xec\xed\xee\xef"
                                        "\xf0\xf1\xf3\xf4\xf5\xff\"\\/a"sv;
    std::mt19937 random(1);
    for (int turn = 0; turn < 200000; ++turn) {
        std::string text;
        for (std::size_t i = 0; i < 6; ++i)
            text += pieces[random() % pieces.size()];
        ASSERT_EQ(to_json(text), expected(text)) << testing::PrintToString(text);
    }
}

TEST(JsonText, ValuesOfEachSort)
{
    JsonObject object;
    EXPECT_EQ(object.text(), "{}");
    object.add("text", "a\n\x7f").add("none", JsonText()).add("yes", true).add("least", std::int64_t{-1});
    object.add("most", std::numeric_limits<std::uint64_t>::max()).add_some("left out", "");
    object.add("numbers", std::vector<std::uint8_t>{1, 255}).add("texts", std::vector<std::string>{});
    object.add("rows", std::vector<JsonObject>{JsonObject(), JsonObject().add("a", 1)});
    EXPECT_EQ(object.text(), R"({"text":"a\n\u007f","none":null,"yes":true,"least":-1,"most":18446744073709551615,)"
                             R"("numbers":[1,255],"texts":[],"rows":[{},{"a":1}]})");
}

TEST(JsonText, MembersInPlace)
{
    const auto nothing = [](Buffer &) { return false; };
    const auto array = [](Buffer &out) {
        out.append("[]");
        return true;
    };
    JsonObject object;
    EXPECT_TRUE(object.add_some("none", nothing).empty());
    object.add_some("some", array).add_some("none", nothing).add("written", [](Buffer &out) { out.append("{}"); });
    EXPECT_EQ(object.text(), R"({"some":[],"written":{}})");
}

TEST(JsonText, ObjectsBehindWhatStands)
{
    Buffer text;
    text.append("front");
    JsonObject object(std::move(text));
    EXPECT_TRUE(object.empty());
    EXPECT_EQ(object.text(), "{}");
    object.add("a", 1);
    EXPECT_FALSE(object.empty());
    EXPECT_EQ(object.text(), R"({"a":1})");
    Buffer both = object.taken();
    EXPECT_EQ(both.text(), R"(front{"a":1})");
    EXPECT_EQ(JsonObject(std::move(both)).taken().text(), R"(front{"a":1}{})");
}

} // namespace
} // namespace bgpdt::toolkit
