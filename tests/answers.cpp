// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Prints what the types answer to every vector line and to mutations of its text and values, a line each, in the
/// target's byte order: the same on every processor. `bgpdt_answers [MUTATIONS]`, so many of each line.
#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "bgp_datatype/fields.hpp"
#include "support/asking.hpp"
#include "support/report.hpp"
#include "support/setting.hpp"

namespace bgpdt::test {

namespace {

constexpr unsigned mutations_by_default = 14;

/// Numbers that are the same everywhere: no distribution of the library's is.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : engine_(seed) {}
    std::size_t below(std::size_t end) { return engine_() % end; }
    template <class Range>
    auto one_of(const Range &range)
    {
        return range[below(std::size(range))];
    }

private:
    std::mt19937 engine_;
};

void mutate(std::string &text, Dice &dice)
{
    static constexpr std::string_view characters = "0123456789afxgAFZ.:-/[]*<>,; \t+%\"\x80\xff";
    const std::size_t at = dice.below(text.size() + 1);
    const std::size_t length = std::min(1 + dice.below(4), text.size() - at);
    switch (dice.below(4)) {
    case 0: text.insert(at, 1, dice.one_of(characters)); return;
    case 1: text.erase(at, length); return;
    case 2: text.insert(at, text.substr(at, length)); return;
    default: text.replace(at, std::min<std::size_t>(length, 1), 1, dice.one_of(characters)); return;
    }
}

void mutate(std::span<std::uint8_t> bytes, Dice &dice)
{
    static constexpr std::uint8_t edges[] = {0, 1, 2, 0x7F, 0x80, 0xFE, 0xFF};
    std::uint8_t &byte = bytes[dice.below(bytes.size())];
    switch (dice.below(3)) {
    case 0: byte = dice.one_of(edges); return;
    case 1: byte = static_cast<std::uint8_t>(byte + 1); return;
    default: byte = static_cast<std::uint8_t>(dice.below(256)); return;
    }
}

bool takes_text(const Line &line) { return line.verb == Verb::in || line.verb == Verb::bad || line.verb == Verb::fn; }

/// Whether the numbers of the value, and of its mutations, are known to be numbers on every processor.
bool is_told(const Bytes &value, const Subject &subject)
{
    const bool whole = value.size() >= std::max<std::size_t>(subject.length, subject.script_size());
    return whole && (!subject.sub_kind || selecting_word(value, std::endian::big) == *subject.sub_kind);
}

bool is_mutable(const Line &line, const Subject &subject)
{
    switch (line.verb) {
    case Verb::tables:
    case Verb::get:
    case Verb::noget:
    case Verb::help:
    case Verb::nohelp: return false;
    // It borrows another type's order, with its layout.
    case Verb::cmp:
        return is_told(*line.result, subject) && is_told(line.bytes, subject) && line.subject != "L2VPNPREFIX";
    default: return takes_text(line) || is_told(line.bytes, subject);
    }
}

/// The line with one to three changes of what its call is given; a row's values stay the row's.
Line mutation_of(const Line &line, const Subject &subject, Dice &dice)
{
    Line mutation = line;
    for (std::size_t left = 1 + dice.below(3); left > 0; --left) {
        if (takes_text(line)) {
            mutate(mutation.text, dice);
        } else {
            Bytes &value = line.verb == Verb::cmp && dice.below(2) == 0 ? *mutation.result : mutation.bytes;
            mutate(std::span(value).subspan(subject.sub_kind ? sizeof *subject.sub_kind : 0), dice);
        }
    }
    return mutation;
}

class Answers {
public:
    Answers(host::Host &host, unsigned mutations) : host_(host), asking_(host), mutations_(mutations) {}

    void print(const Vectors &vectors)
    {
        for (const Line &line : vectors.lines) {
            const Subject subject = subject_of(host_, line);
            print(line, subject);
            Dice dice(number_++);
            for (unsigned i = 0; i < mutations_ && is_mutable(line, subject); ++i)
                print(mutation_of(line, subject, dice), subject);
        }
    }

private:
    void print(const Line &line, const Subject &subject)
    {
        const auto print_mode = [&](std::uint8_t mode) {
            const std::string asked = line.text.empty() ? show(line.bytes) : show(line.text);
            Answer answer = asking_.ask(line, subject, mode);
            if (line.verb == Verb::fn && answer.status != 0)
                answer.bytes.clear(); // what was read before the failure: nothing tells its numbers
            std::printf("%s %s@%u %s -> %s\n", line.subject.c_str(), line.verb_name.c_str(), unsigned{mode},
                        asked.c_str(), to_text(answer).c_str());
        };
        if (line.modes.empty())
            print_mode(0);
        std::ranges::for_each(line.modes, print_mode);
    }

    host::Host &host_;
    const Asking asking_;
    const unsigned mutations_;
    std::uint32_t number_ = 0; ///< of the line: the seed of its mutations
};

void run(std::span<char *> arguments)
{
    host::Host host(plugin_path());
    const Vectors vectors = read_vector_folder(vectors_folder());
    if (!vectors.errors.empty() || vectors.lines.empty())
        throw std::runtime_error(vectors.errors.empty() ? vectors_folder() + " holds no vectors" : vectors.errors[0]);
    const unsigned long mutations =
        arguments.size() > 1 ? std::strtoul(arguments[1], nullptr, 10) : mutations_by_default;
    Answers(host, static_cast<unsigned>(mutations)).print(vectors);
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        throw std::runtime_error("the answers could not be written");
}

} // namespace

} // namespace bgpdt::test

int main(int argc, char **argv)
{
    try {
        bgpdt::test::run({argv, static_cast<std::size_t>(argc)});
        return EXIT_SUCCESS;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "bgpdt_answers: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
