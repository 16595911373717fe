// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A type of eight bytes that keeps the contract of AS numbers, but for the one fault that it is told to have.
#pragma once

#include "subject.hpp"

namespace bgpdt::test {

enum class Fault {
    none,
    // FormatIn
    other_value,
    other_kind,
    other_length,
    takes_mode_7,
    takes_mode_0,
    takes_what_it_must_refuse,
    no_null_test,
    reads_behind_text,
    writes_behind_block,
    writes_before_text,
    leaks,
    plain_block,
    other_owner,
    released_twice,
    written_after_release,
    keeps_length_without_memory,
    fails_without_status,
    touches_outputs_on_refusal,
    changes_context,
    // FormatOut
    other_text,
    no_terminator_counted,
    ignores_lent_block,
    small_block,
    writes_behind_lent_block,
    writes_to_input,
    reads_behind_input,
    releases_lent_block,
    believes_length,
    no_copy_kind,
    // the rest
    check_ignores_length,
    compare_one_way,
    swaps_half,
    swaps_once,
    help_short_block,
    help_in_mode_2,
    help_without_clear,
    set_other_order,
    set_other_room,
    set_other_value,
    set_leaves_value,
    set_short,
    set_half_done,
    set_holds_block,
    get_leaves_more,
    get_other_value,
    get_short,
};

/// The type with that fault; only one lives at a time.
Subject faulty_type(Fault fault);

} // namespace bgpdt::test
