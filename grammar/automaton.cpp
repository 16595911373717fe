// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "automaton.hpp"

#include <algorithm>
#include <deque>
#include <map>
#include <numeric>
#include <unordered_map>
#include <utility>

namespace bgpdt::grammar {
namespace {

using State = Automaton::State;
using Kind = Expression::Kind;

/// Where a set of positions stands, by the positions, sorted.
using Positions = std::vector<State>;

struct HashPositions {
    std::size_t operator()(const Positions &positions) const
    {
        std::size_t hash = positions.size();
        for (const State position : positions)
            hash = hash * 0x9E3779B97F4A7C15U + position;
        return hash ^ hash >> 29;
    }
};

/// An automaton with choices: between two positions lie sets of bytes, or nothing.
class Net {
public:
    State add_position()
    {
        positions_.emplace_back();
        return static_cast<State>(positions_.size() - 1);
    }
    void join(State from, State to) { positions_[from].free.push_back(to); }
    void join(State from, State to, const ByteSet &bytes) { positions_[from].edges.push_back({bytes, to}); }

    /// What leads from the first to the last position.
    Automaton determined(State first, State last) const;

private:
    struct Edge {
        ByteSet bytes;
        State to;
    };
    struct Position {
        std::vector<Edge> edges;
        std::vector<State> free;
    };

    void close(Positions &positions) const;
    std::vector<ByteSet> classes() const;

    std::vector<Position> positions_;
};

void Net::close(Positions &positions) const
{
    std::vector<bool> in(positions_.size());
    for (const State position : positions)
        in[position] = true;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        for (const State to : positions_[positions[i]].free) {
            if (!in[to]) {
                in[to] = true;
                positions.push_back(to);
            }
        }
    }
    // Positions that only lead on without a byte tell nothing.
    std::erase_if(positions, [&](State p) { return positions_[p].edges.empty() && !positions_[p].free.empty(); });
    std::ranges::sort(positions);
}

/// Bytes that no edge sets apart.
std::vector<ByteSet> Net::classes() const
{
    std::vector<ByteSet> classes{~ByteSet()};
    for (const Position &position : positions_) {
        for (const Edge &edge : position.edges) {
            const std::size_t count = classes.size();
            for (std::size_t i = 0; i < count; ++i) {
                const ByteSet inside = classes[i] & edge.bytes;
                if (inside.none() || inside == classes[i])
                    continue;
                classes[i] &= ~edge.bytes;
                classes.push_back(inside);
            }
        }
    }
    return classes;
}

std::size_t first_of(const ByteSet &set) { return set._Find_first(); }

Automaton Net::determined(State first, State last) const
{
    const std::vector<ByteSet> classes = this->classes();
    Automaton made;
    made.classes = classes.size();
    for (std::size_t c = 0; c < classes.size(); ++c) {
        for (std::size_t byte = 0; byte < 256; ++byte)
            if (classes[c][byte])
                made.class_of[byte] = static_cast<std::uint8_t>(c);
    }
    std::unordered_map<Positions, State, HashPositions> known;
    std::deque<const Positions *> left;
    const auto state_of = [&](Positions positions) {
        close(positions);
        const auto [found, is_new] = known.emplace(std::move(positions), static_cast<State>(known.size()));
        if (is_new) {
            left.push_back(&found->first);
            made.accepting.push_back(std::ranges::binary_search(found->first, last));
        }
        return found->second;
    };
    made.start = state_of({first});
    for (; !left.empty(); left.pop_front()) {
        for (const ByteSet &set : classes) {
            Positions reached;
            for (const State position : *left.front()) {
                for (const Edge &edge : positions_[position].edges)
                    if (edge.bytes[first_of(set)])
                        reached.push_back(edge.to);
            }
            std::ranges::sort(reached);
            reached.erase(std::unique(reached.begin(), reached.end()), reached.end());
            made.next.push_back(state_of(std::move(reached)));
        }
    }
    return made;
}

/// Puts expressions into a net, parts that have limits as automata of their own.
class Builder {
public:
    explicit Builder(const Grammar &grammar) : grammar_(grammar) {}

