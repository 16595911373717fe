// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What callers may do wrong with lengths and blocks, for every vector line. Null pointers, modes and odd addresses are
/// checked with the lines themselves.
#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "mistakes.hpp"
#include "support/attack_host.hpp"
#include "support/conversion.hpp"
#include "support/every_line.hpp"

namespace bgpdt::test {

std::size_t mistakes_made = 0;

namespace {

constexpr std::uint32_t longest = 0xFFFFFFFF;

std::uint32_t size_of(const Bytes &bytes) { return static_cast<std::uint32_t>(bytes.size()); }

std::string told(std::uint32_t length) { return "told the length " + std::to_string(length); }

/// The bytes cut or continued with zeros.
Bytes resized(Bytes bytes, std::size_t size)
{
    bytes.resize(size);
    return bytes;
}

class ConversionMistakes {
public:
    ConversionMistakes(const Line &line, const Subject &subject, Report &report)
        : line_(line), subject_(subject), report_(report), answering_(subject.answering(line.bytes)),
          native_(shown_to_native(subject.form(), line.bytes))
    {
    }

    void parse_lengths();
    void parse_over_text();
    void print_lengths();
    void print_over_value();
    void print_to_odd_address();
    void check_lengths();
    void compare_lengths();

private:
    std::uint8_t mode() const { return line_.modes.front(); }
    bool closes_quotes(std::uint32_t length) const;
    void expect_parsed(const Converted &result);
    void expect_text(const std::string &expected, const Converted &result);
    Converted print_of(const Bytes &value, std::uint32_t length, std::string &text);
    void expect_as_padded(std::uint32_t length);
    void expect_same_print(std::uint32_t length);
    void expect_mismatch(std::uint32_t length);
    void expect_copy(std::uint32_t length);
    bool reads_whole(std::uint32_t length) const;

