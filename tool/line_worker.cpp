// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "line_worker.hpp"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "errors.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

/// The type, if it is read from the format.
const SYSDT_Record &readable(const SYSDT_Record &type, Format format)
{
    if (format == Format::text && type.formatIn == nullptr)
        throw UsageError(name_of(type) + " takes no text; --from is hex, json or binary for it");
    return type;
}

} // namespace

std::size_t record_size(const SYSDT_Record &type, Format format)
{
    return format == Format::binary ? value_size(type) : 0;
}

Refusal Lines::too_long()
{
    return Refusal("the line is longer than any value's, more than " + std::to_string(longest_line) + " characters");
}

void Lines::refuse(std::string_view whole, Results &results)
{
    ++results.refused;
    results.rejects.append(whole);
}

void Lines::take_part(const Block &block, Results &results) const
{
    const std::string_view part(block.text().data(), block.text().size());
    if (block.begins) {
        tell(results, false, too_long);
        refuse(part, results);
    } else {
        results.continues_reject = true;
        results.rejects.append(part);
    }
    results.lines += block.ends ? 1 : 0;
}

LineWorker::LineWorker(Session &session, const SYSDT_Record &type, Format format, std::unique_ptr<Consumer> consumer,
                       const Report &report)
    : Lines(report), reader_(session, readable(type, format), format), consumer_(std::move(consumer)),
      record_(record_size(type, format))
{
}

void LineWorker::work(const Block &block, Results &results, const HandOut &hand_out)
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

/// Finds the lines of the block and puts a NUL behind each but the last of its file, which has one by itself.
void LineWorker::split(std::span<char> text)
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
void LineWorker::take(std::span<char> line, std::string_view whole, Results &results)
{
    const bool sound = record_ != 0 ? line.size() == record_
                                    : line.size() <= longest_line &&
                                          (!has_nul_ || std::memchr(line.data(), '\0', line.size()) == nullptr);
    const Value value = sound ? reader_.read(line) : Value();
    const std::string_view original = whole.ends_with('\n') && record_ == 0 ? whole.substr(0, whole.size() - 1) : whole;
    const Verdict verdict =
        value.data() == nullptr ? Verdict::refused : consumer_->take(value, original, results.output);
    if (verdict != Verdict::accepted) [[unlikely]] {
        const bool warning = verdict == Verdict::warned;
        tell(results, warning, [&] { return reason(sound, value, whole.substr(0, line.size())); });
        results.warnings += warning ? 1 : 0;
        if (!warning)
            refuse(whole, results);
    }
    ++results.lines;
}

Refusal LineWorker::reason(bool sound, Value value, std::string_view line) const
{
    if (sound)
        return value.data() == nullptr ? reader_.refusal(line) : consumer_->why();
    if (record_ != 0) {
        return Refusal("the input ends within a value: " + std::to_string(line.size()) + " bytes of " +
                       std::to_string(record_));
    }
    return line.size() > longest_line ? too_long() : Refusal("the line holds a NUL, where texts end");
}

} // namespace bgpdt::tool
