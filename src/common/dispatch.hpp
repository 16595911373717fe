// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Values behind a sub-kind word: their callbacks stand in a table, a row for each kind.
#pragma once

#include <span>

#include "common/types.hpp"

namespace bgpdt {

using DispatchTable = std::span<const SYSDT_DispatchRow>;

/// Calls the slot of each row in order, with unchanged arguments, until one answers 0. Null slots are skipped.
///
/// @return 0, or SYSDT_ERR_INVALID_VALUE whatever the rows answered
template <auto slot, class... Arguments>
u32 offer(DispatchTable rows, Arguments... arguments)
{
    for (const SYSDT_DispatchRow &row : rows)
        if (row.*slot != nullptr && (row.*slot)(arguments...) == SYSDT_OK)
            return SYSDT_OK;
    return SYSDT_ERR_INVALID_VALUE;
}

/// The row of a sub-kind as a table of its own; empty if there is none.
inline DispatchTable row_of(DispatchTable rows, u32 kind)
{
    return kind < rows.size() ? rows.subspan(kind, 1) : rows.first(0);
}

} // namespace bgpdt
