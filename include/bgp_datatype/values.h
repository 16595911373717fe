/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * The binary forms of the data types, byte by byte.
 *
 * Structures are packed: a value may stand at any address. Numbers are in the processor's own byte order; arrays of
 * bytes are in network order on every processor, and no Endian callback moves them.
 */
#pragma once

#include "bgp_datatype/host.h"

#define SYSDT_PACKED __attribute__((packed))

/* ------------------------------------------------------------------------------------------------ type ids */

#define SYSDT_TYPE_ASNUM 0x00FFu
#define SYSDT_TYPE_COMMUNITY 0x0100u
#define SYSDT_TYPE_EXTCOMMUNITY 0x0101u
#define SYSDT_TYPE_VRFRT 0x0102u
#define SYSDT_TYPE_VRFRD 0x0103u
#define SYSDT_TYPE_SOO 0x0104u
#define SYSDT_TYPE_RTPRD 0x0116u
#define SYSDT_TYPE_BOLPREFIX 0x0117u
#define SYSDT_TYPE_BOLRD 0x0118u
#define SYSDT_TYPE_EVNPREFIX 0x0119u
#define SYSDT_TYPE_TIME_RANGE 0x011Cu
#define SYSDT_TYPE_ASNUMEXT 0x011Du
#define SYSDT_TYPE_ATTRIDBITMAP 0x0122u
#define SYSDT_TYPE_CVRFNAME 0x0124u
#define SYSDT_TYPE_L2VPNPREFIX 0x0126u
#define SYSDT_TYPE_VPNV4MCPREFIX 0x0127u
#define SYSDT_TYPE_MDTPREFIX 0x0128u
#define SYSDT_TYPE_VPNID 0x012Fu
#define SYSDT_TYPE_VRFRTV6 0x0140u
#define SYSDT_TYPE_LARGECOMMUNITY 0x0141u
#define SYSDT_TYPE_ASNUM_ENHANCE 0x0145u
#define SYSDT_TYPE_CMNTY_ENHANCE 0x0146u
#define SYSDT_TYPE_SID_STRUCTURE 0x0148u
#define SYSDT_TYPE_EXTCOMMUNITY_BW 0x0149u
#define SYSDT_TYPE_BGPLSPREFIX 0x0513u

/* ------------------------------------------------------------------------------------------------ AS number */

#define SYSDT_AS_PLAIN 0u  /**< asplain: one decimal number. */
#define SYSDT_AS_DOTTED 1u /**< asdot+: high and low 16 bits as two decimal numbers. */

/** An AS number (RFC 6793) and the notation (RFC 5396) that it was written in. 8 bytes. */
typedef struct SYSDT_PACKED SYSDT_AsNum {
    uint32_t asNumValue; /**< 0 is no AS number. */
    uint32_t asType;     /**< SYSDT_AS_PLAIN, or anything else for SYSDT_AS_DOTTED. */
} SYSDT_AsNum;

/** One AS number of a list. 5 bytes. */
typedef struct SYSDT_PACKED SYSDT_AsNumEntry {
    uint32_t asNumValue; /**< 0 marks an unused entry. */
    uint8_t asType;      /**< As in SYSDT_AsNum. */
} SYSDT_AsNumEntry;

#define SYSDT_AS_LIST_ENTRIES 256

/** AS numbers in the order of the text; the rest is zero. 1280 bytes. */
typedef struct SYSDT_PACKED SYSDT_AsNumList {
    SYSDT_AsNumEntry entry[SYSDT_AS_LIST_ENTRIES];
} SYSDT_AsNumList;

/* ------------------------------------------------------------------------------------------------ communities */

#define SYSDT_COMMUNITY_NUMBER 0u /**< A plain number, or a well-known community. */
#define SYSDT_COMMUNITY_PAIR 1u   /**< aa:nn, two 16-bit numbers. */
#define SYSDT_COMMUNITY_EMPTY 2u  /**< An unused entry of a list. */

/** A community (RFC 1997) and the notation that it was written in. 8 bytes. */
typedef struct SYSDT_PACKED SYSDT_Community {
    uint32_t community;
    uint32_t type; /**< SYSDT_COMMUNITY_NUMBER, _PAIR or _EMPTY. */
} SYSDT_Community;

/** One community of a list. 5 bytes. */
typedef struct SYSDT_PACKED SYSDT_CommunityEntry {
    uint32_t community;
    uint8_t type; /**< As in SYSDT_Community. */
} SYSDT_CommunityEntry;

#define SYSDT_COMMUNITY_LIST_ENTRIES 32

/** Communities in the order of the text; the rest is SYSDT_COMMUNITY_EMPTY. 160 bytes. */
typedef struct SYSDT_PACKED SYSDT_CommunityList {
    SYSDT_CommunityEntry entry[SYSDT_COMMUNITY_LIST_ENTRIES];
} SYSDT_CommunityList;

