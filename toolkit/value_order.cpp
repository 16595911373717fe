// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "value_order.hpp"

#include <algorithm>
#include <bit>
#include <cstring>

#include "kinds.hpp"
#include "room.hpp"

namespace bgpdt::toolkit {
namespace {

/// A value of zeros but for one of its numbers, in the machine's order; empty if it has no number of two bytes or more.
Bytes with_number(const SYSDT_Record &type, std::uint16_t number)
{
    Bytes value(value_size(type));
    const Layout &layout = layout_of(type.typeId, value, std::endian::native);
    const auto field =
        std::ranges::find_if(layout.fields, [](const Field &row) { return row.host_order() && row.width > 1; });
    const bool plain = layout.fields.empty() && type.baseKind == SYSDT_KIND_BINARY && value.size() > 1;
    if (field == layout.fields.end() && !plain)
        return {};
    const std::size_t end = plain ? value.size() : std::size_t{field->offset} + field->width;
    value[end - 2] = static_cast<std::uint8_t>(number >> 8);
    value[end - 1] = static_cast<std::uint8_t>(number);
    if (std::endian::native == std::endian::little)
        std::reverse(value.data() + (plain ? 0 : field->offset), value.data() + end);
    return value;
}

/// How many of the bytes are left without the blocks at the end that are zeros.
template <std::size_t block>
std::size_t size_without_zeros(const std::uint8_t *bytes, std::size_t size)
{
    constexpr std::uint8_t zeros[block] = {};
    while (size >= block && std::memcmp(bytes + size - block, zeros, block) == 0)
        size -= block;
    return size;
}

std::size_t size_without_zeros(Value value)
{
    std::size_t size = size_without_zeros<64>(value.data(), value.size());
    size = size_without_zeros<8>(value.data(), size);
    return size_without_zeros<1>(value.data(), size);
}

/// Writes a number's bytes the other way round, be it in place.
void copy_turned(const std::uint8_t *from, std::size_t width, std::uint8_t *to)
{
    std::uint32_t usual = 0;
    if (width != sizeof usual) {
        std::memmove(to, from, width);
        std::reverse(to, to + width);
        return;
    }
    std::memcpy(&usual, from, sizeof usual);
    usual = __builtin_bswap32(usual);
    std::memcpy(to, &usual, sizeof usual);
}

int compared(const SYSDT_Record &type, std::size_t size, const void *first, const void *second)
{
    return type.compare(&type, static_cast<std::uint32_t>(size), first, second);
}

} // namespace

bool compares_numbers(const SYSDT_Record &type)
{
    const Bytes one = with_number(type, 1);
    const Bytes two = with_number(type, 2);
    const Bytes more = with_number(type, 0x0100); // its low byte is less than theirs
    return type.compare != nullptr && !one.empty() &&
           compared(type, one.size(), one.data(), two.data()) == compared(type, one.size(), one.data(), more.data());
}

ValueOrder::ValueOrder(Session &session, const SYSDT_Record &type)
    : type_(type), size_(value_size(type)), asks_(type.compare != nullptr && !has_kinds(session, type)),
      reads_numbers_(asks_ && compares_numbers(type))
{
    // Known beforehand, since the order may be shared by threads: of several layouts a byte of the head tells which.
    constexpr std::size_t head = 8;
    constexpr std::uint8_t most_layouts = 16;
    Bytes value(reads_numbers_ ? size_ : 0);
    for (std::size_t at = 0; at < std::min(head, value.size()); value[at++] = 0)
        for (value[at] = 0; value[at] < most_layouts; ++value[at])
            static_cast<void>(numbers_of(value));
}

const std::vector<ValueOrder::Number> &ValueOrder::numbers_of(Value value)
{
    const Layout &layout = layout_of(type_.typeId, value, std::endian::native);
    if (const Numbers *known = known_numbers(layout, value.size()))
        return known->numbers;
    std::vector<Number> &numbers = numbers_.emplace_back(Numbers{&layout, value.size(), {}}).numbers;
    ByteOrder target(type_, false);
    const std::uint16_t *const positions = target.positions(value);
    for (std::size_t at = 0, width = 1; at < value.size(); at += width) {
        width = std::size_t{1} + positions[at] - at; // the byte that comes first is the number's last
        if (width > 1)
            numbers.push_back({static_cast<std::uint16_t>(at), static_cast<std::uint16_t>(width)});
    }
    return numbers;
}

std::size_t ValueOrder::make_key(Value value, std::uint8_t *room)
{
    const std::size_t size = size_without_zeros(value);
    std::size_t end = 0;
    std::memcpy(room, value.data(), size);
    for (const auto [at, width] : numbers_of(value)) {
        if (at >= size)
            break;
        copy_turned(value.data() + at, width, room + at);
        end = std::size_t{at} + width;
    }
    return size_without_zeros<1>(room, std::max(size, end)); // fewer than a number has bytes
}

ValueOrder::Asked ValueOrder::asked(Key key, std::uint8_t *room) const
{
    if (!asks_ || is_asked(key))
        return {key, key.data()};
    std::memcpy(room, key.data(), key.size());
    if (key.size() != size_)
        std::memset(room + key.size(), 0, size_ - key.size());
    if (!reads_numbers_)
        return {key, room};
    const Layout &layout = layout_of(type_.typeId, {room, size_}, std::endian::big);
    if (const Numbers *known = known_numbers(layout, size_)) {
        for (const auto [at, width] : known->numbers)
            copy_turned(room + at, width, room + at);
    } else {
        turn_to_native(type_, {room, size_});
    }
    return {key, room};
}

std::optional<int> ValueOrder::answer(Asked first, Asked second) const
{
    const int answer = compared(type_, size_, first.bytes, second.bytes);
    return answer >= -1 && answer <= 1 ? std::optional(answer) : std::nullopt;
}

int ValueOrder::compare(Asked first, Asked second) const
{
    return asks_ ? decide(answer(first, second), first.key, second.key) : compare_keys(first.key, second.key);
}

int ValueOrder::compare(Key first, Key second) const
{
    if (!asks_ || (is_asked(first) && is_asked(second)))
        return compare({first, first.data()}, {second, second.data()});
    return compare_asking(first, second);
}

int ValueOrder::compare_asking(Key first, Key second) const
{
    Room<usual_size> rooms[] = {Room<usual_size>(size_), Room<usual_size>(size_)};
    return compare(asked(first, rooms[0].data()), asked(second, rooms[1].data()));
}

/// A sample, about which Compare is asked which of its bytes decide, by copies with their lowest bits set and cleared.
class ValueOrder::Trial {
public:
    Trial(const ValueOrder &order, Key sample, std::span<const Place> places)
        : order_(order), places_(places), sample_(order.size_)
    {
        std::ranges::copy(sample, sample_.begin());
        for (const Place &place : places) {
            begin();
            set(place, greater_, lesser_);
            effects_.push_back(answer());
        }
    }

