// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "printing.hpp"

#include <algorithm>
#include <functional>

namespace bgpdt::grammar {
namespace {

constexpr std::size_t slot_count = std::size_t{1} << 20;

std::optional<Automaton> automaton_if_any(const Grammar &grammar, const std::string &part)
{
    return grammar.has(part) ? std::optional(automaton_of(grammar, part)) : std::nullopt;
}

std::uint64_t hash_of(std::string_view bytes) { return std::hash<std::string_view>()(bytes) | 1; } // 0: an empty slot

} // namespace

Printing::Printing(Parser &parser, const Grammar &grammar)
    : parser_(parser), canonical_(automaton_if_any(grammar, "canonical")),
      printed_(automaton_if_any(grammar, "printed")), lossy_(automaton_if_any(grammar, "lossy"))
{
    if (lossy_ && grammar.trimmed)
        lossy_ = trimmed(*lossy_);
    if (printed_) {
        met_.resize(printed_->next.size());
        slots_.resize(slot_count);
    }
}

void Printing::find(std::string_view text, const char *what)
{
    constexpr std::size_t shown = 5;
    if (findings.size() < shown)
        findings.push_back({std::string(text), what});
}

bool Printing::reads_back(const std::string &printed, const Bytes &value)
{
    return parser_.takes(printed) && std::ranges::equal(parser_.value(), value);
}

void Printing::follow(std::string_view text)
{
    const Bytes value(parser_.value().begin(), parser_.value().end());
    const std::string printed(parser_.printed());
    if (canonical_ && canonical_->accepts(printed))
        follow_canonical(text, value, printed);
    else if (printed_ && printed_->accepts(printed))
        follow_other(text, value, printed);
    else
        find(text, "prints as what the grammar does not have");
}

void Printing::follow_canonical(std::string_view text, const Bytes &value, const std::string &printed)
{
    const bool comes_back = reads_back(printed, value);
    if (!comes_back && !is_lossy(text))
        find(text, "does not come back as it was");
    if (comes_back && is_lossy(text))
        find(text, "is called lossy, and comes back as it was");
}

void Printing::follow_other(std::string_view text, const Bytes &value, const std::string &printed)
{
    meet(printed);
    if (reads_back(printed, value))
        find(text, "prints as a text that is read, and is not called canonical");
    if (!is_lossy(text))
        compare(text, value, printed);
}

void Printing::compare(std::string_view text, const Bytes &value, const std::string &printed)
{
    const Slot seen{hash_of(printed), hash_of({reinterpret_cast<const char *>(value.data()), value.size()})};
    Slot &slot = slots_[(seen.printed >> 1) % slots_.size()];
    if (slot.printed == seen.printed && slot.value != seen.value)
        find(text, "prints as another value does");
    compared_ += slot.printed != seen.printed ? 1 : 0;
    slot = seen;
}

void Printing::follow_value(std::span<const std::uint8_t> value)
{
    const std::string printed(parser_.printed(value));
    if (!printed_->accepts(printed))
        return find(printed, "is printed, and the grammar does not have it");
    meet(printed);
    if (!is_lossy(printed))
        compare(printed, {value.begin(), value.end()}, printed);
}

void Printing::meet(std::string_view printed)
{
    Automaton::State state = printed_->start;
    for (const char byte : printed) {
        const auto number = static_cast<unsigned char>(byte);
        met_[state * printed_->classes + printed_->class_of[number]] = true;
        state = printed_->step(state, number);
    }
}

std::size_t Printing::steps_met() const { return static_cast<std::size_t>(std::ranges::count(met_, true)); }

std::size_t Printing::steps() const
{
    if (!printed_)
        return 0;
    const std::vector<bool> leads_on = alive(*printed_);
    std::size_t count = 0;
    for (std::size_t step = 0; step < printed_->next.size(); ++step)
        count += leads_on[step / printed_->classes] && leads_on[printed_->next[step]] ? 1 : 0;
    return count;
}

} // namespace bgpdt::grammar
