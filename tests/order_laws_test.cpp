// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The laws of every Compare, the records' and the dispatch rows', over the values of the vectors and changed ones: it
/// is antisymmetric and transitive wherever it orders, values are equal to their copies, and different values are
/// unequal. Where a Compare orders some values only, or looks at a part of them, the table here says which.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <random>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/expectations.hpp"
#include "support/plugin_test.hpp"
#include "support/report.hpp"
#include "support/share.hpp"
#include "support/subject.hpp"
#include "support/vector_file.hpp"

namespace bgpdt::test {

namespace {

using Random = std::mt19937;
using Relation = bool(const Bytes &, const Bytes &);

/// So many changed values of each type and row are compared if all are tried.
constexpr std::size_t most_changed = 4000;

/// A Compare that does not order all values by all their bytes.
struct Partial {
    std::vector<std::string_view> names; ///< of types and rows
    Relation *orders;                    ///< null: all
    std::uint32_t status;                ///< what it answers otherwise
    Relation *finds_equal;               ///< of those that it orders
    std::string_view why;
};

bool same(const Bytes &first, const Bytes &second, std::size_t at, std::size_t end)
{
    return std::equal(first.begin() + static_cast<std::ptrdiff_t>(at), first.begin() + static_cast<std::ptrdiff_t>(end),
                      second.begin() + static_cast<std::ptrdiff_t>(at));
}

bool identical(const Bytes &first, const Bytes &second) { return first == second; }
bool same_number(const Bytes &first, const Bytes &second) { return same(first, second, 0, 4); }

bool same_name(const Bytes &first, const Bytes &second)
{
    const auto name = [](const Bytes &value) { return Bytes(value.begin(), std::ranges::find(value, 0)); };
    return name(first) == name(second);
}

std::uint32_t sub_kind(const Bytes &value)
{
    std::uint32_t word = 0;
    std::memcpy(&word, value.data(), std::min(sizeof word, value.size()));
    return word;
}

/// The L2VPN type's Compare is told of 89 bytes as the rows' are.
bool both_ipv4(const Bytes &first, const Bytes &second) { return sub_kind(first) == 0 && sub_kind(second) == 0; }
bool same_ipv4(const Bytes &first, const Bytes &second) { return same(first, second, 4, 8); }

constexpr std::size_t route_type_at = 4;

bool both_evpn(const Bytes &first, const Bytes &second)
{
    return sub_kind(first) == 1 && sub_kind(second) == 1 && first[route_type_at] == second[route_type_at];
}

/// Address fields: IPv4, IPv6, family; the family tells which of the two counts.
bool same_addresses(const Bytes &first, const Bytes &second, std::span<const std::size_t> fields)
{
    return std::ranges::all_of(fields, [&](std::size_t at) {
        return same(first, second, at + 20, at + 21) &&
               (first[at + 20] == 0 ? same(first, second, at, at + 4) : same(first, second, at + 4, at + 20));
    });
}

bool same_evpn(const Bytes &first, const Bytes &second)
{
    constexpr std::size_t selective[] = {10, 32, 54};
    constexpr std::size_t sync[] = {20, 42, 64};
    const auto within = [&](std::size_t at, std::size_t end) { return same(first, second, at, end); };
    switch (first[route_type_at]) {
    case 1: return within(15, 19); // Ethernet tag
    case 2: return within(5, 17);  // Ethernet tag, MAC address, IP length
    case 3:                        // Ethernet tag, IP length
    case 5: return within(5, 10);  // Ethernet tag, prefix length
    case 6: return within(5, 10) && within(31, 32) && within(53, 54) && same_addresses(first, second, selective);
    case 8:
        if (!within(85, 89))
            return false;
        [[fallthrough]];
    case 7: return within(5, 20) && within(41, 42) && within(63, 64) && same_addresses(first, second, sync);
    default: return true;
    }
}

bool equal_to_a_row(const Bytes &first, const Bytes &second)
{
    return (both_ipv4(first, second) && same_ipv4(first, second)) ||
           (both_evpn(first, second) && same_evpn(first, second)) || first == second;
}

const std::vector<Partial> &partial_compares()
{
    static const std::vector<Partial> all = {
        {{"ASNUM", "ASNUMEXT"}, nullptr, 0, same_number, "the notation does not count"},
        {{"CVRFNAME"}, nullptr, 0, same_name, "what stands behind the name does not count"},
        {{"IPV4", "L2VPN", "L2VPNPREFIX"}, both_ipv4, SYSDT_ERR_FAIL, same_ipv4, "only IPv4 addresses are ordered"},
        {{"EVNPREFIX", "EVN", "NG_TYPE_2", "NG_TYPE_3", "NG_TYPE_4_2", "NG_TYPE_4-3", "NG_TYPE_5", "NG_TYPE_6",
          "NG_TYPE_4-1", "IPV6"},
         both_evpn,
         SYSDT_ERR_FAIL,
         same_evpn,
         "only EVPN routes of one route type are ordered, by some of their fields"},
        {{"BOLPREFIX"}, equal_to_a_row, SYSDT_ERR_INVALID_VALUE, equal_to_a_row, "only what a row finds equal"},
        {{"BOLRD"}, identical, SYSDT_ERR_INVALID_VALUE, identical, "only what its row finds equal"},
    };
    return all;
}

const Partial *partial_compare(std::string_view name)
{
    const auto found = std::ranges::find_if(partial_compares(), [&](const Partial &partial) {
        return std::ranges::find(partial.names, name) != partial.names.end();
    });
    return found == partial_compares().end() ? nullptr : &*found;
}

/// A Compare and the values that the vectors know for it.
struct Compared {
    std::string name;
    SYSDT_Compare *compare;
    std::size_t size;
    std::set<Bytes> values{};
};

/// What was seen.
struct Tally {
    std::size_t pairs = 0;
    std::map<const Partial *, std::size_t> unordered;
    std::map<const Partial *, std::size_t> equal; ///< though they differ
};

std::string show(const Bytes &first, const Bytes &second) { return test::show(first) + " and " + test::show(second); }

/// The laws over every two and three of some values.
class Laws {
public:
    Laws(const Compared &compared, std::vector<Bytes> values, Tally &tally)
        : compared_(compared), partial_(partial_compare(compared.name)), values_(std::move(values)), copies_(values_),
          tally_(tally)
    {
    }

