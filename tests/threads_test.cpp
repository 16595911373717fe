// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The callbacks of every record and row, called from several threads at once on the stand-alone host: each thread goes
/// through all vector lines with contexts and a script state of its own, and gets the answers that the lines tell.
#include <algorithm>
#include <barrier>
#include <cstdio>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "support/asking.hpp"
#include "support/setting.hpp"

namespace bgpdt::test {

namespace {

constexpr std::size_t thread_count = 8;

struct Question {
    const Line &line;
    Subject subject;
};

std::vector<Question> questions_about(const host::Host &host, const Vectors &vectors)
{
    std::vector<Question> questions;
    for (const Line &line : vectors.lines)
        questions.push_back({line, subject_of(host, line)});
    return questions;
}

/// Goes through all questions, from the first one on and around; appends the wrong answers.
void ask_all(host::Host &host, const std::vector<Question> &questions, std::size_t first,
             std::vector<std::string> &wrong)
{
    const Asking asking(host);
    for (std::size_t i = 0; i < questions.size(); ++i) {
        const auto &[line, subject] = questions[(first + i) % questions.size()];
        std::vector<std::uint8_t> modes = line.modes;
        if (modes.empty())
            modes.push_back(0);
        for (const std::uint8_t mode : modes) {
            const Answer answer = asking.ask(line, subject, mode);
            const Answer expected = expected_answer(line, subject);
            if (answer != expected) {
                wrong.push_back(line.place() + ": " + line.content + "\n" + to_text(answer) + "\nis not\n" +
                                to_text(expected));
            }
        }
    }
}

TEST(Threads, GetTheAnswersOfTheVectors)
{
    host::Host host(plugin_path());
    const Vectors vectors = read_vector_folder(vectors_folder());
    ASSERT_EQ(std::vector<std::string>{}, vectors.errors);
    const std::vector<Question> questions = questions_about(host, vectors);
    ASSERT_LT(1000U, questions.size());
    std::printf("proved: %zu threads ask %zu questions each\n", thread_count, questions.size());
    std::vector<std::string> wrong[thread_count];
    std::barrier start(thread_count);
    {
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < thread_count; ++i) {
            threads.emplace_back([&, i] {
                start.arrive_and_wait();
                // Half of them in step, on the same lines; the others spread over the lines.
                ask_all(host, questions, i % 2 * i * questions.size() / thread_count, wrong[i]);
            });
        }
    }
    for (const auto &of_thread : wrong) {
        EXPECT_EQ(0U, of_thread.size());
        for (std::size_t i = 0; i < std::min<std::size_t>(of_thread.size(), 3); ++i)
            ADD_FAILURE() << of_thread[i];
    }
    EXPECT_TRUE(host.diagnostics().empty());
}

} // namespace

} // namespace bgpdt::test
