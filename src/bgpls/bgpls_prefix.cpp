// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// BGPLSPREFIX: the key of a BGP-LS object (RFC 9552): a node, a link, a prefix, an SR policy candidate path (RFC 9857)
/// or an SRv6 SID (RFC 9514).
///
///      0            4          8            16                                             224
///     +------------+----------+------------+---------------------------------------------+
///     | route type | protocol | identifier | descriptors by the route type, then zero    |
///     +------------+----------+------------+---------------------------------------------+
///       u32          u32        u64          packed; numbers in host order
///
/// Text: groups in brackets, "[NODE][OSPFv2][IDENTIFIER0][LOCAL[as64496][bgp-ls-identifier192.0.2.1]]"; grammar in
/// text.cpp, printed form in print.cpp, scripts in script.cpp.
///
/// Irregularities, all deliberate; those of text, print and scripts are numbered in those files:
///  (1) Endian reads the route type once it is turned, so it brings values into the processor's own order only: turning
///      back turns the route type word alone.
///  (2) Of a route type of 0 or above 6 only that word is turned.
///  (3) The identifier is turned as one number of 64 bits.
///  (4) The IPv4 word of a TE policy's address is turned when its family is 0.
///  (5) Check looks at the length alone; the order is that of the bytes in memory.
///  (6) The help tells other lengths than the parser's. text (1) Texts are read in modes 1 and 2 only; mode 6 is
///      refused. print (1) Mode 3 prints too; there is no binary copy. print (14) A shorter value is filled up with
///      zeros, a longer one is cut.
#include <cstddef>

#include "bgp_datatype/fields.hpp"
#include "bgpls/key.hpp"
#include "common/bytes.hpp"
#include "common/callbacks.hpp"

using namespace bgpdt;
using namespace bgpdt::bgpls;

namespace {

/// What cannot be printed is empty text.
u32 print_value(const SYSDT_LsPrefix &value, u8, Writer &out)
{
    if (Printer *const print = printer_of(value); print != nullptr)
        print(value, out);
    return SYSDT_OK;
}

constexpr Type<SYSDT_LsPrefix> bgpls_prefix{
    .kind = SYSDT_TYPE_BGPLSPREFIX,
    .input = narrow_screen, // text (1)
    .parse = [](u32, char *text, SYSDT_LsPrefix &value) { return SYSDT_Str2LSPrefix(text, &value); },
    .output = open_screen,
    .mode3 = Mode3::text, // print (1)
    .clears_before_output = true,
    .block = text_size,
    .limit = text_size,     // print (15)
    .reads = Input::passed, // print (14)
    .print = print_value,
    .allocator = Allocator::plain,
    .help = {.text = "STRING<62-529>", .allocator = Allocator::plain}, // (6)
};

} // namespace

BGPDT_FORMAT_IN(SYSDT_LSPrefixFormatIn, bgpls_prefix)
BGPDT_FORMAT_OUT(SYSDT_LSPrefixFormatOut, bgpls_prefix)
BGPDT_CHECK(SYSDT_LSPrefixCheck, bgpls_prefix) // (5)
BGPDT_HELP(SYSDT_LSPrefixHelp, bgpls_prefix)

i32 SYSDT_LSPrefixCompare(const void *, u32 length, const void *first, const void *second)
{
    if (first == nullptr || second == nullptr)
        return SYSDT_ERR_NULL_PTR;
    return compare_bytes(length, first, second); // (5)
}

namespace {

/// Whether the field is the IPv4 word of a TE policy's address of another family. (4)
bool is_idle(const Field &field, const SYSDT_LsPrefix &key)
{
    constexpr std::size_t addresses[] = {offsetof(SYSDT_LsTePolicy, endpoint),
                                         offsetof(SYSDT_LsTePolicy, originatorAddress)};
    for (const std::size_t address : addresses)
        if (field.offset == address + offsetof(LsIpAddr, ipv4))
            return key.bytes[address + offsetof(LsIpAddr, family)] != 0;
    return false;
}

} // namespace

/// The fields to turn are those of the route type's layout: SYSDT_LSPrefix_Node_Endian, SYSDT_LSPrefix_Link_Endian,
/// SYSDT_LSPrefix_Ipv4Prefix_Endian, SYSDT_LSPrefix_Ipv6Prefix_Endian, SYSDT_LSPrefix_TePolicy_Endian,
/// SYSDT_LSPrefix_Srv6Sid_Endian.
u32 SYSDT_LSPrefixEndian(void *first, u32, u32, void *data)
{
    if (first == nullptr || data == nullptr)
        return SYSDT_ERR_NULL_PTR;
    auto &record = *static_cast<SYSDT_LsPrefix *>(data);
    const u32 route_type = byte_swapped(u32{record.head.routeType}); // (1)
    for (const Field &field : ls_layout_of(route_type).fields)       // (2) (3)
        if (route_type != SYSDT_LS_TE_POLICY || !is_idle(field, record))
            reverse_numbers({{&field, 1}, SYSDT_LS_SIZE}, {record.bytes, SYSDT_LS_SIZE});
    return SYSDT_OK;
}
