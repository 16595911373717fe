// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Asks the front for JavaScript, natively, all that it can be asked about the texts and values of the vectors, and
/// prints each call with its answer: "CALL TYPE MODE GIVEN CODE ANSWERED" in a line, the last two bytes in hexadecimal.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "support/setting.hpp"
#include "support/vector_file.hpp"
#include "toolkit/bytes.hpp"
#include "web/module.hpp"

namespace bgpdt::test {
namespace {

using Ask = int (*)(const bgpdt_type *);

struct Call {
    const char *name;
    Ask ask;
};

#define BGPDT_CALL(name)                                                                                               \
    Call { #name, bgpdt_web_##name }

constexpr Call about_texts[] = {BGPDT_CALL(try_parse), BGPDT_CALL(why)};
constexpr Call about_values[] = {BGPDT_CALL(print),   BGPDT_CALL(check),  BGPDT_CALL(swap),  BGPDT_CALL(to_native),
                                 BGPDT_CALL(explain), BGPDT_CALL(fields), BGPDT_CALL(table), BGPDT_CALL(lua)};
constexpr Call about_two[] = {BGPDT_CALL(compare), BGPDT_CALL(order), BGPDT_CALL(differences)};

std::string_view bytes_of(const Bytes &bytes) { return {reinterpret_cast<const char *>(bytes.data()), bytes.size()}; }

std::string hex(std::string_view text)
{
    return toolkit::to_hex({reinterpret_cast<const std::uint8_t *>(text.data()), text.size()});
}

/// The answer of the last call; empty where the code is all of it.
std::string_view answered() { return {bgpdt_web_answered(), bgpdt_web_answered_size()}; }

void give(std::string_view given) { given.copy(bgpdt_web_given(given.size()), given.size()); }

/// A type in a mode, as JavaScript names it.
struct Subject {
    std::size_t index;
    int mode;

    const bgpdt_type *type() const { return bgpdt_web_type(index, mode); }
};

/// Whether the code comes with an answer that is its own.
bool is_told(const Call &call, int code)
{
    const std::string_view name = call.name;
    return code < 0 ? name != "try_parse" && name != "order" && name != "to_native"
                    : name != "why" && name != "check" && name != "compare" && name != "order";
}

int ask(const Call &call, const Subject &subject, std::string_view given)
{
    give(given);
    const int code = call.ask(subject.type());
    std::printf("%s %zu %d %s. %d %s.\n", call.name, subject.index, subject.mode, hex(given).c_str(), code,
                is_told(call, code) ? hex(answered()).c_str() : "");
    return code;
}

class Asking {
public:
    void ask_about(const Line &line)
    {
        const std::size_t index = index_of(line);
        std::vector<std::uint8_t> modes = line.modes;
        if (modes.empty())
            modes.push_back(2);
        const bool is_text = line.verb == Verb::in || line.verb == Verb::bad || line.verb == Verb::fn;
        for (const std::uint8_t mode : modes) {
            const Subject subject{index, mode};
            if (is_text)
                ask_about_text(subject, line.text);
            ask_about_value(subject, line.bytes);
            if (line.result)
                ask_about_value(subject, *line.result);
        }
        if (is_text)
            ask_for_types(line.text);
    }

private:
    /// Of a row of the dispatch tables it is the type that dispatches to it.
    static std::size_t index_of(const Line &line)
    {
        give(!line.row ? line.subject : line.subject.starts_with("RD:") ? "BOLRD" : "BOLPREFIX");
        const int index = bgpdt_web_find();
        if (index < 0)
            throw std::runtime_error(line.place() + ": " + std::string(answered()));
        return static_cast<std::size_t>(index);
    }

    static void ask_for_types(const std::string &text)
    {
        constexpr Call guess{"guess", [](const bgpdt_type * /*type*/) { return bgpdt_web_guess(); }};
        ask(guess, {0, -1}, text);
    }

    void ask_about_text(const Subject &subject, const std::string &text)
    {
        for (const Call &call : about_texts) {
            const int code = ask(call, subject, text);
            if (code >= 0 && std::string_view(call.name) == "try_parse") {
                const std::string_view value = answered();
                ask_about_value(subject, Bytes(value.begin(), value.end()));
            }
        }
    }

    void ask_about_value(const Subject &subject, const Bytes &value)
    {
        if (value.empty() || !asked_[{subject.index, subject.mode}].insert(value).second)
            return;
        for (const Call &call : about_values) {
            const int code = ask(call, subject, bytes_of(value));
            if (code >= 0 && std::string_view(call.name) == "table")
                ask(BGPDT_CALL(read_table), subject, std::string(answered()));
        }
        ask(BGPDT_CALL(from_hex), subject, toolkit::to_hex(value));
        Bytes two = before_[subject.index];
        two.insert(two.end(), value.begin(), value.end());
        for (const Call &call : about_two)
            ask(call, subject, bytes_of(two));
        before_[subject.index] = value;
    }

    std::map<std::pair<std::size_t, int>, std::set<Bytes>> asked_;
    std::map<std::size_t, Bytes> before_; ///< the last value of each type
};

void run()
{
    if (bgpdt_web_open() < 0)
        throw std::runtime_error(std::string(answered()));
    const Vectors vectors = read_vector_folder(vectors_folder());
    if (!vectors.errors.empty() || vectors.lines.empty())
        throw std::runtime_error(vectors.errors.empty() ? vectors_folder() + " holds no vectors" : vectors.errors[0]);
    Asking asking;
    for (const Line &line : vectors.lines)
        asking.ask_about(line);
    std::printf("end\n");
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        throw std::runtime_error("the answers could not be written");
}

} // namespace
} // namespace bgpdt::test

int main()
{
    try {
        bgpdt::test::run();
        return EXIT_SUCCESS;
    } catch (const std::exception &error) {
        static_cast<void>(std::fprintf(stderr, "bgpdt_web_answers: %s\n", error.what()));
        return EXIT_FAILURE;
    }
}
