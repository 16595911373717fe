// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "host/script_record.hpp"

#include <algorithm>
#include <cstring>
#include <new>
#include <numeric>
#include <span>

namespace bgpdt::host {

constinit thread_local ScriptRecord *script_record = nullptr;

/// Nothing is thrown through the plug-in.
template <class Work>
void ScriptRecord::work(const Work &work) noexcept
{
    if (!complete_)
        return;
    try {
        work();
    } catch (const std::bad_alloc &) {
        memory_out_ = true;
        give_up();
    }
}

void ScriptRecord::begin()
{
    top_ = 0;
    characters_.clear();
    used_ = 0;
    complete_ = true;
    memory_out_ = false;
    create_table();
}

bool ScriptRecord::finish(std::string_view name)
{
    for (std::size_t i = 0; complete_ && i < used_; ++i)
        complete_ = sort(tables_[i]);
    if (!complete_)
        return false;
    const Table &holder = table_of(root);
    return !holder.is_array && holder.size == 1 && holder.entries.front().key == name;
}

/// By name; false if one stands there twice.
bool ScriptRecord::sort(Table &table)
{
    if (table.is_array || table.sorted == table.size)
        return true;
    const auto order = std::span(table.order).first(table.size);
    const auto key = [&table](std::uint32_t entry) -> const std::string & { return table.entries[entry].key; };
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::sort(order, {}, key);
    const bool all_differ = std::ranges::adjacent_find(order, {}, key) == order.end();
    table.sorted = all_differ ? table.size : 0;
    return all_differ;
}

void ScriptRecord::create_table() noexcept
{
    if (used_ == tables_.size())
        work([this] { tables_.emplace_back(); });
    if (!complete_)
        return;
    tables_[used_].is_array = false;
    tables_[used_].size = 0;
    push({Kind::table, 0, static_cast<std::int64_t>(used_)});
    ++used_;
}

void ScriptRecord::pop(std::int32_t count) noexcept
{
    if (count < 0 || count >= top()) // the table to store in stays
        return give_up();
    top_ -= static_cast<std::size_t>(count);
}

void ScriptRecord::push(std::string_view text) noexcept
{
    const std::size_t begin = characters_.size();
    work([&] { characters_.append(text); });
    push({Kind::text, static_cast<std::uint32_t>(text.size()), static_cast<std::int64_t>(begin)});
}

/// The table at the index, with so many values above it; null if there is none.
inline ScriptRecord::Table *ScriptRecord::table_at(std::int32_t index, std::int32_t operands)
{
    const std::int32_t at = index < 0 ? top() + index : index - 1;
    const bool there = complete_ && at >= 0 && at < top() - operands;
    if (!there || stack_[static_cast<std::size_t>(at)].kind != Kind::table)
        return nullptr;
    return &tables_[static_cast<std::size_t>(stack_[static_cast<std::size_t>(at)].number)];
}

/// Makes room for one more.
[[gnu::noinline]] void ScriptRecord::grow(Table &table) noexcept
{
    work([&] {
        table.order.emplace_back();
        table.entries.emplace_back();
    });
}

/// Null if memory is out.
inline ScriptRecord::Entry *ScriptRecord::next_entry(Table &table) noexcept
{
    if (table.size == table.entries.size()) [[unlikely]]
        grow(table);
    return complete_ ? &table.entries[table.size++] : nullptr;
}

[[gnu::noinline]] void ScriptRecord::rename(Table &table, Entry &entry, const char *key) noexcept
{
    table.sorted = 0;
    work([&] { entry.key = key; });
}

void ScriptRecord::set_field(std::int32_t index, const char *key) noexcept
{
    Table *const table = table_at(index, 1);
    if (table == nullptr || table->is_array)
        return give_up();
    Entry *const entry = next_entry(*table);
    if (entry == nullptr)
        return;
    if (std::strcmp(entry->key.c_str(), key) != 0) [[unlikely]]
        rename(*table, *entry, key);
    entry->value = from_top(1);
    --top_;
}

void ScriptRecord::set_entry(std::int32_t index) noexcept
{
    Table *const table = table_at(index, 2);
    if (table == nullptr || (!table->is_array && table->size != 0))
        return give_up();
    const Value &key = from_top(2);
    if (key.kind != Kind::number || key.number != static_cast<std::int64_t>(table->size) + 1)
        return give_up();
    Entry *const entry = next_entry(*table);
    if (entry == nullptr)
        return;
    table->is_array = true;
    entry->value = from_top(1);
    top_ -= 2;
}

} // namespace bgpdt::host
