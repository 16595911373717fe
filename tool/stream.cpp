// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "stream.hpp"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <thread>
#include <utility>
#include <vector>

#include "line_worker.hpp"
#include "sorting.hpp"
#include "toolkit/checks.hpp"
#include "toolkit/conversions.hpp"
#include "toolkit/reasons.hpp"
#include "toolkit/stream_values.hpp"
#include "toolkit/words.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

constexpr std::string_view format_names[] = {"text", "hex", "json", "binary", "csv", "tsv"};

/// One of the first of the formats.
Format format_named(const std::string &word, const char *option, std::size_t count)
{
    const std::span names = std::span(format_names).first(count);
    const auto found = std::ranges::find(names, word);
    if (found == names.end()) {
        const std::vector<std::string> words(names.begin(), names.end());
        throw UsageError(std::string(option) + " is one of " + listed(words, "and") + ", not " + word);
    }
    return static_cast<Format>(found - names.begin());
}

/// The type, if it is written in the format.
const SYSDT_Record &writable(const SYSDT_Record &type, Format format)
{
    if (format == Format::text && type.formatOut == nullptr)
        throw UsageError(name_of(type) + " prints no text; --to is hex, json or binary for it");
    return type;
}

class Converter final : public Consumer {
public:
    Converter(Session &session, const SYSDT_Record &type, Format format, const std::vector<std::string> &columns)
        : writer_(session, writable(type, format), format, columns)
    {
    }
    Verdict take(Value value, std::string_view, Buffer &out) override
    {
        return writer_.write(value, out) ? Verdict::accepted : Verdict::refused;
    }
    Refusal why() const override { return Refusal(writer_.refusal()); }

private:
    ValueWriter writer_;
};

/// What text was read from is checked as text; of bytes it is told too if they are not printed.
class Checker final : public Consumer {
public:
    Checker(Session &session, const SYSDT_Record &type, Format from, bool canonical)
        : session_(session), type_(type), text_(from == Format::text), canonical_(canonical)
    {
        if (type.check == nullptr && !text_)
            throw UsageError(name_of(type) + " checks no values");
    }
    Verdict take(Value value, std::string_view line, Buffer &) override
    {
        const Value filled = filled_up(type_, value, filled_);
        try {
            if (type_.check != nullptr)
                check_value(session_, type_, filled);
            if (canonical_ && text_)
                require_canonical(session_, type_, line, filled);
        } catch (const Refusal &refusal) {
            why_ = refusal;
            return Verdict::refused;
        }
        const bool may_warn = !text_ || line.find('/') != std::string_view::npos || line.find(':') != line.npos;
        const std::vector<std::string> warnings =
            may_warn ? warnings_of(session_, type_, filled) : std::vector<std::string>{};
        if (warnings.empty())
            return Verdict::accepted;
        why_ = Refusal(joined(warnings, "; "));
        return Verdict::warned;
    }
    Refusal why() const override { return *why_; }

private:
    Session &session_;
    const SYSDT_Record &type_;
    const bool text_;
    const bool canonical_;
    Bytes filled_;
    std::optional<Refusal> why_;
};

/// Consumers that take every value.
class Taker : public Consumer {
public:
    Refusal why() const final { return Refusal(""); }
};

class Uniq final : public Taker {
public:
    explicit Uniq(bool binary) : binary_(binary) {}
    Verdict take(Value value, std::string_view line, Buffer &out) override
    {
        if (!std::exchange(begun_, true) || !std::ranges::equal(value, last_)) {
            last_.assign(value.begin(), value.end());
            out.append(line);
            out.append(binary_ ? std::string_view() : "\n");
        }
        return Verdict::accepted;
    }

private:
    bool binary_;
    bool begun_ = false;
    Bytes last_;
};

class Collector final : public Taker {
public:
    Collector(const SYSDT_Record &type, Sorter &sorter) : type_(type), sorter_(sorter) {}
    Verdict take(Value value, std::string_view line, Buffer &) override
    {
        sorter_.add(filled_up(type_, value, filled_), line);
        return Verdict::accepted;
    }

private:
    const SYSDT_Record &type_;
    Sorter &sorter_;
    Bytes filled_;
};

/// A run of a command over its input.
class Stream {
public:
    Stream(Session &session, const Options &options, std::vector<std::string> files, Format from)
        : session_(session), options_(options), type_(session.type(options.arguments[0])), from_(from),
          input_(std::move(files), record_size(type_, from))
    {
    }

