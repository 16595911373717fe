// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the services share with the living Host.
#pragma once

#include <exception>
#include <vector>

#include "host/names.hpp"
#include "host/registration.hpp"

namespace bgpdt::host {

struct Registry {
    /// Owner of the registrations and of the blocks that conversions take.
    static constexpr std::uint32_t handle = 0xB69D7001;

    Admission admission;
    std::exception_ptr failure; ///< to take a record; the plug-in's frames must not be unwound
    std::vector<const SYSDT_Record *> records;
    std::vector<Diagnostic> diagnostics;
    Names names;
};

/// The living Host's registry, or null.
extern Registry *registry;

} // namespace bgpdt::host