    void run()
    {
        for (const Bytes &first : values_)
            for (const Bytes &second : copies_)
                answers_.push_back(answer(first, second));
        expect_answers();
        expect_order();
    }

private:
    static bool is_order(std::int32_t answer) { return answer >= -1 && answer <= 1; }

    std::int32_t answer(const Bytes &first, const Bytes &second) const
    {
        return compared_.compare(nullptr, static_cast<std::uint32_t>(compared_.size), first.data(), second.data());
    }
    std::int32_t at(std::size_t first, std::size_t second) const { return answers_[first * values_.size() + second]; }

    void fail(std::size_t first, std::size_t second, const std::string &problem)
    {
        if (failures_++ < most_failures)
            ADD_FAILURE() << compared_.name << ": " << show(values_[first], values_[second]) << ": " << problem
                          << "; the answer is " << at(first, second);
    }

    /// What it orders and what it finds equal.
    void expect_answers()
    {
        for (std::size_t i = 0; i < values_.size(); ++i)
            for (std::size_t j = 0; j < values_.size(); ++j)
                expect_answer(i, j);
    }

    void expect_answer(std::size_t i, std::size_t j)
    {
        const Bytes &first = values_[i];
        const Bytes &second = values_[j];
        ++tally_.pairs;
        if (partial_ != nullptr && partial_->orders != nullptr && !partial_->orders(first, second)) {
            ++tally_.unordered[partial_];
            if (at(i, j) != static_cast<std::int32_t>(partial_->status))
                fail(i, j, "they are not to be ordered");
            return;
        }
        const bool equal = partial_ == nullptr ? first == second : partial_->finds_equal(first, second);
        tally_.equal[partial_] += equal && first != second ? 1 : 0;
        if (!is_order(at(i, j)) || equal != (at(i, j) == 0))
            fail(i, j, equal ? "they are equal" : "they are ordered and unequal");
    }

    /// Where each value stands among those that it is ordered with is how many of them are smaller. Answers that are
    /// the order of these places are antisymmetric and transitive, and others are not.
    void expect_order()
    {
        std::vector<std::ptrdiff_t> places(values_.size());
        for (std::size_t i = 0; i < values_.size(); ++i)
            for (std::size_t j = 0; j < values_.size(); ++j)
                places[i] += at(i, j) == 1 ? 1 : 0;
        for (std::size_t i = 0; i < values_.size(); ++i) {
            for (std::size_t j = 0; j < values_.size(); ++j) {
                const std::int32_t order = (places[i] > places[j]) - (places[i] < places[j]);
                if (is_order(at(i, j)) && at(i, j) != order)
                    fail(i, j, "the answers contradict each other");
            }
        }
    }

    static constexpr std::size_t most_failures = 5;

    const Compared &compared_;
    const Partial *partial_;
    std::vector<Bytes> values_;
    std::vector<Bytes> copies_;
    std::vector<std::int32_t> answers_;
    std::size_t failures_ = 0;
    Tally &tally_;
};

/// Values made of those of the vectors, its own and others of that size.
class Changed {
public:
    explicit Changed(const std::vector<Compared> &all) : all_(all) {}

