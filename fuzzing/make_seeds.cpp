// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// make_seeds FOLDER: writes the fuzzers' seeds and their dictionary, made of the tests' vectors and of the wire's samples.
///
/// The folder gets a folder for each fuzzer, a file a seed, and the dictionary records.dict. In a fuzzer's folder `kept` is
/// the corpus of fuzzing/corpus, a text a line.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>

#include "bgp_datatype/values.h"
#include "front_seeds.hpp"
#include "host/host.hpp"
#include "input.hpp"
#include "script.hpp"
#include "seeds.hpp"
#include "subjects.hpp"
#include "support/setting.hpp"
#include "support/words.hpp"

namespace bgpdt::fuzzing {

namespace {

using test::Bytes;
using test::Line;
using test::ScriptField;
using test::ScriptTable;
using test::ScriptValue;
using test::Subject;
using test::Verb;

// ------------------------------------------------------------------------------------------------ script values

/// Writes a script value as script.hpp tells; what is too long for it is cut.
class ScriptWriter {
public:
    explicit ScriptWriter(Bytes &out) : out_(out) {}

    void write(const ScriptValue &value) { std::visit(*this, value.value); }

    void operator()(std::monostate) { tag(Tag::nil); }
    void operator()(const test::Opaque &) { tag(Tag::nil); } // no vector writes one
    void operator()(bool flag) { out_.push_back(static_cast<std::uint8_t>(Tag::boolean) | (flag ? 0 : false_bit)); }
    void operator()(std::int64_t number)
    {
        if (number >= 0 && number <= UINT8_MAX) {
            tag(Tag::u8);
            out_.push_back(static_cast<std::uint8_t>(number));
        } else if (number >= 0 && number <= UINT32_MAX) {
            tag(Tag::u32);
            raw(static_cast<std::uint32_t>(number));
        } else {
            tag(Tag::i64);
            raw(number);
        }
    }
    void operator()(double number)
    {
        tag(Tag::f64);
        raw(number);
    }
    void operator()(const std::string &text)
    {
        tag(Tag::text);
        characters(text.substr(0, UINT8_MAX));
    }
    void operator()(const ScriptTable &table)
    {
        tag(Tag::table);
        const std::size_t count_at = out_.size();
        out_.push_back(0);
        for (std::size_t i = 0; i < table.size() && out_[count_at] < UINT8_MAX; ++out_[count_at])
            i += field(table, i);
    }

private:
    void tag(Tag tag) { out_.push_back(static_cast<std::uint8_t>(tag)); }
    template <class Number>
    void raw(Number number)
    {
        std::uint8_t bytes[sizeof number];
        std::memcpy(bytes, &number, sizeof number);
        out_.insert(out_.end(), std::begin(bytes), std::end(bytes));
    }
    void characters(const std::string &text)
    {
        out_.push_back(static_cast<std::uint8_t>(text.size()));
        out_.insert(out_.end(), text.begin(), text.end());
    }

    /// Writes the field, with the equal array entries that follow it, and returns how many these are.
    std::size_t field(const ScriptTable &table, std::size_t at)
    {
        std::size_t count = 1;
        if (!table[at].name.empty()) {
            characters(table[at].name);
        } else {
            while (at + count < table.size() && count < UINT8_MAX && table[at + count].name.empty() &&
                   same_content(table[at].value, table[at + count].value))
                ++count;
            out_.push_back(count == 1 ? next_index : repeated_index);
            if (count > 1)
                out_.push_back(static_cast<std::uint8_t>(count));
        }
        write(table[at].value);
        return count;
    }

    Bytes &out_;
};

Bytes in_bytes(const ScriptValue &value)
{
    Bytes bytes;
    ScriptWriter(bytes).write(value);
    return bytes;
}

Bytes in_bytes(const std::string &text) { return {text.begin(), text.end()}; }

// ------------------------------------------------------------------------------------------------ seeds

class SeedMaker {
public:
    SeedMaker(const host::Host &host, const std::filesystem::path &folder)
        : subjects_(all_subjects(host)), parsers_(all_parsers(host)), types_(host.types().size()),
          records_(folder / "records"), display_(folder / "display_record"), library_(folder / "library"),
          fronts_(folder)
    {
    }

