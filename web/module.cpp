// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "module.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "library/answer.hpp"
#include "toolkit/conversions.hpp"
#include "toolkit/fields.hpp"
#include "toolkit/json_answers.hpp"
#include "toolkit/kinds.hpp"
#include "toolkit/operations.hpp"
#include "toolkit/other_types.hpp"
#include "toolkit/samples.hpp"
#include "toolkit/script_table.hpp"
#include "toolkit/type_aliases.hpp"

#ifdef __wasm__
#define BGPDT_EXPORT(name) [[clang::export_name(#name)]]
#else
#define BGPDT_EXPORT(name)
#endif

using namespace bgpdt;
using Value = std::vector<std::uint8_t>;

namespace {

bgpdt_library *opened = nullptr;
std::string given;
std::string answered;

std::string_view view(bgpdt_text text) { return {text.data, text.size}; }

std::vector<toolkit::JsonObject> forms_json(const bgpdt_error &error)
{
    std::vector<toolkit::JsonObject> forms;
    for (const bgpdt_form &form : std::span(error.forms, error.form_count))
        forms.emplace_back()
            .add("kind", view(form.kind))
            .add("form", view(form.form))
            .add("example", view(form.example));
    return forms;
}

toolkit::JsonObject error_json(const bgpdt_error &error)
{
    std::vector<std::string_view> types;
    for (const bgpdt_text &name : std::span(error.other_types, error.other_type_count))
        types.push_back(view(name));
    return toolkit::JsonObject()
        .add("code", error.code)
        .add("status", error.status == 0 ? "" : host::status_name(error.status))
        .add("message", view(error.message))
        .add("reason", view(error.reason))
        .add("at", error.at)
        .add("length", error.length)
        .add("repair", view(error.repair))
        .add("change", error.change)
        .add("otherTypes", types)
        .add("forms", forms_json(error));
}

/// Runs the work, which takes the address of an error and answers a code.
template <class Work>
int answer(const Work &work)
{
    bgpdt_error *error = nullptr;
    const int code = work(&error);
    const std::unique_ptr<bgpdt_error, void (*)(bgpdt_error *)> owner(error, bgpdt_error_free);
    if (code < 0 && error != nullptr)
        answered = error_json(*error).text();
    return code;
}

/// Runs the work, which gives JSON and may throw what the toolkit throws.
template <class Work>
int answer_json(const bgpdt_type *type, const Work &work)
{
    return answer([&](bgpdt_error **error) {
        return library::answer({.type = type, .error = error}, true, [&] {
            answered = toolkit::to_json(work());
            return BGPDT_OK;
        });
    });
}

void answer_bytes(std::span<const std::uint8_t> bytes) { answered.assign(bytes.begin(), bytes.end()); }

std::size_t size_of(const bgpdt_type *type) { return bgpdt_about(type)->value_size; }

/// What is given, as bytes.
std::span<const std::uint8_t> given_bytes()
{
    return {reinterpret_cast<const std::uint8_t *>(given.data()), given.size()};
}

/// Of two values that are given, one behind the other.
struct Two {
    explicit Two(std::size_t size)
        : first(given_bytes().first(std::min(size, given.size()))), second(given_bytes().subspan(first.size()))
    {
    }
    std::span<const std::uint8_t> first;
    std::span<const std::uint8_t> second;
};

/// A value in the machine's order.
/// @throws toolkit::Refusal if it has not the type's length
Value native(const bgpdt_type *type, std::span<const std::uint8_t> bytes)
{
    toolkit::require_size(type->record, bytes, type->size);
    Value value(bytes.begin(), bytes.end());
    toolkit::turn_to_native(type->record, value);
    return value;
}

std::vector<toolkit::NamedValue> fields_of(const bgpdt_type *type, std::span<const std::uint8_t> bytes)
{
    return toolkit::named_values(type->session(), type->record, native(type, bytes));
}

/// A text that the library hands over.
template <class Work>
int answer_text(const Work &work)
{
    return answer([&](bgpdt_error **error) {
        char *text = nullptr;
        std::size_t size = 0;
        const int code = work(&text, &size, error);
        const std::unique_ptr<char, void (*)(char *)> owner(text, bgpdt_free);
        if (code >= 0)
            answered.assign(text, size);
        return code;
    });
}

/// A value that the library writes.
template <class Work>
int answer_value(const bgpdt_type *type, const Work &work)
{
    return answer([&](bgpdt_error **error) {
        Value value(size_of(type));
        const int code = work(value, error);
        if (code >= 0)
            answer_bytes(value);
        return code;
    });
}

} // namespace

