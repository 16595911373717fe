// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "fields.hpp"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "errors.hpp"
#include "kinds.hpp"
#include "near_names.hpp"
#include "samples.hpp"

namespace bgpdt::toolkit {
namespace {

constexpr std::string_view family_suffix = " family";
constexpr std::string_view ipv4_suffix = " IPv4";
constexpr std::string_view ipv6_suffix = " IPv6";

/// The name of the address that the field is the family of; empty for any other field.
std::string_view address_of(const Field &field)
{
    const std::string_view name = field.name;
    return name.ends_with(family_suffix) ? name.substr(0, name.size() - family_suffix.size()) : "";
}

using Fields = std::span<const Field *const>;

/// Of the address in a family; null if there is none.
const Field *field_of(Fields fields, std::string_view address, std::string_view suffix)
{
    const auto found = std::ranges::find_if(fields, [&](const Field *field) {
        const std::string_view name = field->name;
        return name.size() == address.size() + suffix.size() && name.starts_with(address) && name.ends_with(suffix);
    });
    return found == fields.end() ? nullptr : *found;
}

/// Whether the field is an address of one family, with the family beside it.
bool is_of_family(Fields fields, const Field &field)
{
    const std::string_view name = field.name;
    const bool may_be = name.ends_with(ipv4_suffix) || name.ends_with(ipv6_suffix);
    return may_be && field_of(fields, name.substr(0, name.size() - ipv4_suffix.size()), family_suffix) != nullptr;
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

void ValueFields::plan(const Layout &layout, std::size_t size)
{
    layout_ = &layout;
    rows_.clear();
    const std::vector<const Field *> fields = fields_in_order(layout, std::min<std::size_t>(layout.stride, size));
    for (const Field *const field : fields) {
        const std::string_view address = address_of(*field);
        const bool is_family = !address.empty();
        if (is_family || !is_of_family(fields, *field))
            rows_.push_back({field, field->name, has_pieces(*field), address});
        if (is_family) {
            rows_.back().of_family[0] = field_of(fields, address, ipv4_suffix);
            rows_.back().of_family[1] = field_of(fields, address, ipv6_suffix);
        }
    }
    has_kinds_ = std::ranges::find(layout.fields, Words::sub_kind, &Field::words) != layout.fields.end();
}

std::string_view ValueFields::kind(Value value)
{
    if (!has_kinds_)
        return {};
    if (const std::uint32_t number = kind_of(value); kind_number_ != number) {
        kind_number_ = number;
        kind_ = kind_name(session_, type_, number);
    }
    return kind_;
}

/// Gives the next a name that no other value of the entry has: what goes with another field, as its notation does, is
/// named after that.
void ValueFields::name_next(std::string_view name)
{
    std::string &own = values_[used_].name;
    own.assign(name).append(index_);
    const auto others = std::span(values_).subspan(entry_begin_, used_ - entry_begin_);
    if (std::ranges::find(others, own, &NamedValue::name) != others.end())
        own = std::string(before_) + index_ + " " + own;
    named_ = index_.empty() ? used_ + 1 : 0;
}

NamedValue &ValueFields::add(std::string_view name)
{
    if (used_ == values_.size())
        values_.emplace_back();
    NamedValue &value = values_[used_];
    value.text.clear();
    value.number.reset();
    if (used_ >= named_ || value.name != name || !index_.empty()) // mostly it is what the value before had there
        name_next(name);
    ++used_;
    return value;
}

void ValueFields::add_row(const FieldReader &reader, const Row &row, std::size_t offset)
{
    const auto bytes_of = [&](const Field &field) { return reader.value.subspan(offset + field.offset, field.size()); };
    const Value bytes = bytes_of(*row.field);
    if (!row.address.empty()) {
        const std::string family = reader.meaning(*row.field, bytes);
        for (const Field *const field : row.of_family)
            if (field != nullptr && std::string_view(field->name).ends_with(family))
                return reader.read(*field, bytes_of(*field), add(row.address));
    }
    if (row.has_pieces)
        add_pieces(*row.field, bytes, [this](std::string_view name) -> NamedValue & { return add(name); });
    else
        reader.read(*row.field, bytes, add(row.name));
}

void ValueFields::add_entry(const FieldReader &reader, std::size_t entry)
{
    entry_begin_ = used_;
    before_ = {};
    for (const Row &row : rows_) {
        add_row(reader, row, entry * layout_->stride);
        before_ = row.name;
    }
}

std::span<const NamedValue> ValueFields::of(Value value)
{
    used_ = 0;
    entry_begin_ = 0;
    index_.clear();
    const Layout &layout = layout_of(type_.typeId, value, std::endian::native);
    if (layout.fields.empty()) {
        const Field field = whole_field(type_);
        FieldReader(value).read(field, value, add(field.name));
        return std::span(values_).first(used_);
    }
    if (&layout != layout_)
        plan(layout, value.size());
    const FieldReader reader(value, kind(value), layout);
    for (std::size_t entry = 0, told = reader.entries(layout).told; entry < told; ++entry) {
        if (layout.repeat > 1)
            index_ = " " + std::to_string(entry + 1);
        add_entry(reader, entry);
    }
    return std::span(values_).first(used_);
}

std::vector<NamedValue> named_values(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value)
{
    ValueFields fields(session, type);
    const std::span<const NamedValue> values = fields.of(value);
    return {values.begin(), values.end()};
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
