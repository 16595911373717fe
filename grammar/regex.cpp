// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <map>
#include <string>

#include "conditions.hpp"
#include "exports.hpp"

namespace bgpdt::grammar {
namespace {

using Kind = Expression::Kind;

std::string braces(Times times)
{
    if (times.least == 1 && times.most == 1)
        return "";
    if (times.least == 0 && times.most == 1)
        return "?";
    if (times.most == Times::unlimited && times.least <= 1)
        return times.least == 0 ? "*" : "+";
    std::string text = "{" + std::to_string(times.least);
    if (times.most != times.least)
        text += "," + (times.most == Times::unlimited ? "" : std::to_string(times.most));
    return text + "}";
}

class RegexPrinter {
public:
    RegexPrinter(const Grammar &grammar, Dialect dialect) : grammar_(grammar), dialect_(dialect) {}

    std::string choices(const Expression &expression)
    {
        const Expression &meant = resolved(expression);
        if (meant.kind == Kind::number)
            return choices(spelled(meant.number));
        if (meant.kind != Kind::choice)
            return row(meant);
        std::string text;
        for (const Expression &part : meant.parts)
            text += (&part == &meant.parts.front() ? "" : "|") + choices(part);
        return text;
    }

    /// What the names in expressions of PCRE mean.
    const std::map<std::string, std::string> &definitions() const { return definitions_; }

private:
    /// The part meant, but in PCRE, which has names of its own for them.
    const Expression &resolved(const Expression &expression) const
    {
        return expression.kind == Kind::name && dialect_ != Dialect::pcre
                   ? resolved(grammar_.part(expression.name).expression)
                   : expression;
    }

    std::string called(const std::string &name)
    {
        std::string own = name;
        std::ranges::replace(own, '-', '_');
        if (!definitions_.contains(own)) {
            definitions_[own] = "";
            definitions_[own] = choices(grammar_.part(name).expression);
        }
        return "(?&" + own + ")";
    }

    std::string group(const std::string &inner) const
    {
        return (dialect_ == Dialect::portable || dialect_ == Dialect::xsd ? "(" : "(?:") + inner + ")";
    }

    std::string row(const Expression &expression)
    {
        const Expression &meant = resolved(expression);
        switch (meant.kind) {
        case Kind::name: return called(meant.name);
        case Kind::bytes: return one_of(meant.bytes);
        case Kind::number: return row(spelled(meant.number));
        case Kind::choice: return group(choices(meant));
        case Kind::repeat: return repeated(meant);
        default: break;
        }
        std::string text;
        for (const Expression &part : meant.parts)
            text += row(part);
        return text;
    }

    std::string repeated(const Expression &expression)
    {
        const Expression &part = resolved(expression.parts.front());
        const bool atom = part.kind == Kind::bytes || part.kind == Kind::name || part.kind == Kind::choice ||
                          (part.kind == Kind::number && spelled(part.number).kind == Kind::choice);
        const std::string inner = row(part);
        return (atom ? inner : group(inner)) + braces(expression.times);
    }

    std::string one_of(const ByteSet &bytes) const
    {
        const ByteSet others = ~bytes & ~ByteSet(1);
        if (others.none())
            return ".";
        if (bytes.count() == 1)
            return single(bytes._Find_first());
        const bool negated = bytes[255];
        return (negated ? "[^" : "[") + inside(negated ? others : bytes) + "]";
    }

    static std::string single(std::size_t byte)
    {
        const char character = static_cast<char>(byte);
        const bool special = std::string_view("\\.[](){}*+?|^$").find(character) != std::string_view::npos;
        return special ? std::string("\\") + character : std::string(1, character);
    }

    /// White space is in a class as a whole or not at all. The hyphen stands last.
    std::string inside(ByteSet bytes) const
    {
        std::string text;
        if (bytes['\t'] && bytes[' ']) {
            text += dialect_ == Dialect::portable ? "[:space:]" : dialect_ == Dialect::xsd ? "\\s" : R"(\x09-\x0d\x20)";
            for (const char blank : {'\t', '\n', '\v', '\f', '\r', ' '})
                bytes.reset(static_cast<unsigned char>(blank));
        }
        const bool hyphen = bytes['-'];
        bytes.reset('-');
        if (bytes[']'] && dialect_ == Dialect::portable) { // where a backslash is none
            text.insert(0, "]");
            bytes.reset(']');
        }
        for (std::size_t first = bytes._Find_first(); first < 256; first = bytes._Find_next(first)) {
            std::size_t last = first;
            while (last < 255 && bytes[last + 1])
                bytes.reset(++last);
            text += in_class(first);
            if (last > first)
                text += (last > first + 1 ? "-" : "") + in_class(last);
        }
        return text + (hyphen ? dialect_ == Dialect::portable ? "-" : "\\-" : "");
    }

