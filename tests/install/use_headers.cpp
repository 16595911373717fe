// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// The headers alone: where the fields of a route distinguisher stand.
#include <iostream>

#include "bgp_datatype/bgp_datatype.h"
#include "bgp_datatype/fields.hpp"

int main()
{
    for (const bgpdt::Field &field : bgpdt::layout_of(SYSDT_TYPE_VRFRD, {}, std::endian::native).fields)
        std::cout << field.offset << ' ' << field.size() << ' ' << field.name << '\n';
}
