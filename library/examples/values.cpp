// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <iostream>

#include <bgpdt/bgpdt.hpp>

int main()
{
    const bgpdt::Library library = bgpdt::Library::open().value();
    const bgpdt::Type rd = library.type("VRFRD").value();
    for (const char *text : {"192.0.2.1:7", "192.0.2.1:70000"}) {
        if (const auto value = rd.parse(text))
            std::cout << *value << " is " << value->hex() << '\n';
        else
            std::cout << value.error().message() << '\n';
    }
}
