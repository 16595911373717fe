// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "fields.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

#include "errors.hpp"
#include "explain.hpp"
#include "kinds.hpp"
#include "near_names.hpp"
#include "samples.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr std::string_view family_suffix = " family";

/// The name of the address that the part is the family of; empty for any other part.
std::string address_of(const Part &part)
{
    return part.name.ends_with(family_suffix) ? part.name.substr(0, part.name.size() - family_suffix.size()) : "";
}

const Part *part_named(std::span<const Part> parts, const std::string &name)
{
    const auto found = std::ranges::find(parts, name, &Part::name);
    return found == parts.end() ? nullptr : &*found;
}

/// The parts of the addresses that have a family beside them.
std::vector<std::string> parts_of_addresses(std::span<const Part> parts)
{
    std::vector<std::string> names;
    for (const Part &part : parts)
        if (const std::string name = address_of(part); !name.empty())
            names.insert(names.end(), {name + " IPv4", name + " IPv6"});
    return names;
}

NamedValue named_value(const Part &part)
{
    if (part.in_words)
        return {part.name, part.meaning};
    const bool plain = part.numbers.size() == 1 && part.shown == std::to_string(part.numbers.front());
    return {part.name, part.shown, plain ? std::optional(part.numbers.front()) : std::nullopt};
}

/// Under a name that no other field has: what goes with another field, as its notation does, is named after that.
void add(std::vector<NamedValue> &values, NamedValue value, const std::string &before)
{
    if (std::ranges::find(values, value.name, &NamedValue::name) != values.end())
        value.name = before + " " + value.name;
    values.push_back(std::move(value));
}

Bytes bare_value(const SYSDT_Record &type, std::uint32_t kind)
{
    Bytes value(value_size(type));
    std::memcpy(value.data(), &kind, sizeof kind);
    return value;
}

/// Values that together have all fields.
std::vector<Bytes> known_values(Session &session, const SYSDT_Record &type)
{
    std::vector<Bytes> known{Bytes(value_size(type))};
    for (const std::string &text : sample_of(type.typeId).texts) {
        const host::Converted converted = session.parse(type, text, session.mode_for(type));
        if (converted.ok() && converted.data.size() == value_size(type))
            known.push_back(converted.data);
    }
    for (const Kind &kind : kinds(session, type))
        known.push_back(bare_value(type, kind.number));
    return known;
}

/// The same values with other numbers. What decides of a key's fields stays in some: its sub-kind word, and the route
/// type behind that.
std::vector<Bytes> varied(const SYSDT_Record &type, const std::vector<Bytes> &values)
{
    std::vector<Bytes> all;
    for (const Bytes &value : values) {
        for (const std::size_t kept : {std::size_t{0}, std::size_t{4}, std::size_t{5}}) {
            Bytes &other = all.emplace_back(value);
            std::fill(other.begin() + static_cast<std::ptrdiff_t>(std::min(kept, value_size(type))), other.end(),
                      std::uint8_t{0xff});
        }
    }
    return all;
}

/// Those that are no number in this value are none in every value.
void note_texts(std::vector<KnownField> &known, std::span<const NamedValue> values)
{
    for (const NamedValue &value : values)
        if (const auto found = std::ranges::find(known, value.name, &KnownField::name); found != known.end())
            found->number = found->number && value.number.has_value();
}

std::string text_in(std::span<const NamedValue> values, const std::string &name)
{
    const auto found = std::ranges::find(values, name, &NamedValue::name);
    return found == values.end() ? "" : found->text;
}

} // namespace

std::vector<NamedValue> named_values(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value)
{
    const std::vector<Part> parts = parts_of(session, type, value);
    const std::vector<std::string> in_addresses = parts_of_addresses(parts);
    std::vector<NamedValue> values;
    std::string before;
    for (const Part &part : parts) {
        if (part.name.empty() || part.repeats > 0 || std::ranges::find(in_addresses, part.name) != in_addresses.end())
            continue;
        const std::string address = address_of(part);
        const Part *const chosen = address.empty() ? nullptr : part_named(parts, address + " " + part.meaning);
        if (chosen != nullptr)
            add(values, {address, chosen->shown}, before);
        else if (part.pieces.empty())
            add(values, named_value(part), before);
        for (const NamedValue &piece : part.pieces)
            add(values, piece, before);
        before = part.name;
    }
    return values;
}

std::vector<std::string> field_names(Session &session, const SYSDT_Record &type)
{
    std::vector<std::string> names;
    for (const Bytes &value : known_values(session, type)) {
        for (const NamedValue &field : named_values(session, type, value))
            if (std::ranges::find(names, field.name) == names.end())
                names.push_back(field.name);
    }
    return names;
}

std::vector<KnownField> known_fields(Session &session, const SYSDT_Record &type)
{
    std::vector<KnownField> known;
    for (const std::string &name : field_names(session, type))
        known.push_back({name, true});
    const std::vector<Bytes> values = known_values(session, type);
    for (const std::vector<Bytes> &some : {values, varied(type, values)})
        for (const Bytes &value : some)
            note_texts(known, named_values(session, type, value));
    return known;
}

void require_field(const SYSDT_Record &type, const std::string &name, std::span<const std::string> known)
{
    if (std::ranges::find(known, name) == known.end())
        throw Error(name_of(type) + " has no field " + name + did_you_mean(name, known), Hint::fields);
}

std::optional<NamedValue> field_named(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value,
                                      const std::string &name)
{
    const std::vector<NamedValue> values = named_values(session, type, value);
    const auto found = std::ranges::find(values, name, &NamedValue::name);
    if (found != values.end())
        return *found;
    require_field(type, name, field_names(session, type));
    return {};
}

std::vector<Difference> differences(std::span<const NamedValue> first, std::span<const NamedValue> second)
{
    std::vector<Difference> all;
    for (const NamedValue &field : first)
        if (const std::string other = text_in(second, field.name); other != field.text)
            all.push_back({field.name, field.text, other});
    for (const NamedValue &field : second)
        if (std::ranges::find(first, field.name, &NamedValue::name) == first.end())
            all.push_back({field.name, "", field.text});
    return all;
}

} // namespace bgpdt::toolkit
