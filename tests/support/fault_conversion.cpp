// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// FormatIn, FormatOut and Help in a host that refuses them memory, help records and symbol help.
#include <algorithm>
#include <span>

#include "attack_host.hpp"
#include "conversion.hpp"
#include "faults.hpp"

namespace bgpdt::test {

namespace {

/// The rows that the stand-ins for a dispatching type's callbacks walk.
std::span<const SYSDT_DispatchRow> rows_in_turn;

std::uint32_t parse_in_turn(SYSDT_Context *context, std::uint32_t unused, std::uint32_t text_length, char *text,
                            std::uint16_t *out_kind, std::uint16_t *out_length, void **out_data)
{
    const auto takes = [&](const SYSDT_DispatchRow &row) {
        return row.formatIn != nullptr &&
               row.formatIn(context, unused, text_length, text, out_kind, out_length, out_data) == SYSDT_OK;
    };
    return std::ranges::any_of(rows_in_turn, takes) ? SYSDT_OK : SYSDT_ERR_INVALID_VALUE;
}

std::uint32_t help_in_turn(SYSDT_Context *context, std::uint32_t unused, std::uint32_t unused_too, const void *fourth,
                           const SYSDT_HelpRequest *request, SYSDT_HelpInfo *info)
{
    const auto helps = [&](const SYSDT_DispatchRow &row) {
        return row.help(context, unused, unused_too, fourth, request, info) == SYSDT_OK;
    };
    return std::ranges::any_of(rows_in_turn, helps) ? SYSDT_OK : SYSDT_ERR_INVALID_VALUE;
}

/// What is due from a dispatching type: the answer of the first of its rows that succeeds in the same host.
Subject by_rows(const Subject &subject)
{
    rows_in_turn = subject.rows;
    Subject model = subject;
    model.format_in = parse_in_turn;
    model.help = help_in_turn;
    return model;
}

struct ParseOutcome {
    Converted result;
    std::size_t value_request; ///< the one that the delivered block answered
    Bytes value;               ///< what was delivered, for the target
};

class ParseFault {
public:
    ParseFault(const Line &line, const Subject &subject, FaultCount &count)
        : line_(line), subject_(subject), reported_(subject.reports(line)), count_(count)
    {
    }

    std::size_t call(std::uint8_t mode, Failing failing, Report &report);

private:
    ParseOutcome outcome(const Subject &subject, std::uint8_t mode, Failing failing, Report &report);
    void expect_answer(const ParseOutcome &outcome, Report &report) const;
    void expect_no_block(const Converted &result, Report &report) const;
    void expect_as_by_rows(const ParseOutcome &outcome, std::uint8_t mode, Failing failing, Report &report);

