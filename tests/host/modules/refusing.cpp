// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// A plug-in whose entry fails.
#include "bgp_datatype/host.h"

extern "C" __attribute__((visibility("default"))) uint32_t Bgp_InitDataType(uint32_t) { return SYSDT_ERR_UNSUPPORTED; }
