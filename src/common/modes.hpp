// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Conversion modes and the screens that decide which of them a callback serves.
#pragma once

#include "common/types.hpp"

namespace bgpdt {

inline constexpr u8 highest_mode = 6;

/// The modes as a set, one bit each.
constexpr u8 modes(auto... mode) { return static_cast<u8>((0U | ... | (1U << mode))); }

constexpr bool contains(u8 set, u8 mode) { return mode <= highest_mode && (set >> mode & 1) != 0; }

/// What a callback answers to each mode: it serves some, fails some, and does not support the rest.
struct ModeScreen {
    u8 served;
    u8 failed;

    constexpr u32 status(u8 mode) const
    {
        if (contains(served, mode))
            return SYSDT_OK;
        return contains(failed, mode) ? SYSDT_ERR_FAIL : SYSDT_ERR_UNSUPPORTED;
    }
};

inline constexpr ModeScreen strict_screen{modes(1, 2, 6), modes(0, 3, 5)};
inline constexpr ModeScreen text_only_screen = strict_screen;
inline constexpr ModeScreen narrow_screen{modes(1, 2), modes(0, 3, 5, 6)};
inline constexpr ModeScreen open_screen{modes(0, 1, 2, 3, 5, 6), modes()};
inline constexpr ModeScreen with_copy_screen{modes(1, 2, 3, 6), modes(0, 5)};

} // namespace bgpdt
