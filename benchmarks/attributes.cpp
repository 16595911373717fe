// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// TIME_RANGE, SID_STRUCTURE and the listing of attribute bitmaps.
#include "floor.hpp"
#include "port.hpp"

namespace bgpdt::bench {
namespace {

// ------------------------------------------------------------------------------------------------ durations

bool letter(const char *&at, char small) { return (*at | 0x20) == small && (++at, true); }

bool floor_parse_duration(char *text, SYSDT_TimeRange &out)
{
    const char *at = PAL_StrTrim(text);
    u32 days;
    u32 hours;
    u32 minutes;
    u32 seconds;
    PAL_lowercase(text);
    if (!number(at, days, 10000) || !letter(at, 'd') || !number(at, hours, 23) || !letter(at, 'h') ||
        !number(at, minutes, 59) || !letter(at, 'm') || !number(at, seconds, 59) || !letter(at, 's') || *at != '\0')
        return false;
    out.seconds = days * 86400 + hours * 3600 + minutes * 60 + seconds;
    return true;
}

bool port_parse_duration(char *text, SYSDT_TimeRange &out)
{
    text = PAL_StrTrim(text);
    const std::size_t length = std::strlen(text);
    if (length < 8 || length > 15)
        return false;
    PAL_lowercase(text);
    constexpr const char *letters = "dhms";
    std::size_t positions[4];
    int found = 0;
    for (std::size_t i = 0; i < length; ++i) {
        if (std::isdigit(static_cast<unsigned char>(text[i])) != 0)
            continue;
        if (found == 4 || text[i] != letters[found])
            return false;
        positions[found++] = i;
    }
    if (found != 4)
        return false;
    unsigned numbers[4];
    std::size_t start = 0;
    for (int i = 0; i < 4; ++i) {
        char part[16];
        std::memcpy(part, text + start, positions[i] - start);
        part[positions[i] - start] = '\0';
        if (std::sscanf(part, "%u", &numbers[i]) != 1)
            return false;
        start = positions[i] + 1;
    }
    if (numbers[0] > 10000 || numbers[1] > 23 || numbers[2] > 59 || numbers[3] > 59)
        return false;
    out.seconds = numbers[0] * 86400 + numbers[1] * 3600 + numbers[2] * 60 + numbers[3];
    return true;
}

// ------------------------------------------------------------------------------------------------ SID structures

char *floor_print_structure(const SYSDT_SidStructure &value, char *out)
{
    if (value.exists != 1)
        return put(out, '-');
    for (int i = 0; i < 6; ++i) {
        if (i != 0)
            out = put(out, '-');
        out = put_octet(out, value.field[i]);
    }
    return out;
}

int port_print_structure(const SYSDT_SidStructure &value, char *out, std::size_t size)
{
    const u8 *const f = value.field;
    return value.exists == 1
               ? std::snprintf(out, size, "%hhu-%hhu-%hhu-%hhu-%hhu-%hhu", f[0], f[1], f[2], f[3], f[4], f[5])
               : std::snprintf(out, size, "-");
}

Bytes structure(Random &random)
{
    Bytes bytes(sizeof(SYSDT_SidStructure));
    for (u8 &byte : bytes)
        byte = static_cast<u8>(random.below(129));
    bytes.back() = 1;
    return bytes;
}

// ------------------------------------------------------------------------------------------------ bitmap listings

/// A display record whose entries are a template, a bitmap and perhaps a 32-bit number.
struct SYSDT_PACKED Entry {
    u16 kind;
    u16 length;
};

struct Record {
    const char *text;
    const u8 *bitmap;
    const u8 *value; ///< or null

    explicit Record(const void *data)
    {
        const u8 *const record = static_cast<const u8 *>(data);
        u16 count;
        std::memcpy(&count, record + 24, sizeof count);
        const u8 *at = record + 44;
        const auto next = [&at] {
            Entry entry;
            std::memcpy(&entry, at, sizeof entry);
            const u8 *const content = at + sizeof entry;
            at = content + entry.length;
            return content;
        };
        text = reinterpret_cast<const char *>(next());
        bitmap = next();
        value = count > 2 ? next() : nullptr;
    }
};

constexpr u32 listing_size = 4096;

/// The blocks that the contract names for a listing.
struct Blocks {
    static constexpr u32 sizes[] = {300, 300, 300, 300, 258, 258, 300};
    void *block[7]{};

