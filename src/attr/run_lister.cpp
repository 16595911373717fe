// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// The listing of an attribute bitmap: its runs of identifiers, ten on a line, each line between the label and what
/// stands behind "###" in it.
#include <bit>

#include "attr/work_blocks.hpp"
#include "bgp_datatype/bgp_datatype.h"
#include "common/bytes.hpp"
#include "common/print.hpp"

using namespace bgpdt;
using namespace bgpdt::attr;

namespace {

constexpr u32 most_runs = 128;
constexpr u32 runs_per_line = 10;

/// Stores where a run ends; 0 for a run of one.
void end_run(u16 start, u32 last, u16 &end) { end = last == start ? u16{0} : static_cast<u16>(last); }

} // namespace

u32 SYSDT_AttrIdBitmapToStr(u32 handle, const SYSDT_AttrIdBitmap *bitmap, char *output, char *label, u32) // (9)
{
    if (bitmap == nullptr || output == nullptr || label == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return with_two_blocks<u16>(handle, (most_runs + 1) * sizeof(u16), [&](u16 *starts, u16 *ends) {
        const u32 runs = SYSDT_AttrIdBitmap_GetPairs(bitmap, starts, ends);
        return runs == 0 ? unlistable : SYSDT_AttrIdToStrOut(handle, runs, starts, ends, label, output);
    });
}

u32 SYSDT_AttrIdBitmap_GetPairs(const SYSDT_AttrIdBitmap *bitmap, u16 starts[most_runs + 1], u16 ends[most_runs + 1])
{
    if (bitmap == nullptr || starts == nullptr || ends == nullptr)
        return 0;
    constexpr u32 word_bits = 32;
    u32 runs = 0;
    u32 inside = 0; // whether the bit ahead of the word is set
    for (u32 first = 0; first < 256; first += word_bits) {
        const u32 set = byte_swapped(load_network<u32>(bitmap->bits + first / 8));
        for (u32 edges = set ^ (set << 1 | inside); edges != 0; edges &= edges - 1) {
            const int bit = std::countr_zero(edges);
            const u16 identifier = static_cast<u16>(first + static_cast<u32>(bit));
            if ((set >> bit & 1) == 0)
                end_run(starts[runs], identifier - 1U, ends[runs]);
            else
                starts[++runs] = identifier;
        }
        inside = set >> (word_bits - 1);
    }
    if (inside != 0)
        end_run(starts[runs], 255, ends[runs]);
    return runs;
}

u32 SYSDT_AttrIdToStrOut(u32 handle, u32 runCount, const u16 *starts, const u16 *ends, char *label, char *output)
{
    if (starts == nullptr || ends == nullptr || label == nullptr || output == nullptr)
        return SYSDT_ERR_NULL_PTR;
    char *const tail = static_cast<char *>(SYS_DataTypeMallocByHandle(handle, text_block));
    if (tail == nullptr)
        return SYSDT_ERR_NO_MEMORY;
    SYSDT_AttrIdStrCut_New(label, tail, "###", text_block);
    const std::string_view line_start = label;
    const std::string_view line_end = tail;
    Writer out(output, listing_block);
    out.put(line_start);
    for (u32 run = 1, left_on_line = runs_per_line; run <= runCount; ++run, --left_on_line) {
        if (left_on_line == 0) {
            print<"%s\r\n%s">(out, line_end, line_start);
            left_on_line = runs_per_line;
        }
        if (ends[run] == 0)
            print<" %u">(out, starts[run]);
        else
            print<" %u to %u">(out, starts[run], ends[run]);
    }
    print<"%s\r\n">(out, line_end);
    out.finish();
    SYS_DataTypeFree(tail);
    return SYSDT_OK;
}

u32 SYSDT_AttrIdStrCut_New(char *label, char *tail, const char *marker, u32 limit)
{
    if (label == nullptr || tail == nullptr || marker == nullptr)
        return SYSDT_ERR_NULL_PTR;
    char *const cut = std::strstr(label, marker);
    copy_text(tail, limit, cut == nullptr ? "" : cut + std::strlen(marker));
    if (cut == nullptr)
        return SYSDT_OK;
    *cut = '\0';
    if (char *const blank = std::strrchr(label, ' '); blank != nullptr)
        *blank = '\0';
    return SYSDT_OK;
}
