// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fuzzes what comes from the wire and goes to it. Octets are refused for a reason that lies within them, or told
/// whole: the way back leads to them. What is sent of a value is read as one that is sent in the same way.
#include <algorithm>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "input.hpp"
#include "property.hpp"
#include "wire/texts.hpp"
#include "wire/update.hpp"
#include "wire_input.hpp"

namespace bgpdt::fuzzing {
namespace {

using wire::BadBytes;
using wire::Bytes;
using wire::Form;
using wire::Item;
using wire::NamedValue;
using wire::NotSent;
using wire::Octets;

constexpr std::size_t first_byte = 1000; // of the octets on the wire

/// Octets that the sanitizer sees both ends of.
struct Room {
    explicit Room(Octets octets) : bytes(new std::uint8_t[octets.size()]), size(octets.size())
    {
        std::ranges::copy(octets, bytes.get());
    }
    Octets octets() const { return {bytes.get(), size}; }

    std::unique_ptr<std::uint8_t[]> bytes;
    std::size_t size;
};

void require_within(const BadBytes &bad, std::size_t at, std::size_t size)
{
    require(bad.at() >= at && bad.at() + bad.size() <= at + size, "what is wrong lies within the octets");
    require(bad.what()[0] != '\0', "a refusal has its sentence");
}

void require_whole(const Form &form, const Item &item, Octets octets)
{
    require(item.value.size() == form.value_size, "a value has its size");
    const Bytes again = wire::write(form, item.value, item.beside);
    require(std::ranges::equal(again, octets), "what is read is written as it was");
}

void fuzz_read(const Form &form, Octets octets, std::size_t at)
{
    try {
        std::size_t next = at;
        for (const Item &item : wire::read(form, octets, at)) {
            require(item.at == next && item.size != 0, "values stand one behind the other");
            next += item.size;
            require_whole(form, item, octets.subspan(item.at - at, item.size));
        }
        require(next == at + octets.size(), "all octets are read");
    } catch (const BadBytes &bad) {
        require_within(bad, at, octets.size());
    }
}

std::vector<NamedValue> beside_of(std::string_view lines)
{
    std::vector<NamedValue> beside;
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        const std::size_t equals = std::min(line.find('='), line.size());
        beside.push_back(
            {std::string(line.substr(0, equals)), std::string(line.substr(std::min(equals + 1, line.size())))});
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    }
    return beside;
}

void fuzz_write(const Form &form, Octets payload)
{
    const std::size_t told = payload.empty() ? 0 : std::min<std::size_t>(payload.back(), payload.size() - 1);
    const Octets text = payload.first(payload.size() - (payload.empty() ? 0 : 1)).last(told);
    Bytes value(payload.begin(), payload.end() - static_cast<std::ptrdiff_t>(payload.empty() ? 0 : told + 1));
    value.resize(form.value_size);
    const std::vector<NamedValue> beside = beside_of({reinterpret_cast<const char *>(text.data()), text.size()});
    Bytes sent;
    try {
        sent = wire::write(form, value, beside);
    } catch (const NotSent &none) {
        require(none.what()[0] != '\0', "what is not sent has its sentence");
        return;
    }
    const std::vector<Item> items = wire::read(form, sent);
    require(items.size() == 1 && items[0].size == sent.size(), "what is sent is one value");
    require_whole(form, items[0], sent);
}

void fuzz_message(Octets message)
{
    try {
        for (const wire::Stretch &stretch : wire::stretches_of(message)) {
            require(stretch.at + stretch.octets.size() <= message.size() &&
                        stretch.octets.data() == message.data() + stretch.at,
                    "an attribute lies within its message");
            fuzz_read(*stretch.form, stretch.octets, stretch.at);
        }
    } catch (const BadBytes &bad) {
        require_within(bad, 0, message.size());
    }
}

void fuzz_texts(Octets octets)
{
    const Octets rd = octets.first(wire::rd_size);
    require(std::ranges::equal(wire::rd_octets(wire::rd_text(rd)), rd), "a route distinguisher's text says its octets");
    const Octets esi = octets.first(wire::esi_size);
    require(std::ranges::equal(wire::esi_octets(wire::esi_text(esi)), esi), "an ESI's text says its octets");
}

} // namespace
} // namespace bgpdt::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace bgpdt;
    using namespace bgpdt::fuzzing;
    if (size < 2 || size > most_bytes)
        return 0;
    const Room room({data + 2, size - 2});
    const wire::Form &form = wire::forms()[data[1] % wire::forms().size()];
    switch (static_cast<WireOperation>(data[0] % static_cast<unsigned>(WireOperation::count))) {
    case WireOperation::read: fuzz_read(form, room.octets(), first_byte); break;
    case WireOperation::write: fuzz_write(form, room.octets()); break;
    default: fuzz_message(room.octets()); break;
    }
    if (room.size >= wire::esi_size)
        fuzz_texts(room.octets());
    return 0;
}
