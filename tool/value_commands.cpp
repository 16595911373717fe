// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "value_commands.hpp"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <iterator>
#include <utility>

#include "display_values.hpp"
#include "errors.hpp"
#include "explain_pictures.hpp"
#include "toolkit/checks.hpp"
#include "toolkit/conversions.hpp"
#include "toolkit/dialects.hpp"
#include "toolkit/display_record.hpp"
#include "toolkit/explain.hpp"
#include "toolkit/fields.hpp"
#include "toolkit/json_answers.hpp"
#include "toolkit/script_table.hpp"
#include "toolkit/shown_text.hpp"
#include "toolkit/words.hpp"
#include "values_given.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

/// With the notes of how the arguments were taken.
Answer answer_of(std::string text, JsonObject json, std::initializer_list<const Given *> arguments)
{
    Answer answer{std::move(text), std::move(json)};
    for (const Given *given : arguments)
        if (!given->note.empty())
            answer.notes.push_back(given->note);
    return answer;
}

bool is_bitmap(const SYSDT_Record &type) { return type.typeId == SYSDT_TYPE_ATTRIDBITMAP; }

/// The display record that a router would make of the bitmap.
Bytes listed_bitmap(const Options &options, std::span<const std::uint8_t> bitmap)
{
    std::vector<DisplayValue> values;
    std::ranges::transform(options.values, std::back_inserter(values), read_display_value);
    if (std::ranges::all_of(bitmap, [](std::uint8_t byte) { return byte == 0; }))
        throw Refusal("the bitmap is empty: there is nothing to list");
    return bitmap_record(bitmap, options.line_template.value_or(std::string(default_template)), values);
}

/// What the type is given to print.
Bytes read_printable(Session &session, const Options &options, const SYSDT_Record &type)
{
    if ((options.line_template || !options.values.empty()) && (options.record || !is_bitmap(type))) {
        throw UsageError(options.record ? "--template and --value make the display record that --record gives as it is"
                                        : "--template and --value are for ATTRIDBITMAP, not for " + name_of(type));
    }
    if (!options.record) {
        Bytes value = read_value(session, type, options.arguments[1]);
        return is_bitmap(type) ? listed_bitmap(options, value) : value;
    }
    Bytes record = from_hex(options.arguments[1]);
    if (record.size() < value_size(type))
        require_size(type, record, value_size(type));
    return record;
}

bool is_coloured(const Options &options)
{
    if (options.color != "auto")
        return options.color == "always";
    const auto variable = [](const char *name) {
        const char *value = std::getenv(name);
        return std::string(value == nullptr ? "" : value);
    };
    return variable("NO_COLOR").empty() && variable("TERM") != "dumb" && isatty(STDOUT_FILENO) == 1;
}

/// A terminal is not to obey what a text holds.
std::string for_reader(const std::string &text) { return isatty(STDOUT_FILENO) == 1 ? shown_lines(text) : text; }

/// In columns, "-" for a field that one of the values has not.
std::string differences_text(const std::vector<Difference> &all)
{
    const auto shown = [](const std::string &text) { return text.empty() ? "-" : text; };
    std::size_t columns[] = {0, 0};
    for (const Difference &row : all) {
        columns[0] = std::max(columns[0], row.name.size() + 2);
        columns[1] = std::max(columns[1], row.first.size() + 2);
    }
    std::string text = all.empty() ? "the values are the same\n" : "";
    for (const Difference &row : all)
        text += padded(row.name, columns[0]) + padded(shown(row.first), columns[1]) + shown(row.second) + "\n";
    return text;
}

/// In columns: who, which version, what it makes of the text, and what became of its numbers.
std::string readings_text(const std::vector<Reading> &readings)
{
    std::size_t columns[] = {0, 0};
    const auto name = [](const Reading &reading) {
        return std::string(reading.reader) + (reading.version.empty() ? "" : " ") + std::string(reading.version);
    };
    const auto taken = [](const Reading &reading) {
        return std::string(reading.hex.empty() ? reading.answer : reading.hex);
    };
    for (const Reading &reading : readings) {
        columns[0] = std::max(columns[0], name(reading).size() + 2);
        columns[1] = std::max(columns[1], taken(reading).size() + 2);
    }
    std::string text;
    for (const Reading &reading : readings) {
        const std::string change = reading.change.empty() ? "" : ", " + std::string(reading.change);
        const std::string last = std::string(reading.value) + change;
        text += padded(name(reading), columns[0]) +
                (last.empty() ? taken(reading) : padded(taken(reading), columns[1])) + last + "\n";
    }
    return text;
}

