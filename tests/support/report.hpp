// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// What is found wrong about one fact.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "guarded.hpp"
#include "script_value.hpp"

namespace bgpdt::test {

/// "0000fbf0_00000000", as the vectors write bytes.
std::string show(const Bytes &bytes);
std::string show(const std::string &text);
std::string show(std::uint32_t number);
std::string show(const void *address);

class Report {
public:
    /// What is being done now; it stands before every problem found from here on.
    void situation(std::string text) { situation_ = std::move(text); }
    void fail(std::string_view problem);
    void fail(const std::vector<std::string> &problems);
    bool require(bool holds, std::string_view problem)
    {
        if (!holds)
            fail(problem);
        return holds;
    }

    template <class Value>
    bool same(std::string_view what, const Value &expected, const Value &actual)
    {
        if (expected == actual)
            return true;
        fail(std::string(what) + " is " + show(actual) + ", not " + show(expected));
        return false;
    }
    bool same_status(std::uint32_t expected, std::uint32_t actual);
    bool same_table(const ScriptValue &expected, const ScriptValue &actual);

    const std::vector<std::string> &problems() const { return problems_; }

private:
    std::string situation_;
    std::vector<std::string> problems_;
};

} // namespace bgpdt::test
