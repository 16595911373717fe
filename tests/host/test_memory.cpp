// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "test_memory.hpp"

#include <dlfcn.h>

#include "host/host.hpp"

namespace test_memory {

int blocks = 0;
std::uint32_t last_handle = 0;

namespace {

int allowed_blocks = -1; // negative: any number

/// The host's own service behind the one of this program.
template <class Service>
Service *next(const char *name)
{
    return reinterpret_cast<Service *>(dlsym(RTLD_NEXT, name));
}

bool granted()
{
    if (allowed_blocks == 0)
        return false;
    allowed_blocks -= allowed_blocks > 0 ? 1 : 0;
    ++blocks;
    return true;
}

} // namespace

Shortage::Shortage(int allowed) { allowed_blocks = allowed; }
Shortage::~Shortage() { allowed_blocks = -1; }

} // namespace test_memory

using namespace test_memory;

void *SYS_DataTypeMallocByHandle(uint32_t handle, uint32_t size)
{
    static auto *const service = next<decltype(SYS_DataTypeMallocByHandle)>("SYS_DataTypeMallocByHandle");
    last_handle = handle;
    return granted() ? service(handle, size) : nullptr;
}

void *SYS_DataTypeMalloc(uint32_t size)
{
    static auto *const service = next<decltype(SYS_DataTypeMalloc)>("SYS_DataTypeMalloc");
    return granted() ? service(size) : nullptr;
}

void SYS_DataTypeFree(void *block)
{
    static auto *const service = next<decltype(SYS_DataTypeFree)>("SYS_DataTypeFree");
    blocks -= block != nullptr ? 1 : 0;
    service(block);
}
