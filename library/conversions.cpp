// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit/conversions.hpp"

#include <cstdlib>
#include <new>
#include <string>

#include "answer.hpp"
#include "toolkit/dialects.hpp"
#include "toolkit/explain.hpp"
#include "toolkit/fields.hpp"
#include "toolkit/json_answers.hpp"
#include "toolkit/json_table.hpp"
#include "toolkit/stream_values.hpp"
#include "values.hpp"

using namespace bgpdt;
using namespace bgpdt::library;

namespace {

/// Texts up to this size are read in a smaller frame.
constexpr std::size_t short_text = 512;

template <std::size_t longest>
[[gnu::noinline]] int parse_on_stack(const bgpdt_type &type, std::string_view text, std::uint8_t *value)
{
    char room[longest + 1];
    std::copy(text.begin(), text.end(), room);
    room[text.size()] = '\0';
    return Parser(type).parse({room, text.size()}, value);
}

int parse_on_heap(const bgpdt_type &type, std::string_view text, std::uint8_t *value)
{
    std::string room(text);
    return Parser(type).parse(room, value);
}

int parse(const bgpdt_type &type, std::string_view text, std::uint8_t *value)
{
    if (!type.does(BGPDT_PARSE))
        return BGPDT_NO_TEXT;
    if (holds_nul(text))
        return BGPDT_REFUSED;
    if (text.size() <= short_text)
        return parse_on_stack<short_text>(type, text, value);
    return text.size() <= toolkit::longest_line ? parse_on_stack<toolkit::longest_line>(type, text, value)
                                                : parse_on_heap(type, text, value);
}

/// The error of a text that is refused has its reason.
int parse_or_tell(const Call &call, bool sense, std::string_view text, std::uint8_t *value) noexcept
{
    const int code = answer(call, sense, [&] {
        const bgpdt_type &type = *call.type;
        const int parsed = parse(type, text, value);
        if (call.error != nullptr && (parsed == BGPDT_REFUSED || parsed == BGPDT_NO_TEXT))
            static_cast<void>(toolkit::parse_text(type.session(), type.record, text, type.mode)); // throws
        return parsed;
    });
    if (code == BGPDT_REFUSED && !holds_nul(text))
        add_other_types(call, text);
    return code;
}

/// Text with a NUL behind it, or bytes.
int put(const host::Delivery &printed, std::span<char> room, std::size_t &size)
{
    const bool is_text = printed.kind == SYSDT_KIND_STRING;
    const auto *const bytes = reinterpret_cast<const char *>(printed.data.data());
    size = is_text ? printed.text().size() : printed.data.size();
    if (room.size() <= size)
        return BGPDT_NO_ROOM;
    std::memcpy(room.data(), bytes, size);
    room[size] = '\0';
    return is_text ? BGPDT_OK : BGPDT_BYTES;
}

int print(const Call &call, const std::uint8_t *value, std::span<char> room, std::size_t &size)
{
    const bgpdt_type &type = *call.type;
    if (type.does(BGPDT_PRINT)) {
        Printer printer(type);
        const host::Delivery printed = printer.print(value);
        if (printed.status == SYSDT_ERR_NO_MEMORY)
            return BGPDT_NO_MEMORY;
        if (printed.ok() && !printed.data.empty())
            return put(printed, room, size);
    }
    if (call.error == nullptr)
        return type.does(BGPDT_PRINT) ? BGPDT_REFUSED : BGPDT_NO_OPERATION;
    const toolkit::Bytes shown = toolkit::printable(type.record, NativeValue(type, value).bytes());
    static_cast<void>(toolkit::print_value(type.session(), type.record, shown, type.mode)); // throws
    return BGPDT_REFUSED;
}

bool is_buffer(const void *data, std::size_t size) { return data != nullptr || size == 0; }

/// An operation on one value of the type: the work has it in the machine's order.
template <class Work>
int on_value(const Call &call, bool sense, const std::uint8_t *value, std::size_t size, const Work &work)
{
    return answer(call, sense && call.type != nullptr && is_buffer(value, size), [&] {
        toolkit::require_size(call.type->record, {value, size}, call.type->size);
        NativeValue native(*call.type, value);
        work(native.bytes());
        return BGPDT_OK;
    });
}

/// A text that the caller has to release.
void hand_over(const std::string &text, char **to, std::size_t *size)
{
    auto *copy = static_cast<char *>(std::malloc(text.size() + 1));
    if (copy == nullptr)
        throw std::bad_alloc();
    std::memcpy(copy, text.c_str(), text.size() + 1);
    *to = copy;
    if (size != nullptr)
        *size = text.size();
}

} // namespace

