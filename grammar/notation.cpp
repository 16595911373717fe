// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "notation.hpp"

#include <algorithm>
#include <charconv>
#include <set>
#include <utility>

#include "printed_ipv6.hpp"

namespace bgpdt::grammar {
namespace {

using Kind = Expression::Kind;

bool is_letter(char byte) { return (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z'; }
bool is_digit(char byte) { return byte >= '0' && byte <= '9'; }
bool is_name(char byte) { return is_letter(byte) || is_digit(byte) || byte == '-'; }

/// Either case of each letter.
Expression caseless(std::string_view text)
{
    std::vector<Expression> parts;
    for (const char byte : text) {
        ByteSet set = ByteSet().set(static_cast<unsigned char>(byte));
        if (is_letter(byte))
            set.set(static_cast<unsigned char>(byte ^ 0x20));
        parts.push_back(one_of(set));
    }
    return sequence(std::move(parts));
}

/// One definition, which may go on over indented lines.
class Reader {
public:
    Reader(std::string where, std::string_view text) : where_(std::move(where)), left_(text) {}

    Language language()
    {
        Language read;
        read.expression = choices();
        while (take(",")) {
            const std::string clause = name();
            if (clause == "length")
                read.length = bounds();
            else if (clause == "without")
                read.but_not = name();
            else if (clause == "within")
                read.within = name();
            else
                fail("\"" + clause + "\" is none of length, within and without");
        }
        if (skip(); !left_.empty())
            fail("not understood from here: " + std::string(left_));
        return read;
    }

    /// "front" part "behind", or "front" "word" "behind" least..most; perhaps ", without part" and ", canonical part".
    Frame frame()
    {
        Frame read;
        read.front = text();
        if (take("\""))
            read.word = quoted();
        else
            read.part = name();
        read.behind = text();
        if (read.part.empty())
            read.times = bounds();
        while (take(",")) {
            const std::string clause = name();
            if (clause != "without" && clause != "canonical")
                fail("\"" + clause + "\" is none of without and canonical");
            (clause == "without" ? read.without : read.canonical) = name();
        }
        return read;
    }

    /// part, then a letter and "word" for each.
    Order order()
    {
        Order read{name(), {}};
        for (skip(); !left_.empty(); skip()) {
            const char letter = left_[0];
            left_.remove_prefix(1);
            read.words[letter] = text();
        }
        return read;
    }

    std::string text()
    {
        need("\"");
        return std::string(quoted());
    }

    std::size_t count() { return skip(), value(10); }

    std::string name()
    {
        skip();
        const auto end = std::ranges::find_if_not(left_, is_name);
        std::string read(left_.begin(), end);
        if (read.empty())
            fail("a name is missing");
        left_.remove_prefix(read.size());
        return read;
    }

    bool take(std::string_view token)
    {
        skip();
        if (!left_.starts_with(token))
            return false;
        left_.remove_prefix(token.size());
        return true;
    }

private:
    [[noreturn]] void fail(const std::string &why) const { throw NotationError(where_ + ": " + why); }

    void need(std::string_view token)
    {
        if (!take(token))
            fail(std::string(token) + " is missing");
    }

    void skip() { left_.remove_prefix(std::min(left_.find_first_not_of(" \n"), left_.size())); }

    Expression choices()
    {
        std::vector<Expression> parts;
        do {
            parts.push_back(row());
        } while (take("|"));
        return choice(std::move(parts));
    }

    Expression row()
    {
        std::vector<Expression> parts;
        for (skip(); !left_.empty() && std::string_view("|),").find(left_[0]) == std::string_view::npos; skip())
            parts.push_back(repeated());
        return sequence(std::move(parts));
    }

    Expression repeated()
    {
        Expression part = single();
        if (take("?"))
            return repeat(std::move(part), {0, 1});
        if (take("*"))
            return repeat(std::move(part), {0, Times::unlimited});
        if (take("+"))
            return repeat(std::move(part), {1, Times::unlimited});
        if (take("{")) {
            const Times times = bounds();
            need("}");
            return repeat(std::move(part), times);
        }
        return part;
    }

    Expression single()
    {
        skip();
        if (take("(")) {
            Expression inner = choices();
            need(")");
            return inner;
        }
        if (take("\""))
            return word(quoted());
        if (take("~\""))
            return caseless(quoted());
        if (take("["))
            return byte_class();
        if (is_digit(left_[0]) || left_[0] == 'x')
            return number();
        Expression made;
        made.kind = Kind::name;
        made.name = name();
        return made;
    }

    std::string_view quoted()
    {
        const std::size_t end = left_.find('"');
        if (end == left_.npos)
            fail("a quotation mark is missing");
        const std::string_view text = left_.substr(0, end);
        left_.remove_prefix(end + 1);
        return text;
    }

    unsigned char byte()
    {
        if (left_.size() < 2)
            fail("] is missing");
        unsigned value = static_cast<unsigned char>(left_[0]);
        std::size_t used = 1;
        if (left_.starts_with("\\x") && left_.size() > 4) {
            std::from_chars(left_.data() + 2, left_.data() + 4, value, 16);
            used = 4;
        } else if (left_[0] == '\\') {
            value = static_cast<unsigned char>(left_[1]);
            used = 2;
        }
        left_.remove_prefix(used);
        return static_cast<unsigned char>(value);
    }

    /// No text holds a NUL: it is in no class.
    Expression byte_class()
    {
        const bool others = take("^");
        ByteSet set;
        for (; !left_.empty() && left_[0] != ']';) {
            const unsigned first = byte();
            unsigned last = first;
            if (left_.starts_with("-") && !left_.starts_with("-]")) {
                left_.remove_prefix(1);
                last = byte();
            }
            for (unsigned value = first; value <= last; ++value)
                set.set(value);
        }
        need("]");
        return one_of((others ? ~set : set).reset(0));
    }

    std::uint64_t value(int base)
    {
        std::uint64_t read = 0;
        const auto [end, error] = std::from_chars(left_.data(), left_.data() + left_.size(), read, base);
        if (error != std::errc{})
            fail("a number is missing");
        left_.remove_prefix(static_cast<std::size_t>(end - left_.data()));
        return read;
    }

    Expression number()
    {
        Expression made;
        made.kind = Kind::number;
        made.number.base = take("x") ? 16 : 10;
        const int base = static_cast<int>(made.number.base);
        made.number.low = made.number.high = value(base);
        if (take("..")) {
            if (base == 16)
                need("x");
            made.number.high = value(base);
        }
        if (take("!"))
            made.number.width = 0;
        else if (take("/"))
            made.number.width = static_cast<unsigned>(value(10));
        return made;
    }

    Times bounds()
    {
        skip();
        Times read;
        read.least = read.most = static_cast<unsigned>(value(10));
        if (take(".."))
            read.most = !left_.empty() && is_digit(left_[0]) ? static_cast<unsigned>(value(10)) : Times::unlimited;
        return read;
    }

    std::string where_;
    std::string_view left_;
};

/// The parts that an expression names, and those that these name.
void collect(const Expression &expression, const Grammar &from, Grammar &into)
{
    for (const Expression &part : expression.parts)
        collect(part, from, into);
    if (expression.kind != Kind::name || into.has(expression.name))
        return;
    if (!from.has(expression.name))
        throw NotationError(into.name + ": nothing says what " + expression.name + " is");
    const Language &language = into.parts.emplace(expression.name, from.part(expression.name)).first->second;
    collect(language.expression, from, into);
}

/// The part and those that it needs.
void meet(const std::string &name, const Grammar &grammar, std::set<std::string> &met)
{
    if (name.empty() || !met.insert(name).second)
        return;
    const Language &language = grammar.part(name);
    meet(language.within, grammar, met);
    meet(language.but_not, grammar, met);
    std::vector<const Expression *> left{&language.expression};
    while (!left.empty()) {
        const Expression &expression = *left.back();
        left.pop_back();
        for (const Expression &part : expression.parts)
            left.push_back(&part);
        meet(expression.kind == Kind::name ? expression.name : "", grammar, met);
    }
}

std::string_view next_line(std::string_view &text)
{
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

/// What stands in front of a remark: "  # ", which no expression holds.
std::string_view without_remark(std::string_view line) { return line.substr(0, line.find("  # ")); }

/// A definition, which goes on over indented lines, without its remarks.
std::string next_definition(std::string_view &text, Grammar &into, unsigned &number)
{
    std::string definition;
    do {
        const std::string_view line = next_line(text);
        ++number;
        into.written.append(line).append("\n");
        definition.append(definition.empty() ? "" : "\n").append(without_remark(line));
    } while (text.starts_with(' '));
    return definition;
}

void define(Reader &reader, Grammar &into)
{
    const std::string part = reader.name();
    if (!reader.take("="))
        into.loose |= part == "loose";
    else if (part == "frame")
        into.frames.push_back(reader.frame());
    else if (part == "order")
        into.orders.push_back(reader.order());
    else if (part == "room")
        into.room = reader.count();
    else {
        into.order.push_back(part);
        into.parts[part] = reader.language();
    }
    if (part == "untrimmed")
        into.trimmed = false;
    if (part == "prints-nothing")
        into.prints = false;
}

Grammar read_file(const std::string &name, std::string_view text)
{
    Grammar read;
    read.name = name;
    for (unsigned number = 1; !text.empty();) {
        if (!text.starts_with('#') && !text.starts_with('\n')) {
            const std::string where = name + ":" + std::to_string(number);
            const std::string definition = next_definition(text, read, number);
            Reader reader(where, definition);
            define(reader, read);
            continue;
        }
        const std::string_view line = next_line(text);
        ++number;
        if (line.starts_with("# ") && !line.starts_with("# SPDX"))
            read.about.append(read.about.empty() ? "" : " ").append(line.substr(2));
    }
    return read;
}

} // namespace

Grammar read_grammar(const std::string &name, std::string_view text, std::string_view common)
{
    Grammar read = read_file(name, text);
    Grammar shared = read_file("common", common);
    shared.parts[printed_ipv6_name].expression = printed_ipv6();
    for (const std::string &part : read.order) {
        const Language language = read.part(part);
        collect(language.expression, shared, read);
    }
    for (const Frame &frame : read.frames)
        if (!frame.part.empty() && !read.has(frame.part))
            read.parts[frame.part] = shared.part(frame.part); // whose own parts are there, since text has them
    if (read.has("text")) {
        std::set<std::string> needed;
        meet("text", read, needed);
        std::erase_if(read.order, [&](const std::string &part) { return !needed.contains(part); });
    }
    return read;
}

} // namespace bgpdt::grammar
