// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
#include "operations.hpp"

#include <iterator>
#include <new>

namespace bgpdt::toolkit {

std::vector<std::string> help_texts(Session &session, const SYSDT_Record &type)
{
    constexpr std::uint8_t help_mode = 1; // the one mode in which every type that has help gives it
    if (type.help == nullptr)
        return {};
    std::uint32_t status = SYSDT_OK;
    std::vector<std::string> texts = session.host().help(type, help_mode, status);
    if (status == SYSDT_ERR_NO_MEMORY)
        throw std::bad_alloc(); // which says nothing of the type
    return texts;
}

std::span<const char *const> operation_words()
{
    static constexpr const char *words[] = {"parse", "print", "check", "help", "compare", "table", "value", "swap"};
    return words;
}

unsigned operation_bits(const SYSDT_Record &type)
{
    const bool filled[] = {type.formatIn != nullptr, type.formatOut != nullptr, type.check != nullptr,
                           type.help != nullptr,     type.compare != nullptr,   type.luaSet != nullptr,
                           type.luaGet != nullptr,   type.endian != nullptr};
    unsigned bits = 0;
    for (unsigned i = 0; i < std::size(filled); ++i)
        bits |= static_cast<unsigned>(filled[i]) << i;
    return bits;
}

std::vector<std::string> operations(const SYSDT_Record &type)
{
    const unsigned bits = operation_bits(type);
    std::vector<std::string> words;
    for (unsigned i = 0; i < operation_words().size(); ++i)
        if ((bits >> i & 1) != 0)
            words.emplace_back(operation_words()[i]);
    return words;
}

} // namespace bgpdt::toolkit
