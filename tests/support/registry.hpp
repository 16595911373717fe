// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the plug-in registers, with a registry that may refuse it.
#pragma once

#include <cstdint>
#include <vector>

#include "bgp_datatype/host.h"
#include "failing.hpp"

namespace bgpdt::test {

/// One call of SYS_Drm_RegisterDataType.
struct Registration {
    std::uint32_t handle;
    const SYSDT_Record *record;
};

/// While one lives, it answers the calls in the host's place.
class Registry {
public:
    /// Answers the status to the registrations that fail.
    explicit Registry(Failing failing = {}, std::uint32_t status = SYSDT_OK) : failing_(failing), status_(status)
    {
        current = this;
    }
    ~Registry() { current = nullptr; }
    Registry(const Registry &) = delete;
    Registry &operator=(const Registry &) = delete;

    std::uint32_t answer(std::uint32_t handle, const SYSDT_Record *record)
    {
        calls.push_back({handle, record});
        return failing_.hits(calls.size()) ? status_ : SYSDT_OK;
    }

    std::vector<Registration> calls;
    static inline Registry *current = nullptr;

private:
    Failing failing_;
    std::uint32_t status_;
};

} // namespace bgpdt::test
