// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "host/names.hpp"

#include "host/ascii.hpp"
#include "host/registration.hpp"

namespace bgpdt::host {
namespace {

/// Cuts the next word off the line; empty at its end.
std::string_view take_word(std::string_view &line)
{
    while (!line.empty() && is_space(line.front()))
        line.remove_prefix(1);
    std::size_t length = 0;
    while (length != line.size() && !is_space(line[length]))
        ++length;
    const std::string_view word = line.substr(0, length);
    line.remove_prefix(length);
    return word;
}

std::string in_quotes(std::string_view text) { return '"' + std::string(text) + '"'; }

} // namespace

void Names::add_line(std::string_view line)
{
    const std::string_view index_word = take_word(line);
    if (index_word.empty())
        return;
    std::uint32_t index = 0;
    if (SMP_StrToUint32(std::string(index_word).c_str(), &index) != SYSDT_OK)
        throw HostError(in_quotes(index_word) + " is no index: it must be a decimal number up to 4294967295");
    const std::string_view name = take_word(line);
    if (name.empty())
        throw HostError("index " + std::to_string(index) + " has no name");
    if (const std::string_view rest = take_word(line); !rest.empty())
        throw HostError(in_quotes(rest) + " stands behind the name " + in_quotes(name) + ": a name is a single word");
    add(index, name);
}

void Names::add(std::uint32_t index, std::string_view name)
{
    if (name.size() > max_length)
        throw HostError("the name is longer than " + std::to_string(max_length) + " characters");
    if (const std::string *other = name_of(index))
        throw HostError("index " + std::to_string(index) + " has the name " + in_quotes(*other) + " already");
    if (!indexes_.emplace(name, index).second) {
        throw HostError("the name " + in_quotes(name) + " has the index " + std::to_string(*index_of(name)) +
                        " already");
    }
    names_.emplace(index, name);
}

std::optional<std::uint32_t> Names::index_of(std::string_view name) const
{
    const auto found = indexes_.find(name);
    return found == indexes_.end() ? std::nullopt : std::optional(found->second);
}

const std::string *Names::name_of(std::uint32_t index) const
{
    const auto found = names_.find(index);
    return found == names_.end() ? nullptr : &found->second;
}

} // namespace bgpdt::host
