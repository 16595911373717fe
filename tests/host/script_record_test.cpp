// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The services of script tables on a record: what it holds in the end is what an engine holds after the same calls, or
/// else it leaves them to the engine.
#include "host/script_record.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <lua.hpp>
#include <map>
#include <new>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "host/host.hpp"
#include "script_engine.hpp"

namespace {

/// What operator new gave and will give.
struct {
    int requests = 0;
    int refused_from = 0; ///< the first request that is refused, and all after it; 0 for none
} memory;

} // namespace

#pragma GCC visibility push(default) // in front of the host's, too
void *operator new(std::size_t size)
{
    ++memory.requests;
    const bool refused = memory.refused_from != 0 && memory.requests >= memory.refused_from;
    void *const block = refused ? nullptr : std::malloc(size);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void operator delete(void *block) noexcept { std::free(block); }

void operator delete(void *block, std::size_t) noexcept { std::free(block); }
#pragma GCC visibility pop

namespace {

using namespace std::string_view_literals; // with a NUL in them
using bgpdt::host::Bytes;
using bgpdt::host::Host;
using bgpdt::host::ScriptRecord;

// ------------------------------------------------------------------------------------------------ calls

enum class Service { create_table, pop, push_u32, push_i64, push_string, push_characters, set_field, set_table };

struct Call {
    Service service;
    std::int64_t number; ///< also of values, or an index
    std::string_view text;
};
using Calls = std::vector<Call>;

constexpr Call create_table{Service::create_table, 0, ""};
constexpr Call pop(std::int32_t count) { return {Service::pop, count, ""}; }
constexpr Call push(std::uint32_t number) { return {Service::push_u32, number, ""}; }
constexpr Call push_wide(std::int64_t number) { return {Service::push_i64, number, ""}; }
constexpr Call push(const char *text) { return {Service::push_string, 0, text}; }
constexpr Call push_characters(std::string_view text) { return {Service::push_characters, 0, text}; }
constexpr Call no_text{Service::push_string, 0, {}};
constexpr Call set_field(std::int32_t index, const char *key) { return {Service::set_field, index, key}; }
constexpr Call set_table(std::int32_t index) { return {Service::set_table, index, ""}; }

/// The table to store in, which is lower on a record's stack than on an engine's.
constexpr std::int32_t holder = 1;
constexpr const char *name = "value";
constexpr Call store = set_field(holder, name);

/// So many numbers from 0, of which the last is stored.
Calls pushed(std::uint32_t count)
{
    Calls calls;
    for (std::uint32_t number = 0; number < count; ++number)
        calls.push_back(push(number));
    calls.push_back(store);
    return calls;
}

void make(const Call &call, void *state, std::int32_t table)
{
    const auto number = static_cast<std::int32_t>(call.number);
    const std::int32_t index = number > 0 ? table + number - holder : number;
    switch (call.service) {
    case Service::create_table: return SYSDT_SPTI_CreateTable(state, 0, 0);
    case Service::pop: return SYSDT_SPTI_Pop(state, number);
    case Service::push_u32: return SYSDT_SPTI_PushUInt(state, static_cast<std::uint32_t>(call.number));
    case Service::push_i64: return SYSDT_SPTI_PushInt64(state, call.number);
    case Service::push_string: return SYSDT_SPTI_PushString(state, call.text.data());
    case Service::push_characters:
        return SYSDT_SPTI_PushLString(state, call.text.data(), static_cast<std::uint32_t>(call.text.size()));
    case Service::set_field: return SYSDT_SPTI_SetField(state, index, call.text.data());
    case Service::set_table: return SYSDT_SPTI_SetTable(state, index);
    }
}

// ------------------------------------------------------------------------------------------------ what comes of them

/// The values of a table, by their keys' texts.
std::string told(bool is_array, const std::vector<std::pair<std::string, std::string>> &entries)
{
    std::string text;
    for (const auto &[key, value] : entries)
        text.append(text.empty() ? "" : ", ").append(key).append("=").append(value);
    return is_array ? "[" + text + "]" : "{" + text + "}";
}

std::string told(std::string_view text) { return "'" + std::string(text) + "'"; }

std::string told(const ScriptRecord &record, const ScriptRecord::Value &value)
{
    switch (value.kind) {
    case ScriptRecord::Kind::number: return std::to_string(value.number);
    case ScriptRecord::Kind::text: return told(record.text(value));
    case ScriptRecord::Kind::table: break;
    }
    std::vector<std::pair<std::string, std::string>> entries;
    const bool is_array = record.is_array(value);
    record.each(value, [&](std::string_view key, const ScriptRecord::Value &entry) {
        entries.emplace_back(is_array ? std::to_string(entries.size() + 1) : told(key), told(record, entry));
    });
    EXPECT_EQ(record.is_empty(value), entries.empty());
    return told(is_array, entries);
}

/// Numbers are integers.
std::string told(lua_State *lua, int index)
{
    switch (lua_type(lua, index)) {
    case LUA_TNUMBER: return std::to_string(lua_tointeger(lua, index));
    case LUA_TSTRING: {
        std::size_t length = 0;
        const char *const characters = lua_tolstring(lua, index, &length);
        return told({characters, length});
    }
    case LUA_TTABLE: break;
    default: return lua_typename(lua, lua_type(lua, index));
    }
    const int table = lua_absindex(lua, index);
    const auto length = static_cast<std::size_t>(lua_rawlen(lua, table));
    std::map<std::string, std::string> entries;
    for (lua_pushnil(lua); lua_next(lua, table) != 0; lua_pop(lua, 1))
        entries.emplace(told(lua, -2), told(lua, -1));
    const bool is_array = length != 0 && length == entries.size();
    return told(is_array, {entries.begin(), entries.end()});
}

struct Outcome {
    std::uint32_t status;
    std::string value;              ///< empty where there is none
    std::vector<std::int32_t> tops; ///< of the stack after each call, above the table to store in

    bool operator==(const Outcome &) const = default;
    friend void PrintTo(const Outcome &outcome, std::ostream *out)
    {
        *out << std::hex << outcome.status << " " << outcome.value << " " << testing::PrintToString(outcome.tops);
    }
};

/// What the type does and answers: the calls, then its status.
class Run {
public:
    void begin(const Calls &calls, std::uint32_t status)
    {
        calls_ = &calls;
        status_ = status;
        made_ = 0;
    }
    /// Has no object with a destructor, since an engine may leave by longjmp.
    std::uint32_t make_all(void *state, std::int32_t table)
    {
        for (const Call &call : *calls_) {
            make(call, state, table);
            tops_[static_cast<std::size_t>(made_++)] = SYSDT_SPTI_GetTop(state) - table;
        }
        return status_;
    }
    std::vector<std::int32_t> tops() const { return {tops_.begin(), tops_.begin() + made_}; }

private:
    const Calls *calls_ = nullptr;
    std::uint32_t status_ = 0;
    std::array<std::int32_t, 1000> tops_ = {};
    std::ptrdiff_t made_ = 0;
} run;

std::uint32_t make_calls(void *state, std::int32_t table, const char *, std::uint32_t, std::uint32_t, const void *)
{
    return run.make_all(state, table);
}

constexpr std::uint8_t any_value[]{0};
constexpr std::uint32_t done = SYSDT_OK;

class Recording : public testing::Test {
protected:
    Recording() { type_.luaSet = make_calls; }

    Outcome by_engine(const Calls &calls, std::uint32_t status = done)
    {
        run.begin(calls, status);
        std::string error;
        const std::uint32_t answered = host_.push_script_value(lua_.get(), type_, any_value, error);
        Outcome outcome{answered, answered == done ? told(lua_.get(), -1) : "", run.tops()};
        lua_settop(lua_.get(), 0);
        return outcome;
    }

    std::optional<std::uint32_t> record(const Calls &calls, std::uint32_t status, ScriptRecord &into)
    {
        run.begin(calls, status);
        return host_.record_script_value(into, type_, any_value);
    }
    std::optional<std::uint32_t> record(const Calls &calls, std::uint32_t status = done)
    {
        return record(calls, status, record_);
    }

    /// Nothing where it is left to an engine.
    std::optional<Outcome> by_record(const Calls &calls, std::uint32_t status = done)
    {
        const auto answered = record(calls, status);
        if (!answered)
            return {};
        return Outcome{*answered, *answered == done ? told(record_, record_.value()) : "", run.tops()};
    }

    void expect_held(const Calls &calls, const std::string &expected)
    {
        const Outcome outcome = by_engine(calls);
        EXPECT_EQ(outcome.status, done);
        EXPECT_EQ(outcome.value, expected);
        EXPECT_EQ(by_record(calls), outcome);
    }

    Host &host() { return host_; }
    const ScriptRecord &record() const { return record_; }

private:
    Host host_{HOST_TEST_PLUGIN};
    const Engine lua_{luaL_newstate()};
    SYSDT_Record type_{};
    ScriptRecord record_;
};

TEST_F(Recording, HoldsNumbersAndTexts)
{
    expect_held({push(0u), store}, "0");
    expect_held({push(4294967295u), store}, "4294967295"); // never negative
    expect_held({push_wide(-1), store}, "-1");
    expect_held({push_wide(std::numeric_limits<std::int64_t>::min()), store}, "-9223372036854775808");
    expect_held({push_wide(std::numeric_limits<std::int64_t>::max()), store}, "9223372036854775807");
    expect_held({push("vpn1"), store}, "'vpn1'");
    expect_held({push(""), store}, "''");
    expect_held({push_characters("a\0b"sv), store}, std::string("'a\0b'", 5));
    expect_held({push_characters(""), store}, "''");
    expect_held({push_characters({}), store}, "''");
    expect_held({push("7"), store}, "'7'"); // is no number
}

TEST_F(Recording, HoldsTablesByName)
{
    expect_held({create_table, store}, "{}");
    const Calls fields{create_table, push(1u), set_field(-2, "b"), push("x"), set_field(2, "a"), store};
    expect_held(fields, "{'a'='x', 'b'=1}");
    expect_held({create_table, push(1u), set_field(-2, "ab"), push(2u), set_field(-2, "a"), push(3u), set_field(-2, ""),
                 push(4u), set_field(-2, "a_b"), push(5u), set_field(-2, "\xff"), store},
                "{''=3, 'a'=2, 'a_b'=4, 'ab'=1, '\xff'=5}");
    expect_held({create_table, create_table, create_table, set_field(3, "deepest"), set_field(2, "deeper"), store},
                "{'deeper'={'deepest'={}}}");
}

TEST_F(Recording, HoldsArrays)
{
    expect_held({create_table, push(1u), push("x"), set_table(-3), push(2u), push_wide(-5), set_table(2), store},
                "[1='x', 2=-5]");
    expect_held({create_table, push(1u), create_table, push(9u), set_field(-2, "a"), set_table(-3), store},
                "[1={'a'=9}]");
    expect_held({create_table, create_table, push(1u), push(7u), set_table(-3), set_field(-2, "list"), store},
                "{'list'=[1=7]}");
    expect_held({create_table, push_wide(1), push(7u), set_table(-3), store}, "[1=7]");
}

/// As types do where they look a value up first, or leave the stack as it is.
TEST_F(Recording, HoldsWhatIsStoredWhateverElseIsPushed)
{
    expect_held({push(1u), pop(1), push(2u), store}, "2");
    expect_held({push(1u), push(2u), create_table, pop(2), pop(0), store}, "1");
    expect_held({push(1u), push(2u), store}, "2"); // 1 is left behind
    expect_held({push(1u), store, push("left behind")}, "1");
    expect_held({create_table, pop(1), push(1u), set_field(-2, name)},
                "1"); // the table next below, which is the holder
    expect_held({create_table, push(1u), push(2u), set_field(-3, "a"), pop(1), store}, "{'a'=2}");
}

/// What a table with other names, or fewer, or in another order leaves behind says nothing of the next.
TEST_F(Recording, HoldsTablesByNameAfterOthers)
{
    const auto fields = [](std::string_view names) {
        static constexpr const char *known[] = {"a", "b", "c", "d name that no string has room for within itself"};
        Calls calls{create_table};
        for (const char letter : names) {
            calls.push_back(push(static_cast<std::uint32_t>(letter)));
            calls.push_back(set_field(-2, known[letter - 'a']));
        }
        calls.push_back(store);
        return calls;
    };
    constexpr const char *both = "{'a'=97, 'b'=98}";
    constexpr const char *all = "{'a'=97, 'b'=98, 'c'=99}";
    for (const auto &[names, expected] : std::initializer_list<std::pair<const char *, const char *>>{
             {"ba", both},
             {"ba", both},
             {"ab", both},
             {"b", "{'b'=98}"},
             {"ba", both},
             {"bac", all},
             {"bca", all},
             {"", "{}"},
             {"bca", all},
             {"bc", "{'b'=98, 'c'=99}"},
             {"bca", all},
             {"bda", "{'a'=97, 'b'=98, 'd name that no string has room for within itself'=100}"},
             {"bca", all}}) {
        SCOPED_TRACE(names);
        expect_held(fields(names), expected);
        EXPECT_EQ(record(fields("aa")), std::nullopt);
        EXPECT_EQ(record(fields("aa")), std::nullopt);
        expect_held(fields(names), expected);
        expect_held({create_table, push(1u), push("x"), set_table(-3), store}, "[1='x']");
        EXPECT_EQ(record(fields(names), SYSDT_ERR_FAIL), std::optional<std::uint32_t>(SYSDT_ERR_FAIL));
        expect_held(fields(names), expected);
    }
}

TEST_F(Recording, AnswersTheTypesStatus)
{
    const Calls calls{create_table, push(1u)}; // left behind
    EXPECT_EQ(by_record(calls, SYSDT_ERR_LENGTH), by_engine(calls, SYSDT_ERR_LENGTH));
    EXPECT_EQ(record(calls, SYSDT_ERR_LENGTH), std::optional<std::uint32_t>(SYSDT_ERR_LENGTH));
    EXPECT_EQ(record({}, 1), std::optional<std::uint32_t>(1));
}

/// What an engine refuses, and what only it can hold.
TEST_F(Recording, LeavesTheRestToAnEngine)
{
    const struct {
        const char *what;
        Calls calls;
        std::optional<std::string> expected; ///< the engine's; nothing where it raises an error
    } cases[] = {
        {"nothing is stored", {}, "nil"},
        {"it has another name", {push(1u), set_field(holder, "other")}, "nil"},
        {"it has a name that begins so", {push(1u), set_field(holder, "values")}, "nil"},
        {"it stands by a position", {push(1u), push(2u), set_table(holder)}, "nil"},
        {"there is more than it", {push(1u), store, push(2u), set_field(holder, "other")}, "1"},
        {"a field is stored twice", {push(1u), store, push(2u), store}, "2"},
        {"within a table, too",
         {create_table, push(1u), set_field(-2, "a"), push(2u), set_field(-2, "a"), store},
         "{'a'=2}"},
        {"the table to store in is popped", {push(1u), store, pop(1)}, {}},
        {"more is popped than there is", {pop(10)}, {}},
        {"less than nothing is popped", {push(1u), pop(-1), store}, {}},
        {"a field of nothing", {push(1u), set_field(0, "a")}, {}},
        {"a field below the stack", {push(1u), set_field(-10, "a")}, {}},
        {"a field above the stack", {push(1u), set_field(3, "a")}, {}},
        {"a field of the number itself", {push(1u), set_field(-1, "a")}, {}},
        {"a field of a number", {push(1u), push(2u), set_field(-2, "a")}, {}},
        {"a field of a text", {push("text"), push(2u), set_field(-2, "a")}, {}},
        {"a table in itself", {create_table, set_field(-1, "a"), push(1u), store}, "1"},
        {"an entry of nothing", {push(1u), push(1u), set_table(0)}, {}},
        {"an entry of its key", {push(1u), push(1u), set_table(-2)}, {}},
        {"an array from 0", {create_table, push(0u), push(7u), set_table(-3), store}, "{0=7}"},
        {"an array from 2", {create_table, push(2u), push(7u), set_table(-3), store}, "{2=7}"},
        {"an entry twice",
         {create_table, push(1u), push(7u), set_table(-3), push(1u), push(8u), set_table(-3), store},
         "[1=8]"},
        {"an entry by a text", {create_table, push("a"), push(7u), set_table(-3), store}, "{'a'=7}"},
        {"an entry beside fields",
         {create_table, push(1u), set_field(-2, "a"), push(1u), push(7u), set_table(-3), store},
         "{'a'=1, 1=7}"},
        {"a field beside entries",
         {create_table, push(1u), push(7u), set_table(-3), push(1u), set_field(-2, "a"), store},
         "{'a'=1, 1=7}"},
        {"no text", {no_text, store}, "nil"},
        {"more is pushed than there is room for", pushed(40), "39"},
    };
    for (const auto &[what, calls, expected] : cases) {
        SCOPED_TRACE(what);
        const Outcome outcome = by_engine(calls);
        EXPECT_EQ(outcome.status == SYSDT_OK ? std::optional(outcome.value) : std::nullopt, expected);
        EXPECT_EQ(record(calls), std::nullopt);
    }
}

/// Once it has given up it takes part in nothing, and is whole again for the next value.
TEST_F(Recording, BeginsAnew)
{
    EXPECT_EQ(record({create_table, push(1u), set_field(-2, "a"), pop(10), push(2u), store}), std::nullopt);
    EXPECT_FALSE(record().is_complete());
    EXPECT_FALSE(record().memory_out());
    expect_held({create_table, store}, "{}"); // nothing of the one before
    expect_held({create_table, push(1u), push("x"), set_table(-3), store}, "[1='x']");
    expect_held({create_table, push(1u), set_field(-2, "a"), store}, "{'a'=1}");
}

// ------------------------------------------------------------------------------------------------ at random

class Random {
public:
    Calls calls()
    {
        Calls calls;
        push_value(calls, 3);
        calls.push_back(store);
        for (std::uint32_t changes = below(3); changes > 0; --changes)
            change(calls);
        return calls;
    }

private:
    std::uint32_t below(std::uint32_t count) { return static_cast<std::uint32_t>(engine_()) % count; }
    std::int32_t index() { return static_cast<std::int32_t>(below(7)) - 3; }
    const char *key() { return std::array{"a", "b", "c", name}[below(4)]; }

    void push_value(Calls &calls, std::uint32_t depth)
    {
        switch (below(depth == 0 ? 3 : 5)) {
        case 0: return calls.push_back(push(below(4)));
        case 1: return calls.push_back(push_wide(-1));
        case 2: return calls.push_back(push(key()));
        case 3: return push_fields(calls, depth - 1);
        default: return push_entries(calls, depth - 1);
        }
    }

    void push_fields(Calls &calls, std::uint32_t depth)
    {
        calls.push_back(create_table);
        for (const char *const field : {"b", "a", "c"}) {
            if (below(2) == 0)
                continue;
            push_value(calls, depth);
            calls.push_back(set_field(-2, field));
        }
    }

    void push_entries(Calls &calls, std::uint32_t depth)
    {
        calls.push_back(create_table);
        for (std::uint32_t entry = below(4), position = 1; entry > 0; --entry, ++position) {
            calls.push_back(push(position));
            push_value(calls, depth);
            calls.push_back(set_table(-3));
        }
    }

    Call any_call()
    {
        switch (below(6)) {
        case 0: return create_table;
        case 1: return pop(index());
        case 2: return push(below(4));
        case 3: return push(key());
        case 4: return set_field(index(), key());
        default: return set_table(index());
        }
    }

    /// One call less, more, or another one.
    void change(Calls &calls)
    {
        const std::uint32_t how = below(3);
        const auto at = calls.begin() + static_cast<std::ptrdiff_t>(below(static_cast<std::uint32_t>(calls.size())));
        if (how == 0)
            calls.insert(at, any_call());
        else if (how == 1)
            *at = any_call();
        else if (calls.size() > 1)
            calls.erase(at);
    }

    std::mt19937 engine_{1};
};

TEST_F(Recording, HoldsWhatAnEngineHoldsOrNothing)
{
    Random random;
    int held = 0;
    int left = 0;
    for (int turn = 0; turn < 10000; ++turn) {
        const Calls calls = random.calls();
        const auto outcome = by_record(calls);
        (outcome ? held : left) += 1;
        if (outcome) {
            ASSERT_EQ(*outcome, by_engine(calls)) << "turn " << turn;
        }
    }
    EXPECT_GT(held, 3000);
    EXPECT_GT(left, 1000);
}

// ------------------------------------------------------------------------------------------------ memory

const Calls some_of_all{create_table,
                        push(1u),
                        push("a text that no string has room for within itself"),
                        set_table(-3),
                        push(2u),
                        create_table,
                        push_wide(-1),
                        set_field(-2, "a name that no string has room for within itself"),
                        set_table(-3),
                        store};

TEST_F(Recording, TakesNoMemoryForWhatItOnceHadRoomFor)
{
    memory.requests = 0;
    expect_held(some_of_all, "[1='a text that no string has room for within itself', "
                             "2={'a name that no string has room for within itself'=-1}]");
    EXPECT_GT(memory.requests, 0);
    memory.requests = 0;
    const auto answered = record(some_of_all);
    EXPECT_EQ(memory.requests, 0);
    EXPECT_EQ(answered, done);
}

TEST_F(Recording, SaysThatMemoryIsOut)
{
    int number = 1;
    for (bool refused = true; refused; ++number) {
        ScriptRecord fresh;
        memory.requests = 0;
        memory.refused_from = number;
        const auto answered = record(some_of_all, SYSDT_OK, fresh);
        memory.refused_from = 0;
        refused = memory.requests >= number;
        EXPECT_EQ(answered, refused ? std::uint32_t{SYSDT_ERR_NO_MEMORY} : done) << "request " << number;
        EXPECT_EQ(fresh.memory_out(), refused);
        EXPECT_EQ(record(some_of_all, SYSDT_OK, fresh), done) << "after request " << number;
    }
    EXPECT_GT(number, 10);
}

// ------------------------------------------------------------------------------------------------ readers

/// Whether the record, which holds a table, a number and a text above it, gives up what is read of it.
template <class Read>
bool gives_up(Read read)
{
    ScriptRecord read_one;
    bgpdt::host::script_record = &read_one;
    read_one.begin();
    for (const Call &call : {create_table, push(7u), push("text")})
        make(call, &read_one, holder);
    EXPECT_EQ(SYSDT_SPTI_GetTop(&read_one), 4);
    EXPECT_TRUE(read_one.is_complete());
    read(&read_one);
    bgpdt::host::script_record = nullptr;
    return !read_one.is_complete() && !read_one.memory_out();
}

TEST(RecordRead, IsLeftToAnEngine)
{
    EXPECT_TRUE(gives_up([](void *state) { SYSDT_SPTI_GetField(state, 2, "a"); }));
    EXPECT_TRUE(gives_up([](void *state) { SYSDT_SPTI_GetTable(state, 2); }));
    EXPECT_TRUE(gives_up([](void *state) { EXPECT_EQ(SYSDT_SPTI_IsTable(state, 2), 0u); }));
    EXPECT_TRUE(gives_up([](void *state) { EXPECT_EQ(SYSDT_SPTI_IsNumber(state, 3), 0u); }));
    EXPECT_TRUE(gives_up([](void *state) { EXPECT_EQ(SYSDT_SPTI_IsString(state, 4), 0u); }));
    EXPECT_TRUE(gives_up([](void *state) { EXPECT_EQ(SYSDT_SPTI_ToUInt(state, 3), 0u); }));
    EXPECT_TRUE(gives_up([](void *state) { EXPECT_EQ(SYSDT_SPTI_ToInt64(state, 3), 0); }));
    EXPECT_TRUE(gives_up([](void *state) { EXPECT_EQ(SYSDT_SPTI_ToString(state, 4), nullptr); }));
    EXPECT_TRUE(gives_up([](void *state) { EXPECT_EQ(SYSDT_SPTI_ObjLen(state, 4), 0u); }));
}

TEST(RecordRead, EnginesBesideItAreTheirOwn)
{
    const Engine engine{luaL_newstate()};
    EXPECT_FALSE(gives_up([lua = engine.get()](void *) {
        make(create_table, lua, holder);
        make(push(7u), lua, holder);
        SYSDT_SPTI_SetField(lua, 1, "a");
        SYSDT_SPTI_GetField(lua, 1, "a");
        EXPECT_EQ(SYSDT_SPTI_IsTable(lua, 1), 1u);
        EXPECT_EQ(SYSDT_SPTI_ToUInt(lua, 2), 7u);
        EXPECT_EQ(SYSDT_SPTI_GetTop(lua), 2);
    }));
}

/// A type may have another one's value recorded meanwhile.
TEST_F(Recording, RecordsWithinARecord)
{
    static Host *both;
    static ScriptRecord inner;
    both = &host();
    SYSDT_Record type{};
    type.luaSet = [](void *state, std::int32_t table, const char *field, std::uint32_t, std::uint32_t, const void *) {
        SYSDT_Record other{};
        other.luaSet = SYSDT_Uint32LuaSet;
        constexpr std::uint8_t ones[]{1, 1, 1, 1};
        EXPECT_EQ(both->record_script_value(inner, other, ones), done);
        SYSDT_SPTI_PushUInt(state, 2);
        SYSDT_SPTI_SetField(state, table, field);
        return done;
    };
    ScriptRecord outer;
    EXPECT_EQ(host().record_script_value(outer, type, any_value), done);
    EXPECT_EQ(told(outer, outer.value()), "2");
    EXPECT_EQ(told(inner, inner.value()), "16843009"); // 0x01010101
    EXPECT_EQ(bgpdt::host::script_record, nullptr);
}

} // namespace