// ------------------------------------------------------------------------------------------------ what goes in and out

BGPDT_EXPORT(given) char *bgpdt_web_given(std::size_t size)
{
    given.resize(size);
    return given.data();
}

BGPDT_EXPORT(answered) const char *bgpdt_web_answered() { return answered.data(); }
BGPDT_EXPORT(answered_size) std::size_t bgpdt_web_answered_size() { return answered.size(); }

// ------------------------------------------------------------------------------------------------ types

BGPDT_EXPORT(open) int bgpdt_web_open()
{
    return answer([](bgpdt_error **error) { return bgpdt_open(nullptr, &opened, error); });
}

BGPDT_EXPORT(types) int bgpdt_web_types()
{
    return answer_json(nullptr, [] {
        std::vector<toolkit::JsonObject> types;
        for (const bgpdt_type &type : opened->types) {
            const toolkit::Sample sample = toolkit::sample_of(type.record.typeId);
            const std::vector<std::string> takes = toolkit::help_texts(opened->session, type.record);
            const std::vector<toolkit::Kind> kinds = toolkit::kinds(opened->session, type.record);
            types.push_back(toolkit::type_json(type.record, sample, takes, {}, kinds));
            types.back().add("mode", unsigned{type.mode});
        }
        return types;
    });
}

BGPDT_EXPORT(type) const bgpdt_type *bgpdt_web_type(std::size_t index, int mode)
{
    const bgpdt_type *type = bgpdt_type_at(opened, index);
    if (type != nullptr && mode >= 0)
        bgpdt_in_mode(type, static_cast<unsigned>(mode), &type);
    return type;
}

BGPDT_EXPORT(find) int bgpdt_web_find()
{
    const std::string meant = toolkit::type_of_alias(given);
    const std::string &name = meant.empty() ? given : meant;
    return answer([&](bgpdt_error **error) {
        const bgpdt_type *type = nullptr;
        const int code = bgpdt_find(opened, name.data(), name.size(), &type, error);
        int index = 0;
        while (code >= 0 && bgpdt_type_at(opened, static_cast<std::size_t>(index)) != type)
            ++index;
        return code < 0 ? code : index;
    });
}

BGPDT_EXPORT(guess) int bgpdt_web_guess()
{
    return answer_json(nullptr, [] {
        std::vector<std::string> names;
        for (const toolkit::TypeName &type : toolkit::types_that_take(opened->session, given))
            names.push_back(type.name);
        return names;
    });
}

// ------------------------------------------------------------------------------------------------ text and values

BGPDT_EXPORT(parse) int bgpdt_web_parse(const bgpdt_type *type)
{
    return answer_value(type, [type](Value &value, bgpdt_error **error) {
        return bgpdt_parse(type, given.data(), given.size(), value.data(), value.size(), error);
    });
}

BGPDT_EXPORT(try_parse) int bgpdt_web_try_parse(const bgpdt_type *type)
{
    return answer_value(type, [type](Value &value, bgpdt_error ** /*error*/) {
        return bgpdt_parse(type, given.data(), given.size(), value.data(), value.size(), nullptr);
    });
}

BGPDT_EXPORT(why) int bgpdt_web_why(const bgpdt_type *type)
{
    return answer([type](bgpdt_error **error) { return bgpdt_why(type, given.data(), given.size(), error); });
}

BGPDT_EXPORT(dialects) int bgpdt_web_dialects(const bgpdt_type *type)
{
    return answer_text([type](char **text, std::size_t *size, bgpdt_error **error) {
        return bgpdt_dialects(type, given.data(), given.size(), text, size, error);
    });
}