    Automaton build(const Expression &expression)
    {
        const State first = net_.add_position();
        const State last = net_.add_position();
        add(expression, first, last);
        return minimal(net_.determined(first, last));
    }

private:
    void add(const Expression &expression, State from, State to);
    void add_repeat(const Expression &expression, State from, State to);
    void add_part(const std::string &name, State from, State to);

    const Grammar &grammar_;
    Net net_;
};

void Builder::add_part(const std::string &name, State from, State to)
{
    const Language &part = grammar_.part(name);
    if (!part.is_limited())
        return add(part.expression, from, to);
    const Automaton own = automaton_of(grammar_, name);
    std::vector<State> positions(own.states());
    std::ranges::generate(positions, [&] { return net_.add_position(); });
    net_.join(from, positions[own.start]);
    const std::vector<bool> leads_on = alive(own);
    for (State state = 0; state < own.states(); ++state) {
        if (own.accepting[state])
            net_.join(positions[state], to);
        std::map<State, ByteSet> edges;
        for (unsigned byte = 1; byte < 256; ++byte)
            if (const State next = own.step(state, static_cast<unsigned char>(byte)); leads_on[next])
                edges[next].set(byte);
        for (const auto &[next, bytes] : edges)
            net_.join(positions[state], positions[next], bytes);
    }
}

void Builder::add_repeat(const Expression &expression, State from, State to)
{
    const auto [least, most] = expression.times;
    const Expression &part = expression.parts.front();
    for (unsigned i = 0; i < least; ++i) {
        const State behind = net_.add_position();
        add(part, from, behind);
        from = behind;
    }
    if (most == Times::unlimited) {
        const State middle = net_.add_position();
        net_.join(from, middle);
        add(part, middle, middle);
        net_.join(middle, to);
        return;
    }
    for (unsigned i = least; i < most; ++i) {
        net_.join(from, to);
        const State behind = net_.add_position();
        add(part, from, behind);
        from = behind;
    }
    net_.join(from, to);
}

void Builder::add(const Expression &expression, State from, State to)
{
    switch (expression.kind) {
    case Kind::bytes: return net_.join(from, to, expression.bytes);
    case Kind::number: return add(spelled(expression.number), from, to);
    case Kind::name: return add_part(expression.name, from, to);
    case Kind::repeat: return add_repeat(expression, from, to);
    case Kind::choice:
        for (const Expression &part : expression.parts)
            add(part, from, to);
        return;
    case Kind::sequence:
        for (const Expression &part : expression.parts) {
            const State behind = net_.add_position();
            add(part, from, behind);
            from = behind;
        }
        return net_.join(from, to);
    }
}

/// The automaton of all texts whose length is within the limits.
Automaton lengths(Times length)
{
    Automaton made;
    made.classes = 1;
    const unsigned last = length.most == Times::unlimited ? length.least : length.most + 1;
    for (unsigned count = 0; count <= last; ++count) {
        made.accepting.push_back(count >= length.least && count <= length.most);
        made.next.push_back(std::min(count + 1, last));
    }
    return made;
}

/// By refinement of the partition into accepting and refusing states, the smaller half of what is split each time.
class Refinement {
public:
    explicit Refinement(const Automaton &automaton) : automaton_(automaton), block_of_(automaton.states())
    {
        find_predecessors();
        blocks_.resize(2);
        for (State state = 0; state < automaton.states(); ++state) {
            block_of_[state] = automaton.accepting[state] ? 1 : 0;
            blocks_[block_of_[state]].push_back(state);
        }
        for (std::size_t c = 0; c < automaton.classes; ++c) {
            waiting_.emplace_back(0U, c);
            waiting_.emplace_back(1U, c);
        }
        for (; !waiting_.empty();) {
            const auto [block, c] = waiting_.back();
            waiting_.pop_back();
            split_by(block, c);
        }
    }

    const std::vector<State> &block_of() const { return block_of_; }
    const std::vector<std::vector<State>> &blocks() const { return blocks_; }

private:
    void find_predecessors()
    {
        const std::size_t slots = automaton_.next.size();
        first_.assign(slots + 1, 0);
        for (std::size_t state = 0; state < automaton_.states(); ++state)
            for (std::size_t c = 0; c < automaton_.classes; ++c)
                ++first_[automaton_.next[state * automaton_.classes + c] * automaton_.classes + c + 1];
        std::partial_sum(first_.begin(), first_.end(), first_.begin());
        predecessors_.resize(slots);
        std::vector<std::size_t> at(first_.begin(), first_.end() - 1);
        for (State state = 0; state < automaton_.states(); ++state)
            for (std::size_t c = 0; c < automaton_.classes; ++c)
                predecessors_[at[automaton_.next[state * automaton_.classes + c] * automaton_.classes + c]++] = state;
    }