    Blocks(const SYSDT_Context &context, bool filled)
    {
        for (int i = 0; i < 7; ++i)
            if (filled || (i != 2 && i != 3))
                block[i] = SYS_DataTypeMallocByHandle(context.handle, sizes[i]);
    }
    ~Blocks()
    {
        for (void *const taken : block)
            if (taken != nullptr)
                SYS_DataTypeFree(taken);
    }
    char *text(int i) const { return static_cast<char *>(block[i]); }
    u16 *numbers(int i) const { return static_cast<u16 *>(block[i]); }
};

u32 deliver(char *block, std::size_t length, u16 *out_kind, u16 *out_length, void **out_data)
{
    *out_kind = SYSDT_KIND_STRING;
    *out_length = static_cast<u16>(length + 1);
    *out_data = block;
    return SYSDT_OK;
}

u32 floor_list(SYSDT_Context *context, u32, u32, const void *data, u16 *out_kind, u16 *out_length, void **out_data)
{
    char *const block = static_cast<char *>(SYS_DataTypeMallocByHandle(context->handle, listing_size));
    const Record record(data);
    const Blocks blocks(*context, record.value != nullptr);

    char *label = blocks.text(1);
    char *label_end = static_cast<char *>(stpcpy(label, record.text));
    if (record.value != nullptr) {
        u32 number;
        std::memcpy(&number, record.value, sizeof number);
        const char *const placeholder = std::strchr(record.text, '%');
        label_end = put(label + (placeholder - record.text), number);
        label_end = stpcpy(label_end, placeholder + 2);
    }
    char *tail = blocks.text(6);
    char *tail_end = tail;
    if (char *const marker = std::strstr(label, "###"); marker != nullptr) {
        tail_end = stpcpy(tail, marker + 3);
        *marker = '\0';
        char *const blank = std::strrchr(label, ' ');
        label_end = blank != nullptr ? blank : marker;
    }
    const auto label_length = static_cast<std::size_t>(label_end - label);
    const auto tail_length = static_cast<std::size_t>(tail_end - tail);

    char *out = block;
    std::memcpy(out, label, label_length);
    out += label_length;
    u64 words[5];
    for (int i = 0; i < 4; ++i) {
        u64 word;
        std::memcpy(&word, record.bitmap + 8 * i, sizeof word);
        words[i] = std::endian::native == std::endian::little ? word : __builtin_bswap64(word);
    }
    words[4] = 0;
    const auto find = [&words](u32 from, u64 flip) { // the first identifier whose bit is not that of flip
        for (u32 word = from / 64; word < 4; ++word) {
            const u64 bits = (words[word] ^ flip) & (word == from / 64 ? UINT64_MAX << from % 64 : UINT64_MAX);
            if (bits != 0)
                return word * 64 + static_cast<u32>(std::countr_zero(bits));
        }
        return u32{256};
    };
    u32 runs = 0;
    for (u32 start = find(0, 0); start < 256; ++runs) {
        if (runs != 0 && runs % 10 == 0) {
            std::memcpy(out, tail, tail_length);
            out = put(out + tail_length, "\r\n");
            std::memcpy(out, label, label_length);
            out += label_length;
        }
        const u32 behind = find(start, UINT64_MAX);
        out = put_octet(put(out, ' '), start);
        if (behind - start > 1)
            out = put_octet(put(out, " to "), behind - 1);
        start = behind >= 256 ? 256 : find(behind, 0);
    }
    std::memcpy(out, tail, tail_length);
    out = put(out + tail_length, "\r\n");
    *out = '\0';
    return deliver(block, static_cast<std::size_t>(out - block), out_kind, out_length, out_data);
}

u32 port_list(SYSDT_Context *context, u32, u32, const void *data, u16 *out_kind, u16 *out_length, void **out_data)
{
    char *const out = static_cast<char *>(SYS_DataTypeMallocByHandle(context->handle, listing_size));
    const Record record(data);
    const Blocks blocks(*context, record.value != nullptr);
    char *const label = blocks.text(1);
    char *const tail = blocks.text(6);
    (void)std::snprintf(label, 300, "%s", record.text);
    if (record.value != nullptr) {
        u32 number;
        std::memcpy(&number, record.value, sizeof number);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
        (void)std::snprintf(label, 300, record.text, number);
#pragma GCC diagnostic pop
    }
    u16 *const starts = blocks.numbers(4);
    u16 *const ends = blocks.numbers(5);
    std::memset(ends, 0, 258);
    u32 runs = 0;
    for (u32 id = 0, last = 256; id < 256; ++id) {
        if ((record.bitmap[id / 8] >> id % 8 & 1) == 0)
            continue;
        if (runs != 0 && id == last + 1)
            ends[runs] = static_cast<u16>(id);
        else
            starts[++runs] = static_cast<u16>(id);
        last = id;
    }
    *tail = '\0';
    if (char *const marker = std::strstr(label, "###"); marker != nullptr) {
        (void)std::snprintf(tail, 300, "%s", marker + 3);
        *marker = '\0';
        if (char *const blank = std::strrchr(label, ' '); blank != nullptr)
            *blank = '\0';
    }
    constexpr std::size_t limit = 4064;
    std::size_t length = 0;
    const auto print = [&](const char *format, auto... arguments) {
        length += static_cast<std::size_t>(std::snprintf(out + length, limit - length, format, arguments...));
    };
    print("%s", label);
    for (u32 run = 1; run <= runs; ++run) {
        print(" %d", starts[run]);
        if (ends[run] != 0)
            print(" to %d", ends[run]);
        if (run % 10 == 0 && run != runs)
            print("%s\r\n%s", tail, label);
    }
    print("%s\r\n", tail);
    return deliver(out, length, out_kind, out_length, out_data);
}

Bytes display_record(Random &random, const std::string &text, bool filled)
{
    Bytes record(44);
    const u16 count = filled ? 3 : 2;
    std::memcpy(record.data() + 24, &count, sizeof count);
    const auto add = [&record](u16 kind, const void *data, std::size_t size) {
        const Entry entry{kind, static_cast<u16>(size)};
        const auto append = [&record](const void *bytes, std::size_t number) {
            record.insert(record.end(), static_cast<const u8 *>(bytes), static_cast<const u8 *>(bytes) + number);
        };
        append(&entry, sizeof entry);
        append(data, size);
    };
    add(SYSDT_KIND_STRING, text.c_str(), text.size() + 1);
    u8 bitmap[32]{};
    for (u32 id = random.between(1, 40); id < 256; id += random.between(2, 30))
        for (u32 run = random.percent(50) ? 1 : random.between(1, 6); run != 0 && id < 256; --run, ++id)
            bitmap[id / 8] = static_cast<u8>(bitmap[id / 8] | 1 << id % 8);
    add(SYSDT_TYPE_ATTRIDBITMAP, bitmap, sizeof bitmap);
    if (filled) {
        const u32 number = random.number();
        add(6, &number, sizeof number);
    }
    return record;
}

} // namespace

void add_attributes(Kinds &kinds)
{
    kinds.push_back({"time range",
                     "TIME_RANGE",
                     [](Random &random) {
                         return random.decimal(0, 9999) + 'd' + random.decimal(0, 23) + 'h' + random.decimal(0, 59) +
                                'm' + random.decimal(0, 59) + 's';
                     },
                     {format_in<floor_parse_duration, SYSDT_TimeRange, SYSDT_TYPE_TIME_RANGE>, nullptr},
                     {format_in<port_parse_duration, SYSDT_TimeRange, SYSDT_TYPE_TIME_RANGE>, nullptr}});
    kinds.push_back({"SID structure",
                     "SID_STRUCTURE",
                     {},
                     {nullptr, floor_out<floor_print_structure, SYSDT_SidStructure>},
                     {nullptr, port_out<port_print_structure, SYSDT_SidStructure>},
                     Shape::decimal,
                     structure});
    kinds.push_back({"attr. bitmap",
                     "ATTRIDBITMAP",
                     {},
                     {nullptr, floor_list},
                     {nullptr, port_list},
                     Shape::decimal,
                     [](Random &random) { return display_record(random, "Attribute ID:", false); },
                     1});
    kinds.push_back({"attr. bitmap filled",
                     "ATTRIDBITMAP",
                     {},
                     {nullptr, floor_list},
                     {nullptr, port_list},
                     Shape::decimal,
                     [](Random &random) { return display_record(random, "Attribute IDs of %u: ###;", true); },
                     1});
}

} // namespace bgpdt::bench
