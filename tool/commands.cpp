// SPDX-License-Identifier: Apache-2.0
#include "commands.hpp"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "answer.hpp"
#include "completion.hpp"
#include "display_values.hpp"
#include "errors.hpp"
#include "explain_pictures.hpp"
#include "grammar.hpp"
#include "script.hpp"
#include "stream.hpp"
#include "toolkit/conversions.hpp"
#include "toolkit/display_record.hpp"
#include "toolkit/explain.hpp"
#include "toolkit/kinds.hpp"
#include "toolkit/near_names.hpp"
#include "toolkit/operations.hpp"
#include "toolkit/samples.hpp"
#include "toolkit/script_table.hpp"
#include "toolkit/words.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

using nlohmann::ordered_json;

std::string id_text(std::uint16_t id)
{
    const std::uint8_t bytes[] = {static_cast<std::uint8_t>(id >> 8), static_cast<std::uint8_t>(id)};
    return "0x" + to_hex(bytes);
}

/// The argument's bytes in the machine's order.
Bytes read_bytes(const Session &session, const SYSDT_Record &type, std::string_view hex)
{
    Bytes value = from_hex(hex);
    if (!session.settings().native)
        turn_to_native(type, value);
    return value;
}

/// Fills a host's string up with NUL.
Bytes filled_up(const SYSDT_Record &type, Bytes value)
{
    if (type.baseKind == SYSDT_KIND_STRING && value.size() < value_size(type))
        value.resize(value_size(type));
    return value;
}

/// As read_bytes, but of the type's length.
Bytes read_value(const Session &session, const SYSDT_Record &type, std::string_view hex)
{
    Bytes value = filled_up(type, read_bytes(session, type, hex));
    require_size(type, value, value_size(type));
    return value;
}

/// Text, or bytes behind 0x.
Bytes read_text_or_value(Session &session, const SYSDT_Record &type, std::string_view argument)
{
    if (argument.starts_with("0x") || argument.starts_with("0X"))
        return read_value(session, type, argument);
    return filled_up(type, parse_text(session, type, argument, session.mode_for(type)).data);
}

std::string shown(const Session &session, const SYSDT_Record &type, Bytes value)
{
    if (!session.settings().native)
        turn_to_target(type, value);
    return to_hex(value);
}

Answer types(Session &session, const Options &)
{
    Answer answer{{}, ordered_json::array()};
    for (const SYSDT_Record *type : session.host().types()) {
        const std::vector<std::string> words = operations(*type);
        answer.json.push_back(
            {{"name", name_of(*type)}, {"id", type->typeId}, {"size", value_size(*type)}, {"operations", words}});
        std::string size = std::to_string(value_size(*type));
        size.insert(0, 6 - std::min<std::size_t>(size.size(), 6), ' ');
        answer.text.append(padded(name_of(*type), 20)).append(id_text(type->typeId)).append(size).append("  ");
        answer.text.append(joined(words, " ")).append("\n");
    }
    return answer;
}

