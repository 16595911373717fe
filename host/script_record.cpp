// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "host/script_record.hpp"

#include <algorithm>
#include <new>

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
    stack_.clear();
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
    if (!complete_ || is_array(root) || entries(root).size() != 1)
        return false;
    return text(entries(root).front().key) == name;
}

/// By name; false if one stands there twice.
bool ScriptRecord::sort(Table &table) const
{
    if (table.is_array)
        return true;
    const auto key = [this](const Entry &entry) { return text(entry.key); };
    std::ranges::sort(table.entries, {}, key);
    return std::ranges::adjacent_find(table.entries, {}, key) == table.entries.end();
}

void ScriptRecord::create_table() noexcept
{
    work([this] {
        if (used_ == tables_.size())
            tables_.emplace_back();
        tables_[used_].is_array = false;
        tables_[used_].entries.clear();
        stack_.push_back({Kind::table, 0, static_cast<std::int64_t>(used_)});
        ++used_;
    });
}

void ScriptRecord::pop(std::int32_t count) noexcept
{
    work([&] {
        if (count < 0 || count >= top()) // the table to store in stays
            return give_up();
        stack_.resize(stack_.size() - static_cast<std::size_t>(count));
    });
}

void ScriptRecord::push(std::int64_t number) noexcept
{
    work([&] { stack_.push_back({Kind::number, 0, number}); });
}

void ScriptRecord::push(std::string_view text) noexcept
{
    work([&] { stack_.push_back(kept(text)); });
}

ScriptRecord::Value ScriptRecord::kept(std::string_view text)
{
    const Value value{Kind::text, static_cast<std::uint32_t>(text.size()),
                      static_cast<std::int64_t>(characters_.size())};
    characters_.append(text);
    return value;
}

/// The table at the index, with so many values above it; null if there is none.
ScriptRecord::Table *ScriptRecord::table_at(std::int32_t index, std::int32_t operands)
{
    const std::int32_t at = index < 0 ? top() + index : index - 1;
    const bool there = at >= 0 && at < top() - operands;
    if (!there || stack_[static_cast<std::size_t>(at)].kind != Kind::table)
        return nullptr;
    return &tables_[static_cast<std::size_t>(stack_[static_cast<std::size_t>(at)].number)];
}

void ScriptRecord::set_field(std::int32_t index, std::string_view key) noexcept
{
    work([&] {
        Table *const table = table_at(index, 1);
        if (table == nullptr || table->is_array)
            return give_up();
        table->entries.push_back({kept(key), stack_.back()});
        stack_.pop_back();
    });
}

void ScriptRecord::set_entry(std::int32_t index) noexcept
{
    work([&] {
        Table *const table = table_at(index, 2);
        if (table == nullptr || (!table->is_array && !table->entries.empty()))
            return give_up();
        const Value key = stack_[stack_.size() - 2];
        if (key.kind != Kind::number || key.number != static_cast<std::int64_t>(table->entries.size()) + 1)
            return give_up();
        table->is_array = true;
        table->entries.push_back({key, stack_.back()});
        stack_.pop_back();
        stack_.pop_back();
    });
}

} // namespace bgpdt::host
