// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "answer.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "toolkit/other_types.hpp"
#include "toolkit/shown_text.hpp"

namespace bgpdt::library {
namespace {

constexpr bgpdt_text text_of(std::string_view literal) { return {literal.data(), literal.size()}; }

constexpr bgpdt_text no_text = text_of("");

constexpr bgpdt_error plain(int code, std::string_view message)
{
    return {.struct_size = sizeof(bgpdt_error),
            .code = code,
            .status = 0,
            .message = text_of(message),
            .reason = no_text,
            .at = 0,
            .length = 0,
            .at_character = 0,
            .characters = 0,
            .repair = no_text,
            .change = BGPDT_SPELLING,
            .other_types = nullptr,
            .other_type_count = 0,
            .forms = nullptr,
            .form_count = 0,
            .picture = no_text};
}

/// By code, from BGPDT_REFUSED on. They stand in for errors for which there is no memory, too.
constexpr std::array plain_errors = {
    plain(BGPDT_REFUSED, "the type refuses it"),
    plain(BGPDT_NO_TEXT, "the type takes no text"),
    plain(BGPDT_NO_OPERATION, "the type does not do that"),
    plain(BGPDT_NO_TYPE, "there is no type of the name"),
    plain(BGPDT_NO_PLUGIN, "there is no plug-in"),
    plain(BGPDT_NO_ROOM, "the buffer is too small"),
    plain(BGPDT_NO_MEMORY, "not enough memory"),
    plain(BGPDT_NO_SENSE, "an argument is null or makes no sense"),
    plain(BGPDT_FAILED, "something went wrong"),
    plain(BGPDT_NO_FIELD, "there is no field of the name"),
};

bool is_plain(const bgpdt_error *error)
{
    return std::ranges::any_of(plain_errors, [error](const bgpdt_error &row) { return &row == error; });
}

/// An error with its texts.
struct Told : bgpdt_error {
    explicit Told(int its_code, std::string sentence)
        : bgpdt_error(plain(its_code, "")), message_text(std::move(sentence))
    {
        message = view(message_text);
    }

    void diagnose(const toolkit::Diagnosis &diagnosis);
    void add_forms(const std::vector<toolkit::KindForm> &known);
    void add_types(std::vector<toolkit::TypeName> types);

    std::string message_text;
    toolkit::Diagnosis found = {};
    std::string picture_text = {};
    std::vector<toolkit::KindForm> known_forms = {};
    std::vector<bgpdt_form> form_rows = {};
    bool types_known = false; ///< or those that there are were not asked
    std::vector<toolkit::TypeName> known_types = {};
    std::vector<bgpdt_text> type_rows = {};
};

std::size_t characters_in(std::string_view text, std::size_t begin, std::size_t end)
{
    std::size_t count = 0;
    for (std::size_t at = begin; at < end; at += toolkit::character_size(text, at))
        ++count;
    return count;
}

int change_of(toolkit::Change change)
{
    switch (change) {
    case toolkit::Change::spelling: return BGPDT_SPELLING;
    case toolkit::Change::example: return BGPDT_EXAMPLE;
    default: return BGPDT_VALUE;
    }
}

void Told::diagnose(const toolkit::Diagnosis &diagnosis)
{
    found = diagnosis;
    reason = view(found.reason);
    at = found.at;
    length = found.length;
    at_character = characters_in(found.text, 0, at);
    characters = characters_in(found.text, at, at + length);
    repair = view(found.repair);
    change = change_of(found.change);
    picture_text = toolkit::underlined(found.text, at, length);
    picture = view(picture_text);
}

void Told::add_forms(const std::vector<toolkit::KindForm> &known)
{
    known_forms = known;
    for (const toolkit::KindForm &row : known_forms)
        form_rows.push_back({view(row.kind), view(row.form), view(row.example)});
    forms = form_rows.data();
    form_count = form_rows.size();
}

void Told::add_types(std::vector<toolkit::TypeName> types)
{
    types_known = true;
    known_types = std::move(types);
    for (const toolkit::TypeName &type : known_types)
        type_rows.push_back(view(type.name));
    other_types = type_rows.data();
    other_type_count = type_rows.size();
}

int code_of(const toolkit::Error &error)
{
    switch (error.hint()) {
    case toolkit::Hint::types: return BGPDT_NO_TYPE;
    case toolkit::Hint::fields: return BGPDT_NO_FIELD;
    default: return BGPDT_NO_PLUGIN;
    }
}

int code_of(const Call &call, const toolkit::Refusal &refusal)
{
    if (refusal.hint() == toolkit::Hint::bytes)
        return BGPDT_NO_TEXT;
    const bool can = call.type == nullptr || call.operation == 0 || call.type->does(call.operation);
    return can ? BGPDT_REFUSED : BGPDT_NO_OPERATION;
}

/// Makes the error that the caller asks for.
template <class Make>
int made(const Call &call, int code, const Make &make) noexcept
{
    if (call.error == nullptr)
        return code;
    try {
        *call.error = make().release();
        return code;
    } catch (...) {
        return told(call, BGPDT_NO_MEMORY);
    }
}

} // namespace

int told(const Call &call, int code) noexcept
{
    // Of those nothing is changed or released.
    if (call.error != nullptr)
        *call.error = const_cast<bgpdt_error *>(&plain_errors[static_cast<std::size_t>(BGPDT_REFUSED - code)]);
    return code;
}

int told(const Call &call, int code, const char *sentence) noexcept
{
    return made(call, code, [&] { return std::make_unique<Told>(code, sentence); });
}

int told(const Call &call, const toolkit::Refusal &refusal) noexcept
{
    const int code = code_of(call, refusal);
    return made(call, code, [&] {
        auto error = std::make_unique<Told>(code, refusal.what());
        error->status = refusal.status();
        error->add_forms(refusal.forms());
        if (refusal.diagnosis())
            error->diagnose(*refusal.diagnosis());
        if (refusal.types())
            error->add_types(*refusal.types());
        return error;
    });
}

int told(const Call &call, const toolkit::Error &error) noexcept { return told(call, code_of(error), error.what()); }

void add_other_types(const Call &call, std::string_view text) noexcept
{
    if (call.error == nullptr || *call.error == nullptr || is_plain(*call.error))
        return;
    auto *const error = static_cast<Told *>(*call.error);
    if (error->types_known)
        return;
    try {
        error->add_types(toolkit::types_that_take(call.type->session(), text));
    } catch (...) { // there is no memory to know more
    }
}

} // namespace bgpdt::library

using namespace bgpdt::library;

void bgpdt_error_free(bgpdt_error *error)
{
    if (!is_plain(error))
        delete static_cast<Told *>(error);
}

void bgpdt_free(char *text) { std::free(text); }

const char *bgpdt_code_text(int code)
{
    constexpr const char *done[] = {"done", "bytes, no text", "a number"};
    if (code >= BGPDT_OK)
        return code < static_cast<int>(std::size(done)) ? done[code] : nullptr;
    const auto index = static_cast<std::size_t>(BGPDT_REFUSED) - static_cast<std::size_t>(code);
    return index < plain_errors.size() ? plain_errors[index].message.data : nullptr;
}
