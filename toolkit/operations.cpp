// SPDX-License-Identifier: Apache-2.0
#include "operations.hpp"

#include <utility>

namespace bgpdt::toolkit {

std::vector<std::string> help_texts(Session &session, const SYSDT_Record &type)
{
    constexpr std::uint8_t help_mode = 1; // the one mode in which every type that has help gives it
    std::uint32_t status = SYSDT_OK;
    return type.help == nullptr ? std::vector<std::string>{} : session.host().help(type, help_mode, status);
}

std::vector<std::string> operations(const SYSDT_Record &type)
{
    const std::pair<bool, const char *> slots[] = {
        {type.formatIn != nullptr, "parse"}, {type.formatOut != nullptr, "print"}, {type.check != nullptr, "check"},
        {type.help != nullptr, "help"},      {type.compare != nullptr, "compare"}, {type.luaSet != nullptr, "table"},
        {type.luaGet != nullptr, "value"},   {type.endian != nullptr, "swap"},
    };
    std::vector<std::string> words;
    for (const auto &[filled, word] : slots)
        if (filled)
            words.emplace_back(word);
    return words;
}

} // namespace bgpdt::toolkit
