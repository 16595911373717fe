// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "wire_commands.hpp"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

#include <nlohmann/json.hpp>

#include "line_worker.hpp"
#include "toolkit/bytes.hpp"
#include "toolkit/json_answers.hpp"
#include "toolkit/near_names.hpp"
#include "toolkit/strict_json.hpp"
#include "toolkit/words.hpp"
#include "values_given.hpp"
#include "wire_values.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

using Beside = std::vector<NamedValue>;

const wire::Form &form_named(const std::string &name)
{
    const wire::Form *const form = wire::find_form(name);
    if (form != nullptr)
        return *form;
    std::vector<std::string> names;
    for (const wire::Form &known : wire::forms())
        names.emplace_back(known.name);
    throw UsageError("wire does not read " + name + did_you_mean(name, names) + "; there are " + joined(names, ", "));
}

/// What comes out, or goes in on the way back.
Format format_of(const std::optional<std::string> &word, const char *option)
{
    if (!word || *word == "text")
        return Format::text;
    if (*word == "hex")
        return Format::hex;
    if (*word == "json")
        return Format::json;
    throw UsageError(std::string(option) + " is one of text, hex" +
                     (std::string_view(option) == "--to" ? ", json and wire" : " and json") + ", not " + *word);
}

bool is_way_back(const Options &options) { return options.to == "wire"; }

void require_direction(const Options &options)
{
    if (!is_way_back(options) && (options.from || !options.with.empty()))
        throw UsageError(std::string(options.from ? "--from" : "--with") +
                         " is for --to wire; what comes from the wire is hexadecimal");
}

// ------------------------------------------------------------------------------------------------ from the wire

struct Read {
    wire::Bytes octets;
    std::vector<wire::Item> items;
};

Read read_hex(const wire::Form &form, std::string_view text)
{
    Read read{from_hex(text), {}};
    try {
        read.items = wire::read(form, read.octets);
    } catch (const wire::BadBytes &bad) {
        throw refusal_of(std::string(form.name), bad, text, wire::advice(form, read.octets));
    }
    return read;
}

wire::Octets octets_of(const Read &read, const wire::Item &item)
{
    return wire::Octets(read.octets).subspan(item.at, item.size);
}

Answer values_answer(Session &session, const wire::Form &form, const Options &options)
{
    ItemWriter writer(session, format_of(options.to, "--to"));
    const Read read = read_hex(form, options.arguments[1]);
    std::string lines;
    std::vector<JsonObject> values;
    for (const wire::Item &item : read.items) {
        if (options.json)
            values.push_back(writer.json(form, item, octets_of(read, item), {}));
        else
            lines += writer.line(form, item, octets_of(read, item));
    }
    return {lines, values_json(record_of(session, form), values)};
}

// ------------------------------------------------------------------------------------------------ to the wire

/// Of "NAME=VALUE".
Beside beside_given(const Options &options)
{
    Beside beside;
    for (const std::string &word : options.with) {
        const std::size_t equals = word.find('=');
        if (equals == std::string::npos || equals == 0)
            throw UsageError("--with takes NAME=VALUE, such as RD=64496:100, not " + word);
        beside.push_back({word.substr(0, equals), word.substr(equals + 1)});
    }
    return beside;
}

/// What a line of JSON has beside its value, but for what is given already.
void add_beside(std::string_view line, Beside &beside)
{
    const std::optional<nlohmann::ordered_json> record = toolkit::read_json(line);
    if (!record || !record->contains("beside"))
        return;
    const nlohmann::ordered_json &told = (*record)["beside"];
    if (!told.is_object())
        throw Refusal(R"(its member "beside" is no object)");
    for (const auto &[name, value] : told.items()) {
        if (!value.is_string() && !value.is_number_unsigned())
            throw Refusal("what it has beside the value is neither text nor number");
        if (std::ranges::find(beside, name, &NamedValue::name) == beside.end())
            beside.push_back({name, value.is_string() ? value.get<std::string>() : value.dump()});
    }
}

wire::Bytes sent(const wire::Form &form, wire::Octets value, const Beside &beside)
{
    try {
        return wire::write(form, value, beside);
    } catch (const wire::NotSent &none) {
        const auto &[name, text, number] = none.missing();
        throw Refusal(std::string(form.name) + ": " + none.what() +
                      (name.empty() ? "" : ", as by --with '" + name + "=" + text + "'"));
    }
}