/** A large community (RFC 8092). 16 bytes. */
typedef struct SYSDT_PACKED SYSDT_LargeCommunity {
    uint32_t largeCommunity[3]; /**< Global administrator, local data 1, local data 2. */
    uint32_t type;              /**< 0 after parsing. */
} SYSDT_LargeCommunity;

/* How a route distinguisher, a route target or an extended community was written. */
#define VRF_RD_FORM_IPV4 0u   /**< IPv4 address and number: 192.0.2.1:100 */
#define VRF_RD_FORM_AS2 1u    /**< 2-octet AS number and number: 64496:100 */
#define VRF_RD_FORM_AS4 2u    /**< 4-octet AS number and number: 65536:100 */
#define VRF_RD_FORM_AS4DOT 3u /**< Dotted 4-octet AS number and number: 1.0:100 */

/** An extended community (RFC 4360) or a route distinguisher (RFC 4364), and the form it was written in. 12 bytes. */
typedef struct SYSDT_PACKED SYSDT_Octets {
    uint8_t octets[8]; /**< Two octets of type, six of value, network order. */
    uint32_t form;     /**< VRF_RD_FORM_..., host order. */
} SYSDT_Octets;

/** A link-bandwidth extended community as numbers. 12 bytes. */
typedef struct SYSDT_PACKED SYSDT_ExtCommunityBw {
    uint16_t bitMask; /**< Type and sub-type. */
    uint16_t asnNn;   /**< AS number; AS_TRANS (RFC 6793) stands for one of four octets. */
    uint64_t bandwidth;
} SYSDT_ExtCommunityBw;

/* ------------------------------------------------------------------------------------------------ VPN identifiers */

/** An IPv6-address-specific route target (RFC 5701). 24 bytes. */
typedef struct SYSDT_PACKED SYSDT_VrfRtV6 {
    uint8_t octets[20]; /**< Code (2), IPv6 address (16), local number (2), network order. */
    uint32_t type;      /**< 0 after parsing, host order. */
} SYSDT_VrfRtV6;

/* How an RTP route distinguisher was written: the VRF_RD_FORM_... of the same form, plus one. */
#define RTP_RD_FORM_IPV4 1u
#define RTP_RD_FORM_AS2 2u
#define RTP_RD_FORM_AS4 3u
#define RTP_RD_FORM_AS4DOT 4u

/** A route distinguisher (RFC 4364) whose assigned number may be a wildcard. 10 bytes. */
typedef struct SYSDT_PACKED SYSDT_RtpRd {
    uint8_t octets[8]; /**< Type (2) and value (6), network order; the number is 0 behind a wildcard. */
    uint8_t form;      /**< RTP_RD_FORM_... */
    uint8_t star;      /**< 1: the number is the wildcard. */
} SYSDT_RtpRd;

/** A global VPN identifier (RFC 2685). 8 bytes. */
typedef struct SYSDT_PACKED SYSDT_VpnId {
    uint32_t oui;   /**< Organizationally unique identifier, at most 0xFFFFFF. */
    uint32_t index; /**< VPN index. */
} SYSDT_VpnId;

/** A route distinguisher behind a sub-kind word. 16 bytes. */
typedef struct SYSDT_PACKED SYSDT_BolRd {
    uint32_t subKind; /**< 0. */
    SYSDT_Octets rd;
} SYSDT_BolRd;

/* ------------------------------------------------------------------------------------------------ route keys */

/* What stands behind a route key's sub-kind word: the row of the dispatch table. */
#define SYSDT_BOL_IPV4 0u
#define SYSDT_BOL_EVN 1u
#define SYSDT_BOL_NG_TYPE_2 2u
#define SYSDT_BOL_NG_TYPE_3 3u
#define SYSDT_BOL_NG_TYPE_4_2 4u
#define SYSDT_BOL_NG_TYPE_4_3 5u
#define SYSDT_BOL_NG_TYPE_5 6u
#define SYSDT_BOL_NG_TYPE_6 7u
#define SYSDT_BOL_VRFRTEXT 8u
#define SYSDT_BOL_L2VPN 9u
#define SYSDT_BOL_VPNV4MCAST 10u
#define SYSDT_BOL_MDT 11u
#define SYSDT_BOL_RPD 12u
#define SYSDT_BOL_NG_TYPE_4_1 13u
#define SYSDT_BOL_SRPOLICY 14u
#define SYSDT_BOL_IPV6 15u
#define SYSDT_BOL_SDWAN 16u
#define SYSDT_BOL_KINDS 17

#define SYSDT_BOL_SIZE 89

