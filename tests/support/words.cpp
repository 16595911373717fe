// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "words.hpp"

#include <array>
#include <charconv>
#include <cstdlib>
#include <sstream>
#include <utility>

#include "bgp_datatype/host.h"

namespace bgpdt::test {

namespace {

constexpr std::size_t most_repeats = 1U << 20;

constexpr std::array<std::pair<std::string_view, std::uint32_t>, 11> statuses{
    {{"0", SYSDT_OK},
     {"FAIL", SYSDT_ERR_FAIL},
     {"NULL_PTR", SYSDT_ERR_NULL_PTR},
     {"NO_MEMORY", SYSDT_ERR_NO_MEMORY},
     {"PARAM", SYSDT_ERR_PARAM},
     {"UNSUPPORTED", SYSDT_ERR_UNSUPPORTED},
     {"LENGTH", SYSDT_ERR_LENGTH},
     {"INVALID_VALUE", SYSDT_ERR_INVALID_VALUE},
     {"MISMATCH", SYSDT_ERR_MISMATCH},
     {"OUTPUT", SYSDT_ERR_OUTPUT},
     {"TOO_LONG", SYSDT_ERR_TOO_LONG}}};

bool is_blank(char character) { return character == ' ' || character == '\t'; }
bool is_digit(char character) { return character >= '0' && character <= '9'; }
bool is_letter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') || character == '_';
}
bool is_name(char character)
{
    return is_letter(character) || is_digit(character) || character == '-' || character == ':';
}
bool is_script_name(char character) { return is_letter(character) || is_digit(character); }
bool is_number(char character)
{
    return is_digit(character) || is_letter(character) || character == '-' || character == '.';
}

int hex_value(char character)
{
    static constexpr std::string_view digits = "0123456789abcdef";
    const char lower = character >= 'A' && character <= 'F' ? static_cast<char>(character + 32) : character;
    const std::size_t value = digits.find(lower);
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

template <class Integer>
bool converts(std::string_view digits, Integer &number, int base = 10)
{
    const char *end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, number, base);
    return result.ec == std::errc{} && result.ptr == end;
}

} // namespace

std::string status_word(std::uint32_t status)
{
    for (const auto &[name, code] : statuses)
        if (code == status)
            return std::string(name);
    std::ostringstream text;
    text << "0x" << std::hex << status;
    return text.str();
}

void Words::skip_blanks()
{
    while (!rest_.empty() && is_blank(rest_.front()))
        rest_.remove_prefix(1);
}

void Words::end_word()
{
    if (!rest_.empty() && !is_blank(rest_.front()))
        throw WordError("no blank before '" + std::string(rest_.substr(0, 12)) + "'");
    skip_blanks();
}

char Words::next(const char *what)
{
    if (rest_.empty())
        throw WordError(std::string(what) + " expected at the end of the line");
    const char character = rest_.front();
    rest_.remove_prefix(1);
    return character;
}

bool Words::accept(char character)
{
    if (!ahead(character))
        return false;
    rest_.remove_prefix(1);
    return true;
}

std::string_view Words::take_while(bool (*wanted)(char))
{
    std::size_t length = 0;
    while (length < rest_.size() && wanted(rest_[length]))
        ++length;
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return taken;
}

std::string Words::name()
{
    std::string word(take_while(is_name));
    if (word.empty())
        throw WordError("a name expected at '" + std::string(rest_.substr(0, 12)) + "'");
    // Modes follow a verb without a blank.
    if (!ahead('@'))
        end_word();
    return word;
}

std::uint32_t Words::number(std::uint32_t greatest)
{
    std::string_view word = take_while(is_script_name);
    const std::string shown(word);
    const bool hexadecimal = word.starts_with("0x");
    std::uint32_t value = 0;
    word.remove_prefix(hexadecimal ? 2 : 0);
    if (!converts(word, value, hexadecimal ? 16 : 10) || value > greatest)
        throw WordError("a number up to " + std::to_string(greatest) + " expected, not '" + shown + "'");
    if (!ahead(','))
        end_word();
    return value;
}

