// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What FormatOut prints, copies, skips and refuses.
#include <algorithm>

#include "conversion.hpp"
#include "facts.hpp"

namespace bgpdt::test {

namespace {

class PrintFact {
public:
    PrintFact(const Line &line, const Subject &subject, Report &report)
        : line_(line), subject_(subject), report_(report), native_(shown_to_native(subject.form(), line.bytes)),
          answering_(subject.answering(line.bytes))
    {
        if (line.result)
            copy_ = copy_to_native(subject.form(), *line.result);
    }

    void printed();
    void refused();

private:
    bool named(std::uint8_t mode) const { return std::ranges::find(line_.modes, mode) != line_.modes.end(); }
    bool is_text() const { return line_.verb == Verb::out || line_.verb == Verb::bare; }
    bool same_text_in(std::uint8_t mode) const;
    std::size_t block_size() const;
    std::uint32_t length() const { return static_cast<std::uint32_t>(native_.size()); }

    void expect_printed(std::uint8_t mode, Verb verb);
    void expect_block(const Converted &result, Verb verb);
    void expect_skipped(std::uint8_t mode);
    void expect_status(std::uint8_t mode, std::uint32_t status);
    void expect_failure(std::uint8_t mode);
    void expect_fate(const Converted &result, void *lent);
    void expect_kind_and_length(const Converted &result, bool cleared);
    void null_pointers(std::uint8_t mode);
    void any_length(std::uint8_t mode);
    void other_modes();
    void other_mode(std::uint8_t mode, char letter);

