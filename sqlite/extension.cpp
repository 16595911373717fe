// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "sqlite/extension.hpp"

#include <algorithm>
#include <charconv>
#include <exception>
#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

const sqlite3_api_routines *sqlite3_api = nullptr;

namespace bgpdt::sqlite {
namespace {

/// The text or blob of an argument, until it is asked for in another form.
std::string_view content(sqlite3_value *argument)
{
    const bool blob = sqlite3_value_type(argument) == SQLITE_BLOB;
    const auto *bytes = blob ? static_cast<const char *>(sqlite3_value_blob(argument))
                             : reinterpret_cast<const char *>(sqlite3_value_text(argument));
    return {bytes, bytes == nullptr ? 0 : static_cast<std::size_t>(sqlite3_value_bytes(argument))};
}

void give_error(sqlite3_context *context, const std::string &sentence)
{
    sqlite3_result_error(context, sentence.data(), static_cast<int>(sentence.size()));
}

/// What there is to do, in the extension's own words.
const char *hint_for(int code)
{
    switch (code) {
    case BGPDT_NO_TYPE: return "; the table bgp_types lists the types";
    case BGPDT_NO_TEXT: return "; its values are blobs";
    default: return "";
    }
}

/// Thrown with a sentence.
class Refused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    explicit Refused(const Refusal &refusal)
        : std::runtime_error(std::string(refusal.message()).append(hint_for(refusal.code())))
    {
    }
};

Value parsed(Type type, sqlite3_value *argument)
{
    const std::string_view text = content(argument);
    if (text.size() > longest_text) {
        throw Refused(std::string(type.name()) + " refuses the text: it is longer than any value's, more than " +
                      std::to_string(longest_text) + " characters");
    }
    result<Value> value = type.parse(text);
    return value ? *std::move(value) : throw Refused(value.error());
}

/// The bytes of a blob. Of another size the library refuses them.
std::span<const std::uint8_t> blob_at(Type type, sqlite3_value *argument)
{
    if (sqlite3_value_type(argument) != SQLITE_BLOB)
        throw Refused("the value of " + std::string(type.name()) + " must be a blob, as bgp_value() gives it");
    const std::string_view blob = content(argument);
    return {reinterpret_cast<const std::uint8_t *>(blob.data()), blob.size()};
}

/// @param arguments  behind the type
using Function = void(sqlite3_context *, Type, sqlite3_value **arguments);

void value(sqlite3_context *context, Type type, sqlite3_value **arguments)
{
    const Value parsed_value = parsed(type, arguments[0]);
    const std::span<const std::uint8_t> bytes = parsed_value.bytes();
    sqlite3_result_blob64(context, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
}

void give_printed(sqlite3_context *context, Type type, std::span<const std::uint8_t> value)
{
    char text[BGPDT_TEXT_ROOM];
    std::size_t size = 0;
    Error error;
    if (bgpdt_print(type.get(), value.data(), value.size(), text, sizeof text, &size, error.out()) < BGPDT_OK)
        throw Refused(error.refusal());
    give(context, {text, size});
}

void text(sqlite3_context *context, Type type, sqlite3_value **arguments)
{
    give_printed(context, type, blob_at(type, arguments[0]));
}

void canon(sqlite3_context *context, Type type, sqlite3_value **arguments)
{
    give_printed(context, type, parsed(type, arguments[0]).bytes());
}

/// Null for a field that the value has not, but others of the type have.
void field(sqlite3_context *context, Type type, sqlite3_value **arguments)
{
    const auto value = blob_at(type, arguments[0]);
    const std::string_view name = content(arguments[1]);
    char *text = nullptr;
    std::size_t size = 0;
    Error error;
    const int code =
        bgpdt_field(type.get(), value.data(), value.size(), name.data(), name.size(), &text, &size, error.out());
    if (code < BGPDT_OK)
        throw Refused(error.refusal());
    sqlite3_int64 number = 0;
    if (code == BGPDT_NUMBER && std::from_chars(text, text + size, number).ec == std::errc())
        sqlite3_result_int64(context, number);
    else if (text != nullptr)
        give(context, {text, size});
    bgpdt_free(text);
}

void valid(sqlite3_context *context, Type type, sqlite3_value **arguments)
{
    const std::string_view text = content(arguments[0]);
    const bool taken = text.size() <= longest_text && type.try_parse(text).has_value();
    sqlite3_result_int(context, taken ? 1 : 0);
}

/// Null for a text that is valid.
void why(sqlite3_context *context, Type type, sqlite3_value **arguments)
{
    try {
        static_cast<void>(parsed(type, arguments[0]));
    } catch (const Refused &refused) {
        give(context, refused.what());
    }
}

void json(sqlite3_context *context, Type type, sqlite3_value **arguments)
{
    const auto value = blob_at(type, arguments[0]);
    char *json = nullptr;
    std::size_t size = 0;
    Error error;
    if (bgpdt_table(type.get(), value.data(), value.size(), &json, &size, error.out()) != BGPDT_OK)
        throw Refused(error.refusal());
    give(context, {json, size});
    bgpdt_free(json);
    sqlite3_result_subtype(context, 'J'); // SQLite's own JSON functions take it as JSON, not as a string
}

/// @throws Refused if there is no type of the name
Type type_named(const bgpdt_library *library, std::string_view name)
{
    const bgpdt_type *type = nullptr;
    Error error;
    if (bgpdt_find(library, name.data(), name.size(), &type, error.out()) != BGPDT_OK)
        throw Refused(error.refusal());
    return Type(type);
}

/// NULL for NULL, and an error with the sentence for what is refused.
void answer(Function *function, sqlite3_context *context, std::span<sqlite3_value *> arguments)
{
    const auto is_null = [](sqlite3_value *argument) { return sqlite3_value_type(argument) == SQLITE_NULL; };
    if (std::ranges::any_of(arguments, is_null))
        return;
    try {
        const auto *library = static_cast<const bgpdt_library *>(sqlite3_user_data(context));
        function(context, type_named(library, content(arguments[0])), &arguments[1]);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    } catch (const std::exception &error) {
        give_error(context, error.what());
    }
}

/// A function of SQL.
template <Function *function>
void entry(sqlite3_context *context, int count, sqlite3_value **arguments)
{
    answer(function, context, {arguments, static_cast<std::size_t>(count)});
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

int add_functions(sqlite3 *database, bgpdt_library *library)
{
    constexpr int always = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    for (const Named &row : functions) {
        const int result = sqlite3_create_function_v2(database, row.name, row.arguments, always | row.flags, library,
                                                      row.function, nullptr, nullptr, nullptr);
        if (result != SQLITE_OK)
            return result;
    }
    return SQLITE_OK;
}

int add_all(sqlite3 *database, bgpdt_library *library)
{
    int result = add_functions(database, library);
    result = result == SQLITE_OK ? add_collations(database, library) : result;
    return result == SQLITE_OK ? add_types_table(database, library) : result;
}

/// Open until the process is gone, whatever still runs at the exit.
/// @throws Refused, std::bad_alloc; the next call tries again
bgpdt_library *opened()
{
    static bgpdt_library *library = [] {
        bgpdt_library *fresh = nullptr;
        Error error;
        return bgpdt_open(nullptr, &fresh, error.out()) == BGPDT_OK ? fresh : throw Refused(error.refusal());
    }();
    return library;
}

} // namespace
} // namespace bgpdt::sqlite

extern "C" __attribute__((visibility("default"))) int sqlite3_bgpdtsqlite_init(sqlite3 *database, char **message,
                                                                               const sqlite3_api_routines *api)
{
    static const bool is_set = [api] { // once: connections of other threads read it
        SQLITE_EXTENSION_INIT2(api);
        return true;
    }();
    static_cast<void>(is_set);
    try {
        return bgpdt::sqlite::add_all(database, bgpdt::sqlite::opened());
    } catch (const std::bad_alloc &) {
        return SQLITE_NOMEM;
    } catch (const std::exception &error) {
        *message = sqlite3_mprintf("%s", error.what());
        return SQLITE_ERROR;
    }
}
