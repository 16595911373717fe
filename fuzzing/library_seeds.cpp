// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "library_input.hpp"
#include "seeds.hpp"
#include "toolkit/json_text.hpp"

namespace bgpdt::fuzzing {

namespace {

using test::Bytes;
using test::ScriptField;
using test::ScriptTable;
using test::ScriptValue;

Bytes bytes_of(std::string_view text) { return {text.begin(), text.end()}; }

Bytes joined(std::initializer_list<Bytes> parts)
{
    Bytes all;
    for (const Bytes &part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

toolkit::JsonText json_of(const ScriptValue &value);

toolkit::JsonText table_json(const ScriptTable &table)
{
    if (!table.empty() && table.front().name.empty()) {
        std::vector<toolkit::JsonText> entries;
        for (const ScriptField &field : table)
            entries.push_back(json_of(field.value));
        return {toolkit::to_json(entries)};
    }
    toolkit::JsonObject object;
    for (const ScriptField &field : table)
        object.add(field.name, json_of(field.value));
    return {object.text()};
}

toolkit::JsonText json_of(const ScriptValue &value)
{
    if (const auto *table = std::get_if<ScriptTable>(&value.value))
        return table_json(*table);
    if (const auto *string = std::get_if<std::string>(&value.value))
        return {toolkit::to_json(*string)};
    if (const auto *number = std::get_if<std::int64_t>(&value.value))
        return {toolkit::to_json(*number)};
    return {};
}

/// A column of the one text, as library_columns.cpp reads it.
Bytes column_of(const std::string &text)
{
    const auto size = static_cast<std::uint8_t>(std::min<std::size_t>(text.size(), UINT8_MAX));
    return joined({Bytes{1, 1, 0, size}, Bytes(2), bytes_of(text)});
}

} // namespace

void add_library_seeds(Seeds &seeds, std::size_t type, const test::Line &line)
{
    const auto seed = [&](Function function, const Bytes &payload) {
        constexpr std::uint8_t usual_mode = UINT8_MAX;
        seeds.add(joined(
            {Bytes{static_cast<std::uint8_t>(type), static_cast<std::uint8_t>(function), usual_mode, 0}, payload}));
    };
    if (line.verb == test::Verb::in || line.verb == test::Verb::bad) {
        seed(Function::parse, bytes_of(line.text));
        seed(Function::parse_many, column_of(line.text));
    }
    if (line.verb == test::Verb::bad)
        seed(Function::why, bytes_of(line.text));
    if (!line.bytes.empty()) { // one function a line: each type has many lines
        const Bytes &value = line.bytes;
        const std::pair<Function, Bytes> all[] = {
            {Function::print, value},
            {Function::explain, value},
            {Function::change, value},
            {Function::table, value},
            {Function::compare, joined({value, value})},
            {Function::field, joined({Bytes{13}, bytes_of("administrator"), value})},
            {Function::print_many, joined({Bytes{0, 16}, value, value})},
            {Function::from_hex, bytes_of(hex_of(value))},
        };
        const auto &[function, payload] = all[static_cast<std::size_t>(line.number) % std::size(all)];
        seed(function, payload);
    }
    if (line.script.is_table())
        seed(Function::read_table, bytes_of(json_of(line.script).text));
    seed(Function::open, bytes_of(line.subject));
}

} // namespace bgpdt::fuzzing
