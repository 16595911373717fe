// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "script.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>

namespace bgpdt::fuzzing {

namespace {

/// Pushes values off the bytes. It is left by longjmp when the engine has no memory.
class Pusher {
public:
    Pusher(lua_State *lua, std::span<const std::uint8_t> bytes) : lua_(lua), rest_(bytes) {}

    void value(int depth)
    {
        const std::uint8_t tag = byte();
        switch (static_cast<Tag>(tag & 7)) {
        case Tag::nil: lua_pushnil(lua_); return;
        case Tag::boolean: lua_pushboolean(lua_, (tag & false_bit) == 0); return;
        case Tag::u8: lua_pushinteger(lua_, byte()); return;
        case Tag::u32: lua_pushinteger(lua_, number<std::uint32_t>()); return;
        case Tag::i64: lua_pushinteger(lua_, number<std::int64_t>()); return;
        case Tag::f64: lua_pushnumber(lua_, number<double>()); return;
        case Tag::text: text(byte()); return;
        case Tag::table: table(depth); return;
        }
    }

private:
    static constexpr int deepest = 5;
    static constexpr int most_values = 2000;

    std::uint8_t byte()
    {
        const std::uint8_t first = rest_.empty() ? std::uint8_t{0} : rest_.front();
        rest_ = rest_.subspan(std::min<std::size_t>(1, rest_.size()));
        return first;
    }

    std::span<const std::uint8_t> take(std::size_t count)
    {
        const auto taken = rest_.first(std::min(count, rest_.size()));
        rest_ = rest_.subspan(taken.size());
        return taken;
    }

    template <class Number>
    Number number()
    {
        Number read{};
        const auto bytes = take(sizeof read);
        std::memcpy(&read, bytes.data(), bytes.size());
        return read;
    }

    void text(std::size_t length)
    {
        const auto characters = take(length);
        lua_pushlstring(lua_, reinterpret_cast<const char *>(characters.data()), characters.size());
    }

    void table(int depth)
    {
        lua_newtable(lua_);
        lua_Integer index = 0;
        for (std::uint8_t left = byte(); left != 0 && !rest_.empty() && depth < deepest; --left) {
            const std::uint8_t key = byte();
            if (key == next_index || key == repeated_index) {
                array(key == next_index ? 1 : byte(), depth, index);
            } else {
                text(key);
                value(depth + 1);
                lua_rawset(lua_, -3);
            }
        }
    }

    void array(int count, int depth, lua_Integer &index)
    {
        const auto entry = rest_;
        auto behind = rest_;
        for (int i = 0; i < count && values_ < most_values; ++i, ++values_) {
            rest_ = entry;
            value(depth + 1);
            behind = rest_;
            lua_rawseti(lua_, -2, ++index);
        }
        rest_ = behind;
    }

    lua_State *lua_;
    std::span<const std::uint8_t> rest_;
    int values_ = 0;
};

} // namespace

Engine &Engine::instance()
{
    static Engine engine;
    return engine;
}

Engine::Engine() : lua_(lua_newstate(allocate, this)) {}

void *Engine::allocate(void *self, void *block, std::size_t old_size, std::size_t new_size)
{
    auto &engine = *static_cast<Engine *>(self);
    if (engine.watching_ && engine.failing_.first != 0 && new_size != 0 && (block == nullptr || new_size > old_size)) {
        // The engine tries a refused request again behind a collection.
        if (++engine.requests_ >= engine.failing_.first) {
            engine.failed_ = true;
            return nullptr;
        }
    }
    return engine.granted(block, old_size, new_size);
}

void *Engine::granted(void *block, std::size_t old_size, std::size_t new_size)
{
    // Of a new block the engine says what it is for.
    const bool is_seen = block == nullptr ? old_size == LUA_TSTRING || old_size == LUA_TUSERDATA : !is_pooled(block);
    if (is_seen && new_size != 0)
        return std::realloc(block, new_size);
    if (is_seen) {
        std::free(block);
        return nullptr;
    }
    void *const moved = new_size == 0               ? nullptr
                        : new_size > largest_pooled ? std::malloc(new_size)
                                                    : pool_.allocate(new_size, alignment);
    if (block == nullptr)
        return moved;
    if (moved != nullptr)
        std::memcpy(moved, block, std::min(old_size, new_size));
    pool_.deallocate(block, old_size, alignment);
    return moved;
}

bool Engine::is_pooled(const void *block) const
{
    const auto *const at = static_cast<const std::byte *>(block);
    return std::less_equal{}(room_.data(), at) && std::less{}(at, room_.data() + room_.size());
}

void push_value(lua_State *lua, std::span<const std::uint8_t> bytes)
{
    luaL_checkstack(lua, 32, "pushing a script value");
    Pusher(lua, bytes).value(0);
}

} // namespace bgpdt::fuzzing
