// SPDX-License-Identifier: Apache-2.0
#include "module_session.hpp"

#include <dlfcn.h>

#include <memory>

#include "errors.hpp"

namespace bgpdt::tool {
namespace {

/// The plug-in takes its services from the process: also where they came along with a module that was loaded locally.
void offer_services()
{
    Dl_info info;
    const bool known = dladdr(reinterpret_cast<const void *>(&SYS_DataTypeFree), &info) != 0;
    void *services = known ? dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_GLOBAL) : nullptr;
    if (services == nullptr) {
        throw UsageError("the library of the host's services cannot be offered to the plug-in");
    }
    dlclose(services); // it stays loaded with this library
}

Session *new_session()
{
    offer_services();
    auto options = std::make_unique<Options>();
    auto session = std::make_unique<Session>(*options);
    static_cast<void>(options.release()); // the session reads them
    return session.release();
}

} // namespace

Session &module_session()
{
    static Session &session = *new_session(); // and never destroyed
    return session;
}

} // namespace bgpdt::tool
