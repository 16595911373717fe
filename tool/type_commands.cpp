// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "type_commands.hpp"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>

#include "errors.hpp"
#include "explain_pictures.hpp"
#include "toolkit/explain.hpp"
#include "toolkit/fields.hpp"
#include "toolkit/json_answers.hpp"
#include "toolkit/kinds.hpp"
#include "toolkit/near_names.hpp"
#include "toolkit/operations.hpp"
#include "toolkit/samples.hpp"
#include "toolkit/words.hpp"
#include "values_given.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

std::string id_text(std::uint16_t id)
{
    const std::uint8_t bytes[] = {static_cast<std::uint8_t>(id >> 8), static_cast<std::uint8_t>(id)};
    return "0x" + to_hex(bytes);
}

/// A line of a description; none without a text.
std::string fact(const char *name, const std::string &text)
{
    return text.empty() ? "" : padded(std::string("  ") + name, 14) + text + "\n";
}

/// What the value of a text is among those of its type: its kind, its route type.
std::string label_of(Session &session, const SYSDT_Record &type, const std::string &text)
{
    std::vector<std::string> words;
    for (const NamedValue &field : named_values(session, type, read_given(session, type, text).value)) {
        const bool kind = field.name == "sub-kind" && type.typeId != SYSDT_TYPE_EVNPREFIX;
        if (kind || (field.name == "route type" && !field.number))
            words.push_back(field.text);
    }
    return joined(words, ", ");
}

/// In a line if they fit one, else a line each with what they are.
std::string examples(Session &session, const SYSDT_Record &type, const std::vector<std::string> &texts)
{
    constexpr std::size_t line_room = 80;
    if (joined(texts, ", ").size() <= line_room)
        return joined(texts, ", ");
    std::string lines;
    for (const std::string &text : texts) {
        const std::string label = label_of(session, type, text);
        lines += (lines.empty() ? "" : "\n" + std::string(14, ' ')) + text + (label.empty() ? "" : "  (" + label + ")");
    }
    return lines;
}

std::string kinds_text(const std::vector<Kind> &kinds)
{
    std::string text = kinds.empty() ? "" : "  kinds\n";
    for (const Kind &kind : kinds) {
        const std::string number = std::to_string(kind.number);
        text.append(6 - std::min<std::size_t>(number.size(), 5), ' ').append(number).append("  ");
        text.append(padded(kind.name, 13)).append(kind.about).append("\n");
    }
    return text;
}

Bytes value_of_kind(const SYSDT_Record &type, std::uint32_t number)
{
    Bytes value(value_size(type));
    std::memcpy(value.data(), &number, sizeof number);
    return value;
}

/// The named fields of a value, of a list those of the entries that differ.
std::vector<Part> named_parts(Session &session, const SYSDT_Record &type, const Bytes &value)
{
    std::vector<Part> parts = parts_of(session, type, value);
    std::erase_if(parts, [](const Part &part) { return part.name.empty() || part.repeats > 0; });
    return parts;
}

/// The fields, and the script fields that hold them.
///
/// @param text  names the value, if not every value has these fields
std::string layout_text(const std::vector<Part> &layout, const std::string &text)
{
    if (layout.empty())
        return {};
    std::size_t column = 0;
    for (const Part &part : layout)
        column = std::max(column, part.name.size() + 2);
    std::string lines = "  fields" + (text.empty() ? "" : "      of " + text) + "\n";
    for (const Part &part : layout)
        lines +=
            padded("    " + range_of(part), 14) + padded(part.name, part.key.empty() ? 0 : column) + part.key + "\n";
    return lines;
}

/// A value whose fields are shown, and its text if others have other fields.
struct Shown {
    Bytes value;
    std::string text;
};

Shown shown_value(Session &session, const SYSDT_Record &type)
{
    Bytes zeros(value_size(type));
    const Layout &layout = layout_of(type.typeId, zeros, std::endian::native);
    const bool depends = std::ranges::any_of(layout.fields, [](const Field &field) {
        return field.words == Words::evpn_route || field.words == Words::ls_route;
    });
    const std::string text = depends ? sample_of(type.typeId).texts.front() : "";
    if (layout.repeat > 1)
        zeros.front() = 1; // an entry that is not empty
    return {depends ? read_given(session, type, text).value : zeros, text};
}

Shown shown_value(Session &session, const SYSDT_Record &type, const Kind &kind, const std::vector<std::string> &texts)
{
    if (texts.empty())
        return {value_of_kind(type, kind.number), ""};
    return {read_given(session, type, texts.front()).value, kind.number == SYSDT_BOL_EVN ? texts.front() : ""};
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
    const std::vector<std::string> texts = sample_of(type.typeId).of_kind(kind->number).texts;
    const Shown shown = shown_value(session, type, *kind, texts);
    const std::vector<Part> layout = named_parts(session, type, shown.value);
    return {kind->name + "\n" + fact("about", kind->about) +
                fact("kind", std::to_string(kind->number) + " of " + name_of(type)) +
                fact("size", counted(value_size(type), "byte")) + fact("its help", kind->form) +
                fact("for example", examples(session, type, texts)) +
                fact("operations", joined(kind->operations, " ")) + layout_text(layout, shown.text),
            kind_json(type, *kind, texts, layout)};
}

/// Endian works on the registered form.
std::string swapped_form(const SYSDT_Record &type)
{
    const bool is_short = type.endian != nullptr && type.dataLength != value_size(type);
    return is_short ? counted(type.dataLength, "byte") + ", a short form" : "";
}

} // namespace

Answer types(Session &session, const Options &)
{
    std::string text;
    for (const SYSDT_Record *type : session.host().types()) {
        std::string size = std::to_string(value_size(*type));
        size.insert(0, 6 - std::min<std::size_t>(size.size(), 6), ' ');
        text.append(padded(name_of(*type), 20)).append(id_text(type->typeId)).append(size).append("  ");
        const std::string about = sample_of(type->typeId).about;
        text.append(about.empty() ? joined(operations(*type), " ") : about).append("\n");
    }
    return {text, types_json(session)};
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
    const Shown shown = all_kinds.empty() ? shown_value(session, type) : Shown{};
    const std::vector<Part> layout = all_kinds.empty() ? named_parts(session, type, shown.value) : std::vector<Part>{};
    return {name_of(type) + "\n" + fact("about", sample.about) + fact("id", id_text(type.typeId)) +
                fact("storage", storage_of(type)) + fact("size", counted(value_size(type), "byte")) +
                fact("swaps", swapped_form(type)) + fact("text", sample.grammar) +
                fact("its help", joined(takes, " or ")) + fact("for example", examples(session, type, sample.texts)) +
                fact("operations", joined(operations(type), " ")) + layout_text(layout, shown.text) +
                kinds_text(all_kinds),
            type_json(type, sample, takes, layout, all_kinds)};
}

} // namespace bgpdt::tool
