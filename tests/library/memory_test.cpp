// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// The library where memory is out: each request refused in turn. It answers a code, loses nothing, and goes on.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "opened.hpp"
#include "support/lacking_memory.hpp"

namespace bgpdt::test {
namespace {

/// What a call answers, in room that is there before: the test itself asks for no memory meanwhile.
struct Answer {
    int code = BGPDT_OK;
    std::size_t size = 0;
    char text[16384] = {};

    void keep(const void *data, std::size_t length)
    {
        size = std::min(length, sizeof text);
        std::memcpy(text, data, size);
    }
    void keep(int its_code, bgpdt_error *error)
    {
        code = its_code;
        if (error != nullptr) {
            if (code != BGPDT_NO_MEMORY)
                keep(error->message.data, error->message.size);
            bgpdt_error_free(error);
        }
    }
    std::string words() const { return std::to_string(code) + " " + std::string(text, size); }
};

using Call = std::function<void(Answer &)>;

/// Refuses each request of the call in turn. Returns how many there were.
/// @param keeps  blocks that a call keeps that is not refused
int refuse_in(const Call &call, long keeps = 0)
{
    Answer right;
    call(right);
    const std::string must = right.words();
    int turn = 0;
    return refuse_in_turn([&](Fault fault) {
        const long before = program_memory.blocks;
        Answer answer;
        program_memory.refuse(fault);
        call(answer);
        const bool refused = program_memory.relent();
        const long after = program_memory.blocks;
        EXPECT_EQ(after, before + (answer.code == BGPDT_NO_MEMORY ? 0 : keeps));
        EXPECT_EQ(answer.words(), answer.code == BGPDT_NO_MEMORY && refused ? answer.words() : must);
        if (turn++ % 7 == 0) {
            Answer again;
            call(again);
            EXPECT_EQ(again.words(), must);
        }
        return refused;
    });
}

class LibraryWithoutMemory : public testing::Test {
protected:
    /// Keeps what a function gives as JSON.
    template <class Function>
    Call json(Function *function, const bgpdt_type *type, const Bytes &value) const
    {
        return [=](Answer &answer) {
            char *json = nullptr;
            std::size_t size = 0;
            bgpdt_error *error = nullptr;
            const int code = function(type, value.data(), value.size(), &json, &size, &error);
            answer.keep(code, error);
            if (code == BGPDT_OK)
                answer.keep(json, size);
            bgpdt_free(json);
        };
    }

    Call parse(const char *name, const std::string &text) const
    {
        return [text, type = library_.type(name)](Answer &answer) {
            std::uint8_t value[BGPDT_VALUE_ROOM];
            bgpdt_error *error = nullptr;
            const int code = bgpdt_parse(type, text.data(), text.size(), value, sizeof value, &error);
            answer.keep(code, error);
            if (code == BGPDT_OK)
                answer.keep(value, size_of(type));
        };
    }

    Call print(const char *name, const Bytes &value) const
    {
        return [value, type = library_.type(name)](Answer &answer) {
            char text[BGPDT_TEXT_ROOM];
            std::size_t size = 0;
            bgpdt_error *error = nullptr;
            const int code = bgpdt_print(type, value.data(), value.size(), text, sizeof text, &size, &error);
            answer.keep(code, error);
            if (code == BGPDT_OK)
                answer.keep(text, size);
        };
    }

    Call read(const char *name, const std::string &json) const
    {
        return [json, type = library_.type(name)](Answer &answer) {
            std::uint8_t value[BGPDT_VALUE_ROOM];
            bgpdt_error *error = nullptr;
            const int code = bgpdt_read_table(type, json.data(), json.size(), value, sizeof value, &error);
            answer.keep(code, error);
            if (code == BGPDT_OK)
                answer.keep(value, size_of(type));
        };
    }

    Call field(const char *name, const Bytes &value, const std::string &field) const
    {
        return [value, field, type = library_.type(name)](Answer &answer) {
            char *text = nullptr;
            std::size_t size = 0;
            bgpdt_error *error = nullptr;
            const int code =
                bgpdt_field(type, value.data(), value.size(), field.data(), field.size(), &text, &size, &error);
            answer.keep(code, error);
            if (text != nullptr)
                answer.keep(text, size);
            bgpdt_free(text);
        };
    }

