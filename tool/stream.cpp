// SPDX-License-Identifier: Apache-2.0
#include "stream.hpp"

#include <algorithm>
#include <cstring>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "pipeline.hpp"
#include "sorting.hpp"
#include "toolkit/conversions.hpp"
#include "toolkit/stream_values.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

/// Output of a block that is handed out before the block has ended.
constexpr std::size_t largest_output = std::size_t{1} << 20;

/// The size of a value in binary; 0 in the formats that are lines.
std::size_t record_size(const SYSDT_Record &type, Format format)
{
    return format == Format::binary ? value_size(type) : 0;
}

constexpr std::string_view format_names[] = {"text", "hex", "json", "binary"};

Format format_named(const std::string &word, const char *option)
{
    const auto *const found = std::ranges::find(format_names, word);
    if (found == std::end(format_names))
        throw UsageError(std::string(option) + " is one of text, hex, json and binary, not " + word);
    return static_cast<Format>(found - std::begin(format_names));
}

/// The type, if it is read from the format.
const SYSDT_Record &readable(const SYSDT_Record &type, Format format)
{
    if (format == Format::text && type.formatIn == nullptr)
        throw UsageError(name_of(type) + " takes no text; --from is hex, json or binary for it");
    return type;
}

/// The type, if it is written in the format.
const SYSDT_Record &writable(const SYSDT_Record &type, Format format)
{
    if (format == Format::text && type.formatOut == nullptr)
        throw UsageError(name_of(type) + " prints no text; --to is hex, json or binary for it");
    return type;
}

/// What is done with the values of the lines.
class Consumer {
public:
    virtual ~Consumer() = default;
    /// @param line  as it stands in the input, without its end
    /// @return whether the value is accepted
    virtual bool take(Value value, std::string_view line, Buffer &out) = 0;
    /// Why the last value was not accepted.
    virtual std::string refusal() const = 0;
};

class Converter final : public Consumer {
public:
    Converter(Session &session, const SYSDT_Record &type, Format format)
        : writer_(session, writable(type, format), format)
    {
    }
    bool take(Value value, std::string_view, Buffer &out) override { return writer_.write(value, out); }
    std::string refusal() const override { return writer_.refusal(); }

private:
    ValueWriter writer_;
};

class Checker final : public Consumer {
public:
    Checker(Session &session, const SYSDT_Record &type) : session_(session), type_(type)
    {
        if (type.check == nullptr)
            throw UsageError(name_of(type) + " checks no values");
    }
    bool take(Value value, std::string_view, Buffer &) override
    {
        status_ = session_.host().check(type_, filled_up(type_, value, filled_));
        return status_ == SYSDT_OK;
    }
    std::string refusal() const override
    {
        return name_of(type_) + " refuses the value (" + host::status_name(status_) + ")";
    }

private:
    Session &session_;
    const SYSDT_Record &type_;
    Bytes filled_;
    std::uint32_t status_ = 0;
};

/// Consumers that take every value.
class Taker : public Consumer {
public:
    std::string refusal() const final { return {}; }
};

class Uniq final : public Taker {
public:
    explicit Uniq(bool binary) : binary_(binary) {}
    bool take(Value value, std::string_view line, Buffer &out) override
    {
        if (!std::exchange(begun_, true) || !std::ranges::equal(value, last_)) {
            last_.assign(value.begin(), value.end());
            out.append(line);
            out.append(binary_ ? std::string_view() : "\n");
        }
        return true;
    }

private:
    bool binary_;
    bool begun_ = false;
    Bytes last_;
};

class Collector final : public Taker {
public:
    Collector(const SYSDT_Record &type, Sorter &sorter) : type_(type), sorter_(sorter) {}
    bool take(Value value, std::string_view line, Buffer &) override
    {
        sorter_.add(filled_up(type_, value, filled_), line);
        return true;
    }

private:
    const SYSDT_Record &type_;
    Sorter &sorter_;
    Bytes filled_;
};

/// Splits blocks into lines, or values in binary, and gives their values to a consumer.
class LineWorker final : public Worker {
public:
    LineWorker(Session &session, const SYSDT_Record &type, Format format, std::unique_ptr<Consumer> consumer,
               std::uint64_t told)
        : reader_(session, readable(type, format), format), consumer_(std::move(consumer)),
          record_(record_size(type, format)), told_(told)
    {
    }

