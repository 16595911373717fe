// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the services know of the thread that asks for memory.
#pragma once

namespace bgpdt::host {

struct LentBlock;

struct ThreadMemory {
    LentBlock *lent = nullptr; ///< null where the thread lends none
    bool refused = false;      ///< there was none since this was last cleared
};

[[gnu::tls_model("initial-exec")]] extern constinit thread_local ThreadMemory thread_memory;

} // namespace bgpdt::host
