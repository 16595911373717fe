// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Calls in which a service of the host fails.
#pragma once

#include <functional>
#include <string>

#include "failing.hpp"
#include "report.hpp"
#include "subject.hpp"
#include "vector_file.hpp"

namespace bgpdt::test {

struct FaultCount {
    std::size_t injected = 0;
    std::size_t handled = 0; ///< with the status, the outputs and the blocks that are due
    std::size_t leaked = 0;  ///< blocks that nobody owned after a call
};

/// A call of one callback that checks its outcome, a faulty one or not.
/// @return how many requests it made that may be refused
using FaultyCall = std::function<std::size_t(Failing failing, Report &report)>;

/// Refuses each request of the call in turn, once alone and once with all after it, and makes the call again without a
/// fault each time.
void fail_in_turn(const std::string &situation, const FaultyCall &call, Report &report, FaultCount &count);

/// Fails each request in the line's call, in each of its modes; faults of memory are problems like any other.
void inject_faults(const Line &line, const Subject &subject, Report &report, FaultCount &count);

/// What AttackHost has against the call; blocks that are still taken are counted.
void settle(Report &report, FaultCount &count);

void inject_into_parse(const Line &line, const Subject &subject, Report &report, FaultCount &count);
void inject_into_print(const Line &line, const Subject &subject, Report &report, FaultCount &count);
void inject_into_help(const Line &line, const Subject &subject, Report &report, FaultCount &count);
void inject_into_script(const Line &line, const Subject &subject, Report &report, FaultCount &count);

} // namespace bgpdt::test