    void add(const Line &line);
    std::string summary() const
    {
        return std::to_string(records_.count()) + " seeds of records, " + std::to_string(display_.count()) +
               " of display records, " + std::to_string(library_.count()) + " of the library";
    }

private:
    void value_seeds(const Line &line, const Bytes &value);
    void display_seed(const Line &line, const Bytes &record);
    void record(Operation operation, std::size_t choice, std::uint8_t mode, const Bytes &payload)
    {
        Bytes seed{static_cast<std::uint8_t>(choice), static_cast<std::uint8_t>(operation), mode, 0};
        seed.insert(seed.end(), payload.begin(), payload.end());
        records_.add(seed);
    }
    void in_modes(Operation operation, const Line &line, const Bytes &payload)
    {
        for (const std::uint8_t mode : line.modes)
            record(operation, subject(line), mode, payload);
    }
    std::size_t subject(const Line &line) const
    {
        return static_cast<std::size_t>(std::ranges::find(subjects_, line.subject, &Subject::name) - subjects_.begin());
    }

    std::vector<Subject> subjects_;
    std::vector<Parser> parsers_;
    std::size_t types_; ///< of the subjects, which come first
    Seeds records_;
    Seeds display_;
    Seeds library_;
    FrontSeeds fronts_;
};

void SeedMaker::value_seeds(const Line &line, const Bytes &value)
{
    record(Operation::print, subject(line), 2, value);
    record(Operation::check, subject(line), 0, value);
    record(Operation::set, subject(line), 0, value);
    record(Operation::swap, subject(line), 0, value);
    Bytes thrice;
    for (int i = 0; i < 3; ++i)
        thrice.insert(thrice.end(), value.begin(), value.end());
    record(Operation::compare, subject(line), 0, thrice);
}

/// A display record behind its mode and flags.
void SeedMaker::display_seed(const Line &line, const Bytes &record)
{
    for (const std::uint8_t mode : line.modes) {
        Bytes seed{mode, 0};
        seed.insert(seed.end(), record.begin(), record.end());
        display_.add(seed);
    }
}

void SeedMaker::add(const Line &line)
{
    const std::size_t number = subject(line);
    if (number == subjects_.size())
        throw std::runtime_error(line.place() + ": no subject " + line.subject);
    if (number < types_) {
        add_library_seeds(library_, number, line);
        fronts_.add(number, line);
    }
    const test::Form form = subjects_[number].form();
    switch (line.verb) {
    case Verb::in:
        in_modes(Operation::parse, line, in_bytes(line.text));
        return value_seeds(line, to_native(form, line.bytes));
    case Verb::bad: return in_modes(Operation::parse, line, in_bytes(line.text));
    case Verb::out:
    case Verb::bare:
    case Verb::copy:
    case Verb::skip:
    case Verb::noout: {
        const Bytes shown = shown_to_native(form, line.bytes);
        in_modes(Operation::print, line, shown);
        return line.subject == "ATTRIDBITMAP" ? display_seed(line, shown) : void();
    }
    case Verb::check: return record(Operation::check, number, 0, to_native(form, line.bytes));
    case Verb::cmp: {
        Bytes values = to_native(form, line.bytes);
        for (int i = 0; i < 2; ++i) {
            const Bytes other = to_native(form, *line.result);
            values.insert(values.end(), other.begin(), other.end());
        }
        return record(Operation::compare, number, 0, values);
    }
    case Verb::tables: return record(Operation::set, number, 0, to_native(form, line.bytes));
    case Verb::set:
    case Verb::noset:
        record(Operation::get, number, 0, in_bytes(line.script));
        return record(Operation::set, number, 0, to_native(form, line.bytes));
    case Verb::get:
    case Verb::noget:
        record(Operation::get, number, 0, in_bytes(line.script));
        if (line.script.is_table()) {
            for (std::size_t reader = 0; reader < SYSDT_BOL_KINDS; ++reader) {
                const bool of_prefixes = line.subject == "BOLPREFIX" || line.row;
                of_prefixes ? record(Operation::read, reader, 0, in_bytes(line.script)) : void();
            }
        }
        return;
    case Verb::swap: return record(Operation::swap, number, 0, to_native(form, line.bytes));
    case Verb::help:
    case Verb::nohelp: return in_modes(Operation::help, line, {});
    case Verb::fn: {
        const auto parser = std::ranges::find(parsers_, line.function, [](const Parser &known) { return known.name; });
        const auto at = static_cast<std::size_t>(parser - parsers_.begin());
        return at == parsers_.size() ? void() : record(Operation::function, at, 0, in_bytes(line.text));
    }
    }
}

// ------------------------------------------------------------------------------------------------ dictionary

/// The words of texts, as often as they come, and all keys of tables.
class Dictionary {
public:
    void add(const Line &line)
    {
        add_words(line.text);
        add_keys(line.script);
    }

