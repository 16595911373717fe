// SPDX-License-Identifier: Apache-2.0
/// @file
/// The loaded plug-in together with what the command line says.
#ifndef BGPDT_TOOL_SESSION_HPP
#define BGPDT_TOOL_SESSION_HPP

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "host/host.hpp"
#include "options.hpp"

namespace bgpdt::tool {

class Session {
public:
    /// Loads the plug-in and the names.
    /// @throws UsageError, host::HostError
    explicit Session(const Options &options);

    host::Host &host() { return host_; }
    const Options &options() const { return options_; }

    /// The record of that name, in any case.
    /// @throws UsageError with names like it
    const SYSDT_Record &type(std::string_view name) const;
    /// The mode asked for, else the one in which the type's text goes both ways: 2; but 1 for what is only printed,
    /// and for the host's own strings, whose mode 2 is a structured form.
    std::uint8_t mode_for(const SYSDT_Record &type) const;

private:
    const Options &options_;
    host::Host host_;
};

std::string name_of(const SYSDT_Record &type);

} // namespace bgpdt::tool

#endif
