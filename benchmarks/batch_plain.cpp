// SPDX-License-Identifier: Apache-2.0
/// @file
/// What somebody writes who wants route distinguishers in hexadecimal before lunch: the C library's lines, sscanf and
/// printf. Standard input to standard output; exit status 1 if a line was none.
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

bool parse(const char *text, unsigned (&word)[6])
{
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    unsigned long long as = 0;
    unsigned long long number = 0;
    char rest = 0;
    std::memset(word, 0, sizeof word);
    if (std::sscanf(text, "%u.%u.%u.%u:%llu%c", &a, &b, &c, &d, &number, &rest) == 5 && (a | b | c | d) <= 255 &&
        number <= 65535) {
        word[0] = 1;
        word[1] = a << 8 | b;
        word[2] = c << 8 | d;
        word[3] = static_cast<unsigned>(number);
        return true;
    }
    if (std::sscanf(text, "%u.%u:%llu%c", &a, &b, &number, &rest) == 3 && (a | b) <= 65535 && number <= 65535) {
        word[0] = 2;
        word[1] = a;
        word[2] = b;
        word[3] = static_cast<unsigned>(number);
        word[5] = 3;
        return (a | b | word[3]) != 0;
    }
    if (std::sscanf(text, "%llu:%llu%c", &as, &number, &rest) != 2 || as > UINT32_MAX || number > UINT32_MAX) {
        return false;
    }
    if (as <= 65535) {
        word[1] = static_cast<unsigned>(as);
        word[2] = static_cast<unsigned>(number >> 16);
        word[3] = static_cast<unsigned>(number & 0xFFFF);
        word[5] = 1;
        return (as | number) != 0;
    }
    word[0] = 2;
    word[1] = static_cast<unsigned>(as >> 16);
    word[2] = static_cast<unsigned>(as & 0xFFFF);
    word[3] = static_cast<unsigned>(number);
    word[5] = 2;
    return number <= 65535;
}

} // namespace

int main()
{
    char line[256];
    bool all = true;
    while (std::fgets(line, sizeof line, stdin) != nullptr) {
        line[std::strcspn(line, "\n")] = '\0';
        unsigned word[6];
        if (parse(line, word)) {
            char hex[32];
            (void)std::snprintf(hex, sizeof hex, "%04x%04x%04x%04x%04x%04x", word[0], word[1], word[2], word[3],
                                word[4], word[5]);
            (void)std::puts(hex);
        } else {
            all = false;
        }
    }
    return all ? 0 : 1;
}
