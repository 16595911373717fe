// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Values from the wire, written: a line each, with what they have no room for.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/errors.hpp"
#include "toolkit/json_text.hpp"
#include "toolkit/script_table.hpp"
#include "toolkit/session.hpp"
#include "toolkit/stream_values.hpp"
#include "wire/wire.hpp"

namespace bgpdt::tool {

/// Where in a capture a value stands.
struct Frame {
    std::uint64_t number;
    bool withdrawn;
};

/// The type of the form's values.
const SYSDT_Record &record_of(toolkit::Session &session, const wire::Form &form);

class ItemWriter {
public:
    /// @param format  text, hex or json
    ItemWriter(toolkit::Session &session, toolkit::Format format) : session_(session), format_(format) {}

    /// @param octets  those of the wire that the value is read from
    std::string line(const wire::Form &form, const wire::Item &item, wire::Octets octets,
                     const std::optional<Frame> &frame = {});
    toolkit::JsonObject json(const wire::Form &form, const wire::Item &item, wire::Octets octets,
                             const std::optional<Frame> &frame);

private:
    std::string value_text(const SYSDT_Record &type, const wire::Bytes &value);

    toolkit::Session &session_;
    toolkit::Format format_;
    toolkit::ScriptJson script_;
};

/// What is wrong with octets, and where in the text that has them in hexadecimal.
/// @param front   what the octets are, in front of the sentence
/// @param advice  behind it
toolkit::Refusal refusal_of(const std::string &front, const wire::BadBytes &bad, std::string_view text,
                            const std::string &advice = {});

} // namespace bgpdt::tool
