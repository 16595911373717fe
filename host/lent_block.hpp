// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the services know of the block that the thread lends.
#pragma once

namespace bgpdt::host {

struct LentBlock;

/// Null where the thread lends none.
[[gnu::tls_model("initial-exec")]] extern constinit thread_local LentBlock *lent_block;

} // namespace bgpdt::host
