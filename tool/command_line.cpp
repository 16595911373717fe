// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "command_line.hpp"

#include <algorithm>
#include <charconv>
#include <limits>
#include <span>
#include <utility>

#include <CLI/CLI.hpp>

#include "display_values.hpp"
#include "errors.hpp"
#include "toolkit/display_record.hpp"
#include "toolkit/near_names.hpp"
#include "toolkit/words.hpp"
#include "wire_commands.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

constexpr const char *value_notes = R"(
VALUE is text, or bytes in hexadecimal: text if the type takes it, bytes behind 0x. HEX is bytes, with or without 0x;
blanks, ':', '_' and '-' may stand between them. Numbers in them are in the byte order of the target (big-endian) unless --native is given.
)";

constexpr const char *notes = R"(
Behind "--" everything is an argument, whatever it begins with.

Exit status: 0 done, 1 value refused, 2 usage, input or output.
)";

std::string row(const std::string &what, std::string_view meaning)
{
    return padded("  " + what, 32) + std::string(meaning) + "\n";
}

std::string call_of(const Command &command)
{
    return std::string(command.name) + (command.arguments.empty() ? "" : " ") + std::string(command.arguments);
}

/// The options of the command, of every one if there is none.
std::string option_rows(const CLI::App &app, const Command *command)
{
    std::string rows = "\nOptions:\n";
    for (const CLI::Option *option : app.get_options()) {
        if (command == nullptr || has_option(*command, option->get_name())) {
            const std::string value = option->get_type_name();
            rows += row(option->get_name(false, true) + (value.empty() ? "" : " ") + value, option->get_description());
        }
    }
    return rows;
}

/// What stands below the options of the command, or of every one if there is none.
std::string notes_for(const Command *command)
{
    const auto has = [command](const char *option) { return command == nullptr || has_option(*command, option); };
    return (has("--value") ? "\nKIND is " + display_kind_names() + ".\nNumbers fill %u and its like, the others %s.\n"
                           : "") +
           (command != nullptr && has("--with") ? "\nWhat the octets may be:\n" + wire_form_rows() : "") +
           (has("--native") ? value_notes : "") + notes;
}

std::string help_page(const CLI::App &app, std::span<const Command> commands)
{
    std::string page = "bgpdt: BGP data types, through the plug-in that a router loads\n\n"
                       "Usage: bgpdt COMMAND [ARGUMENTS] [OPTIONS]\n\nCommands:\n";
    for (const Command &command : commands)
        page += row(call_of(command), command.summary);
    return page + "\n'bgpdt COMMAND --help' tells more of a command.\n" + option_rows(app, nullptr) +
           notes_for(nullptr);
}

std::string help_page(const CLI::App &app, const Command &command)
{
    return "Usage: bgpdt " + call_of(command) + " [OPTIONS]\n\n" + std::string(command.summary) +
           ", for example\n\n  " + std::string(command.example) + "\n" + option_rows(app, &command) +
           notes_for(&command);
}

constexpr std::uint64_t largest_number = std::numeric_limits<std::uint64_t>::max();