    void work(const Block &block, Results &results, const HandOut &hand_out) override
    {
        if (!block.begins || !block.ends) {
            take_part(block, results);
            return;
        }
        const std::span<char> text = block.text();
        original_.clear();
        original_.append({text.data(), text.size()});
        has_nul_ = record_ == 0 && std::memchr(text.data(), '\0', text.size()) != nullptr;
        split(text);
        std::size_t at = 0;
        for (const Line &line : lines_) {
            take({text.data() + at, line.length}, {original_.text().data() + at, line.next - at}, results);
            at = line.next;
            if (results.output.size() > largest_output || results.rejects.size() > largest_output)
                hand_out(results);
        }
    }

private:
    struct Line {
        std::uint32_t length; ///< without the line's end
        std::uint32_t next;   ///< where the next begins
    };

    /// Finds the lines of the block and puts a NUL behind each but the last of its file, which has one by itself.
    void split(std::span<char> text)
    {
        lines_.clear();
        std::size_t at = 0;
        while (at < text.size()) {
            char *const begin = text.data() + at;
            const std::size_t left = text.size() - at;
            if (record_ != 0) {
                const auto length = static_cast<std::uint32_t>(std::min(left, record_));
                at += length;
                lines_.push_back({length, static_cast<std::uint32_t>(at)});
                continue;
            }
            auto *end = static_cast<char *>(std::memchr(begin, '\n', left));
            at = end != nullptr ? static_cast<std::size_t>(end - text.data()) + 1 : text.size();
            end = end != nullptr ? end : text.data() + text.size();
            if (end != begin && end[-1] == '\r')
                --end;
            *end = '\0';
            lines_.push_back({static_cast<std::uint32_t>(end - begin), static_cast<std::uint32_t>(at)});
        }
    }

    /// @param whole  the line as it stands in the input, with its end
    void take(std::span<char> line, std::string_view whole, Results &results)
    {
        const bool sound = record_ != 0 ? line.size() == record_
                                        : line.size() <= longest_line &&
                                              (!has_nul_ || std::memchr(line.data(), '\0', line.size()) == nullptr);
        const Value value = sound ? reader_.read(line) : Value();
        const std::string_view original =
            whole.ends_with('\n') && record_ == 0 ? whole.substr(0, whole.size() - 1) : whole;
        if (value.data() == nullptr || !consumer_->take(value, original, results.output)) [[unlikely]] {
            const bool tell = results.told.size() < told_;
            refuse(whole, tell ? sentence(sound, value, whole.substr(0, line.size())) : "", results);
        }
        ++results.lines;
    }

    void refuse(std::string_view whole, std::string sentence, Results &results) const
    {
        if (results.told.size() < told_)
            results.told.push_back({results.lines, std::move(sentence)});
        ++results.refused;
        results.rejects.append(whole);
    }

    std::string sentence(bool sound, Value value, std::string_view line) const
    {
        if (sound)
            return value.data() == nullptr ? reader_.refusal(line) : consumer_->refusal();
        if (record_ != 0) {
            return "the input ends within a value: " + std::to_string(line.size()) + " bytes of " +
                   std::to_string(record_);
        }
        return line.size() > longest_line ? too_long() : "the line holds a NUL, where texts end";
    }

    static std::string too_long()
    {
        return "the line is longer than any value's, more than " + std::to_string(longest_line) + " characters";
    }

    /// A part of a line that no block holds.
    void take_part(const Block &block, Results &results) const
    {
        const std::string_view part(block.text().data(), block.text().size());
        if (block.begins) {
            refuse(part, too_long(), results);
        } else {
            results.continues_reject = true;
            results.rejects.append(part);
        }
        results.lines += block.ends ? 1 : 0;
    }

    ValueReader reader_;
    std::unique_ptr<Consumer> consumer_;
    const std::size_t record_; ///< the size of a value in binary, else 0
    const std::uint64_t told_;
    Buffer original_;
    std::vector<Line> lines_;
    bool has_nul_ = false;
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
            workers.push_back(std::make_unique<LineWorker>(session_, type_, from_, make(), report.limit()));
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

Format format_from(const Options &options) { return format_named(options.from.value_or("text"), "--from"); }

Format format_to(const Options &options, Format from)
{
    return format_named(options.to.value_or(from == Format::hex ? "text" : "hex"), "--to");
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

Exit convert(Session &session, const Options &options, std::vector<std::string> files, Format from, Format to)
{
    Stream stream(session, options, std::move(files), from);
    Output output(options.output, "the output");
    return stream.run(&output, threads_of(options),
                      [&] { return std::make_unique<Converter>(session, stream.type(), to); });
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

Exit check_lines(Session &session, const Options &options)
{
    Stream stream(session, options, options.in, format_from(options));
    return stream.run(nullptr, threads_of(options), [&] { return std::make_unique<Checker>(session, stream.type()); });
}

Exit sort_lines(Session &session, const Options &options)
{
    Stream stream(session, options, files_in(options), format_from(options));
    const bool binary = stream.from() == Format::binary;
    Sorter sorter(stream.type(), {.memory = options.memory, .unique = options.unique});
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
