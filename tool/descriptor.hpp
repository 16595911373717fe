// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// File descriptors.
#pragma once

#include <string_view>

namespace bgpdt::tool {

/// Whether what was written to a descriptor, which stays open, is known to have arrived: some systems tell at a close.
bool has_arrived(int descriptor);

/// A file descriptor, closed with it but for the standard ones.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { static_cast<void>(close()); }
    Descriptor(Descriptor &&other) noexcept;
    Descriptor &operator=(Descriptor &&other) noexcept;

    int number() const { return number_; }
    bool is_open() const { return number_ >= 0; }
    /// @return whether what was written is known to have arrived
    bool close();

private:
    int number_;
};

/// Puts something that can neither be read nor written in the place of a standard descriptor that is closed, lest a file
/// take it.
void guard_standard_descriptors();

/// Writes all of it. False, with errno, if that fails.
bool write_all(int descriptor, std::string_view text);

} // namespace bgpdt::tool