    const Line &line_;
    const Subject &subject_;
    const Reported reported_;
    FaultCount &count_;
    AttackHost &host_ = AttackHost::instance();
    std::size_t value_request_ = 0;
};

ParseOutcome ParseFault::outcome(const Subject &subject, std::uint8_t mode, Failing failing, Report &report)
{
    host_.begin(failing);
    const Converted result = parse(subject, line_.text, mode, report);
    const std::size_t request = delivered_request(result);
    const Bytes value = host_.collect(result.data).value_or(Bytes{});
    settle(report, count_);
    return {result, request, to_target(subject.form(), value)};
}

void ParseFault::expect_answer(const ParseOutcome &outcome, Report &report) const
{
    report.same_status(static_cast<std::uint32_t>(line_.status), outcome.result.status);
    report.same("the value", line_.bytes, outcome.value);
}

/// Kind and length are reported before the block is taken, and the length then taken back.
void ParseFault::expect_no_block(const Converted &result, Report &report) const
{
    report.same_status(SYSDT_ERR_NO_MEMORY, result.status);
    report.same<std::uint32_t>("out kind", reported_.kind, result.kind);
    report.same<std::uint32_t>("out length", 0, result.length);
    report.same<const void *>("out data", subject_.expect.has(null_without_memory) ? nullptr : forbidden_address(),
                              result.data);
}

void ParseFault::expect_as_by_rows(const ParseOutcome &outcome, std::uint8_t mode, Failing failing, Report &report)
{
    const ParseOutcome due = this->outcome(by_rows(subject_), mode, failing, report);
    report.same_status(due.result.status, outcome.result.status);
    report.same<std::uint32_t>("out kind", due.result.kind, outcome.result.kind);
    report.same<std::uint32_t>("out length", due.result.length, outcome.result.length);
    report.same("the value", due.value, outcome.value);
    report.require(!outcome.value.empty() || outcome.result.data == due.result.data, "out data is another");
}

std::size_t ParseFault::call(std::uint8_t mode, Failing failing, Report &report)
{
    const ParseOutcome got = outcome(subject_, mode, failing, report);
    const std::size_t requests = host_.requests();
    if (failing.first == 0) {
        value_request_ = got.value_request;
        expect_answer(got, report);
    } else if (subject_.expect.has(dispatches)) {
        expect_as_by_rows(got, mode, failing, report);
    } else if (failing.first == value_request_) {
        expect_no_block(got.result, report);
    } else {
        report.same_status(subject_.expect.unparsed, got.result.status);
        expect_nothing_delivered(got.result, forbidden_address(), false, report);
    }
    return requests;
}

class PrintFault {
public:
    PrintFault(const Line &line, const Subject &subject, FaultCount &count)
        : line_(line), subject_(subject), answering_(subject.answering(line.bytes)),
          native_(shown_to_native(subject.form(), line.bytes)), count_(count)
    {
    }

    std::size_t call(std::uint8_t mode, bool lends, Failing failing, Report &report);

private:
    bool prints() const { return line_.verb != Verb::noout; }
    bool copies() const { return line_.verb == Verb::copy && !answering_.has(always_takes); }
    void expect_answer(const Converted &result, Report &report) const;
    void expect_no_block(const Converted &result, const void *lent, Report &report) const;

    const Line &line_;
    const Subject &subject_;
    const Expectation &answering_;
    const Bytes native_;
    FaultCount &count_;
    AttackHost &host_ = AttackHost::instance();
    std::size_t block_request_ = 0;
};

void PrintFault::expect_answer(const Converted &result, Report &report) const
{
    report.same_status(static_cast<std::uint32_t>(line_.status), result.status);
    const Block *block = host_.find(result.data);
    if (!prints() || !report.require(block != nullptr, "nothing was delivered"))
        return;
    Bytes shown = block->memory.bytes();
    if (line_.verb == Verb::copy) {
        const Bytes copy = copy_to_native(subject_.form(), line_.result.value());
        shown.resize(std::min(copy.size(), shown.size()));
        report.same("the copy", copy, shown);
    } else {
        report.same("the text", line_.text, std::string(shown.begin(), std::ranges::find(shown, 0)));
    }
}

/// The binary copy has a failure of its own and leaves the kind alone.
void PrintFault::expect_no_block(const Converted &result, const void *lent, Report &report) const
{
    const bool structured = answering_.has(always_takes);
    report.same_status(subject_.passed_on(copies() ? SYSDT_ERR_FAIL : SYSDT_ERR_NO_MEMORY), result.status);
    report.same<std::uint32_t>("out kind", copies() || structured ? Outputs::untouched_kind : 0, result.kind);
    report.same<std::uint32_t>("out length", structured ? Outputs::untouched_length : 0, result.length);
    report.same<const void *>("out data", lent, result.data);
}

std::size_t PrintFault::call(std::uint8_t mode, bool lends, Failing failing, Report &report)
{
    Guarded value(native_);
    host_.begin(failing);
    void *lent = lends ? host_.lend(copies() ? native_.size() : answering_.buffer) : nullptr;
    const Converted result = print(subject_, value, static_cast<std::uint32_t>(native_.size()), mode, lent, report);
    if (failing.first == 0) {
        expect_answer(result, report);
        // The block that a failing print has given back was taken before anything else.
        block_request_ = prints() ? delivered_request(result) : lends ? 0 : 1;
    } else if (failing.first == block_request_) {
        expect_no_block(result, lent, report);
    } else {
        // Whoever needs memory beside the block does not list what it has no memory for.
        report.same_status(SYSDT_OK, result.status);
        report.require(result.kind == 0 && result.length == 0, "kind and length are not cleared");
        report.same<const void *>("out data", lent, result.data);
    }
    static_cast<void>(host_.collect(result.data));
    settle(report, count_);
    return host_.requests();
}

struct HelpOutcome {
    std::uint32_t status;
    bool untouched;
    std::string text; ///< none if the information was cleared
};

class HelpFault {
public:
    HelpFault(const Line &line, const Subject &subject, FaultCount &count)
        : line_(line), subject_(subject), count_(count)
    {
    }

