// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A script value that remembers the order of its fields, on both sides of the real Lua stack.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

struct lua_State;

namespace bgpdt::test {

struct ScriptField;

/// A table: its fields as written; array entries have the keys "1", "2", ... in brackets.
using ScriptTable = std::vector<ScriptField>;

/// What scripts know and no vector can express.
enum class Opaque { function, userdata };

/// std::monostate stands for nil.
struct ScriptValue {
    std::variant<std::monostate, bool, std::int64_t, double, std::string, ScriptTable, Opaque> value;

    bool is_table() const { return std::holds_alternative<ScriptTable>(value); }
};

struct ScriptField {
    std::string name;
    std::int64_t index = 0; ///< of an array entry, which has no name
    ScriptValue value;

    /// "name", or "[1]" for an array entry.
    std::string key() const;
};

/// Equal values, whatever the order of the fields. A field that is nil is one that is missing.
bool same_content(const ScriptValue &first, const ScriptValue &second);

/// The keys in the order in which a writer stores them: the fields of an inner table before the field that holds it.
std::vector<std::string> storing_order(const ScriptValue &value);

/// "(0,2)": a new table with room for so many array entries and fields.
std::string room_text(std::int64_t array_slots, std::int64_t record_slots);

/// As the vectors write it.
std::string to_text(const ScriptValue &value);

void push(lua_State *lua, const ScriptValue &value);
/// @throws std::runtime_error for a thread, or a key that is neither a string nor an integer
ScriptValue read(lua_State *lua, int index);

} // namespace bgpdt::test
