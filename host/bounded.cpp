// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The bounds-checked C library (C11 Annex K): copying and printing. A refused call leaves no stale text behind: it
/// empties the destination, whenever there is one of a credible size. Only snprintf_s leaves what fits of a text.
#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "host/services.hpp"

namespace {

/// A larger size is taken for a negative number that lost its sign (RSIZE_MAX).
constexpr size_t largest_size = SIZE_MAX >> 1;

bool is_buffer(const void *destination, size_t size) { return destination != nullptr && size <= largest_size; }

bool overlap(const void *destination, const void *source, size_t count)
{
    const auto d = reinterpret_cast<uintptr_t>(destination);
    const auto s = reinterpret_cast<uintptr_t>(source);
    return d < s ? s - d < count : d - s < count;
}

/// Copies `length` characters of the source and terminates them.
int copy_text(char *destination, size_t size, const char *source, size_t length)
{
    if (length >= size) {
        *destination = '\0';
        return ERANGE;
    }
    if (overlap(destination, source, length + 1)) {
        *destination = '\0';
        return EINVAL;
    }
    std::memcpy(destination, source, length);
    destination[length] = '\0';
    return 0;
}

/// "%n" writes instead of printing, and Annex K refuses it.
bool has_percent_n(const char *format)
{
    while ((format = std::strchr(format, '%')) != nullptr) {
        ++format;
        format += std::strspn(format, "-+ #0'123456789.*hljztLq");
        if (*format == 'n')
            return true;
        if (*format != '\0')
            ++format;
    }
    return false;
}

/// Prints, cut at the size; returns the whole text's length, or -1.
int print(char *destination, size_t size, const char *format, va_list arguments)
{
    if (!is_buffer(destination, size) || size == 0)
        return -1;
    const bool allowed = format != nullptr && !has_percent_n(format);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): every caller has started it
    const int length = allowed ? std::vsnprintf(destination, size, format, arguments) : -1;
    if (length < 0)
        *destination = '\0';
    return length;
}

} // namespace

int memcpy_s(void *destination, size_t destinationSize, const void *source, size_t count)
{
    if (!is_buffer(destination, destinationSize))
        return EINVAL;
    if (count > destinationSize || (count != 0 && (source == nullptr || overlap(destination, source, count)))) {
        std::memset(destination, 0, destinationSize);
        return count > destinationSize ? ERANGE : EINVAL;
    }
    if (count != 0)
        std::memcpy(destination, source, count);
    return 0;
}

int memset_s(void *destination, size_t destinationSize, int value, size_t count)
{
    if (!is_buffer(destination, destinationSize))
        return EINVAL;
    std::memset(destination, value, std::min(count, destinationSize));
    return count > destinationSize ? ERANGE : 0;
}

int strcpy_s(char *destination, size_t destinationSize, const char *source)
{
    return strncpy_s(destination, destinationSize, source, largest_size);
}

int strncpy_s(char *destination, size_t destinationSize, const char *source, size_t count)
{
    if (!is_buffer(destination, destinationSize) || destinationSize == 0)
        return EINVAL;
    if (source == nullptr || count > largest_size) {
        *destination = '\0';
        return EINVAL;
    }
    return copy_text(destination, destinationSize, source, strnlen(source, std::min(count, destinationSize)));
}

int sprintf_s(char *destination, size_t destinationSize, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = print(destination, destinationSize, format, arguments);
    va_end(arguments);
    if (length >= 0 && static_cast<size_t>(length) >= destinationSize) {
        *destination = '\0';
        return -1;
    }
    return length;
}

int snprintf_s(char *destination, size_t destinationSize, size_t count, const char *format, ...)
{
    const size_t size = count < destinationSize ? count + 1 : destinationSize;
    va_list arguments;
    va_start(arguments, format);
    const int length = print(destination, size, format, arguments);
    va_end(arguments);
    return length >= 0 && static_cast<size_t>(length) < size ? length : -1;
}

int snprintf_truncated_s(char *destination, size_t destinationSize, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = print(destination, destinationSize, format, arguments);
    va_end(arguments);
    if (length >= 0 && static_cast<size_t>(length) >= destinationSize)
        return static_cast<int>(destinationSize) - 1;
    return length;
}
