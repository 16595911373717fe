/* SPDX-FileCopyrightText: 2026 The bgpdt authors */
/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Everything that the plug-in exports. The callbacks' forms and contracts are told with their types in host.h.
 */
#pragma once

#include "bgp_datatype/host.h"
#include "bgp_datatype/values.h"

#ifdef __cplusplus
extern "C" {
#endif

#pragma GCC visibility push(default)

/* ------------------------------------------------------------------------------------------------ registration */

/** Registers every record with the host's handle, name-index types first. Always 0. */
uint32_t Bgp_InitDataType(uint32_t handle);
/** Registers the name-index types. Always 0. */
uint32_t BGP_RegisterDataType(uint32_t handle);
/** Registers the types with callbacks of their own. Always 0. */
uint32_t BGP_RegisterExtendDataType(uint32_t handle);

/** What the registration functions register, in that order. */
extern const SYSDT_Record g_astBgpDataTypeExtendDefineTbl[SYSDT_EXTEND_TYPE_COUNT];
extern const SYSDT_Record g_astBgpDataTypeNameIndexDefineTbl[SYSDT_NAME_INDEX_TYPE_COUNT];

/* ------------------------------------------------------------------------------------------------ callbacks */

/* Of every type and every kind of route key, as the tables in values.h name them; some are the host's. */

#define SYSDT_DECLARE_formatIn(name) SYSDT_FormatIn name;
#define SYSDT_DECLARE_formatOut(name) SYSDT_FormatOut name;
#define SYSDT_DECLARE_check(name) SYSDT_Check name;
#define SYSDT_DECLARE_help(name) SYSDT_Help name;
#define SYSDT_DECLARE_compare(name) SYSDT_Compare name;
#define SYSDT_DECLARE_luaSet(name) SYSDT_LuaSet name;
#define SYSDT_DECLARE_luaGet(name) SYSDT_LuaGet name;
#define SYSDT_DECLARE_endian(name) SYSDT_Endian name;
#define SYSDT_DECLARE_SLOT(slot, name) SYSDT_DECLARE_##slot(name)
#define SYSDT_DECLARE_TYPE(name, id, kind, size, layout, about, grammar, texts, slots) slots
#define SYSDT_DECLARE_ROW(kind, name, layout, reader, about, texts, slots)                                             \
    SYSDT_ScriptReader reader;                                                                                         \
    slots
#define SYSDT_DECLARE_RD_ROW(kind, name, about, texts, slots) slots

SYSDT_EXTEND_TYPES(SYSDT_DECLARE_TYPE, SYSDT_DECLARE_SLOT)
SYSDT_BOL_ROWS(SYSDT_DECLARE_ROW, SYSDT_DECLARE_SLOT)
SYSDT_BOLRD_ROWS(SYSDT_DECLARE_RD_ROW, SYSDT_DECLARE_SLOT)

#undef SYSDT_DECLARE_formatIn
#undef SYSDT_DECLARE_formatOut
#undef SYSDT_DECLARE_check
#undef SYSDT_DECLARE_help
#undef SYSDT_DECLARE_compare
#undef SYSDT_DECLARE_luaSet
#undef SYSDT_DECLARE_luaGet
#undef SYSDT_DECLARE_endian
#undef SYSDT_DECLARE_SLOT
#undef SYSDT_DECLARE_TYPE
#undef SYSDT_DECLARE_ROW
#undef SYSDT_DECLARE_RD_ROW

/* ------------------------------------------------------------------------------------------------ text helpers */

/** Reads a leading "%u": 0 and the number, or -1 and 0; -1 alone when an argument is null. */
int32_t SYSDT_atoul(const char *text, uint32_t *number);
/** The dots in a text of decimal digits and dots; SYSDT_ERR_FAIL when there is anything else. */
uint32_t SYSDT_getStrDotNum(const char *text);
/** 1 if the character's low 8 bits are a hexadecimal digit, else 0. */
uint32_t BGP_DATATYPE_IsHex(uint32_t character);
/**
 * Notes in positions[section - 1] that a section begins behind its separator. Section 0, the first, is not noted;
 * one above 3 is SYSDT_ERR_FAIL.
 */
uint32_t SYSDT_GetSectionPos(uint32_t section, uint32_t separatorPosition, uint32_t positions[3]);

/* ------------------------------------------------------------------------------------------------ AS number */

/**
 * Parses an AS number, plain from 1 or dotted from 1.0 (RFC 5396).
 *
 * @param text  NUL-terminated; white space at its ends is cut off in place
 * @param out   receives the number; undefined after a failure
 * @return 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL
 */
uint32_t SYSDT_Str2AsNum(char *text, SYSDT_AsNum *out);
/** As SYSDT_Str2AsNum, but takes a plain 0 too. */
uint32_t SYSDT_Str2AsNumExt(char *text, SYSDT_AsNum *out);

/* ------------------------------------------------------------------------------------------------ communities */

/**
 * Parses a community: a well-known name in any case, a number, or aa:nn (RFC 1997).
 *
 * @param handle  owns the block that a name look-up takes and releases
 * @param text    NUL-terminated; white space at its ends is cut off in place
 * @return 0, SYSDT_ERR_NULL_PTR, SYSDT_ERR_FAIL, or SYSDT_ERR_NO_MEMORY when a name could not be looked up
 */
uint32_t SYSDT_Str2Community(uint32_t handle, char *text, SYSDT_Community *out);
/** Parses the notations without letters, by the number of colons in the text: 0, SYSDT_ERR_NULL_PTR, SYSDT_ERR_FAIL. */
uint32_t SYSDT_Str2CommunitySetCmty(uint32_t colons, const char *text, SYSDT_Community *out);
/**
 * Looks up a well-known name, in any case.
 *
 * @param textLength  the text's length without its NUL
 * @param out         its community is set when the name is known
 * @return 0, SYSDT_ERR_NULL_PTR, SYSDT_ERR_FAIL for another name, SYSDT_ERR_NO_MEMORY
 */
uint32_t BRM_GetWellKnownCmyVal(uint32_t handle, uint32_t textLength, SYSDT_Community *out, const char *text);
/**
 * Prints a community that has no well-known name.
 *
 * @param characters  receives the text's length without its NUL
 * @param buffer      holds 32 characters
 * @param outData     receives the buffer when the notation is unknown
 * @return 0, SYSDT_ERR_NULL_PTR, SYSDT_ERR_INVALID_VALUE for an unknown notation
 */
uint32_t SYSDT_FormatNoWellKnowCmy(uint32_t *characters, char *buffer, void **outData, const SYSDT_Community *value);

/**
 * Parses a large community a:b:c (RFC 8092).
 *
 * @param handle  not used
 * @param text    NUL-terminated; white space at its ends is cut off in place
 * @return 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL
 */
uint32_t SYSDT_Str2LargeCommunity(uint32_t handle, char *text, SYSDT_LargeCommunity *out);
/** Reads the three numbers of a text known to hold two colons: 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL. */
uint32_t SYSDT_Str2LargeCommunityForTwoColonType(const char *text, SYSDT_LargeCommunity *out);

/**
 * Parses an extended community from its route target form (RFC 4360, RFC 5668).
 *
 * @param text  NUL-terminated; white space at its ends is cut off in place
 * @return 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL
 */
uint32_t SYSDT_Str2ExtCommunity(char *text, SYSDT_Octets *value);
/** Prints a 4-octet AS route target into 256 characters by its text form. 0 or SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_ExtCommunity2StrRT4AS(const SYSDT_Octets *value, uint32_t *length, char *buffer);
/** Prints AS number and bandwidth into 256 characters. 0 or SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_ExtCommunity2StrBW(const SYSDT_Octets *value, uint32_t *length, char *buffer);

/* ------------------------------------------------------------------------------------------------ VPN identifiers */

/**
 * Parses a route distinguisher (RFC 4364).
 *
 * @param text    NUL-terminated; white space at its ends is cut off in place
 * @param output  receives the value; undefined after a failure
 * @return 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL
 */
uint32_t SYSDT_Str2VrfRd(char *text, SYSDT_Octets *output);
/** Prints a route distinguisher into 256 characters. 0, SYSDT_ERR_NULL_PTR, or SYSDT_ERR_FAIL for an unknown type. */
uint32_t SYSDT_VrfRd2Str(const SYSDT_Octets *input, uint32_t *outputLength, char *buffer);
/** 1 if any of the eight bytes is set, 0 if all are zero: despite its name, 1 is the valid one. */
uint32_t SYSDT_IsInValidRdOrRt(const uint8_t bytes[8]);
/** As SYSDT_Str2VrfRd, for a route target (RFC 4360). */
uint32_t SYSDT_Str2VrfRt(char *text, SYSDT_Octets *output);
/** As SYSDT_Str2VrfRd, for a site of origin (RFC 4364). */
uint32_t SYSDT_Str2Soo(char *text, SYSDT_Octets *output);
/** Parses "address.number" (RFC 5701), the number 0 or 1. 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_PARAM. */
uint32_t SYSDT_Str2VrfRtV6(char *text, SYSDT_VrfRtV6 *output);
/** As SYSDT_Str2VrfRd, with "*" for any number. */
uint32_t SYSDT_Str2RtpRd(char *text, SYSDT_RtpRd *output);
/** As SYSDT_VrfRd2Str; the conversion mode changes nothing. */
uint32_t SYSDT_RtpRd2Str(const SYSDT_RtpRd *input, uint32_t *outputLength, char *buffer, uint32_t mode);
/** Parses "oui:index" in lower-case hexadecimal (RFC 2685). 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL. */
uint32_t SYSDT_Str2VpnId(char *text, SYSDT_VpnId *output);
/** Prints a VPN identifier into 256 characters. 0 or SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_VpnId2Str(const SYSDT_VpnId *input, uint32_t *outputLength, char *buffer);

/** The kinds behind BOLRD's sub-kind word. */
extern const SYSDT_DispatchRow g_astBOL_RD_ProcTable[SYSDT_BOLRD_KINDS];

/* ------------------------------------------------------------------------------------------------ route keys */

/** The kinds of route key by sub-kind; the row number is the kind. A null slot is no operation. */
extern const SYSDT_DispatchRow g_astBOL_PREFIX_ProcTable[SYSDT_BOL_KINDS];
/** The readers of their script tables; each reads the fields of the table at the index itself. */
extern const SYSDT_ScriptReadRow g_astBOL_PREFIX_LuaGetTable[SYSDT_BOL_KINDS];

/** An address as it is read from a script: which member is meant, the family says. 24 bytes. */
typedef struct SYSDT_ScriptAddress {
    uint32_t ipv4;    /**< First octet in the top byte. */
    uint8_t ipv6[16]; /**< Network order. */
    uint32_t family;  /**< 0 IPv4, 1 IPv6. */
} SYSDT_ScriptAddress;

/**
 * Reads the address on top of the script stack: a number for address type 0, a table of 16 numbers for 1, which is then
 * popped; nothing for any other type.
 *
 * @return 0, SYSDT_ERR_NULL_PTR, or SYSDT_ERR_PARAM when what stands there is of another kind
 */
uint32_t SYSDT_BolPrefixLuaParseToIPv4IPv6(void *state, uint32_t addressType, SYSDT_ScriptAddress *destination);

/** Prints the address into 256 characters. 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL. */
uint32_t SYSDT_Ipv6Prefix2Str(const SYSDT_BolIpv6 *value, char *buffer, uint32_t *outputLength);

/**
 * Parses an extended route target: the route target's forms, zero included, or six octets as "aabb-ccdd-eeff".
 *
 * @return 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL
 */
uint32_t SYSDT_Str2VrfRtExt(char *text, SYSDT_BolRouteTarget *output);
/**
 * Counts the separators of an extended route target's text, by which its form is chosen.
 *
 * @return 0, SYSDT_ERR_NULL_PTR, or SYSDT_ERR_FAIL unless it is 1 to 100 hexadecimal digits and separators
 */
uint32_t SYSDT_CheckVrfRtExtStr(const char *text, uint32_t *dots, uint32_t *colons, uint32_t *hyphens);

/**
 * Parses "address/length" of a VPNv4 multicast prefix.
 *
 * @param output  undefined after a failure
 * @return 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL
 */
uint32_t SYSDT_Str2Vpnv4McastPrefix(char *text, SYSDT_Vpnv4Mcast *output);

/** As SYSDT_Str2Vpnv4McastPrefix; the group becomes 0. */
uint32_t SYSDT_Str2MdtPrefix(char *text, SYSDT_Mdt *output);

/**
 * Parses the key of a route-policy-distribution route, "type/peer/distinguisher".
 *
 * @param text  NUL-terminated; white space at its ends is cut off in place
 * @param key   cleared; undefined after a failure
 * @return 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL
 */
uint32_t SYSDT_Str2RpdPrefix(char *text, SYSDT_Rpd *key);
/** Prints the key into 256 characters. 0 or SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_RpdPrefix2Str(const SYSDT_Rpd *key, char *buffer, uint32_t *outputLength);
SYSDT_Endian SYSDT_RpdPrefixEndian;

/**
 * Parses the key of a segment routing policy, "[distinguisher][colour][endpoint]".
 *
 * @param text  NUL-terminated; white space at its ends is cut off in place
 * @param key   cleared; undefined after a failure
 * @return 0, SYSDT_ERR_NULL_PTR, SYSDT_ERR_FAIL, or SYSDT_ERR_PARAM for an endpoint that is no IPv6 address
 */
uint32_t SYSDT_Str2SrPolicyPrefix(char *text, SYSDT_SrPolicy *key);
/** As SYSDT_Str2SrPolicyPrefix, for a trimmed text with an IPv4 endpoint. */
uint32_t SYSDT_Str2Srv4PolicyPrefix(char *text, SYSDT_SrPolicy *key);
/** As SYSDT_Str2SrPolicyPrefix, for a trimmed text with an IPv6 endpoint. */
uint32_t SYSDT_Str2Srv6PolicyPrefix(char *text, SYSDT_SrPolicy *key);
/** Prints the key into 256 characters, with the endpoint that its family names. 0 or SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_SrPolicyPrefix2Str(const SYSDT_SrPolicy *key, char *buffer, uint32_t *outputLength);
/** As SYSDT_SrPolicyPrefix2Str, with the IPv4 endpoint. */
uint32_t SYSDT_Srv4PolicyPrefix2Str(const SYSDT_SrPolicy *key, char *buffer, uint32_t *outputLength);
/** As SYSDT_SrPolicyPrefix2Str, with the IPv6 endpoint. */
uint32_t SYSDT_Srv6PolicyPrefix2Str(const SYSDT_SrPolicy *key, char *buffer, uint32_t *outputLength);
/** The groups of the IPv6 endpoint as numbers. 0 or SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_Ipv6AddrNtoH(const SYSDT_SrPolicy *key, uint16_t groups[8]);
SYSDT_Endian SYSDT_SrPolicyPrefixEndian;
/** Reads the 89-byte value, but for its sub-kind, from the table at the index itself. */
uint32_t SYSDT_SrPolicyPrefixLuaGet(void *state, int32_t tableIndex, void *value);

/** As SYSDT_Str2SrPolicyPrefix, for an SD-WAN route, "type-port-site-node", with its sub-kind. */
uint32_t SYSDT_Str2SdwanPrefix(char *text, SYSDT_BolSdwan *value);
/** As SYSDT_Str2SdwanPrefix, for a trimmed text with an IPv4 node, without the sub-kind. */
uint32_t SYSDT_Str2SdwanV4Prefix(char *text, SYSDT_BolSdwan *value);
/** As SYSDT_Str2SdwanPrefix, for a trimmed text with an IPv6 node, without the sub-kind. */
uint32_t SYSDT_Str2SdwanV6Prefix(char *text, SYSDT_BolSdwan *value);
/** Prints the value into 256 characters, with the node that its family names. 0 or SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_SdwanPrefix2Str(const SYSDT_BolSdwan *value, char *buffer, uint32_t *outputLength);
/** As SYSDT_SdwanPrefix2Str, with the IPv4 node. */
uint32_t SYSDT_SdwanV4Prefix2Str(const SYSDT_BolSdwan *value, char *buffer, uint32_t *outputLength);
/** As SYSDT_SdwanPrefix2Str, with the IPv6 node. */
uint32_t SYSDT_SdwanV6Prefix2Str(const SYSDT_BolSdwan *value, char *buffer, uint32_t *outputLength);
SYSDT_Endian SYSDT_SdwanPrefixEndian;
/** Reads the 89-byte value, but for its sub-kind, from the table at the index itself. */
uint32_t SYSDT_SdwanPrefixLuaGet(void *state, int32_t tableIndex, void *value);

/* ------------------------------------------------------------------------------------------------ EVPN keys */

/**
 * Parses an EVPN route key (RFC 7432, RFC 9136, RFC 9251) of any route type.
 *
 * @param text     NUL-terminated; white space at its ends is cut off in place
 * @param value    cleared; receives the key, not the sub-kind word; undefined after a failure
 * @param lenient  0: an Ethernet segment identifier must have type 00 or 01, in an auto-discovery route 00 to 05
 * @return 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL
 */
uint32_t SYSDT_Str2EvnPrefix(char *text, SYSDT_BolEvpn *value, uint32_t lenient);

/* As SYSDT_Str2EvnPrefix, of one route type each and with a text that is trimmed already. */
uint32_t SYSDT_Str2Ad(char *text, SYSDT_BolEvpn *value, uint32_t lenient);
uint32_t SYSDT_Str2EvnMac(char *text, SYSDT_BolEvpn *value);
uint32_t SYSDT_Str2Inclusive(char *text, SYSDT_BolEvpn *value);
uint32_t SYSDT_Str2Es(char *text, SYSDT_BolEvpn *value, uint32_t lenient);
uint32_t SYSDT_Str2IpPrefix(char *text, SYSDT_BolEvpn *value);
uint32_t SYSDT_Str2Ipv6Prefix(char *text, SYSDT_BolEvpn *value);
/** One of the next three, by the number of colons outside brackets. */
uint32_t SYSDT_Str2EvpnMcRoute(char *text, SYSDT_BolEvpn *value);
uint32_t SYSDT_Str2EvpnSmetRoute(char *text, SYSDT_BolEvpn *value);
uint32_t SYSDT_Str2EvpnJoinRoute(char *text, SYSDT_BolEvpn *value);
uint32_t SYSDT_Str2EvpnLeaveRoute(char *text, SYSDT_BolEvpn *value);

/* The same with an IPv6 address alone. */
uint32_t SYSDT_Str2Ipv6EvnMac(char *text, SYSDT_BolEvpn *value);
uint32_t SYSDT_Str2Ipv6EvnInc(char *text, SYSDT_BolEvpn *value);
uint32_t SYSDT_Str2Ipv6EvpnEs(char *text, SYSDT_BolEvpn *value, uint32_t lenient);

/* The end of a text alone, from the length of the address on. */
/** IPv6, of a MAC/IP advertisement. */
uint32_t SYSDT_Str2Ipv6EvnMacFillPrefix(char *text, SYSDT_BolEvpn *value);
/** IPv4, of an Ethernet segment route. */
uint32_t SYSDT_Str2EsDetail(char *text, SYSDT_BolEvpn *value);

/**
 * Parses an Ethernet segment identifier, "0011.2233.4455.6677.8899" and neither all zeros nor all Fs.
 *
 * @param mode     0: read strictly it has type 00; 1: 00 or 01
 * @param lenient  0: read strictly
 * @return 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL
 */
uint32_t SYSDT_Str2EsiBas(const char *text, uint8_t out[10], uint32_t mode, uint32_t lenient);
/** As SYSDT_Str2EsiBas; read strictly it has type 00 to 05. The mode changes nothing. */
uint32_t SYSDT_Str2EsiForAd(const char *text, uint8_t out[10], uint32_t mode, uint32_t lenient);
/** 0 if the character may stand at the position (0 or 1) of an identifier's type, else SYSDT_ERR_FAIL. */
uint32_t SYSDT_CheckEsiTopTwo(char character, uint32_t position, uint32_t lenient);
/** As SYSDT_CheckEsiTopTwo, in an auto-discovery route. */
uint32_t SYSDT_CheckEsiTopTwoForAd(char character, uint32_t position, uint32_t lenient);

/*
 * Readers of one field at a cursor, which goes to the end of the field: the next colon, or the end of the text if the
 * field is the last. 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL.
 */
uint32_t SYSDT_Str2EvpnUintNum(char **cursor, uint32_t *out, uint32_t maxDigits, uint32_t min, uint32_t max,
                               uint32_t isLast);
/** An IPv6 address in brackets ends behind them; if it is not the last field, no colon may follow. */
uint32_t SYSDT_Str2EvpnIpAddr(char **cursor, SYSDT_EvpnAddress *field, uint32_t isLast);
/** Reads strictly. */
uint32_t SYSDT_Str2EvpnEsi(char **cursor, uint8_t out[10], uint32_t isLast, uint32_t unused);
/** Parses "length:[address]", the length at most 128. 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL. */
uint32_t SYSDT_Str2EvpnIpv6(char *text, uint8_t out[16], uint32_t *outLength);

/**
 * Prints a key by its route type into 256 characters.
 *
 * @param length  the number of characters is added to it
 * @return 0, SYSDT_ERR_NULL_PTR, or SYSDT_ERR_FAIL for an unknown route type
 */
uint32_t SYSDT_EvnPrefix2Str(const SYSDT_BolEvpn *value, char *buffer, uint32_t *length);

/* Printers of one route type each, whatever the value's; they add to the length too. */
uint32_t SYSDT_EVN_AdKeyToStr(const SYSDT_BolEvpn *value, char *buffer, uint32_t size, uint32_t *length);
uint32_t SYSDT_EVN_MacKeyToStr(const SYSDT_BolEvpn *value, char *buffer, uint32_t size, uint32_t *length);
uint32_t SYSDT_EVN_IncKeyToStr(const SYSDT_BolEvpn *value, char *buffer, uint32_t size, uint32_t *length);
uint32_t SYSDT_EVN_EsKeyToStr(const SYSDT_BolEvpn *value, char *buffer, uint32_t size, uint32_t *length);
uint32_t SYSDT_EVN_IpPrefixKeyToStr(const SYSDT_BolEvpn *value, char *buffer, uint32_t size, uint32_t *length);
uint32_t SYSDT_EVPN_SmetKeyToStr(const SYSDT_BolEvpn *value, char *buffer, uint32_t size, uint32_t *length);
uint32_t SYSDT_EVPN_JoinKeyToStr(const SYSDT_BolEvpn *value, char *buffer, uint32_t size, uint32_t *length);
uint32_t SYSDT_EVPN_LeaveKeyToStr(const SYSDT_BolEvpn *value, char *buffer, uint32_t size, uint32_t *length);

/*
 * Printers of one piece at a position: they move it on, take what they printed off the size and add it to the length.
 * 0, SYSDT_ERR_NULL_PTR, or SYSDT_ERR_FAIL for no space at all.
 */
uint32_t SYSDT_EVPN_EsiToStr(char **position, uint32_t *size, uint32_t *length, const uint8_t esi[10]);
/** A number that is not the text's first piece has a colon in front. */
uint32_t SYSDT_EVPN_NumToStr(char **position, uint32_t *size, uint32_t *length, uint32_t number, uint32_t first);
/** ":length:address"; nothing for a family other than 0 and 1. */
uint32_t SYSDT_EVPN_IpAddrToStr(char **position, uint32_t *size, uint32_t *length, const SYSDT_EvpnAddress *field,
                                uint32_t lengthByte);
/** As SYSDT_EVPN_IpAddrToStr, at a position that stays. */
uint32_t SYSDT_EVPN_OriginIpToStr(const SYSDT_EvpnAddress *field, char *buffer, uint32_t size, uint32_t *length,
                                  uint32_t lengthByte);

/* Orders of two keys of one route type: 1, 0 or -1; 0 for null too. */
int32_t SYSDT_EVPN_SmetCompare(const SYSDT_EvpnKey *first, const SYSDT_EvpnKey *second);
int32_t SYSDT_EVPN_JoinCompare(const SYSDT_EvpnKey *first, const SYSDT_EvpnKey *second);
int32_t SYSDT_EVPN_LeaveCompare(const SYSDT_EvpnKey *first, const SYSDT_EvpnKey *second);

/* ------------------------------------------------------------------------------------------------ multicast VPN keys
 */

/**
 * Parses a multicast-VPN route key (RFC 6514), in either grammar.
 *
 * @param text   NUL-terminated; white space at its ends is cut off in place
 * @param value  cleared; receives the sub-kind word and the key
 * @return 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL
 */
uint32_t SYSDT_Str2NGPrefix(char *text, SYSDT_BolValue *value);
/** As SYSDT_Str2NGPrefix, for the grammar with hyphens alone. */
uint32_t SYSDT_Str2NGIpv6Prefix(char *text, SYSDT_BolValue *value);

/*
 * Builders of one kind each from a text that is already cut into sections (each ends with a NUL); `positions` says
 * where the second and the following ones begin. 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL.
 */
uint32_t SYSDT_Str2NGIpv6Prefix_Type3(char *text, SYSDT_BolValue *value, const uint32_t positions[3]);
uint32_t SYSDT_Str2NGIpv6Prefix_Type43(char *text, SYSDT_BolValue *value, const uint32_t positions[3]);
uint32_t SYSDT_Str2NGIpv6Prefix_Type5(char *text, SYSDT_BolValue *value, const uint32_t positions[3]);
uint32_t SYSDT_Str2NGIpv6Prefix_Type41(char *text, SYSDT_BolValue *value, const uint32_t positions[3]);
uint32_t SYSDT_Str2NGIpv6Prefix_Type42(char *text, SYSDT_BolValue *value, const uint32_t positions[3]);
uint32_t SYSDT_Str2NGIpv6Prefix_Type6_7(char *text, SYSDT_BolValue *value, const uint32_t positions[3]);
/** The kind of two sections, by what the second one is. */
uint32_t SYSDT_Str2NGIpv6Prefix_Type5_41_42(char *text, SYSDT_BolValue *value, const uint32_t positions[3]);
/** An IPv6 address alone, as an IPv6 key. */
uint32_t SYSDT_Str2NGIpv6Prefix_Type1(const char *text, SYSDT_BolIpv6 *value);
/** Two IPv4 addresses, the second at the position. 0 whatever it finds, or SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_Str2NGPrefix_Type5_41(char *text, SYSDT_BolValue *value, uint32_t secondSection);
/** An address of either family: a text with ":" is IPv6. 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL. */
uint32_t SYSDT_Str2IPv4IPv6(const char *text, SYSDT_EvpnAddress *field);
/** 1 for an IPv6 multicast address, 0 for another, SYSDT_ERR_FAIL for what is none. */
uint32_t SYSDT_IsIpv6MultiCastAddr(const char *text);
/** Prints a key by its sub-kind into 256 characters. 0, SYSDT_ERR_NULL_PTR, or SYSDT_ERR_FAIL for another sub-kind. */
uint32_t SYSDT_NGPrefix2Str(const SYSDT_BolValue *value, char *buffer, uint32_t *length);

SYSDT_LuaGet SYSDT_NGPrefix2LuaGet;
/** Pushes a table of the 16 bytes of an address field's IPv6 member. 0 or SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_BolPrefixLuaSetToIPv6(void *state, const void *field);

/* ------------------------------------------------------------------------------------------------ BGP-LS keys */

/** 1 if all 16 bytes of an IPv6 address are zero, else 0. */
uint32_t SYSDT_ipv6AddrUnSpecified(const uint8_t address[16]);

/**
 * Parses a BGP-LS key, groups in brackets one behind the other.
 *
 * @param text    NUL-terminated; white space at its ends is cut off in place
 * @param record  cleared and filled; partly filled after a failure
 * @return 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL
 */
uint32_t SYSDT_Str2LSPrefix(char *text, SYSDT_LsPrefix *record);

/*
 * The parser: a text is cut into its groups, and each goes to the handler of the first pattern row whose keyword it
 * begins with. What a group nests is parsed in the same way by a table of its own into a scratch record, from which
 * the row of the route type fills the key.
 */

typedef struct LsPrefixParseContext LsPrefixParseContext;

/**
 * Handles one group.
 *
 * @param bit      the row's
 * @param value    the group behind the keyword; a handler may change it
 * @param target   the key, or the scratch record of a nested table
 * @return 0 or a status, which ends the parsing
 */
typedef uint32_t BgpLsHandler(uint32_t bit, char *value, void *target, LsPrefixParseContext *context);

/**
 * Fills the key.
 *
 * @param parsed  a scratch record; a number (u32) for protocol and identifier
 * @param record  the key, SYSDT_LsPrefix
 */
typedef uint32_t BgpLsSlot(const void *parsed, void *record, LsPrefixParseContext *context);

/** A kind of group. */
typedef struct LsPrefixPattern {
    const char *keyword;
    uint32_t bit;          /**< Marks the group as seen. */
    uint32_t exact;        /**< 1: the group is the keyword, 0: it begins with it. */
    BgpLsHandler *handler; /**< Null: the group is refused. */
} LsPrefixPattern;

/** What a route type is made of. A null slot refuses the group. */
typedef struct LsPrefixNlriParser {
    uint32_t routeType;
    uint32_t required; /**< Bits of the groups that must have been seen. */
    BgpLsSlot *protocol;
    BgpLsSlot *identifier;
    BgpLsSlot *localNode;
    BgpLsSlot *remoteNode;
    BgpLsSlot *link;
    BgpLsSlot *prefix;
    BgpLsSlot *te;
    BgpLsSlot *sid;
} LsPrefixNlriParser;

struct LsPrefixParseContext {
    const char *text; /**< Trimmed. */
    uint32_t length;
    uint32_t seen;                 /**< Bits of the groups seen so far. */
    SYSDT_LsPrefix *output;        /**< The key. */
    uint32_t routeType;            /**< 0 ahead of its group. */
    uint32_t protocolId;           /**< Likewise. */
    const LsPrefixNlriParser *row; /**< The route type's; null ahead of its group. */
    const LsPrefixNlriParser *parsers;
    uint32_t rowCount;
};

/* The scratch records of nested groups. `seen` has the bits of their own tables. */

typedef struct LsNodeDescScratch {
    uint32_t seen;
    SYSDT_AsNum as;
    uint32_t bgpLsId;
    SYSDT_AsNum memberAs;
    uint32_t bgpRouterId;
    uint32_t ospfArea;
    uint32_t reserved;
    uint32_t ipv4RouterId;
    uint8_t ipv6RouterId[16];
    uint8_t igpRouterId[SYSDT_LS_ROUTER_ID_SIZE];
} LsNodeDescScratch;

typedef struct LsLinkScratch {
    uint32_t seen;
    uint32_t linkLocalId;
    uint32_t linkRemoteId;
    uint32_t ipv4Interface;
    uint32_t ipv4Neighbor;
    uint8_t ipv6Interface[16];
    uint8_t ipv6Neighbor[16];
    uint32_t mtId;
} LsLinkScratch;

typedef struct LsPrefixScratch {
    uint32_t seen;
    uint32_t mtId;
    uint32_t ospfRouteType;
    uint32_t ipv4Prefix;
    uint8_t ipv4Length;
    uint8_t ipv6Prefix[16];
    uint8_t ipv6Length;
} LsPrefixScratch;

typedef struct LsTeScratch {
    uint32_t seen;
    uint8_t protocolOrigin;
    uint8_t flags;
    LsIpAddr endpoint;
    uint32_t color;
    SYSDT_AsNum originatorAs;
    LsIpAddr originatorAddress;
    uint32_t discriminator;
} LsTeScratch;

typedef struct LsSidScratch {
    uint32_t seen;
    uint32_t mtId;
    uint8_t sid[16];
} LsSidScratch;

/** By the route type. */
extern const LsPrefixNlriParser g_bgplsPrefixParsers[SYSDT_LS_ROUTE_TYPES];
/** The groups of a key. */
extern const LsPrefixPattern g_bgplsPrefixPattern[24];
/** The groups within LOCAL and REMOTE, LINK, PREFIX, TE and SID. */
extern const LsPrefixPattern g_bgplsPrefixNodeDescPartten[8];
extern const LsPrefixPattern g_bgplsPrefixLinkPartten[8];
extern const LsPrefixPattern g_bgplsPrefixPrefixPartten[3];
extern const LsPrefixPattern g_bgplsPrefixTePartten[7];
extern const LsPrefixPattern g_bgplsPrefixSidPartten[2];

/**
 * Prepares the parsing of a text into a cleared record.
 *
 * @param text  trimmed in place; it and the record must outlive the context
 * @return a block of SYS_DataTypeMalloc; null when a pointer is null, memory is out, or the trimmed text has less than
 *         1 or more than 500 characters or white space among them
 */
LsPrefixParseContext *SYSDT_CreateLsPrefixParseContext(char *text, SYSDT_LsPrefix *record,
                                                       const LsPrefixNlriParser *parserTable, uint32_t rowCount);
/** Parses the groups of a key. 0, SYSDT_ERR_NULL_PTR or what a handler answers. */
uint32_t BgpLsParseLsPrefixEntry(const char *text, SYSDT_LsPrefix *record, LsPrefixParseContext *context);
/** Parses the groups within LOCAL or REMOTE. */
uint32_t BgpLsParseNodeDesc(const char *text, LsNodeDescScratch *scratch, LsPrefixParseContext *context);
/** Parses groups by a table. 0, SYSDT_ERR_NULL_PTR, SYSDT_ERR_FAIL, or the status of the handler that failed. */
uint32_t SYSDT_ParseLsPrefixStr(const char *text, const LsPrefixPattern *patterns, uint32_t patternCount, void *target,
                                LsPrefixParseContext *context);
/** The first row that the group matches, or null. */
const LsPrefixPattern *SYSDT_ParseLsPrefixFindPattern(const char *group, const LsPrefixPattern *patterns,
                                                      uint32_t patternCount);
/**
 * Copies what stands between the brackets that the text begins with.
 *
 * @param bufferSize  at least two more than the group has characters
 * @param outLength   receives the group's length
 * @return 0, SYSDT_ERR_NULL_PTR, or SYSDT_ERR_FAIL without a bracket, without its counterpart or without room
 */
uint32_t SYSDT_GetLsPrefixSubString(const char *text, char *buffer, uint32_t bufferSize, uint32_t *outLength);
/** 0 when every group that the route type requires was seen, else SYSDT_ERR_FAIL. */
uint32_t SYSDT_Str2LsPrefixPostCheck(const SYSDT_LsPrefix *record, const LsPrefixParseContext *context);

/** The bits that a local node of a link or a SID must have, and must not have, by the protocol. */
uint32_t BgpLsNodeDescMandentoryFields(uint32_t protocol);
uint32_t BgpLsNodeDescUnsupportFields(uint32_t protocol);

BgpLsHandler BgpLsParseTypeNode, BgpLsParseTypeLink, BgpLsParseTypeIpv4Prefix, BgpLsParseTypeIpv6Prefix,
    BgpLsParseTypeTePolicy, BgpLsParseTypeSrv6Sid;
BgpLsHandler BgpLsParseProtoIsis1, BgpLsParseProtoIsis2, BgpLsParseProtoOspf2, BgpLsParseProtoDirect,
    BgpLsParseProtoStatic, BgpLsParseProtoOspf3, BgpLsParseProtoBgp, BgpLsParseProtoSR;
BgpLsHandler BgpLsParseIdentifier, BgpLsParseLocalNode, BgpLsParseRemoteNode, BgpLsParseLink, BgpLsParsePrefix,
    BgpLsParseTe, BgpLsParseSid, BgpLsParseDiscard;

BgpLsHandler BgpLsParseNodeDescAs, BgpLsParseNodeDescLsId, BgpLsParseNodeDescBgpRouterId, BgpLsParseNodeDescOspfAreaId,
    BgpLsParseNodeDescIgpRouterId, BgpLsParseNodeDescMemberAs, BgpLsParseNodeDescIpv4RouteId,
    BgpLsParseNodeDescIpv6RouteId;
BgpLsHandler BgpLsParseLinkIdentifier, BgpLsParseLinkLocal, BgpLsParseLinkRemote, BgpLsParseLinkLinkLocalId,
    BgpLsParseLinkLinkRemoteId, BgpLsParseLinkIfAddress, BgpLsParseLinkPeerAddress, BgpLsParseLinkMtId;
BgpLsHandler BgpLsParsePrefixMtId, BgpLsParsePrefixOspfRouteType, BgpLsParsePrefixPrefix;
BgpLsHandler BgpLsParseTeProtocolOrigin, BgpLsParseTeFlag, BgpLsParseTeEndpoint, BgpLsParseTeColor,
    BgpLsParseTeOriginatorAs, BgpLsParseTeOriginatorAddress, BgpLsParseTeDiscriminator;
BgpLsHandler BgpLsParseSidMtId, BgpLsParseSidSid;

BgpLsSlot BgpLsNodeParseProtocol, BgpLsLinkParseProtocol, BgpLsIpv4PrefixParseProtocol, BgpLsIpv6PrefixParseProtocol,
    BgpLsTePolicyParseProtocol, BgpLsSrv6SidParseProtocol;
BgpLsSlot BgpLsNodeParseIdentifier, BgpLsLinkParseIdentifier, BgpLsIpv4PrefixParseIdentifier,
    BgpLsIpv6PrefixParseIdentifier, BgpLsTePolicyParseIdentifier, BgpLsSrv6SidParseIdentifier;
BgpLsSlot BgpLsNodeParseLocalNode, BgpLsLinkParseLocalNode, BgpLsIpv4PrefixParseLocalNode,
    BgpLsIpv6PrefixParseLocalNode, BgpLsTePolicyParseLocalNode, BgpLsSrv6SidParseLocalNode;
BgpLsSlot BgpLsLinkParseRemoteNode, BgpLsLinkParseLink, BgpLsIPv4PrefixParsePrefix, BgpLsIPv6PrefixParsePrefix,
    BgpLsTePolicyParseTe, BgpLsSrv6SidParseSid;

/** Prints a key into 513 characters by its route type. 0, SYSDT_ERR_NULL_PTR, or SYSDT_ERR_FAIL for another type. */
uint32_t SYSDT_LsPrefix2Str(const SYSDT_LsPrefix *record, char *buffer, uint32_t *lengthOut);

/*
 * Printers of one route type each, whatever the record's own.
 *
 * @param size       of the buffer; what does not fit is cut off
 * @param lengthOut  the text's length, without its NUL, is added to it
 * @return 0, SYSDT_ERR_NULL_PTR, or SYSDT_ERR_FAIL for a buffer of no size
 */
uint32_t SYSDT_LS_NodeKeyToStr(const SYSDT_LsPrefix *record, char *buffer, uint32_t size, uint32_t *lengthOut);
uint32_t SYSDT_LS_LinkKeyToStr(const SYSDT_LsPrefix *record, char *buffer, uint32_t size, uint32_t *lengthOut);
uint32_t SYSDT_LS_Ipv4PrefixKeyToStr(const SYSDT_LsPrefix *record, char *buffer, uint32_t size, uint32_t *lengthOut);
uint32_t SYSDT_LS_Ipv6PrefixKeyToStr(const SYSDT_LsPrefix *record, char *buffer, uint32_t size, uint32_t *lengthOut);
uint32_t SYSDT_LS_TePolicyKeyToStr(const SYSDT_LsPrefix *record, char *buffer, uint32_t size, uint32_t *lengthOut);
uint32_t SYSDT_LS_Srv6SidKeyToStr(const SYSDT_LsPrefix *record, char *buffer, uint32_t size, uint32_t *lengthOut);
/** The TE group of a TE policy by itself. */
uint32_t SYSDT_LS_TePolicy_TeKeyToStr(const SYSDT_LsPrefix *record, char *buffer, uint32_t size, uint32_t *lengthOut);

/* The names of route types and protocols, cut to the buffer's size. 0, for what has no name too, or SYSDT_ERR_NULL_PTR.
 */
uint32_t SYSDT_LS_RouteTypeEnum2Str(uint32_t type, char *buffer, uint32_t size);
uint32_t SYSDT_LS_ProtclTypeEnum2Str(uint32_t protocol, char *buffer, uint32_t size);

/* ------------------------------------------------------------------------------------------------ attributes */

/**
 * Parses a duration, "1d2h3m4s".
 *
 * @param text     NUL-terminated; white space at its ends is cut off and letters become small, in place
 * @param seconds  0 after a failure
 * @return 0, SYSDT_ERR_NULL_PTR or SYSDT_ERR_FAIL
 */
uint32_t SYSDT_Str2TimeRange(char *text, uint32_t *seconds);
/*
 * SYSDT_TimeRangeLuaSet and SYSDT_TimeRangeLuaGet are for a bare number: without a field name it is left on the stack, and
 * is the one at the index.
 */

/** Prints the structure into 256 characters. 0 or SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_PrefixSidStruct2Str(const SYSDT_SidStructure *value, char *buffer, uint32_t *characters);

/**
 * Builds the structured form of a client VRF's name: number and name as items of kind (u16), length with NUL (u16),
 * text and NUL.
 *
 * @param length  receives how many bytes were written
 * @param buffer  holds 257 bytes
 * @return 0, SYSDT_ERR_NULL_PTR, or SYSDT_ERR_FAIL when the host cannot write the number
 */
uint32_t SYS_DT_CVrfName_Str2Cplx(const SYSDT_CVrfName *record, uint16_t *length, char *buffer);

/*
 * Attribute bitmaps are listed from a display record: an entry count (u16) at byte 24, and from byte 44 on the entries,
 * each of kind (u16), length (u16) and so many bytes: a line template, the bitmap, and the values that fill the
 * template.
 */
/**
 * Fills the template and lists the bitmap.
 *
 * @param record   reaches as far as its entries tell
 * @param output   holds 4096 characters
 * @param variant  changes nothing
 * @return 0, 1 for a record that cannot be listed, SYSDT_ERR_NO_MEMORY, SYSDT_ERR_NULL_PTR
 */
uint32_t SYSDT_AttrIdBitmap_BuildRun(uint32_t handle, const void *record, char *output, uint32_t variant);
/**
 * Prints a value into the template's next placeholder and takes that piece off the template.
 *
 * @param kind          what the value is: 2, 4, 6 numbers, 21, 22, 38 addresses, 25 text; any other prints nothing
 * @param length        of the value in bytes
 * @param lineTemplate  at most 299 characters
 * @param limit         size of what is left at the position
 * @return how many characters were written; 0 too when the placeholder does not fit the value or memory is out
 */
uint32_t SYSDT_AttrIdDataTypeFormat(uint32_t handle, uint32_t kind, uint32_t length, char *position, char *lineTemplate,
                                    const void *data, uint32_t limit);
/** Splits a template in front of its second "%"; without one, both parts are all of it. 0 or SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_FormatAttrIdStrFind(const char *lineTemplate, char *head, char *rest, uint32_t limit);
/** Lists the bitmap behind the label: 0, 1 for an empty bitmap, SYSDT_ERR_NO_MEMORY, SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_AttrIdBitmapToStr(uint32_t handle, const SYSDT_AttrIdBitmap *bitmap, char *output, char *label,
                                 uint32_t variant);
/** Finds the runs of identifiers, from index 1 on; a run of one has the end 0. Returns how many there are. */
uint32_t SYSDT_AttrIdBitmap_GetPairs(const SYSDT_AttrIdBitmap *bitmap, uint16_t starts[129], uint16_t ends[129]);
/** Lists runs into 4096 characters, ten a line: 0, SYSDT_ERR_NO_MEMORY, SYSDT_ERR_NULL_PTR. */
uint32_t SYSDT_AttrIdToStrOut(uint32_t handle, uint32_t runCount, const uint16_t *starts, const uint16_t *ends,
                              char *label, char *output);
/**
 * Cuts a label at the marker, and then at its last blank; what stands behind the marker goes to the tail, which is
 * empty without one. 0 or SYSDT_ERR_NULL_PTR.
 */
uint32_t SYSDT_AttrIdStrCut_New(char *label, char *tail, const char *marker, uint32_t limit);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif
