// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Inputs without a floor: the vectors, texts that are refused, and texts of growing length.
#include <chrono>
#include <cstdio>
#include <map>

#include "benches.hpp"
#include "support/vector_file.hpp"

namespace bgpdt::bench {
namespace {

using Clock = std::chrono::steady_clock;

void parse_once(SYSDT_FormatIn *callback, SYSDT_Context &context, std::string &text)
{
    u16 kind;
    u16 length;
    void *data = nullptr;
    callback(&context, 0, static_cast<u32>(text.size() + 1), text.data(), &kind, &length, &data);
    SYS_DataTypeFree(data);
}

/// A case over copies of the texts, since trimming cuts them.
Case parse_case(const std::string &name, SYSDT_FormatIn *callback, const std::vector<std::pair<u8, std::string>> &texts)
{
    struct State {
        std::vector<std::pair<u8, std::string>> given;
        std::vector<std::pair<u8, std::string>> copies;
    };
    const auto state = std::make_shared<State>(State{texts, {}});
    return {name + "/parse/ours/input",
            [state, callback] {
                SYSDT_Context context = context_of(0);
                for (auto &[mode, text] : state->copies) {
                    context.mode = mode;
                    parse_once(callback, context, text);
                }
            },
            texts.size(), [state] { state->copies = state->given; }};
}

/// Something like a key of each kind, with a mistake in it.
std::string broken_key(Random &random)
{
    switch (random.below(8)) {
    case 0: return random.ipv4() + '.' + random.decimal(0, 255);
    case 1: return random.ipv6() + '/' + random.decimal(0, 128);
    case 2: return random.esi() + "::" + random.decimal();
    case 3: return random.decimal() + ":48:" + random.mac() + "-" + random.hex(4) + ":32:" + random.ipv4();
    case 4: return random.as4() + ':' + random.decimal(65536, 99999);
    case 5: return '[' + random.decimal() + "][" + random.decimal() + "][" + random.ipv4();
    case 6: return "edge-" + random.decimal() + ".example.net";
    default: return random.ipv4() + ':' + random.ipv4() + ':' + random.ipv4() + ":x";
    }
}

// ------------------------------------------------------------------------------------------------ growth

/// The fastest of several tries, in ns.
double time_of(SYSDT_FormatIn *callback, u8 mode, const std::string &text)
{
    SYSDT_Context context = context_of(mode);
    double best = 1e9;
    for (int attempt = 0; attempt < 20; ++attempt) {
        std::vector<std::string> copies(50, text);
        const auto start = Clock::now();
        for (std::string &copy : copies)
            parse_once(callback, context, copy);
        const std::chrono::duration<double, std::nano> elapsed = Clock::now() - start;
        best = std::min(best, elapsed.count() / static_cast<double>(copies.size()));
    }
    return best;
}

void print_point(const char *series, const SYSDT_Record &type, u8 mode, const std::string &text)
{
    std::printf("%s\t%zu\t%.1f\n", series, text.size(), time_of(type.formatIn, mode, text));
}

/// The longest text that a type takes among those of the vectors; of one that dispatches, among its kinds' too.
std::size_t longest_text(const SYSDT_Record &type, const test::Vectors &vectors)
{
    std::size_t longest = 0;
    for (const test::Line &line : vectors.lines)
        if (line.verb == test::Verb::in &&
            ((!line.row && line.subject == type.name) || (line.reports && line.reports->kind == type.typeId)))
            longest = std::max(longest, line.text.size());
    return longest;
}

std::string repeated(const std::string &piece, std::size_t size)
{
    std::string text;
    while (text.size() < size)
        text += piece;
    text.resize(size);
    return text;
}

/// The costliest of many texts of the longest length.
double slowest(const SYSDT_Record &type, u8 mode, std::size_t size)
{
    std::vector<std::string> texts;
    for (const char *piece : {"0",          "9",      "a",          "f",   "-",
                              ".",          ":",      "[",          "]",   "[]",
                              " 1",         "1 ",     "1.1 ",       "0:",  "1:1 ",
                              "1.",         "1-",     "::",         "1::", "[as]",
                              "no-export ", "[NODE]", "index",      "0d",  "255.255.255.255:",
                              "ffff:",      "ffff-",  "4294967295:"}) {
        texts.push_back(repeated(piece, size));
        texts.push_back(repeated(piece, size - 1) + "x");
    }
    const std::string nested(size / 2, '[');
    texts.push_back(nested + std::string(size - nested.size(), ']'));
    for (const char *head : {"[NODE]", "[LINK][BGP]", "[NODE][OSPFv2][IDENTIFIER0]"})
        for (const char *tail : {"[index1]", "[UNKNOWN", "[LOCAL", "[LOCAL[as]", "[LINK[if-address1.1.1.1]"})
            texts.push_back(repeated(head + repeated(tail, size), size));
    // Groups one in another, closed: each level is read again by the next.
    for (const char *open : {"[LOCAL", "[LINK", "[index", "["}) {
        const std::size_t levels = (size - 6) / (std::strlen(open) + 1);
        texts.push_back("[NODE]" + repeated(open, levels * std::strlen(open)) + std::string(levels, ']'));
    }
    double worst = 0;
    for (const std::string &text : texts)
        worst = std::max(worst, time_of(type.formatIn, mode, text));
    return worst;
}

test::Vectors all_vectors()
{
    test::Vectors vectors = test::read_vector_folder(BGPDT_SOURCE_VECTORS);
    if (!vectors.errors.empty())
        fail(vectors.errors.front());
    return vectors;
}

} // namespace

void add_refused_cases(Cases &cases, const host::Host &host, std::size_t size)
{
    Random random(seed_of("refused"));
    std::vector<std::pair<u8, std::string>> texts;
    while (texts.size() < size)
        texts.emplace_back(u8{1}, broken_key(random));
    const SYSDT_Record &type = *host.find("BOLPREFIX");
    for (const auto &[mode, text] : texts) {
        SYSDT_Context context = context_of(mode);
        std::string copy = text;
        u16 kind;
        u16 length;
        void *data = nullptr;
        if (type.formatIn(&context, 0, static_cast<u32>(copy.size() + 1), copy.data(), &kind, &length, &data) ==
            SYSDT_OK)
            fail("not refused: " + text);
    }
    cases.push_back(parse_case("BOLPREFIX refused", type.formatIn, texts));
}

void add_vector_cases(Cases &cases, const host::Host &host)
{
    const test::Vectors vectors = all_vectors();
    std::map<std::string, std::vector<std::pair<u8, std::string>>> texts;
    for (const test::Line &line : vectors.lines)
        if (!line.row && (line.verb == test::Verb::in || line.verb == test::Verb::bad))
            texts[line.subject].emplace_back(line.modes.front(), line.text);
    for (const auto &[name, given] : texts)
        if (const SYSDT_Record *const type = host.find(name); type->formatIn != nullptr)
            cases.push_back(parse_case("vectors " + name, type->formatIn, given));
}

void print_growth(const host::Host &host)
{
    const SYSDT_Record &as_list = *host.find("ASNUM_ENHANCE");
    for (std::size_t entries = 4; entries <= 256; entries += 12)
        print_point("AS list", as_list, 2, repeated("4200000001 ", entries * 11 - 1));
    const SYSDT_Record &communities = *host.find("CMNTY_ENHANCE");
    for (std::size_t entries = 1; entries <= 32; entries += 2)
        print_point("community list", communities, 2, repeated("64496:65535 ", entries * 12 - 1));
    const SYSDT_Record &bgpls = *host.find("BGPLSPREFIX");
    const std::string node =
        "[NODE][OSPFv2][IDENTIFIER0][LOCAL[as64496][bgp-ls-identifier192.0.2.1][ospf-area-id0.0.0.0]"
        "[igp-router-id192.0.2.1]]";
    for (std::size_t length = 0; node.size() + length + 9 <= 500; length += 24)
        print_point("BGP-LS node", bgpls, 2, node + "[UNKNOWN" + std::string(length, '7') + "]");
    const test::Vectors vectors = all_vectors();
    for (const SYSDT_Record *type : host.types())
        if (const std::size_t size = longest_text(*type, vectors); size != 0)
            std::printf("limit %s\t%zu\t%.1f\n", type->name, size,
                        slowest(*type, type->typeId == SYSDT_TYPE_EVNPREFIX ? 1 : 2, size));
}

} // namespace bgpdt::bench
