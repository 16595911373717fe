// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// Every function in eight threads at once answers what it answers in one.
#include <barrier>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "opened.hpp"

namespace bgpdt::test {
namespace {

constexpr unsigned thread_count = 8;

std::string json_of(decltype(bgpdt_explain) *function, const bgpdt_type *type, const Bytes &value)
{
    char *json = nullptr;
    Error error;
    const int code = function(type, value.data(), value.size(), &json, nullptr, error.out());
    std::string words = code == BGPDT_OK ? json : string_of(error->message);
    bgpdt_free(json);
    return words;
}

std::string why(const bgpdt_type *type, const std::string &text)
{
    Error error;
    const int code = bgpdt_why(type, text.data(), text.size(), error.out());
    return code == BGPDT_OK ? "taken" : string_of(error->message);
}

std::string column_of(const bgpdt_type *type, const std::string &text)
{
    const std::uint64_t offsets[] = {0, text.size()};
    const bgpdt_column column{sizeof column, 1, offsets, sizeof offsets[0], text.data(), text.size(), nullptr};
    Bytes value(size_of(type));
    const int code = bgpdt_parse_many(type, &column, value.data(), value.size(), nullptr, 0, nullptr);
    return std::to_string(code) + std::string(value.begin(), value.end());
}

/// All that the library says about a text of a type.
std::string answers_about(const bgpdt_library *library, const bgpdt_type *type, const std::string &text)
{
    const bgpdt_type *other = nullptr;
    bgpdt_in_mode(type, 6, &other);
    Bytes value = parsed(type, text);
    if (value.empty())
        return why(type, text);
    const bgpdt_type *found = nullptr;
    const bgpdt_text name = bgpdt_about(type)->name;
    bgpdt_find(library, name.data, name.size, &found, nullptr);
    int order = 0;
    const int compared = bgpdt_compare(type, value.data(), value.size(), value.data(), value.size(), &order, nullptr);
    const int checked = bgpdt_check(type, value.data(), value.size(), nullptr);
    std::string words = printed(type, value) + why(type, text + "?") + printed(other, value) + column_of(type, text) +
                        json_of(bgpdt_explain, type, value) + json_of(bgpdt_table, type, value);
    words += std::to_string(compared) + std::to_string(checked) + std::to_string(found == type ? 1 : 0);
    bgpdt_swap(type, value.data(), value.size(), nullptr);
    return words + std::string(value.begin(), value.end());
}

std::vector<std::string> all_answers(const bgpdt_library *library)
{
    std::vector<std::string> answers;
    for (std::size_t i = 0; i < bgpdt_type_count(library); ++i) {
        const bgpdt_type *type = bgpdt_type_at(library, i);
        const bgpdt_info &info = *bgpdt_about(type);
        for (std::size_t j = 0; j < info.sample_count; ++j)
            answers.push_back(answers_about(library, type, string_of(info.samples[j])));
    }
    return answers;
}

TEST(Threads, AnswerAsOne)
{
    std::vector<std::vector<std::string>> answers(thread_count);
    {
        const Library first; // so that modes are met by the threads first
        std::barrier start(thread_count);
        std::vector<std::thread> threads;
        for (std::vector<std::string> &own : answers) {
            threads.emplace_back([&own, &start, &first] {
                start.arrive_and_wait();
                own = all_answers(first.get());
            });
        }
        for (std::thread &thread : threads)
            thread.join();
    }
    const Library alone;
    const std::vector<std::string> must = all_answers(alone.get());
    EXPECT_GT(must.size(), 100U);
    for (const std::vector<std::string> &own : answers)
        EXPECT_EQ(own, must);
}

TEST(Threads, OpenAndClose)
{
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < thread_count; ++i) {
        threads.emplace_back([] {
            for (int turn = 0; turn < 20; ++turn) {
                const Library library;
                EXPECT_EQ(parsed(library.type("VRFRD"), "1:1").size(), 12U);
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
}

} // namespace
} // namespace bgpdt::test