Answer dialects_answer(const SYSDT_Record &type, const std::string &text)
{
    const Dialects dialects = dialects_of(type, text);
    const std::string asked(dialects.text);
    const std::string no_speaker = "no speaker was asked about \"" + shown(text) + "\"";
    const std::string line = asked.empty()   ? no_speaker + ", nor about a text like it\n"
                             : asked != text ? no_speaker + "; the nearest that was: " + asked + "\n"
                                             : "";
    return {line + readings_text(dialects.readings), dialects_json(type, text, dialects)};
}

} // namespace

Answer parse(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const std::uint8_t mode = session.mode_for(type);
    const std::string &text = options.arguments[1];
    const host::Converted converted = parse_text(session, type, text, mode);
    const std::string hex = hex_of(session, type, converted.data);
    return {hex + "\n", parsed_json(type, mode, text, converted.kind, converted.data.size(), hex)};
}

Answer print(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const std::uint8_t mode = session.mode_for(type);
    const Bytes value = read_printable(session, options, type);
    const bool by_template = !options.values.empty() && !options.settings.mode;
    const Printed printed = print_value(session, type, value, mode, by_template ? placeholder_rule : "");
    const bool copy = printed.bytes == value;
    const std::string hex = copy ? hex_of(session, type, printed.bytes) : to_hex(printed.bytes);
    const std::string &line = printed.text ? *printed.text : hex;
    return {for_reader(line) + (line.ends_with('\n') ? "" : "\n"),
            printed_json(type, mode, printed.kind, printed.text ? &*printed.text : nullptr, hex)};
}

Answer check(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const Given given = read_given(session, type, options.arguments[1], Length::any);
    if (type.check != nullptr || !given.by_text)
        check_value(session, type, given.value);
    if (options.canonical && given.by_text)
        require_canonical(session, type, options.arguments[1], given.value);
    Answer answer = answer_of("ok\n", checked_json(type), {&given});
    for (const std::string &warning : warnings_of(session, type, given.value))
        answer.notes.push_back("warning: " + warning);
    return answer;
}

Answer canon(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const Given given = read_given(session, type, options.arguments[1]);
    const Printed printed = print_value(session, type, given.value, session.mode_for(type));
    const std::string text = printed.text ? *printed.text : to_hex(printed.bytes);
    return answer_of(for_reader(text) + "\n", text_json(type, text), {&given});
}

Answer compare(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const Given first = read_given(session, type, options.arguments[1]);
    const Given second = read_given(session, type, options.arguments[2]);
    const int order = compare_values(session, type, first.value, second.value);
    return answer_of(std::to_string(order) + "\n", order_json(type, order), {&first, &second});
}

Answer diff(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const Given first = read_given(session, type, options.arguments[1]);
    const Given second = read_given(session, type, options.arguments[2]);
    const std::vector<Difference> all =
        differences(named_values(session, type, first.value), named_values(session, type, second.value));
    return answer_of(differences_text(all), differences_json(type, all), {&first, &second});
}

Answer swap_bytes(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    Bytes value = read_bytes(session, type, options.arguments[1]);
    if (type.endian != nullptr) {
        const bool is_short = type.dataLength != value_size(type);
        require_size(type, value, type.dataLength,
                     is_short ? "swaps a short form of its values" : "has values of another length");
    }
    swap_value(session, type, value);
    if (!session.settings().native)
        turn_to_native(type, value); // what was in the machine's order is now in the other
    const std::string hex = to_hex(value);
    return {hex + "\n", hex_json(type, hex)};
}

Answer table(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const Given given = read_given(session, type, options.arguments[1]);
    const LuaState lua = new_lua_state();
    push_table(session, lua.get(), type, given.value);
    return answer_of(script_text(lua.get(), -1) + "\n", table_json(type, script_json(lua.get(), -1)), {&given});
}

Answer explain(Session &session, const Options &options)
{
    if (options.html && options.json)
        throw UsageError("--html and --json are two answers; give one of them");
    if (options.html && options.dialects)
        throw UsageError("--html and --dialects are two answers; give one of them");
    const SYSDT_Record &type = session.type(options.arguments[0]);
    if (options.dialects)
        return dialects_answer(type, options.arguments[1]);
    const Given given = read_given(session, type, options.arguments[1]);
    const Explanation explanation = explanation_of(session, type, given.value);
    return answer_of(options.html ? explanation_html(explanation) : explanation_text(explanation, is_coloured(options)),
                     explanation_json(explanation), {&given});
}

} // namespace bgpdt::tool
