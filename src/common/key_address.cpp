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

u32 read_ipv6(const char *text, SYSDT_EvpnAddress &field)
{
    if (SYSDT_Str2Ipv6(text, field.ipv6) != SYSDT_OK)
        return SYSDT_ERR_FAIL;
    field.family = family_ipv6;
    return SYSDT_OK;
}

} // namespace bgpdt