/** A route key of any kind. Bytes that a kind does not use are zero. 89 bytes, as all that follow. */
typedef struct SYSDT_PACKED SYSDT_BolValue {
    uint32_t subKind; /**< SYSDT_BOL_... */
    uint8_t key[SYSDT_BOL_SIZE - 4];
} SYSDT_BolValue;

/** An IP address in a key of EVPN (RFC 7432) or of multicast VPN (RFC 6514). 21 bytes. */
typedef struct SYSDT_PACKED SYSDT_EvpnAddress {
    uint32_t ipv4;    /**< Family 0, first octet in the top byte; else 0. */
    uint8_t ipv6[16]; /**< Family 1, network order; else 0. */
    uint8_t family;   /**< 0: IPv4, 1: IPv6. */
} SYSDT_EvpnAddress;

typedef struct SYSDT_PACKED SYSDT_BolIpv4 {
    uint32_t subKind;
    uint32_t address; /**< First octet in the top byte. */
    uint8_t zero[SYSDT_BOL_SIZE - 8];
} SYSDT_BolIpv4;

typedef struct SYSDT_PACKED SYSDT_BolIpv6 {
    uint32_t subKind;
    uint8_t address[16]; /**< Network order. */
    uint8_t zero[SYSDT_BOL_SIZE - 20];
} SYSDT_BolIpv6;

/* The route types of EVPN: RFC 7432, section 7; RFC 9136, section 3; RFC 9251, section 9. */
#define SYSDT_EVPN_AUTO_DISCOVERY 1u /**< Ethernet auto-discovery. */
#define SYSDT_EVPN_MAC_IP 2u         /**< MAC/IP advertisement. */
#define SYSDT_EVPN_INCLUSIVE 3u      /**< Inclusive multicast Ethernet tag. */
#define SYSDT_EVPN_SEGMENT 4u        /**< Ethernet segment. */
#define SYSDT_EVPN_IP_PREFIX 5u      /**< IP prefix. */
#define SYSDT_EVPN_SELECTIVE 6u      /**< Selective multicast Ethernet tag. */
#define SYSDT_EVPN_JOIN 7u           /**< Multicast membership report (join) synchronisation. */
#define SYSDT_EVPN_LEAVE 8u          /**< Multicast leave synchronisation. */

/** An address behind its length in bits. 22 bytes. */
typedef struct SYSDT_PACKED SYSDT_EvpnSizedAddress {
    uint8_t length;
    SYSDT_EvpnAddress address;
} SYSDT_EvpnSizedAddress;

typedef struct SYSDT_PACKED SYSDT_EvpnAutoDiscovery {
    uint8_t esi[10]; /**< Ethernet segment identifier, network order. */
    uint32_t tag;    /**< Ethernet tag. */
} SYSDT_EvpnAutoDiscovery;

typedef struct SYSDT_PACKED SYSDT_EvpnMacIp {
    uint32_t tag;
    uint8_t macLength; /**< In bits. */
    uint8_t mac[6];    /**< Network order. */
    SYSDT_EvpnSizedAddress ip;
} SYSDT_EvpnMacIp;

/** The route types 3, with the originator's address, and 5, with the prefix. */
typedef struct SYSDT_PACKED SYSDT_EvpnTaggedAddress {
    uint32_t tag;
    SYSDT_EvpnSizedAddress ip;
} SYSDT_EvpnTaggedAddress;

typedef struct SYSDT_PACKED SYSDT_EvpnSegment {
    uint8_t esi[10];
    SYSDT_EvpnSizedAddress ip; /**< The originator. */
} SYSDT_EvpnSegment;

/** Who wants which multicast flow. 70 bytes. */
typedef struct SYSDT_PACKED SYSDT_EvpnMembership {
    uint32_t tag;
    SYSDT_EvpnSizedAddress source;
    SYSDT_EvpnSizedAddress group;
    SYSDT_EvpnSizedAddress originator;
} SYSDT_EvpnMembership;

/** The route types 7 and 8. */
typedef struct SYSDT_PACKED SYSDT_EvpnSync {
    uint8_t esi[10];
    SYSDT_EvpnMembership membership;
    uint32_t sequence; /**< Route type 8: leave group synchronisation number. */
} SYSDT_EvpnSync;

/** The key of an EVPN route. 85 bytes. */
typedef struct SYSDT_PACKED SYSDT_EvpnKey {
    uint8_t routeType; /**< SYSDT_EVPN_... */
    union {
        uint8_t bytes[SYSDT_BOL_SIZE - 5];
        SYSDT_EvpnAutoDiscovery autoDiscovery;
        SYSDT_EvpnMacIp macIp;
        SYSDT_EvpnTaggedAddress inclusive;
        SYSDT_EvpnSegment segment;
        SYSDT_EvpnTaggedAddress prefix;
        SYSDT_EvpnMembership selective;
        SYSDT_EvpnSync sync;
    };
} SYSDT_EvpnKey;