BGPDT_EXPORT(print) int bgpdt_web_print(const bgpdt_type *type)
{
    return answer([type](bgpdt_error **error) {
        std::string text(BGPDT_TEXT_ROOM, '\0');
        std::size_t size = 0;
        const auto value = given_bytes();
        const int code = bgpdt_print(type, value.data(), value.size(), text.data(), text.size(), &size, error);
        if (code >= 0)
            answered.assign(text, 0, size);
        return code;
    });
}

BGPDT_EXPORT(check) int bgpdt_web_check(const bgpdt_type *type)
{
    return answer([type](bgpdt_error **error) { return bgpdt_check(type, given_bytes().data(), given.size(), error); });
}

BGPDT_EXPORT(swap) int bgpdt_web_swap(const bgpdt_type *type)
{
    return answer([type](bgpdt_error **error) {
        Value value(given.begin(), given.end());
        const int code = bgpdt_swap(type, value.data(), value.size(), error);
        if (code >= 0)
            answer_bytes(value);
        return code;
    });
}

BGPDT_EXPORT(from_hex) int bgpdt_web_from_hex(const bgpdt_type *type)
{
    return answer_value(type, [type](Value &value, bgpdt_error **error) {
        return bgpdt_from_hex(type, given.data(), given.size(), value.data(), value.size(), error);
    });
}

BGPDT_EXPORT(to_native) int bgpdt_web_to_native(const bgpdt_type *type)
{
    return answer([type](bgpdt_error ** /*error*/) {
        Value value(given.begin(), given.end());
        const int code = bgpdt_to_native(type, value.data(), value.size());
        if (code >= 0)
            answer_bytes(value);
        return code;
    });
}

BGPDT_EXPORT(compare) int bgpdt_web_compare(const bgpdt_type *type)
{
    return answer([type](bgpdt_error **error) {
        const Two values(size_of(type));
        int order = 0;
        const int code = bgpdt_compare(type, values.first.data(), values.first.size(), values.second.data(),
                                       values.second.size(), &order, error);
        return code < 0 ? code : order + 2;
    });
}

BGPDT_EXPORT(order) int bgpdt_web_order(const bgpdt_type *type)
{
    const Two values(size_of(type));
    int order = 0;
    const int code =
        bgpdt_order(type, values.first.data(), values.first.size(), values.second.data(), values.second.size(), &order);
    return code < 0 ? code : order + 2;
}

// ------------------------------------------------------------------------------------------------ fields and tables

BGPDT_EXPORT(explain) int bgpdt_web_explain(const bgpdt_type *type)
{
    return answer_text([type](char **text, std::size_t *size, bgpdt_error **error) {
        return bgpdt_explain(type, given_bytes().data(), given.size(), text, size, error);
    });
}

BGPDT_EXPORT(fields) int bgpdt_web_fields(const bgpdt_type *type)
{
    return answer_json(type, [type] { return toolkit::fields_json(fields_of(type, given_bytes())); });
}

BGPDT_EXPORT(differences) int bgpdt_web_differences(const bgpdt_type *type)
{
    return answer_json(type, [type] {
        const Two values(size_of(type));
        const auto first = fields_of(type, values.first);
        const auto second = fields_of(type, values.second);
        return toolkit::differences_json(type->record, toolkit::differences(first, second));
    });
}

BGPDT_EXPORT(table) int bgpdt_web_table(const bgpdt_type *type)
{
    return answer_text([type](char **text, std::size_t *size, bgpdt_error **error) {
        return bgpdt_table(type, given_bytes().data(), given.size(), text, size, error);
    });
}

BGPDT_EXPORT(lua) int bgpdt_web_lua(const bgpdt_type *type)
{
    return answer([type](bgpdt_error **error) {
        return library::answer({.type = type, .operation = BGPDT_TABLE, .error = error}, true, [type] {
            const toolkit::LuaState lua = toolkit::new_lua_state();
            toolkit::push_table(type->session(), lua.get(), type->record, native(type, given_bytes()));
            answered = toolkit::script_text(lua.get(), -1);
            return BGPDT_OK;
        });
    });
}

BGPDT_EXPORT(read_table) int bgpdt_web_read_table(const bgpdt_type *type)
{
    return answer_value(type, [type](Value &value, bgpdt_error **error) {
        return bgpdt_read_table(type, given.data(), given.size(), value.data(), value.size(), error);
    });
}
