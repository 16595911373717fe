// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "json_answers.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "bytes.hpp"
#include "operations.hpp"

namespace bgpdt::toolkit {

namespace {

const char *word_for(Change change)
{
    constexpr const char *words[] = {"spelling", "example", "value"};
    return words[static_cast<std::size_t>(change)];
}

std::vector<JsonObject> layout_json(std::span<const Part> layout)
{
    std::vector<JsonObject> rows;
    for (const Part &part : layout) {
        JsonObject &row = rows.emplace_back();
        row.add("offset", part.offset).add("size", part.size).add("name", part.name).add_some("key", part.key);
    }
    return rows;
}

JsonObject part_json(const Explanation &explanation, const Part &part)
{
    JsonObject json;
    json.add("offset", part.offset).add("size", part.size).add("hex", to_hex(explanation.bytes_of(part)));
    json.add("meaning", part.meaning);
    json.add_some("name", part.name).add_some("value", part.shown).add_some("key", part.key);
    if (part.numbers.size() == 1)
        json.add("number", part.numbers.front());
    else if (!part.numbers.empty())
        json.add("number", part.numbers);
    if (!part.pieces.empty())
        json.add("fields", fields_json(part.pieces));
    return json;
}

void add_diagnosis(JsonObject &json, const Diagnosis &diagnosis)
{
    json.add("at", diagnosis.at).add("length", diagnosis.length).add("reason", diagnosis.reason);
    if (!diagnosis.repair.empty())
        json.add("repair", diagnosis.repair).add("change", word_for(diagnosis.change));
    std::vector<std::string> types;
    if (diagnosis.types)
        std::ranges::transform(*diagnosis.types, std::back_inserter(types), &TypeName::name);
    if (!types.empty())
        json.add("other_types", types);
}

/// What is known of an error beside its sentence.
void add_details(JsonObject &json, const std::exception &error)
{
    const auto *refusal = dynamic_cast<const Refusal *>(&error);
    if (refusal == nullptr)
        return;
    if (refusal->status() != 0)
        json.add("status", host::status_name(refusal->status()));
    if (refusal->diagnosis())
        add_diagnosis(json, *refusal->diagnosis());
    std::vector<JsonObject> forms;
    for (const KindForm &form : refusal->forms()) {
        JsonObject &entry = forms.emplace_back();
        entry.add_some("kind", form.kind).add_some("form", form.form).add_some("example", form.example);
    }
    if (!forms.empty())
        json.add("forms", forms);
}

} // namespace

const char *storage_of(const SYSDT_Record &type)
{
    switch (type.baseKind) {
    case SYSDT_KIND_BINARY: return "binary";
    case SYSDT_KIND_STRING: return "string";
    default: return "structured";
    }
}

JsonObject json_answer(Buffer before)
{
    JsonObject answer(std::move(before));
    answer.add("schema", json_schema);
    return answer;
}

JsonObject json_answer(const SYSDT_Record &type) { return json_answer().add("type", name_of(type)); }

JsonObject types_json(Session &session)
{
    std::vector<JsonObject> types;
    for (const SYSDT_Record *type : session.host().types()) {
        JsonObject &entry = types.emplace_back();
        entry.add("type", name_of(*type)).add("about", sample_of(type->typeId).about).add("id", type->typeId);
        entry.add("size", value_size(*type)).add("operations", operations(*type));
    }
    return json_answer().add("types", types);
}

JsonObject type_json(const SYSDT_Record &type, const Sample &sample, const std::vector<std::string> &takes,
                     std::span<const Part> layout, const std::vector<Kind> &kinds)
{
    JsonObject answer = json_answer(type);
    answer.add("about", sample.about).add("id", type.typeId).add("storage", storage_of(type));
    answer.add("size", value_size(type)).add("takes", takes).add("grammar", sample.grammar);
    answer.add("examples", sample.texts).add("operations", operations(type));
    if (!layout.empty())
        answer.add("layout", layout_json(layout));
    std::vector<JsonObject> entries;
    for (const Kind &kind : kinds) {
        JsonObject &entry = entries.emplace_back();
        entry.add("kind", kind.name).add("about", kind.about).add("kind_number", kind.number);
        entry.add("operations", kind.operations).add_some("form", kind.form);
    }
    if (!entries.empty())
        answer.add("kinds", entries);
    return answer;
}

JsonObject kind_json(const SYSDT_Record &type, const Kind &kind, const std::vector<std::string> &examples,
                     std::span<const Part> layout)
{
    JsonObject answer = json_answer(type);
    answer.add("kind", kind.name).add("about", kind.about).add("kind_number", kind.number);
    answer.add("size", value_size(type)).add("examples", examples).add("operations", kind.operations);
    return answer.add("layout", layout_json(layout)).add_some("form", kind.form);
}

JsonObject parsed_json(const SYSDT_Record &type, std::uint8_t mode, const std::string &text,
                       std::uint16_t reported_kind, std::size_t size, const std::string &hex)
{
    JsonObject answer = json_answer(type);
    answer.add("mode", mode).add("text", text).add("reported_kind", reported_kind);
    return answer.add("size", size).add("hex", hex);
}

JsonObject printed_json(const SYSDT_Record &type, std::uint8_t mode, std::uint16_t reported_kind,
                        const std::string *text, const std::string &hex)
{
    JsonObject answer = json_answer(type);
    answer.add("mode", mode).add("reported_kind", reported_kind);
    return text != nullptr ? answer.add("text", *text) : answer.add("hex", hex);
}

JsonObject text_json(const SYSDT_Record &type, const std::string &text) { return json_answer(type).add("text", text); }

JsonObject hex_json(const SYSDT_Record &type, const std::string &hex) { return json_answer(type).add("hex", hex); }

JsonObject table_json(const SYSDT_Record &type, const JsonText &table) { return json_answer(type).add("table", table); }

JsonObject checked_json(const SYSDT_Record &type) { return json_answer(type).add("ok", true); }

JsonObject order_json(const SYSDT_Record &type, int order) { return json_answer(type).add("order", order); }

JsonObject differences_json(const SYSDT_Record &type, std::span<const Difference> differences)
{
    std::vector<JsonObject> rows;
    for (const auto &[name, first, second] : differences)
        rows.emplace_back().add("name", name).add_some("first", first).add_some("second", second);
    return json_answer(type).add("same", differences.empty()).add("differences", rows);
}

JsonObject explanation_json(const Explanation &explanation)
{
    JsonObject json = json_answer();
    json.add("type", explanation.type).add("about", explanation.about);
    json.add("byte_order", explanation.native ? "native" : "target");
    json.add("size", explanation.bytes.size()).add("hex", to_hex(explanation.bytes)).add_some("kind", explanation.kind);
    std::vector<JsonObject> parts;
    for (const Part &part : explanation.parts)
        parts.push_back(part_json(explanation, part));
    json.add("parts", parts);
    if (explanation.text)
        json.add("text", *explanation.text);
    else
        json.add("text", JsonText());
    json.add("table", explanation.table ? explanation.table->json : JsonText());
    if (!explanation.text)
        json.add("no_text", explanation.no_text);
    if (!explanation.table)
        json.add("no_table", explanation.no_table);
    return json;
}

JsonObject dialects_json(const SYSDT_Record &type, std::string_view text, const Dialects &dialects)
{
    std::vector<JsonObject> readings;
    for (const Reading &reading : dialects.readings) {
        JsonObject &json = readings.emplace_back();
        json.add("reader", reading.reader).add_some("version", reading.version).add("answer", reading.answer);
        json.add_some("hex", reading.hex).add_some("value", reading.value).add_some("change", reading.change);
    }
    return json_answer(type).add("text", text).add("asked", dialects.text).add("readings", readings);
}

JsonObject candidates_json(const std::vector<std::string> &candidates)
{
    return json_answer().add("candidates", candidates);
}

void add_notes(JsonObject &answer, const std::vector<std::string> &notes)
{
    if (!notes.empty())
        answer.add("notes", notes);
}

JsonObject fields_json(std::span<const NamedValue> fields, Buffer before)
{
    JsonObject object(std::move(before));
    for (const NamedValue &field : fields) {
        if (field.number)
            object.add(field.name, [&field](Buffer &out) { out.append(field.text); });
        else
            object.add(field.name, field.text);
    }
    return object;
}

void add_wire(JsonObject &value, std::span<const NamedValue> beside, std::span<const std::uint8_t> octets)
{
    if (!beside.empty())
        value.add("beside", fields_json(beside));
    value.add("wire", to_hex(octets));
}

void add_frame(JsonObject &value, std::uint64_t frame, bool withdrawn)
{
    value.add("frame", frame).add("withdrawn", withdrawn);
}

JsonObject values_json(const SYSDT_Record &type, const std::vector<JsonObject> &values)
{
    return json_answer(type).add("values", values);
}

JsonObject wire_json(const SYSDT_Record &type, std::span<const std::uint8_t> octets)
{
    return json_answer(type).add("wire", to_hex(octets));
}

JsonObject refusal_json(const std::string &sentence, int exit, const std::exception &error)
{
    JsonObject answer = json_answer().add("error", sentence).add("exit", exit);
    add_details(answer, error);
    return answer;
}

JsonObject refused_line_json(const std::string &file, std::uint64_t line, const std::string &sentence,
                             const std::exception &error, bool warning)
{
    JsonObject answer = json_answer().add("file", file).add("line", line);
    answer.add(warning ? "warning" : "error", sentence);
    add_details(answer, error);
    return answer;
}

JsonObject summary_json(std::uint64_t lines, std::uint64_t refused, std::uint64_t told, std::uint64_t warnings)
{
    JsonObject answer = json_answer().add("lines", lines).add("refused", refused);
    return answer.add("told", told).add("warnings", warnings);
}

} // namespace bgpdt::toolkit
