// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue.hpp"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "notation.hpp"

namespace bgpdt::grammar {
namespace {

struct File {
    std::string_view name;
    std::string_view text;
};

// Made by CMakeLists.txt of the files in texts/ and standards/.
constexpr File files[] = {
#include "grammar/texts.inc"
};
constexpr File standards[] = {
#include "grammar/standards.inc"
};

constexpr std::string_view common_name = "common";

std::string_view text_of(std::span<const File> files_there, std::string_view name)
{
    const auto found = std::ranges::find(files_there, name, &File::name);
    if (found == files_there.end())
        throw std::out_of_range("there is no grammar " + std::string(name));
    return found->text;
}

} // namespace

std::span<const std::string_view> names()
{
    static const std::vector<std::string_view> all = [] {
        std::vector<std::string_view> found;
        for (const File &file : files)
            if (file.name != common_name)
                found.push_back(file.name);
        return found;
    }();
    return all;
}

Grammar grammar_of(std::string_view name)
{
    return read_grammar(std::string(name), text_of(files, name), text_of(files, common_name));
}

Grammar standard_grammar(std::string_view name)
{
    return read_grammar(std::string(name), text_of(standards, name), text_of(files, common_name));
}

} // namespace bgpdt::grammar
