// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "command.hpp"

#include <algorithm>
#include <iterator>
#include <vector>

#include "toolkit/near_names.hpp"
#include "toolkit/words.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

/// The names of the commands that pass.
template <class Passes>
std::vector<std::string> names_of(std::span<const Command> commands, Passes passes)
{
    std::vector<std::string> names;
    for (const Command &command : commands)
        if (passes(command))
            names.emplace_back(command.name);
    return names;
}

constexpr std::string_view special_options[] = {
    "--mode",   "--native",    "--record",       "--template", "--value",   "--from",    "--to",
    "--output", "--in",        "--jobs",         "--show",     "--quiet",   "--summary", "--rejects",
    "--memory", "--unique",    "--with",         "--color",    "--html",    "--reverse", "--canonical",
    "--field",  "--as-format", "--descriptions", "--as",       "--dialects"};
constexpr std::string_view common_options[] = {"--native", "--mode", "--canonical", "--as-format", "--to", "--with"};
constexpr std::string_view options_for_one[] = {"--record", "--template", "--value"};

void require_options(const Command &command, const Options &options, std::span<const Command> commands)
{
    for (const std::string &option : options.given) {
        if (!has_option(command, option)) {
            const auto passes = [&option](const Command &other) { return has_option(other, option); };
            throw UsageError(option + " means nothing to " + std::string(command.name) + ", only to " +
                             joined(names_of(commands, passes), ", "));
        }
    }
}

/// Lines and single values have options of their own.
void require_stream_options(const Command &command, const Options &options)
{
    const bool many = streams(command, options);
    for (const std::string &option : options.given) {
        const auto is_in = [&option](std::span<const std::string_view> names) {
            return std::ranges::find(names, option) != names.end();
        };
        const bool for_many = is_in(special_options) && !is_in(common_options) && !is_in(options_for_one);
        if (many ? is_in(options_for_one) : for_many) {
            throw UsageError(option +
                             (many ? " is for one value" : " is for the lines of the input, and a value is given"));
        }
    }
    if (many && command.run != nullptr && options.arguments.size() > 1 && !options.in.empty()) {
        throw UsageError(
            "'-' is standard input and --in names what is read instead; --in - reads it beside other files");
    }
}

} // namespace

bool streams(const Command &command, const Options &options)
{
    const auto &arguments = options.arguments;
    return command.stream != nullptr && (command.run == nullptr || arguments.size() < 2 || arguments[1] == "-");
}

bool has_option(const Command &command, std::string_view option)
{
    return std::ranges::find(special_options, option) == std::end(special_options) ||
           (std::string(command.options) + " ").find(std::string(option) + " ") != std::string::npos;
}

const Command &find_command(std::span<const Command> commands, const std::string &name)
{
    const auto found = std::ranges::find(commands, name, &Command::name);
    if (found == commands.end()) {
        const std::vector<std::string> names = names_of(commands, [](const Command &) { return true; });
        throw UsageError("there is no command " + name + did_you_mean(name, names) +
                         "; 'bgpdt --help' lists the commands");
    }
    return *found;
}

const Command &find_command(std::span<const Command> commands, const Options &options)
{
    const Command &command = find_command(commands, options.command);
    const bool open = command.arguments.ends_with("]");
    const bool any = command.arguments.ends_with("...]");
    const auto blanks = static_cast<std::size_t>(std::ranges::count(command.arguments, ' '));
    const std::size_t wanted = command.arguments.empty() ? 0 : blanks + (open ? 0 : 1);
    const std::size_t given = options.arguments.size();
    if (given < wanted || (given > wanted + (open ? 1 : 0) && !any)) {
        throw UsageError(options.command + " takes " + (wanted == 0 ? "no arguments" : std::string(command.arguments)) +
                         ", given " +
                         (given == 0   ? "none"
                          : given == 1 ? "one argument"
                                       : std::to_string(given) + " arguments") +
                         (wanted == 0 ? "" : "; for example " + std::string(command.example)));
    }
    require_options(command, options, commands);
    if (command.stream != nullptr)
        require_stream_options(command, options);
    return command;
}

} // namespace bgpdt::tool
