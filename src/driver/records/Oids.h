#pragma once

#include <cstdint>

// All object identifiers that the utility sends. Standard ones have their NDIS names, driver-private ones the prefix
// VX_OID_. docs/driver-protocol.md describes the record, units and results of each.

// Bit 23 makes a request a set instead of a query.
inline constexpr std::uint32_t oidSetFlag = 0x00800000;

inline constexpr std::uint32_t OID_GEN_MEDIA_CONNECT_STATUS = 0x00010114;
inline constexpr std::uint32_t OID_GEN_RCV_OK = 0x00020102;
inline constexpr std::uint32_t OID_GEN_RCV_NO_BUFFER = 0x00020105;
inline constexpr std::uint32_t OID_802_3_CURRENT_ADDRESS = 0x01010102;
inline constexpr std::uint32_t OID_802_11_BSSID = 0x0D010101;
inline constexpr std::uint32_t OID_802_11_SSID = 0x0D010102;
inline constexpr std::uint32_t OID_802_11_INFRASTRUCTURE_MODE = 0x0D010108;
inline constexpr std::uint32_t OID_802_11_DISASSOCIATE = 0x0D010115;
inline constexpr std::uint32_t OID_802_11_AUTHENTICATION_MODE = 0x0D010118;
inline constexpr std::uint32_t OID_802_11_BSSID_LIST_SCAN = 0x0D01011A;
inline constexpr std::uint32_t OID_802_11_ENCRYPTION_STATUS = 0x0D01011B;
inline constexpr std::uint32_t OID_802_11_ADD_KEY = 0x0D01011D;
inline constexpr std::uint32_t OID_802_11_REMOVE_KEY = 0x0D01011E;
inline constexpr std::uint32_t VX_OID_802_11_EVENT_FLAG = 0x0D010120;
inline constexpr std::uint32_t VX_OID_802_11_READY_FLAG = 0x0D010121;
inline constexpr std::uint32_t OID_802_11_NETWORK_TYPES_SUPPORTED = 0x0D010203;
inline constexpr std::uint32_t OID_802_11_RSSI = 0x0D010206;
inline constexpr std::uint32_t OID_802_11_FRAGMENTATION_THRESHOLD = 0x0D010209;
inline constexpr std::uint32_t OID_802_11_RTS_THRESHOLD = 0x0D01020A;
inline constexpr std::uint32_t OID_802_11_DESIRED_RATES = 0x0D010210;
inline constexpr std::uint32_t OID_802_11_CONFIGURATION = 0x0D010211;
inline constexpr std::uint32_t OID_802_11_POWER_MODE = 0x0D010216;
inline constexpr std::uint32_t OID_802_11_BSSID_LIST = 0x0D010217;
inline constexpr std::uint32_t VX_OID_802_11_BSSID_LIST_NEXT = 0x0D010218;
inline constexpr std::uint32_t OID_802_11_STATISTICS = 0x0D020212;
inline constexpr std::uint32_t VX_OID_802_11_PREAMBLE = 0x0D710101;
inline constexpr std::uint32_t VX_OID_802_11_LINK_COUNTERS = 0x0D710102;
inline constexpr std::uint32_t VX_OID_802_11_RESET_COUNTERS = 0x0D710103;
inline constexpr std::uint32_t VX_OID_802_11_RADIO = 0x0D710108;
inline constexpr std::uint32_t VX_OID_802_11_PHY_MODE = 0x0D71010C;
inline constexpr std::uint32_t VX_OID_802_11_STA_CONFIG = 0x0D710111;
inline constexpr std::uint32_t VX_OID_802_11_ADD_WPA = 0x0D710116;
inline constexpr std::uint32_t VX_OID_802_11_TX_POWER = 0x0D710118;
inline constexpr std::uint32_t VX_OID_802_11_EEPROM_VERSION = 0x0D710119;
