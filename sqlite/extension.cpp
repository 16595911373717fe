// SPDX-License-Identifier: Apache-2.0
#include "sqlite/extension.hpp"

#include <algorithm>
#include <exception>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include <lua.hpp>

#include "toolkit/conversions.hpp"
#include "toolkit/display_record.hpp"
#include "toolkit/errors.hpp"
#include "toolkit/fields.hpp"
#include "toolkit/module_session.hpp"
#include "toolkit/near_names.hpp"
#include "toolkit/script_table.hpp"

const sqlite3_api_routines *sqlite3_api = nullptr;

namespace bgpdt::sqlite {
namespace {

using toolkit::Bytes;

/// The text or blob of an argument, until it is asked for in another form.
std::string_view view(sqlite3_value *argument)
{
    const bool blob = sqlite3_value_type(argument) == SQLITE_BLOB;
    const auto *bytes = blob ? static_cast<const char *>(sqlite3_value_blob(argument))
                             : reinterpret_cast<const char *>(sqlite3_value_text(argument));
    return {bytes, bytes == nullptr ? 0 : static_cast<std::size_t>(sqlite3_value_bytes(argument))};
}

void give(sqlite3_context *context, std::string_view text)
{
    sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

const char *words_for(toolkit::Hint hint)
{
    switch (hint) {
    case toolkit::Hint::types: return "; the table bgp_types lists the types";
    case toolkit::Hint::bytes: return "; its values are blobs";
    default: return "";
    }
}

std::string sentence(const toolkit::Error &error)
{
    return std::string(error.front()).append(words_for(error.hint())).append(error.rest());
}

/// The blob as a value of the type, in this machine's byte order.
Bytes value_at(const SYSDT_Record &type, sqlite3_value *argument)
{
    if (sqlite3_value_type(argument) != SQLITE_BLOB)
        throw toolkit::Refusal("the value of " + toolkit::name_of(type) + " must be a blob, as bgp_value() gives it");
    const std::string_view blob = view(argument);
    Bytes value(blob.begin(), blob.end());
    toolkit::require_size(type, value, value_size(type));
    toolkit::turn_to_native(type, value);
    return value;
}

Bytes parsed(toolkit::Session &session, const SYSDT_Record &type, sqlite3_value *argument)
{
    const std::string_view text = view(argument);
    if (is_too_long(text)) {
        throw toolkit::Refusal(toolkit::name_of(type) + " refuses the text: it is longer than any value's, more than " +
                               std::to_string(toolkit::longest_line) + " characters");
    }
    return toolkit::parse_text(session, type, text, session.mode_for(type)).data;
}

/// @param arguments  behind the type
using Function = void(sqlite3_context *, toolkit::Session &, const SYSDT_Record &, sqlite3_value **arguments);

/// The whole value of a text, in this machine's byte order.
Bytes whole(toolkit::Session &session, const SYSDT_Record &type, sqlite3_value *text)
{
    const Bytes given = parsed(session, type, text);
    Bytes room;
    const toolkit::Value filled = toolkit::filled_up(type, given, room);
    return {filled.begin(), filled.end()};
}

void value(sqlite3_context *context, toolkit::Session &session, const SYSDT_Record &type, sqlite3_value **arguments)
{
    Bytes bytes = whole(session, type, arguments[0]);
    toolkit::turn_to_target(type, bytes);
    sqlite3_result_blob64(context, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
}

void give_printed(sqlite3_context *context, toolkit::Session &session, const SYSDT_Record &type, const Bytes &value)
{
    const toolkit::Printed printed =
        toolkit::print_value(session, type, toolkit::printable(type, value), session.mode_for(type));
    if (!printed.text)
        throw toolkit::Refusal(toolkit::name_of(type) + " prints no text");
    give(context, *printed.text);
}

void text(sqlite3_context *context, toolkit::Session &session, const SYSDT_Record &type, sqlite3_value **arguments)
{
    give_printed(context, session, type, value_at(type, arguments[0]));
}

void canon(sqlite3_context *context, toolkit::Session &session, const SYSDT_Record &type, sqlite3_value **arguments)
{
    give_printed(context, session, type, whole(session, type, arguments[0]));
}

/// Null for a field that the value has not, but others of the type have.
void field(sqlite3_context *context, toolkit::Session &session, const SYSDT_Record &type, sqlite3_value **arguments)
{
    const std::string name(view(arguments[1]));
    for (const toolkit::NamedValue &field : toolkit::named_values(session, type, value_at(type, arguments[0]))) {
        if (field.name != name)
            continue;
        if (field.number && *field.number <= std::numeric_limits<sqlite3_int64>::max())
            sqlite3_result_int64(context, static_cast<sqlite3_int64>(*field.number));
        else
            give(context, field.text);
        return;
    }
    const std::vector<std::string> names = toolkit::field_names(session, type);
    if (std::ranges::find(names, name) == names.end())
        throw toolkit::Refusal(toolkit::name_of(type) + " has no field " + name + toolkit::did_you_mean(name, names));
}

void valid(sqlite3_context *context, toolkit::Session &session, const SYSDT_Record &type, sqlite3_value **arguments)
{
    sqlite3_result_int(context, TextReader(session, type).read(view(arguments[0])).data() != nullptr ? 1 : 0);
}

/// Null for a text that is valid.
void why(sqlite3_context *context, toolkit::Session &session, const SYSDT_Record &type, sqlite3_value **arguments)
{
    try {
        static_cast<void>(parsed(session, type, arguments[0]));
    } catch (const toolkit::Refusal &refusal) {
        give(context, sentence(refusal));
    }
}

void json(sqlite3_context *context, toolkit::Session &session, const SYSDT_Record &type, sqlite3_value **arguments)
{
    const Bytes bytes = value_at(type, arguments[0]);
    const toolkit::LuaState lua = toolkit::new_lua_state();
    toolkit::push_table(session, lua.get(), type, bytes);
    give(context, toolkit::script_json_text(lua.get(), -1));
    sqlite3_result_subtype(context, 'J'); // SQLite's own JSON functions take it as JSON, not as a string
}

/// An error with the sentence for what is refused.
template <Function *function>
void answer(sqlite3_context *context, sqlite3_value **arguments)
{
    try {
        auto &session = *static_cast<toolkit::Session *>(sqlite3_user_data(context));
        function(context, session, session.type(view(arguments[0])), arguments + 1);
    } catch (const toolkit::Error &error) {
        sqlite3_result_error(context, sentence(error).c_str(), -1);
    }
}

/// A function of SQL: NULL for NULL.
template <Function *function>
void entry(sqlite3_context *context, int count, sqlite3_value **arguments)
{
    const auto is_null = [](sqlite3_value *argument) { return sqlite3_value_type(argument) == SQLITE_NULL; };
    if (std::any_of(arguments, arguments + count, is_null))
        return;
    try {
        answer<function>(context, arguments);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    } catch (const std::exception &error) {
        sqlite3_result_error(context, error.what(), -1);
    }
}

struct Named {
    const char *name;
    void (*function)(sqlite3_context *, int, sqlite3_value **);
    int arguments = 2;
    int flags = 0;
};

#ifdef SQLITE_RESULT_SUBTYPE // before SQLite 3.45 there is no need to announce it
constexpr int gives_subtype = SQLITE_RESULT_SUBTYPE;
#else
constexpr int gives_subtype = 0;
#endif

constexpr Named functions[] = {
    {"bgp_canon", entry<canon>}, {"bgp_field", entry<field>, 3}, {"bgp_json", entry<json>, 2, gives_subtype},
    {"bgp_text", entry<text>},   {"bgp_valid", entry<valid>},    {"bgp_value", entry<value>},
    {"bgp_why", entry<why>},
};

int add_functions(sqlite3 *database, toolkit::Session &session)
{
    constexpr int always = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    for (const Named &row : functions) {
        const int result = sqlite3_create_function_v2(database, row.name, row.arguments, always | row.flags, &session,
                                                      row.function, nullptr, nullptr, nullptr);
        if (result != SQLITE_OK)
            return result;
    }
    return SQLITE_OK;
}

int add_all(sqlite3 *database)
{
    toolkit::Session &session = toolkit::module_session();
    int result = add_functions(database, session);
    result = result == SQLITE_OK ? add_collations(database, session) : result;
    return result == SQLITE_OK ? add_types_table(database, session) : result;
}

} // namespace
} // namespace bgpdt::sqlite

extern "C" __attribute__((visibility("default"))) int sqlite3_bgpdtsqlite_init(sqlite3 *database, char **message,
                                                                               const sqlite3_api_routines *api)
{
    SQLITE_EXTENSION_INIT2(api);
    try {
        return bgpdt::sqlite::add_all(database);
    } catch (const std::bad_alloc &) {
        return SQLITE_NOMEM;
    } catch (const std::exception &error) {
        *message = sqlite3_mprintf("%s", error.what());
        return SQLITE_ERROR;
    }
}
