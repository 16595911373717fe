// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// ATTRIDBITMAP: a set of attribute identifiers 0 to 255, 32 bytes; identifier n is bit n mod 8, the least significant
/// first, of byte n div 8. It is listed from a display record and has no text form to parse.
///
///      0           24      26          44     46       48         48 + length
///     +-----------+-------+-----------+------+--------+----------+--- ... ---+
///     | host's    | count | host's    | kind | length | bytes    | the next  |   u16 in host order
///     +-----------+-------+-----------+------+--------+----------+--- ... ---+
///
/// The first entry is a line template (kind 25), the second the bitmap (kind 0x0122); the others are values that fill
/// the template, a piece each: the text in front of the second "%" of what is left of it, or all of that. The filled
/// pieces are the label. What stands behind "###" in it ends every line; the label itself ends at the last blank in
/// front.
///
///     "Attributes:" and {1, 2, 3, 5}            Attributes: 1 to 3 5
///     "Ids of %u in ###x", {1} and the u8 7     Ids of 7 in 1x
///
/// Ten runs stand on a line, which ends with carriage return and line feed; the label begins every line.
///
/// Irregularities, all deliberate; the numbers run through the files of the type:
///  (1) Modes 2 and 3 do nothing and succeed.
///  (2) A record that cannot be listed, an empty bitmap among them, succeeds with kind and length 0; so does one for
///      which memory is out.
///  (3) Check does not look at the value, nor whether there is one.
///  (4) A script sees the bytes as an array right under the field name, and reading it leaves nothing on the stack.
///  (5) A script's numbers keep their low 8 bits.
///  (6) Endian changes nothing.
///  (7) A value that prints nothing still uses up its piece of the template; if none prints, the label is the template.
///  (8) A piece is used again for the next value when there is no further one.
///  (9) The output variant changes nothing.
///
/// Nothing in a record is trusted: its entries must lie inside it and be as long as their kinds, and a piece's
/// conversion must fit its value; else the record cannot be listed.
#include "attr/label_filler.hpp"
#include "attr/work_blocks.hpp"
#include "bgp_datatype/bgp_datatype.h"
#include "common/callbacks.hpp"

using namespace bgpdt;
using namespace bgpdt::attr;

namespace {

constexpr u32 piece_limit = 299; ///< of one filled piece, its NUL included

/// Lists the record, with a block for what is left of the template and one for the label.
u32 list_record(u32 handle, Entries &entries, char *line_template, char *label, char *output, u32 variant)
{
    Entry entry{};
    if (!entries.next(entry) || entry.kind != text)
        return unlistable;
    const std::string_view whole = entry.text();
    copy_text(line_template, text_block, whole);
    copy_text(label, text_block, whole);
    if (!entries.next(entry) || entry.kind != SYSDT_TYPE_ATTRIDBITMAP)
        return unlistable;
    SYSDT_AttrIdBitmap bitmap{};
    std::memcpy(&bitmap, entry.data, std::min<std::size_t>(entry.length, sizeof bitmap));
    for (u32 filled = 0; entries.left() != 0;) {
        u32 characters = 0;
        if (!entries.next(entry))
            return unlistable;
        const u32 limit = std::min(piece_limit, static_cast<u32>(text_block) - filled);
        if (const u32 status = fill_piece(handle, entry, line_template, label + filled, limit, characters);
            status != SYSDT_OK)
            return status;
        filled += characters;
    }
    return SYSDT_AttrIdBitmapToStr(handle, &bitmap, output, label, variant);
}

u32 build_listing(u32 handle, Entries entries, char *output, u32 variant)
{
    if (entries.left() < 2)
        return unlistable;
    return with_two_blocks<char>(handle, text_block, [&](char *line_template, char *label) {
        return list_record(handle, entries, line_template, label, output, variant);
    });
}

constexpr ModeScreen listing_screen{modes(0, 1, 5, 6), modes()};

constexpr Type<SYSDT_AttrIdBitmap> attr_bitmap{.kind = SYSDT_TYPE_ATTRIDBITMAP, .help = {"INTEGER"}};

} // namespace

u32 SYSDT_AttrIdBitmapFormatOut(Context *context, u32, u32 size, const void *record, u16 *kind, u16 *length,
                                void **data)
{
    const Output out{kind, length, data};
    if (context == nullptr || record == nullptr || !out.complete())
        return SYSDT_ERR_NULL_PTR;
    if (contains(modes(2, 3), context->mode))
        return SYSDT_OK; // (1)
    if (const u32 refused = listing_screen.status(context->mode); refused != SYSDT_OK)
        return refused;
    const bool own = *data == nullptr;
    void *const block = own ? take(Allocator::handle, *context, listing_block) : *data;
    out.report(0, 0);
    if (block == nullptr)
        return SYSDT_ERR_NO_MEMORY;
    char *const listing = static_cast<char *>(block);
    if (build_listing(context->handle, {record, size}, listing, context->variant) != SYSDT_OK) {
        if (own)
            SYS_DataTypeFree(block);
        return SYSDT_OK; // (2)
    }
    out.report(SYSDT_KIND_STRING, static_cast<u32>(std::strlen(listing)) + 1);
    *data = block;
    return SYSDT_OK;
}

u32 SYSDT_AttrIdBitmap_BuildRun(u32 handle, const void *record, char *output, u32 variant)
{
    if (record == nullptr || output == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return build_listing(handle, {record, SIZE_MAX}, output, variant);
}

u32 SYSDT_AttrIdBitmapCheck(const void *, u32, u32 length, const void *)
{
    return length == sizeof(SYSDT_AttrIdBitmap) ? SYSDT_OK : SYSDT_ERR_LENGTH; // (3)
}

BGPDT_HELP(SYSDT_AttrIdBitmapHelp, attr_bitmap)
BGPDT_COMPARE_BYTES(SYSDT_AttrIdBitmapCompare)

u32 SYSDT_AttrIdBitmapLuaSet(void *state, i32 table, const char *name, u32, u32 length, const void *data)
{
    if (const u32 status = script::check_call(state, name, data, length, sizeof(SYSDT_AttrIdBitmap));
        status != SYSDT_OK)
        return status;
    script::Table::at(state, table).set_field(name, attr_bitmap_fields[0], static_cast<const u8 *>(data)); // (4)
    return SYSDT_OK;
}

u32 SYSDT_AttrIdBitmapLuaGet(void *state, i32 table, const char *name, u32, u32 length, void *data)
{
    if (const u32 status = script::check_call(state, name, data, length, sizeof(SYSDT_AttrIdBitmap));
        status != SYSDT_OK)
        return status;
    const auto bytes = script::Table::at(state, table).field(name); // (4)
    if (!bytes.is_table())
        return SYSDT_ERR_PARAM;
    for (u32 i = 0; i < sizeof(SYSDT_AttrIdBitmap); ++i) {
        const u32 status = bytes.get_entry(i + 1, attr_bitmap_fields[0], static_cast<u8 *>(data) + i); // (5)
        if (status != SYSDT_OK)
            return status;
    }
    SYSDT_SPTI_Pop(state, 1);
    return SYSDT_OK;
}

u32 SYSDT_AttrIdBitmapEndian(void *, u32, u32, void *) { return SYSDT_OK; } // (6)
