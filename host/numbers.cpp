// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// Numbers from and to text.
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <limits>

#include "host/ascii.hpp"
#include "host/services.hpp"

using namespace bgpdt::host;

namespace {

/// One or more decimal digits and nothing else, up to the range of Number.
template <class Number>
uint32_t read_decimal(const char *text, Number *number)
{
    if (text == nullptr || number == nullptr)
        return SYSDT_ERR_NULL_PTR;
    Number value = 0;
    const char *at = text;
    for (; is_digit(*at); ++at) {
        if (__builtin_mul_overflow(value, Number{10}, &value) ||
            __builtin_add_overflow(value, static_cast<Number>(*at - '0'), &value))
            return SYSDT_ERR_FAIL;
    }
    if (at == text || *at != '\0')
        return SYSDT_ERR_FAIL;
    *number = value;
    return SYSDT_OK;
}

/// Whether a number's text begins with a minus sign, as strtoul sees it.
bool is_negative(const char *text)
{
    while (is_space(*text))
        ++text;
    return *text == '-';
}

} // namespace

uint32_t SMP_StrToUint32(const char *text, uint32_t *number) { return read_decimal(text, number); }

uint32_t PAL_StrToUint32(const char *text, uint32_t *number) { return read_decimal(text, number); }

uint32_t PAL_StrToUint64(const char *text, uint64_t *number) { return read_decimal(text, number); }

uint32_t SMP_atoulx(const char *text)
{
    uint32_t value = 0;
    for (; digit_value(*text) < 16; ++text)
        value = value << 4 | digit_value(*text);
    return value;
}

uint32_t PAL_Uint32ToStr(uint32_t value, char *buffer, uint32_t base)
{
    if (buffer == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (base < 2 || base > 36)
        return SYSDT_ERR_PARAM;
    *std::to_chars(buffer, buffer + std::numeric_limits<uint32_t>::digits, value, static_cast<int>(base)).ptr = '\0';
    return SYSDT_OK;
}

uint32_t PAL_strtoul(const char *text, char **end, int32_t base)
{
    constexpr unsigned long long largest = std::numeric_limits<uint32_t>::max();
    const unsigned long long value = std::strtoull(text, end, base);
    const bool negative = is_negative(text);
    const unsigned long long magnitude = negative ? 0 - value : value;
    if (magnitude > largest) {
        errno = ERANGE;
        return std::numeric_limits<uint32_t>::max();
    }
    const auto number = static_cast<uint32_t>(magnitude);
    return negative ? 0 - number : number;
}