Answer sent_answer(Session &session, const wire::Form &form, const Options &options)
{
    const SYSDT_Record &type = record_of(session, form);
    const Given given = read_given(session, type, options.arguments[1]);
    const wire::Bytes octets = sent(form, given.value, beside_given(options));
    Answer answer{to_hex(octets) + "\n", wire_json(type, octets)};
    if (!given.note.empty())
        answer.notes.push_back(given.note);
    return answer;
}

// ------------------------------------------------------------------------------------------------ lines

/// Makes of each line what the function writes; what it throws is told of the line.
class EachLine final : public Lines {
public:
    /// A line without its end, behind which there is room for a NUL.
    using Take = std::function<void(std::span<char> line, Buffer &out)>;

    EachLine(const Report &report, Take take) : Lines(report), take_(std::move(take)) {}

    void work(const Block &block, Results &results, const HandOut &hand_out) override
    {
        if (!block.begins || !block.ends) {
            take_part(block, results);
            return;
        }
        for (std::span<char> rest = block.text(); !rest.empty();) {
            const std::string_view text(rest.data(), rest.size());
            const std::size_t end = std::min(text.find('\n'), text.size());
            const std::size_t next = std::min(end + 1, text.size());
            take(rest.first(end), text.substr(0, next), results);
            rest = rest.subspan(next);
            if (results.output.size() > largest_output)
                hand_out(results);
        }
    }

private:
    void take(std::span<char> line, std::string_view whole, Results &results)
    {
        const std::size_t length = line.size() - (!line.empty() && line.back() == '\r' ? 1 : 0);
        std::string copy(line.data(), length);
        try {
            if (length > longest_line)
                throw too_long();
            take_(std::span(copy.data(), length), results.output);
        } catch (const Refusal &refusal) {
            tell(results, false, [&refusal] { return refusal; });
            refuse(whole, results);
        }
        ++results.lines;
    }

    Take take_;
};

EachLine::Take reading(Session &session, const wire::Form &form, const Options &options)
{
    const auto writer = std::make_shared<ItemWriter>(session, format_of(options.to, "--to"));
    return [&form, writer](std::span<char> line, Buffer &out) {
        const Read read = read_hex(form, {line.data(), line.size()});
        for (const wire::Item &item : read.items)
            out.append(writer->line(form, item, octets_of(read, item)));
    };
}

EachLine::Take writing(Session &session, const wire::Form &form, const Options &options)
{
    const Format from = format_of(options.from, "--from");
    const auto reader = std::make_shared<ValueReader>(session, record_of(session, form), from);
    return [&form, reader, from, given = beside_given(options)](std::span<char> line, Buffer &out) {
        const std::string text(line.data(), line.size());
        if (text.find('\0') != std::string::npos)
            throw Refusal("the line holds a NUL, where texts end");
        Beside beside = given;
        if (from == Format::json)
            add_beside(text, beside);
        const Value value = reader->read(line);
        if (value.data() == nullptr)
            throw reader->refusal(text);
        out.append(to_hex(sent(form, value, beside)));
        out.append('\n');
    };
}

} // namespace

Answer wire_values(Session &session, const Options &options)
{
    const wire::Form &form = form_named(options.arguments[0]);
    require_direction(options);
    return is_way_back(options) ? sent_answer(session, form, options) : values_answer(session, form, options);
}

Exit wire_lines(Session &session, const Options &options)
{
    const wire::Form &form = form_named(options.arguments[0]);
    require_direction(options);
    Input input(options.in, 0);
    Output output(options.output, "the output");
    Report report(options, input, &output, "lines");
    std::vector<std::unique_ptr<Worker>> workers;
    workers.push_back(std::make_unique<EachLine>(report, is_way_back(options) ? writing(session, form, options)
                                                                              : reading(session, form, options)));
    run(input, std::move(workers), report);
    report.finish();
    return report.refused() == 0 ? exit_done : exit_refused;
}

std::string wire_form_rows()
{
    std::string rows;
    for (const wire::Form &form : wire::forms())
        rows += padded("  " + std::string(form.name), 32) + std::string(form.about) + "\n";
    return rows;
}

} // namespace bgpdt::tool
