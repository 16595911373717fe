// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdio>
#include <set>

#include "exports.hpp"
#include "printed_ipv6.hpp"

namespace bgpdt::grammar {
namespace {

using Kind = Expression::Kind;

bool is_letter(std::size_t byte) { return (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z'; }

bool is_quotable(std::size_t byte) { return byte >= ' ' && byte <= '~' && byte != '"'; }

/// Both cases of one letter.
bool is_caseless(const ByteSet &bytes)
{
    const std::size_t first = bytes._Find_first();
    return bytes.count() == 2 && is_letter(first) && bytes[first ^ 0x20];
}

std::string hex(std::size_t byte)
{
    char text[3];
    (void)std::snprintf(text, sizeof text, "%02X", static_cast<unsigned>(byte));
    return text;
}

class AbnfPrinter {
public:
    explicit AbnfPrinter(const Grammar &grammar) : grammar_(grammar)
    {
        define("text", grammar.part("text"));
        for (const Number &number : numbers_)
            rules_ += rule(name_of(number), choices(spelled(number)), "");
    }

    std::string text() const { return rules_; }

private:
    void define(const std::string &name, const Language &part)
    {
        if (!done_.insert(name).second)
            return;
        if (name == printed_ipv6_name) {
            rules_ += name + " = <an IPv6 address as RFC 5952 has it>\n";
            return;
        }
        std::string remark;
        if (part.length.least != 0 || part.length.most != Times::unlimited) {
            remark += "; of " + std::to_string(part.length.least) +
                      (part.length.most == Times::unlimited ? " or more" : " to " + std::to_string(part.length.most)) +
                      " characters\n";
        }
        if (!part.within.empty())
            remark += "; that are also " + part.within + "\n";
        if (!part.but_not.empty())
            remark += "; but no " + part.but_not + "\n";
        rules_ += rule(name, choices(part.expression), remark);
        define_named(part.expression);
        for (const std::string &other : {part.within, part.but_not})
            if (!other.empty())
                define(other, grammar_.part(other));
    }

    void define_named(const Expression &expression)
    {
        if (expression.kind == Kind::name)
            define(expression.name, grammar_.part(expression.name));
        for (const Expression &part : expression.parts)
            define_named(part);
    }

    /// Lines of at most 72 characters, as they are usual in RFCs.
    static std::string rule(const std::string &name, const std::string &choices, const std::string &remark)
    {
        std::string text = remark + name + " = ";
        std::size_t column = name.size() + 3;
        std::string_view left = choices;
        while (!left.empty()) {
            const std::size_t size = word_size(left);
            if (column + size > 72 && column > 4) {
                text.erase(text.find_last_not_of(' ') + 1);
                text += "\n    ";
                column = 4;
            }
            text += left.substr(0, size);
            column += size;
            left.remove_prefix(size);
        }
        return text + "\n";
    }

    /// Up to the next blank that stands in no quotation, that included.
    static std::size_t word_size(std::string_view text)
    {
        bool quoted = false;
        for (std::size_t i = 0; i < text.size(); ++i) {
            quoted ^= text[i] == '"';
            if (text[i] == ' ' && !quoted)
                return i + 1;
        }
        return text.size();
    }

    static std::string name_of(const Number &number)
    {
        const std::string base = number.base == 16 ? "hex-" : "";
        const std::string width = number.width == 0                  ? "-plain"
                                  : number.width == Times::unlimited ? ""
                                                                     : "-in-" + std::to_string(number.width);
        return "n-" + base + std::to_string(number.low) + "-" + std::to_string(number.high) + width;
    }

    std::string number(const Number &number)
    {
        const auto same = [&](const Number &other) { return name_of(other) == name_of(number); };
        if (std::ranges::none_of(numbers_, same))
            numbers_.push_back(number);
        return name_of(number);
    }

    std::string choices(const Expression &expression)
    {
        if (expression.kind != Kind::choice)
            return row(expression);
        std::string text;
        for (const Expression &part : expression.parts)
            text += (text.empty() ? "" : " / ") + row(part);
        return text;
    }

    std::string row(const Expression &expression)
    {
        if (expression.kind != Kind::sequence)
            return single(expression);
        std::string text;
        for (std::size_t i = 0; i < expression.parts.size();) {
            text += text.empty() ? "" : " ";
            const std::size_t end = end_of_word(expression.parts, i);
            text += end > i ? quoted(expression.parts, i, end) : single(expression.parts[i]);
            i = std::max(end, i + 1);
        }
        return text.empty() ? "\"\"" : text;
    }

    static bool is_in_word(const Expression &part)
    {
        return part.kind == Kind::bytes && is_quotable(part.bytes._Find_first()) &&
               (part.bytes.count() == 1 || is_caseless(part.bytes));
    }

    /// Characters that can stand in one quotation: letters in it are all of one case, or of either.
    static std::size_t end_of_word(const std::vector<Expression> &parts, std::size_t begin)
    {
        std::size_t end = begin;
        int caseless = -1;
        for (; end < parts.size() && is_in_word(parts[end]); ++end) {
            if (!is_letter(parts[end].bytes._Find_first()))
                continue;
            const int own = is_caseless(parts[end].bytes) ? 1 : 0;
            if (caseless >= 0 && caseless != own)
                break;
            caseless = own;
        }
        return end;
    }

    static std::string quoted(const std::vector<Expression> &parts, std::size_t begin, std::size_t end)
    {
        std::string text;
        bool sensitive = false;
        for (std::size_t i = begin; i < end; ++i) {
            const std::size_t byte = parts[i].bytes._Find_first();
            sensitive |= is_letter(byte) && !is_caseless(parts[i].bytes);
            text += static_cast<char>(is_caseless(parts[i].bytes) ? byte | 0x20 : byte);
        }
        return (sensitive ? "%s\"" : "\"") + text + "\"";
    }

    std::string single(const Expression &expression)
    {
        switch (expression.kind) {
        case Kind::bytes: return is_in_word(expression) ? quoted({expression}, 0, 1) : ranges(expression.bytes);
        case Kind::number: return number(expression.number);
        case Kind::name: return expression.name;
        case Kind::repeat: return repeated(expression);
        default: return "(" + choices(expression) + ")";
        }
    }

    std::string repeated(const Expression &expression)
    {
        const auto [least, most] = expression.times;
        if (least == 0 && most == 1)
            return "[" + choices(expression.parts.front()) + "]";
        const std::string part = single(expression.parts.front());
        if (least == most)
            return std::to_string(least) + part;
        return (least == 0 ? "" : std::to_string(least)) + "*" +
               (most == Times::unlimited ? "" : std::to_string(most)) + part;
    }

    static std::string ranges(ByteSet bytes)
    {
        std::string text;
        for (std::size_t first = bytes._Find_first(); first < 256; first = bytes._Find_next(first)) {
            std::size_t last = first;
            while (last < 255 && bytes[last + 1])
                bytes.reset(++last);
            text += (text.empty() ? "%x" : " / %x") + hex(first) + (last > first ? "-" + hex(last) : "");
        }
        return text.find(' ') == text.npos ? text : "(" + text + ")";
    }

    const Grammar &grammar_;
    std::string rules_;
    std::set<std::string> done_;
    std::vector<Number> numbers_;
};

} // namespace

std::string abnf(const Grammar &grammar) { return "; " + grammar.about + "\n" + AbnfPrinter(grammar).text(); }

} // namespace bgpdt::grammar
