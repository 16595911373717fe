// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The answers of all fronts in JSON. Every member is written here and nowhere else, so that it means one thing in all of
/// them; docs/bgpdt.schema.json says what.
#pragma once

#include <concepts>
#include <cstdint>
#include <exception>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dialects.hpp"
#include "errors.hpp"
#include "explain.hpp"
#include "fields.hpp"
#include "json_text.hpp"
#include "kinds.hpp"
#include "samples.hpp"
#include "session.hpp"

namespace bgpdt::toolkit {

/// Begins every answer: it is raised when a member is gone or means something else.
inline constexpr int json_schema = 2;

/// @param before  what stands in front of it
JsonObject json_answer(Buffer before = {});
/// Of a type.
JsonObject json_answer(const SYSDT_Record &type);

/// How the host keeps values of the type.
const char *storage_of(const SYSDT_Record &type);

JsonObject types_json(Session &session);
/// What a type, or one of its kinds, is in words, and what it takes.
JsonObject type_json(const SYSDT_Record &type, const Sample &sample, const std::vector<std::string> &takes,
                     std::span<const Part> layout, const std::vector<Kind> &kinds);
JsonObject kind_json(const SYSDT_Record &type, const Kind &kind, const std::vector<std::string> &examples,
                     std::span<const Part> layout);

JsonObject parsed_json(const SYSDT_Record &type, std::uint8_t mode, const std::string &text,
                       std::uint16_t reported_kind, std::size_t size, const std::string &hex);
/// Text, or bytes where there is none.
JsonObject printed_json(const SYSDT_Record &type, std::uint8_t mode, std::uint16_t reported_kind,
                        const std::string *text, const std::string &hex);
JsonObject text_json(const SYSDT_Record &type, const std::string &text);
JsonObject hex_json(const SYSDT_Record &type, const std::string &hex);
JsonObject table_json(const SYSDT_Record &type, const JsonText &table);
JsonObject checked_json(const SYSDT_Record &type);
JsonObject order_json(const SYSDT_Record &type, int order);
JsonObject differences_json(const SYSDT_Record &type, std::span<const Difference> differences);
JsonObject explanation_json(const Explanation &explanation);
/// @param text  which was asked for
JsonObject dialects_json(const SYSDT_Record &type, std::string_view text, const Dialects &dialects);
JsonObject candidates_json(const std::vector<std::string> &candidates);

/// What else there is to say beside an answer.
void add_notes(JsonObject &answer, const std::vector<std::string> &notes);

/// The fields by their names.
/// @param before  what stands in front of them
JsonObject fields_json(std::span<const NamedValue> fields, Buffer before = {});
/// A value in a line of a stream, with the members that it has.
/// @param table   writes it in place; false, with nothing written, if there is none
/// @param before  what stands in front of the line
template <std::predicate<Buffer &> Table, class Hex>
JsonObject line_json(const std::optional<std::string_view> &text, const Table &table,
                     std::span<const NamedValue> fields, const Hex &hex, Buffer before = {})
{
    JsonObject line = json_answer(std::move(before));
    if (text)
        line.add("text", *text);
    line.add_some("table", table);
    if (!fields.empty())
        line.add("fields", [fields](Buffer &out) { out = fields_json(fields, std::move(out)).taken(); });
    line.add("hex", hex);
    return line;
}

/// Adds to a value what of it stood on the wire.
/// @param beside  what the value has no room for
void add_wire(JsonObject &value, std::span<const NamedValue> beside, std::span<const std::uint8_t> octets);
/// Adds where in a capture it stood.
void add_frame(JsonObject &value, std::uint64_t frame, bool withdrawn);
JsonObject values_json(const SYSDT_Record &type, const std::vector<JsonObject> &values);
JsonObject wire_json(const SYSDT_Record &type, std::span<const std::uint8_t> octets);

/// Why there is no answer.
JsonObject refusal_json(const std::string &sentence, int exit, const std::exception &error);
/// The same of a line, and whether it is only warned of.
JsonObject refused_line_json(const std::string &file, std::uint64_t line, const std::string &sentence,
                             const std::exception &error, bool warning);
/// How many lines there were.
JsonObject summary_json(std::uint64_t lines, std::uint64_t refused, std::uint64_t told, std::uint64_t warnings);

} // namespace bgpdt::toolkit
