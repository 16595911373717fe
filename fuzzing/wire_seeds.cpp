// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <initializer_list>
#include <string>

#include "samples.hpp"
#include "seeds.hpp"
#include "wire_input.hpp"

namespace bgpdt::fuzzing {
namespace {

using wire::Bytes;
using wire::Sample;

Bytes seed_of(WireOperation operation, std::size_t form, std::initializer_list<Bytes> parts)
{
    Bytes seed{static_cast<std::uint8_t>(operation), static_cast<std::uint8_t>(form)};
    for (const Bytes &part : parts)
        seed.insert(seed.end(), part.begin(), part.end());
    return seed;
}

/// The lines of what stands beside a value, and how many bytes they are.
Bytes told(const std::vector<wire::NamedValue> &beside)
{
    std::string lines;
    for (const wire::NamedValue &value : beside)
        lines += value.name + "=" + value.text + "\n";
    Bytes bytes(lines.begin(), lines.end());
    bytes.push_back(static_cast<std::uint8_t>(lines.size()));
    return bytes;
}

/// An UPDATE that takes the octets back as routes of the form, or has them as its attribute.
Bytes message_of(const Sample &sample)
{
    Bytes body;
    if (sample.form->safi != 0) {
        body = {0, static_cast<std::uint8_t>(sample.form->afis[0]), sample.form->safi};
        body[0] = static_cast<std::uint8_t>(sample.form->afis[0] >> 8);
    }
    body.insert(body.end(), sample.octets.begin(), sample.octets.end());
    const auto code = static_cast<std::uint8_t>(sample.form->safi != 0 ? 15 : sample.form->attribute);
    Bytes message(16, 0xff);
    const auto size = static_cast<std::uint8_t>(body.size());
    const Bytes head{0, static_cast<std::uint8_t>(26 + size), 2,    0,    0,
                     0, static_cast<std::uint8_t>(3 + size),  0x80, code, size};
    message.insert(message.end(), head.begin(), head.end());
    message.insert(message.end(), body.begin(), body.end());
    return message;
}

} // namespace

void add_wire_seeds(Seeds &seeds, const std::string &samples)
{
    for (const Sample &sample : wire::read_samples(samples)) {
        const auto form = static_cast<std::size_t>(sample.form - wire::forms().data());
        seeds.add(seed_of(WireOperation::read, form, {sample.octets}));
        seeds.add(seed_of(WireOperation::read, form, {sample.octets, sample.octets}));
        const wire::Item item = wire::read(*sample.form, sample.octets).front();
        seeds.add(seed_of(WireOperation::write, form, {item.value, told(item.beside)}));
        seeds.add(seed_of(WireOperation::message, form, {message_of(sample)}));
    }
}

} // namespace bgpdt::fuzzing