    void split_by(State splitter, std::size_t c)
    {
        std::map<State, std::vector<State>> reached;
        for (const State state : blocks_[splitter]) {
            const std::size_t slot = state * automaton_.classes + c;
            for (std::size_t i = first_[slot]; i < first_[slot + 1]; ++i)
                reached[block_of_[predecessors_[i]]].push_back(predecessors_[i]);
        }
        for (auto &[block, inside] : reached)
            if (inside.size() < blocks_[block].size())
                split(block, inside);
    }

    void split(State block, std::vector<State> &inside)
    {
        const auto made = static_cast<State>(blocks_.size());
        for (const State state : inside)
            block_of_[state] = made;
        std::erase_if(blocks_[block], [&](State state) { return block_of_[state] == made; });
        if (inside.size() > blocks_[block].size()) {
            blocks_[block].swap(inside);
            for (const State state : blocks_[block])
                block_of_[state] = block;
            for (const State state : inside)
                block_of_[state] = made;
        }
        blocks_.push_back(std::move(inside));
        for (std::size_t c = 0; c < automaton_.classes; ++c)
            waiting_.emplace_back(made, c);
    }

    const Automaton &automaton_;
    std::vector<std::size_t> first_; ///< where the predecessors of a state by a class begin
    std::vector<State> predecessors_;
    std::vector<State> block_of_;
    std::vector<std::vector<State>> blocks_;
    std::vector<std::pair<State, std::size_t>> waiting_;
};

/// Classes that lead to the same states everywhere are one.
void merge_classes(Automaton &automaton)
{
    std::map<std::vector<State>, std::size_t> known;
    std::vector<std::size_t> merged;
    std::vector<std::size_t> kept;
    for (std::size_t c = 0; c < automaton.classes; ++c) {
        std::vector<State> column;
        for (std::size_t state = 0; state < automaton.states(); ++state)
            column.push_back(automaton.next[state * automaton.classes + c]);
        const auto [found, is_new] = known.emplace(std::move(column), kept.size());
        if (is_new)
            kept.push_back(c);
        merged.push_back(found->second);
    }
    std::vector<State> next;
    for (std::size_t state = 0; state < automaton.states(); ++state)
        for (const std::size_t c : kept)
            next.push_back(automaton.next[state * automaton.classes + c]);
    automaton.next = std::move(next);
    automaton.classes = kept.size();
    for (std::uint8_t &c : automaton.class_of)
        c = static_cast<std::uint8_t>(merged[c]);
}

/// Numbers the states that the start leads to in the order in which they are met.
Automaton renumbered(const Automaton &automaton)
{
    Automaton made;
    made.class_of = automaton.class_of;
    made.classes = automaton.classes;
    constexpr State unknown = ~State{0};
    std::vector<State> number(automaton.states(), unknown);
    std::vector<State> order{automaton.start};
    number[automaton.start] = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        made.accepting.push_back(automaton.accepting[order[i]]);
        for (std::size_t c = 0; c < automaton.classes; ++c) {
            const State to = automaton.next[order[i] * automaton.classes + c];
            if (number[to] == unknown) {
                number[to] = static_cast<State>(order.size());
                order.push_back(to);
            }
            made.next.push_back(number[to]);
        }
    }
    return made;
}

} // namespace

Automaton limited(const Automaton &automaton, Times length) { return both(automaton, lengths(length)); }

Automaton minimal(const Automaton &automaton)
{
    const Automaton reached = renumbered(automaton);
    const Refinement refinement(reached);
    const auto &blocks = refinement.blocks();
    Automaton made;
    made.class_of = reached.class_of;
    made.classes = reached.classes;
    made.start = refinement.block_of()[reached.start];
    for (const std::vector<State> &block : blocks) {
        const State state = block.empty() ? 0 : block.front();
        made.accepting.push_back(reached.accepting[state]);
        for (std::size_t c = 0; c < reached.classes; ++c)
            made.next.push_back(refinement.block_of()[reached.next[state * reached.classes + c]]);
    }
    merge_classes(made);
    return renumbered(made);
}

