// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Text services. White space and letter case are those of ASCII.
#include <array>
#include <cstring>

#include "host/ascii.hpp"
#include "host/services.hpp"

using namespace bgpdt::host;

char *SYSDT_BTrim(char *text)
{
    if (text == nullptr)
        return nullptr;
    while (is_space(*text))
        ++text;
    char *end = text + std::strlen(text);
    while (end != text && is_space(end[-1]))
        *--end = '\0';
    return text;
}

char *PAL_StrTrim(char *text) { return SYSDT_BTrim(text); }

uint32_t NCF_IsSpaceInString(const char *text)
{
    // What ends the search: white space, and the text's end.
    static constexpr auto ends = [] {
        std::array<bool, 256> table{};
        for (unsigned c = 0; c < table.size(); ++c)
            table[c] = c == 0 || is_space(static_cast<char>(c));
        return table;
    }();
    while (!ends[static_cast<unsigned char>(*text)])
        ++text;
    return *text != '\0' ? 1 : 0;
}

uint32_t NCF_IsHex(char character) { return digit_value(character) < 16 ? 1 : 0; }

void SMP_ToLowerString(const char *source, char *destination)
{
    do {
        *destination++ = to_lower(*source);
    } while (*source++ != '\0');
}

void PAL_lowercase(char *text) { SMP_ToLowerString(text, text); }

uint32_t PAL_StrLen(const char *text) { return static_cast<uint32_t>(std::strlen(text)); }

char *PAL_StrStr(const char *text, const char *part) { return const_cast<char *>(std::strstr(text, part)); }

char *PAL_StrChr(const char *text, int32_t character) { return const_cast<char *>(std::strchr(text, character)); }

char *PAL_StrRChr(const char *text, int32_t character) { return const_cast<char *>(std::strrchr(text, character)); }

int32_t PAL_MemCmp(const void *first, const void *second, uint32_t length)
{
    return std::memcmp(first, second, length);
}