std::size_t Words::repeats()
{
    if (!accept('*'))
        return 1;
    const std::string_view digits = take_while(is_digit);
    std::size_t count = 0;
    if (!converts(digits, count) || count > most_repeats)
        throw WordError("a count expected behind '*', not '" + std::string(digits) + "'");
    return count;
}

std::string Words::text()
{
    if (!ahead('"'))
        throw WordError("a text in quotes expected at '" + std::string(rest_.substr(0, 12)) + "'");
    std::string result;
    while (ahead('"')) {
        const std::string piece = quoted_piece();
        for (std::size_t left = repeats(); left > 0; --left)
            result += piece;
    }
    end_word();
    return result;
}

std::string Words::quoted_piece()
{
    std::string piece;
    rest_.remove_prefix(1);
    for (char character = next("a closing quote"); character != '"'; character = next("a closing quote"))
        piece += character == '\\' ? escaped() : character;
    return piece;
}

char Words::escaped()
{
    const char letter = next("an escape");
    switch (letter) {
    case '"':
    case '\\': return letter;
    case 't': return '\t';
    case 'n': return '\n';
    case 'r': return '\r';
    case 'x': break;
    default: throw WordError(std::string("unknown escape '\\") + letter + "'");
    }
    const int high = hex_value(next("a hexadecimal digit"));
    const int low = hex_value(next("a hexadecimal digit"));
    if (high < 0 || low < 0)
        throw WordError("two hexadecimal digits expected behind '\\x'");
    return static_cast<char>(high * 16 + low);
}

Bytes Words::bytes()
{
    if (accept('-')) {
        end_word();
        return {};
    }
    const std::size_t before = rest_.size();
    Bytes result = byte_run(false);
    if (rest_.size() == before)
        throw WordError("bytes expected at '" + std::string(rest_.substr(0, 12)) + "'");
    end_word();
    return result;
}

Bytes Words::byte_run(bool grouped)
{
    Bytes run;
    const auto append = [&](const Bytes &piece, std::size_t count) {
        if (piece.size() * count > most_repeats)
            throw WordError("too many bytes");
        for (; count > 0; --count)
            run.insert(run.end(), piece.begin(), piece.end());
    };
    while (!rest_.empty() && !is_blank(rest_.front()) && !(grouped && ahead(')'))) {
        if (accept('_'))
            continue;
        if (accept('(')) {
            const Bytes group = byte_run(true);
            if (!accept(')'))
                throw WordError("')' expected behind a group of bytes");
            append(group, repeats());
            continue;
        }
        const int high = hex_value(next("a hexadecimal digit"));
        const int low = hex_value(next("the second digit of a byte"));
        if (high < 0 || low < 0)
            throw WordError("a byte is two hexadecimal digits");
        append({static_cast<std::uint8_t>(high * 16 + low)}, repeats());
    }
    return run;
}

std::uint32_t Words::status()
{
    const std::string word(take_while(is_name));
    end_word();
    for (const auto &[name, code] : statuses)
        if (name == word)
            return code;
    throw WordError("unknown status '" + word + "'");
}

std::int32_t Words::order()
{
    for (const std::string_view order : {"1", "-1"}) {
        if (rest_.starts_with(order) && (rest_.size() == order.size() || is_blank(rest_[order.size()]))) {
            rest_.remove_prefix(order.size());
            skip_blanks();
            return order == "1" ? 1 : -1;
        }
    }
    return static_cast<std::int32_t>(status());
}

ScriptValue Words::script_value()
{
    ScriptValue value = accept('{') ? ScriptValue{script_table()} : script_atom();
    skip_blanks();
    return value;
}

