// SPDX-License-Identifier: Apache-2.0
#include "session.hpp"

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <new>
#include <utility>
#include <vector>

#include "errors.hpp"
#include "near_names.hpp"

namespace bgpdt::toolkit {
namespace {

namespace fs = std::filesystem;

/// Where this code was loaded from: a shared module's path; empty if it is of the program itself.
fs::path own_module()
{
    static const char own = 0;
    Dl_info info;
    link_map *map = nullptr;
    const bool known = dladdr1(&own, &info, reinterpret_cast<void **>(&map), RTLD_DL_LINKMAP) != 0;
    return known ? fs::path(map->l_name) : fs::path();
}

fs::path find_plugin(const std::string &given)
{
    if (!given.empty())
        return fs::absolute(given); // the loader looks a bare name up elsewhere
    if (const char *named = std::getenv("BGPDT_PLUGIN"); named != nullptr && *named != '\0')
        return fs::absolute(named);
    const fs::path module = own_module();
    const fs::path here = fs::canonical(module.empty() ? "/proc/self/exe" : module).parent_path();
    for (const fs::path &folder : {here, here / BGPDT_LIBRARIES, here / "../lib", here / "../src"}) {
        fs::path candidate = folder / "libbgp_datatype.so";
        if (fs::exists(candidate))
            return candidate;
    }
    const std::string front = "libbgp_datatype.so stands neither in " + here.string() +
                              " nor in " BGPDT_LIBRARIES ", ../lib or ../src beside it; name the plug-in with ";
    throw Error(front + "BGPDT_PLUGIN", Hint::plugin, front.size());
}

Settings with_plugin(Settings settings)
{
    settings.plugin = find_plugin(settings.plugin).string();
    return settings;
}

} // namespace

Session::Session(Settings settings) : settings_(with_plugin(std::move(settings))), host_(settings_.plugin)
{
    if (!settings_.names.empty())
        host_.load_names(settings_.names);
}

Session::Session(Settings settings, const host::LinkedPlugin &plugin) : settings_(std::move(settings)), host_(plugin)
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
