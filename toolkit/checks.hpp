// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What there is to say of values that a type accepts.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bytes.hpp"
#include "session.hpp"

namespace bgpdt::toolkit {

/// What the type accepts and yet may not be meant: host bits behind the length of a prefix; a value that is not printed.
std::vector<std::string> warnings_of(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value);

/// @throws Refusal if the type prints the value of the text in another way
void require_canonical(Session &session, const SYSDT_Record &type, std::string_view text,
                       std::span<const std::uint8_t> value);

} // namespace bgpdt::toolkit
