// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Seeds of the fuzzers, as they are written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>

#include "input.hpp"
#include "support/vector_file.hpp"
#include "toolkit/digits.hpp"

namespace bgpdt::fuzzing {

inline std::string hex_of(const test::Bytes &bytes)
{
    std::string hex;
    for (const std::uint8_t byte : bytes)
        hex += {toolkit::hex_digits[byte >> 4], toolkit::hex_digits[byte & 0x0f]};
    return hex;
}

/// A folder of seeds, each under a name of what it holds.
class Seeds {
public:
    explicit Seeds(std::filesystem::path folder) : folder_(std::move(folder))
    {
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }

    void add(const test::Bytes &seed)
    {
        const std::string content(seed.begin(), seed.end());
        if (seed.size() > most_bytes || !known_.insert(content).second)
            return;
        std::ofstream file(folder_ / std::to_string(known_.size()), std::ios::binary);
        file << content;
        if (!file.flush())
            throw std::runtime_error("cannot write to " + folder_.string());
    }
    std::size_t count() const { return known_.size(); }

private:
    std::filesystem::path folder_;
    std::set<std::string> known_;
};

/// Adds what the library's fuzzer begins with of a line about a type.
/// @param type  its number in the order of the registration
void add_library_seeds(Seeds &seeds, std::size_t type, const test::Line &line);

/// Adds what the wire's fuzzer begins with.
/// @param samples  the file of the tests' samples
void add_wire_seeds(Seeds &seeds, const std::string &samples);

} // namespace bgpdt::fuzzing