Answer parse(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const std::uint8_t mode = session.mode_for(type);
    const host::Converted converted = parse_text(session, type, options.arguments[1], mode);
    const std::string hex = shown(session, type, converted.data);
    return {hex + "\n",
            {{"type", name_of(type)},
             {"mode", mode},
             {"text", options.arguments[1]},
             {"kind", converted.kind},
             {"size", converted.data.size()},
             {"hex", hex}}};
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
Bytes read_printable(const Session &session, const Options &options, const SYSDT_Record &type)
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

Answer print(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const std::uint8_t mode = session.mode_for(type);
    const Bytes value = read_printable(session, options, type);
    const bool by_template = !options.values.empty() && !options.settings.mode;
    const Printed printed = print_value(session, type, value, mode, by_template ? placeholder_rule : "");
    Answer answer{{}, {{"type", name_of(type)}, {"mode", mode}, {"kind", printed.kind}}};
    if (printed.text) {
        answer.text = *printed.text + (printed.text->ends_with('\n') ? "" : "\n");
        answer.json["text"] = *printed.text;
    } else {
        const bool copy = printed.bytes == value;
        const std::string hex = copy ? shown(session, type, printed.bytes) : to_hex(printed.bytes);
        answer.text = hex + "\n";
        answer.json["hex"] = hex;
    }
    return answer;
}

Answer check(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    check_value(session, type, read_bytes(session, type, options.arguments[1]));
    return {"ok\n", {{"type", name_of(type)}, {"ok", true}}};
}

Answer compare(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const Bytes first = read_text_or_value(session, type, options.arguments[1]);
    const Bytes second = read_text_or_value(session, type, options.arguments[2]);
    const int order = compare_values(session, type, first, second);
    return {std::to_string(order) + "\n", {{"type", name_of(type)}, {"order", order}}};
}

/// Endian works on the registered form.
bool swaps_short_form(const SYSDT_Record &type)
{
    return type.endian != nullptr && type.dataLength != value_size(type);
}

Answer swap_bytes(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    Bytes value = read_bytes(session, type, options.arguments[1]);
    if (type.endian != nullptr) {
        require_size(type, value, type.dataLength,
                     swaps_short_form(type) ? "swaps a short form of its values" : "has values of another length");
    }
    swap_value(session, type, value);
    if (!session.settings().native)
        turn_to_native(type, value); // what was in the machine's order is now in the other
    const std::string hex = to_hex(value);
    return {hex + "\n", {{"type", name_of(type)}, {"hex", hex}}};
}

/// A line of a description; none without a text.
std::string fact(const char *name, const std::string &text)
{
    return text.empty() ? "" : padded(std::string("  ") + name, 14) + text + "\n";
}

const char *storage(const SYSDT_Record &type)
{
    switch (type.baseKind) {
    case SYSDT_KIND_BINARY: return "binary";
    case SYSDT_KIND_STRING: return "string";
    default: return "structured";
    }
}

/// In a line if they fit one, else a line each.
std::string examples(const std::vector<std::string> &texts)
{
    constexpr std::size_t line_room = 80;
    const std::string line = joined(texts, ", ");
    return line.size() <= line_room ? line : joined(texts, "\n" + std::string(14, ' '));
}

std::string kinds_text(const std::vector<Kind> &kinds)
{
    std::string text = kinds.empty() ? "" : "  kinds\n";
    for (const Kind &kind : kinds) {
        const std::string number = std::to_string(kind.number);
        const std::string words = joined(kind.operations, " ");
        text.append(6 - std::min<std::size_t>(number.size(), 5), ' ').append(number).append("  ");
        text.append(padded(kind.name, 13)).append(padded(words, kind.form.empty() ? 0 : 26)).append(kind.form);
        text.append("\n");
    }
    return text;
}

ordered_json kinds_json(const std::vector<Kind> &kinds)
{
    ordered_json array = ordered_json::array();
    for (const Kind &kind : kinds) {
        ordered_json &entry = array.emplace_back(
            ordered_json{{"number", kind.number}, {"name", kind.name}, {"operations", kind.operations}});
        if (!kind.form.empty())
            entry["form"] = kind.form;
    }
    return array;
}

/// The named fields of a value, and the script fields that hold them. Of a list those of the entries that differ.
/// @param text  names the value, if not every value has these fields
Answer fields_of(Session &session, const SYSDT_Record &type, const Bytes &value, const std::string &text = {})
{
    std::vector<Part> parts = explanation_of(session, type, value).parts;
    std::erase_if(parts, [](const Part &part) { return part.name.empty() || part.repeats > 1; });
    std::size_t column = 0;
    for (const Part &part : parts)
        column = std::max(column, part.name.size() + 2);
    Answer fields{"  fields" + (text.empty() ? "" : "      of " + text) + "\n", ordered_json::array()};
    for (const Part &part : parts) {
        fields.text += padded("    " + range_of(part), 14) + padded(part.name, part.key.empty() ? 0 : column);
        fields.text += part.key + "\n";
        fields.json.push_back({{"offset", part.offset}, {"size", part.size}, {"name", part.name}});
        if (!part.key.empty())
            fields.json.back()["key"] = part.key;
    }
    return fields;
}

Bytes value_of_kind(const SYSDT_Record &type, std::uint32_t number)
{
    Bytes value(value_size(type));
    std::memcpy(value.data(), &number, sizeof number);
    return value;
}

/// Those of the first sample where they depend on the value, else what all have.
Answer fields_of_type(Session &session, const SYSDT_Record &type)
{
    const Bytes zeros(value_size(type));
    const Layout &layout = layout_of(type.typeId, zeros, std::endian::native);
    const bool depends = std::ranges::any_of(layout.fields, [](const Field &field) {
        return field.words == Words::evpn_route || field.words == Words::ls_route;
    });
    if (!depends)
        return fields_of(session, type, zeros);
    const std::string text = sample_of(type.typeId).texts.front();
    return fields_of(session, type, read_text_or_value(session, type, text), text);
}

Answer describe_kind(Session &session, const SYSDT_Record &type, const std::string &name)
{
    const std::vector<Kind> all = kinds(session, type);
    const auto kind = std::ranges::find_if(all, [&](const Kind &k) { return lower(k.name) == lower(name); });
    if (kind == all.end()) {
        std::vector<std::string> names;
        std::ranges::transform(all, std::back_inserter(names), &Kind::name);
        throw UsageError(name_of(type) + (all.empty() ? " has no kinds" : " has no kind " + name) +
                         did_you_mean(name, names));
    }
    const std::vector<std::string> texts = sample_of(type.typeId).texts_of(kind->number);
    const Answer fields = texts.empty() ? fields_of(session, type, value_of_kind(type, kind->number))
                                        : fields_of(session, type, read_text_or_value(session, type, texts.front()),
                                                    kind->number == SYSDT_BOL_EVN ? texts.front() : "");
    return {kind->name + "\n" + fact("kind", std::to_string(kind->number) + " of " + name_of(type)) +
                fact("size", counted(value_size(type), "byte")) + fact("takes", kind->form) +
                fact("for example", examples(texts)) + fact("operations", joined(kind->operations, " ")) + fields.text,
            {{"name", kind->name},
             {"type", name_of(type)},
             {"number", kind->number},
             {"size", value_size(type)},
             {"form", kind->form},
             {"examples", texts},
             {"operations", kind->operations},
             {"fields", fields.json}}};
}

Answer describe(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    if (options.arguments.size() > 1)
        return describe_kind(session, type, options.arguments[1]);
    const Sample sample = sample_of(type.typeId);
    const std::vector<Kind> all_kinds = kinds(session, type);
    // The help of a type with kinds is that of its first kind.
    const std::vector<std::string> takes = all_kinds.empty() ? help_texts(session, type) : std::vector<std::string>{};
    const std::vector<std::string> words = operations(type);
    const Answer fields = all_kinds.empty() ? fields_of_type(session, type) : Answer();
    const std::string swaps = swaps_short_form(type) ? counted(type.dataLength, "byte") + ", a short form" : "";

    Answer answer;
    answer.text = name_of(type) + "\n" + fact("about", sample.about) + fact("id", id_text(type.typeId)) +
                  fact("kind", storage(type)) + fact("size", counted(value_size(type), "byte")) + fact("swaps", swaps) +
                  fact("takes", joined(takes, " or ")) + fact("for example", examples(sample.texts)) +
                  fact("operations", joined(words, " ")) + fields.text + kinds_text(all_kinds);
    answer.json = {{"name", name_of(type)},    {"about", sample.about},    {"id", type.typeId},
                   {"kind", storage(type)},    {"size", value_size(type)}, {"takes", takes},
                   {"examples", sample.texts}, {"operations", words}};
    if (!fields.json.empty())
        answer.json["fields"] = fields.json;
    if (!all_kinds.empty())
        answer.json["kinds"] = kinds_json(all_kinds);
    return answer;
}

Answer table(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const Bytes value = read_text_or_value(session, type, options.arguments[1]);
    const LuaState lua = new_lua_state();
    push_table(session, lua.get(), type, value);
    const ordered_json json = script_json(lua.get(), -1);
    return {script_text(json) + "\n", {{"type", name_of(type)}, {"table", json}}};
}

bool is_coloured(const Options &options)
{
    if (options.color != "auto")
        return options.color == "always";
    const char *no_color = std::getenv("NO_COLOR");
    return (no_color == nullptr || *no_color == '\0') && isatty(STDOUT_FILENO) == 1;
}

Answer explain(Session &session, const Options &options)
{
    if (options.html && options.json)
        throw UsageError("--html and --json are two answers; give one of them");
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const Explanation explanation =
        explanation_of(session, type, read_text_or_value(session, type, options.arguments[1]));
    return {options.html ? explanation_html(explanation) : explanation_text(explanation, is_coloured(options)),
            explanation_json(explanation)};
}

Answer lua(Session &session, const Options &options)
{
    run_script(session, options.arguments[0], std::span(options.arguments).subspan(1));
    return {};
}

Answer complete(Session &session, const Options &options)
{
    const std::vector<std::string> words = completions(session, commands(), options.arguments);
    return {joined(words, "\n") + (words.empty() ? "" : "\n"), words};
}

Answer canon(Session &session, const Options &options)
{
    const SYSDT_Record &type = session.type(options.arguments[0]);
    const std::uint8_t mode = session.mode_for(type);
    const Bytes value = filled_up(type, parse_text(session, type, options.arguments[1], mode).data);
    const Printed printed = print_value(session, type, value, mode);
    const std::string text = printed.text ? *printed.text : to_hex(printed.bytes);
    return {text + "\n", {{"type", name_of(type)}, {"text", text}}};
}

constexpr Command table_of_commands[] = {
    {"types", "", "The registered types: name, id, size in bytes, operations", "", "bgpdt types", types},
    {"describe", "TYPE [KIND]", "What the type, or a kind of its values, is and takes", "", "bgpdt describe VRFRD",
     describe},
    {"grammar", "TYPE [KIND]", "The grammar of the texts, as rules, expression, schema or picture", "--as",
     "bgpdt grammar VRFRD --as abnf", grammar_answer},
    {"parse", "TYPE TEXT", "Text to bytes", "--mode --native", "bgpdt parse CMNTY_ENHANCE 'no-export 64496:1'", parse},
    {"print", "TYPE HEX", "Bytes to text", "--mode --native --record --template --value",
     "bgpdt print COMMUNITY 0xffffff0100000000", print},
    {"check", "TYPE [HEX]", "Whether the bytes, or the lines of the input, are values of the type",
     "--native --from --in --jobs --rejects --show --quiet --summary", "bgpdt check ASNUM 0x0000fbf000000000", check,
     check_lines},
    {"canon", "TYPE [TEXT]", "The text, or the lines of the input, as the type prints them",
     "--native --mode --from --in --output --jobs --rejects --show --quiet --summary", "bgpdt canon ASNUM 1.0", canon,
     canon_lines},
    {"convert", "TYPE [FILE...]", "Many values from one format to another, a line each",
     "--native --mode --from --to --output --jobs --rejects --show --quiet --summary",
     "bgpdt convert VRFRD --to json rds.txt", nullptr, convert_lines},
    {"sort", "TYPE [FILE...]", "Lines in the order of their values",
     "--native --mode --from --output --rejects --show --quiet --summary --memory --unique", "bgpdt sort VRFRD rds.txt",
     nullptr, sort_lines},
    {"uniq", "TYPE [FILE...]", "Of adjacent lines with the same value the first",
     "--native --mode --from --output --rejects --show --quiet --summary", "bgpdt uniq VRFRD rds.txt", nullptr,
     uniq_lines},
    {"compare", "TYPE VALUE VALUE", "The order of two values on this machine: -1, 0 or 1", "--mode --native",
     "bgpdt compare ASNUM 64496 0x0000fbf100000000", compare},
    {"swap", "TYPE HEX", "The bytes with their numbers in the other byte order", "--native",
     "bgpdt swap ASNUM 0x0000fbf000000000", swap_bytes},
    {"table", "TYPE VALUE", "The value as scripts see it", "--mode --native", "bgpdt table VRFRD 64496:100", table},
    {"explain", "TYPE VALUE", "The value's bytes, and what each field of them is", "--mode --native --color --html",
     "bgpdt explain VRFRD 64496:100", explain},
    {"lua", "FILE [ARG...]", "Runs a Lua script with the module 'bgp'", "--mode", "bgpdt lua script.lua 64496", lua},
    {"complete", "[WORD...]", "What the last word of a command line may become; ':file' stands for files", "",
     "bgpdt complete -- describe BOLPREFIX NG", complete},
};

} // namespace

std::span<const Command> commands() { return table_of_commands; }

} // namespace bgpdt::tool
