// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// LuaSet and LuaGet in an engine that runs out of memory. The engine collects its garbage and asks again when it is
/// refused: a refusal alone goes unnoticed, one with all after it leaves the callback by a script error.
#include <algorithm>

#include "attack_host.hpp"
#include "conversion.hpp"
#include "faults.hpp"
#include "script_call.hpp"

namespace bgpdt::test {

namespace {

class ScriptFault {
public:
    ScriptFault(const Line &line, const Subject &subject, FaultCount &count)
        : line_(line), subject_(subject), sets_(line.verb == Verb::set || line.verb == Verb::noset),
          native_(to_native(subject.form(), line.bytes)), count_(count)
    {
    }

    std::size_t call(Failing failing, Report &report);

private:
    bool succeeds() const { return line_.verb == Verb::set || line_.verb == Verb::get; }
    std::size_t value_size() const;
    std::uint32_t access(Script &script, Guarded &value, Report &report);
    void expect_answer(const Script &script, std::uint32_t status, const Guarded &value, Report &report) const;
    void expect_nothing_half_done(const Script &script, const Guarded &value, Report &report) const;
    void expect_table(const Script &script, const ScriptValue &expected, Report &report) const;
    /// What the field's table holds before the call.
    ScriptValue before() const { return sets_ ? ScriptValue{ScriptTable{}} : parent_with(line_.script); }

    const Line &line_;
    const Subject &subject_;
    const bool sets_;
    const Bytes native_;
    FaultCount &count_;
    AttackHost &host_ = AttackHost::instance();
};

std::size_t ScriptFault::value_size() const
{
    if (sets_ || line_.verb == Verb::get)
        return native_.size();
    return line_.result ? line_.result->size() : subject_.script_size();
}

std::uint32_t ScriptFault::access(Script &script, Guarded &value, Report &report)
{
    host_.begin();
    const std::uint32_t status =
        sets_ ? set_field(subject_, script, value, {}, report) : get_field(subject_, script, value, {}, report);
    report.same<std::uint32_t>("the number of requests to the host", 0, static_cast<std::uint32_t>(host_.requests()));
    settle(report, count_);
    return status;
}

void ScriptFault::expect_table(const Script &script, const ScriptValue &expected, Report &report) const
{
    report.same_table(expected, script.target());
}

void ScriptFault::expect_answer(const Script &script, std::uint32_t status, const Guarded &value, Report &report) const
{
    report.same_status(static_cast<std::uint32_t>(line_.status), status);
    expect_table(script, sets_ && succeeds() ? parent_with(line_.script) : before(), report);
    if (!sets_ && (succeeds() || line_.result))
        report.same("the value", succeeds() ? line_.bytes : *line_.result, to_target(subject_.form(), value.bytes()));
}

/// A value is stored as a whole or not at all; one that is read is filled field by field.
void ScriptFault::expect_nothing_half_done(const Script &script, const Guarded &value, Report &report) const
{
    expect_table(script, before(), report);
    if (line_.verb == Verb::get) {
        const Bytes left = to_target(subject_.form(), value.bytes());
        const bool of_the_value = std::ranges::equal(
            left, line_.bytes, [](std::uint8_t byte, std::uint8_t final) { return byte == 0 || byte == final; });
        report.require(of_the_value, "what is left of the value is " + show(left));
    }
}

std::size_t ScriptFault::call(Failing failing, Report &report)
{
    Script script;
    script.put_target(before());
    Guarded value(value_size(), Place::end, 0);
    if (sets_)
        std::ranges::copy(native_, value.data());
    script.fail(failing);
    const std::uint32_t status = access(script, value, report);
    if (script.left()) {
        report.require(failing.onward, "the callback was left though the engine had memory");
        expect_nothing_half_done(script, value, report);
    } else {
        expect_answer(script, status, value, report);
    }
    const std::size_t requests = script.requests();
    if (failing.first != 0) {
        script.fail({});
        Guarded again(native_.empty() || !sets_ ? Guarded(value_size(), Place::end, 0) : Guarded(native_));
        const std::uint32_t next = access(script, again, report);
        expect_answer(script, next, again, report);
    }
    return requests;
}

} // namespace

void inject_into_script(const Line &line, const Subject &subject, Report &report, FaultCount &count)
{
    ScriptFault fault(line, subject, count);
    const auto call = [&](Failing failing, Report &told) { return fault.call(failing, told); };
    fail_in_turn("the engine", call, report, count);
}

} // namespace bgpdt::test