template <class Decision>
Automaton combined(const Automaton &first, const Automaton &second, Decision decide)
{
    Automaton made;
    std::map<std::pair<std::uint8_t, std::uint8_t>, std::uint8_t> classes;
    for (std::size_t byte = 0; byte < 256; ++byte) {
        const std::pair pair{first.class_of[byte], second.class_of[byte]};
        made.class_of[byte] = classes.emplace(pair, static_cast<std::uint8_t>(classes.size())).first->second;
    }
    made.classes = classes.size();
    std::vector<std::pair<std::uint8_t, std::uint8_t>> pair_of(classes.size());
    for (const auto &[pair, c] : classes)
        pair_of[c] = pair;
    std::unordered_map<std::uint64_t, State> known;
    std::vector<std::pair<State, State>> states;
    const auto state_of = [&](State a, State b) {
        const auto [found, is_new] = known.emplace(std::uint64_t{a} << 32 | b, static_cast<State>(states.size()));
        if (is_new) {
            states.emplace_back(a, b);
            made.accepting.push_back(decide(first.accepting[a], second.accepting[b]));
        }
        return found->second;
    };
    made.start = state_of(first.start, second.start);
    for (std::size_t done = 0; done < states.size();) {
        const auto [a, b] = states[done++];
        for (const auto &[c, d] : pair_of)
            made.next.push_back(state_of(first.next[a * first.classes + c], second.next[b * second.classes + d]));
    }
    return minimal(made);
}

Automaton both(const Automaton &first, const Automaton &second)
{
    return combined(first, second, [](bool a, bool b) { return a && b; });
}

Automaton either(const Automaton &first, const Automaton &second)
{
    return combined(first, second, [](bool a, bool b) { return a || b; });
}

Automaton first_only(const Automaton &first, const Automaton &second)
{
    return combined(first, second, [](bool a, bool b) { return a && !b; });
}

Automaton automaton_of(const Grammar &grammar, const std::string &part)
{
    const Language &language = grammar.part(part);
    Automaton made = Builder(grammar).build(language.expression);
    if (language.length.least != 0 || language.length.most != Times::unlimited)
        made = limited(made, language.length);
    if (!language.within.empty())
        made = both(made, automaton_of(grammar, language.within));
    return language.but_not.empty() ? made : first_only(made, automaton_of(grammar, language.but_not));
}

Automaton trimmed(const Automaton &automaton)
{
    ByteSet blanks;
    for (const char byte : white_space)
        blanks.set(static_cast<unsigned char>(byte));
    Net net;
    std::vector<State> positions(automaton.states());
    std::ranges::generate(positions, [&] { return net.add_position(); });
    const State first = net.add_position();
    const State last = net.add_position();
    net.join(first, first, blanks);
    net.join(first, positions[automaton.start]);
    net.join(last, last, blanks);
    const std::vector<bool> leads_on = alive(automaton);
    for (State state = 0; state < automaton.states(); ++state) {
        if (automaton.accepting[state])
            net.join(positions[state], last);
        for (std::size_t c = 0; c < automaton.classes; ++c) {
            const State next = automaton.next[state * automaton.classes + c];
            ByteSet bytes;
            for (std::size_t byte = 1; byte < 256; ++byte)
                bytes.set(byte, automaton.class_of[byte] == c);
            if (leads_on[next] && bytes.any())
                net.join(positions[state], positions[next], bytes);
        }
    }
    return minimal(net.determined(first, last));
}

Automaton texts_of(const Grammar &grammar)
{
    const Automaton text = automaton_of(grammar, "text");
    return grammar.trimmed ? trimmed(text) : text;
}

std::vector<bool> alive(const Automaton &automaton)
{
    std::vector<std::vector<State>> from(automaton.states());
    std::vector<bool> found(automaton.states());
    std::vector<State> left;
    for (State state = 0; state < automaton.states(); ++state) {
        for (std::size_t c = 0; c < automaton.classes; ++c)
            from[automaton.next[state * automaton.classes + c]].push_back(state);
        if (automaton.accepting[state]) {
            found[state] = true;
            left.push_back(state);
        }
    }
    while (!left.empty()) {
        const State state = left.back();
        left.pop_back();
        for (const State before : from[state]) {
            if (!found[before]) {
                found[before] = true;
                left.push_back(before);
            }
        }
    }
    return found;
}

