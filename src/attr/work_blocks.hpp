// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The blocks in which a listing is made, and the status of one that cannot be.
#pragma once

#include <cstring>
#include <string_view>

#include "common/types.hpp"

namespace bgpdt::attr {

inline constexpr u32 unlistable = 1;

inline constexpr std::size_t listing_block = 4096;
inline constexpr std::size_t text_block = 300; ///< label, template, and the parts of both

/// Copies what fits in front of a NUL.
inline void copy_text(char *to, std::size_t size, std::string_view source)
{
    if (size == 0)
        return;
    const std::size_t length = std::min(source.size(), size - 1);
    std::memcpy(to, source.data(), length);
    to[length] = '\0';
}

/// Does the work with two blocks of the size, which are released behind it.
template <class Element, class Work>
u32 with_two_blocks(u32 handle, u32 size, Work work)
{
    void *const first = SYS_DataTypeMallocByHandle(handle, size);
    void *const second = first == nullptr ? nullptr : SYS_DataTypeMallocByHandle(handle, size);
    const u32 status =
        second == nullptr ? SYSDT_ERR_NO_MEMORY : work(static_cast<Element *>(first), static_cast<Element *>(second));
    SYS_DataTypeFree(second);
    SYS_DataTypeFree(first);
    return status;
}

} // namespace bgpdt::attr
