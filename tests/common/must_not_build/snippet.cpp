// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
// One faulty use of a format for each value of SNIPPET; 0 is the sound one.
#include "common/print.hpp"
#include "common/scan.hpp"

using namespace bgpdt;

[[maybe_unused]] static void use(Writer &out, const char *text)
{
    u32 number = 0;
    u16 half = 0;
    i32 sign = 0;
#if SNIPPET == 0
    scan<"%u:%hu:%d:%q">(text, number, half, sign, number);
    print<"%u:%hu:%d:%q">(out, number, half, sign, number);
#elif SNIPPET == 1  // an unknown letter
    scan<"%k">(text, number);
#elif SNIPPET == 2  // too few arguments
    scan<"%u:%u">(text, number);
#elif SNIPPET == 3  // too many
    scan<"%u">(text, number, half);
#elif SNIPPET == 4  // another size
    scan<"%u">(text, half);
#elif SNIPPET == 5  // another sign
    scan<"%u">(text, sign);
#elif SNIPPET == 6  // a percent sign at the end
    print<"%u%">(out, number);
#elif SNIPPET == 7  // too few arguments
    print<"%u:%u">(out, number);
#elif SNIPPET == 8  // a signed number as unsigned
    print<"%u">(out, sign);
#elif SNIPPET == 9  // 64 bits as 32
    print<"%u">(out, u64{1});
#elif SNIPPET == 10 // a number as text
    print<"%s">(out, number);
#elif SNIPPET == 11 // an address in 16 bits
    scan<"%q">(text, half);
#elif SNIPPET == 12 // the same
    print<"%q">(out, half);
#endif
    static_cast<void>(half), static_cast<void>(sign), static_cast<void>(out), static_cast<void>(number);
}
