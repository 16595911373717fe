// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// sscanf_s: C's formatted input with the size of each text's destination behind its pointer.
///
/// What C leaves undefined does not convert: a number that does not fit its conversion, a text that does not fit its
/// destination, a conversion that this file does not know (those of floating-point numbers, pointers, wide characters).
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>

#include "host/ascii.hpp"
#include "host/services.hpp"

using namespace bgpdt::host;

namespace {

enum class Result { done, mismatch, end_of_input };

/// The characters of "%[...]".
struct Set {
    const char *first;
    const char *last; // behind the last
    bool negated;

    bool holds(char c) const { return in_list(c) != negated; }

private:
    bool in_list(char c) const
    {
        for (const char *at = first; at != last; ++at) {
            const bool range = last - at > 2 && at[1] == '-';
            if (range ? as_byte(c) >= as_byte(at[0]) && as_byte(c) <= as_byte(at[2]) : c == *at)
                return true;
            at += range ? 2 : 0;
        }
        return false;
    }
    static unsigned char as_byte(char c) { return static_cast<unsigned char>(c); }
};

/// One conversion, as a format writes it.
struct Conversion {
    bool suppressed = false;
    size_t width = SIZE_MAX;
    unsigned bits = std::numeric_limits<unsigned>::digits; // of a number's destination
    bool sized = false;                                    // a length modifier is given
    char letter = '\0';
    Set set{};
};

/// A number as it stands in the text.
struct Numeral {
    bool negative = false;
    bool too_large = false;
    uint64_t magnitude = 0;
};

template <class Number>
constexpr unsigned bits_of = 8 * sizeof(Number);

unsigned read_length_modifier(const char *&format)
{
    const char letter = *format++;
    const bool twice = (letter == 'h' || letter == 'l') && *format == letter;
    format += twice ? 1 : 0;
    switch (letter) {
    case 'h': return twice ? bits_of<char> : bits_of<short>;
    case 'l': return twice ? bits_of<long long> : bits_of<long>;
    case 'j': return bits_of<intmax_t>;
    case 'z': return bits_of<size_t>;
    default: return bits_of<ptrdiff_t>;
    }
}

/// Reads the set up to its "]", which stands for itself in the first place. False when there is no end.
bool read_set(const char *&format, Set &set)
{
    set.negated = *format == '^';
    format += set.negated ? 1 : 0;
    set.first = format;
    if (*format == '\0')
        return false;
    set.last = std::strchr(format + 1, ']');
    if (set.last == nullptr)
        return false;
    format = set.last + 1;
    return true;
}

/// Reads what stands behind a "%". The letter stays NUL when that is no conversion.
Conversion read_conversion(const char *&format)
{
    Conversion conversion;
    if (*format == '*') {
        conversion.suppressed = true;
        ++format;
    }
    if (is_digit(*format)) {
        conversion.width = 0;
        for (; is_digit(*format) && conversion.width < UINT16_MAX; ++format)
            conversion.width = conversion.width * 10 + digit_value(*format);
        if (conversion.width == 0)
            return conversion;
    }
    if (*format != '\0' && std::strchr("hljzt", *format) != nullptr) {
        conversion.bits = read_length_modifier(format);
        conversion.sized = true;
    }
    const char letter = *format;
    if (letter != '\0')
        ++format;
    if (letter != '[' || read_set(format, conversion.set))
        conversion.letter = letter;
    return conversion;
}

/// The reader of one text.
class Scanner {
public:
    Scanner(const char *text, va_list *arguments) : start_(text), at_(text), arguments_(arguments) {}

    /// @return the number of assigned items, or EOF when the text ends before the first conversion
    int scan(const char *format);

private:
    Result step(const char *&format);
    Result literal(char character);
    Result convert(const Conversion &conversion);
    Result number(const Conversion &conversion, unsigned base, bool is_signed);
    Result text(const Conversion &conversion, size_t length, bool terminated);
    Result count(const Conversion &conversion);
    bool numeral(size_t width, unsigned base, Numeral &result);
    size_t word_length(size_t width) const;
    size_t set_length(const Conversion &conversion) const;
    size_t block_length(size_t width) const;
    void store(const Conversion &conversion, uint64_t value);

    void skip_space()
    {
        while (is_space(*at_))
            ++at_;
    }

