// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "asking.hpp"

#include <algorithm>
#include <lua.hpp>
#include <stdexcept>
#include <tuple>

#include "report.hpp"

namespace bgpdt::test {

namespace {

/// The subject as the host takes it.
SYSDT_Record record_of(const Subject &subject)
{
    SYSDT_Record record{};
    record.typeId = subject.kind;
    record.dataLength = subject.length;
    record.formatIn = subject.format_in;
    record.formatOut = subject.format_out;
    record.check = subject.check;
    record.help = subject.help;
    record.compare = subject.compare;
    record.luaSet = subject.lua_set;
    record.luaGet = subject.lua_get;
    record.endian = subject.endian;
    return record;
}

/// A table's fields come in the order of the engine's hashes.
void sort_fields(ScriptValue &value)
{
    if (auto *table = std::get_if<ScriptTable>(&value.value)) {
        std::ranges::for_each(*table, sort_fields, &ScriptField::value);
        std::ranges::sort(*table, [](const ScriptField &first, const ScriptField &second) {
            return std::tie(first.name, first.index) < std::tie(second.name, second.index);
        });
    }
}

Answer of_status(std::uint32_t status)
{
    Answer answer;
    answer.status = status;
    return answer;
}

Answer call_parser(const Line &line, const Subject &subject)
{
    using Parser = std::uint32_t(char *, void *);
    std::string text = line.text;
    Bytes value(line.result ? line.result->size() : subject.reports(line).length);
    Answer answer =
        of_status(reinterpret_cast<Parser *>(subject.symbol(line.function.c_str()))(text.data(), value.data()));
    if (line.result) // else the value's size is not known
        answer.bytes = subject.parsed_to_target(value);
    return answer;
}

} // namespace

bool operator==(const Answer &first, const Answer &second)
{
    return first.status == second.status && first.kind == second.kind && first.bytes == second.bytes &&
           same_content(first.script, second.script) && first.texts == second.texts;
}

std::string to_text(const Answer &answer)
{
    std::string text = status_word(answer.status) + " " + std::to_string(answer.kind) + " " +
                       std::to_string(answer.bytes.size()) + " ";
    for (const std::uint8_t byte : answer.bytes)
        text += {"0123456789abcdef"[byte >> 4], "0123456789abcdef"[byte & 15]};
    ScriptValue script = answer.script;
    sort_fields(script);
    text += " " + to_text(script);
    for (const std::string &help : answer.texts)
        text += " " + show(help);
    return text;
}

void Asking::Close::operator()(lua_State *lua) const { lua_close(lua); }

Asking::Asking(host::Host &host) : host_(host), lua_(luaL_newstate())
{
    if (lua_ == nullptr)
        throw std::runtime_error("no Lua state");
}

Answer Asking::ask(const Line &line, const Subject &subject, std::uint8_t mode) const
{
    switch (line.verb) {
    case Verb::in:
    case Verb::bad: return parse(line, subject, mode);
    case Verb::out:
    case Verb::bare:
    case Verb::copy:
    case Verb::skip:
    case Verb::noout: return print(line, subject, mode);
    case Verb::check: return of_status(host_.check(record_of(subject), to_native(subject.form(), line.bytes)));
    case Verb::cmp: return compare(line, subject);
    case Verb::swap: return swap(line, subject);
    case Verb::set:
    case Verb::noset: return set(line, subject);
    case Verb::tables: return of_status(set(line, subject).status);
    case Verb::get:
    case Verb::noget: return get(line, subject);
    case Verb::fn: return call_parser(line, subject);
    case Verb::help:
    case Verb::nohelp: break;
    }
    Answer answer;
    answer.texts = host_.help(record_of(subject), mode, answer.status);
    return answer;
}

Answer Asking::parse(const Line &line, const Subject &subject, std::uint8_t mode) const
{
    const host::Converted converted = host_.parse(record_of(subject), line.text, mode);
    Answer answer = of_status(converted.status);
    answer.kind = converted.kind;
    answer.bytes = to_target(subject.form(), converted.data);
    return answer;
}

Answer Asking::print(const Line &line, const Subject &subject, std::uint8_t mode) const
{
    const host::Converted converted =
        host_.print(record_of(subject), shown_to_native(subject.form(), line.bytes), mode);
    Answer answer = of_status(converted.status);
    answer.kind = converted.kind;
    const bool copied = subject.answering(line.bytes).out_letter(mode) == 'c';
    answer.bytes = copied ? copy_to_target(subject.form(), converted.data) : converted.data;
    return answer;
}

/// An order of bytes is one of the bytes as they stand.
Answer Asking::compare(const Line &line, const Subject &subject) const
{
    const auto operand = [&](const Bytes &bytes) {
        return subject.expect.has(bytewise) ? bytes : to_native(subject.form(), bytes);
    };
    const std::int32_t order = host_.compare(record_of(subject), operand(line.bytes), operand(line.result.value()));
    return of_status(static_cast<std::uint32_t>(order));
}

Answer Asking::swap(const Line &line, const Subject &subject) const
{
    const auto turned = [&](const Bytes &value) {
        return turned_like(subject.form(), line.bytes, line.result.value_or(line.bytes), value);
    };
    Bytes value = turned(line.bytes);
    Answer answer = of_status(host_.swap(record_of(subject), value));
    answer.bytes = turned(value);
    return answer;
}

Answer Asking::set(const Line &line, const Subject &subject) const
{
    Answer answer;
    std::string error;
    const Bytes value = to_native(subject.form(), line.bytes);
    answer.status = host_.push_script_value(lua_.get(), record_of(subject), value, error);
    if (answer.status == SYSDT_OK) {
        answer.script = read(lua_.get(), -1);
        lua_pop(lua_.get(), 1);
    }
    if (!error.empty())
        answer.texts.push_back(error);
    return answer;
}

Answer Asking::get(const Line &line, const Subject &subject) const
{
    const std::size_t refused = line.result ? line.result->size() : subject.script_size();
    const std::size_t size = line.verb == Verb::get ? line.bytes.size() : refused;
    Answer answer;
    std::string error;
    push(lua_.get(), line.script);
    answer.status = host_.read_script_value(lua_.get(), record_of(subject), size, answer.bytes, error);
    lua_pop(lua_.get(), 1);
    const bool told = line.verb == Verb::get || line.result;
    answer.bytes = told ? to_target(subject.form(), answer.bytes) : Bytes{};
    if (!error.empty())
        answer.texts.push_back(error);
    return answer;
}

Answer expected_answer(const Line &line, const Subject &subject)
{
    Answer expected = of_status(static_cast<std::uint32_t>(line.status));
    switch (line.verb) {
    case Verb::in:
        expected.kind = subject.reports(line).kind;
        expected.bytes = line.bytes;
        break;
    case Verb::out:
    case Verb::bare:
        expected.kind = line.verb == Verb::out ? SYSDT_KIND_STRING : SYSDT_KIND_BINARY;
        expected.bytes.assign(line.text.begin(), line.text.end());
        if (line.verb == Verb::out)
            expected.bytes.push_back(0);
        break;
    case Verb::copy:
        expected.kind = subject.answering(line.bytes).has(always_takes) ? subject.kind : SYSDT_KIND_BINARY;
        expected.bytes = line.result.value();
        break;
    case Verb::set: expected.script = line.script; break;
    case Verb::get: expected.bytes = line.bytes; break;
    case Verb::swap: expected.bytes = line.result.value(); break;
    case Verb::noget:
    case Verb::fn: expected.bytes = line.result.value_or(Bytes{}); break;
    case Verb::help: expected.texts = {line.text}; break;
    case Verb::bad:
    case Verb::skip:
    case Verb::noout:
    case Verb::check:
    case Verb::cmp:
    case Verb::tables:
    case Verb::noset:
    case Verb::nohelp: break;
    }
    return expected;
}

} // namespace bgpdt::test