    const Line &line_;
    const Subject &subject_;
    Report &report_;
    const Bytes native_;
    Bytes copy_;
    const Expectation &answering_;
    AttackHost &host_ = AttackHost::instance();
};

void PrintFact::printed()
{
    for (const std::uint8_t mode : line_.modes) {
        if (line_.verb == Verb::skip)
            expect_skipped(mode);
        else
            expect_printed(mode, line_.verb);
        null_pointers(mode);
        if (is_text() && subject_.expect.has(whole_value) && native_.size() >= subject_.length)
            any_length(mode);
    }
    other_modes();
}

void PrintFact::refused()
{
    for (const std::uint8_t mode : line_.modes) {
        expect_failure(mode);
        null_pointers(mode);
    }
    other_modes();
}

/// The types that print mode 2 apart promise nothing about one side from the other.
bool PrintFact::same_text_in(std::uint8_t mode) const
{
    return !answering_.has(apart_in_mode_2) ||
           std::ranges::any_of(line_.modes, [&](std::uint8_t known) { return (known == 2) == (mode == 2); });
}

std::size_t PrintFact::block_size() const
{
    return line_.verb == Verb::copy && !answering_.has(always_takes) ? native_.size() : answering_.buffer;
}

void PrintFact::expect_printed(std::uint8_t mode, Verb verb)
{
    for (const Place place : {Place::end, Place::odd}) {
        report_.situation(in_mode(mode) + (place == Place::end ? "" : ", value at an odd address"));
        Guarded value(native_, place);
        host_.begin();
        const Converted result = print(subject_, value, length(), mode, nullptr, report_);
        if (report_.same_status(SYSDT_OK, result.status))
            expect_block(result, verb);
        settle(report_);
    }
    report_.situation(in_mode(mode) + ", value at an odd address, caller's block");
    Guarded value(native_, Place::odd);
    host_.begin();
    void *lent = host_.lend(block_size());
    const Converted result = print(subject_, value, length(), mode, lent, report_);
    if (report_.same_status(SYSDT_OK, result.status)) {
        report_.require((result.data == lent) != answering_.has(always_takes), "the wrong block was delivered");
        expect_block(result, verb);
    }
    settle(report_);
}

void PrintFact::expect_block(const Converted &result, Verb verb)
{
    const std::size_t size = verb == Verb::copy ? copy_.size() : line_.text.size() + (verb == Verb::out ? 1 : 0);
    const std::uint16_t copy_kind = answering_.has(always_takes) ? subject_.kind : std::uint16_t{SYSDT_KIND_BINARY};
    report_.same<std::uint32_t>("out kind", verb == Verb::out ? std::uint16_t{SYSDT_KIND_STRING} : copy_kind,
                                result.kind);
    report_.same<std::uint32_t>("out length", static_cast<std::uint32_t>(size), result.length);
    const Bytes block = delivered(result, block_size(), answering_.memory[1], report_);
    if (verb == Verb::copy) {
        const std::size_t shown = std::min(size, block.size());
        report_.same("the copy", copy_, Bytes(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(shown)));
        return;
    }
    const auto end = std::ranges::find(block, 0);
    report_.require(end != block.end(), "the text has no end");
    report_.same("the text", line_.text, std::string(block.begin(), end));
}

void PrintFact::expect_skipped(std::uint8_t mode)
{
    report_.situation(in_mode(mode));
    Guarded value(native_);
    host_.begin();
    const Converted result = print(subject_, value, length(), mode, forbidden_address(), report_);
    report_.same_status(SYSDT_OK, result.status);
    expect_nothing_delivered(result, forbidden_address(), false, report_);
    report_.same<std::uint32_t>("the number of blocks", 0, static_cast<std::uint32_t>(host_.requests()));
    settle(report_);
}

/// A mode that the screen refuses.
void PrintFact::expect_status(std::uint8_t mode, std::uint32_t status)
{
    report_.situation(in_mode(mode));
    Guarded value(native_);
    host_.begin();
    const Converted result = print(subject_, value, length(), mode, forbidden_address(), report_);
    report_.same_status(status, result.status);
    expect_nothing_delivered(result, forbidden_address(), answering_.has(clears_first), report_);
    report_.same<std::uint32_t>("the number of blocks", 0, static_cast<std::uint32_t>(host_.requests()));
    settle(report_);
}

void PrintFact::expect_failure(std::uint8_t mode)
{
    const char letter = answering_.out_letter(mode);
    const bool cleared = answering_.has(clears_first) || (answering_.has(clears_late) && letter == 't');
    for (const bool lends : {false, true}) {
        report_.situation(in_mode(mode) + (lends ? ", caller's block" : ""));
        Guarded value(native_);
        host_.begin();
        void *lent = lends ? host_.lend(block_size()) : nullptr;
        const Converted result = print(subject_, value, length(), mode, lent, report_);
        report_.same_status(static_cast<std::uint32_t>(line_.status), result.status);
        report_.same<std::uint32_t>("out kind", cleared ? 0 : Outputs::untouched_kind, result.kind);
        report_.same<std::uint32_t>("out length", cleared ? 0 : Outputs::untouched_length, result.length);
        expect_fate(result, lent);
        settle(report_);
    }
}

void PrintFact::expect_fate(const Converted &result, void *lent)
{
    const bool took = host_.requests() > 0;
    const void *kept = line_.fate == Fate::released ? nullptr : lent;
    if (line_.fate == Fate::back && lent == nullptr) {
        if (report_.require(host_.find(result.data) != nullptr, "no block was handed back")) {
            const Converted whole{result.status, result.kind, 0, result.data};
            static_cast<void>(delivered(whole, block_size(), answering_.memory[1], report_));
        }
        return;
    }
    report_.same<const void *>("out data", kept, result.data);
    report_.require(lent == nullptr || (host_.find(lent) != nullptr) == (kept != nullptr),
                    kept != nullptr ? "the caller's block was released" : "the caller's block was not released");
    report_.require(line_.fate == Fate::none ? !took : took || lent != nullptr,
                    took ? "a block was taken" : "no block was taken");
}

void PrintFact::null_pointers(std::uint8_t mode)
{
    for (const Null null : every_null) {
        for (const std::uint8_t tried : {mode, std::uint8_t{255}}) {
            report_.situation(in_mode(tried) + ", null pointer " + std::to_string(static_cast<int>(null)));
            Guarded value(native_);
            host_.begin();
            const Converted result = print(subject_, value, length(), tried, nullptr, report_, null);
            report_.same_status(SYSDT_ERR_NULL_PTR, result.status);
            expect_nothing_delivered(result, nullptr, false, report_);
            settle(report_);
        }
    }
}

void PrintFact::any_length(std::uint8_t mode)
{
    report_.situation(in_mode(mode) + ", told another length");
    Guarded value(native_);
    host_.begin();
    const Converted result = print(subject_, value, 0, mode, nullptr, report_);
    if (report_.same_status(SYSDT_OK, result.status))
        expect_block(result, line_.verb);
    settle(report_);
}

void PrintFact::other_modes()
{
    for (int number = 0; number < 256; ++number) {
        const auto mode = static_cast<std::uint8_t>(number);
        if (!named(mode))
            other_mode(mode, answering_.out_letter(mode));
    }
}

void PrintFact::other_mode(std::uint8_t mode, char letter)
{
    switch (letter) {
    case 'f': return expect_status(mode, subject_.passed_on(SYSDT_ERR_FAIL));
    case 'u': return expect_status(mode, subject_.passed_on(SYSDT_ERR_UNSUPPORTED));
    case 's': return expect_skipped(mode);
    case 't':
    case 'b':
        if (is_text() && same_text_in(mode))
            expect_printed(mode, letter == 't' ? Verb::out : Verb::bare);
        return;
    default: return;
    }
}

} // namespace

void check_print(const Line &line, const Subject &subject, Report &report)
{
    PrintFact(line, subject, report).printed();
}

void check_noprint(const Line &line, const Subject &subject, Report &report)
{
    PrintFact(line, subject, report).refused();
}

} // namespace bgpdt::test