    const char *const start_;
    const char *at_;
    va_list *const arguments_;
    int assigned_ = 0;
    bool converted_ = false; // a conversion is complete, assigned or not
};

int Scanner::scan(const char *format)
{
    Result result = Result::done;
    while (*format != '\0' && result == Result::done)
        result = step(format);
    return result == Result::end_of_input && !converted_ ? EOF : assigned_;
}

Result Scanner::step(const char *&format)
{
    const char character = *format++;
    if (is_space(character)) {
        skip_space();
        return Result::done;
    }
    if (character != '%')
        return literal(character);
    const Conversion conversion = read_conversion(format);
    if (conversion.letter == 'n')
        return count(conversion);
    if (conversion.letter != 'c' && conversion.letter != '[')
        skip_space();
    if (conversion.letter == '%')
        return literal('%');
    if (*at_ == '\0')
        return Result::end_of_input;
    return convert(conversion);
}

Result Scanner::literal(char character)
{
    if (*at_ == character) {
        ++at_;
        return Result::done;
    }
    return *at_ == '\0' ? Result::end_of_input : Result::mismatch;
}

Result Scanner::convert(const Conversion &conversion)
{
    const size_t width = conversion.width;
    switch (conversion.letter) {
    case 'd': return number(conversion, 10, true);
    case 'i': return number(conversion, 0, true);
    case 'u': return number(conversion, 10, false);
    case 'o': return number(conversion, 8, false);
    case 'x':
    case 'X': return number(conversion, 16, false);
    case 's': return text(conversion, word_length(width), true);
    case '[': return text(conversion, set_length(conversion), true);
    case 'c': return text(conversion, block_length(width == SIZE_MAX ? 1 : width), false);
    default: return Result::mismatch;
    }
}

Result Scanner::number(const Conversion &conversion, unsigned base, bool is_signed)
{
    Numeral numeral_read;
    if (!numeral(conversion.width, base, numeral_read) || numeral_read.too_large)
        return Result::mismatch;
    const uint64_t largest = UINT64_MAX >> (64 - conversion.bits + (is_signed ? 1 : 0));
    const uint64_t limit = is_signed && numeral_read.negative ? largest + 1 : largest;
    if (numeral_read.magnitude > limit)
        return Result::mismatch;
    converted_ = true;
    if (!conversion.suppressed) {
        store(conversion, numeral_read.negative ? 0 - numeral_read.magnitude : numeral_read.magnitude);
        ++assigned_;
    }
    return Result::done;
}

/// Reads a sign, a base prefix and digits, within the width, as strtoull does. A prefix without digits is no number.
bool Scanner::numeral(size_t width, unsigned base, Numeral &result)
{
    if (*at_ == '+' || *at_ == '-') {
        result.negative = *at_++ == '-';
        --width;
    }
    if ((base == 16 || base == 0) && width >= 2 && at_[0] == '0' && to_lower(at_[1]) == 'x') {
        base = 16;
        at_ += 2;
        width -= 2;
    } else if (base == 0) {
        base = *at_ == '0' ? 8 : 10;
    }
    const char *const digits = at_;
    for (; width != 0 && digit_value(*at_) < base; ++at_, --width) {
        const unsigned digit = digit_value(*at_);
        result.too_large = result.too_large || result.magnitude > (UINT64_MAX - digit) / base;
        result.magnitude = result.magnitude * base + digit;
    }
    return at_ != digits;
}

Result Scanner::text(const Conversion &conversion, size_t length, bool terminated)
{
    if (conversion.sized || length == 0)
        return Result::mismatch;
    if (!conversion.suppressed) {
        // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): whoever calls has started it
        char *const destination = va_arg(*arguments_, char *);
        const size_t size = va_arg(*arguments_, size_t);
        if (destination == nullptr || length + (terminated ? 1 : 0) > size)
            return Result::mismatch;
        std::memcpy(destination, at_, length);
        if (terminated)
            destination[length] = '\0';
        ++assigned_;
    }
    converted_ = true;
    at_ += length;
    return Result::done;
}

Result Scanner::count(const Conversion &conversion)
{
    if (!conversion.suppressed)
        store(conversion, static_cast<uint64_t>(at_ - start_));
    return Result::done;
}

size_t Scanner::word_length(size_t width) const
{
    size_t length = 0;
    while (length != width && at_[length] != '\0' && !is_space(at_[length]))
        ++length;
    return length;
}

size_t Scanner::set_length(const Conversion &conversion) const
{
    size_t length = 0;
    while (length != conversion.width && at_[length] != '\0' && conversion.set.holds(at_[length]))
        ++length;
    return length;
}

/// "%c" takes just as many characters as its width; 0 when there are fewer.
size_t Scanner::block_length(size_t width) const { return strnlen(at_, width) == width ? width : 0; }

template <class Number>
void put(void *destination, uint64_t value)
{
    const auto number = static_cast<Number>(value);
    std::memcpy(destination, &number, sizeof number);
}

void Scanner::store(const Conversion &conversion, uint64_t value)
{
    void *const destination = va_arg(*arguments_, void *); // NOLINT(clang-analyzer-valist.Uninitialized)
    switch (conversion.bits) {
    case 8: put<uint8_t>(destination, value); break;
    case 16: put<uint16_t>(destination, value); break;
    case 32: put<uint32_t>(destination, value); break;
    default: put<uint64_t>(destination, value); break;
    }
}

} // namespace

int sscanf_s(const char *text, const char *format, ...)
{
    if (text == nullptr || format == nullptr)
        return EOF;
    va_list arguments;
    va_start(arguments, format);
    const int result = Scanner(text, &arguments).scan(format);
    va_end(arguments);
    return result;
}