int bgpdt_parse(const bgpdt_type *type, const char *text, size_t text_size, uint8_t *value, size_t value_room,
                bgpdt_error **error)
{
    const Call call{type, BGPDT_PARSE, error};
    const bool sense = type != nullptr && is_buffer(text, text_size) && value != nullptr;
    if (sense && value_room < type->size)
        return told(call, BGPDT_NO_ROOM);
    return parse_or_tell(call, sense, {text, text_size}, value);
}

int bgpdt_print(const bgpdt_type *type, const uint8_t *value, size_t value_size, char *text, size_t text_room,
                size_t *text_size, bgpdt_error **error)
{
    const Call call{type, BGPDT_PRINT, error};
    const bool sense =
        type != nullptr && is_buffer(value, value_size) && is_buffer(text, text_room) && text_size != nullptr;
    return answer(call, sense, [&] {
        *text_size = 0;
        toolkit::require_size(type->record, {value, value_size}, type->size);
        return print(call, value, {text, text_room}, *text_size);
    });
}

int bgpdt_why(const bgpdt_type *type, const char *text, size_t text_size, bgpdt_error **error)
{
    const Call call{type, BGPDT_PARSE, error};
    const bool sense = type != nullptr && is_buffer(text, text_size) && error != nullptr;
    Room value(0);
    return parse_or_tell(call, sense, {text, text_size}, value.data());
}

int bgpdt_check(const bgpdt_type *type, const uint8_t *value, size_t value_size, bgpdt_error **error)
{
    return on_value({type, BGPDT_CHECK, error}, true, value, value_size,
                    [type](Value native) { toolkit::check_value(type->session(), type->record, native); });
}

int bgpdt_swap(const bgpdt_type *type, uint8_t *value, size_t value_size, bgpdt_error **error)
{
    return on_value({type, BGPDT_SWAP, error}, true, value, value_size, [&](std::span<std::uint8_t> native) {
        toolkit::swap_value(type->session(), type->record, native);
        toolkit::turn_to_target(type->record, native);
        std::ranges::copy(native, value);
    });
}

int bgpdt_compare(const bgpdt_type *type, const uint8_t *first, size_t first_size, const uint8_t *second,
                  size_t second_size, int *order, bgpdt_error **error)
{
    const bool sense = is_buffer(second, second_size) && order != nullptr;
    return on_value({type, BGPDT_COMPARE, error}, sense, first, first_size, [&](Value native) {
        toolkit::require_size(type->record, {second, second_size}, type->size);
        NativeValue other(*type, second);
        *order = toolkit::compare_values(type->session(), type->record, native, other.bytes());
    });
}

int bgpdt_order(const bgpdt_type *type, const uint8_t *first, size_t first_size, const uint8_t *second,
                size_t second_size, int *order)
{
    const bool sense = type != nullptr && first != nullptr && second != nullptr && order != nullptr &&
                       first_size == type->size && second_size == type->size;
    return answer({.type = type}, sense, [&] {
        const int answered = type->order.compare({first, first_size}, {second, second_size});
        *order = (answered > 0) - (answered < 0);
        return BGPDT_OK;
    });
}

int bgpdt_explain(const bgpdt_type *type, const uint8_t *value, size_t value_size, char **json, size_t *json_size,
                  bgpdt_error **error)
{
    return on_value({type, 0, error}, json != nullptr, value, value_size, [&](Value native) {
        const toolkit::Bytes bytes(native.begin(), native.end());
        const auto explanation = toolkit::explanation_of(type->session(), type->record, bytes);
        hand_over(toolkit::explanation_json(explanation).text(), json, json_size);
    });
}

int bgpdt_dialects(const bgpdt_type *type, const char *text, size_t text_size, char **json, size_t *json_size,
                   bgpdt_error **error)
{
    const bool sense = type != nullptr && is_buffer(text, text_size) && json != nullptr;
    return answer({type, 0, error}, sense, [&] {
        const std::string_view asked(text_size == 0 ? "" : text, text_size);
        const auto dialects = toolkit::dialects_of(type->record, asked);
        hand_over(toolkit::dialects_json(type->record, asked, dialects).text(), json, json_size);
        return BGPDT_OK;
    });
}

