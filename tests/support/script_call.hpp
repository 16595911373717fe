// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Single calls of LuaSet and LuaGet on a real Lua stack whose height and other values are watched.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "failing.hpp"
#include "report.hpp"
#include "script_value.hpp"
#include "subject.hpp"

struct lua_State;

namespace bgpdt::test {

/// How the callback is told where the table is.
enum class Index {
    absolute,  ///< counted from the bottom, with another value above the table
    relative,  ///< -1, with the table on top
    below_top, ///< -1, with another value above the table
};

/// A Lua state of its own. Whatever runs in it is caught.
class Script {
public:
    Script();
    ~Script();
    Script(const Script &) = delete;
    Script &operator=(const Script &) = delete;

    /// Runs `callback(state, index)` in a call of its own: on its stack stand a witness, the target, and another
    /// witness if the index asks for it.
    /// @return the status, or SYSDT_ERR_FAIL when a script error left the callback; that is a problem unless the
    ///     engine was told to fail or errors are permitted
    std::uint32_t call(Index index, const std::function<std::uint32_t(void *, std::int32_t)> &callback, Report &report);

    /// Lets the engine's memory run out in every further call.
    void fail(Failing failing) { failing_ = failing; }
    /// The engine's requests for memory in the last call, the refused ones too.
    std::size_t requests() const { return requests_; }
    /// A script error is no problem from now on.
    void permit_errors() { errors_permitted_ = true; }
    /// Whether a script error left the last call.
    bool left() const { return left_; }

    /// What the index tells of: an empty table at first.
    void put_target(const ScriptValue &value);
    ScriptValue target() const;

    int height_before() const { return before_; }
    int height_after() const { return after_; }
    /// The value that a call left on top of the stack.
    const ScriptValue &top() const { return top_; }

private:
    static int enter(lua_State *lua);
    static void *allocate(void *self, void *block, std::size_t old_size, std::size_t new_size);

    lua_State *lua_ = nullptr;
    int target_; ///< a reference
    int before_ = 0;
    int after_ = 0;
    ScriptValue top_;
    Failing failing_;
    std::size_t requests_ = 0;
    bool watched_ = false; ///< a callback is running
    bool errors_permitted_ = false;
    bool left_ = false;
};

/// What LuaSet and LuaGet are told beside the value.
struct Access {
    Index index = Index::absolute;
    const char *name = "field";
    bool null_state = false;
    bool null_value = false;
    std::optional<std::uint32_t> length{}; ///< none: the value's own
};

std::uint32_t set_field(const Subject &subject, Script &script, const Guarded &value, const Access &access,
                        Report &report);
std::uint32_t get_field(const Subject &subject, Script &script, Guarded &value, const Access &access, Report &report);

/// The table whose field holds the value.
ScriptValue parent_with(const ScriptValue &value);

} // namespace bgpdt::test
