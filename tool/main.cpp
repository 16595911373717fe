// SPDX-License-Identifier: Apache-2.0
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "answer.hpp"
#include "command_line.hpp"
#include "commands.hpp"
#include "errors.hpp"
#include "host/host.hpp"
#include "stream_files.hpp"
#include "toolkit/script_table.hpp"
#include "toolkit/session.hpp"
#include "toolkit/shown_text.hpp"
#include "toolkit/words.hpp"

namespace {

using namespace bgpdt::tool;
using namespace bgpdt::toolkit;
using nlohmann::ordered_json;

/// Writes, and makes sure that everything written so far has arrived.
void deliver(const std::string &text)
{
    // A reader that has gone is a write error like any other; but it ends a script that goes on writing.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!written || std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        throw UsageError(std::string("the output cannot be written: ") + std::strerror(errno));
}

Exit run(int argc, const char *const *argv)
{
    const Options options = read_options(argc, argv, commands());
    if (!options.page.empty()) {
        deliver(options.page);
        return exit_done;
    }
    const Command &command = find_command(commands(), options);
    Session session(options.settings);
    if (streams(command, options))
        return command.stream(session, options);
    const Answer answer = command.run(session, options);
    deliver(options.json && !answer.json.is_null() ? json_text(answer.json) + "\n" : answer.text);
    return exit_done;
}

/// No member for what there is not.
void add(ordered_json &object, const char *member, const std::string &text)
{
    if (!text.empty())
        object[member] = text;
}

const char *word_for(Change change)
{
    constexpr const char *words[] = {"spelling", "example", "value"};
    return words[static_cast<std::size_t>(change)];
}

/// What else is known of a refusal.
ordered_json details(const Refusal &refusal)
{
    ordered_json members = ordered_json::object();
    if (refusal.status() != 0)
        members["status"] = bgpdt::host::status_name(refusal.status());
    if (refusal.diagnosis()) {
        const Diagnosis &diagnosis = *refusal.diagnosis();
        members["at"] = diagnosis.at;
        members["length"] = diagnosis.length;
        members["reason"] = diagnosis.reason;
        if (!diagnosis.repair.empty()) {
            members["repair"] = diagnosis.repair;
            members["change"] = word_for(diagnosis.change);
        }
        for (const TypeName &type : diagnosis.types)
            members["types"].push_back(type.name);
    }
    for (const KindForm &form : refusal.forms()) {
        ordered_json &entry = members["forms"].emplace_back(ordered_json::object());
        add(entry, "kind", form.kind);
        add(entry, "form", form.form);
        add(entry, "example", form.example);
    }
    return members;
}

const char *words_for(Hint hint)
{
    switch (hint) {
    case Hint::types: return "; 'bgpdt types' lists the types";
    case Hint::plugin: return "--plugin FILE or ";
    case Hint::bytes: return "; the other commands take its values in hexadecimal";
    case Hint::display_record: return " (--record)";
    default: return "";
    }
}

/// What went wrong; texts of any content stand in it.
std::string sentence(const std::exception &error)
{
    if (const auto *known = dynamic_cast<const Error *>(&error)) {
        const std::string words = std::string(known->front()).append(words_for(known->hint())).append(known->rest());
        const bool of_script = dynamic_cast<const ScriptError *>(&error) != nullptr;
        return of_script ? shown_lines(words) : shown(words);
    }
    return shown(error.what());
}

std::string repair_line(const Diagnosis &diagnosis)
{
    constexpr const char *fronts[] = {
        "  would be accepted: ", "  would be accepted, for example: ", "  would be accepted, but is another value: "};
    return fronts[static_cast<std::size_t>(diagnosis.change)] + shown(diagnosis.repair) + "\n";
}

/// The place of what is wrong, what is taken instead, and the forms.
std::string more_lines(const Refusal &refusal)
{
    std::string lines;
    if (refusal.diagnosis()) {
        const Diagnosis &diagnosis = *refusal.diagnosis();
        lines += underlined(diagnosis.text, diagnosis.at, diagnosis.length);
        lines += diagnosis.repair.empty() ? "" : repair_line(diagnosis);
    }
    for (const KindForm &form : refusal.forms()) {
        const bool both = !form.form.empty() && !form.example.empty();
        lines += padded("  " + form.kind, form.kind.empty() ? 0 : 16) + form.form + (both ? ", such as " : "") +
                 form.example + "\n";
    }
    return lines;
}

/// Tells what went wrong, in JSON on standard output or as a sentence on standard error.
int fail(bool json, const std::exception &error, Exit exit)
{
    const auto *refusal = dynamic_cast<const Refusal *>(&error);
    try {
        if (json) {
            ordered_json answer = {{"error", sentence(error)}, {"exit", exit}};
            answer.update(refusal != nullptr ? details(*refusal) : ordered_json::object());
            deliver(json_text(answer) + "\n");
            return exit;
        }
    } catch (const UsageError &unwritten) {
        std::cerr << "bgpdt: " << unwritten.what() << '\n';
        exit = exit_usage;
    }
    std::cerr << "bgpdt: " << sentence(error) << '\n' << (refusal != nullptr ? more_lines(*refusal) : "");
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

} // namespace

int main(int argc, char **argv)
{
    guard_standard_descriptors();
    try {
        return exit_status(argc, argv);
    } catch (...) { // memory is out even for the sentence
        return exit_usage;
    }
}
