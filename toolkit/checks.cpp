// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "checks.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <utility>

#include "conversions.hpp"
#include "display_record.hpp"
#include "errors.hpp"
#include "fields.hpp"
#include "shown_text.hpp"

namespace bgpdt::toolkit {
namespace {

const NamedValue *field_named(std::span<const NamedValue> fields, std::initializer_list<const char *> names)
{
    for (const char *name : names)
        if (const auto found = std::ranges::find(fields, name, &NamedValue::name); found != fields.end())
            return &*found;
    return nullptr;
}

struct Address {
    int family;
    std::size_t size;
    std::uint8_t octets[16] = {};

    explicit Address(const std::string &text)
        : family(text.find(':') == std::string::npos ? AF_INET : AF_INET6), size(family == AF_INET ? 4 : 16)
    {
        static_cast<void>(inet_pton(family, text.c_str(), octets)); // a field's text, as it was printed
    }

    /// Clears the bits behind the length; whether there were any.
    bool cut(std::uint64_t length)
    {
        bool any = false;
        for (auto i = length; i < 8 * size; ++i) {
            const auto bit = static_cast<std::uint8_t>(0x80 >> i % 8);
            any = any || (octets[i / 8] & bit) != 0;
            octets[i / 8] = static_cast<std::uint8_t>(octets[i / 8] & ~bit);
        }
        return any;
    }

    std::string text() const
    {
        char buffer[INET6_ADDRSTRLEN] = "";
        return inet_ntop(family, octets, buffer, sizeof buffer);
    }
};

/// Of a prefix and its length.
std::optional<std::string> prefix_warning(std::span<const NamedValue> fields)
{
    const NamedValue *const prefix = field_named(fields, {"IPv4 prefix", "IPv6 prefix", "prefix"});
    const NamedValue *const length = field_named(fields, {"mask length", "prefix length"});
    if (prefix == nullptr || length == nullptr || !length->number)
        return {};
    Address address(prefix->text);
    if (*length->number > 8 * address.size)
        return "the prefix length " + length->text + " is beyond the " + std::to_string(8 * address.size) +
               " bits of the address";
    if (!address.cut(*length->number))
        return {};
    return prefix->text + " has bits behind its prefix length " + length->text + ": the prefix is " + address.text();
}

std::optional<std::string> print_warning(Session &session, const SYSDT_Record &type,
                                         std::span<const std::uint8_t> value)
{
    if (type.formatOut == nullptr)
        return {};
    try {
        const Printed printed = print_value(session, type, printable(type, value), session.mode_for(type));
        return printed.text && printed.text->empty() ? std::optional<std::string>("it is printed as nothing")
                                                     : std::nullopt;
    } catch (const Refusal &refusal) {
        return "it is accepted, but " + std::string(refusal.what());
    }
}

} // namespace

std::vector<std::string> warnings_of(Session &session, const SYSDT_Record &type, std::span<const std::uint8_t> value)
{
    std::vector<std::string> warnings;
    std::optional<std::string> found[] = {print_warning(session, type, value),
                                          prefix_warning(named_values(session, type, value))};
    for (std::optional<std::string> &warning : found)
        if (warning)
            warnings.push_back(*std::move(warning));
    return warnings;
}

void require_canonical(Session &session, const SYSDT_Record &type, std::string_view text,
                       std::span<const std::uint8_t> value)
{
    const Printed printed = print_value(session, type, value, session.mode_for(type));
    if (printed.text && *printed.text != text)
        throw Refusal(name_of(type) + " accepts " + lua_quoted(shortened(text)) +
                      ", but it is not canonical: " + lua_quoted(shortened(*printed.text)) + " is");
}

} // namespace bgpdt::toolkit