/// The number whose decimal digits begin the text, and what stands behind them; nothing if there is none.
std::optional<std::uint64_t> take_number(std::string_view &text)
{
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

/// How often the unit, as in "64M" or "64 MiB", doubles a byte; nothing if it is none.
std::optional<unsigned> doublings(std::string_view unit)
{
    constexpr std::string_view letters = "kmgtpe";
    const std::string small = lower(unit.substr(std::min(unit.find_first_not_of(' '), unit.size())));
    if (small.empty() || small == "b")
        return 0;
    const std::size_t letter = letters.find(small.front());
    const std::string rest = small.substr(1);
    const bool known = letter != std::string_view::npos && (rest.empty() || rest == "b" || rest == "ib");
    return known ? std::optional(10 * (static_cast<unsigned>(letter) + 1)) : std::nullopt;
}

/// Nothing for what is no size of one byte or more.
std::optional<std::uint64_t> read_size(std::string_view text)
{
    const std::optional<std::uint64_t> number = take_number(text);
    const std::optional<unsigned> shift = doublings(text);
    const bool fits = number && shift && *number != 0 && *number <= largest_number >> *shift;
    return fits ? std::optional(*number << *shift) : std::nullopt;
}

/// Declares an option with a value that is read into the target.
/// @param read  gives nothing for what is none
/// @param what  what is taken
template <class Target, class Read>
CLI::Option *add_value(CLI::App &app, const std::string &names, Target &target, Read read, const std::string &what,
                       const std::string &description)
{
    const std::string name = names.substr(names.find("--"));
    return app.add_option_function<std::string>(
        names,
        [=, &target](const std::string &text) {
            const auto value = read(text);
            if (!value)
                throw UsageError(name + " takes " + what + ", not " + (text.empty() ? "nothing" : text));
            target = *value;
        },
        description);
}

/// Declares an option with a value from 0 to the largest.
template <class Target, class Number>
void add_number(CLI::App &app, const std::string &names, Target &target, Number largest, const char *description)
{
    const auto read = [largest](std::string_view text) -> std::optional<Number> {
        const std::optional<std::uint64_t> number = take_number(text);
        const bool fits = number && text.empty() && *number <= largest;
        return fits ? std::optional(static_cast<Number>(*number)) : std::nullopt;
    };
    add_value(app, names, target, read, "a number from 0 to " + std::to_string(largest), description)->type_name("N");
}

std::optional<Notation> read_notation(std::string_view word)
{
    constexpr std::pair<std::string_view, Notation> words[] = {
        {"plain", Notation::plain}, {"dotted", Notation::dotted}, {"as-written", Notation::as_written}};
    for (const auto &[name, notation] : words)
        if (name == word)
            return notation;
    return {};
}

CLI::Validator named_file()
{
    return {[](const std::string &name) { return name.empty() ? "the name of the file is empty" : std::string(); }, ""};
}

void declare(CLI::App &app, Options &options)
{
    app.allow_extras();
    app.set_help_flag("-h,--help", "This page");
    app.set_version_flag("-V,--version", "bgpdt " BGPDT_VERSION "\n");
    app.get_option("--version")->description("The version");
    app.add_flag("--json", options.json, "Answer in JSON, refusals included; of lines what is refused, a line each");
    app.add_flag("--native", options.settings.native, "Bytes are in this machine's order");
    app.add_flag("--record", options.record, "HEX is a display record of any length, in this machine's order");
    app.add_option("--template", options.line_template,
                   "ATTRIDBITMAP: what begins every line, as '" + std::string(default_template) + "'")
        ->type_name("TEXT");
    app.add_option("--value", options.values, "ATTRIDBITMAP: fills the template's next placeholder; any number of them")
        ->type_name("KIND=VALUE")
        ->allow_extra_args(false);
    add_number(app, "--mode", options.settings.mode, std::uint8_t{255},
               "Conversion mode; without it the one in which text goes both ways");
    app.add_option("--from", options.from, "Format of the input: text, hex, json or binary")->type_name("FORMAT");
    app.add_option("--to", options.to, "Format of the output: hex, text, json, csv, tsv or binary; for octets wire")
        ->type_name("FORMAT");
    app.add_option("--with", options.with, "--to wire: what the value has no room for; any number of them")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    app.add_option("-o,--output", options.output,
                   "Where the output goes, when all of it is there; without it standard output")
        ->type_name("FILE")
        ->check(named_file());
    app.add_option("--in", options.in, "Reads the lines of the file; any number of them")
        ->type_name("FILE")
        ->check(named_file())
        ->allow_extra_args(false);
    add_number(app, "-j,--jobs", options.threads, 256U, "Works in N threads; 0 is one for each processor");
    app.add_option("--rejects", options.rejects, "Where refused lines go, as they are")
        ->type_name("FILE")
        ->check(named_file());
    add_number(app, "--show", options.show, largest_number, "Tells of the first N refused lines; without it of 10");
    app.add_flag("--quiet", options.quiet, "Tells of no refused line");
    app.add_flag("--summary", options.summary, "Says at the end how many lines there were and how many were refused");
    add_value(app, "--memory", options.memory, read_size,
              "1 to " + std::to_string(largest_number) + " bytes, or their K, M, G, T, P or E, as in 64M",
              "Sorts in that much memory, as in 64M, the rest in temporary files")
        ->type_name("SIZE");
    app.add_flag("-u,--unique", options.unique, "Of equal values the first alone");
    app.add_flag("-r,--reverse", options.reverse, "The greatest value first");
    app.add_flag("--canonical", options.canonical, "Refuses what the type accepts, but prints in another way");
    app.add_option("--field", options.fields, "A field of the values, or text, hex or kind; any number of them")
        ->type_name("NAME")
        ->allow_extra_args(false);
    add_value(app, "--as-format", options.settings.notation, read_notation, "plain, dotted or as-written",
              "AS numbers above 65535 as plain numbers, dotted, or as-written")
        ->type_name("FORMAT");
    app.add_option("--color", options.color, "Colours: auto (on a terminal, unless NO_COLOR is set), always or never")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}).description(""));
    app.add_flag("--descriptions", options.descriptions, "What the words mean, behind a tab each");
    app.add_flag("--html", options.html, "A page for a browser");
    app.add_flag("--dialects", options.dialects, "How other BGP speakers read the text, or one like it");
    app.add_option("--as", options.language,
                   "Language: notation, abnf, regex, python, pcre, ecmascript, yang or svg; without it notation")
        ->type_name("LANGUAGE");
    app.add_option("--names", options.settings.names, "Names behind the indexes: lines of INDEX NAME")
        ->type_name("FILE")
        ->check(named_file());
    app.add_option("--plugin", options.settings.plugin,
                   "The plug-in; else $BGPDT_PLUGIN, else beside bgpdt, in ../lib or ../src")
        ->type_name("FILE")
        ->check(named_file());
}

