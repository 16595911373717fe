// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Fuzzes files of names, lines of INDEX NAME: what is accepted is what the lines say, one to one, both ways.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "host/names.hpp"
#include "host/registration.hpp"
#include "input.hpp"
#include "property.hpp"

namespace bgpdt::fuzzing {

namespace {

/// The words of each line, without what stands behind "#"; nothing for lines without words.
std::vector<std::vector<std::string>> words_of(const std::string &text)
{
    std::vector<std::vector<std::string>> all;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::vector<std::string> words(1);
        for (const char c : line.substr(0, line.find('#'))) {
            if (c != ' ' && (c < '\t' || c > '\r'))
                words.back() += c;
            else if (!words.back().empty())
                words.emplace_back();
        }
        if (words.back().empty())
            words.pop_back();
        if (!words.empty())
            all.push_back(words);
    }
    return all;
}

void require_names(const host::Names &names, const std::string &text)
{
    std::map<std::string, std::string> indexes;
    for (const std::vector<std::string> &words : words_of(text)) {
        require(words.size() == 2 && words[1].size() <= host::Names::max_length, "a line has an index and a name");
        const std::optional<std::uint32_t> index = names.index_of(words[1]);
        require(index && names.name_of(*index) != nullptr && *names.name_of(*index) == words[1],
                "an index has its name, and the name its index");
        require(std::stoull(words[0]) == *index, "the index is the line's");
        require(indexes.emplace(words[1], words[0]).second, "a name stands in one line");
    }
    require(!names.index_of("").has_value(), "no index has an empty name");
}

void run(const std::string &text)
{
    const int file = memfd_create("names", MFD_CLOEXEC);
    require(write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()), "a file is in memory");
    const std::string path = "/proc/self/fd/" + std::to_string(file);
    try {
        require_names(host::Names(path), text);
    } catch (const host::HostError &error) {
        require(std::string_view(error.what()).starts_with(path + ":"), "what is refused is told with its line");
    }
    close(file);
}

} // namespace

} // namespace bgpdt::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace bgpdt::fuzzing;
    if (size <= most_bytes)
        run({reinterpret_cast<const char *>(data), size});
    return 0;
}
