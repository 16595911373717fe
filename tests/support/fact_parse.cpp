// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What FormatIn takes and refuses.
#include <algorithm>

#include "conversion.hpp"
#include "facts.hpp"

namespace bgpdt::test {

namespace {

class ParseFact {
public:
    ParseFact(const Line &line, const Subject &subject, Report &report)
        : line_(line), subject_(subject), report_(report), reported_(subject.reports(line)), form_(subject.form()),
          native_(to_native(form_, line.bytes)), answering_(subject.answering(line.bytes))
    {
    }

    void accepted();
    void refused();

private:
    bool named(std::uint8_t mode) const { return std::ranges::find(line_.modes, mode) != line_.modes.end(); }
    /// The text is one that the type takes in quotes only.
    bool quoted() const { return answering_.in_letter(1) == 'q' && named(1); }
    void expect_accepted(std::uint8_t mode, const std::string &text);
    void expect_refused(std::uint8_t mode, std::uint32_t status);
    void null_pointers(std::uint8_t mode);
    void expect_reprint();
    void other_modes_accepted();
    void other_modes_refused();
    bool is_printed_in(std::uint8_t mode) const;
    bool reprints(std::uint8_t mode);
    bool print_text(std::uint8_t mode, std::string &text);

    const Line &line_;
    const Subject &subject_;
    Report &report_;
    const Reported reported_;
    const Form form_;
    const Bytes native_;
    const Expectation &answering_;
    AttackHost &host_ = AttackHost::instance();
};

void ParseFact::accepted()
{
    for (const std::uint8_t mode : line_.modes) {
        expect_accepted(mode, line_.text);
        null_pointers(mode);
    }
    expect_reprint();
    other_modes_accepted();
}

void ParseFact::refused()
{
    for (const std::uint8_t mode : line_.modes) {
        expect_refused(mode, static_cast<std::uint32_t>(line_.status));
        null_pointers(mode);
    }
    other_modes_refused();
}

void ParseFact::expect_accepted(std::uint8_t mode, const std::string &text)
{
    report_.situation(in_mode(mode));
    host_.begin();
    const Converted result = parse(subject_, text, mode, report_);
    if (report_.same_status(SYSDT_OK, result.status)) {
        report_.same<std::uint32_t>("out kind", reported_.kind, result.kind);
        report_.same<std::uint32_t>("out length", reported_.length, result.length);
        const Bytes value = delivered(result, reported_.length, answering_.memory[0], report_);
        report_.same("the value", line_.bytes, to_target(form_, value));
    }
    settle(report_);
}

void ParseFact::expect_refused(std::uint8_t mode, std::uint32_t status)
{
    report_.situation(in_mode(mode));
    host_.begin();
    const Converted result = parse(subject_, line_.text, mode, report_);
    report_.same_status(status, result.status);
    expect_nothing_delivered(result, forbidden_address(), false, report_);
    settle(report_);
}

void ParseFact::null_pointers(std::uint8_t mode)
{
    for (const Null null : every_null) {
        for (const std::uint8_t tried : {mode, std::uint8_t{255}}) {
            if (subject_.expect.has(inert_in))
                return;
            report_.situation(in_mode(tried) + ", null pointer " + std::to_string(static_cast<int>(null)));
            host_.begin();
            const Converted result = parse(subject_, line_.text, tried, report_, null);
            report_.same_status(SYSDT_ERR_NULL_PTR, result.status);
            expect_nothing_delivered(result, forbidden_address(), false, report_);
            settle(report_);
        }
    }
}

void ParseFact::other_modes_accepted()
{
    for (int number = 0; number < 256; ++number) {
        const auto mode = static_cast<std::uint8_t>(number);
        if (named(mode))
            continue;
        switch (answering_.in_letter(mode)) {
        case 'p':
            if (quoted())
                expect_refused(mode, subject_.expect.unparsed);
            else
                expect_accepted(mode, line_.text);
            break;
        case 'f': expect_refused(mode, subject_.passed_on(SYSDT_ERR_FAIL)); break;
        default: expect_refused(mode, subject_.passed_on(SYSDT_ERR_UNSUPPORTED)); break;
        }
    }
}

void ParseFact::other_modes_refused()
{
    const Expectation &expect = subject_.expect;
    const bool unparsed =
        std::ranges::any_of(line_.modes, [&](std::uint8_t mode) { return expect.in_letter(mode) == 'p'; });
    for (int number = 0; number < 256 && !expect.in.empty(); ++number) {
        const auto mode = static_cast<std::uint8_t>(number);
        const char letter = expect.in_letter(mode);
        if (named(mode))
            continue;
        if (letter == 'f')
            expect_refused(mode, subject_.passed_on(SYSDT_ERR_FAIL));
        else if (letter == 'u')
            expect_refused(mode, subject_.passed_on(SYSDT_ERR_UNSUPPORTED));
        else if (letter == 'p' && unparsed)
            expect_refused(mode, static_cast<std::uint32_t>(line_.status));
    }
}

bool ParseFact::print_text(std::uint8_t mode, std::string &text)
{
    Guarded value(native_);
    host_.begin();
    const Converted result = print(subject_, value, static_cast<std::uint32_t>(native_.size()), mode, nullptr, report_);
    if (result.status != SYSDT_OK || result.length == 0)
        return false;
    const Bytes block = delivered(result, answering_.buffer, answering_.memory[1], report_);
    const std::size_t length = result.kind == SYSDT_KIND_STRING ? result.length - 1U : result.length;
    text.assign(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(std::min(length, block.size())));
    settle(report_);
    return true;
}

bool ParseFact::is_printed_in(std::uint8_t mode) const
{
    const char letter = answering_.out_letter(mode);
    return subject_.format_out != nullptr && (letter == 't' || letter == 'b');
}

/// Parsing what is printed gives the value back, and printing that the text.
bool ParseFact::reprints(std::uint8_t mode)
{
    std::string printed;
    if (!print_text(mode, printed))
        return false;
    host_.begin();
    const Converted result = parse(subject_, printed, mode, report_);
    const Bytes value = host_.collect(result.data).value_or(Bytes{});
    settle(report_);
    std::string reprinted;
    return result.status == SYSDT_OK && value == native_ && print_text(mode, reprinted) && reprinted == printed;
}

void ParseFact::expect_reprint()
{
    bool printed = false;
    bool broken = false;
    for (const std::uint8_t mode : line_.modes) {
        report_.situation("printed and parsed again in " + in_mode(mode));
        if (is_printed_in(mode)) {
            printed = true;
            broken = !reprints(mode) || broken;
        }
    }
    report_.situation("printed and parsed again");
    report_.require(!broken || line_.marked, "this is another value, text, or a failure");
    report_.require(broken || !printed || !line_.marked, "this is the same, though marked !reprint");
}

} // namespace

void check_parse(const Line &line, const Subject &subject, Report &report)
{
    ParseFact fact(line, subject, report);
    if (line.verb == Verb::in)
        fact.accepted();
    else
        fact.refused();
}

} // namespace bgpdt::test