/// Takes the arguments out of what is no known option. A single '-' may begin a text; a long option must be known.
std::vector<std::string> arguments_of(const CLI::App &app)
{
    std::vector<std::string> arguments;
    bool all = false;
    for (const std::string &word : app.remaining()) {
        if (!all && word == "--") {
            all = true;
        } else if (!all && word.starts_with("--")) {
            std::vector<std::string> names;
            for (const CLI::Option *option : app.get_options())
                names.push_back(option->get_name());
            throw UsageError("there is no option " + word + did_you_mean(word, names) +
                             "; a text that begins with '--' stands behind '--'. 'bgpdt --help' lists the options");
        } else {
            arguments.push_back(word);
        }
    }
    return arguments;
}

} // namespace

std::vector<OptionName> option_names()
{
    Options options;
    CLI::App app;
    declare(app, options);
    std::vector<OptionName> names;
    for (const CLI::Option *option : app.get_options())
        names.push_back({option->get_name(), option->get_type_name(), option->get_description()});
    return names;
}

Options read_options(int argc, const char *const *argv, std::span<const Command> commands)
{
    Options options;
    CLI::App app;
    declare(app, options);
    try {
        app.parse(argc, argv);
        options.arguments = arguments_of(app);
    } catch (const CLI::CallForHelp &) {
        const std::vector<std::string> words = app.remaining();
        options.page = words.empty() ? help_page(app, commands) : help_page(app, find_command(commands, words.front()));
        return options;
    } catch (const CLI::CallForVersion &) {
        options.page = app.version();
        return options;
    } catch (const CLI::ParseError &error) {
        throw UsageError(std::string(error.what()) + ". 'bgpdt --help' lists the options");
    }
    if (options.arguments.empty())
        throw UsageError("a command is missing; 'bgpdt --help' lists them");
    if (options.arguments.front() == "help") {
        options.page = options.arguments.size() < 2 ? help_page(app, commands)
                                                    : help_page(app, find_command(commands, options.arguments[1]));
        return options;
    }
    for (const CLI::Option *option : app.get_options())
        if (option->count() != 0)
            options.given.push_back(option->get_name());
    options.command = options.arguments.front();
    options.arguments.erase(options.arguments.begin());
    return options;
}

bool asks_for_json(int argc, const char *const *argv)
{
    const std::span words(argv, static_cast<std::size_t>(argc));
    const auto end = std::ranges::find(words, std::string_view("--"));
    return std::find(words.begin(), end, std::string_view("--json")) != end;
}

} // namespace bgpdt::tool