    std::size_t call(std::uint8_t mode, Failing failing, Report &report);

private:
    HelpOutcome outcome(const Subject &subject, std::uint8_t mode, Failing failing, Report &report);
    HelpOutcome due(std::uint8_t mode, Failing failing, Report &report);

    const Line &line_;
    const Subject &subject_;
    FaultCount &count_;
    AttackHost &host_ = AttackHost::instance();
};

HelpOutcome HelpFault::outcome(const Subject &subject, std::uint8_t mode, Failing failing, Report &report)
{
    host_.begin(failing);
    Helped result = ask(subject, {mode}, report);
    const bool untouched = result.untouched();
    const bool filled = !untouched && result.info.entries != nullptr;
    const std::string text = filled ? result.text(subject, report) : "";
    settle(report, count_);
    return {result.status, untouched, text};
}

/// By what was refused last.
HelpOutcome HelpFault::due(std::uint8_t mode, Failing failing, Report &report)
{
    if (failing.first == 0)
        return {SYSDT_OK, false, line_.text};
    if (subject_.expect.has(dispatches))
        return outcome(by_rows(subject_), mode, failing, report);
    switch (host_.request(failing.first)) {
    case Request::help_record: return {subject_.expect.has(help_swallows) ? SYSDT_OK : AttackHost::refusal, true, ""};
    case Request::symbol_help: return {AttackHost::refusal, true, ""};
    case Request::memory: break;
    }
    return {SYSDT_ERR_NO_MEMORY, false, ""};
}

std::size_t HelpFault::call(std::uint8_t mode, Failing failing, Report &report)
{
    const HelpOutcome got = outcome(subject_, mode, failing, report);
    const std::size_t requests = host_.requests();
    const HelpOutcome expected = due(mode, failing, report);
    report.same_status(expected.status, got.status);
    report.require(expected.untouched == got.untouched,
                   got.untouched ? "the help information was not cleared" : "the help information was touched");
    report.same("the help", expected.text, got.text);
    return requests;
}

} // namespace

void inject_into_parse(const Line &line, const Subject &subject, Report &report, FaultCount &count)
{
    ParseFault fault(line, subject, count);
    for (const std::uint8_t mode : line.modes) {
        const auto call = [&](Failing failing, Report &told) { return fault.call(mode, failing, told); };
        fail_in_turn(in_mode(mode), call, report, count);
    }
}

void inject_into_print(const Line &line, const Subject &subject, Report &report, FaultCount &count)
{
    PrintFault fault(line, subject, count);
    for (const std::uint8_t mode : line.modes) {
        for (const bool lends : {false, true}) {
            const auto call = [&](Failing failing, Report &told) { return fault.call(mode, lends, failing, told); };
            fail_in_turn(in_mode(mode) + (lends ? ", caller's block" : ""), call, report, count);
        }
    }
}

void inject_into_help(const Line &line, const Subject &subject, Report &report, FaultCount &count)
{
    HelpFault fault(line, subject, count);
    for (const std::uint8_t mode : line.modes) {
        const auto call = [&](Failing failing, Report &told) { return fault.call(mode, failing, told); };
        fail_in_turn(in_mode(mode), call, report, count);
    }
}

} // namespace bgpdt::test
