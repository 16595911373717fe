// SPDX-License-Identifier: Apache-2.0
#include "module_session.hpp"

#include <dlfcn.h>

#include "errors.hpp"

namespace bgpdt::toolkit {
namespace {

/// The plug-in takes its services from the process: also where they came along with a module that was loaded locally.
void offer_services()
{
    Dl_info info;
    const bool known = dladdr(reinterpret_cast<const void *>(&SYS_DataTypeFree), &info) != 0;
    void *services = known ? dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_GLOBAL) : nullptr;
    if (services == nullptr)
        throw Error("the library of the host's services cannot be offered to the plug-in");
    dlclose(services); // it stays loaded with this library
}

Session *new_session()
{
    offer_services();
    return new Session({});
}

} // namespace

Session &module_session()
{
    static Session &session = *new_session(); // and never destroyed
    return session;
}

} // namespace bgpdt::toolkit
