// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Names are read from a file.
#include <cerrno>
#include <cstring>
#include <fstream>

#include "host/names.hpp"
#include "host/registration.hpp"

namespace bgpdt::host {

Names::Names(const std::filesystem::path &file)
{
    std::ifstream in(file);
    std::string line;
    for (std::size_t number = 1; std::getline(in, line); ++number) {
        try {
            add_line(std::string_view(line).substr(0, line.find('#')));
        } catch (const HostError &error) {
            throw HostError(file.string() + ':' + std::to_string(number) + ": " + error.what());
        }
    }
    if (!in.eof())
        throw HostError("cannot read the names file " + file.string() + ": " + std::strerror(errno));
}

} // namespace bgpdt::host
