// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Seeds of the fuzzers of command lines, lines, names, sequences of calls, the Lua module and the extension for SQLite.
#pragma once

#include <cstddef>
#include <filesystem>

#include "seeds.hpp"

namespace bgpdt::fuzzing {

class FrontSeeds {
public:
    explicit FrontSeeds(const std::filesystem::path &folder);

    /// @param type  its number in the order of the registration
    void add(std::size_t type, const test::Line &line);

private:
    void add_text(std::size_t type, const test::Line &line);
    void add_value(std::size_t type, const test::Line &line);

    Seeds command_line_;
    Seeds lines_;
    Seeds names_;
    Seeds sequence_;
    Seeds lua_;
    Seeds sql_;
};

} // namespace bgpdt::fuzzing