ScriptValue Words::script_number()
{
    const std::string word(take_while(is_number));
    std::int64_t integer = 0;
    if (converts(std::string_view(word), integer))
        return {integer};
    if (word.starts_with("0x") && converts(std::string_view(word).substr(2), integer, 16))
        return {integer};
    char *end = nullptr;
    const double fraction = std::strtod(word.c_str(), &end); // from_chars is younger than some C++ libraries
    if (end != word.c_str() && *end == '\0')
        return {fraction};
    throw WordError("a script value expected, not '" + word + "'");
}

ScriptValue Words::script_atom()
{
    if (ahead('"')) {
        const std::string piece = quoted_piece();
        std::string whole;
        for (std::size_t left = repeats(); left > 0; --left)
            whole += piece;
        return {whole};
    }
    for (const auto &[word, value] :
         {std::pair<std::string_view, ScriptValue>{"nil", {}}, {"true", {true}}, {"false", {false}}}) {
        if (rest_.starts_with(word) && (rest_.size() == word.size() || !is_script_name(rest_[word.size()]))) {
            rest_.remove_prefix(word.size());
            return value;
        }
    }
    return script_number();
}

ScriptTable Words::script_table()
{
    ScriptTable table;
    std::int64_t index = 0;
    skip_blanks();
    while (!accept('}')) {
        script_entry(table, index);
        skip_blanks();
        if (!accept(',') && !ahead('}'))
            throw WordError("',' or '}' expected in a table at '" + std::string(rest_.substr(0, 12)) + "'");
        skip_blanks();
    }
    return table;
}

void Words::script_entry(ScriptTable &table, std::int64_t &index)
{
    const std::string_view before = rest_;
    std::string name;
    if (!rest_.empty() && is_letter(rest_.front())) {
        name = take_while(is_script_name);
        skip_blanks();
        if (!accept('=')) {
            name.clear();
            rest_ = before;
        }
    }
    skip_blanks();
    const ScriptValue value = script_value();
    const std::size_t count = repeats();
    if (!name.empty() && count != 1)
        throw WordError("only array entries are repeated");
    for (std::size_t left = count; left > 0; --left)
        table.push_back({name, name.empty() ? ++index : 0, value});
}

void Words::expect(char character)
{
    if (!accept(character))
        throw WordError(std::string("'") + character + "' expected at '" + std::string(rest_.substr(0, 12)) + "'");
}

std::int64_t Words::room()
{
    const std::string digits(take_while(is_digit));
    std::int64_t room = 0;
    if (!converts(std::string_view(digits), room) || room > std::int64_t{most_repeats})
        throw WordError("a table's room expected, not '" + digits + "'");
    return room;
}

std::vector<std::string> Words::making()
{
    std::vector<std::string> steps;
    if (accept('-')) {
        end_word();
    } else {
        ahead('[') ? array_making(steps) : record_making(steps);
        skip_blanks();
    }
    return steps;
}

/// "2: a b[8] c(1: d)"
void Words::record_making(std::vector<std::string> &steps)
{
    steps.push_back(room_text(0, room()));
    expect(':');
    for (skip_blanks(); !rest_.empty() && is_letter(rest_.front()); skip_blanks()) {
        const std::string key(take_while(is_script_name));
        if (ahead('[')) {
            array_making(steps);
        } else if (accept('(')) {
            record_making(steps);
            expect(')');
        }
        steps.push_back(key);
    }
}

/// "[8]", "[8](2: a b)"
void Words::array_making(std::vector<std::string> &steps)
{
    expect('[');
    const std::int64_t count = room();
    expect(']');
    std::vector<std::string> entry;
    if (accept('(')) {
        record_making(entry);
        expect(')');
    }
    steps.push_back(room_text(count, 0));
    for (std::int64_t i = 1; i <= count; ++i) {
        steps.insert(steps.end(), entry.begin(), entry.end());
        steps.push_back(ScriptField{{}, i, {}}.key());
    }
}

} // namespace bgpdt::test
