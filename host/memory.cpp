// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Memory, and the help information that is made of it.
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "host/host.hpp"
#include "host/services.hpp"
#include "host/thread_memory.hpp"

namespace bgpdt::host {

// The model is told again: g++ does not take it from the declaration.
[[gnu::tls_model("initial-exec")]] constinit thread_local ThreadMemory thread_memory;

namespace {

void *take(size_t size)
{
    if (LentBlock *const lent = thread_memory.lent; lent != nullptr && !lent->taken && size <= LentBlock::size) {
        lent->taken = true;
        return lent->bytes;
    }
    void *const block = std::malloc(std::max<size_t>(size, 1));
    if (block == nullptr)
        thread_memory.refused = true;
    return block;
}

} // namespace
} // namespace bgpdt::host

void *SYS_DataTypeMallocByHandle(uint32_t, uint32_t size) { return bgpdt::host::take(size); }

void *SYS_DataTypeMalloc(uint32_t size) { return bgpdt::host::take(size); }

void SYS_DataTypeFree(void *block)
{
    if (auto *const lent = bgpdt::host::thread_memory.lent; lent != nullptr && block == lent->bytes) {
        lent->taken = false;
        return;
    }
    std::free(block);
}

uint32_t SYSDT_InitHelpInfo(uint32_t handle, SYSDT_HelpInfo *info, uint32_t count)
{
    if (info == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const uint64_t size = uint64_t{count} * sizeof *info->entries;
    void *const block = size <= UINT32_MAX ? SYS_DataTypeMallocByHandle(handle, static_cast<uint32_t>(size)) : nullptr;
    if (block == nullptr) {
        *info = {};
        return SYSDT_ERR_NO_MEMORY;
    }
    info->count = count;
    info->entries = static_cast<char **>(block);
    std::fill_n(info->entries, count, nullptr);
    return SYSDT_OK;
}

void SYSDT_ClearHelpInfo(SYSDT_HelpInfo *info)
{
    if (info == nullptr || info->entries == nullptr)
        return;
    std::for_each_n(info->entries, info->count, SYS_DataTypeFree);
    SYS_DataTypeFree(info->entries);
    *info = {};
}

uint32_t KPL_CheckBySymbolForIPV4(SYSDT_Context *, const SYSDT_HelpRequest *, SYSDT_HelpInfo *) { return SYSDT_OK; }