    const SYSDT_Record &type() const { return type_; }
    Format from() const { return from_; }

    /// @param make    a consumer for each thread
    /// @param at_end  what is left to do when all of the input is read
    template <class Make, class AtEnd = void (*)()>
    Exit run(
        Output *output, unsigned threads, Make make, AtEnd at_end = [] {})
    {
        Report report(options_, input_, output, from_ == Format::binary ? "values" : "lines");
        std::vector<std::unique_ptr<Worker>> workers;
        for (unsigned i = 0; i < threads; ++i)
            workers.push_back(std::make_unique<LineWorker>(session_, type_, from_, make(), report));
        tool::run(input_, std::move(workers), report);
        at_end();
        report.finish();
        return report.refused() == 0 ? exit_done : exit_refused;
    }

private:
    Session &session_;
    const Options &options_;
    const SYSDT_Record &type_;
    const Format from_;
    Input input_;
};

Format format_from(const Options &options) { return format_named(options.from.value_or("text"), "--from", 4); }

Format format_to(const Options &options, Format from)
{
    return format_named(options.to.value_or(from == Format::hex ? "text" : "hex"), "--to", std::size(format_names));
}

unsigned threads_of(const Options &options)
{
    return options.threads != 0 ? options.threads : std::max(1U, std::thread::hardware_concurrency());
}

/// The arguments behind the type.
std::vector<std::string> files_in(const Options &options)
{
    return {options.arguments.begin() + 1, options.arguments.end()};
}

/// Of the formats that have some.
std::vector<std::string> columns_for(Session &session, const Options &options, const SYSDT_Record &type, Format to)
{
    const bool table = to == Format::csv || to == Format::tsv;
    if (!options.fields.empty() && !table && to != Format::json)
        throw UsageError("--field is for --to csv, tsv and json");
    return table || !options.fields.empty() ? columns_of(session, type, options.fields) : std::vector<std::string>{};
}

Exit convert(Session &session, const Options &options, std::vector<std::string> files, Format from, Format to)
{
    Stream stream(session, options, std::move(files), from);
    const std::vector<std::string> columns = columns_for(session, options, stream.type(), to);
    Output output(options.output, "the output");
    output.write(ValueWriter(session, writable(stream.type(), to), to, columns).header());
    return stream.run(&output, threads_of(options),
                      [&] { return std::make_unique<Converter>(session, stream.type(), to, columns); });
}

} // namespace

Exit convert_lines(Session &session, const Options &options)
{
    const Format from = format_from(options);
    return convert(session, options, files_in(options), from, format_to(options, from));
}

Exit canon_lines(Session &session, const Options &options)
{
    return convert(session, options, options.in, format_from(options), Format::text);
}

Exit print_lines(Session &session, const Options &options)
{
    return convert(session, options, {}, Format::hex, Format::text);
}

Exit check_lines(Session &session, const Options &options)
{
    Stream stream(session, options, options.in, format_from(options));
    if (options.canonical && stream.from() != Format::text)
        throw UsageError("--canonical is for lines of text");
    return stream.run(nullptr, threads_of(options), [&] {
        return std::make_unique<Checker>(session, stream.type(), stream.from(), options.canonical);
    });
}

Exit sort_lines(Session &session, const Options &options)
{
    Stream stream(session, options, files_in(options), format_from(options));
    const bool binary = stream.from() == Format::binary;
    Sorter sorter(session, stream.type(),
                  {.memory = options.memory, .unique = options.unique, .reverse = options.reverse});
    Output output(options.output, "the output");
    Buffer lines;
    const auto write = [&](std::string_view line) {
        lines.append(line);
        lines.append(binary ? std::string_view() : "\n");
        if (lines.size() > largest_output) {
            output.write(lines.text());
            lines.clear();
        }
    };
    return stream.run(
        &output, 1, [&] { return std::make_unique<Collector>(stream.type(), sorter); },
        [&] {
            sorter.finish(write);
            output.write(lines.text());
        });
}

Exit uniq_lines(Session &session, const Options &options)
{
    Stream stream(session, options, files_in(options), format_from(options));
    Output output(options.output, "the output");
    return stream.run(&output, 1, [&] { return std::make_unique<Uniq>(stream.from() == Format::binary); });
}

} // namespace bgpdt::tool
