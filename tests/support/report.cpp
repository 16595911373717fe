// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "report.hpp"

#include <sstream>

#include "words.hpp"

namespace bgpdt::test {

namespace {

/// One mistake in the plug-in often breaks a fact in every mode; the first few tell it.
constexpr std::size_t most_problems = 8;
constexpr std::size_t most_bytes = 300;

} // namespace

std::string show(const Bytes &bytes)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string text = bytes.empty() ? "-" : "";
    for (std::size_t i = 0; i < bytes.size() && i < most_bytes; ++i) {
        text += i > 0 && i % 4 == 0 ? "_" : "";
        text += {digits[bytes[i] >> 4], digits[bytes[i] & 15]};
    }
    return bytes.size() > most_bytes ? text + "..." + std::to_string(bytes.size()) + " bytes" : text;
}

std::string show(const std::string &text) { return to_text(ScriptValue{text}); }

std::string show(std::uint32_t number)
{
    std::ostringstream text;
    text << number << " (0x" << std::hex << number << ")";
    return text.str();
}

std::string show(const void *address)
{
    std::ostringstream text;
    text << address;
    return text.str();
}

void Report::fail(std::string_view problem)
{
    if (problems_.size() < most_problems)
        problems_.push_back((situation_.empty() ? "" : situation_ + ": ") + std::string(problem));
}

void Report::fail(const std::vector<std::string> &problems)
{
    for (const std::string &problem : problems)
        fail(problem);
}

bool Report::same_table(const ScriptValue &expected, const ScriptValue &actual)
{
    // A number that is none is like no other, but reads alike.
    return same_content(expected, actual) || to_text(expected) == to_text(actual) ||
           require(false, "the table is " + to_text(actual) + ", not " + to_text(expected));
}

bool Report::same_status(std::uint32_t expected, std::uint32_t actual)
{
    if (expected == actual)
        return true;
    fail("the status is " + status_word(actual) + ", not " + status_word(expected));
    return false;
}

} // namespace bgpdt::test
