// SPDX-License-Identifier: Apache-2.0
#include "commands.hpp"

#include <algorithm>
#include <iterator>

#include "conversions.hpp"
#include "errors.hpp"
#include "lua_module.hpp"
#include "near_names.hpp"
#include "script_table.hpp"

namespace bgpdt::tool {
namespace {

using Arguments = std::span<const std::string>;
using nlohmann::ordered_json;

std::string joined(const std::vector<std::string> &words, const char *separator)
{
    std::string line;
    for (const std::string &word : words) {
        line.append(line.empty() ? "" : separator).append(word);
    }
    return line;
}

std::string id_text(std::uint16_t id)
{
    const std::uint8_t bytes[] = {static_cast<std::uint8_t>(id >> 8), static_cast<std::uint8_t>(id)};
    return "0x" + to_hex(bytes);
}

/// The argument's bytes in the machine's order.
Bytes read_bytes(const Session &session, const SYSDT_Record &type, std::string_view hex)
{
    Bytes value = from_hex(hex);
    if (!session.options().native) {
        turn_to_native(type, value);
    }
    return value;
}

/// As read_bytes, but of the type's length; a host's string is filled up with NUL.
Bytes read_value(const Session &session, const SYSDT_Record &type, std::string_view hex)
{
    Bytes value = read_bytes(session, type, hex);
    if (type.baseKind == SYSDT_KIND_STRING && value.size() < value_size(type)) {
        value.resize(value_size(type));
    }
    require_size(type, value, value_size(type));
    return value;
}

/// Text, or bytes behind 0x.
Bytes read_text_or_value(Session &session, const SYSDT_Record &type, std::string_view argument)
{
    if (argument.starts_with("0x") || argument.starts_with("0X")) {
        return read_value(session, type, argument);
    }
    return parse_text(session, type, argument, session.mode_for(type)).data;
}

std::string shown(const Session &session, const SYSDT_Record &type, Bytes value)
{
    if (!session.options().native) {
        turn_to_target(type, value);
    }
    return to_hex(value);
}

Answer types(Session &session, Arguments)
{
    Answer answer{{}, ordered_json::array()};
    for (const SYSDT_Record *type : session.host().types()) {
        std::string name = name_of(*type);
        const std::vector<std::string> words = operations(*type);
        answer.json.push_back(
            {{"name", name}, {"id", type->typeId}, {"size", value_size(*type)}, {"operations", words}});
        name.resize(20, ' ');
        std::string size = std::to_string(value_size(*type));
        size.insert(0, 6 - std::min<std::size_t>(size.size(), 6), ' ');
        answer.text.append(name).append(id_text(type->typeId)).append(size).append("  ");
        answer.text.append(joined(words, " ")).append("\n");
    }
    return answer;
}

Answer parse(Session &session, Arguments arguments)
{
    const SYSDT_Record &type = session.type(arguments[0]);
    const std::uint8_t mode = session.mode_for(type);
    const host::Converted converted = parse_text(session, type, arguments[1], mode);
    const std::string hex = shown(session, type, converted.data);
    return {hex + "\n",
            {{"type", name_of(type)},
             {"mode", mode},
             {"text", arguments[1]},
             {"kind", converted.kind},
             {"size", converted.data.size()},
             {"hex", hex}}};
}

Answer print(Session &session, Arguments arguments)
{
    const SYSDT_Record &type = session.type(arguments[0]);
    const std::uint8_t mode = session.mode_for(type);
    const Bytes value = session.options().record ? from_hex(arguments[1]) : read_value(session, type, arguments[1]);
    if (value.size() < value_size(type)) {
        require_size(type, value, value_size(type));
    }
    const Printed printed = print_value(session, type, value, mode);
    Answer answer{{}, {{"type", name_of(type)}, {"mode", mode}, {"kind", printed.kind}}};
    if (printed.text) {
        answer.text = *printed.text + "\n";
        answer.json["text"] = *printed.text;
    } else {
        const bool copy = printed.bytes == value;
        const std::string hex = copy ? shown(session, type, printed.bytes) : to_hex(printed.bytes);
        answer.text = hex + "\n";
        answer.json["hex"] = hex;
    }
    return answer;
}

Answer check(Session &session, Arguments arguments)
{
    const SYSDT_Record &type = session.type(arguments[0]);
    check_value(session, type, read_bytes(session, type, arguments[1]));
    return {"ok\n", {{"type", name_of(type)}, {"ok", true}}};
}

Answer compare(Session &session, Arguments arguments)
{
    const SYSDT_Record &type = session.type(arguments[0]);
    const Bytes first = read_text_or_value(session, type, arguments[1]);
    const Bytes second = read_text_or_value(session, type, arguments[2]);
    const int order = compare_values(session, type, first, second);
    return {std::to_string(order) + "\n", {{"type", name_of(type)}, {"order", order}}};
}

Answer swap_bytes(Session &session, Arguments arguments)
{
    const SYSDT_Record &type = session.type(arguments[0]);
    Bytes value = read_bytes(session, type, arguments[1]);
    require_size(type, value, type.dataLength); // Endian works on the registered form
    swap_value(session, type, value);
    if (!session.options().native) {
        turn_to_native(type, value); // what was in the machine's order is now in the other
    }
    const std::string hex = to_hex(value);
    return {hex + "\n", {{"type", name_of(type)}, {"hex", hex}}};
}

Answer describe(Session &session, Arguments arguments)
{
    const SYSDT_Record &type = session.type(arguments[0]);
    const std::vector<std::string> takes = help_texts(session, type);
    const std::vector<std::string> words = operations(type);
    const char *kind = type.baseKind == SYSDT_KIND_BINARY   ? "binary"
                       : type.baseKind == SYSDT_KIND_STRING ? "string"
                                                            : "structured";
    const std::size_t size = value_size(type);
    return {name_of(type) + "\n  id          " + id_text(type.typeId) + "\n  kind        " + kind + "\n  size        " +
                std::to_string(size) + (size == 1 ? " byte\n" : " bytes\n") +
                (takes.empty() ? "" : "  takes       " + joined(takes, " or ") + "\n") + "  operations  " +
                joined(words, " ") + "\n",
            {{"name", name_of(type)},
             {"id", type.typeId},
             {"kind", kind},
             {"size", size},
             {"takes", takes},
             {"operations", words}}};
}

Answer table(Session &session, Arguments arguments)
{
    const SYSDT_Record &type = session.type(arguments[0]);
    const Bytes value = read_text_or_value(session, type, arguments[1]);
    const LuaState lua = new_lua_state();
    push_table(session, lua.get(), type, value);
    const ordered_json json = script_json(lua.get(), -1);
    return {script_text(json) + "\n", {{"type", name_of(type)}, {"table", json}}};
}

Answer lua(Session &session, Arguments arguments)
{
    run_script(session, arguments[0], arguments.subspan(1));
    return {};
}

constexpr Command table_of_commands[] = {
    {"types", "", "The registered types: name, id, size in bytes, operations", types},
    {"describe", "TYPE", "What the type is and takes", describe},
    {"parse", "TYPE TEXT", "Text to bytes", parse},
    {"print", "TYPE HEX", "Bytes to text", print},
    {"check", "TYPE HEX", "Whether the bytes are a value of the type", check},
    {"compare", "TYPE VALUE VALUE", "The order of two values on this machine: -1, 0 or 1", compare},
    {"swap", "TYPE HEX", "The bytes with their numbers in the other byte order", swap_bytes},
    {"table", "TYPE VALUE", "The value as scripts see it", table},
    {"lua", "FILE [ARGS]", "Runs a Lua script with the module 'bgp'", lua},
};

} // namespace

std::span<const Command> commands() { return table_of_commands; }

const Command &find_command(const Options &options)
{
    const auto found = std::ranges::find(table_of_commands, options.command, &Command::name);
    if (found == std::end(table_of_commands)) {
        std::vector<std::string> names;
        std::ranges::transform(table_of_commands, std::back_inserter(names),
                               [](const Command &command) { return std::string(command.name); });
        throw UsageError("there is no command " + options.command + did_you_mean(options.command, names) +
                         "; 'bgpdt --help' lists the commands");
    }
    const bool open = found->arguments.ends_with("]");
    const auto blanks = static_cast<std::size_t>(std::ranges::count(found->arguments, ' '));
    const std::size_t wanted = found->arguments.empty() ? 0 : blanks + (open ? 0 : 1);
    const std::size_t given = options.arguments.size();
    if (given < wanted || (given > wanted && !open)) {
        throw UsageError(options.command + " takes " + (wanted == 0 ? "no arguments" : std::string(found->arguments)) +
                         ", given " +
                         (given == 0   ? "none"
                          : given == 1 ? "one argument"
                                       : std::to_string(given) + " arguments"));
    }
    return *found;
}

} // namespace bgpdt::tool
