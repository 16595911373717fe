// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What is asked and told while a plug-in is loaded and registers its types.
#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

#pragma GCC visibility push(default)
#include "bgp_datatype/host.h"

namespace bgpdt::host {

/// The plug-in cannot be loaded, a names file cannot be read.
class HostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Decides whether a record is taken: returns the status that the plug-in sees. What it throws comes out of the host's
/// constructor, after the registration.
using Admission = std::function<std::uint32_t(const SYSDT_Record &)>;

/// One diagnostic raised through KPL_Assert.
struct Diagnostic {
    std::string source;
    std::uint32_t line;
    std::string message;
};

} // namespace bgpdt::host

#pragma GCC visibility pop
