// SPDX-License-Identifier: Apache-2.0
#include "session.hpp"

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <vector>

#include "errors.hpp"
#include "near_names.hpp"

namespace bgpdt::tool {
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

fs::path find_plugin(const Options &options)
{
    if (!options.plugin.empty()) {
        return fs::absolute(options.plugin); // the loader looks a bare name up elsewhere
    }
    if (const char *named = std::getenv("BGPDT_PLUGIN"); named != nullptr && *named != '\0') {
        return fs::absolute(named);
    }
    const fs::path module = own_module();
    const fs::path here = fs::canonical(module.empty() ? "/proc/self/exe" : module).parent_path();
    for (const fs::path &folder : {here, here / BGPDT_LIBRARIES, here / "../lib", here / "../src"}) {
        fs::path candidate = folder / "libbgp_datatype.so";
        if (fs::exists(candidate)) {
            return candidate;
        }
    }
    throw UsageError("libbgp_datatype.so stands neither in " + here.string() +
                     " nor in " BGPDT_LIBRARIES ", ../lib or ../src beside it; name the plug-in with " +
                     (module.empty() ? "--plugin FILE or " : "") + "BGPDT_PLUGIN");
}

} // namespace

Session::Session(const Options &options) : options_(options), host_(find_plugin(options))
{
    if (!options.names.empty()) {
        host_.load_names(options.names);
    }
}

const SYSDT_Record &Session::type(std::string_view name) const
{
    if (const SYSDT_Record *record = host_.find(name)) {
        return *record;
    }
    const auto has_name = [&name](const SYSDT_Record *type) { return lower(name_of(*type)) == lower(name); };
    const auto types = host_.types();
    if (const auto found = std::ranges::find_if(types, has_name); found != types.end()) {
        return **found;
    }
    std::vector<std::string> names;
    std::ranges::transform(types, std::back_inserter(names), [](const auto *type) { return name_of(*type); });
    throw UsageError("there is no type " + std::string(name) + did_you_mean(name, names) +
                     "; 'bgpdt types' lists the types");
}

std::uint8_t Session::mode_for(const SYSDT_Record &type) const
{
    const bool printed_only = type.formatIn == nullptr;
    const bool host_string = type.baseKind == SYSDT_KIND_STRING;
    return options_.mode.value_or(printed_only || host_string ? 1 : 2);
}

std::string name_of(const SYSDT_Record &type)
{
    const auto *end = std::find(std::begin(type.name), std::end(type.name), '\0');
    return {std::begin(type.name), end};
}

} // namespace bgpdt::tool
