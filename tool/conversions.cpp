// SPDX-License-Identifier: Apache-2.0
#include "conversions.hpp"

#include <utility>

#include "errors.hpp"

namespace bgpdt::tool {
namespace {

const char *meaning(std::uint32_t status)
{
    switch (status) {
    case SYSDT_ERR_FAIL: return "it does not parse, is out of range, or the mode is refused";
    case SYSDT_ERR_NULL_PTR: return "something required is missing";
    case SYSDT_ERR_NO_MEMORY: return "memory is out";
    case SYSDT_ERR_PARAM: return "it does not parse, a field is missing or of another kind, or the length is short";
    case SYSDT_ERR_UNSUPPORTED: return "the mode is not supported, or not for this form";
    case SYSDT_ERR_LENGTH: return "the length is not the type's";
    case SYSDT_ERR_INVALID_VALUE: return "the value is not allowed or cannot be shown";
    case SYSDT_ERR_MISMATCH: return "the structured form demands another type or length";
    case SYSDT_ERR_OUTPUT: return "the structured form could not be built";
    case SYSDT_ERR_TOO_LONG: return "a string is longer than its field";
    default: return "a status without a meaning of its own";
    }
}

/// "... refuses WHAT: SYSDT_ERR_X (meaning)REST"
[[noreturn]] void refuse(const SYSDT_Record &type, const std::string &what, std::uint32_t status,
                         const std::string &rest = {})
{
    throw Refusal(name_of(type) + " refuses " + what + ": " + host::status_name(status) + " (" + meaning(status) + ")" +
                      rest,
                  status);
}

template <class Slot>
void require(Slot *slot, const SYSDT_Record &type, const char *sentence)
{
    if (slot == nullptr) {
        throw Refusal(name_of(type) + " " + sentence);
    }
}

std::string in_mode(std::uint8_t mode) { return " in mode " + std::to_string(mode); }

std::string what_it_takes(Session &session, const SYSDT_Record &type)
{
    std::string forms;
    for (const std::string &text : help_texts(session, type)) {
        forms += (forms.empty() ? "" : " or ") + text;
    }
    return forms.empty() ? "" : "; it takes " + forms;
}

std::string lengths(std::size_t is, std::size_t must_be)
{
    return std::to_string(is) + (is == 1 ? " byte" : " bytes") + ", must be " + std::to_string(must_be);
}

} // namespace

host::Converted parse_text(Session &session, const SYSDT_Record &type, std::string_view text, std::uint8_t mode)
{
    require(type.formatIn, type, "takes no text; its values are given in hexadecimal behind 0x");
    if (text.find('\0') != std::string_view::npos) {
        throw Refusal("the text " + lua_quoted(text) + " holds a NUL, where texts end");
    }
    host::Converted converted = session.host().parse(type, text, mode);
    if (!converted.ok()) {
        refuse(type, "the text " + lua_quoted(text) + in_mode(mode), converted.status, what_it_takes(session, type));
    }
    if (converted.data.empty()) {
        throw Refusal(name_of(type) + " makes no value of text" + in_mode(mode) +
                      "; its values are given in hexadecimal behind 0x");
    }
    return converted;
}

Printed print_value(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value, std::uint8_t mode)
{
    require(type.formatOut, type, "prints no text");
    host::Converted converted = session.host().print(type, value, mode);
    if (!converted.ok()) {
        refuse(type, "to print the value" + in_mode(mode), converted.status);
    }
    if (converted.data.empty()) {
        throw Refusal(name_of(type) + " prints nothing for this value" + in_mode(mode));
    }
    if (converted.kind == SYSDT_KIND_STRING) {
        return {converted.kind, std::string(converted.text()), {}};
    }
    return {converted.kind, std::nullopt, std::move(converted.data)};
}

void check_value(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value)
{
    require(type.check, type, "checks no values");
    const std::uint32_t status = session.host().check(type, value);
    if (status == SYSDT_ERR_LENGTH) {
        refuse(type, "the value", status, ": " + lengths(value.size(), value_size(type)));
    }
    if (status != SYSDT_OK) {
        refuse(type, "the value", status);
    }
}

int compare_values(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> first,
                   std::span<const std::uint8_t> second)
{
    require(type.compare, type, "compares no values");
    if (first.size() != second.size()) {
        throw Refusal(name_of(type) + " compares values of one length only: the first has " +
                      std::to_string(first.size()) + " bytes, the second " + std::to_string(second.size()));
    }
    const std::int32_t result = session.host().compare(type, first, second);
    if (result < -1 || result > 1) {
        refuse(type, "to compare the values", static_cast<std::uint32_t>(result));
    }
    return result;
}

void swap_value(Session &session, const SYSDT_Record &type, std::span<std::uint8_t> value)
{
    require(type.endian, type, "swaps no values");
    const std::uint32_t status = session.host().swap(type, value);
    if (status != SYSDT_OK) {
        refuse(type, "to swap the value", status);
    }
}

void push_table(Session &session, lua_State *lua, const SYSDT_Record &type, std::span<const std::uint8_t> value)
{
    require(type.luaSet, type, "has no script table");
    std::string error;
    const std::uint32_t status = session.host().push_script_value(lua, type, value, error);
    if (status != SYSDT_OK) {
        refuse(type, "to make a script table of the value", status, error.empty() ? "" : ": " + error);
    }
}

Bytes read_table(Session &session, lua_State *lua, const SYSDT_Record &type)
{
    require(type.luaGet, type, "reads no script table");
    Bytes value;
    std::string error;
    const std::uint32_t status = session.host().read_script_value(lua, type, value_size(type), value, error);
    if (status != SYSDT_OK) {
        refuse(type, "the script table", status, error.empty() ? "" : ": " + error);
    }
    return value;
}

std::vector<std::string> help_texts(Session &session, const SYSDT_Record &type)
{
    constexpr std::uint8_t help_mode = 1; // the one mode in which every type that has help gives it
    std::uint32_t status = SYSDT_OK;
    return type.help == nullptr ? std::vector<std::string>{} : session.host().help(type, help_mode, status);
}

std::vector<std::string> operations(const SYSDT_Record &type)
{
    const std::pair<bool, const char *> slots[] = {
        {type.formatIn != nullptr, "parse"}, {type.formatOut != nullptr, "print"}, {type.check != nullptr, "check"},
        {type.help != nullptr, "help"},      {type.compare != nullptr, "compare"}, {type.luaSet != nullptr, "table"},
        {type.luaGet != nullptr, "value"},   {type.endian != nullptr, "swap"},
    };
    std::vector<std::string> words;
    for (const auto &[filled, word] : slots) {
        if (filled) {
            words.emplace_back(word);
        }
    }
    return words;
}

void require_size(const SYSDT_Record &type, std::span<const std::uint8_t> value, std::size_t size)
{
    if (value.size() != size) {
        throw Refusal(name_of(type) + " has values of another length: " + lengths(value.size(), size));
    }
}

std::string lua_quoted(std::string_view text)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            result += {'\\', c};
        } else if (c == '\n') {
            result += "\\n";
        } else if (byte < 0x20 || byte == 0x7f) {
            result += {'\\', 'x', digits[byte >> 4], digits[byte & 0x0f]};
        } else {
            result += c;
        }
    }
    return result + "\"";
}

} // namespace bgpdt::tool