    std::string in_class(std::size_t byte) const
    {
        const char character = static_cast<char>(byte);
        const bool special = std::string_view("\\[]^").find(character) != std::string_view::npos;
        return special && dialect_ != Dialect::portable ? std::string("\\") + character : std::string(1, character);
    }

    const Grammar &grammar_;
    Dialect dialect_;
    std::map<std::string, std::string> definitions_;
};

struct Anchors {
    std::string_view front, behind;
};

Anchors anchors(Dialect dialect)
{
    switch (dialect) {
    case Dialect::python: return {"\\A", "\\Z"};
    case Dialect::pcre: return {"\\A", "\\z"};
    case Dialect::xsd: return {"", ""};
    default: return {"^", "$"};
    }
}

std::string shown_lengths(Times length)
{
    return std::to_string(length.least) +
           (length.most == length.least ? ""
                                        : ".." + (length.most == Times::unlimited ? "" : std::to_string(length.most)));
}

bool has_limits(Times length) { return length.least != 0 || length.most != Times::unlimited; }

} // namespace

Regex regex_of(const Grammar &grammar, Dialect dialect)
{
    const Form form = form_of(grammar);
    RegexPrinter printer(grammar, dialect);
    Regex made{form.length, {}, {}};
    for (const Alternative &alternative : form.alternatives) {
        RegexRow &row = made.rows.emplace_back();
        for (const Expression &condition : alternative.must)
            row.must.push_back(printer.choices(condition));
        for (const Expression &condition : alternative.must_not)
            row.must_not.push_back(printer.choices(condition));
    }
    for (const auto &[name, meaning] : printer.definitions())
        made.definitions.append("(?<").append(name).append(">").append(meaning).append(")");
    return made;
}

std::string single_regex(const Grammar &grammar, Dialect dialect)
{
    const Regex regex = regex_of(grammar, dialect);
    const auto [front, behind] = anchors(dialect);
    std::string text = regex.definitions.empty() ? "" : "(?(DEFINE)" + regex.definitions + ")";
    text += front;
    if (has_limits(regex.length))
        text.append("(?=.").append(braces(regex.length)).append(behind).append(")");
    text += "(?:";
    for (const RegexRow &row : regex.rows) {
        text += text.ends_with("(?:") ? "" : "|";
        for (std::size_t i = 1; i < row.must.size(); ++i)
            text.append("(?=(?:").append(row.must[i]).append(")").append(behind).append(")");
        for (const std::string &condition : row.must_not)
            text.append("(?!(?:").append(condition).append(")").append(behind).append(")");
        text += "(?:" + row.must.front() + ")";
    }
    return text.append(")").append(behind);
}

std::string portable_regex(const Grammar &grammar)
{
    const Regex regex = regex_of(grammar, Dialect::portable);
    std::string text = has_limits(regex.length) ? "length " + shown_lengths(regex.length) + "\n" : "";
    for (const RegexRow &row : regex.rows) {
        text += &row == &regex.rows.front() ? "" : "or\n";
        for (const std::string &condition : row.must)
            text += "match ^(" + condition + ")$\n";
        for (const std::string &condition : row.must_not)
            text += "except ^(" + condition + ")$\n";
    }
    return text;
}

namespace {

std::string yang_name(const std::string &name)
{
    std::string made;
    for (const char byte : name)
        made += byte == ' ' || byte == '_' ? '-' : static_cast<char>(byte >= 'A' && byte <= 'Z' ? byte | 0x20 : byte);
    return made;
}

std::string yang_string(const RegexRow &row, Times length, const std::string &indent)
{
    std::string text = indent + "type string {\n";
    if (has_limits(length))
        text +=
            indent + "  length \"" + shown_lengths(length) + (length.most == Times::unlimited ? "max" : "") + "\";\n";
    for (const std::string &condition : row.must)
        text.append(indent).append("  pattern '").append(condition).append("';\n");
    for (const std::string &condition : row.must_not) {
        text.append(indent).append("  pattern '").append(condition).append("' {\n").append(indent);
        text.append("    modifier invert-match;\n").append(indent).append("  }\n");
    }
    return text + indent + "}\n";
}

} // namespace

std::string yang_typedef(const Grammar &grammar)
{
    const Regex regex = regex_of(grammar, Dialect::xsd);
    std::string text = "typedef " + yang_name(grammar.name) + " {\n";
    if (regex.rows.size() == 1) {
        text += yang_string(regex.rows.front(), regex.length, "  ");
    } else {
        text += "  type union {\n";
        for (const RegexRow &row : regex.rows)
            text += yang_string(row, regex.length, "    ");
        text += "  }\n";
    }
    return text + "  description\n    \"" + grammar.about + "\";\n}\n";
}

} // namespace bgpdt::grammar
