// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fuzzes the lines that the tool reads: text, hexadecimal, JSON. Whatever they say, the values go to every other format
/// and come back, and any number of threads reads the same. An input is a byte for the type, one for the format, the lines.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "input.hpp"
#include "pieces.hpp"
#include "property.hpp"
#include "tool_run.hpp"

namespace bgpdt::fuzzing {

namespace {

/// The first word of each line.
std::vector<std::string> first_words(const std::string &text)
{
    std::vector<std::string> words;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        words.push_back(line.substr(0, line.find(' ')));
    return words;
}

const std::vector<std::string> &types()
{
    static const std::vector<std::string> all = first_words(run_tool({"types"}, "").output);
    return all;
}

class Converted {
public:
    Converted(std::string type, const std::string &from) : type_(std::move(type)), from_(from) {}

    Outcome operator()(const std::string &lines, const std::string &to, const std::string &threads = "1") const
    {
        return run_tool({"convert", type_, "--from", from_, "--to", to, "-j", threads, "--quiet"}, lines);
    }

private:
    std::string type_;
    std::string from_;
};

std::multiset<std::string> lines_of(const std::string &text)
{
    std::multiset<std::string> all;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        all.insert(line);
    return all;
}

/// Sorted lines are the lines, and stay as they are when they are sorted again.
void require_sorted(const std::string &type, const std::string &hex)
{
    const std::vector<std::string> sort = {"sort", type, "--from", "hex"};
    const Outcome once = run_tool(sort, hex);
    require(once.status == 0 && lines_of(once.output) == lines_of(hex), "sorting loses no line and adds none");
    require(run_tool(sort, once.output) == once, "what is sorted stays as it is");
    const Outcome unique = run_tool({"sort", type, "--from", "hex", "--unique"}, hex);
    const Outcome adjacent = run_tool({"uniq", type, "--from", "hex"}, once.output);
    require(unique == adjacent, "each value once, however that is asked for");
}

void run(Pieces input)
{
    const std::string &type = types()[input.byte() % types().size()];
    constexpr const char *formats[] = {"text", "hex", "json"};
    const std::string from = formats[input.byte() % std::size(formats)];
    const std::string lines = input.rest();
    const Converted convert(type, from);
    const Outcome hex = convert(lines, "hex");
    require(hex.status == 2 ? from == "text" : hex.errors.empty(), "lines are taken or not, and told by the status");
    if (hex.status == 2)
        return;
    require(convert(lines, "hex", "3") == hex, "three threads convert as one");
    // Bytes are as long as values are; a string's hexadecimal may be shorter.
    const Outcome binary = convert(lines, "binary");
    const Converted back(type, "binary");
    const std::string values = back(binary.output, "hex").output;
    require(binary.status == hex.status && back(binary.output, "binary").output == binary.output,
            "values stay as they are");
    require(Converted(type, "hex")(hex.output, "binary").output == binary.output, "a value goes to digits and back");
    const Outcome json = convert(lines, "json");
    const Outcome read = Converted(type, "json")(json.output, "hex");
    require(json.status == hex.status && read.status == 0 && read.output == values, "a value goes to JSON and back");
    require_sorted(type, hex.output);
}

} // namespace

} // namespace bgpdt::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace bgpdt::fuzzing;
    static const bool ready = [] {
        prepare_tool();
        return true;
    }();
    if (ready && size <= most_bytes)
        run(Pieces({data, size}));
    return 0;
}
