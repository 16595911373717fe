// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "host/registry.hpp"

#include <cstdio>
#include <new>

namespace bgpdt::host {

Registry *registry = nullptr;

namespace {

std::uint32_t admit(const SYSDT_Record &record)
{
    try {
        const std::uint32_t status = registry->admission ? registry->admission(record) : SYSDT_OK;
        if (status == SYSDT_OK)
            registry->records.push_back(&record);
        return status;
    } catch (const std::bad_alloc &) {
        registry->failure = std::current_exception();
        return SYSDT_ERR_NO_MEMORY;
    } catch (...) {
        registry->failure = std::current_exception();
        return SYSDT_ERR_FAIL;
    }
}

/// Keeps the diagnostic; false when there is nowhere to keep it.
bool keep(const char *source, std::uint32_t line, const char *message)
{
    if (registry == nullptr)
        return false;
    try {
        registry->diagnostics.push_back({source, line, message});
        return true;
    } catch (const std::bad_alloc &) {
        return false;
    }
}

} // namespace
} // namespace bgpdt::host

using namespace bgpdt::host;

uint32_t SYS_Drm_RegisterDataType(uint32_t handle, const SYSDT_Record *record)
{
    if (record == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (registry == nullptr || handle != Registry::handle)
        return SYSDT_ERR_PARAM;
    return admit(*record);
}

void KPL_Assert(const char *source, uint32_t line, const char *message)
{
    source = source != nullptr ? source : "";
    message = message != nullptr ? message : "";
    if (!keep(source, line, message))
        (void)std::fprintf(stderr, "%s:%lu: %s\n", source, static_cast<unsigned long>(line), message);
}
