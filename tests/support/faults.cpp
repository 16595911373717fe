// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "faults.hpp"

#include "attack_host.hpp"
#include "conversion.hpp"

namespace bgpdt::test {

namespace {

/// A parser fails as it does with a text that it cannot read.
void inject_into_function(const Line &line, const Subject &subject, Report &report, FaultCount &count)
{
    using Parser = std::uint32_t(char *, void *);
    auto *parser = reinterpret_cast<Parser *>(subject.symbol(line.function.c_str()));
    const auto call = [&](Failing failing, Report &told) {
        Guarded text(std::span(reinterpret_cast<const std::uint8_t *>(line.text.data()), line.text.size() + 1));
        Guarded value(line.result ? line.result->size() : subject.reports(line).length, Place::end, 0);
        AttackHost::instance().begin(failing);
        told.same_status(failing.first == 0 ? static_cast<std::uint32_t>(line.status) : SYSDT_ERR_FAIL,
                         parser(reinterpret_cast<char *>(text.data()), value.data()));
        settle(told, count);
        return AttackHost::instance().requests();
    };
    fail_in_turn("", call, report, count);
}

void inject_by_verb(const Line &line, const Subject &subject, Report &report, FaultCount &count)
{
    switch (line.verb) {
    case Verb::in:
    case Verb::bad: return inject_into_parse(line, subject, report, count);
    case Verb::out:
    case Verb::bare:
    case Verb::copy:
    case Verb::noout: return inject_into_print(line, subject, report, count);
    case Verb::help: return inject_into_help(line, subject, report, count);
    case Verb::set:
    case Verb::noset:
    case Verb::get:
    case Verb::noget: return inject_into_script(line, subject, report, count);
    case Verb::fn: return inject_into_function(line, subject, report, count);
    case Verb::tables: // the lines of set tell what becomes of a LuaSet
    case Verb::skip:
    case Verb::nohelp:
    case Verb::check:
    case Verb::cmp:
    case Verb::swap: return; // these ask the host for nothing
    }
}

} // namespace

void fail_in_turn(const std::string &situation, const FaultyCall &call, Report &report, FaultCount &count)
{
    report.situation(situation);
    const std::size_t requests = call({}, report);
    for (std::size_t request = 1; request <= requests; ++request) {
        for (const bool onward : {false, true}) {
            const std::string which = situation + (situation.empty() ? "request " : ", request ") +
                                      std::to_string(request) + (onward ? " and all after it" : "") + " refused";
            Report outcome;
            outcome.situation(which);
            ++count.injected;
            call({request, onward}, outcome);
            outcome.situation(which + ", the call after that");
            call({}, outcome);
            count.handled += outcome.problems().empty() ? 1 : 0;
            report.situation("");
            report.fail(outcome.problems());
        }
    }
}

void inject_faults(const Line &line, const Subject &subject, Report &report, FaultCount &count)
{
    const std::string fault = memory_fault([&] { inject_by_verb(line, subject, report, count); });
    if (!fault.empty()) {
        report.fail(fault);
        AttackHost::instance().begin();
    }
}

void settle(Report &report, FaultCount &count)
{
    count.leaked += AttackHost::instance().live();
    settle(report);
}

} // namespace bgpdt::test
