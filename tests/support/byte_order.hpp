// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The vectors' big-endian values for the processor at hand, and back: whatever the fields of their layouts tell.
#pragma once

#include <cstdint>
#include <optional>

#include "words.hpp"

namespace bgpdt::test {

/// What tells a value's layout.
struct Form {
    std::uint16_t kind;
    std::optional<std::uint32_t> sub_kind; ///< instead of the value's own: a row takes every value for one of its own
};

Bytes to_native(const Form &form, const Bytes &value);
Bytes to_target(const Form &form, const Bytes &value);

/// The value turned by the layout of whichever of two big-endian values has any: a swapped value need not tell its own.
Bytes turned_like(const Form &form, const Bytes &first, const Bytes &second, const Bytes &value);

/// What FormatOut is handed; an attribute bitmap comes in a display record, a client VRF name with its number.
Bytes shown_to_native(const Form &form, const Bytes &data);

/// What FormatOut copies; a client VRF name's is a sequence of items.
Bytes copy_to_native(const Form &form, const Bytes &copy);
Bytes copy_to_target(const Form &form, const Bytes &copy);

} // namespace bgpdt::test