typedef struct SYSDT_PACKED SYSDT_BolEvpn {
    uint32_t subKind;
    SYSDT_EvpnKey key;
} SYSDT_BolEvpn;

/** A route target (RFC 4360), or one made of six written octets. */
typedef struct SYSDT_PACKED SYSDT_BolRouteTarget {
    uint32_t subKind;
    SYSDT_Octets rt;
    uint8_t zero[SYSDT_BOL_SIZE - 16];
} SYSDT_BolRouteTarget;

/** A VPLS block (RFC 4761). */
typedef struct SYSDT_PACKED SYSDT_BolL2Vpn {
    uint32_t subKind;
    uint16_t siteId;
    uint16_t labelOffset;
    uint8_t zero[SYSDT_BOL_SIZE - 8];
} SYSDT_BolL2Vpn;

/* The multicast-VPN keys (RFC 6514), by row. */

typedef struct SYSDT_PACKED SYSDT_BolNg2 {
    uint32_t subKind;
    SYSDT_AsNum as;
    uint8_t zero[SYSDT_BOL_SIZE - 12];
} SYSDT_BolNg2;

typedef struct SYSDT_PACKED SYSDT_BolNg3 {
    uint32_t subKind;
    SYSDT_EvpnAddress source;
    SYSDT_EvpnAddress group;
    SYSDT_EvpnAddress originator;
    uint8_t zero[SYSDT_BOL_SIZE - 67];
} SYSDT_BolNg3;

typedef struct SYSDT_PACKED SYSDT_BolNg42 {
    uint32_t subKind;
    SYSDT_AsNum as;
    SYSDT_EvpnAddress originator;
    uint8_t zero[SYSDT_BOL_SIZE - 33];
} SYSDT_BolNg42;

typedef struct SYSDT_PACKED SYSDT_BolNg43 {
    uint32_t subKind;
    SYSDT_EvpnAddress source;
    SYSDT_EvpnAddress group;
    SYSDT_EvpnAddress originator1;
    SYSDT_EvpnAddress originator2;
    uint8_t zero[SYSDT_BOL_SIZE - 88];
} SYSDT_BolNg43;

typedef struct SYSDT_PACKED SYSDT_BolNg5 {
    uint32_t subKind;
    SYSDT_EvpnAddress source;
    SYSDT_EvpnAddress group;
    uint8_t zero[SYSDT_BOL_SIZE - 46];
} SYSDT_BolNg5;

typedef struct SYSDT_PACKED SYSDT_BolNg6 {
    uint32_t subKind;
    SYSDT_AsNum as;
    SYSDT_EvpnAddress source;
    SYSDT_EvpnAddress group;
    uint8_t zero[SYSDT_BOL_SIZE - 54];
} SYSDT_BolNg6;

typedef struct SYSDT_PACKED SYSDT_BolNg41 {
    uint32_t subKind;
    SYSDT_EvpnAddress originator1;
    SYSDT_EvpnAddress originator2;
    uint8_t zero[SYSDT_BOL_SIZE - 46];
} SYSDT_BolNg41;

/** What Endian of the VPNv4 multicast prefix swaps. 8 bytes. */
typedef struct SYSDT_PACKED SYSDT_Vpnv4Mcast {
    uint32_t prefix;     /**< IPv4 address, first octet in the top byte. */
    uint32_t maskLength; /**< 0 to 32. */
} SYSDT_Vpnv4Mcast;

typedef struct SYSDT_PACKED SYSDT_BolVpnv4Mcast {
    uint32_t subKind;
    SYSDT_Vpnv4Mcast prefix;
    uint8_t zero[SYSDT_BOL_SIZE - 12];
} SYSDT_BolVpnv4Mcast;

/** What Endian of the MDT prefix swaps. 12 bytes. */
typedef struct SYSDT_PACKED SYSDT_Mdt {
    uint32_t prefix;     /**< IPv4 address, first octet in the top byte. */
    uint32_t group;      /**< IPv4 multicast address, likewise. */
    uint32_t maskLength; /**< 0 to 32. */
} SYSDT_Mdt;

/** A multicast distribution tree (RFC 6037). */
typedef struct SYSDT_PACKED SYSDT_BolMdt {
    uint32_t subKind;
    SYSDT_Mdt prefix;
    uint8_t zero[SYSDT_BOL_SIZE - 16];
} SYSDT_BolMdt;

/** The key of a route-policy-distribution route. 27 bytes. */
typedef struct SYSDT_PACKED SYSDT_Rpd {
    uint8_t policyType; /**< 0 or 1. */
    uint8_t zero;
    uint32_t distinguisher;
    uint32_t peer; /**< IPv4 address, first octet in the top byte. */
    uint8_t rest[17];
} SYSDT_Rpd;

