// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "common/key_address.hpp"

namespace bgpdt {

u32 read_ipv4(const char *text, SYSDT_EvpnAddress &field)
{
    u32 address = 0;
    if (SYSDT_Str2Ipv4(text, &address) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    field.ipv4 = address;
    field.family = family_ipv4;
    return SYSDT_OK;
}

} // namespace bgpdt
