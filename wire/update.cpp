// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "update.hpp"

#include "reader.hpp"

namespace bgpdt::wire {
namespace {

constexpr std::size_t marker_size = 16;
constexpr std::size_t header_size = 19;
constexpr std::uint8_t update_type = 2;
constexpr std::uint8_t extended_length = 0x10; // of an attribute's flags
constexpr std::uint8_t reachable = 14;         // MP_REACH_NLRI
constexpr std::uint8_t unreachable = 15;       // MP_UNREACH_NLRI

class Attributes {
public:
    explicit Attributes(std::vector<Stretch> &stretches) : stretches_(stretches) {}

    void take(Reader &in)
    {
        const auto flags = in.take<std::uint8_t>("attribute's flags");
        const auto code = in.take<std::uint8_t>("attribute's code");
        if ((flags & extended_length) != 0)
            in.nested<std::uint16_t>("attribute", [&](Reader &attribute) { look(code, attribute); });
        else
            in.nested<std::uint8_t>("attribute", [&](Reader &attribute) { look(code, attribute); });
    }

private:
    void look(std::uint8_t code, Reader &attribute)
    {
        if (code == reachable || code == unreachable)
            routes(code == unreachable, attribute);
        else
            add(form_of_attribute(code), attribute, false);
    }

    void routes(bool withdrawn, Reader &attribute)
    {
        const auto afi = attribute.take<std::uint16_t>("address family");
        const auto safi = attribute.take<std::uint8_t>("subsequent address family");
        if (!withdrawn) {
            attribute.nested<std::uint8_t>("next hop",
                                           [](Reader &next_hop) { next_hop.take_octets("next hop", next_hop.left()); });
            attribute.take_octets("reserved byte", 1);
        }
        add(form_of_family(afi, safi), attribute, withdrawn);
    }

    /// An UPDATE without routes, the end of a table, is none that is broken off.
    void add(const Form *form, Reader &attribute, bool withdrawn)
    {
        const std::size_t at = attribute.at();
        const Octets octets = attribute.take_octets("attribute", attribute.left());
        if (form != nullptr && !octets.empty())
            stretches_.push_back({form, octets, at, withdrawn});
    }

    std::vector<Stretch> &stretches_;
};

} // namespace

std::vector<Stretch> stretches_of(Octets message)
{
    Item item; // an UPDATE has no value of its own
    Reader in(message, 0, item);
    in.take_octets("marker", marker_size);
    const auto size = in.take<std::uint16_t>("message's length");
    if (size != message.size() || size < header_size)
        in.refuse(2, "message's length", std::to_string(message.size()) + ", as many bytes as there are",
                  std::to_string(size));
    std::vector<Stretch> stretches;
    if (in.take<std::uint8_t>("message's type") != update_type)
        return stretches;
    in.nested<std::uint16_t>("withdrawn routes", [](Reader &routes) { routes.take_octets("routes", routes.left()); });
    in.nested<std::uint16_t>("path attributes", [&](Reader &attributes) {
        Attributes found(stretches);
        while (attributes.left() != 0)
            found.take(attributes);
    });
    return stretches;
}

} // namespace bgpdt::wire
