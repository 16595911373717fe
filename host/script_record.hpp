// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A script value as plain data: what the script services make where their state is no engine.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
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

    /// What came of it.
    const Value &value() const { return table_of(root).entries.front().value; }
    bool is_array(const Value &table) const { return table_of(table).is_array; }
    bool is_empty(const Value &table) const { return table_of(table).size == 0; }
    /// Gives the keys and values in the order of the keys, which are names; those of an array, by position, mean nothing.
    template <class Take>
    void each(const Value &table, const Take &take) const
    {
        const Table &all = table_of(table);
        for (std::size_t i = 0; i < all.size; ++i) {
            const Entry &entry = all.entries[all.is_array ? i : all.order[i]];
            take(std::string_view(entry.key), entry.value);
        }
    }
    std::string_view text(const Value &text) const
    {
        return {characters_.data() + static_cast<std::size_t>(text.number), text.size};
    }

    /// Empty, but for a table on the stack to store one value in.
    void begin();
    /// Whether all that was asked could be done; memory may have been out.
    bool is_complete() const { return complete_; }
    bool memory_out() const { return memory_out_; }
    /// Whether it holds one value then, under the name.
    bool finish(std::string_view name);

    // The services.
    std::int32_t top() const { return static_cast<std::int32_t>(top_); }
    void create_table() noexcept;
    void pop(std::int32_t count) noexcept;
    void push(std::int64_t number) noexcept { push({Kind::number, 0, number}); }
    void push(std::string_view text) noexcept;
    void set_field(std::int32_t index, const char *key) noexcept;
    void set_entry(std::int32_t index) noexcept;
    /// Takes part in nothing more.
    void give_up() noexcept { complete_ = false; }

private:
    struct Entry {
        std::string key;
        Value value;
    };
    /// Its entries keep their keys for the next one: values of one type mostly have the same, in one order.
    struct Table {
        bool is_array = false;
        std::size_t size = 0;             ///< how many entries are stored
        std::size_t sorted = 0;           ///< the order is that of the keys of so many
        std::vector<std::uint32_t> order; ///< which entry comes first, next, ...; not shorter than the entries
        std::vector<Entry> entries;       ///< those stored, then those that may be used again
    };

    static constexpr Value root{Kind::table, 0, 0};

    const Table &table_of(const Value &table) const { return tables_[static_cast<std::size_t>(table.number)]; }
    void push(const Value &value) noexcept
    {
        if (complete_ && top_ < stack_.size())
            stack_[top_++] = value;
        else
            give_up();
    }
    Table *table_at(std::int32_t index, std::int32_t operands);
    const Value &from_top(std::size_t count) const { return stack_[top_ - count]; }
    void grow(Table &table) noexcept;
    Entry *next_entry(Table &table) noexcept;
    void rename(Table &table, Entry &entry, const char *key) noexcept;
    static bool sort(Table &table);
    template <class Work>
    void work(const Work &work) noexcept;

    std::array<Value, 32> stack_{}; ///< what is pushed beyond that is left to an engine
    std::size_t top_ = 0;
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
