// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "explain.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <string_view>
#include <utility>

#include "conversions.hpp"
#include "display_record.hpp"
#include "errors.hpp"
#include "field_values.hpp"
#include "kinds.hpp"
#include "samples.hpp"
#include "script_table.hpp"
#include "shown_text.hpp"
#include "words.hpp"

namespace bgpdt::toolkit {
namespace {

using Value = std::span<const std::uint8_t>;

// ------------------------------------------------------------------------------------------------ parts

void add_unnamed(std::vector<Part> &parts, Value value, std::size_t from, std::size_t to)
{
    if (from < to) {
        const Value bytes = value.subspan(from, to - from);
        const bool zero = std::ranges::all_of(bytes, [](std::uint8_t byte) { return byte == 0; });
        parts.push_back(
            {from, to - from, "", zero ? "unused" : "unused, but not zero", zero ? "" : octets_text(bytes)});
    }
}

Part part_of(const FieldReader &reader, const Field &field, std::size_t offset)
{
    const Value bytes = reader.value.subspan(offset, field.size());
    FieldValue read = reader.read(field, bytes);
    Part part{offset, field.size(),           field.name, std::move(read.meaning), std::move(read.shown),
              "",     std::move(read.numbers)};
    part.in_words = read.in_words;
    part.pieces = std::move(read.pieces);
    if (field.key != nullptr)
        part.key = (field.table == nullptr ? "" : std::string(field.table) + ".") + field.key;
    return part;
}

/// The parts of one entry of the layout.
void add_entry(std::vector<Part> &parts, const FieldReader &reader, const Layout &layout, std::size_t entry)
{
    const std::size_t begin = entry * layout.stride;
    const std::size_t end = std::min(begin + layout.stride, reader.value.size());
    std::size_t at = begin;
    for (const Field *const field : fields_in_order(layout, end - begin)) {
        const std::size_t offset = begin + field->offset;
        add_unnamed(parts, reader.value, at, offset);
        Part &part = parts.emplace_back(part_of(reader, *field, offset));
        if (layout.repeat > 1) {
            const std::string index = std::to_string(entry + 1);
            part.name += " " + index;
            for (NamedValue &piece : part.pieces)
                piece.name += " " + index;
            part.key = layout.key + ("[" + index + "].") + part.key;
        }
        at = offset + field->size();
    }
    add_unnamed(parts, reader.value, at, end);
}

/// Entries that are alike, told in one part.
Part alike(const Layout &layout, std::size_t first, const std::string &meaning)
{
    const std::size_t count = layout.repeat - first;
    const std::string number = std::to_string(first + 1);
    Part part{first * layout.stride, count * layout.stride,
              count == 1 ? "entry " + number : "entries " + number + " to " + std::to_string(layout.repeat), meaning};
    part.repeats = count;
    return part;
}

std::vector<Part> parts_of_fields(const FieldReader &reader, const Layout &layout)
{
    std::vector<Part> parts;
    const auto [told, empty] = reader.entries(layout);
    for (std::size_t entry = 0; entry < told; ++entry)
        add_entry(parts, reader, layout, entry);
    if (told < layout.repeat)
        parts.push_back(alike(layout, told, empty ? "empty" : "as entry " + std::to_string(told)));
    add_unnamed(parts, reader.value, layout.size(), reader.value.size());
    return parts;
}

Part whole_value(const SYSDT_Record &type, Value value)
{
    const Field field = whole_field(type);
    const FieldReader reader(value);
    Part part = part_of(reader, field, 0);
    if (!field.host_order()) {
        part.size = value.size();
        part.shown = octets_text(value);
    }
    return part;
}

/// Empty for a type without kinds.
std::string kind_name(Session &session, const SYSDT_Record &type, Value value)
{
    const Layout &layout = layout_of(type.typeId, value, std::endian::native);
    const bool has_kinds = std::ranges::find(layout.fields, Words::sub_kind, &Field::words) != layout.fields.end();
    return has_kinds ? kind_name(session, type, kind_of(value)) : "";
}

std::vector<Part> parts_of(const SYSDT_Record &type, Value value, const std::string &kind)
{
    const Layout &layout = layout_of(type.typeId, value, std::endian::native);
    return layout.fields.empty() ? std::vector{whole_value(type, value)}
                                 : parts_of_fields(FieldReader(value, kind, layout), layout);
}

/// What the value prints as, or the sentence that says why it does not.
void add_text(Session &session, const SYSDT_Record &type, const Bytes &value, Explanation &explanation)
{
    try {
        const bool bitmap = type.typeId == SYSDT_TYPE_ATTRIDBITMAP;
        const bool empty = std::ranges::all_of(value, [](std::uint8_t byte) { return byte == 0; });
        if (bitmap && empty)
            throw Refusal("the bitmap is empty: there is nothing to list");
        const Bytes printable = bitmap ? bitmap_record(value, default_template, {}) : value;
        const Printed printed = print_value(session, type, printable, session.mode_for(type));
        explanation.text = printed.text ? *printed.text : to_hex(printed.bytes);
    } catch (const Refusal &refusal) {
        explanation.no_text = refusal.what();
    }
}

void add_table(Session &session, const SYSDT_Record &type, const Bytes &value, Explanation &explanation)
{
    try {
        const LuaState lua = new_lua_state();
        push_table(session, lua.get(), type, value);
        explanation.table = ScriptTable{script_json(lua.get(), -1), script_text(lua.get(), -1)};
    } catch (const Refusal &refusal) {
        explanation.no_table = refusal.what();
    }
}

/// As byte_lines() below.
std::vector<std::string> lines_of(Value bytes, std::size_t per_line)
{
    const std::uint8_t last = bytes.empty() ? 0 : bytes.back();
    const auto other = std::find_if(bytes.rbegin(), bytes.rend(), [last](std::uint8_t byte) { return byte != last; });
    const auto equal = static_cast<std::size_t>(other - bytes.rbegin());
    const std::size_t counted_bytes = equal > longest_row && (last == 0 || equal == bytes.size()) ? equal : 0;
    const std::size_t written = bytes.size() - counted_bytes;
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < written; at += per_line)
        lines.push_back(grouped(bytes.subspan(at, std::min(per_line, written - at)), 1, ' '));
    if (counted_bytes != 0)
        lines.push_back(to_hex(bytes.last(1)) + " x " + std::to_string(counted_bytes));
    return lines;
}

} // namespace

