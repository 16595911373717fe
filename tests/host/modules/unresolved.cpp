// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// A plug-in that imports what no host defines.
#include <cstdint>

extern "C" {
std::uint32_t SYSDT_NoSuchService();

__attribute__((visibility("default"))) std::uint32_t Bgp_InitDataType(std::uint32_t) { return SYSDT_NoSuchService(); }
}