std::vector<std::string> shortest(const Automaton &automaton, std::size_t count)
{
    const std::vector<bool> leads_on = alive(automaton);
    std::vector<std::string> found;
    std::map<State, std::vector<std::string>> level{{automaton.start, {""}}};
    while (!level.empty() && found.size() < count) {
        std::map<State, std::vector<std::string>> behind;
        std::vector<std::string> ending;
        for (const auto &[state, texts] : level) {
            if (automaton.accepting[state])
                ending.insert(ending.end(), texts.begin(), texts.end());
            for (unsigned byte = 1; byte < 256; ++byte) {
                if (const State next = automaton.step(state, static_cast<unsigned char>(byte)); leads_on[next])
                    for (const std::string &text : texts)
                        behind[next].push_back(text + static_cast<char>(byte));
            }
        }
        for (auto &[state, texts] : behind) { // more of one state would not be among the first in the end either
            std::ranges::sort(texts);
            texts.resize(std::min(texts.size(), count));
        }
        std::ranges::sort(ending);
        found.insert(found.end(), ending.begin(),
                     ending.begin() + static_cast<std::ptrdiff_t>(std::min(ending.size(), count - found.size())));
        level = std::move(behind);
    }
    return found;
}

namespace {

/// States that lead to acceptance, each behind all that lead to it; nothing if there is no end to that.
std::optional<std::vector<State>> topological(const Automaton &automaton)
{
    const std::vector<bool> leads_on = alive(automaton);
    std::vector<unsigned> before(automaton.states());
    std::size_t wanted = 0;
    for (State state = 0; state < automaton.states(); ++state) {
        wanted += leads_on[state] ? 1 : 0;
        for (std::size_t c = 0; leads_on[state] && c < automaton.classes; ++c)
            ++before[automaton.next[state * automaton.classes + c]];
    }
    std::vector<State> order;
    if (before[automaton.start] == 0 && leads_on[automaton.start])
        order.push_back(automaton.start);
    for (std::size_t i = 0; i < order.size(); ++i) {
        for (std::size_t c = 0; c < automaton.classes; ++c) {
            const State next = automaton.next[order[i] * automaton.classes + c];
            if (--before[next] == 0 && leads_on[next])
                order.push_back(next);
        }
    }
    if (order.size() != wanted)
        return std::nullopt;
    return order;
}

} // namespace

std::optional<long double> count(const Automaton &automaton)
{
    const auto order = topological(automaton);
    if (!order)
        return std::nullopt;
    std::array<unsigned, 256> sizes{};
    for (std::size_t byte = 1; byte < 256; ++byte)
        ++sizes[automaton.class_of[byte]];
    std::vector<long double> ways(automaton.states());
    ways[automaton.start] = 1;
    long double total = 0;
    for (const State state : *order) {
        total += automaton.accepting[state] ? ways[state] : 0;
        for (std::size_t c = 0; c < automaton.classes; ++c)
            ways[automaton.next[state * automaton.classes + c]] += ways[state] * sizes[c];
    }
    return total;
}

std::optional<std::size_t> longest(const Automaton &automaton)
{
    const auto order = topological(automaton);
    if (!order)
        return std::nullopt;
    std::vector<std::size_t> length(automaton.states());
    std::size_t most = 0;
    for (const State state : *order) {
        most = automaton.accepting[state] ? std::max(most, length[state]) : most;
        for (std::size_t c = 0; c < automaton.classes; ++c) {
            std::size_t &next = length[automaton.next[state * automaton.classes + c]];
            next = std::max(next, length[state] + 1);
        }
    }
    return most;
}

std::vector<unsigned char> samples_of_classes(const Automaton &automaton)
{
    std::vector<unsigned char> samples(automaton.classes);
    for (unsigned byte = 255; byte != 0; --byte) {
        unsigned char &sample = samples[automaton.class_of[byte]];
        if (sample <= ' ' || sample > '~' || (byte > ' ' && byte <= '~'))
            sample = static_cast<unsigned char>(byte);
    }
    return samples;
}

} // namespace bgpdt::grammar
