// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "subject.hpp"

#include <bit>
#include <cstring>
#include <span>
#include <stdexcept>

#include "bgp_datatype/fields.hpp"
#include "host/host.hpp"

namespace bgpdt::test {

namespace {

constexpr std::string_view distinguisher_prefix = "RD:";

std::string_view name_in(const char *field, std::size_t size) { return {field, strnlen(field, size)}; }

/// A dispatch table: its exported name, its length, and the type that dispatches through it.
struct Dispatch {
    const char *table;
    std::size_t rows;
    std::string_view type;
};

constexpr Dispatch dispatches_of[] = {{"g_astBOL_PREFIX_ProcTable", SYSDT_BOL_KINDS, "BOLPREFIX"},
                                      {"g_astBOL_RD_ProcTable", SYSDT_BOLRD_KINDS, "BOLRD"}};

Subject of_record(const SYSDT_Record &record)
{
    Subject subject;
    subject.kind = record.typeId;
    subject.length = record.dataLength;
    subject.format_in = record.formatIn;
    subject.format_out = record.formatOut;
    subject.check = record.check;
    subject.help = record.help;
    subject.compare = record.compare;
    subject.lua_set = record.luaSet;
    subject.lua_get = record.luaGet;
    subject.endian = record.endian;
    return subject;
}

Subject of_row(const SYSDT_DispatchRow &row, const SYSDT_Record &owner)
{
    Subject subject;
    subject.kind = owner.typeId;
    subject.length = owner.dataLength;
    subject.format_in = row.formatIn;
    subject.format_out = row.formatOut;
    subject.check = row.check;
    subject.help = row.help;
    subject.compare = row.compare;
    subject.lua_set = row.luaSet;
    subject.lua_get = row.luaGet;
    return subject;
}

const SYSDT_Record &registered(const host::Host &host, const std::string &name)
{
    const SYSDT_Record *record = host.find(name);
    if (record == nullptr)
        throw std::runtime_error("no type " + name + " is registered");
    return *record;
}

Subject find_row(const host::Host &host, std::string_view name)
{
    const bool distinguisher = name.starts_with(distinguisher_prefix);
    const char *owner = distinguisher ? "BOLRD" : "BOLPREFIX";
    name.remove_prefix(distinguisher ? distinguisher_prefix.size() : 0);
    const std::span<const SYSDT_DispatchRow> rows = dispatch_rows(host, owner);
    for (std::uint32_t i = 0; i < rows.size(); ++i) {
        if (name_in(rows[i].name, sizeof rows[i].name) == name) {
            Subject subject = of_row(rows[i], registered(host, owner));
            subject.sub_kind = i;
            return subject;
        }
    }
    throw std::runtime_error("no row " + std::string(name) + " of " + owner);
}

} // namespace

std::span<const SYSDT_DispatchRow> dispatch_rows(const host::Host &host, std::string_view type)
{
    for (const Dispatch &dispatch : dispatches_of) {
        if (dispatch.type == type) {
            const auto *table = static_cast<const SYSDT_DispatchRow *>(host.symbol(dispatch.table));
            return {table, table == nullptr ? 0 : dispatch.rows};
        }
    }
    return {};
}

const Expectation &Subject::answering(const Bytes &value) const
{
    if (!expect.has(dispatches) || value.size() < 4)
        return expect;
    const Expectation *row = expectation_behind(expect, selecting_word(value, std::endian::big));
    return row == nullptr ? expect : *row;
}

std::uint32_t Subject::passed_on(std::uint32_t status) const
{
    return status != SYSDT_OK && expect.has(dispatches) ? SYSDT_ERR_INVALID_VALUE : status;
}

Subject subject_of(const host::Host &host, const Line &line)
{
    const Expectation *expect = expectation_of(line.subject);
    if (expect == nullptr)
        throw std::runtime_error("nothing is known of how " + line.subject + " keeps the common contract");
    Subject subject = line.row ? find_row(host, line.subject) : of_record(registered(host, line.subject));
    subject.name = line.subject;
    subject.expect = *expect;
    subject.symbol = [&host](const char *name) { return host.symbol(name); };
    subject.rows = line.row ? std::span<const SYSDT_DispatchRow>{} : dispatch_rows(host, line.subject);
    return subject;
}

Form Subject::form() const { return {kind, expect.has(any_sub_kind) ? std::nullopt : sub_kind}; }

bool Subject::answers_to(const Line &line) const
{
    switch (line.verb) {
    case Verb::in:
    case Verb::bad: return format_in != nullptr;
    case Verb::out:
    case Verb::bare:
    case Verb::copy:
    case Verb::skip:
    case Verb::noout: return format_out != nullptr;
    case Verb::check: return check != nullptr;
    case Verb::cmp: return compare != nullptr;
    case Verb::set:
    case Verb::tables:
    case Verb::noset: return lua_set != nullptr;
    case Verb::get:
    case Verb::noget: return lua_get != nullptr;
    case Verb::swap: return endian != nullptr;
    case Verb::help:
    case Verb::nohelp: return help != nullptr;
    case Verb::fn: return symbol(line.function.c_str()) != nullptr;
    }
    return false;
}

Bytes Subject::parsed_to_target(Bytes value) const
{
    if (!sub_kind || value.size() == length)
        return to_target(form(), value);
    value.insert(value.begin(), sizeof(std::uint32_t), 0);
    value = to_target(form(), value);
    value.erase(value.begin(), value.begin() + sizeof(std::uint32_t));
    return value;
}

} // namespace bgpdt::test
