// SPDX-License-Identifier: Apache-2.0
/// @file
/// The session of the modules for other programs, in a library of its own: two of them in one program share it, since a
/// process has one host.
#pragma once

#include "session.hpp"

namespace bgpdt::toolkit {

/// Lives until the process is gone, whichever modules are unloaded and whatever else still runs at the exit.
/// @throws Error, host::HostError; the next call tries again
[[gnu::visibility("default")]] Session &module_session();

} // namespace bgpdt::toolkit
