// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The plug-in is a file that is loaded.
#include <dlfcn.h>

#include <filesystem>

#include "bgp_datatype/host.h"
#include "library.hpp"
#include "toolkit/errors.hpp"

namespace bgpdt::library {
namespace {

/// The plug-in takes its services from the process: also where they came along with a module that was loaded locally.
void offer_services()
{
    Dl_info info;
    const bool known = dladdr(reinterpret_cast<const void *>(&SYS_DataTypeFree), &info) != 0;
    void *services = known ? dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_GLOBAL) : nullptr;
    if (services == nullptr)
        throw toolkit::Error("the library of the host's services cannot be offered to the plug-in");
    dlclose(services); // it stays loaded with this library
}

} // namespace

std::unique_ptr<toolkit::Session> new_session(toolkit::Settings settings)
{
    offer_services();
    return std::make_unique<toolkit::Session>(std::move(settings));
}

bool names_plugin(const toolkit::Settings &asked, const toolkit::Settings &opened)
{
    return asked.plugin.empty() || std::filesystem::absolute(asked.plugin) == opened.plugin;
}

} // namespace bgpdt::library
