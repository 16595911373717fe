// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "conversions.hpp"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

#include "diagnosis.hpp"
#include "errors.hpp"
#include "kinds.hpp"
#include "notation.hpp"
#include "operations.hpp"
#include "other_types.hpp"
#include "samples.hpp"
#include "shown_text.hpp"
#include "words.hpp"

namespace bgpdt::toolkit {
namespace {

/// What the type's answer means where the operation gives it no meaning of its own.
std::string meaning(std::uint32_t status)
{
    switch (status) {
    case SYSDT_ERR_NULL_PTR: return "something required is missing";
    case SYSDT_ERR_UNSUPPORTED: return "the type does not do that in this mode";
    case SYSDT_ERR_LENGTH: return "the length is not the type's";
    case SYSDT_ERR_MISMATCH: return "this mode takes a display record of another length";
    case SYSDT_ERR_OUTPUT: return "the structured form cannot be built";
    case SYSDT_ERR_TOO_LONG: return "a string is longer than its field";
    default: return "the value is not allowed";
    }
}

/// "TYPE refuses WHAT: REASON (SYSDT_ERR_X)REST"
Refusal refusal(const SYSDT_Record &type, const std::string &what, std::uint32_t status, const std::string &reason,
                const std::string &rest = {}, std::vector<KindForm> forms = {}, std::optional<Diagnosis> diagnosis = {},
                Hint hint = Hint::none, OtherTypes types = {})
{
    if (status == SYSDT_ERR_NO_MEMORY)
        throw std::bad_alloc(); // which says nothing of the value
    const std::string front = name_of(type) + " refuses " + what + ": " + reason;
    const std::string code = " (" + host::status_name(status) + ")";
    if (status == SYSDT_ERR_MISMATCH)
        return {front + code, Hint::display_record, front.size(), status};
    return Refusal(front + code + rest, status, std::move(forms), std::move(diagnosis), hint, std::move(types));
}

template <class Slot>
void require(Slot *slot, const SYSDT_Record &type, const char *sentence, Hint hint = Hint::none)
{
    if (slot == nullptr)
        throw Refusal(name_of(type) + " " + sentence, hint);
}

/// The mode, where it is not the one that goes without saying.
std::string in_mode(const Session &session, const SYSDT_Record &type, std::uint8_t mode)
{
    const bool said = session.settings().mode || mode != session.mode_for(type);
    return said ? " in mode " + std::to_string(mode) : "";
}

std::string lengths(std::size_t is, std::size_t must_be)
{
    return counted(is, "byte") + ", must be " + std::to_string(must_be);
}

/// What the type takes, behind the sentence about a text that it refuses.
std::string advice(Session &session, const SYSDT_Record &type, const std::vector<KindForm> &forms)
{
    if (!forms.empty())
        return forms.front().kind.empty() ? "; it takes these forms" : "; it takes the forms of its kinds";
    const std::string samples = joined(sample_of(type.typeId).texts, ", ");
    const std::string help = joined(help_texts(session, type), " or ");
    if (samples.empty())
        return help.empty() ? "" : "; it takes " + help;
    return "; it takes texts such as " + samples + (help.empty() ? "" : " (its help says " + help + ")");
}

/// The kinds that take text, of the diagnosed ones if there are any, with the first sample of each; of a type without
/// kinds the samples, if nothing is diagnosed and a line has no room for them.
std::vector<KindForm> forms_of(Session &session, const SYSDT_Record &type, const std::optional<Diagnosis> &diagnosis)
{
    std::vector<KindForm> forms;
    const Sample sample = sample_of(type.typeId);
    for (const Kind &kind : kinds(session, type)) {
        const bool near = !diagnosis || std::ranges::find(diagnosis->kinds, kind.name) != diagnosis->kinds.end();
        if (kind.takes_text && near) {
            const std::vector<std::string> texts = sample.of_kind(kind.number).texts;
            forms.push_back({kind.name, kind.form, texts.empty() ? "" : texts.front()});
        }
    }
    constexpr std::size_t line_room = 80;
    if (forms.empty() && !diagnosis && joined(sample.texts, ", ").size() > line_room) {
        std::ranges::transform(sample.texts, std::back_inserter(forms), [](const std::string &text) {
            return KindForm{{}, {}, text};
        });
    }
    return forms;
}

} // namespace

Refusal text_refusal(Session &session, const SYSDT_Record &type, std::string_view text, std::uint8_t mode,
                     std::uint32_t status)
{
    const std::string said_mode = in_mode(session, type, mode);
    const std::string what = lua_quoted(shortened(text)) + said_mode;
    const bool of_text = status == SYSDT_ERR_INVALID_VALUE || status == SYSDT_ERR_PARAM;
    const bool of_mode = status == SYSDT_ERR_FAIL || status == SYSDT_ERR_UNSUPPORTED;
    if (!of_text && !of_mode)
        return refusal(type, what, status, meaning(status));
    const Sample sample = sample_of(type.typeId);
    if ((of_mode && sample.texts.empty()) || (!sample.texts.empty() && !takes_samples(session, type, mode)))
        return refusal(type, what, status, "it takes no text in this mode");
    std::optional<Diagnosis> diagnosis = diagnose(session, type, text, mode);
    const bool nameless = is_name_index(type.typeId) && session.settings().names.empty();
    std::vector<KindForm> forms = forms_of(session, type, diagnosis);
    const std::string reason = diagnosis ? diagnosis->reason
                               : text.empty()
                                   ? "it is empty"
                                   : "it is no " + (sample.about.empty() ? "text of the type" : sample.about);
    OtherTypes types = diagnosis ? diagnosis->types : types_that_take(session, text);
    const std::string sentence = types ? types_sentence(*types) : "";
    const std::string rest =
        (sentence.empty() ? "" : "; " + sentence) + (diagnosis ? "" : advice(session, type, forms));
    return refusal(type, what, status, reason, rest, std::move(forms), std::move(diagnosis),
                   nameless ? Hint::names : Hint::none, std::move(types));
}

host::Converted parse_text(Session &session, const SYSDT_Record &type, std::string_view text, std::uint8_t mode)
{
    require(type.formatIn, type, "takes no text", Hint::bytes);
    if (const std::size_t end = text.find('\0'); end != std::string_view::npos) {
        const char *reason = "it holds a NUL, where texts end";
        throw Refusal(name_of(type) + " refuses " + lua_quoted(shortened(text)) + ": " + reason, 0, {},
                      Diagnosis{std::string(text), end, 1, reason, {}});
    }
    host::Converted converted = session.parse(type, text, mode);
    if (!converted.ok())
        throw text_refusal(session, type, text, mode, converted.status);
    if (converted.data.empty())
        throw Refusal(name_of(type) + " makes no value of text" + in_mode(session, type, mode), Hint::bytes);
    if (type.baseKind == SYSDT_KIND_STRING && converted.data.size() > value_size(type)) {
        const std::size_t room = value_size(type) - 1;
        const std::string reason =
            "it has room for " + counted(room, "character") + ", the text has " + std::to_string(text.size());
        throw Refusal(
            name_of(type) + " refuses " + lua_quoted(shortened(text)) + ": " + reason, 0, {},
            Diagnosis{std::string(text), room, text.size() - room, reason, std::string(text.substr(0, room))});
    }
    return converted;
}

std::span<const std::uint8_t> in_asked_notation(const Session &session, const SYSDT_Record &type,
                                                std::span<const std::uint8_t> value, Bytes &room)
{
    if (session.settings().notation == Notation::as_written)
        return value;
    room.assign(value.begin(), value.end());
    set_notation(type, room, session.settings().notation);
    return room;
}

Printed print_value(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value, std::uint8_t mode,
                    const std::string &nothing)
{
    require(type.formatOut, type, "prints no text");
    Bytes room;
    host::Converted converted = session.host().print(type, in_asked_notation(session, type, value, room), mode);
    const std::string said_mode = in_mode(session, type, mode);
    if (!converted.ok()) {
        const bool cannot = converted.status == SYSDT_ERR_FAIL || converted.status == SYSDT_ERR_INVALID_VALUE;
        const std::string reason = said_mode.empty() ? "it cannot be shown" : "it cannot be shown, or not in this mode";
        throw refusal(type, "to print the value" + said_mode, converted.status,
                      cannot ? reason : meaning(converted.status));
    }
    if (converted.data.empty())
        throw Refusal(name_of(type) + " prints nothing for this value" + said_mode + nothing);
    if (converted.kind == SYSDT_KIND_STRING)
        return {converted.kind, std::string(converted.text()), {}};
    return {converted.kind, std::nullopt, std::move(converted.data)};
}

void check_value(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value)
{
    require(type.check, type, "checks no values");
    const std::uint32_t status = session.host().check(type, value);
    if (status != SYSDT_OK) {
        const bool long_enough = value.size() == value_size(type);
        throw refusal(type, "the value", status,
                      long_enough ? meaning(status) : lengths(value.size(), value_size(type)));
    }
}

int compare_values(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> first,
                   std::span<const std::uint8_t> second)
{
    require(type.compare, type, "compares no values");
    if (first.size() != second.size()) {
        throw Refusal(name_of(type) + " compares values of one length only: the first has " +
                      counted(first.size(), "byte") + ", the second " + std::to_string(second.size()));
    }
    const std::int32_t result = session.host().compare(type, first, second);
    if (result < -1 || result > 1) {
        const auto status = static_cast<std::uint32_t>(result);
        const bool unordered = status == SYSDT_ERR_FAIL || status == SYSDT_ERR_INVALID_VALUE;
        throw refusal(type, "to compare the values", status, unordered ? "it has no order for them" : meaning(status));
    }
    return result;
}

void swap_value(Session &session, const SYSDT_Record &type, std::span<std::uint8_t> value)
{
    require(type.endian, type, "swaps no values");
    const std::uint32_t status = session.host().swap(type, value);
    if (status != SYSDT_OK)
        throw refusal(type, "to swap the value", status, meaning(status));
}

void push_table(Session &session, lua_State *lua, const SYSDT_Record &type, std::span<const std::uint8_t> value)
{
    require(type.luaSet, type, "has no script table");
    std::string error;
    const std::uint32_t status = session.host().push_script_value(lua, type, value, error);
    if (status != SYSDT_OK)
        throw refusal(type, "to make a script table of the value", status, error.empty() ? meaning(status) : error);
}

Bytes read_table(Session &session, lua_State *lua, const SYSDT_Record &type)
{
    require(type.luaGet, type, "reads no script table");
    Bytes value;
    std::string error;
    const std::uint32_t status = session.host().read_script_value(lua, type, value_size(type), value, error);
    if (status != SYSDT_OK) {
        const char *reason = "a field is missing, of another kind or not allowed";
        const bool of_field =
            status == SYSDT_ERR_PARAM || status == SYSDT_ERR_FAIL || status == SYSDT_ERR_INVALID_VALUE;
        throw refusal(type, "the script table", status, !error.empty() ? error : of_field ? reason : meaning(status));
    }
    return value;
}

void require_size(const SYSDT_Record &type, std::span<const std::uint8_t> value, std::size_t size, const char *what)
{
    if (value.size() != size)
        throw Refusal(name_of(type) + " " + what + ": " + lengths(value.size(), size));
}

} // namespace bgpdt::toolkit
