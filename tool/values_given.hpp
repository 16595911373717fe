// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Values as arguments: text, or bytes in hexadecimal.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "toolkit/bytes.hpp"
#include "toolkit/session.hpp"

namespace bgpdt::tool {

struct Given {
    toolkit::Bytes value; ///< in the machine's order
    bool by_text;
    std::string note = {}; ///< where the argument could be meant in two ways: in which it was taken
};

/// The bytes of a hexadecimal argument in the machine's order, however many there are.
toolkit::Bytes read_bytes(toolkit::Session &session, const SYSDT_Record &type, std::string_view hex);
/// As read_bytes, but of the type's length.
toolkit::Bytes read_value(toolkit::Session &session, const SYSDT_Record &type, std::string_view hex);

enum class Length : std::uint8_t { whole, any };

/// Text if the type takes it, else bytes; behind 0x bytes alone.
/// @param length  of bytes: the type's, or any
/// @throws toolkit::Refusal
Given read_given(toolkit::Session &session, const SYSDT_Record &type, const std::string &argument,
                 Length length = Length::whole);

/// In hexadecimal, in the byte order that is asked for.
std::string hex_of(const toolkit::Session &session, const SYSDT_Record &type, toolkit::Bytes value);

} // namespace bgpdt::tool
