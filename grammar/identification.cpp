// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "identification.hpp"

#include <algorithm>
#include <iterator>
#include <map>
#include <random>
#include <unordered_set>
#include <utility>

namespace bgpdt::grammar {
namespace {

using State = Automaton::State;

std::vector<std::string> access_of(const Automaton &automaton, const std::vector<unsigned char> &samples)
{
    std::vector<std::string> access(automaton.states());
    std::vector<bool> met(automaton.states());
    std::vector<State> order{automaton.start};
    met[automaton.start] = true;
    for (std::size_t i = 0; i < order.size(); ++i) {
        for (const unsigned char byte : samples) {
            if (const State next = automaton.step(order[i], byte); !met[next]) {
                met[next] = true;
                access[next] = access[order[i]] + static_cast<char>(byte);
                order.push_back(next);
            }
        }
    }
    return access;
}

/// Splits blocks of states by endings until each is alone: its endings are those that it was split by.
class Tree {
public:
    Tree(const Automaton &automaton, std::vector<unsigned char> samples)
        : automaton_(automaton), samples_(std::move(samples)), alive_(alive(automaton))
    {
        made.access = access_of(automaton, samples_);
        made.of_state.resize(automaton.states());
        for (State state = 0; state < automaton.states(); ++state) {
            std::vector<unsigned char> &steps = living_steps_.emplace_back();
            std::ranges::copy_if(samples_, std::back_inserter(steps),
                                 [&](unsigned char byte) { return alive_[automaton.step(state, byte)]; });
        }
        std::vector<State> all(automaton.states());
        for (State state = 0; state < all.size(); ++state)
            all[state] = state;
        std::vector<std::vector<State>> blocks{std::move(all)};
        while (!blocks.empty()) {
            std::vector<State> block = std::move(blocks.back());
            blocks.pop_back();
            if (block.size() > 1)
                split(std::move(block), blocks);
        }
    }

    Identification made;

private:
    void split(std::vector<State> block, std::vector<std::vector<State>> &blocks)
    {
        const std::string ending = best_ending(block);
        const auto [known, is_new] = numbers_.emplace(ending, static_cast<std::uint32_t>(made.endings.size()));
        if (is_new)
            made.endings.push_back(ending);
        for (const State state : block)
            made.of_state[state].push_back(known->second);
        const auto refusing =
            std::partition(block.begin(), block.end(), [&](State state) { return accepts(state, ending); });
        blocks.emplace_back(refusing, block.end());
        block.erase(refusing, block.end());
        blocks.push_back(std::move(block));
    }

    /// That of some candidates which splits most evenly; if none does, what tells the first two states apart. Of a large
    /// block some states stand for all.
    std::string best_ending(const std::vector<State> &block)
    {
        const std::vector<State> looked_at = some_of(block);
        constexpr unsigned candidates = 24;
        std::string best;
        std::size_t best_share = 0;
        for (unsigned i = 0; i < candidates && 2 * best_share + 1 < looked_at.size(); ++i) {
            const std::string ending = i == 0 ? std::string() : walk(block[random_() % block.size()]);
            const auto share = static_cast<std::size_t>(
                std::ranges::count_if(looked_at, [&](State state) { return accepts(state, ending); }));
            const std::size_t smaller = std::min(share, looked_at.size() - share);
            if (smaller > best_share || (smaller == best_share && smaller != 0 && ending.size() < best.size())) {
                best_share = smaller;
                best = ending;
            }
        }
        return best_share != 0 ? best : difference(block[0], block[1]);
    }

    static std::vector<State> some_of(const std::vector<State> &block)
    {
        constexpr std::size_t enough = 500;
        std::vector<State> some;
        for (std::size_t i = 0; i < block.size(); i += block.size() / enough + 1)
            some.push_back(block[i]);
        return some;
    }

    bool accepts(State state, const std::string &ending) const
    {
        for (std::size_t i = 0; i < ending.size() && alive_[state]; ++i)
            state = automaton_.step(state, static_cast<unsigned char>(ending[i]));
        return automaton_.accepting[state];
    }

    /// Some text from the state to acceptance.
    std::string walk(State state)
    {
        constexpr std::size_t longest = 200;
        std::string text;
        while (alive_[state] && text.size() < longest) {
            if (automaton_.accepting[state] && random_() % 3 == 0)
                break;
            const std::vector<unsigned char> &steps = living_steps_[state];
            if (steps.empty())
                break;
            text += static_cast<char>(steps[random_() % steps.size()]);
            state = automaton_.step(state, static_cast<unsigned char>(text.back()));
        }
        return text;
    }

    /// The shortest ending that one of the states accepts and the other refuses.
    std::string difference(State first, State second) const
    {
        struct Step {
            State first, second;
            std::size_t before;
            unsigned char byte;
        };
        std::vector<Step> steps{{first, second, 0, 0}};
        std::unordered_set<std::uint64_t> met;
        for (std::size_t i = 0;; ++i) {
            const auto [a, b, before, byte] = steps[i];
            if (automaton_.accepting[a] != automaton_.accepting[b]) {
                std::string ending;
                for (std::size_t at = i; at != 0; at = steps[at].before)
                    ending += static_cast<char>(steps[at].byte);
                return {ending.rbegin(), ending.rend()};
            }
            for (const unsigned char sample : samples_) {
                const State x = automaton_.step(a, sample);
                const State y = automaton_.step(b, sample);
                if (x != y && met.insert(std::uint64_t{x} << 32 | y).second)
                    steps.push_back({x, y, i, sample});
            }
        }
    }

    const Automaton &automaton_;
    std::vector<unsigned char> samples_;
    std::vector<bool> alive_;
    std::vector<std::vector<unsigned char>> living_steps_; ///< by state: the samples that lead on to acceptance
    std::map<std::string, std::uint32_t> numbers_;
    std::mt19937 random_{1}; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts on every run
};

} // namespace

Identification identify(const Automaton &automaton, std::vector<unsigned char> samples)
{
    return std::move(Tree(automaton, std::move(samples)).made);
}

} // namespace bgpdt::grammar
