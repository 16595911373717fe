// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Files that are replaced whole or not at all.
#pragma once

#include <filesystem>
#include <optional>

#include "descriptor.hpp"
#include "signals.hpp"

namespace bgpdt::tool {

/// Where the name leads, over symbolic links: the file that is to be written, whether there is one or not.
std::filesystem::path followed(const std::filesystem::path &name);

/// What is written in the place of a file, or where none is. It has no name, so that nothing is left however the program
/// ends, and takes that of the file when all is written. Where a folder holds no files without a name it has one beside
/// the file, which SIGKILL leaves.
class Replacement {
public:
    /// Without a descriptor, and with errno, if that fails. Owner and permissions are those of the file, as far as the
    /// system lets them be.
    explicit Replacement(std::filesystem::path path);

    int descriptor() const { return file_.number(); }
    /// Puts it in its place. False, with errno and the file as it was, if that fails.
    bool commit();

private:
    template <class Make>
    bool take_name(Make make);

    std::filesystem::path path_;
    std::optional<TemporaryName> name_; ///< of its own
    Descriptor file_;
};

} // namespace bgpdt::tool
