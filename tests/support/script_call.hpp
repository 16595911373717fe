// SPDX-License-Identifier: Apache-2.0
/// @file
/// Single calls of LuaSet and LuaGet on a real Lua stack whose height and other values are watched.
#ifndef BGPDT_TESTS_SCRIPT_CALL_HPP
#define BGPDT_TESTS_SCRIPT_CALL_HPP

#include <cstdint>
#include <functional>
#include <string>

#include "report.hpp"
#include "script_value.hpp"

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
    /// @return the status, or SYSDT_ERR_FAIL and a problem when a script error left the callback
    std::uint32_t call(Index index, const std::function<std::uint32_t(void *, std::int32_t)> &callback, Report &report);

    /// Lets the engine's memory run out at that request of every further callback; a script error is no problem then.
    void run_out_at(std::size_t request) { fatal_request_ = request; }

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
    std::size_t fatal_request_ = 0; ///< 0: none
    std::size_t left_ = 0;          ///< requests until memory is out; 0: it is not watched
};

} // namespace bgpdt::test

#endif
