// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A script value as plain data: what the script services make where their state is no engine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

namespace bgpdt::host {

/// What one LuaSet makes. It holds numbers, texts, and tables that are an array or have names; of anything else, and of
/// services that read, it says that only an engine can do it. Used again, it takes no memory for what it once had room
/// for.
class ScriptRecord {
public:
    enum class Kind : std::uint8_t { number, text, table };
    struct Value {
        Kind kind;
        std::uint32_t size;  ///< of a text
        std::int64_t number; ///< itself, where the text begins, or which table it is
    };
    struct Entry {
        Value key; ///< a text; of an array its position
        Value value;
    };

    /// What came of it.
    const Value &value() const { return entries(root).front().value; }
    /// By name, or by position.
    std::span<const Entry> entries(const Value &table) const { return table_of(table).entries; }
    bool is_array(const Value &table) const { return table_of(table).is_array; }
    std::string_view text(const Value &text) const
    {
        return std::string_view(characters_).substr(static_cast<std::size_t>(text.number), text.size);
    }

    /// Empty, but for a table on the stack to store one value in.
    void begin();
    /// Whether all that was asked could be done; memory may have been out.
    bool is_complete() const { return complete_; }
    bool memory_out() const { return memory_out_; }
    /// Whether it holds one value then, under the name.
    bool finish(std::string_view name);

    // The services.
    std::int32_t top() const { return static_cast<std::int32_t>(stack_.size()); }
    void create_table() noexcept;
    void pop(std::int32_t count) noexcept;
    void push(std::int64_t number) noexcept;
    void push(std::string_view text) noexcept;
    void set_field(std::int32_t index, std::string_view key) noexcept;
    void set_entry(std::int32_t index) noexcept;
    /// Takes part in nothing more.
    void give_up() noexcept { complete_ = false; }

private:
    struct Table {
        bool is_array = false;
        std::vector<Entry> entries = {};
    };

    static constexpr Value root{Kind::table, 0, 0};

    const Table &table_of(const Value &table) const { return tables_[static_cast<std::size_t>(table.number)]; }
    Table *table_at(std::int32_t index, std::int32_t operands);
    Value kept(std::string_view text);
    bool sort(Table &table) const;
    template <class Work>
    void work(const Work &work) noexcept;

    std::vector<Value> stack_;
    std::vector<Table> tables_; ///< those in use, then those that may be used again
    std::size_t used_ = 0;
    std::string characters_; ///< of all texts
    bool complete_ = true;
    bool memory_out_ = false;
};

/// The one that this thread's services work on where it is their state.
[[gnu::tls_model("initial-exec")]] extern constinit thread_local ScriptRecord *script_record;

} // namespace bgpdt::host

#pragma GCC visibility pop
