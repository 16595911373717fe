// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// What the functions of bgpdt.h answer.
#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "opened.hpp"

namespace bgpdt::test {
namespace {

class Interface : public testing::Test {
protected:
    const Library library_;
    const bgpdt_type *const rd_ = library_.type("VRFRD");
    const bgpdt_type *const as_ = library_.type("ASNUM");
    Error error_;
};

const Bytes rd_value = {0, 1, 192, 0, 2, 1, 0, 7, 0, 0, 0, 0};

std::unique_ptr<char, void (*)(char *)> owned(char *text) { return {text, bgpdt_free}; }

TEST_F(Interface, TextToValueAndBack)
{
    EXPECT_EQ(parsed(rd_, "192.0.2.1:7"), rd_value);
    EXPECT_EQ(printed(rd_, rd_value), "192.0.2.1:7");
    EXPECT_EQ(parsed(as_, "1.10"), (Bytes{0, 1, 0, 10, 0, 0, 0, 1}));
    EXPECT_EQ(parsed(rd_, std::string_view("192.0.2.1:77").substr(0, 11)), rd_value); // nothing ends the text
    const Bytes name = parsed(library_.type("CVRFNAME"), "red");
    EXPECT_EQ(name.size(), 32U);
    EXPECT_EQ(printed(library_.type("CVRFNAME"), name), "red");
}

TEST_F(Interface, TextsOfAnyLength)
{
    for (const std::size_t blanks : {1U, 500U, 501U, 502U, 65525U, 65526U, 65527U, 1000000U}) {
        const std::string text = std::string(blanks, ' ') + "192.0.2.1:7";
        EXPECT_EQ(parsed(rd_, text), rd_value) << blanks;
        EXPECT_EQ(parsed(rd_, text + "x"), Bytes()) << blanks;
    }
    EXPECT_EQ(parsed(rd_, ""), Bytes());
}

TEST_F(Interface, ARefusalHasItsReason)
{
    Bytes value(size_of(rd_));
    const std::string_view text = "192.0.2.1:70000";
    EXPECT_EQ(bgpdt_parse(rd_, text.data(), text.size(), value.data(), value.size(), error_.out()), BGPDT_REFUSED);
    EXPECT_EQ(error_->struct_size, sizeof(bgpdt_error));
    EXPECT_EQ(error_->code, BGPDT_REFUSED);
    EXPECT_EQ(error_->status, 0x80170DU);
    EXPECT_EQ(string_of(error_->reason), "70000 is too large here: at most 65535");
    EXPECT_EQ(string_of(error_->message),
              "VRFRD refuses \"192.0.2.1:70000\": 70000 is too large here: at most 65535 (SYSDT_ERR_INVALID_VALUE)");
    EXPECT_EQ(error_->at, 10U);
    EXPECT_EQ(error_->length, 5U);
    EXPECT_EQ(parsed(rd_, string_of(error_->repair)).size(), value.size());
    EXPECT_EQ(error_->repair.data[error_->repair.size], '\0');
    EXPECT_EQ(string_of(error_->picture), "  192.0.2.1:70000\n            ^~~~~\n");
}

TEST_F(Interface, WhatARepairMakesOfTheValue)
{
    const auto change = [this](std::string_view type, std::string_view text) {
        EXPECT_EQ(bgpdt_why(library_.type(type), text.data(), text.size(), error_.out()), BGPDT_REFUSED);
        EXPECT_FALSE(parsed(library_.type(type), string_of(error_->repair)).empty());
        return error_->change;
    };
    EXPECT_EQ(change("COMMUNITY", "blackhole"), BGPDT_SPELLING); // 65535:666 (RFC 7999)
    EXPECT_EQ(change("MDTPREFIX", "192.0.2.0"), BGPDT_EXAMPLE);
    EXPECT_EQ(change("VRFRD", "192.0.2.1:70000"), BGPDT_VALUE);
}

TEST_F(Interface, PlacesInBytesAndInCharacters)
{
    const std::string text = "\u00e9"
                             "64496:1";
    EXPECT_EQ(bgpdt_why(rd_, text.data(), text.size(), error_.out()), BGPDT_REFUSED);
    EXPECT_EQ(error_->at, 0U);
    EXPECT_EQ(error_->length, 2U);
    EXPECT_EQ(error_->at_character, 0U);
    EXPECT_EQ(error_->characters, 1U);
    EXPECT_EQ(string_of(error_->repair), "64496:1");
    const std::string behind = "64496:1\u00e9\u00e9";
    EXPECT_EQ(bgpdt_why(rd_, behind.data(), behind.size(), error_.out()), BGPDT_REFUSED);
    EXPECT_EQ(error_->at, error_->at_character);
    EXPECT_GT(error_->length, error_->characters);
}

TEST_F(Interface, TheTypesThatTakeARefusedText)
{
    const std::string_view text = "64496:1:1";
    EXPECT_EQ(bgpdt_why(rd_, text.data(), text.size(), error_.out()), BGPDT_REFUSED);
    bool large = false;
    for (std::size_t i = 0; i < error_->other_type_count; ++i) {
        const std::string name = string_of(error_->other_types[i]);
        EXPECT_FALSE(parsed(library_.type(name), text).empty()) << name;
        large = large || name == "LARGECOMMUNITY";
    }
    EXPECT_TRUE(large);
    EXPECT_EQ(bgpdt_why(rd_, "64496:1", 7, error_.out()), BGPDT_OK);
    EXPECT_TRUE(error_.none());
    EXPECT_EQ(bgpdt_why(rd_,
                        "64496:1\0"
                        "7",
                        9, error_.out()),
              BGPDT_REFUSED);
    EXPECT_EQ(error_->at, 7U);
}

TEST_F(Interface, WhatATypeDoesNotDo)
{
    const bgpdt_type *sid = library_.type("SID_STRUCTURE");
    const Bytes value(size_of(sid));
    EXPECT_EQ(parsed(sid, "1"), Bytes());
    EXPECT_EQ(bgpdt_why(sid, "1", 1, error_.out()), BGPDT_NO_TEXT);
    EXPECT_EQ(string_of(error_->message), "SID_STRUCTURE takes no text");
    EXPECT_EQ(bgpdt_check(sid, value.data(), value.size(), error_.out()), BGPDT_NO_OPERATION);
    EXPECT_EQ(string_of(error_->message), "SID_STRUCTURE checks no values");
    EXPECT_EQ(printed(library_.type("TIME_RANGE"), Bytes(4)), "code " + std::to_string(BGPDT_NO_OPERATION));
    EXPECT_EQ(bgpdt_find(library_.get(), "VRFRB", 5, &sid, error_.out()), BGPDT_NO_TYPE);
    EXPECT_EQ(string_of(error_->message), "there is no type VRFRB (did you mean VRFRT, VRFRD?)");
    EXPECT_EQ(sid, nullptr);
}

TEST_F(Interface, ValuesOfAnotherLengthAreRefused)
{
    char text[8];
    std::size_t size = 1;
    EXPECT_EQ(bgpdt_print(rd_, rd_value.data(), 11, text, sizeof text, &size, error_.out()), BGPDT_REFUSED);
    EXPECT_EQ(string_of(error_->message), "VRFRD has values of another length: 11 bytes, must be 12");
    EXPECT_EQ(bgpdt_print(rd_, rd_value.data(), rd_value.size(), text, sizeof text, &size, error_.out()),
              BGPDT_NO_ROOM);
    EXPECT_EQ(size, 11U);
    Bytes value(11);
    EXPECT_EQ(bgpdt_parse(rd_, "1:1", 3, value.data(), value.size(), error_.out()), BGPDT_NO_ROOM);
    EXPECT_EQ(value, Bytes(11));
}

TEST_F(Interface, CheckSwapCompareOrder)
{
    const Bytes none(8);
    const Bytes plain = parsed(as_, "65546");
    const Bytes dotted = parsed(as_, "1.10");
    EXPECT_EQ(bgpdt_check(as_, dotted.data(), dotted.size(), nullptr), BGPDT_OK);
    EXPECT_EQ(bgpdt_check(as_, none.data(), none.size(), error_.out()), BGPDT_REFUSED);
    Bytes swapped = dotted;
    EXPECT_EQ(bgpdt_swap(as_, swapped.data(), swapped.size(), nullptr), BGPDT_OK);
    EXPECT_EQ(swapped, (Bytes{10, 0, 1, 0, 1, 0, 0, 0}));
    int order = 7;
    EXPECT_EQ(bgpdt_compare(as_, plain.data(), 8, dotted.data(), 8, &order, nullptr), BGPDT_OK);
    EXPECT_EQ(order, 0); // the router looks at the number alone
    EXPECT_EQ(bgpdt_order(as_, plain.data(), 8, dotted.data(), 8, &order), BGPDT_OK);
    EXPECT_EQ(order, -1);
    EXPECT_EQ(bgpdt_order(as_, dotted.data(), 8, plain.data(), 8, &order), BGPDT_OK);
    EXPECT_EQ(order, 1);
    EXPECT_EQ(bgpdt_order(as_, dotted.data(), 8, dotted.data(), 8, &order), BGPDT_OK);
    EXPECT_EQ(order, 0);
}

TEST_F(Interface, KeysWithoutAnOrderOfTheirOwn)
{
    const bgpdt_type *evpn = library_.type("EVNPREFIX");
    const Bytes multicast = parsed(evpn, "100:32:192.0.2.1");
    const Bytes prefix = parsed(evpn, "100:192.0.2.0:24");
    ASSERT_FALSE(multicast.empty() || prefix.empty());
    int order = 0;
    EXPECT_EQ(bgpdt_compare(evpn, multicast.data(), multicast.size(), prefix.data(), prefix.size(), &order, nullptr),
              BGPDT_REFUSED);
    EXPECT_EQ(bgpdt_order(evpn, multicast.data(), multicast.size(), prefix.data(), prefix.size(), &order), BGPDT_OK);
    EXPECT_EQ(order, -1);
}

TEST_F(Interface, BothByteOrders)
{
    Bytes value = parsed(as_, "1.10");
    const Bytes target = value;
    EXPECT_EQ(bgpdt_to_native(as_, value.data(), value.size()), BGPDT_OK);
    std::uint32_t number = 0;
    std::memcpy(&number, value.data(), sizeof number);
    EXPECT_EQ(number, 65546U);
    EXPECT_EQ(bgpdt_from_native(as_, value.data(), value.size()), BGPDT_OK);
    EXPECT_EQ(value, target);
    EXPECT_EQ(bgpdt_to_native(as_, value.data(), 7), BGPDT_NO_SENSE);
}

TEST_F(Interface, HexadecimalBytes)
{
    Bytes value(12);
    const std::string_view hex = "0x0001 c0000201:0007_00000000";
    EXPECT_EQ(bgpdt_from_hex(rd_, hex.data(), hex.size(), value.data(), value.size(), nullptr), BGPDT_OK);
    EXPECT_EQ(value, rd_value);
    EXPECT_EQ(bgpdt_from_hex(rd_, "0?", 2, value.data(), value.size(), error_.out()), BGPDT_REFUSED);
    EXPECT_EQ(bgpdt_from_hex(rd_, "00", 2, value.data(), value.size(), error_.out()), BGPDT_REFUSED);
}

TEST_F(Interface, TablesAsJson)
{
    char *json = nullptr;
    std::size_t size = 0;
    ASSERT_EQ(bgpdt_table(as_, Bytes{0, 1, 0, 10, 0, 0, 0, 1}.data(), 8, &json, &size, nullptr), BGPDT_OK);
    EXPECT_EQ(std::string(owned(json).get(), size), R"({"asNumValue":65546,"asType":1})");
    const auto read = [&](const bgpdt_type *type, std::string_view text) {
        Bytes value(size_of(type), 0xee);
        const int code = bgpdt_read_table(type, text.data(), text.size(), value.data(), value.size(), error_.out());
        return code == BGPDT_OK ? value : Bytes{};
    };
    EXPECT_EQ(read(as_, R"({ "asType": 1, "asNumValue": 65546 })"), (Bytes{0, 1, 0, 10, 0, 0, 0, 1}));
    EXPECT_EQ(read(rd_, R"({"RdType":0,"RdValue":[0,1,192,0,2,1,0,7]})"), rd_value);
    EXPECT_EQ(read(library_.type("PDID2PDNAME"), "7"), (Bytes{0, 0, 0, 7}));
    EXPECT_EQ(printed(library_.type("CVRFNAME"), read(library_.type("CVRFNAME"), "\"red\"")), "red");
    for (const char *wrong : {"", "{", "{\"asNumValue\":1}", "null", "true", "1.5", "[]", "\"x\"", "1 2",
                              R"({"asNumValue":1,"asNumValue":1,"asType":0})", R"({"x":null,"x":1})"}) {
        EXPECT_EQ(read(as_, wrong), Bytes()) << wrong;
        EXPECT_EQ(error_->code, BGPDT_REFUSED) << wrong;
    }
    EXPECT_EQ(read(as_, std::string(33, '[') + std::string(33, ']')), Bytes());
    EXPECT_EQ(string_of(error_->message), "it is nested deeper than 32 levels");
}

TEST_F(Interface, EverySampleGoesThroughItsTable)
{
    std::size_t tried = 0;
    for (std::size_t i = 0; i < bgpdt_type_count(library_.get()); ++i) {
        const bgpdt_type *type = bgpdt_type_at(library_.get(), i);
        const bgpdt_info &info = *bgpdt_about(type);
        const unsigned both = BGPDT_TABLE | BGPDT_READ_TABLE;
        for (std::size_t j = 0; j < info.sample_count && (info.operations & both) == both; ++j) {
            SCOPED_TRACE(string_of(info.name) + " " + string_of(info.samples[j]));
            const Bytes value = parsed(type, string_of(info.samples[j]));
            char *json = nullptr;
            std::size_t size = 0;
            if (value.empty() || bgpdt_table(type, value.data(), value.size(), &json, &size, nullptr) != BGPDT_OK)
                continue;
            const auto text = owned(json);
            Bytes read(info.value_size);
            if (bgpdt_read_table(type, json, size, read.data(), read.size(), nullptr) != BGPDT_OK)
                continue; // some kinds are only written
            if (std::strstr(json, "\ufffd") != nullptr || type == library_.type("VPNV4MCPREFIX"))
                continue; // a string of bytes that are no text; a key that scripts read 16 bits of
            ++tried;
            EXPECT_EQ(read, value) << json;
        }
    }
    EXPECT_GT(tried, 80U);
}

TEST_F(Interface, FieldsAsJson)
{
    char *json = nullptr;
    ASSERT_EQ(bgpdt_explain(rd_, rd_value.data(), rd_value.size(), &json, nullptr, nullptr), BGPDT_OK);
    const std::string text(owned(json).get());
    EXPECT_NE(text.find(R"("hex":"0001c0000201000700000000")"), std::string::npos) << text;
    EXPECT_NE(text.find(R"("value":"192.0.2.1, 7")"), std::string::npos) << text;
}

TEST_F(Interface, DialectsOfATextOrOfOneOfItsShape)
{
    const auto asked = [this](std::string_view text) {
        char *json = nullptr;
        std::size_t size = 0;
        EXPECT_EQ(bgpdt_dialects(rd_, text.data(), text.size(), &json, &size, nullptr), BGPDT_OK);
        const std::string answer(owned(json).get(), size);
        const std::size_t begin = answer.find(R"("asked":")") + 9;
        return answer.substr(begin, answer.find('"', begin) - begin);
    };
    EXPECT_EQ(asked("65551:9"), "65551:9");
    EXPECT_EQ(asked("70000:12"), "65551:9"); // an AS of four octets, and a number that fits
    EXPECT_EQ(asked("1.20:7"), "1.15:9");
    EXPECT_EQ(asked("203.0.113.9:1"), "192.0.2.1:7");
    EXPECT_EQ(asked("70000:70000"), "65551:65540");
    EXPECT_EQ(asked("0065001:02"), "0064496:01"); // leading zeros
    EXPECT_EQ(asked("no-such-notation"), "");
    EXPECT_EQ(asked(""), "");
}

TEST_F(Interface, FieldsByTheirNames)
{
    /// "no such field" where the value has not, but others of its type have.
    const auto field = [this](const bgpdt_type *type, const Bytes &value, std::string_view name, int code) {
        char *text = nullptr;
        std::size_t size = 0;
        EXPECT_EQ(bgpdt_field(type, value.data(), value.size(), name.data(), name.size(), &text, &size, error_.out()),
                  code)
            << name;
        const auto owner = owned(text);
        return text == nullptr ? "no such field" : std::string(text, size);
    };
    EXPECT_EQ(field(rd_, rd_value, "administrator", BGPDT_OK), "192.0.2.1");
    EXPECT_EQ(field(rd_, parsed(rd_, "64496:7"), "administrator", BGPDT_NUMBER), "64496");
    EXPECT_EQ(field(rd_, rd_value, "assigned number", BGPDT_NUMBER), "7");
    EXPECT_EQ(field(rd_, rd_value, "text form", BGPDT_OK), "IPv4 address and number"); // its number stands for that
    const bgpdt_type *const evpn = library_.type("EVNPREFIX");
    const Bytes key = parsed(evpn, "100:32:192.0.2.1");
    EXPECT_EQ(field(evpn, key, "originator", BGPDT_OK), "192.0.2.1");
    EXPECT_EQ(field(evpn, key, "ESI", BGPDT_OK), "no such field");
    EXPECT_EQ(field(rd_, rd_value, "admin", BGPDT_NO_FIELD), "no such field");
    EXPECT_EQ(string_of(error_->message), "VRFRD has no field admin (did you mean administrator?)");
    EXPECT_EQ(field(rd_, Bytes(11), "administrator", BGPDT_REFUSED), "no such field");
}

/// A field's name, and what it says; a number behind "= ".
std::string words_for(const bgpdt_named_field &field)
{
    return string_of(field.name) + (field.code == BGPDT_NUMBER ? "= " : ": ") + string_of(field.text);
}

struct Fields {
    ~Fields() { bgpdt_fields_free(fields); }
    std::vector<std::string> words() const
    {
        std::vector<std::string> words;
        for (std::size_t i = 0; i < fields->count; ++i)
            words.push_back(words_for(fields->rows[i]));
        return words;
    }
    bgpdt_fields *fields = nullptr;
};

TEST_F(Interface, AllFieldsAtOnce)
{
    Fields all;
    ASSERT_EQ(bgpdt_fields_of(rd_, rd_value.data(), rd_value.size(), &all.fields, error_.out()), BGPDT_OK);
    EXPECT_EQ(all.fields->struct_size, sizeof(bgpdt_fields));
    EXPECT_EQ(all.words(), (std::vector<std::string>{"type code: 0x0001", "administrator: 192.0.2.1",
                                                     "assigned number= 7", "text form: IPv4 address and number"}));
    Fields none;
    EXPECT_EQ(bgpdt_fields_of(rd_, rd_value.data(), 11, &none.fields, error_.out()), BGPDT_REFUSED);
    EXPECT_EQ(none.fields, nullptr);
}

TEST_F(Interface, FieldsThatValuesMayHave)
{
    Fields known;
    ASSERT_EQ(bgpdt_known_fields(rd_, &known.fields, error_.out()), BGPDT_OK);
    EXPECT_EQ(known.words(),
              (std::vector<std::string>{"type code: ", "administrator: ", "assigned number= ", "text form: "}));
}

/// Which fields are numbers holds for values of any bytes.
TEST_F(Interface, AFieldThatIsANumberIsOneInEveryValue)
{
    std::mt19937 random(1);
    std::size_t numbers = 0;
    for (std::size_t i = 0; i < bgpdt_type_count(library_.get()); ++i) {
        const bgpdt_type *const type = bgpdt_type_at(library_.get(), i);
        Fields known;
        ASSERT_EQ(bgpdt_known_fields(type, &known.fields, nullptr), BGPDT_OK);
        for (int round = 0; round < 60; ++round) {
            Bytes value(size_of(type));
            for (std::uint8_t &byte : value)
                byte = static_cast<std::uint8_t>(random() % 4 == 0 ? random() : random() % 10);
            std::fill_n(value.begin(), std::min<std::size_t>(3, value.size()),
                        std::uint8_t{0}); // a sub-kind that there is
            Fields fields;
            ASSERT_EQ(bgpdt_fields_of(type, value.data(), value.size(), &fields.fields, nullptr), BGPDT_OK);
            for (const std::string &word : fields.words()) {
                const auto is_it = [name = word.substr(0, word.find_first_of(":="))](const std::string &other) {
                    return other == name + "= ";
                };
                const auto rows = known.words();
                if (std::ranges::any_of(rows, is_it)) {
                    ++numbers;
                    EXPECT_NE(word.find("= "), std::string::npos) << string_of(bgpdt_about(type)->name) << " " << word;
                }
            }
        }
    }
    EXPECT_GT(numbers, 1000U);
}

TEST_F(Interface, WhatIsKnownOfTypes)
{
    EXPECT_EQ(bgpdt_type_count(library_.get()), 33U);
    EXPECT_EQ(bgpdt_type_at(library_.get(), 33), nullptr);
    EXPECT_EQ(bgpdt_type_at(library_.get(), 14), rd_);
    EXPECT_EQ(library_.type("vrfrd"), rd_);
    const bgpdt_info &info = *bgpdt_about(rd_);
    EXPECT_EQ(info.struct_size, sizeof info);
    EXPECT_EQ(string_of(info.name), "VRFRD");
    EXPECT_EQ(string_of(info.about), "route distinguisher");
    EXPECT_EQ(string_of(info.grammar).substr(0, 23), "A:N, H.L:N or IPV4:N. N");
    EXPECT_EQ(info.id, 0x0103);
    EXPECT_EQ(info.base_kind, 0x1A);
    EXPECT_EQ(info.value_size, 12U);
    EXPECT_EQ(info.mode, 2U);
    EXPECT_EQ(info.operations, 0xFFU);
    EXPECT_EQ(info.kind_count, 0U);
    for (std::size_t i = 0; i < info.sample_count; ++i)
        EXPECT_FALSE(parsed(rd_, string_of(info.samples[i])).empty());
    EXPECT_GT(info.sample_count, 2U);
    ASSERT_EQ(info.help_count, 1U);
    EXPECT_EQ(string_of(info.help[0]).substr(0, 7), "STRING<");
    EXPECT_STREQ(bgpdt_operation_word(BGPDT_READ_TABLE), "value");
    EXPECT_EQ(bgpdt_operation_word(BGPDT_SWAP << 1), nullptr);
    EXPECT_EQ(bgpdt_operation_word(0), nullptr);
}

TEST_F(Interface, KindsOfRouteKeys)
{
    const bgpdt_info &info = *bgpdt_about(library_.type("BOLPREFIX"));
    ASSERT_EQ(info.kind_count, 17U);
    for (std::size_t i = 0; i < info.kind_count; ++i) {
        EXPECT_EQ(info.kinds[i]->number, i);
        EXPECT_EQ(info.kinds[i]->struct_size, sizeof(bgpdt_kind));
        EXPECT_GT(info.kinds[i]->name.size, 0U);
        EXPECT_GT(info.kinds[i]->about.size, 0U);
    }
}

TEST_F(Interface, OtherModes)
{
    const bgpdt_type *copy = nullptr;
    ASSERT_EQ(bgpdt_in_mode(as_, 3, &copy), BGPDT_OK);
    EXPECT_EQ(bgpdt_about(copy)->mode, 3U);
    const Bytes value = parsed(as_, "1.10");
    std::uint8_t bytes[16];
    std::size_t size = 0;
    EXPECT_EQ(
        bgpdt_print(copy, value.data(), value.size(), reinterpret_cast<char *>(bytes), sizeof bytes, &size, nullptr),
        BGPDT_BYTES);
    ASSERT_EQ(size, 8U);
    EXPECT_EQ(bgpdt_from_native(as_, bytes, 8), BGPDT_OK);
    EXPECT_TRUE(std::equal(value.begin(), value.end(), bytes));
    EXPECT_EQ(bgpdt_why(copy, "1", 1, error_.out()), BGPDT_REFUSED);
    EXPECT_EQ(string_of(error_->message),
              "ASNUM refuses \"1\" in mode 3: it takes no text in this mode (SYSDT_ERR_FAIL)");
    const bgpdt_type *again = nullptr;
    EXPECT_EQ(bgpdt_in_mode(copy, 3, &again), BGPDT_OK);
    EXPECT_EQ(again, copy);
    EXPECT_EQ(bgpdt_in_mode(copy, 2, &again), BGPDT_OK);
    EXPECT_EQ(again, as_);
    EXPECT_EQ(bgpdt_in_mode(as_, 256, &again), BGPDT_NO_SENSE);
}

TEST_F(Interface, BitmapsAreListed)
{
    const bgpdt_type *bitmap = library_.type("ATTRIDBITMAP");
    Bytes value(size_of(bitmap));
    value[0] = 0x06;
    const std::string text = printed(bitmap, value);
    EXPECT_NE(text.find('1'), std::string::npos) << text;
    EXPECT_NE(text.find('2'), std::string::npos) << text;
    EXPECT_EQ(printed(bitmap, Bytes(size_of(bitmap))), "code " + std::to_string(BGPDT_REFUSED));
}

} // namespace
} // namespace bgpdt::test
