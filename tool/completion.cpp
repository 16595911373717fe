// SPDX-License-Identifier: Apache-2.0
#include "completion.hpp"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "command_line.hpp"
#include "toolkit/kinds.hpp"
#include "toolkit/near_names.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

using Words = std::vector<std::string>;

/// What takes the place of a value's name in the help; empty for an option without value.
std::string value_name(const std::string &option)
{
    const std::vector<OptionName> options = option_names();
    const auto found = std::ranges::find(options, option, &OptionName::name);
    return found == options.end() ? "" : found->value;
}

Words values_called(const std::string &name)
{
    if (name == "FORMAT")
        return {"text", "hex", "json", "binary"};
    if (name == "WHEN")
        return {"auto", "always", "never"};
    return name == "FILE" || name == "ARG" ? Words{file_candidate} : Words{};
}

/// The command and its arguments, without options.
Words arguments_in(std::span<const std::string> words)
{
    Words arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!words[i].starts_with('-'))
            arguments.push_back(words[i]);
        else if (!value_name(words[i]).empty())
            ++i;
    }
    return arguments;
}

Words type_names(Session &session)
{
    Words names;
    for (const SYSDT_Record *type : session.host().types())
        names.push_back(name_of(*type));
    return names;
}

/// What the command takes behind the arguments that there are.
Words next_arguments(Session &session, const Command &command, const Words &arguments)
{
    std::istringstream names{std::string(command.arguments)};
    std::string name;
    std::string last;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        last = name = names >> name ? name : last.ends_with("...]") ? last : "";
    std::erase_if(name, [](char c) { return c == '[' || c == ']' || c == '.'; });
    if (name == "TYPE")
        return type_names(session);
    if (name == "KIND") {
        Words kind_names;
        std::ranges::transform(kinds(session, session.type(arguments[1])), std::back_inserter(kind_names), &Kind::name);
        return kind_names;
    }
    return values_called(name);
}

Words options_of(const Command *command)
{
    Words names;
    for (const OptionName &option : option_names())
        if (command == nullptr || has_option(*command, option.name))
            names.push_back(option.name);
    return names;
}

Words candidates(Session &session, std::span<const Command> commands, std::span<const std::string> before,
                 const std::string &word)
{
    if (!before.empty() && before.back().starts_with('-') && !value_name(before.back()).empty())
        return values_called(value_name(before.back()));
    if (const std::size_t equals = word.find('='); word.starts_with("--") && equals != std::string::npos) {
        Words values = values_called(value_name(word.substr(0, equals)));
        for (std::string &value : values)
            if (value != file_candidate)
                value.insert(0, word, 0, equals + 1);
        return values;
    }
    const Words arguments = arguments_in(before);
    const Command *command = arguments.empty() ? nullptr : &find_command(commands, arguments.front());
    if (word.starts_with('-'))
        return options_of(command);
    if (command != nullptr)
        return next_arguments(session, *command, arguments);
    Words names;
    std::ranges::transform(commands, std::back_inserter(names), [](const Command &c) { return std::string(c.name); });
    return names;
}

} // namespace

std::vector<std::string> completions(Session &session, std::span<const Command> commands,
                                     std::span<const std::string> words)
{
    const std::string word = words.empty() ? "" : words.back();
    Words found = candidates(session, commands, words.first(words.size() - (words.empty() ? 0 : 1)), word);
    std::erase_if(found, [begin = lower(word)](const std::string &candidate) {
        return candidate != file_candidate && !lower(candidate).starts_with(begin);
    });
    return found;
}

} // namespace bgpdt::tool