    const Line &line_;
    const Subject &subject_;
    Report &report_;
    const Expectation &answering_;
    const Bytes native_;
    AttackHost &host_ = AttackHost::instance();
};

/// Where a text must be quoted: whether a quote stands where the length has it closed.
bool ConversionMistakes::closes_quotes(std::uint32_t length) const
{
    return length > 2 && length <= line_.text.size() && line_.text[length - 2] == '"' && line_.text[0] == '"';
}

void ConversionMistakes::expect_parsed(const Converted &result)
{
    const Bytes value = host_.collect(result.data).value_or(Bytes{});
    if (result.status == SYSDT_OK)
        report_.same("the value", line_.bytes, to_target(subject_.form(), value));
    else
        expect_nothing_delivered(result, forbidden_address(), false, report_);
    settle(report_);
}

void ConversionMistakes::parse_lengths()
{
    const auto right = static_cast<std::uint32_t>(line_.text.size() + 1);
    for (const std::uint32_t length : {std::uint32_t{0}, right - 1, right + 1, longest}) {
        report_.situation(in_mode(mode()) + ", " + told(length));
        const bool quoted = subject_.expect.in_letter(mode()) == 'q';
        if (quoted && closes_quotes(length))
            continue; // another text
        host_.begin();
        ++mistakes_made;
        const Converted result = parse(subject_, line_.text, mode(), report_, Null::nothing, length);
        const auto due = static_cast<std::uint32_t>(line_.status);
        report_.same_status(quoted ? SYSDT_ERR_UNSUPPORTED : due, result.status);
        expect_parsed(result);
    }
}

/// Out data names the text itself: nothing but a new block is delivered.
void ConversionMistakes::parse_over_text()
{
    report_.situation(in_mode(mode()) + ", out data names the text");
    Context context(mode());
    Guarded text(std::span(reinterpret_cast<const std::uint8_t *>(line_.text.c_str()), line_.text.size() + 1));
    host_.begin();
    ++mistakes_made;
    Outputs outputs(text.data());
    const std::uint32_t status =
        subject_.format_in(context.get(), 0, static_cast<std::uint32_t>(text.size()),
                           reinterpret_cast<char *>(text.data()), &outputs.kind, &outputs.length, &outputs.data);
    report_.same_status(static_cast<std::uint32_t>(line_.status), status);
    report_.require(text.intact() && outputs.intact(), "something was written beyond its ends");
    if (outputs.data == text.data())
        outputs.data = forbidden_address();
    expect_parsed({status, outputs.kind, outputs.length, outputs.data});
}

void ConversionMistakes::expect_text(const std::string &expected, const Converted &result)
{
    const Block *block = host_.find(result.data);
    if (report_.same_status(SYSDT_OK, result.status) && report_.require(block != nullptr, "nothing was delivered")) {
        const Bytes bytes = block->memory.bytes();
        report_.same("the text", expected, std::string(bytes.begin(), std::ranges::find(bytes, 0)));
    }
}

/// Prints the bytes, which end at an inaccessible page.
Converted ConversionMistakes::print_of(const Bytes &value, std::uint32_t length, std::string &text)
{
    Guarded memory(value);
    host_.begin();
    const Converted result = print(subject_, memory, length, mode(), nullptr, report_);
    const Bytes block = host_.collect(result.data).value_or(Bytes{});
    text = result.status == SYSDT_OK ? std::string(block.begin(), std::ranges::find(block, 0)) : "";
    settle(report_);
    return result;
}

/// A value that is told to be short reads as one continued with zeros.
void ConversionMistakes::expect_as_padded(std::uint32_t length)
{
    std::string cut_text;
    std::string padded_text;
    const Bytes cut = resized(native_, std::min<std::size_t>(length, native_.size()));
    const Converted result = print_of(cut, length, cut_text);
    const Converted padded = print_of(resized(cut, subject_.script_size()), size_of(native_), padded_text);
    report_.same_status(padded.status, result.status);
    report_.same("the text", padded_text, cut_text);
}

void ConversionMistakes::expect_same_print(std::uint32_t length)
{
    std::string text;
    const Converted result = print_of(native_, length, text);
    report_.same_status(static_cast<std::uint32_t>(line_.status), result.status);
    report_.same("the text", line_.text, text);
}

void ConversionMistakes::expect_mismatch(std::uint32_t length)
{
    Guarded memory(native_);
    host_.begin();
    const Converted result = print(subject_, memory, length, mode(), nullptr, report_);
    report_.same_status(SYSDT_ERR_MISMATCH, result.status);
    expect_nothing_delivered(result, nullptr, false, report_);
    settle(report_);
}

/// A copy is as long as it is told to be, if the 16-bit out length can say so.
void ConversionMistakes::expect_copy(std::uint32_t length)
{
    const bool fits = length <= 0xFFFF;
    Guarded memory(native_);
    host_.begin();
    const Converted result = print(subject_, memory, length, mode(), nullptr, report_);
    report_.same_status(fits ? SYSDT_OK : SYSDT_ERR_FAIL, result.status);
    if (fits) {
        report_.same<std::uint32_t>("out length", length, result.length);
        report_.same("the copy", resized(native_, length), delivered(result, length, 'h', report_));
    }
    settle(report_);
}

/// A dispatching type looks at the sub-kind word only as far as it is told, whatever the row reads.
bool ConversionMistakes::reads_whole(std::uint32_t length) const
{
    return answering_.has(whole_value) && native_.size() >= subject_.length &&
           (length >= sizeof(std::uint32_t) || !subject_.expect.has(dispatches) || subject_.expect.has(whole_value));
}

void ConversionMistakes::print_lengths()
{
    const std::uint32_t right = size_of(native_);
    for (const std::uint32_t length : {std::uint32_t{0}, right - 1, right + 1, longest}) {
        report_.situation(in_mode(mode()) + ", " + told(length));
        const bool lies = length > right;
        if (right == 0 || answering_.has(clears_late) || (line_.verb == Verb::copy && lies && length != longest))
            continue; // a display record says by itself where it ends; a copy reads what it is told to
        ++mistakes_made;
        if (answering_.has(always_takes))
            expect_mismatch(length);
        else if (line_.verb == Verb::copy)
            expect_copy(length);
        else if (reads_whole(length) || (lies && native_.size() >= subject_.script_size()))
            expect_same_print(length);
        else if (!answering_.has(whole_value) && !lies)
            expect_as_padded(length);
    }
}

/// The caller's block is where the value is: types print a copy of it.
void ConversionMistakes::print_over_value()
{
    if (answering_.has(clears_late) || native_.size() > answering_.buffer)
        return; // a bitmap is listed from the caller's record
    report_.situation(in_mode(mode()) + ", printed over the value");
    Context context(mode());
    host_.begin();
    ++mistakes_made;
    auto *block = static_cast<std::uint8_t *>(host_.lend(answering_.buffer));
    std::ranges::copy(native_, block);
    Outputs outputs(block);
    const std::uint32_t status = subject_.format_out(context.get(), subject_.kind, size_of(native_), block,
                                                     &outputs.kind, &outputs.length, &outputs.data);
    expect_text(line_.text, {status, outputs.kind, outputs.length, outputs.data});
    settle(report_);
}

void ConversionMistakes::print_to_odd_address()
{
    report_.situation(in_mode(mode()) + ", block at an odd address");
    Guarded value(native_);
    host_.begin();
    ++mistakes_made;
    void *block = host_.lend(answering_.buffer, Place::odd);
    const Converted result = print(subject_, value, size_of(native_), mode(), block, report_);
    report_.require(answering_.has(always_takes) || result.data == block, "another block was delivered");
    expect_text(line_.text, result);
    settle(report_);
}

/// A value of the wrong length is not looked at.
void ConversionMistakes::check_lengths()
{
    const std::array<std::uint16_t, 2> &told_sizes = subject_.expect.checked;
    const auto own_size = static_cast<std::uint32_t>(subject_.script_size());
    for (std::uint32_t length = 0; length <= 1400; ++length) {
        const std::uint32_t tried = length == 1400 ? longest : length;
        if (told_sizes[0] == 0 ? tried == own_size : std::ranges::find(told_sizes, tried) != told_sizes.end())
            continue;
        report_.situation(told(tried));
        ++mistakes_made;
        report_.same_status(subject_.passed_on(SYSDT_ERR_LENGTH),
                            subject_.check(forbidden_address(), 0, tried, forbidden_address()));
    }
}

void ConversionMistakes::compare_lengths()
{
    const Bytes first = to_native(subject_.form(), line_.bytes);
    const Bytes second = to_native(subject_.form(), line_.result.value());
    const std::uint32_t right = size_of(first);
    const auto compare = [&](const Bytes &a, const Bytes &b, std::uint32_t length) {
        const Guarded one(a);
        const Guarded other(b);
        return subject_.compare(nullptr, length, one.constant(), other.constant());
    };
    for (const std::uint32_t length : {std::uint32_t{0}, right / 2, right - 1, right + 1, longest}) {
        const Reads reads = subject_.expect.compare;
        const bool lies = length > right && (reads == Reads::bytes || right < subject_.script_size());
        report_.situation(told(length));
        if (right == 0 || reads == Reads::nothing || reads == Reads::by_rows || lies)
            continue;
        ++mistakes_made;
        const Bytes a = resized(first, std::min(length, right));
        const Bytes b = resized(second, std::min(length, right));
        std::int32_t due = 0;
        if (reads == Reads::bytes) {
            due = (a > b) - (a < b);
            report_.require(due == compare(a, b, length), "the order is another");
        } else if (reads == Reads::at_most) {
            due = compare(resized(a, right), resized(b, right), right);
            report_.require(due == compare(a, b, length), "the order is another than with zeros behind");
        } else {
            report_.require(line_.status == compare(first, second, length), "the order depends on the length");
        }
    }
}

void make_mistakes(const Line &line, const Subject &subject, Report &report)
{
    ConversionMistakes mistakes(line, subject, report);
    switch (line.verb) {
    case Verb::in:
    case Verb::bad: mistakes.parse_lengths(); return mistakes.parse_over_text();
    case Verb::out:
    case Verb::bare:
        mistakes.print_lengths();
        mistakes.print_over_value();
        return mistakes.print_to_odd_address();
    case Verb::copy: return mistakes.print_lengths();
    case Verb::check: return mistakes.check_lengths();
    case Verb::cmp: return mistakes.compare_lengths();
    default: return;
    }
}

TEST(Mistakes, OfLengthsAndBlocks)
{
    check_every_line([&](const Line &line, const Subject &subject, Report &report) {
        const std::string fault = memory_fault([&] { make_mistakes(line, subject, report); });
        report.require(fault.empty(), fault);
    });
}

} // namespace

} // namespace bgpdt::test

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const int failed = RUN_ALL_TESTS();
    std::printf("proved: %zu mistakes of callers answered as they should be\n", bgpdt::test::mistakes_made);
    return failed;
}
