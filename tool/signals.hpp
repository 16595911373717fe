// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Files that a signal which ends the program takes along.
#pragma once

#include <csignal>
#include <filesystem>

namespace bgpdt::tool {

/// Keeps the signals that end the program from this thread, and from those that it starts, while it lives.
class SignalsHeld {
public:
    SignalsHeld();
    ~SignalsHeld();
    SignalsHeld(const SignalsHeld &) = delete;
    SignalsHeld &operator=(const SignalsHeld &) = delete;

private:
    sigset_t before_;
};

/// A file that is removed with the object, or by a signal. It is made and released while signals are held.
class TemporaryName {
public:
    explicit TemporaryName(std::filesystem::path path);
    ~TemporaryName();
    TemporaryName(const TemporaryName &) = delete;
    TemporaryName &operator=(const TemporaryName &) = delete;

    const char *path() const { return path_.c_str(); }
    /// The file has another name by now.
    void release();

private:
    std::filesystem::path path_;
};

} // namespace bgpdt::tool
