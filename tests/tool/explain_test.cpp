// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Explanations of every value that the vectors and the samples know, of every type and every kind.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tool/explain_pictures.hpp"
#include "toolkit/conversions.hpp"
#include "toolkit/explain.hpp"
#include "toolkit/json_answers.hpp"
#include "toolkit/kinds.hpp"
#include "toolkit/samples.hpp"
#include "vector_values.hpp"

namespace bgpdt::toolkit {
namespace {

using nlohmann::ordered_json;
using test::session;

Bytes filled(const SYSDT_Record &type, Bytes value)
{
    value.resize(std::max(value.size(), value_size(type)));
    return value;
}

/// The values of the texts that the tool shows for the type.
std::vector<Bytes> sample_values(const SYSDT_Record &type)
{
    std::vector<Bytes> list;
    for (const std::string &text : sample_of(type.typeId).texts)
        list.push_back(filled(type, parse_text(session(), type, text, session().mode_for(type)).data));
    return list;
}

/// A value with nothing but its kind.
Bytes bare_value(const SYSDT_Record &type, std::uint32_t kind)
{
    Bytes value(value_size(type));
    std::memcpy(value.data(), &kind, sizeof kind);
    return value;
}

std::vector<Bytes> values_of(const SYSDT_Record &type)
{
    std::vector<Bytes> list = sample_values(type);
    const auto known = test::values().find(name_of(type));
    if (known != test::values().end())
        list.insert(list.end(), known->second.begin(), known->second.end());
    for (const Kind &kind : kinds(session(), type))
        list.push_back(bare_value(type, kind.number));
    list.push_back(Bytes(value_size(type)));
    return list;
}

std::uint64_t big_endian(std::span<const std::uint8_t> bytes)
{
    std::uint64_t number = 0;
    for (const std::uint8_t byte : bytes)
        number = number << 8 | byte;
    return number;
}

/// Every byte stands in one part, and the numbers are those of the target's order.
void expect_tiled(const Explanation &explanation)
{
    std::size_t at = 0;
    for (const Part &part : explanation.parts) {
        ASSERT_EQ(part.offset, at);
        ASSERT_GT(part.size, 0U);
        EXPECT_FALSE(part.meaning.empty());
        EXPECT_EQ(part.name.empty(), part.meaning == "unused" || part.meaning == "unused, but not zero");
        at += part.size;
        const std::span<const std::uint8_t> bytes = explanation.bytes_of(part);
        const std::size_t width = part.numbers.empty() ? 0 : part.size / part.numbers.size();
        for (std::size_t i = 0; i < part.numbers.size(); ++i)
            EXPECT_EQ(part.numbers[i], big_endian(bytes.subspan(i * width, width))) << part.name;
    }
    EXPECT_EQ(at, explanation.bytes.size());
}

/// No field is left out for lying in another one. Entries that are told as the one before them are.
void expect_fields(const SYSDT_Record &type, const Bytes &value, const Explanation &explanation)
{
    const Layout &layout = layout_of(type.typeId, value, std::endian::native);
    if (explanation.parts.front().repeats > 0) // an empty list
        return;
    for (const Field &field : layout.fields) {
        const auto names_it = [&field](const Part &part) {
            return part.offset == field.offset && part.size == field.size() && part.name.starts_with(field.name);
        };
        if (field.size() != 0) {
            EXPECT_EQ(std::ranges::count_if(explanation.parts, names_it), 1) << field.name;
        }
    }
}

void expect_same_json(const Explanation &explanation)
{
    const std::string line = explanation_json(explanation).text();
    const ordered_json json = ordered_json::parse(line, nullptr, false);
    ASSERT_FALSE(json.is_discarded()) << line;
    EXPECT_EQ(json["schema"], json_schema);
    EXPECT_EQ(json["hex"], to_hex(explanation.bytes));
    std::string hex;
    for (const ordered_json &part : json["parts"]) {
        EXPECT_EQ(part["offset"].get<std::size_t>(), hex.size() / 2);
        hex += part["hex"].get<std::string>();
    }
    EXPECT_EQ(json["hex"], hex);
    EXPECT_EQ(json["text"].is_null(), json.contains("no_text"));
    EXPECT_EQ(json["table"].is_null(), json.contains("no_table"));
}

/// Where a line of the text stands between bars, the bars stand below each other.
void expect_lined_up(const std::string &text)
{
    std::string border;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (border.empty() && line.starts_with('+'))
            border = line;
        const bool ascii = std::ranges::all_of(line, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
        if (ascii && (line.starts_with('|') || line.starts_with('+'))) {
            ASSERT_EQ(line.size(), border.size()) << text;
            for (std::size_t at = 0; at < border.size(); ++at)
                ASSERT_TRUE(border[at] != '+' || line[at] == line[0]) << text;
        }
    }
    EXPECT_FALSE(border.empty());
}

class Explained : public testing::TestWithParam<std::string> {};

TEST_P(Explained, EveryByteIsToldOnce)
{
    const SYSDT_Record &type = session().type(GetParam());
    const std::string about = sample_of(type.typeId).about;
    EXPECT_FALSE(about.empty());
    for (const Bytes &value : values_of(type)) {
        SCOPED_TRACE(to_hex(value));
        const Explanation explanation = explanation_of(session(), type, value);
        EXPECT_EQ(explanation.bytes.size(), value_size(type));
        expect_tiled(explanation);
        expect_fields(type, value, explanation);
        expect_same_json(explanation);
        expect_lined_up(tool::explanation_text(explanation, false));
        if (HasFailure())
            return;
    }
}

TEST_P(Explained, TheTextIsWhatTheTypePrints)
{
    const SYSDT_Record &type = session().type(GetParam());
    for (const Bytes &value : sample_values(type)) {
        const Explanation explanation = explanation_of(session(), type, value);
        if (type.formatOut == nullptr)
            EXPECT_FALSE(explanation.no_text.empty());
        else
            EXPECT_EQ(explanation.text, print_value(session(), type, value, session().mode_for(type)).text);
    }
}

std::vector<std::string> type_names()
{
    std::vector<std::string> names;
    for (const SYSDT_Record *type : session().host().types())
        names.push_back(name_of(*type));
    return names;
}

INSTANTIATE_TEST_SUITE_P(All, Explained, testing::ValuesIn(type_names()), [](const auto &name) { return name.param; });

TEST(ExplainedKinds, AllHaveTheirName)
{
    EXPECT_EQ(type_names().size(), std::size_t{SYSDT_NAME_INDEX_TYPE_COUNT} + SYSDT_EXTEND_TYPE_COUNT);
    const SYSDT_Record &type = session().type("BOLPREFIX");
    std::set<std::string> names;
    for (const Kind &kind : kinds(session(), type)) {
        const Explanation explanation = explanation_of(session(), type, bare_value(type, kind.number));
        EXPECT_EQ(explanation.kind, kind.name);
        EXPECT_EQ(explanation.parts.front().meaning, kind.name);
        EXPECT_GT(explanation.parts.size(), 2U) << kind.name << " has fields of its own";
        names.insert(explanation.kind);
    }
    EXPECT_EQ(names.size(), std::size_t{SYSDT_BOL_KINDS});
}

TEST(ExplainedKinds, EveryOneWithTextHasASample)
{
    const SYSDT_Record &type = session().type("BOLPREFIX");
    std::set<std::uint32_t> sampled;
    for (const Bytes &value : sample_values(type))
        sampled.insert(kind_of(value));
    for (const Kind &kind : kinds(session(), type))
        EXPECT_EQ(sampled.contains(kind.number), kind.takes_text) << kind.name;
}

TEST(ExplainedKinds, SamplesAreOfTheKindThatTheyAreToldOf)
{
    for (const SYSDT_Record *type : session().host().types()) {
        std::vector<std::string> told;
        for (const KindSample &of_kind : sample_of(type->typeId).kinds) {
            for (const std::string &text : of_kind.texts) {
                const Bytes value = parse_text(session(), *type, text, session().mode_for(*type)).data;
                EXPECT_EQ(kind_of(value), of_kind.kind) << name_of(*type) << " " << text;
                told.push_back(text);
            }
        }
        const bool has_kinds = !kinds(session(), *type).empty();
        EXPECT_EQ(told, has_kinds ? sample_of(type->typeId).texts : std::vector<std::string>()) << name_of(*type);
    }
}

} // namespace
} // namespace bgpdt::toolkit