typedef struct SYSDT_PACKED SYSDT_BolRpd {
    uint32_t subKind;
    SYSDT_Rpd key;
    uint8_t zero[SYSDT_BOL_SIZE - 31];
} SYSDT_BolRpd;

/** The key of a segment routing policy (RFC 9256). 29 bytes. */
typedef struct SYSDT_PACKED SYSDT_SrPolicy {
    uint32_t distinguisher;
    uint32_t colour;
    uint32_t ipv4;    /**< Endpoint, first octet in the top byte. */
    uint8_t ipv6[16]; /**< Endpoint, network order. */
    uint8_t family;   /**< 0: the endpoint is IPv4; anything else: IPv6. */
} SYSDT_SrPolicy;

typedef struct SYSDT_PACKED SYSDT_BolSrPolicy {
    uint32_t subKind;
    SYSDT_SrPolicy key;
    uint8_t zero[SYSDT_BOL_SIZE - 33];
} SYSDT_BolSrPolicy;

/** The key of an SD-WAN route. 33 bytes. */
typedef struct SYSDT_PACKED SYSDT_Sdwan {
    uint16_t routeType;
    uint16_t zero;
    uint32_t portLocalId;
    uint32_t siteId;
    uint32_t ipv4;    /**< Node, first octet in the top byte. */
    uint8_t ipv6[16]; /**< Node, network order. */
    uint8_t family;   /**< 0: the node is IPv4; anything else: IPv6. */
} SYSDT_Sdwan;

typedef struct SYSDT_PACKED SYSDT_BolSdwan {
    uint32_t subKind;
    SYSDT_Sdwan key;
    uint8_t zero[SYSDT_BOL_SIZE - 37];
} SYSDT_BolSdwan;

/* ------------------------------------------------------------------------------------------------ BGP-LS keys */

/* What a BGP-LS key describes: its route type. */
#define SYSDT_LS_NODE 1u
#define SYSDT_LS_LINK 2u
#define SYSDT_LS_IPV4_PREFIX 3u
#define SYSDT_LS_IPV6_PREFIX 4u
#define SYSDT_LS_TE_POLICY 5u
#define SYSDT_LS_SRV6_SID 6u
#define SYSDT_LS_ROUTE_TYPES 7 /**< 0 included, which describes nothing. */

/* Where the object was learnt: the protocol identifiers (RFC 9552). */
#define SYSDT_LS_ISIS_LEVEL_1 1u
#define SYSDT_LS_ISIS_LEVEL_2 2u
#define SYSDT_LS_OSPFV2 3u
#define SYSDT_LS_DIRECT 4u
#define SYSDT_LS_STATIC 5u
#define SYSDT_LS_OSPFV3 6u
#define SYSDT_LS_BGP 7u
#define SYSDT_LS_SEGMENT_ROUTING 9u

#define SYSDT_LS_NO_MT_ID 0xFFFFFFFFu /**< In place of a multi-topology identifier: none was given. */
#define SYSDT_LS_ROUTER_ID_SIZE 50
#define SYSDT_LS_SIZE 224

/** An IP address of a TE policy. 21 bytes. */
typedef struct SYSDT_PACKED LsIpAddr {
    uint32_t ipv4;    /**< First octet in the top byte. */
    uint8_t ipv6[16]; /**< Network order. */
    uint8_t family;   /**< 0: IPv4, 1: IPv6. */
} LsIpAddr;

/** What every key begins with. 16 bytes. */
typedef struct SYSDT_PACKED SYSDT_LsHead {
    uint32_t routeType;  /**< SYSDT_LS_NODE ... SYSDT_LS_SRV6_SID. */
    uint32_t protocolId; /**< SYSDT_LS_ISIS_LEVEL_1 ... SYSDT_LS_SEGMENT_ROUTING. */
    uint64_t identifier; /**< The routing universe or the instance. */
} SYSDT_LsHead;

/**
 * A node (RFC 9552). Its router identifier is, network order and padded with zeros: for IS-IS the system identifier
 * (6) and the pseudonode (1), for OSPF the router identifier (4) and of a pseudonode the designated router's interface
 * (4). 66 bytes.
 */
typedef struct SYSDT_PACKED SYSDT_LsNodeDesc {
    SYSDT_AsNum as;    /**< Number 0: none. */
    uint32_t bgpLsId;  /**< BGP-LS identifier, written as an IPv4 address. */
    uint32_t ospfArea; /**< Likewise. */
    uint8_t igpRouterId[SYSDT_LS_ROUTER_ID_SIZE];
} SYSDT_LsNodeDesc;