int bgpdt_field(const bgpdt_type *type, const uint8_t *value, size_t value_size, const char *name, size_t name_size,
                char **text, size_t *text_size, bgpdt_error **error)
{
    bool is_number = false;
    const bool sense = is_buffer(name, name_size) && text != nullptr;
    const int code = on_value({type, 0, error}, sense, value, value_size, [&](Value native) {
        *text = nullptr;
        const auto field = toolkit::field_named(type->session(), type->record, native, {name, name_size});
        if (!field)
            return;
        is_number = field->number.has_value();
        hand_over(field->text, text, text_size);
    });
    return code == BGPDT_OK && is_number ? BGPDT_NUMBER : code;
}

int bgpdt_from_hex(const bgpdt_type *type, const char *hex, size_t hex_size, uint8_t *value, size_t value_room,
                   bgpdt_error **error)
{
    const bool sense = type != nullptr && is_buffer(hex, hex_size) && value != nullptr;
    return answer({type, 0, error}, sense, [&]() -> int {
        if (value_room < type->size)
            return BGPDT_NO_ROOM;
        const toolkit::Bytes bytes = toolkit::from_hex({hex, hex_size});
        toolkit::require_size(type->record, bytes, type->size);
        std::ranges::copy(bytes, value);
        return BGPDT_OK;
    });
}

int bgpdt_to_native(const bgpdt_type *type, uint8_t *value, size_t value_size)
{
    return answer({.type = type}, type != nullptr && value != nullptr && value_size == type->size, [&] {
        toolkit::turn_to_native(type->record, {value, value_size});
        return BGPDT_OK;
    });
}

int bgpdt_from_native(const bgpdt_type *type, uint8_t *value, size_t value_size)
{
    return answer({.type = type}, type != nullptr && value != nullptr && value_size == type->size, [&] {
        toolkit::turn_to_target(type->record, {value, value_size});
        return BGPDT_OK;
    });
}

// ------------------------------------------------------------------------------------------------ script tables

int bgpdt_table(const bgpdt_type *type, const uint8_t *value, size_t value_size, char **json, size_t *json_size,
                bgpdt_error **error)
{
    return on_value({type, BGPDT_TABLE, error}, json != nullptr, value, value_size, [&](Value native) {
        toolkit::Buffer table;
        if (!toolkit::ScriptJson().append(table, type->session().host(), type->record, native))
            toolkit::push_table(type->session(), toolkit::new_lua_state().get(), type->record, native); // throws
        hand_over(std::string(table.text()), json, json_size);
    });
}

int bgpdt_push_lua(const bgpdt_type *type, const uint8_t *value, size_t value_size, lua_State *lua, bgpdt_error **error)
{
    return on_value({type, BGPDT_TABLE, error}, lua != nullptr, value, value_size,
                    [&](Value native) { toolkit::push_table(type->session(), lua, type->record, native); });
}

namespace {

/// What the table on top of the stack says.
int read_table(const bgpdt_type &type, lua_State *lua, std::span<std::uint8_t> room)
{
    if (room.size() < type.size)
        return BGPDT_NO_ROOM;
    toolkit::Bytes value = toolkit::read_table(type.session(), lua, type.record);
    toolkit::turn_to_target(type.record, value);
    std::ranges::copy(value, room.data());
    return BGPDT_OK;
}

} // namespace

int bgpdt_read_lua(const bgpdt_type *type, lua_State *lua, uint8_t *value, size_t value_room, bgpdt_error **error)
{
    return answer({type, BGPDT_READ_TABLE, error}, type != nullptr && lua != nullptr && value != nullptr, [&] {
        return read_table(*type, lua, {value, value_room});
    });
}

int bgpdt_read_table(const bgpdt_type *type, const char *json, size_t json_size, uint8_t *value, size_t value_room,
                     bgpdt_error **error)
{
    const bool sense = type != nullptr && is_buffer(json, json_size) && value != nullptr;
    return answer({type, BGPDT_READ_TABLE, error}, sense, [&] {
        const toolkit::LuaState lua = toolkit::new_lua_state();
        toolkit::push_json(lua.get(), {json, json_size});
        return read_table(*type, lua.get(), {value, value_room});
    });
}
