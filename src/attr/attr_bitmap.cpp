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
/// Irregularities, all deliberate:
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
#include "attr/line_template.hpp"

#include <bit>

#include "bgp_datatype/bgp_datatype.h"
#include "common/bytes.hpp"
#include "common/callbacks.hpp"
#include "common/print.hpp"

using namespace bgpdt;

namespace {

constexpr u32 unlistable = 1;

constexpr std::size_t listing_block = 4096;
constexpr std::size_t text_block = 300; ///< label, template, and the parts of both
constexpr u32 piece_limit = 299;        ///< of one filled piece, its NUL included
constexpr u32 most_runs = 128;
constexpr u32 runs_per_line = 10;

/// What entries hold.
enum Kind : u16 {
    number8 = 2,
    number16 = 4,
    number32 = SYSDT_KIND_BINARY,
    ipv4_address = 21,
    ipv6_address = 22,
    text = SYSDT_KIND_STRING,
    either_address = 38, ///< IPv4 (4 bytes), IPv6 (16), family: 0 IPv4, 1 IPv6
};

struct Entry {
    u32 kind;
    u32 length;
    const u8 *data;
};

/// The entries of a display record of so many bytes, one after the other.
class Entries {
public:
    Entries(const void *record, std::size_t size) : record_(static_cast<const u8 *>(record)), size_(size)
    {
        if (size_ >= count_offset + sizeof(u16))
            left_ = load<u16>(record_ + count_offset);
    }

    u32 left() const { return left_; }

    /// The next of the entries left; false if it does not lie inside the record.
    bool next(Entry &entry)
    {
        if (!has(2 * sizeof(u16)))
            return false;
        entry.kind = load<u16>(record_ + at_);
        entry.length = load<u16>(record_ + at_ + sizeof(u16));
        at_ += 2 * sizeof(u16);
        if (!has(entry.length))
            return false;
        entry.data = record_ + at_;
        at_ += entry.length;
        --left_;
        return true;
    }

private:
    static constexpr std::size_t count_offset = 24;
    static constexpr std::size_t first_entry = 44;

    bool has(std::size_t bytes) const { return size_ >= at_ && size_ - at_ >= bytes; }

