// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "registry.hpp"

#include <dlfcn.h>

#pragma GCC visibility push(default)
extern "C" {

uint32_t SYS_Drm_RegisterDataType(uint32_t handle, const SYSDT_Record *record)
{
    using bgpdt::test::Registry;
    static auto *const next =
        reinterpret_cast<decltype(SYS_Drm_RegisterDataType) *>(dlsym(RTLD_NEXT, "SYS_Drm_RegisterDataType"));
    return Registry::current != nullptr ? Registry::current->answer(handle, record) : next(handle, record);
}

} // extern "C"
#pragma GCC visibility pop
