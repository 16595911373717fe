// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "wire_values.hpp"

#include <algorithm>
#include <bit>

#include "toolkit/conversions.hpp"
#include "toolkit/fields.hpp"
#include "toolkit/json_answers.hpp"
#include "toolkit/text_pieces.hpp"
#include "values_given.hpp"

namespace bgpdt::tool {
using namespace toolkit;
namespace {

constexpr std::string_view igp_router_id = "IGP router identifier";

/// What the type prints; nothing where it prints none.
std::optional<std::string> printed_text(Session &session, const SYSDT_Record &type, const Bytes &value)
{
    try {
        const Printed printed = print_value(session, type, value, session.mode_for(type));
        return printed.text && !printed.text->empty() ? printed.text : std::nullopt;
    } catch (const Refusal &) {
        return {};
    }
}

/// A BGP-LS key prints its IGP router identifiers as they are, octets up to the first zero. Here they stand as its
/// texts have them.
std::optional<std::string> link_state_text(Session &session, const SYSDT_Record &type, const Bytes &value)
{
    Bytes without = value;
    for (const Field &field : layout_of(type.typeId, value, std::endian::native).fields)
        if (field.name != nullptr && std::string_view(field.name).ends_with(igp_router_id))
            std::fill_n(without.begin() + field.offset, field.size(), std::uint8_t{0});
    std::optional<std::string> text = printed_text(session, type, without);
    constexpr std::string_view group = "[igp-router-id";
    std::size_t at = 0;
    for (const NamedValue &field : named_values(session, type, value)) {
        if (!text || !field.name.ends_with(igp_router_id))
            continue;
        at = text->find(group, at);
        if (at == std::string::npos)
            break;
        text->insert(at += group.size(), field.text);
    }
    return text;
}

/// The text, if it has one.
std::optional<std::string> text_of(Session &session, const SYSDT_Record &type, const Bytes &value)
{
    return type.typeId == SYSDT_TYPE_BGPLSPREFIX ? link_state_text(session, type, value)
                                                 : printed_text(session, type, value);
}

/// The character of the hexadecimal text at which the byte begins; its end if there are not so many.
std::size_t place_of_byte(std::string_view text, std::size_t byte)
{
    std::size_t at = text.starts_with("0x") || text.starts_with("0X") ? 2 : 0;
    std::size_t digits = 0;
    for (; at < text.size(); ++at)
        if (is_hex(text[at]) && digits++ == 2 * byte)
            break;
    return at;
}

} // namespace

const SYSDT_Record &record_of(Session &session, const wire::Form &form)
{
    return **std::ranges::find(session.host().types(), form.type, &SYSDT_Record::typeId);
}

/// Text, or bytes behind 0x, which the other commands take as well.
std::string ItemWriter::value_text(const SYSDT_Record &type, const Bytes &value)
{
    const std::optional<std::string> text =
        format_ == Format::text ? text_of(session_, type, value) : std::optional<std::string>();
    return text ? *text : (format_ == Format::text ? "0x" : "") + hex_of(session_, type, value);
}

JsonObject ItemWriter::json(const wire::Form &form, const wire::Item &item, wire::Octets octets,
                            const std::optional<Frame> &frame)
{
    const SYSDT_Record &type = record_of(session_, form);
    const auto table = [&](Buffer &out) { return script_.append(out, session_.host(), type, item.value); };
    JsonObject line = line_json(text_of(session_, type, item.value), table, named_values(session_, type, item.value),
                                hex_of(session_, type, item.value));
    add_wire(line, item.beside, octets);
    if (frame)
        add_frame(line.add("type", name_of(type)), frame->number, frame->withdrawn);
    return line;
}

std::string ItemWriter::line(const wire::Form &form, const wire::Item &item, wire::Octets octets,
                             const std::optional<Frame> &frame)
{
    if (format_ == Format::json)
        return json(form, item, octets, frame).text() + "\n";
    const SYSDT_Record &type = record_of(session_, form);
    std::string line;
    if (frame)
        line = std::to_string(frame->number) + "\t" + name_of(type) + "\t";
    line += value_text(type, item.value);
    for (const NamedValue &beside : item.beside)
        line += "\t" + beside.name + "=" + beside.text;
    if (frame && frame->withdrawn)
        line += "\twithdrawn";
    return line + "\n";
}

Refusal refusal_of(const std::string &front, const wire::BadBytes &bad, std::string_view text,
                   const std::string &advice)
{
    const std::size_t at = place_of_byte(text, bad.at());
    const std::size_t end = bad.size() == 0 ? at : place_of_byte(text, bad.at() + bad.size() - 1) + 2;
    return Refusal(front + ": " + bad.what() + (advice.empty() ? "" : "; " + advice), 0, {},
                   Diagnosis{.text = std::string(text), .at = at, .length = end - at, .reason = bad.what()});
}

} // namespace bgpdt::tool
