// SPDX-License-Identifier: Apache-2.0
/// @file
/// What callers may do wrong with lengths and blocks, for every vector line. Null pointers, modes and odd addresses are
/// checked with the lines themselves.
#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <set>
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

/// How a Compare treats the length that it is told.
enum class Reads {
    nothing, ///< there is none, or it is the host's
    bytes,   ///< it compares as many bytes
    at_most, ///< it reads no more than that, and zeros in place of what is missing
    whole,   ///< it reads the whole values
    by_rows, ///< as the rows do that it asks
};

/// What a type answers to wrong lengths.
struct LengthRow {
    std::string_view name;
    std::initializer_list<std::uint32_t> sizes; ///< what Check takes; none: there is no Check
    std::uint32_t refusal;                      ///< of any other size
    Reads compare;
};

constexpr std::uint32_t length_error = SYSDT_ERR_LENGTH;
constexpr std::uint32_t by_dispatch = SYSDT_ERR_INVALID_VALUE;

const LengthRow length_rows[] = {
    {"ASNUM", {8}, length_error, Reads::nothing},
    {"ASNUMEXT", {8}, length_error, Reads::nothing},
    {"ASNUM_ENHANCE", {1280}, length_error, Reads::nothing},
    {"COMMUNITY", {8}, length_error, Reads::bytes},
    {"CMNTY_ENHANCE", {160}, length_error, Reads::nothing},
    {"LARGECOMMUNITY", {16}, length_error, Reads::bytes},
    {"EXTCOMMUNITY", {12}, length_error, Reads::bytes},
    {"EXTCOMMUNITY_BW", {12}, length_error, Reads::bytes},
    {"VRFRD", {12}, length_error, Reads::bytes},
    {"VRFRT", {12}, length_error, Reads::bytes},
    {"SOO", {12}, length_error, Reads::bytes},
    {"VRFRTV6", {24}, length_error, Reads::bytes},
    {"RTPRD", {10}, length_error, Reads::bytes},
    {"VPNID", {8}, length_error, Reads::whole},
    {"BOLRD", {16}, by_dispatch, Reads::by_rows},
    {"BOLPREFIX", {27, 89}, by_dispatch, Reads::by_rows},
    {"EVNPREFIX", {89}, length_error, Reads::at_most},
    {"L2VPNPREFIX", {89}, length_error, Reads::at_most},
    {"VPNV4MCPREFIX", {89}, length_error, Reads::bytes},
    {"MDTPREFIX", {89}, length_error, Reads::bytes},
    {"BGPLSPREFIX", {224}, length_error, Reads::bytes},
    {"ATTRIDBITMAP", {32}, length_error, Reads::bytes},
    {"TIME_RANGE", {}, 0, Reads::nothing},
    {"SID_STRUCTURE", {}, 0, Reads::nothing},
    {"CVRFNAME", {}, 0, Reads::nothing},

    {"IPV4", {89}, length_error, Reads::at_most},
    {"EVN", {89}, length_error, Reads::at_most},
    {"NG_TYPE_2", {89}, length_error, Reads::at_most},
    {"NG_TYPE_3", {89}, length_error, Reads::at_most},
    {"NG_TYPE_4_2", {89}, length_error, Reads::at_most},
    {"NG_TYPE_4-3", {89}, length_error, Reads::at_most},
    {"NG_TYPE_5", {89}, length_error, Reads::at_most},
    {"NG_TYPE_6", {89}, length_error, Reads::at_most},
    {"VRFRTEXT", {89}, length_error, Reads::bytes},
    {"L2VPN", {89}, length_error, Reads::at_most},
    {"VPNV4MCAST", {89}, length_error, Reads::bytes},
    {"MDT", {89}, length_error, Reads::bytes},
    {"RPD", {27}, length_error, Reads::bytes},
    {"NG_TYPE_4-1", {89}, length_error, Reads::at_most},
    {"SRPOLICY", {89}, length_error, Reads::bytes},
    {"IPV6", {89}, length_error, Reads::at_most},
    {"SD-WAN", {89}, length_error, Reads::bytes},
    {"RD:RT", {16}, length_error, Reads::bytes},
};

const LengthRow *length_row(std::string_view name)
{
    const auto *found = std::ranges::find(length_rows, name, &LengthRow::name);
    return found == std::end(length_rows) ? nullptr : found;
}

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
    const LengthRow *row = length_row(subject_.name);
    for (std::uint32_t length = 0; length <= 1400; ++length) {
        const std::uint32_t tried = length == 1400 ? longest : length;
        if (std::ranges::find(row->sizes, tried) == row->sizes.end()) {
            report_.situation(told(tried));
            ++mistakes_made;
            report_.same_status(row->refusal, subject_.check(forbidden_address(), 0, tried, forbidden_address()));
        }
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
        const Reads reads = length_row(subject_.name)->compare;
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
    std::set<std::string> known;
    check_every_line([&](const Line &line, const Subject &subject, Report &report) {
        known.insert(subject.name);
        if (report.require(length_row(subject.name) != nullptr, "nothing is told of wrong lengths")) {
            const std::string fault = memory_fault([&] { make_mistakes(line, subject, report); });
            report.require(fault.empty(), fault);
        }
    });
    for (const LengthRow &row : length_rows)
        EXPECT_TRUE(known.contains(std::string(row.name))) << row.name << " is no subject of any line";
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
