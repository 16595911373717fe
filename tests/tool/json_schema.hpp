// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// As much of JSON Schema (draft 2020-12) as docs/bgpdt.schema.json uses; a word that is not known here is an error.
#pragma once

#include <algorithm>
#include <string>
#include <utility>

#include <nlohmann/json.hpp>

namespace bgpdt::test {

class JsonSchema {
public:
    explicit JsonSchema(nlohmann::json schema) : root_(std::move(schema)) {}

    /// What is wrong with the value; empty if nothing is.
    std::string fault(const nlohmann::json &value) const { return fault(value, root_, ""); }

private:
    using Json = nlohmann::json;

    static bool is_of(const Json &value, const std::string &type)
    {
        return type == "object"    ? value.is_object()
               : type == "array"   ? value.is_array()
               : type == "string"  ? value.is_string()
               : type == "integer" ? value.is_number_integer()
               : type == "boolean" ? value.is_boolean()
                                   : type == "null" && value.is_null();
    }

    static bool is_of(const Json &value, const Json &types)
    {
        if (types.is_string())
            return is_of(value, types.get<std::string>());
        for (const Json &type : types)
            if (is_of(value, type.get<std::string>()))
                return true;
        return false;
    }

    std::string fault_of_members(const Json &value, const Json &schema, const std::string &place) const
    {
        for (const Json &name : schema.value("required", Json::array()))
            if (!value.contains(name.get<std::string>()))
                return place + " lacks " + name.get<std::string>();
        const Json properties = schema.value("properties", Json::object());
        const Json others = schema.value("additionalProperties", Json(true));
        for (const auto &[name, member] : value.items()) {
            const bool known = properties.contains(name);
            if (!known && others == false)
                return inside(place, name) + " is not known";
            const Json &of_member = known ? properties[name] : others;
            std::string inner = of_member.is_object() ? fault(member, of_member, inside(place, name)) : "";
            if (!inner.empty())
                return inner;
        }
        return {};
    }

    static std::string inside(std::string place, const std::string &name) { return place.append("/").append(name); }

    static std::string unknown_word(const Json &schema)
    {
        for (const auto &[word, rest] : schema.items()) {
            static const Json known = {
                "$schema",    "$defs", "$ref", "title", "description", "type", "required", "additionalProperties",
                "properties", "items", "enum", "const", "pattern"};
            if (std::find(known.begin(), known.end(), word) == known.end())
                return word;
        }
        return {};
    }

    std::string fault(const Json &value, const Json &schema, const std::string &place) const
    {
        if (const std::string word = unknown_word(schema); !word.empty())
            return "the schema says " + word;
        if (schema.contains("$ref"))
            return fault(value, root_.at(Json::json_pointer(schema["$ref"].get<std::string>().substr(1))), place);
        if (schema.contains("type") && !is_of(value, schema["type"]))
            return place + " is no " + schema["type"].dump();
        if (schema.contains("const") && value != schema["const"])
            return place + " is not " + schema["const"].dump();
        if (schema.contains("enum") &&
            std::find(schema["enum"].begin(), schema["enum"].end(), value) == schema["enum"].end())
            return place + " is none of " + schema["enum"].dump();
        if (value.is_string() && schema.contains("pattern") &&
            value.get<std::string>().find_first_not_of("0123456789abcdef") != std::string::npos)
            return place + " is not hexadecimal"; // the one pattern that there is
        for (std::size_t i = 0; value.is_array() && schema.contains("items") && i < value.size(); ++i) {
            std::string inner = fault(value[i], schema["items"], inside(place, std::to_string(i)));
            if (!inner.empty())
                return inner;
        }
        return value.is_object() ? fault_of_members(value, schema, place) : "";
    }

    Json root_;
};

} // namespace bgpdt::test
