// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "session.hpp"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>
#include <vector>

#include "errors.hpp"
#include "near_names.hpp"

namespace bgpdt::toolkit {

Session::Session(Settings settings, const host::LinkedPlugin &plugin) : settings_(std::move(settings)), host_(plugin)
{
    load_names();
}

void Session::load_names()
{
    if (!settings_.names.empty())
        host_.load_names(settings_.names);
}

void Session::load_names(const std::string &file)
{
    std::string loaded = file;
    host_.load_names(file);
    settings_.names = std::move(loaded);
}

const SYSDT_Record &Session::type(std::string_view name) const
{
    if (const SYSDT_Record *record = host_.find(name))
        return *record;
    const auto has_name = [&name](const SYSDT_Record *type) { return lower(name_of(*type)) == lower(name); };
    const auto types = host_.types();
    if (const auto found = std::ranges::find_if(types, has_name); found != types.end())
        return **found;
    std::vector<std::string> names;
    std::ranges::transform(types, std::back_inserter(names), [](const auto *type) { return name_of(*type); });
    throw Error("there is no type " + std::string(name) + did_you_mean(name, names), Hint::types);
}

host::Converted Session::parse(const SYSDT_Record &type, std::string_view text, std::uint8_t mode)
{
    host::Converted converted = host_.parse(type, text, mode);
    if (converted.status == SYSDT_ERR_NO_MEMORY)
        throw std::bad_alloc();
    return converted;
}

std::uint8_t Session::mode_for(const SYSDT_Record &type) const
{
    const bool printed_only = type.formatIn == nullptr;
    const bool host_string = type.baseKind == SYSDT_KIND_STRING;
    return settings_.mode.value_or(printed_only || host_string ? 1 : 2);
}

std::string name_of(const SYSDT_Record &type)
{
    const auto *end = std::find(std::begin(type.name), std::end(type.name), '\0');
    return {std::begin(type.name), end};
}

} // namespace bgpdt::toolkit
