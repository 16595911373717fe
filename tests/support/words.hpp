// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The words of a vector line.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "script_value.hpp"

namespace bgpdt::test {

using Bytes = std::vector<std::uint8_t>;

/// What is wrong with a word.
class WordError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads one line, word by word. Every reader throws WordError for what is not its word.
class Words {
public:
    explicit Words(std::string_view line) : rest_(line) { skip_blanks(); }

    bool at_end() const { return rest_.empty(); }
    /// True and passed over if the line goes on with this character.
    bool accept(char character);

    std::string name();
    std::uint32_t number(std::uint32_t greatest);
    std::string text();
    Bytes bytes();
    /// 0 or a status code.
    std::uint32_t status();
    /// 1, 0, -1, or a status code.
    std::int32_t order();
    ScriptValue script_value();
    /// The steps that AttackHost::script_steps tells when such tables are made.
    std::vector<std::string> making();

private:
    void skip_blanks();
    void end_word();
    char next(const char *what);
    bool ahead(char character) const { return !rest_.empty() && rest_.front() == character; }
    std::string_view take_while(bool (*wanted)(char));
    std::size_t repeats();
    std::string quoted_piece();
    char escaped();
    Bytes byte_run(bool grouped);
    ScriptValue script_number();
    ScriptValue script_atom();
    ScriptTable script_table();
    void script_entry(ScriptTable &table, std::int64_t &index);
    void expect(char character);
    std::int64_t room();
    void record_making(std::vector<std::string> &steps);
    void array_making(std::vector<std::string> &steps);

    std::string_view rest_;
};

/// "FAIL" for its code, in hexadecimal what has no name.
std::string status_word(std::uint32_t status);

} // namespace bgpdt::test
