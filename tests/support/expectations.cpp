// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "expectations.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "bgp_datatype/values.h"
#include "setting.hpp"
#include "words.hpp"

namespace bgpdt::test {

namespace {

template <class Value>
struct Named {
    std::string_view name;
    Value value;
};

constexpr Named<std::string_view> screens_in[] = {
    {"strict", "fppfufp"}, {"quoted", "fqpfufp"}, {"open", "ppppupp"}, {"narrow", "fppfuff"}, {"none", ""}};
constexpr Named<std::string_view> screens_out[] = {
    {"with_copy", "fttcuft"}, {"bare", "fttbuft"}, {"text_only", "fttfuft"}, {"open", "ttttutt"}};

constexpr Named<Trait> traits[] = {
    {"null_without_memory", null_without_memory},
    {"clears_first", clears_first},
    {"clears_late", clears_late},
    {"apart_in_mode_2", apart_in_mode_2},
    {"whole_value", whole_value},
    {"always_takes", always_takes},
    {"dispatches", dispatches},
    {"help_only_mode_1", help_only_mode_1},
    {"help_swallows", help_swallows},
    {"help_asks_symbol", help_asks_symbol},
    {"compare_tests_null", compare_tests_null},
    {"endian_tests_null", endian_tests_null},
    {"check_takes_null", check_takes_null},
    {"name_optional", name_optional},
    {"set_any_length", set_any_length},
    {"short_set_invalid", short_set_invalid},
    {"short_get_invalid", short_get_invalid},
    {"get_leaves_none", get_leaves_none},
    {"get_pushed", get_pushed},
    {"any_sub_kind", any_sub_kind},
    {"inert_in", inert_in},
};

struct Comparing {
    Reads reads;
    bool orders_bytes;
};
constexpr Named<Comparing> comparings[] = {{"bytes", {Reads::bytes, true}},
                                           {"at_most", {Reads::at_most, false}},
                                           {"whole", {Reads::whole, false}},
                                           {"host", {Reads::nothing, false}},
                                           {"host_bytes", {Reads::nothing, true}}};

constexpr Named<Writing> writings[] = {{"decimal", Writing::decimal},
                                       {"hexadecimal", Writing::hexadecimal},
                                       {"ipv6", Writing::ipv6},
                                       {"ipv6_and_number", Writing::ipv6_and_number},
                                       {"octets_or_number", Writing::octets_or_number},
                                       {"evpn", Writing::evpn},
                                       {"sections", Writing::sections},
                                       {"last_section", Writing::last_section},
                                       {"groups", Writing::groups}};

template <class Value, std::size_t Count>
const Value *find(const Named<Value> (&rows)[Count], std::string_view name)
{
    const auto *found = std::ranges::find(rows, name, &Named<Value>::name);
    return found == std::end(rows) ? nullptr : &found->value;
}

template <class Value, std::size_t Count>
Value named(const Named<Value> (&rows)[Count], std::string_view name)
{
    if (const Value *value = find(rows, name); value != nullptr)
        return *value;
    throw WordError("unknown word '" + std::string(name) + "'");
}

std::uint16_t number(std::string_view digits)
{
    std::uint16_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc{} || end != digits.data() + digits.size())
        throw WordError("no number: '" + std::string(digits) + "'");
    return number;
}

/// What all heads of the vectors tell.
class Contracts {
public:
    explicit Contracts(const std::filesystem::path &folder)
    {
        std::vector<std::filesystem::path> paths;
        for (const auto &entry : std::filesystem::recursive_directory_iterator(folder))
            if (entry.path().extension() == ".vec")
                paths.push_back(entry.path());
        std::ranges::sort(paths);
        for (const auto &path : paths)
            read(path);
    }

    const Expectation *find(std::string_view name) const
    {
        const auto found = rows_.find(name);
        return found == rows_.end() ? nullptr : &found->second;
    }
    std::span<const PrintFailure> failures() const { return failures_; }
    std::span<const Statement> statements(std::string_view verb) const { return statements_.at(std::string(verb)); }

private:
    void read(const std::filesystem::path &path);
    void statement(const std::string &text);
    void contract(std::istream &words);
    void word(Expectation &row, std::string_view word);
    void set(Expectation &row, std::string_view key, std::string_view value);
    void fails(std::istream &words);
    void do_as(std::string_view other);
    /// A text that outlives the reading.
    std::string_view kept(std::string_view text) { return texts_.emplace_back(text); }