    Bytes value(const char *name, const char *text) const { return parsed(library_.type(name), text); }

    const Library library_;
};

TEST_F(LibraryWithoutMemory, TextAndValues)
{
    EXPECT_EQ(refuse_in([type = library_.type("VRFRD")](Answer &answer) {
                  std::uint8_t value[12];
                  answer.code = bgpdt_parse(type, "192.0.2.1:7", 11, value, sizeof value, nullptr);
              }),
              0);
    EXPECT_EQ(refuse_in(print("VRFRD", value("VRFRD", "192.0.2.1:7"))), 0);
    int met = 0;
    met += refuse_in(parse("VRFRD", "192.0.2.1:70000"));
    met += refuse_in(parse("VRFRD", std::string(70000, ' ') + "1:1"));
    met += refuse_in(parse("VRFRD", std::string("1:1\0", 4)));
    met += refuse_in(parse("SID_STRUCTURE", "1"));
    met += refuse_in(parse("BOLPREFIX", "64496:1x"));
    met += refuse_in(print("ATTRIDBITMAP", Bytes(32, 0xff)));
    met += refuse_in(print("BOLPREFIX", Bytes(89, 0xff)));
    met += refuse_in(print("VRFRD", Bytes(11)));
    EXPECT_GT(met, 100);
}

TEST_F(LibraryWithoutMemory, Tables)
{
    int met = 0;
    met += refuse_in(json(bgpdt_table, library_.type("VRFRD"), value("VRFRD", "1:1")));
    met += refuse_in(json(bgpdt_table, library_.type("CMNTY_ENHANCE"), value("CMNTY_ENHANCE", "64496:1 64496:2")));
    met += refuse_in(json(bgpdt_table, library_.type("BOLPREFIX"), Bytes(89, 0xff)));
    met += refuse_in(read("ASNUM", R"({"asNumValue":1,"asType":0})"));
    met += refuse_in(read("ASNUM", R"({"asNumValue":1,"asNumValue":1})"));
    met += refuse_in(read("ASNUM", R"({"asNumValue":"a text that is longer than any that is kept in place"})"));
    met += refuse_in(read("ASNUM", "{"));
    met += refuse_in(read("CMNTY_ENHANCE", R"({"stCmnty":[{"community":1,"type":0},{"community":2,"type":0}]})"));
    EXPECT_GT(met, 100);
}

TEST_F(LibraryWithoutMemory, Explanations)
{
    int met = 0;
    for (const char *name : {"VRFRD", "CMNTY_ENHANCE", "EVNPREFIX", "BOLPREFIX", "BGPLSPREFIX"}) {
        const bgpdt_type *type = library_.type(name);
        met += refuse_in(json(bgpdt_explain, type, parsed(type, string_of(bgpdt_about(type)->samples[0]))));
    }
    EXPECT_GT(met, 1000);
    // What is no text, no table, or neither.
    EXPECT_GT(refuse_in(json(bgpdt_explain, library_.type("BOLPREFIX"), Bytes(89, 0xff))), 100);
    EXPECT_GT(refuse_in(json(bgpdt_explain, library_.type("ATTRIDBITMAP"), Bytes(32))), 30);
    EXPECT_GT(refuse_in(json(bgpdt_explain, library_.type("ATTRIDBITMAP"), Bytes(32, 0x11))), 30);
    EXPECT_GT(refuse_in(json(bgpdt_explain, library_.type("SID_STRUCTURE"), Bytes(7))), 30);
    EXPECT_GT(refuse_in(json(bgpdt_explain, library_.type("VRFRD"), Bytes(11))), 3);
}

TEST_F(LibraryWithoutMemory, Dialects)
{
    const auto dialects = [type = library_.type("VRFRD")](std::string text) -> Call {
        return [type, text = std::move(text)](Answer &answer) {
            char *json = nullptr;
            std::size_t size = 0;
            bgpdt_error *error = nullptr;
            const int code = bgpdt_dialects(type, text.data(), text.size(), &json, &size, &error);
            answer.keep(code, error);
            if (json != nullptr)
                answer.keep(json, size);
            bgpdt_free(json);
        };
    };
    EXPECT_GT(refuse_in(dialects("65551:9")), 10);
    EXPECT_GT(refuse_in(dialects("a text that is longer than any that is kept in place")), 10);
}

TEST_F(LibraryWithoutMemory, Fields)
{
    const Bytes rd = value("VRFRD", "192.0.2.1:7");
    const Bytes key = value("EVNPREFIX", "100:32:192.0.2.1");
    int met = 0;
    met += refuse_in(field("VRFRD", rd, "administrator"));
    met += refuse_in(field("VRFRD", rd, "assigned number"));
    met += refuse_in(field("VRFRD", rd, "no such name"));
    met += refuse_in(field("EVNPREFIX", key, "originator"));
    met += refuse_in(field("VRFRD", Bytes(12, 0xff), "administrator")); // which other values have
    EXPECT_GT(met, 300);
}

TEST_F(LibraryWithoutMemory, Bytes)
{
    const auto from_hex = [type = library_.type("VRFRD")](std::string_view hex) {
        return [type, hex](Answer &answer) {
            std::uint8_t bytes[12];
            bgpdt_error *error = nullptr;
            const int code = bgpdt_from_hex(type, hex.data(), hex.size(), bytes, sizeof bytes, &error);
            answer.keep(code, error);
            if (code == BGPDT_OK)
                answer.keep(bytes, sizeof bytes);
        };
    };
    const auto on_value = [](auto function, const bgpdt_type *type, std::size_t size) {
        return [=](Answer &answer) {
            std::uint8_t bytes[BGPDT_VALUE_ROOM] = {};
            bgpdt_error *error = nullptr;
            const int code = function(type, bytes, size, &error);
            answer.keep(code, error);
            if (code == BGPDT_OK)
                answer.keep(bytes, size);
        };
    };
    EXPECT_GT(refuse_in(from_hex("0001c0000201000700000000")), 0);
    EXPECT_GT(refuse_in(from_hex("0001")), 3);
    EXPECT_GT(refuse_in(from_hex("no digits")), 3);
    EXPECT_GT(refuse_in(on_value(bgpdt_check, library_.type("ASNUM"), 8)), 3);
    EXPECT_GT(refuse_in(on_value(bgpdt_check, library_.type("SID_STRUCTURE"), 7)), 3);
    EXPECT_GT(refuse_in(on_value(bgpdt_swap, library_.type("ASNUM"), 7)), 3);
}

TEST_F(LibraryWithoutMemory, FieldLists)
{
    const auto names = [](int code, bgpdt_fields *fields, bgpdt_error *error, Answer &answer) {
        answer.keep(code, error);
        if (code == BGPDT_OK)
            answer.keep(fields->rows[fields->count - 1].name.data, fields->rows[fields->count - 1].name.size);
        bgpdt_fields_free(fields);
    };
    const bgpdt_type *const type = library_.type("VRFRD");
    int met = refuse_in([&, value = value("VRFRD", "1:1")](Answer &answer) {
        bgpdt_fields *fields = nullptr;
        bgpdt_error *error = nullptr;
        const int code = bgpdt_fields_of(type, value.data(), value.size(), &fields, &error);
        names(code, fields, error, answer);
    });
    met += refuse_in([&](Answer &answer) {
        bgpdt_fields *fields = nullptr;
        bgpdt_error *error = nullptr;
        const int code = bgpdt_known_fields(library_.type("TIME_RANGE"), &fields, &error);
        names(code, fields, error, answer);
    });
    EXPECT_GT(met, 50);
}

TEST_F(LibraryWithoutMemory, FindingTypes)
{
    EXPECT_GT(refuse_in([library = library_.get()](Answer &answer) {
                  const bgpdt_type *type = nullptr;
                  bgpdt_error *error = nullptr;
                  const int code = bgpdt_find(library, "vrfrb", 5, &type, &error);
                  answer.keep(code, error);
              }),
              10);
    unsigned mode = 7; // one that no call asked for
    EXPECT_GT(refuse_in(
                  [&mode, type = library_.type("VRFRD")](Answer &answer) {
                      const bgpdt_type *other = nullptr;
                      answer.code = bgpdt_in_mode(type, ++mode, &other);
                  },
                  1),
              0);
}

TEST_F(LibraryWithoutMemory, Comparing)
{
    EXPECT_GT(refuse_in([type = library_.type("EVNPREFIX")](Answer &answer) {
                  const Bytes::value_type first[89] = {0, 0, 0, 1, 1};
                  const Bytes::value_type second[89] = {0, 0, 0, 1, 2};
                  int order = 0;
                  bgpdt_error *error = nullptr;
                  const int code = bgpdt_compare(type, first, sizeof first, second, sizeof second, &order, &error);
                  answer.keep(code, error);
              }),
              10);
}

TEST_F(LibraryWithoutMemory, Columns)
{
    EXPECT_GT(refuse_in([type = library_.type("VRFRD")](Answer &answer) {
                  const std::uint32_t offsets[] = {0, 3, 6};
                  const bgpdt_column column{sizeof column, 2, offsets, sizeof offsets[0], "1:1x:2", 6, nullptr};
                  std::uint8_t values[24];
                  answer.code = bgpdt_parse_many(type, &column, values, sizeof values, nullptr, 0, nullptr);
              }),
              0);
}

TEST_F(LibraryWithoutMemory, PrintedColumns)
{
    const Bytes key = value("EVNPREFIX", "100:32:192.0.2.1");
    EXPECT_EQ(refuse_in([&key, type = library_.type("EVNPREFIX")](Answer &answer) {
                  std::uint64_t offsets[2];
                  char text[64];
                  std::size_t printed = 0;
                  const bgpdt_column_room room{sizeof room, offsets, sizeof offsets[0], text, sizeof text, nullptr, 0};
                  answer.code = bgpdt_print_many(type, key.data(), key.size(), 1, nullptr, &room, &printed, nullptr);
                  answer.keep(text, static_cast<std::size_t>(offsets[1]));
              }),
              0);
}

/// Names that cannot be loaded leave those that are there.
TEST_F(LibraryWithoutMemory, Names)
{
    const std::string files[] = {testing::TempDir() + "bgpdt_names_before", testing::TempDir() + "bgpdt_names_after"};
    std::ofstream(files[0]) << "7 red\n";
    std::ofstream(files[1]) << "7 blue\n8 a_name_that_is_longer_than_any_that_is_kept_in_place\n";
    const auto load = [this](const std::string &file) {
        return bgpdt_load_names(library_.get(), file.data(), file.size(), nullptr);
    };
    const bgpdt_type *const type = library_.type("PDID2PDNAME");
    const int met = refuse_in_turn([&](Fault fault) {
        EXPECT_EQ(load(files[0]), BGPDT_OK);
        program_memory.refuse(fault);
        const int code = load(files[1]);
        const bool refused = program_memory.relent();
        EXPECT_TRUE(code == BGPDT_OK || (refused && (code == BGPDT_NO_MEMORY || code == BGPDT_NO_PLUGIN))) << code;
        EXPECT_EQ(printed(type, {0, 0, 0, 7}), code == BGPDT_OK ? "blue" : "red");
        return refused;
    });
    EXPECT_GT(met, 5);
    for (const std::string &file : files)
        static_cast<void>(std::remove(file.c_str()));
}

TEST(OpeningWithoutMemory, AnswersACode)
{
    const auto open = [](bgpdt_library *&library) {
        const bgpdt_options options{sizeof options, {BGPDT_BUILT_PLUGIN, sizeof BGPDT_BUILT_PLUGIN - 1}, {}};
        return bgpdt_open(&options, &library, nullptr);
    };
    const int met = refuse_in_turn([&open](Fault fault) {
        bgpdt_library *library = nullptr;
        program_memory.refuse(fault);
        const int code = open(library);
        const bool refused = program_memory.relent();
        EXPECT_EQ(code == BGPDT_OK, library != nullptr);
        EXPECT_TRUE(code == BGPDT_OK || refused) << code;
        bgpdt_close(library);
        EXPECT_EQ(open(library), BGPDT_OK);
        EXPECT_EQ(bgpdt_type_count(library), 33U);
        bgpdt_close(library);
        return refused;
    });
    EXPECT_GT(met, 100);
}

} // namespace
} // namespace bgpdt::test
