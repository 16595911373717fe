// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The operations of a type, as the fronts use them: values are in the machine's byte order, and whatever
/// the type refuses is thrown as a Refusal with a sentence that says why; where it had no memory, std::bad_alloc.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bytes.hpp"
#include "errors.hpp"
#include "session.hpp"

struct lua_State;

namespace bgpdt::toolkit {

/// What a type printed: text, or bytes in the modes that copy the value or build another form.
struct Printed {
    std::uint16_t kind;
    std::optional<std::string> text;
    Bytes bytes;
};

/// Why the type answers the status for a text: what parse_text throws.
/// @throws std::bad_alloc where there was no memory
Refusal text_refusal(Session &session, const SYSDT_Record &type, std::string_view text, std::uint8_t mode,
                     std::uint32_t status);

host::Converted parse_text(Session &session, const SYSDT_Record &type, std::string_view text, std::uint8_t mode);
/// The value in the notation of AS numbers that is asked for, in the room if that is another than its own.
std::span<const std::uint8_t> in_asked_notation(const Session &session, const SYSDT_Record &type,
                                                std::span<const std::uint8_t> value, Bytes &room);

/// @param nothing  goes on with the sentence about a value for which the type prints nothing
Printed print_value(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value, std::uint8_t mode,
                    const std::string &nothing = {});
void check_value(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value);
/// 1, 0 or -1.
int compare_values(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> first,
                   std::span<const std::uint8_t> second);
void swap_value(Session &session, const SYSDT_Record &type, std::span<std::uint8_t> value);
/// Pushes the script form.
void push_table(Session &session, lua_State *lua, const SYSDT_Record &type, std::span<const std::uint8_t> value);
/// Reads the script form on top of the stack.
Bytes read_table(Session &session, lua_State *lua, const SYSDT_Record &type);

/// @param what  what it has that has that length
/// @throws Refusal if the value has not the given length
void require_size(const SYSDT_Record &type, std::span<const std::uint8_t> value, std::size_t size,
                  const char *what = "has values of another length");

} // namespace bgpdt::toolkit
