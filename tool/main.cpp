// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "answer.hpp"
#include "command_line.hpp"
#include "commands.hpp"
#include "descriptor.hpp"
#include "errors.hpp"
#include "refusals.hpp"
#include "stream_files.hpp"
#include "toolkit/json_answers.hpp"
#include "toolkit/near_names.hpp"
#include "toolkit/other_types.hpp"
#include "toolkit/session.hpp"
#include "toolkit/shown_text.hpp"
#include "toolkit/type_aliases.hpp"

namespace {

using namespace bgpdt::tool;
using namespace bgpdt::toolkit;

/// Writes, and makes sure that everything written so far has arrived.
void deliver(const std::string &text)
{
    // A reader that has gone is a write error like any other; but it ends a script that goes on writing.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    // Behind what a script has printed, and at once: who reads the first line alone gets the rest, too.
    const bool written = std::fflush(stdout) == 0 && std::ferror(stdout) == 0 && write_all(STDOUT_FILENO, text);
    if (!written || !has_arrived(STDOUT_FILENO))
        throw UsageError(std::string("the output cannot be written: ") + std::strerror(errno));
}

/// A type's own name comes before what others are called.
std::string type_meant(Session &session, const std::string &word)
{
    const auto has_name = [&word](const SYSDT_Record *type) { return lower(name_of(*type)) == lower(word); };
    if (std::ranges::any_of(session.host().types(), has_name))
        return word;
    const std::string type = type_of_alias(word);
    const std::string taken_by = type.empty() ? types_sentence(types_that_take(session, word)) : "";
    if (!taken_by.empty())
        throw UsageError("a type must stand in front of " + lua_quoted(word) + ": " + taken_by);
    return type.empty() ? word : type;
}

Exit run(int argc, const char *const *argv)
{
    Options options = read_options(argc, argv, commands());
    if (!options.page.empty()) {
        deliver(options.page);
        return exit_done;
    }
    const Command &command = find_command(commands(), options);
    Session session(options.settings);
    if (command.arguments.starts_with("TYPE"))
        options.arguments[0] = type_meant(session, options.arguments[0]);
    if (streams(command, options))
        return command.stream(session, options);
    const Answer answer = command.run(session, options);
    if (options.json && !answer.json.empty()) {
        JsonObject json = answer.json;
        add_notes(json, answer.notes);
        deliver(json.text() + "\n");
        return exit_done;
    }
    deliver(answer.text);
    for (const std::string &note : answer.notes)
        std::cerr << "bgpdt: " << shown(note) << '\n';
    return exit_done;
}

/// Tells what went wrong, in JSON on standard output or as a sentence on standard error.
int fail(bool json, const std::exception &error, Exit exit)
{
    const auto *refusal = dynamic_cast<const Refusal *>(&error);
    try {
        if (json) {
            deliver(refusal_json(sentence(error), exit, error).text() + "\n");
            return exit;
        }
    } catch (const UsageError &unwritten) {
        std::cerr << "bgpdt: " << unwritten.what() << '\n';
        exit = exit_usage;
    }
    std::cerr << "bgpdt: " << sentence(error) << '\n';
    if (refusal != nullptr)
        std::cerr << lines_below(*refusal) << form_lines(*refusal);
    return exit;
}

int exit_status(int argc, const char *const *argv)
{
    const bool json = asks_for_json(argc, argv);
    try {
        return run(argc, argv);
    } catch (const Refusal &refusal) {
        return fail(json, refusal, exit_refused);
    } catch (const std::exception &error) {
        return fail(json, error, exit_usage);
    }
}

/// CLI11 asks for memory where nothing may be thrown, too.
[[noreturn]] void end_without_memory() noexcept
{
    try {
        if (const std::exception_ptr thrown = std::current_exception())
            std::rethrow_exception(thrown);
    } catch (const std::bad_alloc &) {
        write_all(STDERR_FILENO, "bgpdt: not enough memory\n");
        _exit(exit_usage);
    } catch (...) { // NOLINT(bugprone-empty-catch): a mistake of the program's
    }
    std::abort();
}

} // namespace

int main(int argc, char **argv)
{
    std::set_terminate(end_without_memory);
    guard_standard_descriptors();
    try {
        return exit_status(argc, argv);
    } catch (...) { // memory is out even for the sentence
        return exit_usage;
    }
}
