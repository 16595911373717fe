// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The loaded plug-in, and how its types are used.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/host.hpp"

namespace bgpdt::toolkit {

/// How AS numbers above 65535 are printed.
enum class Notation : std::uint8_t { as_written, plain, dotted };

struct Settings {
    std::string plugin = {};               ///< its file; empty: $BGPDT_PLUGIN's, else near this program or module
    std::string names = {};                ///< the file of the names behind the indexes; empty: there are none
    std::optional<std::uint8_t> mode = {}; ///< for all types
    Notation notation = Notation::as_written;
    bool native = false; ///< bytes outside are in the machine's order, not in the target's
};

class Session {
public:
    /// Loads the plug-in and the names.
    /// @throws Error if there is no plug-in, host::HostError
    explicit Session(Settings settings);
    /// With a plug-in that the program has in itself.
    Session(Settings settings, const host::LinkedPlugin &plugin);

    host::Host &host() { return host_; }
    /// As they were given, but for the plug-in's file, which is the one that was loaded.
    const Settings &settings() const { return settings_; }

    /// Other names in place of those there were; no conversion meanwhile.
    /// @throws host::HostError; the names are then those from before
    void load_names(const std::string &file);

    /// The record of that name, in any case.
    /// @throws Error with names like it
    const SYSDT_Record &type(std::string_view name) const;
    /// What the type makes of the text.
    /// @throws std::bad_alloc where there was no memory, which says nothing of the text
    host::Converted parse(const SYSDT_Record &type, std::string_view text, std::uint8_t mode);
    /// The mode asked for, else the one in which the type's text goes both ways: 2; but 1 for what is only printed,
    /// and for the host's own strings, whose mode 2 is a structured form.
    std::uint8_t mode_for(const SYSDT_Record &type) const;

private:
    /// Those of the settings, if any.
    void load_names();

    Settings settings_;
    host::Host host_;
};

std::string name_of(const SYSDT_Record &type);

} // namespace bgpdt::toolkit
