// SPDX-License-Identifier: Apache-2.0
/// @file
/// The block that a thread lends to its conversions in place of one from the heap, again and again.
#pragma once

#include <cstddef>

namespace bgpdt::host {

struct LentBlock {
    static constexpr std::size_t size = 4352; ///< holds what any of the router's types delivers

    bool taken = false;
    alignas(std::max_align_t) unsigned char bytes[size];
};

/// Null where the thread lends none.
[[gnu::tls_model("initial-exec")]] extern constinit thread_local LentBlock *lent_block;

} // namespace bgpdt::host