std::vector<Part> parts_of(Session &session, const SYSDT_Record &type, Value value)
{
    return parts_of(type, value, kind_name(session, type, value));
}

Explanation explanation_of(Session &session, const SYSDT_Record &type, const Bytes &value)
{
    Explanation explanation{.type = name_of(type),
                            .about = sample_of(type.typeId).about,
                            .native = session.settings().native,
                            .bytes = value};
    explanation.kind = kind_name(session, type, value);
    explanation.parts = parts_of(type, value, explanation.kind);
    add_text(session, type, value, explanation);
    add_table(session, type, value, explanation);
    if (!explanation.native)
        turn_to_target(type, explanation.bytes);
    return explanation;
}

std::vector<std::string> byte_lines(const Explanation &explanation, const Part &part, std::size_t per_line)
{
    const Value all = explanation.bytes_of(part);
    const bool equal_bytes = std::ranges::count(all, all.front()) == static_cast<std::ptrdiff_t>(all.size());
    if (part.repeats <= 1 || equal_bytes)
        return lines_of(all, per_line);
    std::vector<std::string> lines = lines_of(all.first(part.size / part.repeats), per_line);
    lines.back() += " x " + std::to_string(part.repeats);
    return lines;
}

std::string title_of(const Explanation &explanation)
{
    return explanation.type + (explanation.about.empty() ? "" : ", " + explanation.about) +
           (explanation.kind.empty() ? "" : ", " + explanation.kind) + ": " + counted(explanation.bytes.size(), "byte");
}

std::string order_of(const Explanation &explanation)
{
    return explanation.native ? "this machine's" : "the target's (big-endian)";
}

std::string text_of(const Explanation &explanation)
{
    return explanation.text ? shown(*explanation.text) : "none: " + explanation.no_text;
}

std::string table_of(const Explanation &explanation)
{
    return explanation.table ? explanation.table->text : "none: " + explanation.no_table;
}

} // namespace bgpdt::toolkit
