// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What LuaSet stores in script tables and LuaGet reads from them.
#include <algorithm>

#include "conversion.hpp"
#include "facts.hpp"
#include "script_call.hpp"

namespace bgpdt::test {

namespace {

class ScriptFact {
public:
    ScriptFact(const Line &line, const Subject &subject, Report &report)
        : line_(line), subject_(subject), report_(report), form_(subject.form()), native_(to_native(form_, line.bytes))
    {
    }

    void set();
    void tables();
    void noset();
    void get();
    void noget();

private:
    void expect_set(Index index, Place place);
    void expect_get(Index index, Place place);
    void refused_sets();
    void refused_gets();
    void nameless_set();
    void nameless_get();
    void expect_stack(const Script &script, const ScriptValue &target);
    bool reads_back(Script &script);
    bool survives_scripts();
    void expect_mark(bool holds);
    /// Each pointer null that must not be.
    std::vector<Access> absences() const;

    const Line &line_;
    const Subject &subject_;
    Report &report_;
    const Form form_;
    const Bytes native_;
    AttackHost &host_ = AttackHost::instance();
};

std::string told(const char *what, Index index, Place place)
{
    static constexpr const char *indexes[] = {"absolute index", "index -1", "index -1 for the table below"};
    return std::string(what) + ", " + indexes[static_cast<int>(index)] +
           (place == Place::end ? "" : ", value at an odd address");
}

std::string joined(const std::vector<std::string> &words)
{
    std::string text;
    for (const std::string &word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

void ScriptFact::expect_stack(const Script &script, const ScriptValue &target)
{
    report_.require(script.height_after() == script.height_before(), "the script stack has another height");
    report_.same_table(target, script.target());
}

void ScriptFact::expect_set(Index index, Place place)
{
    report_.situation(told("set", index, place));
    const Guarded value(native_, place);
    Script script;
    host_.begin();
    report_.same_status(SYSDT_OK, set_field(subject_, script, value, {index}, report_));
    const ScriptValue expected = parent_with(line_.script);
    expect_stack(script, expected);
    std::vector<std::string> keys = host_.script_steps;
    std::erase_if(keys, [](const std::string &step) { return step.starts_with('('); });
    report_.same("the order of storing", joined(storing_order(expected)), joined(keys));
    settle(report_);
}

std::vector<Access> ScriptFact::absences() const
{
    std::vector<Access> absences{{.null_state = true}, {.null_value = true}};
    if (!subject_.expect.has(name_optional))
        absences.push_back({.name = nullptr});
    return absences;
}

/// Null pointers and a value that is one byte short.
void ScriptFact::refused_sets()
{
    const Guarded value(native_);
    for (const Access &absent : absences()) {
        report_.situation("set, null pointer");
        Script script;
        report_.same_status(SYSDT_ERR_NULL_PTR, set_field(subject_, script, value, absent, report_));
        expect_stack(script, {ScriptTable{}});
    }
    if (!subject_.expect.has(set_any_length)) {
        report_.situation("set, one byte short");
        Script script;
        const std::uint32_t status = subject_.expect.has(short_set_invalid) ? SYSDT_ERR_INVALID_VALUE : SYSDT_ERR_PARAM;
        const Guarded part(std::span{native_}.first(subject_.script_size() - 1));
        report_.same_status(status, set_field(subject_, script, part, {}, report_));
        expect_stack(script, {ScriptTable{}});
    }
}

void ScriptFact::nameless_set()
{
    if (!subject_.expect.has(name_optional))
        return;
    report_.situation("set without a name");
    const Guarded value(native_);
    Script script;
    report_.same_status(SYSDT_OK, set_field(subject_, script, value, {Index::absolute, nullptr}, report_));
    report_.require(script.height_after() == script.height_before() + 1 && same_content(script.top(), line_.script),
                    "the value is not left on the stack");
}

bool ScriptFact::reads_back(Script &script)
{
    Guarded value(native_.size(), Place::end, 0);
    if (get_field(subject_, script, value, {}, report_) != SYSDT_OK)
        return false;
    const std::size_t size = std::min(subject_.script_size(), native_.size());
    return std::ranges::equal(std::span(native_).first(size), std::span(value.constant(), size));
}

/// What a set stores, a get reads.
bool ScriptFact::survives_scripts()
{
    report_.situation("set and read again");
    const Guarded value(native_);
    Script script;
    return set_field(subject_, script, value, {}, report_) == SYSDT_OK && reads_back(script);
}

void ScriptFact::expect_mark(bool holds)
{
    report_.require(holds || line_.marked, "this is another value or fails");
    report_.require(!holds || !line_.marked, "this is the same value, though marked !reget");
}

void ScriptFact::set()
{
    if (!report_.require(native_.size() >= subject_.script_size() || subject_.expect.has(set_any_length),
                         "the value is shorter than the type's script form allows"))
        return;
    for (const Index index : {Index::absolute, Index::relative}) {
        expect_set(index, Place::end);
        expect_set(index, Place::odd);
    }
    refused_sets();
    nameless_set();
    if (subject_.lua_get != nullptr)
        expect_mark(survives_scripts());
}

/// The room of every table, and the order in which all is stored.
void ScriptFact::tables()
{
    report_.situation("set");
    const Guarded value(native_);
    Script script;
    host_.begin();
    report_.same_status(SYSDT_OK, set_field(subject_, script, value, {}, report_));
    std::vector<std::string> steps = line_.steps;
    steps.emplace_back(Access{}.name);
    report_.same("the making of the tables", joined(steps), joined(host_.script_steps));
    settle(report_);
}

void ScriptFact::noset()
{
    for (const Index index : {Index::absolute, Index::relative}) {
        report_.situation(told("set", index, Place::end));
        const Guarded value(native_);
        Script script;
        host_.begin();
        report_.same_status(static_cast<std::uint32_t>(line_.status),
                            set_field(subject_, script, value, {index}, report_));
        expect_stack(script, {ScriptTable{}});
        settle(report_);
    }
}

void ScriptFact::expect_get(Index index, Place place)
{
    report_.situation(told("get", index, place));
    Guarded value(native_.size(), place, 0);
    Script script;
    script.put_target(index == Index::below_top ? line_.script : parent_with(line_.script));
    host_.begin();
    if (report_.same_status(SYSDT_OK, get_field(subject_, script, value, {index}, report_))) {
        report_.same("the value", line_.bytes, to_target(form_, value.bytes()));
        const bool leaves = index != Index::below_top && !subject_.expect.has(get_leaves_none);
        report_.require(script.height_after() == script.height_before() + (leaves ? 1 : 0),
                        "the script stack has another height than promised");
        report_.require(!leaves || same_content(script.top(), line_.script), "the top of the stack is not the table");
    }
    settle(report_);
}

void ScriptFact::refused_gets()
{
    for (const Access &absent : absences()) {
        report_.situation("get, null pointer");
        Guarded value(native_.size(), Place::end, 0);
        Script script;
        script.put_target(parent_with(line_.script));
        report_.same_status(SYSDT_ERR_NULL_PTR, get_field(subject_, script, value, absent, report_));
        expect_stack(script, parent_with(line_.script));
    }
    report_.situation("get, one byte short");
    const std::uint32_t status = subject_.expect.has(short_get_invalid) ? SYSDT_ERR_INVALID_VALUE : SYSDT_ERR_PARAM;
    Guarded value(subject_.script_size() - 1, Place::end, 0);
    Script script;
    script.put_target(parent_with(line_.script));
    report_.same_status(status, get_field(subject_, script, value, {}, report_));
    expect_stack(script, parent_with(line_.script));
    report_.same("the value", Bytes(value.size()), value.bytes());
}

void ScriptFact::nameless_get()
{
    if (!subject_.expect.has(name_optional))
        return;
    report_.situation("get without a name");
    Guarded value(native_.size(), Place::end, 0);
    Script script;
    script.put_target(line_.script);
    report_.same_status(SYSDT_OK, get_field(subject_, script, value, {Index::relative, nullptr}, report_));
    report_.same("the value", line_.bytes, to_target(form_, value.bytes()));
    report_.require(script.height_after() == script.height_before(), "the script stack has another height");
}

void ScriptFact::get()
{
    for (const Index index : {Index::absolute, subject_.expect.has(get_pushed) ? Index::below_top : Index::relative}) {
        expect_get(index, Place::end);
        expect_get(index, Place::odd);
    }
    refused_gets();
    nameless_get();
    if (subject_.lua_set != nullptr)
        expect_mark(survives_scripts());
}

void ScriptFact::noget()
{
    report_.situation("get");
    const std::size_t size = line_.result ? line_.result->size() : subject_.script_size();
    Guarded value(size, Place::end, 0);
    Script script;
    script.put_target(parent_with(line_.script));
    host_.begin();
    report_.same_status(static_cast<std::uint32_t>(line_.status), get_field(subject_, script, value, {}, report_));
    if (line_.result)
        report_.same("the value", *line_.result, to_target(form_, value.bytes()));
    settle(report_);
}

} // namespace

void check_script(const Line &line, const Subject &subject, Report &report)
{
    ScriptFact fact(line, subject, report);
    switch (line.verb) {
    case Verb::set: return fact.set();
    case Verb::tables: return fact.tables();
    case Verb::noset: return fact.noset();
    case Verb::get: return fact.get();
    default: return fact.noget();
    }
}

} // namespace bgpdt::test
