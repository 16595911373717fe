// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The script engine, one for the process, and script values as bytes.
///
/// A script value is a tag, of which the low three bits count, and what belongs to it; numbers are little-endian:
///
///     0 nil | 1 true, false with bit 3 | 2 u8 | 3 u32 | 4 i64 | 5 f64 | 6 u8 length, characters | 7 u8 count, fields
///
/// A field is a key and a value. A key is a length and so many characters; the length 0 stands for the next array index,
/// 255 for as many of them as the next byte says. What is missing at the end reads as zeros.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <lua.hpp>
#include <memory_resource>
#include <span>

#include "memory.hpp"

namespace bgpdt::fuzzing {

enum class Tag : std::uint8_t { nil, boolean, u8, u32, i64, f64, text, table };
constexpr std::uint8_t false_bit = 8;
constexpr std::uint8_t next_index = 0;
constexpr std::uint8_t repeated_index = 255;

class Engine {
public:
    static Engine &instance();

    /// Runs the body in a protected call, with a witness as the first value of its stack. The engine's memory fails as
    /// told from the first watch() in it on.
    /// @return false if an error left the body
    template <class Body>
    bool run(Body body)
    {
        lua_pushcfunction(lua_, [](lua_State *lua) {
            (*static_cast<Body *>(lua_touserdata(lua, 1)))(lua);
            return 0;
        });
        lua_pushlightuserdata(lua_, &body);
        const bool returned = lua_pcall(lua_, 1, 0, 0) == LUA_OK;
        watching_ = false;
        lua_settop(lua_, 0);
        return returned;
    }

    /// From here requests for memory are counted, and fail as told.
    void watch(Failing failing)
    {
        failing_ = failing;
        requests_ = 0;
        watching_ = true;
        failed_ = false;
    }
    void unwatch() { watching_ = false; }
    /// Whether the request that was to fail came.
    bool failed() const { return failed_; }

private:
    static constexpr std::size_t largest_pooled = 1024;
    static constexpr std::size_t alignment = alignof(lua_Number); ///< that the engine asks for

    Engine();
    static void *allocate(void *self, void *block, std::size_t old_size, std::size_t new_size);
    /// A request that does not fail.
    void *granted(void *block, std::size_t old_size, std::size_t new_size);
    bool is_pooled(const void *block) const;

    /// The room for small blocks that no callback sees into, all but strings: blocks of the sanitizer's would take more
    /// time than the plug-in.
    alignas(std::max_align_t) std::array<std::byte, std::size_t{64} << 20> room_;
    std::pmr::monotonic_buffer_resource chunks_{room_.data(), room_.size(), std::pmr::null_memory_resource()};
    std::pmr::unsynchronized_pool_resource pool_{
        {.max_blocks_per_chunk = 0, .largest_required_pool_block = largest_pooled}, &chunks_};
    lua_State *lua_;
    Failing failing_;
    std::size_t requests_ = 0;
    bool watching_ = false;
    bool failed_ = false;
};

/// Pushes the script value that the bytes tell. Raises a script error for what no table can hold.
void push_value(lua_State *lua, std::span<const std::uint8_t> bytes);

} // namespace bgpdt::fuzzing
