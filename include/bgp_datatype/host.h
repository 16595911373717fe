/* SPDX-FileCopyrightText: 2026 The bgpdt authors */
/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * The host boundary: what a host hands to the data types and what it provides for them.
 *
 * The plug-in is a loadable module with C linkage. It exports the callbacks declared in bgp_datatype.h and imports
 * the services declared here, which the process that loads it must define. Numbers are 32 bits wide on every host,
 * pointers are the machine's own, and structures have their natural alignment unless they are said to be packed.
 */
#pragma once

#ifdef __cplusplus
#include <cstddef>
#include <cstdint>
extern "C" {
#else
#include <stddef.h>
#include <stdint.h>
#endif

/* ------------------------------------------------------------------------------------------------ status codes */

#define SYSDT_OK 0x0u                     /**< Done. */
#define SYSDT_ERR_FAIL 0x801701u          /**< Text that does not parse, a value out of range, a refused mode. */
#define SYSDT_ERR_NULL_PTR 0x801705u      /**< A required pointer is null. */
#define SYSDT_ERR_NO_MEMORY 0x801706u     /**< The host gave no memory. */
#define SYSDT_ERR_PARAM 0x801707u         /**< An empty help request, a short buffer, a script value of another kind. */
#define SYSDT_ERR_UNSUPPORTED 0x80170Au   /**< Mode 4, a mode above 6, a form that the mode does not allow. */
#define SYSDT_ERR_LENGTH 0x80170Cu        /**< A length that is not the type's. */
#define SYSDT_ERR_INVALID_VALUE 0x80170Du /**< A value that is not allowed or cannot be shown. */
#define SYSDT_ERR_MISMATCH 0x80170Fu      /**< Another type or length than the structured form demands. */
#define SYSDT_ERR_OUTPUT 0x801711u        /**< A structured form could not be built. */
#define SYSDT_ERR_TOO_LONG 0x801717u      /**< A script string longer than its field. */

/* ------------------------------------------------------------------------------------------------ kinds */

#define SYSDT_KIND_BINARY 0x06u /**< Plain bytes; the kind of a binary copy. */
#define SYSDT_KIND_STRING 0x19u /**< Text; the kind of everything printed. */
#define SYSDT_KIND_EXTEND 0x1Au /**< A structured type. */

/* ------------------------------------------------------------------------------------------------ structures */

/** The conversion context. Opaque to the types but for three fields; what lies behind them is the host's. */
typedef struct SYSDT_Context {
    uint8_t opaque_0[14];
    uint8_t mode;    /**< Offset 14: the conversion mode, 0 to 6. */
    uint8_t variant; /**< Offset 15: the output variant. */
    uint8_t opaque_16[8];
    uint32_t handle; /**< Offset 24: the owner of memory taken with SYS_DataTypeMallocByHandle. */
} SYSDT_Context;

/** What the host asks of Help. Both words must be non-zero; the rest is the host's. */
typedef struct SYSDT_HelpRequest {
    uint32_t first;
    uint32_t second;
} SYSDT_HelpRequest;

/** The help texts of a value, prepared by SYSDT_InitHelpInfo. */
typedef struct SYSDT_HelpInfo {
    uint32_t count; /**< How many entries there are. */
    char **entries; /**< The texts; the host owns each once it is stored. */
} SYSDT_HelpInfo;

/**
 * Text to binary.
 *
 * @param textLength  the text's length with its terminating NUL
 * @param text        NUL-terminated; trimming may cut its end
 * @param outKind     receives the type id
 * @param outLength   receives the value's size in bytes
 * @param outData     receives a fresh block that holds the value and belongs to the host
 */
typedef uint32_t SYSDT_FormatIn(SYSDT_Context *context, uint32_t unused, uint32_t textLength, char *text,
                                uint16_t *outKind, uint16_t *outLength, void **outData);

/**
 * Binary to text (kind SYSDT_KIND_STRING, the length with its NUL) or to a copy (kind SYSDT_KIND_BINARY).
 * A block already in *outData is written to; otherwise one is taken from the host.
 */
typedef uint32_t SYSDT_FormatOut(SYSDT_Context *context, uint32_t typeId, uint32_t dataLength, const void *data,
                                 uint16_t *outKind, uint16_t *outLength, void **outData);

/** Whether a binary value is one of the type's. */
typedef uint32_t SYSDT_Check(const void *first, uint32_t unused, uint32_t dataLength, const void *data);

/** Stores a text that describes the accepted input in entry 0 of the help information. */
typedef uint32_t SYSDT_Help(SYSDT_Context *context, uint32_t unused2, uint32_t unused3, const void *fourth,
                            const SYSDT_HelpRequest *request, SYSDT_HelpInfo *info);

/** Orders two values: 1, 0 or -1, or a status where a type says so. */
typedef int32_t SYSDT_Compare(const void *unused, uint32_t dataLength, const void *first, const void *second);

/** Stores the value as a script table, under the field name, in the table at the index. */
typedef uint32_t SYSDT_LuaSet(void *state, int32_t tableIndex, const char *fieldName, uint32_t unused,
                              uint32_t bufferLength, const void *data);

/** Reads the value from the script table under the field name in the table at the index. */
typedef uint32_t SYSDT_LuaGet(void *state, int32_t tableIndex, const char *fieldName, uint32_t unused,
                              uint32_t bufferLength, void *data);

/** Reverses the byte order of the value's host-order numbers in place. */
typedef uint32_t SYSDT_Endian(void *first, uint32_t unused2, uint32_t unused3, void *data);

/** Reads a route key from the fields of the script table at the index itself. */
typedef uint32_t SYSDT_ScriptReader(void *state, void *value, int32_t tableIndex);

/** One registered data type: 60 bytes with 32-bit pointers, 96 with 64-bit ones. A null slot is no operation. */
typedef struct SYSDT_Record {
    uint16_t typeId;
    uint16_t dataLength; /**< Size of the binary form in bytes. */
    uint16_t baseKind;   /**< SYSDT_KIND_BINARY, SYSDT_KIND_STRING or SYSDT_KIND_EXTEND. */
    char name[18];       /**< Padded with NUL. */
    SYSDT_FormatIn *formatIn;
    SYSDT_FormatOut *formatOut;
    SYSDT_Check *check;
    SYSDT_Help *help;
    SYSDT_Compare *compare;
    void *reserved; /**< Always null. */
    SYSDT_LuaSet *luaSet;
    SYSDT_LuaGet *luaGet;
    SYSDT_Endian *endian;
} SYSDT_Record;

/** One kind of value behind a sub-kind word. A null slot is no operation. */
typedef struct SYSDT_DispatchRow {
    uint32_t kind;
    char name[20]; /**< Padded with NUL. */
    SYSDT_FormatIn *formatIn;
    SYSDT_FormatOut *formatOut;
    SYSDT_Check *check;
    SYSDT_Help *help;
    SYSDT_Compare *compare;
    SYSDT_LuaSet *luaSet;
    SYSDT_LuaGet *luaGet;
} SYSDT_DispatchRow;

/** The reader of one sub-kind's script table. */
typedef struct SYSDT_ScriptReadRow {
    uint32_t index;
    SYSDT_ScriptReader *reader;
} SYSDT_ScriptReadRow;

/* ------------------------------------------------------------------------------------------------ registration */

/** Takes a record into the registry. The record stays valid as long as the plug-in is loaded. */
uint32_t SYS_Drm_RegisterDataType(uint32_t handle, const SYSDT_Record *record);

/** Reports a diagnostic and returns. */
void KPL_Assert(const char *source, uint32_t line, const char *message);

/* ------------------------------------------------------------------------------------------------ memory, help */

/** Takes a block that belongs to the conversion of the handle; null when memory is out, contents undefined. */
void *SYS_DataTypeMallocByHandle(uint32_t handle, uint32_t size);
/** Takes a plain block; null when memory is out, contents undefined. */
void *SYS_DataTypeMalloc(uint32_t size);
/** Releases a block of either allocator, or nothing for null. */
void SYS_DataTypeFree(void *block);

/** Prepares `count` null entries. */
uint32_t SYSDT_InitHelpInfo(uint32_t handle, SYSDT_HelpInfo *info, uint32_t count);
/** Releases the entries' texts and the array. */
void SYSDT_ClearHelpInfo(SYSDT_HelpInfo *info);
/** Whether the platform's symbol rules let an IPv4 address be entered here: 0 if so. */
uint32_t KPL_CheckBySymbolForIPV4(SYSDT_Context *context, const SYSDT_HelpRequest *request, SYSDT_HelpInfo *info);

/* ------------------------------------------------------------------------------------------------ text */

/** Cuts white space at both ends, in place; returns the first character kept, null for null. */
char *SYSDT_BTrim(char *text);
/** As SYSDT_BTrim. */
char *PAL_StrTrim(char *text);
/** 1 if the text holds any white space, else 0. */
uint32_t NCF_IsSpaceInString(const char *text);
/** 1 for 0-9, a-f and A-F, else 0. */
uint32_t NCF_IsHex(char character);
/** An ASCII lower-case copy, the NUL included. */
void SMP_ToLowerString(const char *source, char *destination);
/** ASCII lower case, in place. */
void PAL_lowercase(char *text);
uint32_t PAL_StrLen(const char *text);
char *PAL_StrStr(const char *text, const char *part);
char *PAL_StrChr(const char *text, int32_t character);
char *PAL_StrRChr(const char *text, int32_t character);
int32_t PAL_MemCmp(const void *first, const void *second, uint32_t length);

/* ------------------------------------------------------------------------------------------------ numbers */

/** One or more decimal digits and nothing else, in range: 0 and the number. */
uint32_t SMP_StrToUint32(const char *text, uint32_t *number);
uint32_t PAL_StrToUint32(const char *text, uint32_t *number);
uint32_t PAL_StrToUint64(const char *text, uint64_t *number);
/** The value of the leading hexadecimal digits. */
uint32_t SMP_atoulx(const char *text);
/** 0 when written. */
uint32_t PAL_Uint32ToStr(uint32_t value, char *buffer, uint32_t base);
/** As strtoul, 32 bits wide. */
uint32_t PAL_strtoul(const char *text, char **end, int32_t base);

/* ------------------------------------------------------------------------------------------------ addresses */

/** Exactly four decimal octets without leading zeros; the first octet is the number's top byte. */
uint32_t SYSDT_Str2Ipv4(const char *text, uint32_t *address);
uint32_t PAL_StrToIpAddr(const char *text, uint32_t *address);
/** IPv6 text (RFC 4291), an IPv4 tail included, to network order. */
uint32_t SYSDT_Str2Ipv6(const char *text, uint8_t address[16]);
uint32_t SMP_InetAToN6(const char *text, uint8_t address[16]);
/** Family 2 gives 4 bytes, family 10 gives 16, network order. */
uint32_t SMP_InetAToN(int32_t family, const char *text, void *address);
/** Dotted quad; the buffer holds 16 characters. */
char *PAL_IpAddrToStr(uint32_t address, char *buffer);
/** Canonical IPv6 text (RFC 5952), mapped and compatible addresses with a dotted tail; the buffer holds 46. */
char *PAL_Inet_ntoa_b_ipv6(const uint8_t address[16], char *buffer);
/** The same text; null when it does not fit. */
const char *inet_ntop6(const uint8_t address[16], char *buffer, uint32_t size);
/**
 * Orders two 21-byte address fields by family, then by the address that the family names (any family but 0 names
 * the IPv6 address): 1, 0 or -1.
 */
int32_t SYSDT_Ipv4Ipv6Compare(uint32_t length, const void *first, const void *second);
/** Three groups of 1 to 4 hexadecimal digits joined by "-". */
uint32_t SMP_Str2Mac(const char *text, uint8_t mac[6]);

/* ------------------------------------------------------------------------------------------------ bounded C library */

/* C11 Annex K argument order. The copying functions return 0 or an error. */
int memcpy_s(void *destination, size_t destinationSize, const void *source, size_t count);
int memset_s(void *destination, size_t destinationSize, int value, size_t count);
int strcpy_s(char *destination, size_t destinationSize, const char *source);
int strncpy_s(char *destination, size_t destinationSize, const char *source, size_t count);
/** -1 when the text does not fit. */
int sprintf_s(char *destination, size_t destinationSize, const char *format, ...);
/** -1 when the text does not fit `count` characters. */
int snprintf_s(char *destination, size_t destinationSize, size_t count, const char *format, ...);
/** Always terminates; returns the characters now in the buffer, -1 on failure. */
int snprintf_truncated_s(char *destination, size_t destinationSize, const char *format, ...);
/** A size_t stands behind each "%s" and "%c" pointer. */
int sscanf_s(const char *text, const char *format, ...);

/* ------------------------------------------------------------------------------------------------ generic callbacks */

SYSDT_Compare SYSDT_Uint32Compare;
SYSDT_Compare SYSDT_BlockCompare;
SYSDT_FormatIn SYSDT_StringFormatIn;
SYSDT_FormatOut SYSDT_StringFormatOut;
SYSDT_Help SYSDT_StringHelp;
SYSDT_Compare SYSDT_StringCompare;
SYSDT_LuaSet SYSDT_StringLuaSet;
SYSDT_LuaGet SYSDT_StringLuaGet;
SYSDT_FormatIn SYS_DT_UINT32IndexFormatIn;
SYSDT_FormatOut SYS_DT_IndexFormatOut;
SYSDT_LuaSet SYSDT_Uint32LuaSet;
SYSDT_LuaGet SYSDT_Uint32LuaGet;

/* ------------------------------------------------------------------------------------------------ script tables */

/*
 * A stack of script values. Negative indexes count from the top; 1 is the first value of an array. The engine may
 * leave any of these by longjmp when its memory is out; the host catches that around the whole callback.
 */

/** Pushes a new table with room for so many array values and named fields. */
void SYSDT_SPTI_CreateTable(void *state, int32_t arraySlots, int32_t recordSlots);
int32_t SYSDT_SPTI_GetTop(void *state);
void SYSDT_SPTI_Pop(void *state, int32_t count);
void SYSDT_SPTI_PushUInt(void *state, uint32_t number);
void SYSDT_SPTI_PushInt64(void *state, int64_t number);
void SYSDT_SPTI_PushString(void *state, const char *text);
void SYSDT_SPTI_PushLString(void *state, const char *text, uint32_t length);
/** Pops the value and stores it under the key in the table at the index. */
void SYSDT_SPTI_SetField(void *state, int32_t index, const char *key);
/** Pops a value and the key below it and stores them in the table at the index. */
void SYSDT_SPTI_SetTable(void *state, int32_t index);
/** Pushes the field's value; nil for what is missing or what is asked of no table. */
void SYSDT_SPTI_GetField(void *state, int32_t index, const char *key);
/** Replaces the key on top by its value in the table at the index. */
void SYSDT_SPTI_GetTable(void *state, int32_t index);
/* 1 if the value has that very type, else 0; nothing is coerced. */
uint32_t SYSDT_SPTI_IsTable(void *state, int32_t index);
uint32_t SYSDT_SPTI_IsNumber(void *state, int32_t index);
uint32_t SYSDT_SPTI_IsString(void *state, int32_t index);
/** An integer modulo 2^32, a float when it is whole; 0 for anything else. */
uint32_t SYSDT_SPTI_ToUInt(void *state, int32_t index);
int64_t SYSDT_SPTI_ToInt64(void *state, int32_t index);
/** Null for what is no string. */
const char *SYSDT_SPTI_ToString(void *state, int32_t index);
/** A string's bytes, a table's border. */
uint32_t SYSDT_SPTI_ObjLen(void *state, int32_t index);

#ifdef __cplusplus
}
static_assert(offsetof(SYSDT_Context, mode) == 14 && offsetof(SYSDT_Context, handle) == 24);
static_assert(sizeof(SYSDT_Record) == 24 + 9 * sizeof(void *));
static_assert(sizeof(SYSDT_DispatchRow) == 24 + 7 * sizeof(void *));
#endif