/** A node that may be a BGP speaker's, with a member AS (RFC 9086). 74 bytes. */
typedef struct SYSDT_PACKED SYSDT_LsMemberNodeDesc {
    SYSDT_AsNum as;
    uint32_t bgpLsId;
    SYSDT_AsNum memberAs; /**< Number 0: none. */
    uint32_t ospfArea;
    uint8_t igpRouterId[SYSDT_LS_ROUTER_ID_SIZE];
} SYSDT_LsMemberNodeDesc;

typedef struct SYSDT_PACKED SYSDT_LsNode {
    SYSDT_LsHead head;
    SYSDT_LsNodeDesc local;
} SYSDT_LsNode;

typedef struct SYSDT_PACKED SYSDT_LsLink {
    SYSDT_LsHead head;
    SYSDT_LsMemberNodeDesc local;
    SYSDT_LsMemberNodeDesc remote;
    uint32_t linkLocalId; /**< Link identifiers, written as IPv4 addresses. */
    uint32_t linkRemoteId;
    uint32_t ipv4Interface;
    uint32_t ipv4Neighbor;
    uint8_t ipv6Interface[16];
    uint8_t ipv6Neighbor[16];
    uint32_t mtId; /**< Multi-topology identifier, or SYSDT_LS_NO_MT_ID. */
    uint32_t localBgpRouterId;
    uint32_t remoteBgpRouterId;
} SYSDT_LsLink;

typedef struct SYSDT_PACKED SYSDT_LsIpv4Prefix {
    SYSDT_LsHead head;
    SYSDT_LsNodeDesc local;
    uint32_t mtId;
    uint32_t ospfRouteType;
    uint32_t prefix;
    uint8_t prefixLength;
} SYSDT_LsIpv4Prefix;

typedef struct SYSDT_PACKED SYSDT_LsIpv6Prefix {
    SYSDT_LsHead head;
    SYSDT_LsNodeDesc local;
    uint32_t mtId;
    uint32_t ospfRouteType;
    uint8_t prefix[16];
    uint8_t prefixLength;
} SYSDT_LsIpv6Prefix;

/** An SR policy candidate path (RFC 9857). */
typedef struct SYSDT_PACKED SYSDT_LsTePolicy {
    SYSDT_LsHead head;
    SYSDT_AsNum as;
    uint32_t bgpLsId;
    uint32_t bgpRouterId;
    uint32_t ipv4RouterId; /**< TE router identifiers of the head end. */
    uint8_t ipv6RouterId[16];
    uint8_t protocolOrigin;
    uint8_t flags;
    LsIpAddr endpoint;
    uint32_t color;
    SYSDT_AsNum originatorAs;
    LsIpAddr originatorAddress;
    uint32_t discriminator;
} SYSDT_LsTePolicy;

/** An SRv6 SID (RFC 9514). */
typedef struct SYSDT_PACKED SYSDT_LsSrv6Sid {
    SYSDT_LsHead head;
    SYSDT_LsMemberNodeDesc local;
    uint32_t mtId;
    uint8_t sid[16];
    uint32_t bgpRouterId;
} SYSDT_LsSrv6Sid;

/** The key of a BGP-LS object (RFC 9552): the route type tells which member holds it, and the rest is zero. */
typedef union SYSDT_LsPrefix {
    uint8_t bytes[SYSDT_LS_SIZE];
    SYSDT_LsHead head;
    SYSDT_LsNode node;
    SYSDT_LsLink link;
    SYSDT_LsIpv4Prefix ipv4Prefix;
    SYSDT_LsIpv6Prefix ipv6Prefix;
    SYSDT_LsTePolicy tePolicy;
    SYSDT_LsSrv6Sid srv6Sid;
} SYSDT_LsPrefix;

/* ------------------------------------------------------------------------------------------------ attributes */

/** A duration. 4 bytes. */
typedef struct SYSDT_PACKED SYSDT_TimeRange {
    uint32_t seconds;
} SYSDT_TimeRange;

/** A set of attribute identifiers: identifier n is bit n mod 8, the least significant first, of byte n div 8. */
typedef struct SYSDT_PACKED SYSDT_AttrIdBitmap {
    uint8_t bits[32];
} SYSDT_AttrIdBitmap;

#define SYSDT_CVRF_NAME_SIZE 32

/** A client VRF as its name is displayed. 40 bytes; the value itself is the name alone. */
typedef struct SYSDT_PACKED SYSDT_CVrfName {
    char name[SYSDT_CVRF_NAME_SIZE]; /**< NUL-terminated unless it fills the field; empty: no name. */
    uint32_t number;
    uint32_t hasNumber; /**< 1: the number counts. */
} SYSDT_CVrfName;

/** The structure of an SRv6 SID (RFC 9252): the fields of its sub-sub-TLV. 7 bytes. */
typedef struct SYSDT_PACKED SYSDT_SidStructure {
    uint8_t field[6]; /**< Lengths of locator block, locator node, function, argument; transposition length, offset. */
    uint8_t exists;   /**< 1: there is a structure. */
} SYSDT_SidStructure;

#ifdef __cplusplus
static_assert(sizeof(SYSDT_AsNum) == 8 && offsetof(SYSDT_AsNum, asType) == 4);
static_assert(sizeof(SYSDT_AsNumList) == 1280 && offsetof(SYSDT_AsNumEntry, asType) == 4);
static_assert(sizeof(SYSDT_Community) == 8 && offsetof(SYSDT_Community, type) == 4);
static_assert(sizeof(SYSDT_CommunityList) == 160 && offsetof(SYSDT_CommunityEntry, type) == 4);
static_assert(sizeof(SYSDT_LargeCommunity) == 16 && offsetof(SYSDT_LargeCommunity, type) == 12);
static_assert(sizeof(SYSDT_Octets) == 12 && offsetof(SYSDT_Octets, form) == 8);
static_assert(sizeof(SYSDT_ExtCommunityBw) == 12 && offsetof(SYSDT_ExtCommunityBw, bandwidth) == 4);
static_assert(sizeof(SYSDT_VrfRtV6) == 24 && offsetof(SYSDT_VrfRtV6, type) == 20);
static_assert(sizeof(SYSDT_RtpRd) == 10 && offsetof(SYSDT_RtpRd, form) == 8);
static_assert(sizeof(SYSDT_VpnId) == 8 && offsetof(SYSDT_VpnId, index) == 4);
static_assert(sizeof(SYSDT_BolRd) == 16 && offsetof(SYSDT_BolRd, rd) == 4);
static_assert(sizeof(SYSDT_BolNg2) == SYSDT_BOL_SIZE && sizeof(SYSDT_BolNg3) == SYSDT_BOL_SIZE &&
              sizeof(SYSDT_BolNg42) == SYSDT_BOL_SIZE && sizeof(SYSDT_BolNg43) == SYSDT_BOL_SIZE &&
              sizeof(SYSDT_BolNg5) == SYSDT_BOL_SIZE && sizeof(SYSDT_BolNg6) == SYSDT_BOL_SIZE &&
              sizeof(SYSDT_BolNg41) == SYSDT_BOL_SIZE);
static_assert(sizeof(SYSDT_EvpnAddress) == 21 && offsetof(SYSDT_EvpnAddress, family) == 20);
static_assert(sizeof(SYSDT_BolEvpn) == SYSDT_BOL_SIZE && offsetof(SYSDT_BolEvpn, key.autoDiscovery.esi) == 5 &&
              offsetof(SYSDT_BolEvpn, key.autoDiscovery.tag) == 15 &&
              offsetof(SYSDT_BolEvpn, key.macIp.ip.address) == 17 &&
              offsetof(SYSDT_BolEvpn, key.inclusive.ip.address) == 10 &&
              offsetof(SYSDT_BolEvpn, key.segment.ip.address) == 16 &&
              offsetof(SYSDT_BolEvpn, key.selective.originator.address) == 54 &&
              offsetof(SYSDT_BolEvpn, key.sync.membership.tag) == 15 &&
              offsetof(SYSDT_BolEvpn, key.sync.sequence) == 85);
static_assert(sizeof(SYSDT_BolValue) == SYSDT_BOL_SIZE && sizeof(SYSDT_BolIpv4) == SYSDT_BOL_SIZE &&
              sizeof(SYSDT_BolIpv6) == SYSDT_BOL_SIZE && sizeof(SYSDT_BolRouteTarget) == SYSDT_BOL_SIZE &&
              sizeof(SYSDT_BolL2Vpn) == SYSDT_BOL_SIZE && sizeof(SYSDT_BolVpnv4Mcast) == SYSDT_BOL_SIZE &&
              sizeof(SYSDT_BolMdt) == SYSDT_BOL_SIZE);
static_assert(sizeof(SYSDT_TimeRange) == 4 && sizeof(SYSDT_AttrIdBitmap) == 32 && sizeof(SYSDT_SidStructure) == 7);
static_assert(sizeof(SYSDT_CVrfName) == 40 && offsetof(SYSDT_CVrfName, hasNumber) == 36);
static_assert(sizeof(SYSDT_BolRpd) == SYSDT_BOL_SIZE && sizeof(SYSDT_Rpd) == 27 && offsetof(SYSDT_Rpd, peer) == 6);
static_assert(sizeof(SYSDT_BolSrPolicy) == SYSDT_BOL_SIZE && sizeof(SYSDT_SrPolicy) == 29 &&
              offsetof(SYSDT_SrPolicy, family) == 28);
static_assert(sizeof(SYSDT_BolSdwan) == SYSDT_BOL_SIZE && sizeof(SYSDT_Sdwan) == 33 &&
              offsetof(SYSDT_Sdwan, portLocalId) == 4 && offsetof(SYSDT_Sdwan, family) == 32);
