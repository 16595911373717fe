// SPDX-License-Identifier: Apache-2.0
#include "json_answers.hpp"

#include <iterator>
#include <utility>

#include "bytes.hpp"
#include "operations.hpp"

namespace bgpdt::toolkit {

using nlohmann::ordered_json;

namespace {

/// No member for what there is not.
void add(ordered_json &object, const char *member, const std::string &text)
{
    if (!text.empty())
        object[member] = text;
}

const char *word_for(Change change)
{
    constexpr const char *words[] = {"spelling", "example", "value"};
    return words[static_cast<std::size_t>(change)];
}

ordered_json layout_json(std::span<const Part> layout)
{
    ordered_json rows = ordered_json::array();
    for (const Part &part : layout) {
        ordered_json &row =
            rows.emplace_back(ordered_json{{"offset", part.offset}, {"size", part.size}, {"name", part.name}});
        add(row, "key", part.key);
    }
    return rows;
}

ordered_json part_json(const Explanation &explanation, const Part &part)
{
    ordered_json json = {{"offset", part.offset},
                         {"size", part.size},
                         {"hex", to_hex(explanation.bytes_of(part))},
                         {"meaning", part.meaning}};
    add(json, "name", part.name);
    add(json, "value", part.shown);
    add(json, "key", part.key);
    if (part.numbers.size() == 1)
        json["number"] = part.numbers.front();
    else if (!part.numbers.empty())
        json["number"] = part.numbers;
    if (!part.pieces.empty())
        json["fields"] = fields_json(part.pieces);
    return json;
}

void add_diagnosis(ordered_json &json, const Diagnosis &diagnosis)
{
    json["at"] = diagnosis.at;
    json["length"] = diagnosis.length;
    json["reason"] = diagnosis.reason;
    if (!diagnosis.repair.empty()) {
        json["repair"] = diagnosis.repair;
        json["change"] = word_for(diagnosis.change);
    }
    for (const TypeName &type : diagnosis.types)
        json["other_types"].push_back(type.name);
}

/// What is known of an error beside its sentence.
void add_details(ordered_json &json, const std::exception &error)
{
    const auto *refusal = dynamic_cast<const Refusal *>(&error);
    if (refusal == nullptr)
        return;
    if (refusal->status() != 0)
        json["status"] = host::status_name(refusal->status());
    if (refusal->diagnosis())
        add_diagnosis(json, *refusal->diagnosis());
    for (const KindForm &form : refusal->forms()) {
        ordered_json &entry = json["forms"].emplace_back(ordered_json::object());
        add(entry, "kind", form.kind);
        add(entry, "form", form.form);
        add(entry, "example", form.example);
    }
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

ordered_json json_answer() { return {{"schema", json_schema}}; }

ordered_json json_answer(const SYSDT_Record &type) { return {{"schema", json_schema}, {"type", name_of(type)}}; }

ordered_json types_json(Session &session)
{
    ordered_json answer = json_answer();
    ordered_json &types = answer["types"] = ordered_json::array();
    for (const SYSDT_Record *type : session.host().types()) {
        types.push_back({{"type", name_of(*type)},
                         {"about", sample_of(type->typeId).about},
                         {"id", type->typeId},
                         {"size", value_size(*type)},
                         {"operations", operations(*type)}});
    }
    return answer;
}

ordered_json type_json(const SYSDT_Record &type, const Sample &sample, const std::vector<std::string> &takes,
                       std::span<const Part> layout, const std::vector<Kind> &kinds)
{
    ordered_json answer = json_answer(type);
    answer.update({{"about", sample.about},
                   {"id", type.typeId},
                   {"storage", storage_of(type)},
                   {"size", value_size(type)},
                   {"takes", takes},
                   {"grammar", sample.grammar},
                   {"examples", sample.texts},
                   {"operations", operations(type)}});
    if (!layout.empty())
        answer["layout"] = layout_json(layout);
    for (const Kind &kind : kinds) {
        ordered_json &entry = answer["kinds"].emplace_back(ordered_json{
            {"kind", kind.name}, {"about", kind.about}, {"kind_number", kind.number}, {"operations", kind.operations}});
        add(entry, "form", kind.form);
    }
    return answer;
}

ordered_json kind_json(const SYSDT_Record &type, const Kind &kind, const std::vector<std::string> &examples,
                       std::span<const Part> layout)
{
    ordered_json answer = json_answer(type);
    answer.update({{"kind", kind.name},
                   {"about", kind.about},
                   {"kind_number", kind.number},
                   {"size", value_size(type)},
                   {"examples", examples},
                   {"operations", kind.operations},
                   {"layout", layout_json(layout)}});
    add(answer, "form", kind.form);
    return answer;
}

ordered_json parsed_json(const SYSDT_Record &type, std::uint8_t mode, const std::string &text,
                         std::uint16_t reported_kind, std::size_t size, const std::string &hex)
{
    ordered_json answer = json_answer(type);
    answer.update({{"mode", mode}, {"text", text}, {"reported_kind", reported_kind}, {"size", size}, {"hex", hex}});
    return answer;
}

ordered_json printed_json(const SYSDT_Record &type, std::uint8_t mode, std::uint16_t reported_kind,
                          const std::string *text, const std::string &hex)
{
    ordered_json answer = json_answer(type);
    answer.update({{"mode", mode}, {"reported_kind", reported_kind}});
    if (text != nullptr)
        answer["text"] = *text;
    else
        answer["hex"] = hex;
    return answer;
}

ordered_json text_json(const SYSDT_Record &type, const std::string &text)
{
    ordered_json answer = json_answer(type);
    answer["text"] = text;
    return answer;
}

ordered_json hex_json(const SYSDT_Record &type, const std::string &hex)
{
    ordered_json answer = json_answer(type);
    answer["hex"] = hex;
    return answer;
}

ordered_json table_json(const SYSDT_Record &type, const ordered_json &table)
{
    ordered_json answer = json_answer(type);
    answer["table"] = table;
    return answer;
}

ordered_json checked_json(const SYSDT_Record &type)
{
    ordered_json answer = json_answer(type);
    answer["ok"] = true;
    return answer;
}

ordered_json order_json(const SYSDT_Record &type, int order)
{
    ordered_json answer = json_answer(type);
    answer["order"] = order;
    return answer;
}

ordered_json differences_json(const SYSDT_Record &type, std::span<const Difference> differences)
{
    ordered_json answer = json_answer(type);
    answer["same"] = differences.empty();
    ordered_json &rows = answer["differences"] = ordered_json::array();
    for (const auto &[name, first, second] : differences) {
        ordered_json &row = rows.emplace_back(ordered_json{{"name", name}});
        add(row, "first", first);
        add(row, "second", second);
    }
    return answer;
}

ordered_json explanation_json(const Explanation &explanation)
{
    ordered_json json = json_answer();
    json.update({{"type", explanation.type},
                 {"about", explanation.about},
                 {"byte_order", explanation.native ? "native" : "target"},
                 {"size", explanation.bytes.size()},
                 {"hex", to_hex(explanation.bytes)}});
    add(json, "kind", explanation.kind);
    ordered_json &parts = json["parts"] = ordered_json::array();
    for (const Part &part : explanation.parts)
        parts.push_back(part_json(explanation, part));
    json["text"] = explanation.text ? ordered_json(*explanation.text) : ordered_json();
    json["table"] = explanation.table ? *explanation.table : ordered_json();
    if (!explanation.text)
        json["no_text"] = explanation.no_text;
    if (!explanation.table)
        json["no_table"] = explanation.no_table;
    return json;
}

ordered_json candidates_json(const std::vector<std::string> &candidates)
{
    ordered_json answer = json_answer();
    answer["candidates"] = candidates;
    return answer;
}

void add_notes(ordered_json &answer, const std::vector<std::string> &notes)
{
    if (!notes.empty())
        answer["notes"] = notes;
}

ordered_json fields_json(std::span<const NamedValue> fields)
{
    ordered_json object = ordered_json::object();
    for (const NamedValue &field : fields)
        object[field.name] = field.number ? ordered_json(*field.number) : ordered_json(field.text);
    return object;
}

ordered_json line_json(const std::string *text, const ordered_json *table, std::span<const NamedValue> fields,
                       const std::string &hex)
{
    ordered_json line = json_answer();
    if (text != nullptr)
        line["text"] = *text;
    if (table != nullptr)
        line["table"] = *table;
    if (!fields.empty())
        line["fields"] = fields_json(fields);
    line["hex"] = hex;
    return line;
}

ordered_json refusal_json(const std::string &sentence, int exit, const std::exception &error)
{
    ordered_json answer = json_answer();
    answer.update({{"error", sentence}, {"exit", exit}});
    add_details(answer, error);
    return answer;
}

ordered_json refused_line_json(const std::string &file, std::uint64_t line, const std::string &sentence,
                               const std::exception &error, bool warning)
{
    ordered_json answer = json_answer();
    answer.update({{"file", file}, {"line", line}, {warning ? "warning" : "error", sentence}});
    add_details(answer, error);
    return answer;
}

ordered_json summary_json(std::uint64_t lines, std::uint64_t refused, std::uint64_t told, std::uint64_t warnings)
{
    ordered_json answer = json_answer();
    answer.update({{"lines", lines}, {"refused", refused}, {"told", told}, {"warnings", warnings}});
    return answer;
}

} // namespace bgpdt::toolkit
