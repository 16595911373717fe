// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where the file of the plug-in is found, for a session that loads it.
#include <dlfcn.h>
#include <link.h>

#include <cstdlib>
#include <filesystem>
#include <utility>

#include "errors.hpp"
#include "session.hpp"

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
    for (const fs::path &folder : {here, here / "bgpdt", here / BGPDT_PLUGIN_DIR, here / "../src"}) {
        fs::path candidate = folder / "libbgp_datatype.so";
        if (fs::exists(candidate))
            return candidate;
    }
    const std::string front = "libbgp_datatype.so stands neither in " + here.string() +
                              " nor in bgpdt, " BGPDT_PLUGIN_DIR " or ../src from there; name the plug-in with ";
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
    load_names();
}

} // namespace bgpdt::toolkit