    /// Positive if the greater byte comes last, negative if it comes first, 0 if either may.
    int effect(std::size_t place) const { return effects_[place]; }

    /// Which of two decides where they say different things: positive if the first does, 0 if that is not known.
    int stronger(std::size_t first, std::size_t second)
    {
        if (effect(first) == 0 || effect(second) == 0)
            return 0;
        begin();
        set(directed(first), greater_, lesser_);
        set(directed(second), lesser_, greater_);
        return answer();
    }

private:
    void begin() { greater_ = lesser_ = sample_; }

    static void set(Place place, Bytes &greater, Bytes &lesser)
    {
        (place.descending ? lesser : greater)[place.at] |= 1;
        (place.descending ? greater : lesser)[place.at] &= 0xfe;
    }

    int answer()
    {
        rooms_[0].resize(order_.size_);
        rooms_[1].resize(order_.size_);
        return order_.answer(order_.asked(greater_, rooms_[0].data()), order_.asked(lesser_, rooms_[1].data()))
            .value_or(0);
    }

    Place directed(std::size_t place) const { return {places_[place].at, effect(place) < 0}; }

    const ValueOrder &order_;
    const std::span<const Place> places_;
    Bytes sample_;
    Bytes greater_;
    Bytes lesser_;
    Bytes rooms_[2];
    std::vector<int> effects_;
};

ValueOrder::Places ValueOrder::guess(std::span<const Place> places, std::span<const Key> samples) const
{
    std::vector<Trial> trials;
    for (const Key sample : samples)
        trials.emplace_back(*this, sample, places);
    const auto effect = [&](std::size_t place) {
        const auto some = std::ranges::find_if(trials, [&](const Trial &trial) { return trial.effect(place) != 0; });
        return some == trials.end() ? 0 : some->effect(place);
    };
    const auto is_stronger = [&](std::size_t first, std::size_t second) {
        for (Trial &trial : trials)
            if (const int stronger = trial.stronger(first, second); stronger != 0)
                return stronger > 0;
        return effect(first) != 0 && effect(second) == 0;
    };
    std::vector<std::size_t> order; // not by std::sort, since answers may contradict each other
    for (std::size_t place = 0; place < places.size(); ++place) {
        auto behind = order.end();
        while (behind != order.begin() && is_stronger(place, behind[-1]))
            --behind;
        order.insert(behind, place);
    }
    Places sorted;
    for (const std::size_t place : order)
        sorted.push_back({places[place].at, effect(place) < 0});
    return sorted;
}

int compare_keys(ValueOrder::Key first, ValueOrder::Key second)
{
    const int order = std::memcmp(first.data(), second.data(), std::min(first.size(), second.size()));
    return order != 0 ? order : (first.size() > second.size()) - (first.size() < second.size());
}

} // namespace bgpdt::toolkit