    std::vector<Bytes> of(const Compared &compared)
    {
        std::vector<Bytes> values(compared.values.begin(), compared.values.end());
        if (values.empty())
            values.emplace_back(compared.size);
        std::vector<const Compared *> others;
        for (const Compared &other : all_)
            if (other.size == compared.size && !other.values.empty())
                others.push_back(&other);
        for (std::size_t left = std::max<std::size_t>(most_changed / share(), 100); left > 0; --left) {
            const bool foreign = !others.empty() && random_() % 4 == 0;
            values.push_back(foreign ? one_of(others[random_() % others.size()]->values) : one_of(values));
            for (std::size_t changes = random_() % 4; changes > 0; --changes)
                change(values.back(), one_of(values));
        }
        return values;
    }

private:
    template <class Values>
    Bytes one_of(const Values &values)
    {
        return *std::next(values.begin(), static_cast<std::ptrdiff_t>(random_() % values.size()));
    }

    /// Another byte, often one of the first ones, or some bytes of the other value.
    void change(Bytes &value, const Bytes &other)
    {
        constexpr std::size_t first_bytes = 24;
        const std::size_t at = random_() % (random_() % 2 == 0 ? std::min(first_bytes, value.size()) : value.size());
        const std::size_t count = 1 + random_() % std::min<std::size_t>(value.size() - at, 8);
        switch (random_() % 4) {
        case 0: value[at] = static_cast<std::uint8_t>(random_()); break;
        case 1: value[at] = std::array<std::uint8_t, 4>{0, 1, 0x80, 0xFF}[random_() % 4]; break;
        case 2: value[at] = static_cast<std::uint8_t>(value[at] + (random_() % 2 == 0 ? 1 : -1)); break;
        default:
            std::copy_n(other.begin() + static_cast<std::ptrdiff_t>(at), count,
                        value.begin() + static_cast<std::ptrdiff_t>(at));
        }
    }

    const std::vector<Compared> &all_;
    Random random_{seed()};
};

class OrderLaws : public PluginTest {
protected:
    /// Every Compare of a record or a row.
    std::vector<Compared> compares() const
    {
        std::vector<Compared> all;
        const auto add = [&](const std::string &name, SYSDT_Compare *compare, std::size_t length) {
            const Expectation *expect = expectation_of(name);
            const std::size_t size = expect == nullptr || expect->script_size == 0 ? length : expect->script_size;
            if (compare != nullptr)
                all.push_back({name, compare, size});
        };
        for (const SYSDT_Record *type : host_.types()) {
            const std::string name(type->name, strnlen(type->name, sizeof type->name));
            add(name, type->compare, type->dataLength);
            for (const SYSDT_DispatchRow &row : dispatch_rows(host_, name))
                add((name == "BOLRD" ? "RD:" : "") + std::string(row.name, strnlen(row.name, sizeof row.name)),
                    row.compare, type->dataLength);
        }
        add_values(all);
        return all;
    }

private:
    void add_values(std::vector<Compared> &all) const
    {
        for (const Line &line : read_vector_folder(vectors_folder()).lines) {
            const auto found = std::ranges::find(all, line.subject, &Compared::name);
            if (found == all.end())
                continue;
            const Form form = subject_of(host_, line).form();
            for (const Bytes &bytes : {line.bytes, line.result.value_or(Bytes{})})
                if (bytes.size() == found->size)
                    found->values.insert(to_native(form, bytes));
        }
    }
};

TEST_F(OrderLaws, HoldForEveryCompare)
{
    const std::vector<Compared> all = compares();
    Changed changed(all);
    Tally tally;
    std::size_t known = 0;
    for (const Compared &compared : all) {
        known += compared.values.size();
        Laws(compared, changed.of(compared), tally).run();
    }
    for (const Partial &partial : partial_compares()) {
        EXPECT_TRUE(partial.orders == nullptr || tally.unordered[&partial] > 0) << joined(partial.names);
        EXPECT_TRUE(partial.finds_equal == identical || tally.equal[&partial] > 0) << joined(partial.names);
    }
    EXPECT_LT(40U, all.size());
    EXPECT_LT(1000U, known);
    std::printf(
        "proved: %zu comparisons by %zu types and rows keep the laws of an order, of %zu values of the vectors and "
        "changed ones\n",
        tally.pairs, all.size(), known);
    for (const Partial &partial : partial_compares()) {
        std::printf("%9zu not ordered, %zu different but equal: %s: %.*s\n", tally.unordered[&partial],
                    tally.equal[&partial], joined(partial.names).c_str(), static_cast<int>(partial.why.size()),
                    partial.why.data());
    }
}

} // namespace

} // namespace bgpdt::test
