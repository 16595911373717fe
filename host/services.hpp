// SPDX-License-Identifier: Apache-2.0
/// @file
/// The services' declarations for the files that define them: visible to every module of the process.
#pragma once

#pragma GCC visibility push(default)
#include "bgp_datatype/host.h"
#pragma GCC visibility pop
