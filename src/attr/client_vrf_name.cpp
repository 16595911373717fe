// SPDX-FileCopyrightText: 2026 The bgpdt authors
// SPDX-License-Identifier: Apache-2.0
/// @file
/// CVRFNAME: the name of a client VRF (RFC 4364), a string of the host's but for mode 2 of FormatOut, which gets a
/// record and gives a structured form.
///
///      0            32       36           40              0      2        4
///     +------------+--------+------------+               +------+--------+----------+---+------ ... ------+
///     | name       | number | has number |   u32    to   | kind | length | text     | 0 | the next item   |   u16
///     +------------+--------+------------+               +------+--------+----------+---+------ ... ------+
///
/// The numbers are in host order; an item's length counts its NUL. Kind 1 is the number in decimal, kind 0 the name.
///
/// Irregularities, all deliberate:
///  (1) The structured form is reported with the type's own kind.
///  (2) It always stands in a block of its own, the caller's is not used.
///  (3) An empty name gives a header of zeros and one NUL behind it, which its length does not count; the number, if
///      there is one, does not matter then.
///  (4) There is a number only if the last word is 1.
///  (5) The type id and the length that the host tells must be just so.
#include "bgp_datatype/bgp_datatype.h"
#include "common/bytes.hpp"
#include "common/contract.hpp"
#include "common/digits.hpp"

using namespace bgpdt;

namespace {

constexpr u16 name_item = 0;
constexpr u16 number_item = 1;
constexpr std::size_t block_size = 257;

char *put_header(char *at, u16 kind, std::size_t length)
{
    store(at, kind);
    store(at + 2, static_cast<u16>(length));
    return at + 4;
}

/// Writes an item and returns its end.
char *put_item(char *at, u16 kind, std::string_view text)
{
    at = put_header(at, kind, text.size() + 1);
    std::memcpy(at, text.data(), text.size());
    at[text.size()] = '\0';
    return at + text.size() + 1;
}

} // namespace

u32 SYS_DT_CVrfName_Str2Cplx(const SYSDT_CVrfName *record, u16 *length, char *buffer)
{
    if (record == nullptr || length == nullptr || buffer == nullptr)
        return SYSDT_ERR_NULL_PTR;
    const std::string_view name(record->name, strnlen(record->name, sizeof record->name));
    char *end = buffer;
    *length = 0;
    if (name.empty()) { // (3)
        end = put_header(end, 0, 0);
        *end++ = '\0';
    } else {
        char number[most_u32_digits + 1];
        if (record->hasNumber == 1) { // (4)
            if (PAL_Uint32ToStr(record->number, number, 10) != SYSDT_OK)
                return SYSDT_ERR_FAIL;
            end = put_item(end, number_item, number);
        }
        end = put_item(end, name_item, name);
    }
    *length = static_cast<u16>(end - buffer);
    return SYSDT_OK;
}

u32 SYS_DT_APPCVRFNAME_FormatOut(Context *context, u32 type, u32 size, const void *value, u16 *kind, u16 *length,
                                 void **data)
{
    if (context == nullptr || value == nullptr || !Output{kind, length, data}.complete())
        return SYSDT_ERR_NULL_PTR;
    if (context->mode != 2)
        return SYSDT_StringFormatOut(context, type, size, value, kind, length, data);
    if (type != SYSDT_TYPE_CVRFNAME || size != sizeof(SYSDT_CVrfName)) // (5)
        return SYSDT_ERR_MISMATCH;
    char *const block = static_cast<char *>(take(Allocator::handle, *context, block_size)); // (2)
    if (block == nullptr)
        return SYSDT_ERR_NO_MEMORY;
    std::memset(block, 0, block_size);
    const u32 status = SYS_DT_CVrfName_Str2Cplx(static_cast<const SYSDT_CVrfName *>(value), length, block);
    *kind = SYSDT_TYPE_CVRFNAME; // (1)
    *data = block;
    return status == SYSDT_OK ? SYSDT_OK : SYSDT_ERR_OUTPUT;
}
