// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Whether what a vector line says is so, and every property that follows from it.
#pragma once

#include "report.hpp"
#include "subject.hpp"
#include "vector_file.hpp"

namespace bgpdt::test {

/// Checks the line; faults of memory are problems like any other.
void check_line(const Line &line, const Subject &subject, Report &report);

void check_parse(const Line &line, const Subject &subject, Report &report);   ///< in, bad
void check_print(const Line &line, const Subject &subject, Report &report);   ///< out, bare, copy, skip
void check_noprint(const Line &line, const Subject &subject, Report &report); ///< noout
void check_script(const Line &line, const Subject &subject, Report &report);  ///< set, tables, noset, get, noget
void check_check(const Line &line, const Subject &subject, Report &report);
void check_compare(const Line &line, const Subject &subject, Report &report);
void check_swap(const Line &line, const Subject &subject, Report &report);
void check_help(const Line &line, const Subject &subject, Report &report);     ///< help, nohelp
void check_function(const Line &line, const Subject &subject, Report &report); ///< fn

} // namespace bgpdt::test
