// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "display_values.hpp"

#include <algorithm>
#include <utility>

#include "errors.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

const DisplayKind &find_kind(std::string_view argument, std::string_view word)
{
    const auto kinds = display_kinds();
    const auto found = std::ranges::find_if(
        kinds, [word](const DisplayKind &kind) { return word == kind.name || word == std::to_string(kind.number); });
    if (found == kinds.end()) {
        throw UsageError("--value " + std::string(argument) + " names no kind of value; it is KIND=VALUE with one of " +
                         display_kind_names());
    }
    return *found;
}

} // namespace

std::string display_kind_names()
{
    std::string words;
    for (const DisplayKind &kind : display_kinds())
        words.append(words.empty() ? "" : ", ").append(kind.name).append(" (" + std::to_string(kind.number) + ")");
    return words;
}

DisplayValue read_display_value(std::string_view argument)
{
    const std::size_t equals = std::min(argument.find('='), argument.size());
    const DisplayKind &kind = find_kind(argument, argument.substr(0, equals));
    if (equals == argument.size())
        throw UsageError("--value " + std::string(argument) + " has no value; it is KIND=VALUE");
    const std::string value(argument.substr(equals + 1));
    Bytes data = kind.read(value);
    if (data.empty())
        throw Refusal("--value " + std::string(argument) + ": " + kind.name + " is " + kind.values);
    return {kind.number, std::move(data)};
}

} // namespace bgpdt::tool
