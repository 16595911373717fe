// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "commands.hpp"

#include <span>
#include <string>
#include <vector>

#include "answer.hpp"
#include "completion.hpp"
#include "grammar.hpp"
#include "import.hpp"
#include "script.hpp"
#include "stream.hpp"
#include "toolkit/json_answers.hpp"
#include "type_commands.hpp"
#include "value_commands.hpp"
#include "wire_commands.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

Answer lua(Session &session, const Options &options)
{
    run_script(session, options.arguments[0], std::span(options.arguments).subspan(1));
    return {};
}

Answer complete(Session &session, const Options &options)
{
    std::string lines;
    std::vector<std::string> words;
    for (const auto &[word, about] : completions(session, commands(), options.arguments)) {
        lines.append(word).append(options.descriptions && !about.empty() ? "\t" + about : "").append("\n");
        words.push_back(word);
    }
    return {lines, candidates_json(words)};
}

constexpr Command table_of_commands[] = {
    {"types", "", "The types: name, id, size in bytes, what they are", "", "bgpdt types", types},
    {"describe", "TYPE [KIND]", "What the type, or a kind of its values, is and takes", "", "bgpdt describe VRFRD",
     describe},
    {"grammar", "TYPE [KIND]", "The grammar of the texts, as rules, expression, schema or picture", "--as",
     "bgpdt grammar VRFRD --as abnf", grammar_answer},
    {"parse", "TYPE TEXT", "Text to bytes", "--mode --native", "bgpdt parse CMNTY_ENHANCE 'no-export 64496:1'", parse},
    {"print", "TYPE HEX", "Bytes to text; '-' reads lines of them",
     "--mode --native --as-format --record --template --value --rejects --show --quiet --summary",
     "bgpdt print COMMUNITY 0xffffff0100000000", print, print_lines},
    {"check", "TYPE [VALUE]", "Whether the value, or the lines of the input, are values of the type",
     "--native --mode --canonical --from --in --jobs --rejects --show --quiet --summary", "bgpdt check VRFRD 64496:100",
     check, check_lines},
    {"canon", "TYPE [VALUE]", "The value, or the lines of the input, as the type prints them",
     "--native --mode --as-format --from --in --output --jobs --rejects --show --quiet --summary",
     "bgpdt canon ASNUM 1.0", canon, canon_lines},
    {"convert", "TYPE [FILE...]", "Many values from one format to another, a line each",
     "--native --mode --as-format --field --from --to --output --jobs --rejects --show --quiet --summary",
     "bgpdt convert VRFRD --to json rds.txt", nullptr, convert_lines},
    {"sort", "TYPE [FILE...]", "Lines in the order of their values",
     "--native --mode --from --output --rejects --show --quiet --summary --memory --unique --reverse",
     "bgpdt sort VRFRD rds.txt", nullptr, sort_lines},
    {"uniq", "TYPE [FILE...]", "Of adjacent lines with the same value the first",
     "--native --mode --from --output --rejects --show --quiet --summary", "bgpdt uniq VRFRD rds.txt", nullptr,
     uniq_lines},
    {"compare", "TYPE VALUE VALUE", "The order of two values on this machine: -1, 0 or 1", "--mode --native",
     "bgpdt compare ASNUM 64496 0x0000fbf100000000", compare},
    {"diff", "TYPE VALUE VALUE", "The fields in which two values differ", "--mode --native",
     "bgpdt diff VRFRD 64496:100 64496:101", diff},
    {"swap", "TYPE HEX", "The bytes with their numbers in the other byte order", "--native",
     "bgpdt swap ASNUM 0x0000fbf000000000", swap_bytes},
    {"table", "TYPE VALUE", "The value as scripts see it", "--mode --native", "bgpdt table VRFRD 64496:100", table},
    {"explain", "TYPE VALUE", "The value's bytes, and what each field of them is",
     "--mode --native --as-format --color --html --dialects", "bgpdt explain VRFRD 64496:100", explain},
    {"wire", "WHAT [HEX]", "The octets that BGP sends to values, or with --to wire back; '-' reads lines of them",
     "--native --as-format --from --to --with --in --output --rejects --show --quiet --summary",
     "bgpdt wire EVPN 03110001c000020100070000006420c0000201", wire_values, wire_lines},
    {"import", "[FILE...]", "The values in a capture, as tshark -T json -x tells it",
     "--native --as-format --from --to --output --show --quiet --summary",
     "tshark -r bgp.pcap -Y bgp -T json -x | bgpdt import", nullptr, import_packets},
    {"lua", "FILE [ARG...]", "Runs a Lua script with the module 'bgp'", "--mode", "bgpdt lua script.lua 64496", lua},
    {"help", "[COMMAND]", "What there is, or what the command takes", "", "bgpdt help sort", nullptr},
    {"complete", "[WORD...]", "What the last word of a command line may become; ':file' stands for files",
     "--descriptions", "bgpdt complete -- describe BOLPREFIX NG", complete},
};

} // namespace

std::span<const Command> commands() { return table_of_commands; }

} // namespace bgpdt::tool