    const u8 *record_;
    std::size_t size_;
    std::size_t at_ = first_entry;
    u32 left_ = 0;
};

/// The text of an entry: up to its NUL or the entry's end.
std::string_view text_of(const Entry &entry)
{
    const char *const characters = reinterpret_cast<const char *>(entry.data);
    return {characters, strnlen(characters, entry.length)};
}

/// Copies what fits in front of a NUL.
void copy_text(char *to, std::size_t size, std::string_view source)
{
    if (size == 0)
        return;
    const std::size_t length = std::min(source.size(), size - 1);
    std::memcpy(to, source.data(), length);
    to[length] = '\0';
}

/// Does the work with two blocks of the size, which are released behind it.
template <class Element, class Work>
u32 with_two_blocks(u32 handle, u32 size, Work work)
{
    void *const first = SYS_DataTypeMallocByHandle(handle, size);
    void *const second = first == nullptr ? nullptr : SYS_DataTypeMallocByHandle(handle, size);
    const u32 status =
        second == nullptr ? SYSDT_ERR_NO_MEMORY : work(static_cast<Element *>(first), static_cast<Element *>(second));
    SYS_DataTypeFree(second);
    SYS_DataTypeFree(first);
    return status;
}

/// How many bytes a value of the kind has at least.
constexpr u32 least_length(u32 kind)
{
    switch (kind) {
    case number8: return 1;
    case number16: return 2;
    case number32:
    case ipv4_address: return 4;
    case ipv6_address: return 16;
    case either_address: return 21;
    default: return 0;
    }
}

/// What a value prints as; false if that is nothing. An address is written to `written`.
bool printed_as(const Entry &value, char (&written)[46], PieceValue &out)
{
    const u8 *const data = value.data;
    switch (value.kind) {
    case number8: out = {false, *data, {}}; return true;
    case number16: out = {false, load<u16>(data), {}}; return true;
    case number32: out = {false, load<u32>(data), {}}; return true;
    case text: out = {true, 0, text_of(value)}; return true;
    case ipv4_address: PAL_IpAddrToStr(load<u32>(data), written); break;
    case ipv6_address: PAL_Inet_ntoa_b_ipv6(data, written); break;
    case either_address:
        if (data[20] == 0)
            PAL_IpAddrToStr(load<u32>(data), written);
        else if (data[20] == 1)
            PAL_Inet_ntoa_b_ipv6(data + 4, written);
        else
            return false;
        break;
    default: return false;
    }
    out = {true, 0, written};
    return true;
}

/// Prints the value by the piece at the position, which has room for `limit` characters with their NUL.
u32 print_value(const Entry &value, const char *piece, char *position, u32 limit, u32 &characters)
{
    char written[46];
    PieceValue printed{};
    if (value.length < least_length(value.kind))
        return unlistable;
    if (limit == 0 || !printed_as(value, written, printed))
        return SYSDT_OK; // (7)
    Writer out(position, limit);
    if (!print_piece(piece, printed, out))
        return unlistable;
    characters = out.finish();
    return SYSDT_OK;
}

/// Prints the value into the template's next piece, and takes that off the template.
u32 fill_piece(u32 handle, const Entry &value, char *line_template, char *position, u32 limit, u32 &characters)
{
    return with_two_blocks<char>(handle, text_block, [&](char *piece, char *rest) {
        SYSDT_FormatAttrIdStrFind(line_template, piece, rest, text_block);
        const u32 status = print_value(value, piece, position, limit, characters);
        copy_text(line_template, text_block, rest); // (8)
        return status;
    });
}

/// Lists the record, with a block for what is left of the template and one for the label.
u32 list_record(u32 handle, Entries &entries, char *line_template, char *label, char *output, u32 variant)
{
    Entry entry{};
    if (!entries.next(entry) || entry.kind != text)
        return unlistable;
    const std::string_view whole = text_of(entry);
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

/// Stores where a run ends; 0 for a run of one.
void end_run(u16 start, u32 last, u16 &end) { end = last == start ? u16{0} : static_cast<u16>(last); }

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

u32 SYSDT_AttrIdDataTypeFormat(u32 handle, u32 kind, u32 length, char *position, char *lineTemplate, const void *data,
                               u32 limit)
{
    u32 characters = 0;
    if (position != nullptr && lineTemplate != nullptr && data != nullptr)
        fill_piece(handle, {kind, length, static_cast<const u8 *>(data)}, lineTemplate, position, limit, characters);
    return characters;
}

u32 SYSDT_FormatAttrIdStrFind(const char *lineTemplate, char *head, char *rest, u32 limit)
{
    if (lineTemplate == nullptr || head == nullptr || rest == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const std::string_view all = lineTemplate;
    const std::size_t second = all.find('%', all.find('%') + 1);
    std::string_view behind = all;
    if (second != all.npos)
        behind.remove_prefix(second);
    copy_text(head, limit, all.substr(0, second));
    copy_text(rest, limit, behind);
    return SYSDT_OK;
}

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

u32 SYSDT_AttrIdBitmapCheck(const void *, u32, u32 length, const void *)
{
    return length == sizeof(SYSDT_AttrIdBitmap) ? SYSDT_OK : SYSDT_ERR_LENGTH; // (3)
}

BGPDT_HELP(SYSDT_AttrIdBitmapHelp, attr_bitmap)
BGPDT_COMPARE_BYTES(SYSDT_AttrIdBitmapCompare)

u32 SYSDT_AttrIdBitmapLuaSet(void *state, i32 table, const char *name, u32, u32 length, const void *data)
{
    if (state == nullptr || name == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (length < sizeof(SYSDT_AttrIdBitmap))
        return SYSDT_ERR_PARAM;
    script::Table::at(state, table).set_field(name, attr_bitmap_fields[0], static_cast<const u8 *>(data)); // (4)
    return SYSDT_OK;
}

u32 SYSDT_AttrIdBitmapLuaGet(void *state, i32 table, const char *name, u32, u32 length, void *data)
{
    if (state == nullptr || name == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    if (length < sizeof(SYSDT_AttrIdBitmap))
        return SYSDT_ERR_PARAM;
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
