// SPDX-License-Identifier: Apache-2.0
/// @file
/// What LuaSet stores in script tables and LuaGet reads from them.
#include <algorithm>

#include "conversion.hpp"
#include "facts.hpp"
#include "script_call.hpp"

namespace bgpdt::test {

namespace {

constexpr const char *field = "field";
constexpr std::size_t engine_requests = 4; ///< how many requests of the engine are made to fail in turn

/// The arguments that may be null.
struct Absent {
    bool state = false;
    bool name = false;
    bool value = false;
};

class ScriptFact {
public:
    ScriptFact(const Line &line, const Subject &subject, Report &report)
        : line_(line), subject_(subject), report_(report), form_(subject.form()), native_(to_native(form_, line.bytes))
    {
    }

    void set();
    void noset();
    void get();
    void noget();

private:
    std::uint32_t call_set(Script &script, Index index, const Guarded &value, std::size_t length, Absent absent = {});
    std::uint32_t call_get(Script &script, Index index, Guarded &value, Absent absent = {});
    void expect_set(Index index, Place place);
    void expect_get(Index index, Place place);
    void refused_sets();
    void refused_gets();
    void nameless_set();
    void nameless_get();
    void engine_out_of_memory();
    void expect_stack(const Script &script, const ScriptValue &target);
    bool reads_back(Script &script);
    bool survives_scripts();
    void expect_mark(bool holds);

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

ScriptValue parent_with(const ScriptValue &value) { return {ScriptTable{{field, 0, value}}}; }

std::uint32_t ScriptFact::call_set(Script &script, Index index, const Guarded &value, std::size_t length, Absent absent)
{
    const void *data = absent.value ? nullptr : value.constant();
    const char *name = absent.name ? nullptr : field;
    const auto callback = [&](void *state, std::int32_t at) {
        return subject_.lua_set(absent.state ? nullptr : state, at, name, 0, static_cast<std::uint32_t>(length), data);
    };
    return script.call(index, callback, report_);
}

std::uint32_t ScriptFact::call_get(Script &script, Index index, Guarded &value, Absent absent)
{
    void *data = absent.value ? nullptr : value.data();
    const char *name = absent.name ? nullptr : field;
    const auto callback = [&](void *state, std::int32_t at) {
        return subject_.lua_get(absent.state ? nullptr : state, at, name, 0, static_cast<std::uint32_t>(value.size()),
                                data);
    };
    const std::uint32_t status = script.call(index, callback, report_);
    report_.require(value.intact(), "the value was written beyond its ends");
    return status;
}

void ScriptFact::expect_stack(const Script &script, const ScriptValue &target)
{
    report_.require(script.height_after() == script.height_before(), "the script stack has another height");
    const ScriptValue now = script.target();
    report_.require(same_content(target, now), "the table is " + to_text(now) + ", not " + to_text(target));
}

void ScriptFact::expect_set(Index index, Place place)
{
    report_.situation(told("set", index, place));
    const Guarded value(native_, place);
    Script script;
    host_.begin();
    report_.same_status(SYSDT_OK, call_set(script, index, value, native_.size()));
    const ScriptValue expected = parent_with(line_.script);
    expect_stack(script, expected);
    const auto order = [](const std::vector<std::string> &keys) {
        std::string text;
        for (const std::string &key : keys) {
            text += (text.empty() ? "" : " ") + key;
        }
        return text;
    };
    report_.same("the order of storing", order(storing_order(expected)), order(host_.stored_keys));
    settle(report_);
}

/// Null pointers and a value that is one byte short.
void ScriptFact::refused_sets()
{
    const Guarded value(native_);
    const bool name_needed = !subject_.expect.has(name_optional);
    for (const Absent absent :
         {Absent{true, false, false}, Absent{false, name_needed, !name_needed}, Absent{false, false, true}}) {
        report_.situation("set, null pointer");
        Script script;
        report_.same_status(SYSDT_ERR_NULL_PTR, call_set(script, Index::absolute, value, native_.size(), absent));
        expect_stack(script, {ScriptTable{}});
    }
    if (!subject_.expect.has(set_any_length)) {
        report_.situation("set, one byte short");
        Script script;
        const std::uint32_t status = subject_.expect.has(short_set_invalid) ? SYSDT_ERR_INVALID_VALUE : SYSDT_ERR_PARAM;
        const Guarded part(std::span{native_}.first(subject_.script_size() - 1));
        report_.same_status(status, call_set(script, Index::absolute, part, part.size()));
        expect_stack(script, {ScriptTable{}});
    }
}

void ScriptFact::nameless_set()
{
    if (!subject_.expect.has(name_optional)) {
        return;
    }
    report_.situation("set without a name");
    const Guarded value(native_);
    Script script;
    report_.same_status(SYSDT_OK, call_set(script, Index::absolute, value, native_.size(), {false, true, false}));
    report_.require(script.height_after() == script.height_before() + 1 && same_content(script.top(), line_.script),
                    "the value is not left on the stack");
}

/// The engine leaves the callback in the middle; nothing may stay taken.
void ScriptFact::engine_out_of_memory()
{
    for (std::size_t request = 1; request <= engine_requests; ++request) {
        report_.situation("engine out of memory at request " + std::to_string(request));
        const Guarded value(native_);
        Script script;
        host_.begin();
        script.run_out_at(request);
        static_cast<void>(call_set(script, Index::absolute, value, native_.size()));
        settle(report_);
    }
}

bool ScriptFact::reads_back(Script &script)
{
    Guarded value(native_.size(), Place::end, 0);
    if (call_get(script, Index::absolute, value) != SYSDT_OK) {
        return false;
    }
    const std::size_t size = std::min(subject_.script_size(), native_.size());
    return std::ranges::equal(std::span(native_).first(size), std::span(value.constant(), size));
}

/// What a set stores, a get reads.
bool ScriptFact::survives_scripts()
{
    report_.situation("set and read again");
    const Guarded value(native_);
    Script script;
    return call_set(script, Index::absolute, value, native_.size()) == SYSDT_OK && reads_back(script);
}

void ScriptFact::expect_mark(bool holds)
{
    report_.require(holds || line_.marked, "this is another value or fails");
    report_.require(!holds || !line_.marked, "this is the same value, though marked !reget");
}

void ScriptFact::set()
{
    if (!report_.require(native_.size() >= subject_.script_size() || subject_.expect.has(set_any_length),
                         "the value is shorter than the type's script form allows")) {
        return;
    }
    for (const Index index : {Index::absolute, Index::relative}) {
        expect_set(index, Place::end);
        expect_set(index, Place::odd);
    }
    refused_sets();
    nameless_set();
    engine_out_of_memory();
    if (subject_.lua_get != nullptr) {
        expect_mark(survives_scripts());
    }
}

void ScriptFact::noset()
{
    for (const Index index : {Index::absolute, Index::relative}) {
        report_.situation(told("set", index, Place::end));
        const Guarded value(native_);
        Script script;
        host_.begin();
        report_.same_status(static_cast<std::uint32_t>(line_.status), call_set(script, index, value, native_.size()));
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
    if (report_.same_status(SYSDT_OK, call_get(script, index, value))) {
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
    const bool name_needed = !subject_.expect.has(name_optional);
    for (const Absent absent :
         {Absent{true, false, false}, Absent{false, name_needed, !name_needed}, Absent{false, false, true}}) {
        report_.situation("get, null pointer");
        Guarded value(native_.size(), Place::end, 0);
        Script script;
        script.put_target(parent_with(line_.script));
        report_.same_status(SYSDT_ERR_NULL_PTR, call_get(script, Index::absolute, value, absent));
        expect_stack(script, parent_with(line_.script));
    }
    report_.situation("get, one byte short");
    const std::uint32_t status = subject_.expect.has(short_get_invalid) ? SYSDT_ERR_INVALID_VALUE : SYSDT_ERR_PARAM;
    Guarded value(subject_.script_size() - 1, Place::end, 0);
    Script script;
    script.put_target(parent_with(line_.script));
    report_.same_status(status, call_get(script, Index::absolute, value));
    expect_stack(script, parent_with(line_.script));
    report_.same("the value", Bytes(value.size()), value.bytes());
}

void ScriptFact::nameless_get()
{
    if (!subject_.expect.has(name_optional)) {
        return;
    }
    report_.situation("get without a name");
    Guarded value(native_.size(), Place::end, 0);
    Script script;
    script.put_target(line_.script);
    report_.same_status(SYSDT_OK, call_get(script, Index::relative, value, {false, true, false}));
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
    if (subject_.lua_set != nullptr) {
        expect_mark(survives_scripts());
    }
}

void ScriptFact::noget()
{
    report_.situation("get");
    const std::size_t size = line_.result ? line_.result->size() : subject_.script_size();
    Guarded value(size, Place::end, 0);
    Script script;
    script.put_target(parent_with(line_.script));
    host_.begin();
    report_.same_status(static_cast<std::uint32_t>(line_.status), call_get(script, Index::absolute, value));
    if (line_.result) {
        report_.same("the value", *line_.result, to_target(form_, value.bytes()));
    }
    settle(report_);
}

} // namespace

void check_script(const Line &line, const Subject &subject, Report &report)
{
    ScriptFact fact(line, subject, report);
    switch (line.verb) {
    case Verb::set: return fact.set();
    case Verb::noset: return fact.noset();
    case Verb::get: return fact.get();
    default: return fact.noget();
    }
}

} // namespace bgpdt::test
