// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What LuaSet, LuaGet and the script readers keep to.
#include <algorithm>
#include <bit>
#include <cstring>

#include "bgp_datatype/fields.hpp"
#include "records_fuzzer.hpp"
#include "script.hpp"

namespace bgpdt::fuzzing {

namespace {

using test::Subject;

constexpr const char *field = "field";
constexpr int target = 2;  ///< where the table stands
constexpr int witness = 3; ///< what stands above it, unless it is told as -1

/// The stack of a script call: a witness, the table, and another witness.
class Stack {
public:
    Stack(lua_State *lua, bool relative) : lua_(lua), relative_(relative)
    {
        if (!relative)
            lua_pushlightuserdata(lua, this);
        height_ = lua_gettop(lua);
        table_ = lua_topointer(lua, target);
    }

    int index() const { return relative_ ? -1 : target; }
    int height() const { return height_; }
    /// How many values the call left; it must not have touched the others.
    int left() const
    {
        const int now = lua_gettop(lua_);
        require(now >= height_ && lua_topointer(lua_, target) == table_ &&
                    (relative_ || lua_touserdata(lua_, witness) == this),
                "a script call leaves the stack below it alone");
        return now - height_;
    }

private:
    lua_State *lua_;
    bool relative_;
    int height_;
    const void *table_;
};

/// Calls LuaSet into a new table, which is left at `target`.
std::uint32_t set(lua_State *lua, const Subject &subject, const std::uint8_t *value, std::size_t length, bool relative)
{
    lua_settop(lua, 1);
    lua_newtable(lua);
    Stack stack(lua, relative);
    const std::uint32_t status =
        subject.lua_set(lua, stack.index(), field, 0, static_cast<std::uint32_t>(length), value);
    require(stack.left() == 0, "LuaSet leaves the stack as it found it");
    lua_settop(lua, target);
    lua_pushstring(lua, field);
    const bool stored = lua_rawget(lua, target) != LUA_TNIL;
    require(stored == (status == SYSDT_OK), "LuaSet stores a field if it succeeds");
    lua_settop(lua, target);
    return status;
}

/// Calls LuaGet from the table at `target` into the cleared buffer.
std::uint32_t get(lua_State *lua, const Subject &subject, std::uint8_t *value, std::size_t length, bool relative)
{
    lua_settop(lua, target);
    const bool pushed = relative && subject.expect.has(test::get_pushed);
    const Stack stack(lua, relative && !pushed);
    const std::uint32_t status =
        subject.lua_get(lua, stack.index(), field, 0, static_cast<std::uint32_t>(length), value);
    const int left = stack.left();
    if (status == SYSDT_OK) {
        require(left == (subject.expect.has(test::get_leaves_none) ? 0 : 1),
                "LuaGet leaves what is promised on the stack");
        lua_pushstring(lua, field);
        lua_rawget(lua, target);
        require(left == 0 || lua_rawequal(lua, -1, -2) != 0, "LuaGet leaves the field's table on the stack");
    }
    lua_settop(lua, target);
    return status;
}

bool is_status_of(const Subject &subject, std::uint32_t status)
{
    return subject.passed_on(status) == status ? is_status(status)
                                               : status == SYSDT_ERR_PARAM || status == SYSDT_ERR_NULL_PTR;
}

std::uint8_t *cleared(std::size_t size)
{
    std::uint8_t *const buffer = memory().lend(size);
    std::fill_n(buffer, size, std::uint8_t{0});
    return buffer;
}

bool all_zero(const std::uint8_t *bytes, std::size_t size)
{
    return std::all_of(bytes, bytes + size, [](std::uint8_t byte) { return byte == 0; });
}

/// What is stored in a table of its own and read again.
struct Reread {
    std::uint32_t status;
    Bytes value;
};

Reread set_and_get(lua_State *lua, const Subject &subject, Bytes value)
{
    const std::uint8_t *const stored = memory().place(value);
    if (const std::uint32_t status = set(lua, subject, stored, value.size(), false); status != SYSDT_OK)
        return {status, {}};
    std::uint8_t *const buffer = cleared(value.size());
    const std::uint32_t status = get(lua, subject, buffer, value.size(), false);
    return {status, {buffer, value.size()}};
}

Layout layout(const Subject &subject, Bytes value)
{
    const bool row_of_prefix = subject.sub_kind && subject.kind == SYSDT_TYPE_BOLPREFIX;
    return row_of_prefix ? bol_layout_of(*subject.sub_kind, value)
                         : layout_of(subject.kind, value, std::endian::native);
}

std::uint64_t element(Bytes value, std::size_t at, std::size_t width)
{
    std::uint64_t number = 0;
    for (std::size_t i = width; i-- > 0;)
        number = number << 8 | value[at + (std::endian::native == std::endian::big ? width - 1 - i : i)];
    return number;
}

/// Whether the second value has what scripts see of the first, cut to the bits that are kept.
bool seen_alike(const Subject &subject, Bytes first, Bytes second)
{
    const Layout form = layout(subject, first);
    if (form.fields.empty())
        return std::ranges::equal(first.first(subject.length), second.first(subject.length));
    const bool named = std::ranges::any_of(form.fields, [](const Field &row) { return row.key != nullptr; });
    for (std::size_t entry = 0; entry < form.repeat; ++entry) {
        for (const Field &row : form.fields) {
            const std::uint64_t mask =
                row.script_bits >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << row.script_bits) - 1;
            for (std::size_t i = 0; i < row.count && (row.key != nullptr || !named); ++i) {
                const std::size_t at = entry * form.stride + row.offset + i * row.width;
                if ((element(first, at, row.width) & mask) != element(second, at, row.width))
                    return false;
            }
        }
    }
    return true;
}

void expect_reget(lua_State *lua, const Subject &subject, Bytes value, std::uint8_t mode)
{
    if (subject.lua_set == nullptr || !promised(Property::reget, {subject, mode, {}, value}))
        return;
    const Reread again = set_and_get(lua, subject, value);
    require(again.status == SYSDT_OK, "what a script's table gave is stored and read again");
    require(std::ranges::equal(value, again.value),
            "what is read from a script's table, stored in one and read again is the same");
}

void set_properties(lua_State *lua, const Case &input, const std::uint8_t *value)
{
    const Subject &subject = input.subject;
    const std::size_t size = input.payload.size();
    const std::uint32_t status = set(lua, subject, value, size, input.has(relative_index));
    require(is_status_of(subject, status), "LuaSet answers a documented status");
    require(std::ranges::equal(input.payload, Bytes{value, size}), "LuaSet leaves the value alone");
    const bool is_short = size < subject.script_size() && !subject.expect.has(test::set_any_length);
    require(!is_short || status != SYSDT_OK || subject.kind == SYSDT_TYPE_CVRFNAME, "LuaSet refuses a short value");
    if (status != SYSDT_OK || subject.lua_get == nullptr || size < subject.script_size())
        return;
    std::uint8_t *const buffer = cleared(size);
    const std::uint32_t read = get(lua, subject, buffer, size, input.has(relative_index));
    require(is_status_of(subject, read), "LuaGet answers a documented status");
    if (promised(Property::seen, {subject, input.mode, {}, input.payload})) {
        require(read == SYSDT_OK, "what is stored in a script's table is read again");
        require(seen_alike(subject, input.payload, {buffer, size}),
                "what is stored in a script's table and read from it is the same");
    }
    if (read == SYSDT_OK)
        expect_reget(lua, subject, {buffer, size}, input.mode);
}

/// The table with the field, or the value alone, at `target`.
void push_target(lua_State *lua, const Case &input, bool alone)
{
    lua_settop(lua, 1);
    if (alone) {
        push_value(lua, input.payload);
        return;
    }
    lua_newtable(lua);
    lua_pushstring(lua, field);
    push_value(lua, input.payload);
    lua_rawset(lua, target);
}

void get_properties(lua_State *lua, const Case &input, std::size_t size)
{
    const Subject &subject = input.subject;
    push_target(lua, input, false);
    std::uint8_t *const first = cleared(size);
    const std::uint32_t status = get(lua, subject, first, size, input.has(relative_index));
    require(is_status_of(subject, status), "LuaGet answers a documented status");
    if (size < subject.script_size() && subject.kind != SYSDT_TYPE_CVRFNAME) {
        require(status == (subject.expect.has(test::short_get_invalid) ? SYSDT_ERR_INVALID_VALUE : SYSDT_ERR_PARAM),
                "LuaGet refuses a short buffer");
        require(all_zero(first, size), "a LuaGet that refuses its buffer leaves it alone");
    }
    std::uint8_t *const second = cleared(size);
    require(get(lua, subject, second, size, false) == status &&
                std::ranges::equal(Bytes{first, size}, Bytes{second, size}),
            "a second LuaGet gives the same answer");
    if (status == SYSDT_OK)
        expect_reget(lua, subject, {first, size}, input.mode);
}

void read_properties(lua_State *lua, const Case &input, SYSDT_ScriptReader *reader)
{
    push_target(lua, input, true);
    std::uint8_t *const value = cleared(SYSDT_BOL_SIZE);
    const Stack stack(lua, input.has(relative_index));
    const std::uint32_t status = reader(lua, value, stack.index());
    require(is_status(status), "a script reader answers a documented status");
    const int left = stack.left();
    require(status != SYSDT_OK || left == 0, "a script reader leaves the stack as it found it");
}

/// The body once with an engine that runs out of memory, if so told, and once without.
template <class Body>
void run(const Case &input, const Body &body)
{
    Engine &engine = Engine::instance();
    memory().begin(fills[0]);
    if (input.failing().first != 0) {
        engine.run([&](lua_State *lua) {
            engine.watch(input.failing());
            body(lua);
        });
        require(memory().taken() == 0, "an engine without memory leaves nothing taken");
    }
    require(engine.run(body), "no script error leaves a callback");
    require(memory().taken() == 0, "script callbacks leave nothing taken");
}

} // namespace

void fuzz_set(const Case &input)
{
    if (input.subject.lua_set == nullptr)
        return;
    // A value that the callback reads whatever its length.
    std::uint8_t whole[sizeof(std::uint32_t)]{};
    const bool pads = input.subject.expect.has(test::set_any_length) && input.payload.size() < sizeof whole;
    std::copy_n(input.payload.data(), pads ? input.payload.size() : 0, whole);
    const std::uint8_t *const value = memory().place(pads ? Bytes{whole} : input.payload, input.has(odd_address));
    run(input, [&](lua_State *lua) { set_properties(lua, input, value); });
}

void fuzz_get(const Case &input)
{
    if (input.subject.lua_get == nullptr)
        return;
    const std::size_t size = input.subject.script_size() - (input.has(other_length) ? 1 : 0);
    run(input, [&](lua_State *lua) { get_properties(lua, input, size); });
}

void fuzz_read(const Case &input, SYSDT_ScriptReader *reader)
{
    run(input, [&](lua_State *lua) { read_properties(lua, input, reader); });
}

} // namespace bgpdt::fuzzing
