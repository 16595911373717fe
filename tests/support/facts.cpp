// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "facts.hpp"

#include <algorithm>

#include "conversion.hpp"

namespace bgpdt::test {

namespace {

void check_verb(const Line &line, const Subject &subject, Report &report)
{
    switch (line.verb) {
    case Verb::in:
    case Verb::bad: return check_parse(line, subject, report);
    case Verb::out:
    case Verb::bare:
    case Verb::copy:
    case Verb::skip: return check_print(line, subject, report);
    case Verb::noout: return check_noprint(line, subject, report);
    case Verb::check: return check_check(line, subject, report);
    case Verb::cmp: return check_compare(line, subject, report);
    case Verb::set:
    case Verb::tables:
    case Verb::noset:
    case Verb::get:
    case Verb::noget: return check_script(line, subject, report);
    case Verb::swap: return check_swap(line, subject, report);
    case Verb::help:
    case Verb::nohelp: return check_help(line, subject, report);
    case Verb::fn: return check_function(line, subject, report);
    }
}

} // namespace

void check_line(const Line &line, const Subject &subject, Report &report)
{
    if (!report.require(subject.answers_to(line), "there is no such callback"))
        return;
    const std::string fault = memory_fault([&] { check_verb(line, subject, report); });
    if (!fault.empty()) {
        report.fail(fault);
        AttackHost::instance().begin();
    } else if (line.verb == Verb::check || line.verb == Verb::cmp || line.verb == Verb::swap) {
        report.require(AttackHost::instance().requests() == 0, "the host was asked for something");
    }
}

void check_check(const Line &line, const Subject &subject, Report &report)
{
    const Bytes bytes = to_native(subject.form(), line.bytes);
    const auto length = static_cast<std::uint32_t>(bytes.size());
    const auto expected = static_cast<std::uint32_t>(line.status);
    AttackHost::instance().begin();
    for (const Place place : {Place::end, Place::odd}) {
        Guarded value(bytes, place);
        report.same_status(expected, subject.check(value.constant(), 0, length, value.constant()));
        if (subject.expect.has(dispatches)) {
            report.situation("first argument null");
            report.same_status(SYSDT_ERR_NULL_PTR, subject.check(nullptr, 0, length, value.constant()));
        }
        report.situation("null pointer");
        if (!subject.expect.has(check_takes_null))
            report.same_status(SYSDT_ERR_NULL_PTR, subject.check(value.constant(), 0, length, nullptr));
        report.situation("odd address");
    }
    settle(report);
}

namespace {

std::int32_t byte_order(const Bytes &first, const Bytes &second)
{
    return first == second ? 0 : std::ranges::lexicographical_compare(first, second) ? -1 : 1;
}

bool is_order(std::int32_t result) { return result >= -1 && result <= 1; }

void same_order(std::int32_t expected, std::int32_t actual, Report &report)
{
    const auto shown = [](std::int32_t result) {
        return is_order(result) ? std::to_string(result) : status_word(static_cast<std::uint32_t>(result));
    };
    report.require(expected == actual, "the order is " + shown(actual) + ", not " + shown(expected));
}

} // namespace

void check_compare(const Line &line, const Subject &subject, Report &report)
{
    Bytes bytes[] = {line.bytes, line.result.value()};
    const auto length = static_cast<std::uint32_t>(bytes[0].size());
    if (!report.require(bytes[0].size() == bytes[1].size(), "the values differ in length"))
        return;
    std::int32_t expected = line.status;
    if (subject.expect.has(bytewise))
        report.require(byte_order(bytes[0], bytes[1]) == expected, "the line contradicts the order of the bytes");
    for (Bytes &value : bytes)
        value = to_native(subject.form(), value);
    if (subject.expect.has(bytewise))
        expected = byte_order(bytes[0], bytes[1]);
    AttackHost::instance().begin();
    for (const Place place : {Place::end, Place::odd}) {
        Guarded first(bytes[0], place);
        Guarded second(bytes[1], place);
        const auto compare = [&](const Guarded &a, const Guarded &b) {
            return subject.compare(nullptr, length, a.constant(), b.constant());
        };
        report.situation("compared");
        same_order(expected, compare(first, second), report);
        report.situation("compared the other way round");
        same_order(is_order(expected) ? -expected : expected, compare(second, first), report);
        if (subject.expect.has(compare_tests_null)) {
            report.situation("null pointer");
            const auto null = static_cast<std::int32_t>(SYSDT_ERR_NULL_PTR);
            report.require(subject.compare(nullptr, length, nullptr, second.constant()) == null &&
                               subject.compare(nullptr, length, first.constant(), nullptr) == null,
                           "not refused");
        }
    }
    settle(report);
}

void check_swap(const Line &line, const Subject &subject, Report &report)
{
    const auto native = [&](const Bytes &value) {
        return turned_like(subject.form(), line.bytes, line.result.value(), value);
    };
    const Bytes bytes[] = {native(line.bytes), native(line.result.value())};
    AttackHost::instance().begin();
    bool restored = true;
    for (const Place place : {Place::end, Place::odd}) {
        Guarded value(bytes[0], place);
        report.situation(place == Place::end ? "swap" : "swap at an odd address");
        report.same_status(SYSDT_OK, subject.endian(value.data(), 0, 0, value.data()));
        report.same("the value", bytes[1], value.bytes());
        report.same_status(SYSDT_OK, subject.endian(value.data(), 0, 0, value.data()));
        restored = restored && value.bytes() == bytes[0];
        report.require(value.intact(), "the value was written beyond its ends");
    }
    if (subject.expect.has(endian_tests_null)) {
        report.situation("null pointer");
        Guarded value(bytes[0]);
        report.same_status(SYSDT_ERR_NULL_PTR, subject.endian(nullptr, 0, 0, value.data()));
        report.same_status(SYSDT_ERR_NULL_PTR, subject.endian(value.data(), 0, 0, nullptr));
        report.same("the value", bytes[0], value.bytes());
    }
    report.situation("swap twice");
    report.require(restored || line.marked, "this is not the identity");
    report.require(!restored || !line.marked, "this is the identity, though marked !reswap");
    settle(report);
}

void check_function(const Line &line, const Subject &subject, Report &report)
{
    using Parser = std::uint32_t(char *, void *);
    auto *parser = reinterpret_cast<Parser *>(subject.symbol(line.function.c_str()));
    const std::size_t size = line.result ? line.result->size() : subject.reports(line).length;
    Guarded text(std::span(reinterpret_cast<const std::uint8_t *>(line.text.data()), line.text.size() + 1));
    Guarded value(size, Place::end, 0);
    AttackHost::instance().begin();
    report.situation("null pointer");
    report.same_status(SYSDT_ERR_NULL_PTR, parser(nullptr, value.data()));
    report.same_status(SYSDT_ERR_NULL_PTR, parser(reinterpret_cast<char *>(text.data()), nullptr));
    report.same("the value", Bytes(size), value.bytes());
    report.situation("");
    report.same_status(static_cast<std::uint32_t>(line.status),
                       parser(reinterpret_cast<char *>(text.data()), value.data()));
    if (line.result)
        report.same("the value", *line.result, subject.parsed_to_target(value.bytes()));
    report.require(text.intact(), "the text was written beyond its ends");
    report.require(value.intact(), "the value was written beyond its ends");
    settle(report);
}

} // namespace bgpdt::test
