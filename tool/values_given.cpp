// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "values_given.hpp"

#include <algorithm>
#include <utility>

#include "toolkit/conversions.hpp"
#include "toolkit/errors.hpp"
#include "toolkit/shown_text.hpp"
#include "toolkit/stream_values.hpp"
#include "toolkit/text_pieces.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

Bytes whole(const SYSDT_Record &type, Bytes value)
{
    Bytes room;
    const Value filled = filled_up(type, value, room);
    return {filled.begin(), filled.end()};
}

/// Whether the argument can be the bytes of a value, or was meant to be.
struct Hex {
    bool fits;  ///< as many digits as a value has
    bool looks; ///< digits that no decimal number has

    Hex(const SYSDT_Record &type, std::string_view argument)
    {
        constexpr std::size_t brief = 8;
        const bool digits = std::ranges::all_of(argument, is_hex) && argument.size() % 2 == 0;
        fits = digits && argument.size() == 2 * value_size(type);
        looks = digits && argument.size() >= brief &&
                (argument.starts_with("00") || std::ranges::any_of(argument, is_letter));
    }
};

} // namespace

Bytes read_bytes(Session &session, const SYSDT_Record &type, std::string_view hex)
{
    Bytes value;
    try {
        value = from_hex(hex);
    } catch (const Refusal &) {
        const bool is_text = type.formatIn != nullptr && session.host().parse(type, hex, session.mode_for(type)).ok();
        if (!is_text)
            throw;
        throw Refusal(lua_quoted(hex) + " is a text of " + name_of(type) + ", and its bytes are wanted in hexadecimal");
    }
    if (!session.settings().native)
        turn_to_native(type, value);
    return value;
}

Bytes read_value(Session &session, const SYSDT_Record &type, std::string_view hex)
{
    Bytes value = whole(type, read_bytes(session, type, hex));
    require_size(type, value, value_size(type));
    return value;
}

Given read_given(Session &session, const SYSDT_Record &type, const std::string &argument, Length length)
{
    const auto bytes = [&] {
        return length == Length::any ? read_bytes(session, type, argument) : read_value(session, type, argument);
    };
    if (argument.starts_with("0x") || argument.starts_with("0X") || type.formatIn == nullptr)
        return {bytes(), false};
    const Hex hex(type, argument);
    const std::uint8_t mode = session.mode_for(type);
    const host::Converted parsed = session.host().parse(type, argument, mode); // a NUL cannot stand in an argument
    const bool taken = parsed.ok() && !parsed.data.empty();
    if (!taken && (hex.fits || hex.looks))
        return {bytes(), false};
    Given given{whole(type, parse_text(session, type, argument, mode).data), true};
    if (hex.fits)
        given.note = lua_quoted(argument) + " is taken as text; behind 0x it is bytes";
    return given;
}

std::string hex_of(const Session &session, const SYSDT_Record &type, Bytes value)
{
    if (!session.settings().native)
        turn_to_target(type, value);
    return to_hex(value);
}

} // namespace bgpdt::tool
