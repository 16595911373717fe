// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "completion.hpp"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "command_line.hpp"
#include "toolkit/fields.hpp"
#include "toolkit/kinds.hpp"
#include "toolkit/near_names.hpp"
#include "toolkit/samples.hpp"
#include "wire/wire.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

using Arguments = std::vector<std::string>;
using Candidates = std::vector<Candidate>;

Candidates without_words(const Arguments &words)
{
    Candidates candidates;
    for (const std::string &word : words)
        candidates.push_back({word});
    return candidates;
}

/// What takes the place of a value's name in the help; empty for an option without value.
std::string value_name(const std::string &option)
{
    const std::vector<OptionName> options = option_names();
    const auto found = std::ranges::find(options, option, &OptionName::name);
    return found == options.end() ? "" : found->value;
}

/// Of an option or an argument.
Candidates values_called(Session &session, const std::string &name, const std::string &option,
                         const Arguments &arguments)
{
    if (name == "FORMAT" && option == "--as-format")
        return without_words({"plain", "dotted", "as-written"});
    const bool of_wire = !arguments.empty() && arguments.front() == "wire";
    const bool imports = !arguments.empty() && arguments.front() == "import";
    if (name == "FORMAT" && option == "--to" && (of_wire || imports))
        return without_words(of_wire ? Arguments{"text", "hex", "json", "wire"} : Arguments{"text", "hex", "json"});
    if (name == "FORMAT" && option == "--from" && (of_wire || imports))
        return without_words(of_wire ? Arguments{"text", "hex", "json"} : Arguments{"json", "hex"});
    if (name == "FORMAT" && option == "--from")
        return without_words({"text", "hex", "json", "binary"});
    if (name == "FORMAT")
        return without_words({"text", "hex", "json", "csv", "tsv", "binary"});
    if (name == "WHEN")
        return without_words({"auto", "always", "never"});
    if (name == "NAME" && arguments.size() > 1)
        return without_words(field_names(session, session.type(arguments[1])));
    return name == "FILE" || name == "ARG" ? Candidates{{file_candidate}} : Candidates{};
}

/// The command and its arguments, without options.
Arguments arguments_in(std::span<const std::string> words)
{
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!words[i].starts_with('-'))
            arguments.push_back(words[i]);
        else if (!value_name(words[i]).empty())
            ++i;
    }
    return arguments;
}

Candidates type_names(Session &session)
{
    Candidates names;
    for (const SYSDT_Record *type : session.host().types())
        names.push_back({name_of(*type), sample_of(type->typeId).about});
    return names;
}

/// What octets from the wire may be.
Candidates wire_forms()
{
    Candidates names;
    for (const wire::Form &form : wire::forms())
        names.push_back({std::string(form.name), std::string(form.about)});
    return names;
}

Candidates command_names(std::span<const Command> commands)
{
    Candidates names;
    for (const Command &command : commands)
        names.push_back({std::string(command.name), std::string(command.summary)});
    return names;
}

/// What the command takes behind the arguments that there are.
Candidates next_arguments(Session &session, std::span<const Command> commands, const Command &command,
                          const Arguments &arguments)
{
    std::istringstream names{std::string(command.arguments)};
    std::string name;
    std::string last;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        last = name = names >> name ? name : last.ends_with("...]") ? last : "";
    std::erase_if(name, [](char c) { return c == '[' || c == ']' || c == '.'; });
    if (name == "TYPE")
        return type_names(session);
    if (name == "WHAT")
        return wire_forms();
    if (name == "COMMAND")
        return command_names(commands);
    if (name != "KIND")
        return values_called(session, name, "", arguments);
    Candidates kind_names;
    for (const Kind &kind : kinds(session, session.type(arguments[1])))
        kind_names.push_back({kind.name, kind.about});
    return kind_names;
}

Candidates options_of(const Command *command)
{
    Candidates names;
    for (const OptionName &option : option_names())
        if (command == nullptr || has_option(*command, option.name))
            names.push_back({option.name, option.meaning});
    return names;
}

Candidates candidates(Session &session, std::span<const Command> commands, std::span<const std::string> before,
                      const std::string &word)
{
    const Arguments arguments = arguments_in(before);
    if (!before.empty() && before.back().starts_with('-') && !value_name(before.back()).empty())
        return values_called(session, value_name(before.back()), before.back(), arguments);
    if (const std::size_t equals = word.find('='); word.starts_with("--") && equals != std::string::npos) {
        const std::string option = word.substr(0, equals);
        Candidates values = values_called(session, value_name(option), option, arguments);
        for (Candidate &value : values)
            if (value.word != file_candidate)
                value.word.insert(0, word, 0, equals + 1);
        return values;
    }
    const Command *command = arguments.empty() ? nullptr : &find_command(commands, arguments.front());
    if (word.starts_with('-'))
        return options_of(command);
    return command != nullptr ? next_arguments(session, commands, *command, arguments) : command_names(commands);
}

} // namespace

std::vector<Candidate> completions(Session &session, std::span<const Command> commands,
                                   std::span<const std::string> words)
{
    const std::string word = words.empty() ? "" : words.back();
    Candidates found = candidates(session, commands, words.first(words.size() - (words.empty() ? 0 : 1)), word);
    std::erase_if(found, [begin = lower(word)](const Candidate &candidate) {
        return candidate.word != file_candidate && !lower(candidate.word).starts_with(begin);
    });
    return found;
}

} // namespace bgpdt::tool