    /// Words that come once are more often noise than keywords.
    void write(const std::filesystem::path &path) const
    {
        std::ofstream file(path);
        for (const auto &[word, count] : words_)
            if (count > 1)
                file << '"' << word << "\"\n";
        if (!file.flush())
            throw std::runtime_error("cannot write " + path.string());
    }

private:
    static constexpr std::size_t longest = 32;

    void add_words(const std::string &text)
    {
        const auto in_word = [](unsigned char c) { return std::isalpha(c) != 0 || c == '-'; };
        for (auto at = text.begin(); at != text.end();) {
            const auto begin = std::find_if(at, text.end(), [](unsigned char c) { return std::isalpha(c) != 0; });
            at = std::find_if_not(begin, text.end(), in_word);
            const auto length = static_cast<std::size_t>(at - begin);
            if (length > 1 && length <= longest)
                ++words_[{begin, at}];
        }
    }

    void add_keys(const ScriptValue &value)
    {
        const auto *const table = std::get_if<ScriptTable>(&value.value);
        if (table == nullptr)
            return;
        for (const ScriptField &field : *table) {
            if (!field.name.empty())
                words_[field.name] += 2;
            add_keys(field.value);
        }
    }

    std::map<std::string, int> words_;
};

// ------------------------------------------------------------------------------------------------ kept corpus

/// A file of texts, as the vectors write them, to a folder in that of its fuzzer's seeds.
std::size_t add_kept(const std::filesystem::path &folder, const std::filesystem::path &texts)
{
    Seeds seeds(folder / texts.stem() / "kept");
    std::ifstream file(texts);
    for (std::string line; std::getline(file, line);)
        seeds.add(in_bytes(test::Words(line).text()));
    return seeds.count();
}

void make_seeds(const std::filesystem::path &folder)
{
    const test::Vectors vectors = test::read_vector_folder(test::vectors_folder());
    if (!vectors.errors.empty() || vectors.lines.empty())
        throw std::runtime_error(vectors.errors.empty() ? "there are no vectors" : vectors.errors.front());
    const host::Host host(test::plugin_path());
    SeedMaker seeds(host, folder);
    Dictionary dictionary;
    for (const Line &line : vectors.lines) {
        seeds.add(line);
        dictionary.add(line);
    }
    dictionary.write(folder / "records.dict");
    Seeds wire_seeds(folder / "wire");
    add_wire_seeds(wire_seeds, BGPDT_WIRE_SAMPLES);
    std::size_t kept = 0;
    for (const auto &entry : std::filesystem::directory_iterator(BGPDT_FUZZING_CORPUS))
        kept += add_kept(folder, entry.path());
    std::printf("%s, %zu of the wire, %zu kept\n", seeds.summary().c_str(), wire_seeds.count(), kept);
}

} // namespace

} // namespace bgpdt::fuzzing

int main(int argc, char **argv)
{
    try {
        if (argc != 2)
            throw std::runtime_error("usage: make_seeds FOLDER");
        bgpdt::fuzzing::make_seeds(argv[1]);
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "make_seeds: %s\n", error.what());
        return 1;
    }
}
