// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "vector_file.hpp"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

namespace bgpdt::test {

namespace {

/// The words behind a verb: t text, b bytes, r result bytes, o result bytes or nothing, s status, c order, f fate,
/// v script value, m the making of tables, n name.
struct Form {
    std::string_view name;
    Verb verb;
    std::string_view words;
    bool has_modes;
    std::string_view mark;
};

constexpr std::array<Form, 18> forms{{{"in", Verb::in, "tb", true, "reprint"},
                                      {"bad", Verb::bad, "ts", true, ""},
                                      {"out", Verb::out, "bt", true, ""},
                                      {"bare", Verb::bare, "bt", true, ""},
                                      {"copy", Verb::copy, "br", true, ""},
                                      {"skip", Verb::skip, "b", true, ""},
                                      {"noout", Verb::noout, "bsf", true, ""},
                                      {"check", Verb::check, "bs", false, ""},
                                      {"cmp", Verb::cmp, "brc", false, ""},
                                      {"set", Verb::set, "bv", false, "reget"},
                                      {"tables", Verb::tables, "bm", false, ""},
                                      {"noset", Verb::noset, "bs", false, ""},
                                      {"get", Verb::get, "vb", false, "reget"},
                                      {"noget", Verb::noget, "vso", false, ""},
                                      {"swap", Verb::swap, "br", false, "reswap"},
                                      {"help", Verb::help, "t", true, ""},
                                      {"nohelp", Verb::nohelp, "", true, ""},
                                      {"fn", Verb::fn, "ntso", false, ""}}};

/// One line as it counts: without comment, with what follows on further lines.
struct Logical {
    std::string text;
    int number;
};

/// Removes the comment and tells whether the line ends in '\'.
bool strip(std::string &line)
{
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i)
        if (quoted && line[i] == '\\')
            ++i;
        else if (line[i] == '"')
            quoted = !quoted;
        else if (line[i] == '#' && !quoted)
            line.resize(i);
    const std::size_t last = line.find_last_not_of(" \t\r");
    line.resize(last == std::string::npos ? 0 : last + 1);
    if (quoted || !line.ends_with('\\'))
        return false;
    line.pop_back();
    return true;
}

/// The line break and the next line's indent vanish, so a blank before '\' ends the word and none joins it.
std::vector<Logical> logical_lines(std::string_view content)
{
    std::vector<Logical> lines;
    bool joining = false;
    int number = 0;
    while (!content.empty()) {
        const std::size_t end = std::min(content.find('\n'), content.size());
        std::string line(content.substr(0, end));
        content.remove_prefix(std::min(end + 1, content.size()));
        ++number;
        line.erase(0, std::min(line.find_first_not_of(" \t"), line.size()));
        const bool goes_on = strip(line);
        if (joining)
            lines.back().text += line;
        else
            lines.push_back({line, number});
        joining = goes_on;
    }
    return lines;
}

class Reader {
public:
    Reader(Vectors &vectors, std::string file) : vectors_(vectors), file_(std::move(file)) {}

    void read(const Logical &logical)
    {
        try {
            Words words(logical.text);
            if (!words.at_end())
                statement(words, logical);
        } catch (const WordError &error) {
            vectors_.errors.push_back(file_ + ":" + std::to_string(logical.number) + ": " + error.what());
        }
    }

private:
    void statement(Words &words, const Logical &logical);
    void fact(const Form &form, Words &words, Line line);
    static void word(char kind, Words &words, Line &line);

    Vectors &vectors_;
    std::string file_;
    std::string subject_;
    bool row_ = false;
    std::optional<Reported> reports_;
};

void expect_end(const Words &words)
{
    if (!words.at_end())
        throw WordError("the line says more than its verb");
}

void Reader::statement(Words &words, const Logical &logical)
{
    const std::string verb = words.name();
    if (verb == "type" || verb == "row") {
        subject_ = words.name();
        row_ = verb == "row";
        reports_.reset();
        expect_end(words);
        return;
    }
    if (verb == "reports") {
        const auto kind = static_cast<std::uint16_t>(words.number(0xFFFF));
        reports_ = {kind, static_cast<std::uint16_t>(words.number(0xFFFF))};
        expect_end(words);
        return;
    }
    if (verb == "contract" || verb == "fails" || verb == "irregular" || verb == "breaks")
        return; // expectations.cpp reads them
    const auto form = std::find_if(forms.begin(), forms.end(), [&](const Form &known) { return known.name == verb; });
    if (form == forms.end())
        throw WordError("unknown verb '" + verb + "'");
    if (subject_.empty())
        throw WordError("no 'type' or 'row' stands before this line");
    Line line;
    line.file = file_;
    line.number = logical.number;
    line.content = logical.text;
    line.subject = subject_;
    line.row = row_;
    line.reports = reports_;
    fact(*form, words, std::move(line));
}

void Reader::fact(const Form &form, Words &words, Line line)
{
    line.verb = form.verb;
    line.verb_name = form.name;
    if (words.accept('@')) {
        if (!form.has_modes)
            throw WordError("'" + line.verb_name + "' has no modes");
        do {
            line.modes.push_back(static_cast<std::uint8_t>(words.number(0xFF)));
        } while (words.accept(','));
    } else {
        line.modes.push_back(2);
    }
    for (const char kind : form.words)
        word(kind, words, line);
    if (!form.mark.empty() && words.accept('!')) {
        const std::string mark = words.name();
        if (mark != form.mark)
            throw WordError("unknown mark '!" + mark + "'");
        line.marked = true;
    }
    expect_end(words);
    vectors_.lines.push_back(std::move(line));
}

void Reader::word(char kind, Words &words, Line &line)
{
    switch (kind) {
    case 't': line.text = words.text(); return;
    case 'b': line.bytes = words.bytes(); return;
    case 'r': line.result = words.bytes(); return;
    case 'o':
        if (!words.at_end())
            line.result = words.bytes();
        return;
    case 's': line.status = static_cast<std::int32_t>(words.status()); return;
    case 'c': line.status = words.order(); return;
    case 'v': line.script = words.script_value(); return;
    case 'm': line.steps = words.making(); return;
    case 'n': line.function = words.name(); return;
    default: break;
    }
    line.fate = fate_named(words.name());
}

} // namespace

Fate fate_named(std::string_view name)
{
    constexpr std::array<std::string_view, 4> fates{"back", "freed", "released", "none"};
    const auto *const fate = std::find(fates.begin(), fates.end(), name);
    if (fate == fates.end())
        throw WordError("unknown fate '" + std::string(name) + "'");
    return static_cast<Fate>(fate - fates.begin());
}

void read_vectors(Vectors &vectors, std::string_view content, const std::string &file)
{
    Reader reader(vectors, file);
    for (const Logical &logical : logical_lines(content))
        reader.read(logical);
    ++vectors.files;
}

Vectors read_vector_folder(const std::filesystem::path &folder)
{
    Vectors vectors;
    std::vector<std::filesystem::path> paths;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".vec")
            paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (const auto &path : paths) {
        std::ifstream stream(path, std::ios::binary);
        const std::string content((std::istreambuf_iterator<char>(stream)), {});
        if (!stream) {
            vectors.errors.push_back(path.string() + ": cannot be read");
            continue;
        }
        read_vectors(vectors, content, path.string());
    }
    return vectors;
}

} // namespace bgpdt::test