    std::string_view subject_;
    std::deque<std::string> texts_;
    std::map<std::string_view, Expectation, std::less<>> rows_;
    std::vector<PrintFailure> failures_;
    std::map<std::string, std::vector<Statement>> statements_{{"irregular", {}}, {"breaks", {}}};
};

void Contracts::read(const std::filesystem::path &path)
{
    std::ifstream stream(path);
    std::string statement_text;
    int number = 0;
    for (std::string line; std::getline(stream, line);) {
        ++number;
        const bool goes_on = line.ends_with('\\');
        statement_text += goes_on ? line.substr(0, line.size() - 1) : line;
        if (goes_on)
            continue;
        try {
            statement(statement_text);
        } catch (const WordError &error) {
            throw std::runtime_error(path.string() + ":" + std::to_string(number) + ": " + error.what());
        }
        statement_text.clear();
    }
}

void Contracts::statement(const std::string &text)
{
    std::istringstream words(text);
    std::string verb;
    words >> verb;
    if (verb == "type" || verb == "row") {
        std::string name;
        words >> name;
        subject_ = kept(name);
    } else if (verb == "contract") {
        contract(words);
    } else if (verb == "fails") {
        fails(words);
    } else if (const auto known = statements_.find(verb); known != statements_.end()) {
        std::string rest;
        std::getline(words >> std::ws, rest);
        const std::size_t last = rest.find_last_not_of(' ', rest.find(" #"));
        known->second.push_back({subject_, kept(std::string_view(rest).substr(0, last + 1))});
    }
}

void Contracts::contract(std::istream &words)
{
    const auto [row, is_new] = rows_.try_emplace(subject_);
    if (!is_new)
        throw WordError("the contract of " + std::string(subject_) + " is told twice");
    Expectation &expect = row->second;
    expect.in = screens_in[0].value;
    expect.out = screens_out[0].value;
    expect.unparsed = SYSDT_ERR_INVALID_VALUE;
    expect.buffer = 257;
    expect.memory = "hhh";
    expect.traits = bytewise;
    for (std::string next; words >> next;)
        word(expect, kept(next));
    if (expect.has(dispatches))
        expect.compare = Reads::by_rows;
    if (expect.compare == Reads::by_rows)
        expect.traits &= ~bytewise;
    expect.name = subject_;
}

void Contracts::word(Expectation &row, std::string_view word)
{
    const std::size_t equals = word.find('=');
    if (equals == word.npos)
        row.traits |= named(traits, word);
    else
        set(row, word.substr(0, equals), word.substr(equals + 1));
}

void Contracts::set(Expectation &row, std::string_view key, std::string_view value)
{
    if (key == "in") {
        const auto *screen = test::find(screens_in, value);
        row.in = screen == nullptr ? value : *screen;
    } else if (key == "out") {
        const auto *screen = test::find(screens_out, value);
        row.out = screen == nullptr ? value : *screen;
    } else if (key == "unparsed") {
        row.unparsed = Words(value).status();
    } else if (key == "block") {
        row.buffer = number(value);
    } else if (key == "memory") {
        row.memory = value;
    } else if (key == "script") {
        row.script_size = number(value);
    } else if (key == "check") {
        const std::size_t comma = std::min(value.find(','), value.size());
        row.checked = {number(value.substr(0, comma)),
                       comma == value.size() ? std::uint16_t{0} : number(value.substr(comma + 1))};
    } else if (key == "compare") {
        const Comparing comparing = named(comparings, value);
        row.compare = comparing.reads;
        row.traits = comparing.orders_bytes ? row.traits | bytewise : row.traits & ~bytewise;
    } else if (key == "numbers") {
        row.numbers = named(writings, value);
    } else if (key == "like" && rows_.contains(value)) {
        row = rows_.at(value);
        do_as(value);
    } else {
        throw WordError("unknown word '" + std::string(key) + "=" + std::string(value) + "'");
    }
}

void Contracts::fails(std::istream &words)
{
    std::string status;
    std::string fate;
    std::string why;
    words >> status >> fate >> std::ws;
    std::getline(words, why);
    const PrintFailure failure{{subject_}, Words(status).status(), fate_named(fate), kept(why)};
    const auto same = std::ranges::find_if(failures_, [&](const PrintFailure &row) {
        return row.status == failure.status && row.fate == failure.fate && row.why == failure.why;
    });
    if (same == failures_.end())
        failures_.push_back(failure);
    else
        same->names.push_back(subject_);
}

void Contracts::do_as(std::string_view other)
{
    for (auto &[verb, statements] : statements_) {
        const std::size_t count = statements.size();
        for (std::size_t i = 0; i < count; ++i)
            if (statements[i].name == other)
                statements.push_back({subject_, statements[i].words});
    }
    for (PrintFailure &row : failures_)
        if (row.concerns(other))
            row.names.push_back(subject_);
}

const Contracts &contracts()
{
    static const Contracts all{std::filesystem::path(vectors_folder())};
    return all;
}

#define BGPDT_NAME(kind, name, ...) name,
constexpr const char *prefix_rows[] = {SYSDT_BOL_ROWS(BGPDT_NAME, )};
#undef BGPDT_NAME
#define BGPDT_NAME(kind, name, ...) "RD:" name,
constexpr const char *distinguisher_rows[] = {SYSDT_BOLRD_ROWS(BGPDT_NAME, )};
#undef BGPDT_NAME

} // namespace

bool PrintFailure::concerns(std::string_view name) const { return std::ranges::find(names, name) != names.end(); }

std::string joined(std::span<const std::string_view> names)
{
    std::string all;
    for (const std::string_view name : names)
        all.append(all.empty() ? "" : " ").append(name);
    return all;
}

std::span<const PrintFailure> print_failures() { return contracts().failures(); }

std::span<const Statement> head_statements(std::string_view verb) { return contracts().statements(verb); }

const Expectation *expectation_of(std::string_view name) { return contracts().find(name); }

const Expectation *expectation_behind(const Expectation &dispatcher, std::uint32_t sub_kind)
{
    const std::span<const char *const> rows = dispatcher.name == "BOLRD"
                                                  ? std::span<const char *const>(distinguisher_rows)
                                                  : std::span<const char *const>(prefix_rows);
    return sub_kind < rows.size() ? expectation_of(rows[sub_kind]) : nullptr;
}

} // namespace bgpdt::test
