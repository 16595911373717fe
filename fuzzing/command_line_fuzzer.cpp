// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fuzzes the tool's command lines. An input is text: a word a line, an empty line, then standard input. Files are neither
/// read nor written, and no script runs.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "input.hpp"
#include "property.hpp"
#include "tool_run.hpp"

namespace bgpdt::fuzzing {

namespace {

struct CommandLine {
    std::vector<std::string> words;
    std::string input;
};

CommandLine taken_apart(std::string_view text)
{
    CommandLine line;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view word = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (word.empty())
            break;
        line.words.emplace_back(word.substr(0, word.find('\0')));
    }
    line.input = text;
    return line;
}

/// What would leave this process and the empty folder.
bool is_apart(const std::string &word)
{
    const bool writes = word.starts_with("--o") || word.starts_with("--rej") ||
                        (word.starts_with('-') && !word.starts_with("--") && word.find('o') != std::string::npos);
    const bool names_file = word.starts_with('/') || word.find("..") != std::string::npos ||
                            (word.starts_with('-') && word.find('/') != std::string::npos);
    const bool many_threads = word.starts_with("-j") || word.starts_with("--job"); // each a stack
    return writes || names_file || many_threads || word == "lua";
}

bool has(const CommandLine &line, std::string_view word)
{
    return std::ranges::find(line.words, word) != line.words.end();
}

const CommandLine *now = nullptr;

void describe_line()
{
    if (now == nullptr)
        return;
    for (const std::string &word : now->words)
        std::fprintf(stderr, "'%s' ", word.c_str());
    std::fprintf(stderr, "\n");
}

bool is_json_object(std::string_view text) { return nlohmann::json::parse(text, nullptr, false).is_object(); }

/// The tool answers, or says why not, in the form that is asked for.
void require_answer(const CommandLine &line, const Outcome &outcome)
{
    require(outcome.status >= 0 && outcome.status <= 2, "the exit status is 0, 1 or 2");
    const bool json = has(line, "--json") && !has(line, "--");
    require(outcome.status == 0 || !outcome.errors.empty() || has(line, "--quiet") || json,
            "what is not done is told, unless --quiet asks not to");
    require(outcome.errors.empty() || outcome.errors.ends_with('\n'), "errors are whole lines");
    if (json && outcome.status == 2 && !outcome.output.empty())
        require(is_json_object(outcome.output) || is_json_object(outcome.output.substr(outcome.output.rfind('{'))),
                "what is told in JSON is an object");
}

void run(std::string_view text)
{
    const CommandLine line = taken_apart(text);
    if (std::ranges::any_of(line.words, is_apart))
        return;
    now = &line;
    const Outcome first = run_tool(line.words, line.input);
    require_answer(line, first);
    require_no_memory_taken(
        [&] { require(run_tool(line.words, line.input) == first, "a second run answers the same"); });
    now = nullptr;
}

} // namespace

} // namespace bgpdt::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace bgpdt::fuzzing;
    static const bool ready = [] {
        prepare_tool();
        describe_with(describe_line);
        return true;
    }();
    if (ready && size <= most_bytes)
        run({reinterpret_cast<const char *>(data), size});
    return 0;
}
