// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <iostream>

#include "host/host.hpp"

int main(int argc, char **argv)
{
    bgpdt::host::Host host(argc > 1 ? argv[1] : "libbgp_datatype.so");
    const SYSDT_Record &type = *host.find("VRFRD");
    const auto value = host.parse(type, "192.0.2.1:7", 2);
    std::cout << value.data.size() << " bytes: " << host.print(type, value.data, 2).text() << '\n';
}
