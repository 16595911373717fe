// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// A check of every vector line in one test; where tests run many times slower, of one in every few lines, others every
/// day.
#pragma once

#include <exception>

#include <gtest/gtest.h>

#include "host/host.hpp"
#include "report.hpp"
#include "setting.hpp"
#include "share.hpp"
#include "subject.hpp"
#include "vector_file.hpp"

namespace bgpdt::test {

/// Every how many-th line is checked.
inline std::size_t line_share() { return share() / 10 + 1; }

/// Calls `check(line, subject, report)` for these lines; what it reports is a failure at the line.
template <class Check>
void check_every_line(Check check)
{
    const host::Host host(plugin_path());
    const Vectors vectors = read_vector_folder(vectors_folder());
    ASSERT_FALSE(vectors.lines.empty()) << vectors_folder() << " holds no vectors";
    Turns turns(line_share());
    for (const Line &line : vectors.lines) {
        if (!turns.next())
            continue;
        Report report;
        try {
            check(line, subject_of(host, line), report);
        } catch (const std::exception &error) {
            report.fail(error.what());
        }
        for (const std::string &problem : report.problems())
            ADD_FAILURE_AT(line.file.c_str(), line.number) << line.content << "\n" << problem;
    }
}

} // namespace bgpdt::test