static_assert(sizeof(LsIpAddr) == 21 && offsetof(LsIpAddr, ipv6) == 4 && offsetof(LsIpAddr, family) == 20);
static_assert(sizeof(SYSDT_LsNodeDesc) == 66 && sizeof(SYSDT_LsMemberNodeDesc) == 74);
static_assert(sizeof(SYSDT_LsPrefix) == SYSDT_LS_SIZE && alignof(SYSDT_LsPrefix) == 1);
static_assert(offsetof(SYSDT_LsHead, protocolId) == 4 && offsetof(SYSDT_LsHead, identifier) == 8);
static_assert(offsetof(SYSDT_LsNode, local.as) == 16 && offsetof(SYSDT_LsNode, local.bgpLsId) == 24 &&
              offsetof(SYSDT_LsNode, local.ospfArea) == 28 && offsetof(SYSDT_LsNode, local.igpRouterId) == 32 &&
              sizeof(SYSDT_LsNode) == 82);
static_assert(offsetof(SYSDT_LsLink, local.as) == 16 && offsetof(SYSDT_LsLink, local.bgpLsId) == 24 &&
              offsetof(SYSDT_LsLink, local.memberAs) == 28 && offsetof(SYSDT_LsLink, local.ospfArea) == 36 &&
              offsetof(SYSDT_LsLink, local.igpRouterId) == 40 && offsetof(SYSDT_LsLink, remote.as) == 90 &&
              offsetof(SYSDT_LsLink, remote.bgpLsId) == 98 && offsetof(SYSDT_LsLink, remote.memberAs) == 102 &&
              offsetof(SYSDT_LsLink, remote.ospfArea) == 110 && offsetof(SYSDT_LsLink, remote.igpRouterId) == 114);
static_assert(offsetof(SYSDT_LsLink, linkLocalId) == 164 && offsetof(SYSDT_LsLink, linkRemoteId) == 168 &&
              offsetof(SYSDT_LsLink, ipv4Interface) == 172 && offsetof(SYSDT_LsLink, ipv4Neighbor) == 176 &&
              offsetof(SYSDT_LsLink, ipv6Interface) == 180 && offsetof(SYSDT_LsLink, ipv6Neighbor) == 196 &&
              offsetof(SYSDT_LsLink, mtId) == 212 && offsetof(SYSDT_LsLink, localBgpRouterId) == 216 &&
              offsetof(SYSDT_LsLink, remoteBgpRouterId) == 220);
static_assert(offsetof(SYSDT_LsIpv4Prefix, local) == offsetof(SYSDT_LsNode, local) &&
              offsetof(SYSDT_LsIpv4Prefix, mtId) == 82 && offsetof(SYSDT_LsIpv4Prefix, ospfRouteType) == 86 &&
              offsetof(SYSDT_LsIpv4Prefix, prefix) == 90 && offsetof(SYSDT_LsIpv4Prefix, prefixLength) == 94);
static_assert(offsetof(SYSDT_LsIpv6Prefix, local) == offsetof(SYSDT_LsNode, local) &&
              offsetof(SYSDT_LsIpv6Prefix, mtId) == 82 && offsetof(SYSDT_LsIpv6Prefix, ospfRouteType) == 86 &&
              offsetof(SYSDT_LsIpv6Prefix, prefix) == 90 && offsetof(SYSDT_LsIpv6Prefix, prefixLength) == 106);
static_assert(offsetof(SYSDT_LsTePolicy, as) == 16 && offsetof(SYSDT_LsTePolicy, bgpLsId) == 24 &&
              offsetof(SYSDT_LsTePolicy, bgpRouterId) == 28 && offsetof(SYSDT_LsTePolicy, ipv4RouterId) == 32 &&
              offsetof(SYSDT_LsTePolicy, ipv6RouterId) == 36 && offsetof(SYSDT_LsTePolicy, protocolOrigin) == 52 &&
              offsetof(SYSDT_LsTePolicy, flags) == 53 && offsetof(SYSDT_LsTePolicy, endpoint) == 54 &&
              offsetof(SYSDT_LsTePolicy, color) == 75 && offsetof(SYSDT_LsTePolicy, originatorAs) == 79 &&
              offsetof(SYSDT_LsTePolicy, originatorAddress) == 87 && offsetof(SYSDT_LsTePolicy, discriminator) == 108);
static_assert(offsetof(SYSDT_LsSrv6Sid, local) == offsetof(SYSDT_LsLink, local) &&
              offsetof(SYSDT_LsSrv6Sid, mtId) == 90 && offsetof(SYSDT_LsSrv6Sid, sid) == 94 &&
              offsetof(SYSDT_LsSrv6Sid, bgpRouterId) == 110);
#endif
