// SPDX-License-Identifier: Apache-2.0
/// @file
/// The answers of all fronts in JSON. Every member is written here and nowhere else, so that it means one thing in all of
/// them; docs/bgpdt.schema.json says what.
#pragma once

#include <cstdint>
#include <exception>
#include <span>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "errors.hpp"
#include "explain.hpp"
#include "fields.hpp"
#include "kinds.hpp"
#include "samples.hpp"
#include "session.hpp"

namespace bgpdt::toolkit {

/// Begins every answer: it is raised when a member is gone or means something else.
inline constexpr int json_schema = 2;

nlohmann::ordered_json json_answer();
/// Of a type.
nlohmann::ordered_json json_answer(const SYSDT_Record &type);

/// How the host keeps values of the type.
const char *storage_of(const SYSDT_Record &type);

nlohmann::ordered_json types_json(Session &session);
/// What a type, or one of its kinds, is in words, and what it takes.
nlohmann::ordered_json type_json(const SYSDT_Record &type, const Sample &sample, const std::vector<std::string> &takes,
                                 std::span<const Part> layout, const std::vector<Kind> &kinds);
nlohmann::ordered_json kind_json(const SYSDT_Record &type, const Kind &kind, const std::vector<std::string> &examples,
                                 std::span<const Part> layout);

nlohmann::ordered_json parsed_json(const SYSDT_Record &type, std::uint8_t mode, const std::string &text,
                                   std::uint16_t reported_kind, std::size_t size, const std::string &hex);
/// Text, or bytes where there is none.
nlohmann::ordered_json printed_json(const SYSDT_Record &type, std::uint8_t mode, std::uint16_t reported_kind,
                                    const std::string *text, const std::string &hex);
nlohmann::ordered_json text_json(const SYSDT_Record &type, const std::string &text);
nlohmann::ordered_json hex_json(const SYSDT_Record &type, const std::string &hex);
nlohmann::ordered_json table_json(const SYSDT_Record &type, const nlohmann::ordered_json &table);
nlohmann::ordered_json checked_json(const SYSDT_Record &type);
nlohmann::ordered_json order_json(const SYSDT_Record &type, int order);
nlohmann::ordered_json differences_json(const SYSDT_Record &type, std::span<const Difference> differences);
nlohmann::ordered_json explanation_json(const Explanation &explanation);
nlohmann::ordered_json candidates_json(const std::vector<std::string> &candidates);

/// What else there is to say beside an answer.
void add_notes(nlohmann::ordered_json &answer, const std::vector<std::string> &notes);

/// The fields by their names.
nlohmann::ordered_json fields_json(std::span<const NamedValue> fields);
/// A value in a line of a stream; null is a member that it has not.
nlohmann::ordered_json line_json(const std::string *text, const nlohmann::ordered_json *table,
                                 std::span<const NamedValue> fields, const std::string &hex);

/// Why there is no answer.
nlohmann::ordered_json refusal_json(const std::string &sentence, int exit, const std::exception &error);
/// The same of a line, and whether it is only warned of.
nlohmann::ordered_json refused_line_json(const std::string &file, std::uint64_t line, const std::string &sentence,
                                         const std::exception &error, bool warning);
/// How many lines there were.
nlohmann::ordered_json summary_json(std::uint64_t lines, std::uint64_t refused, std::uint64_t told,
                                    std::uint64_t warnings);

} // namespace bgpdt::toolkit
