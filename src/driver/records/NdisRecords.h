#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// The 802.11 records of the driver interface, modelled on NDIS. They are packed and match the wire format byte for
// byte; integers are in host byte order.

#pragma pack(push, 1)

// An IEEE 802 address, six octets in transmission order.
using MacAddress = std::array<std::uint8_t, 6>;

struct NDIS_802_11_SSID {
    static constexpr std::size_t maxLength = 32; // IEEE 802.11

    std::uint32_t SsidLength; // valid bytes, 0 to maxLength
    std::array<std::uint8_t, maxLength> Ssid; // not terminated; unused bytes are 0
};
static_assert(sizeof(NDIS_802_11_SSID) == 36);
static_assert(offsetof(NDIS_802_11_SSID, SsidLength) == 0);
static_assert(offsetof(NDIS_802_11_SSID, Ssid) == 4);

struct NDIS_802_11_CONFIGURATION_FH {
    std::uint32_t Length;
    std::uint32_t HopPattern;
    std::uint32_t HopSet;
    std::uint32_t DwellTime; // Kusec
};
static_assert(sizeof(NDIS_802_11_CONFIGURATION_FH) == 16);
static_assert(offsetof(NDIS_802_11_CONFIGURATION_FH, Length) == 0);
static_assert(offsetof(NDIS_802_11_CONFIGURATION_FH, HopPattern) == 4);
static_assert(offsetof(NDIS_802_11_CONFIGURATION_FH, HopSet) == 8);
static_assert(offsetof(NDIS_802_11_CONFIGURATION_FH, DwellTime) == 12);

struct NDIS_802_11_CONFIGURATION {
    std::uint32_t Length; // 32
    std::uint32_t BeaconPeriod; // Kusec (1024 µs)
    std::uint32_t ATIMWindow; // Kusec
    std::uint32_t DSConfig; // centre frequency of the channel in kHz
    NDIS_802_11_CONFIGURATION_FH FHConfig; // frequency hopping; unused
};
static_assert(sizeof(NDIS_802_11_CONFIGURATION) == 32);
static_assert(offsetof(NDIS_802_11_CONFIGURATION, Length) == 0);
static_assert(offsetof(NDIS_802_11_CONFIGURATION, BeaconPeriod) == 4);
static_assert(offsetof(NDIS_802_11_CONFIGURATION, ATIMWindow) == 8);
static_assert(offsetof(NDIS_802_11_CONFIGURATION, DSConfig) == 12);
static_assert(offsetof(NDIS_802_11_CONFIGURATION, FHConfig) == 16);

enum NDIS_802_11_NETWORK_TYPE : std::uint32_t {
    Ndis802_11FH = 0, // frequency hopping
    Ndis802_11DS = 1, // direct sequence, 802.11b
    Ndis802_11OFDM5 = 2, // OFDM in the 5 GHz band, 802.11a
    Ndis802_11OFDM24 = 3, // OFDM in the 2.4 GHz band, 802.11g
};

struct NDIS_802_11_NETWORK_TYPE_LIST {
    std::uint32_t NumberOfItems;
    std::array<std::uint32_t, 4> NetworkType; // NDIS_802_11_NETWORK_TYPE; the request has space for four
};
static_assert(sizeof(NDIS_802_11_NETWORK_TYPE_LIST) == 20);
static_assert(offsetof(NDIS_802_11_NETWORK_TYPE_LIST, NumberOfItems) == 0);
static_assert(offsetof(NDIS_802_11_NETWORK_TYPE_LIST, NetworkType) == 4);

enum NDIS_MEDIA_STATE : std::uint32_t {
    NdisMediaStateConnected = 0,
    NdisMediaStateDisconnected = 1,
};

enum NDIS_802_11_NETWORK_INFRASTRUCTURE : std::int32_t {
    Ndis802_11IBSS = 0, // ad hoc
    Ndis802_11Infrastructure = 1,
    Ndis802_11AutoUnknown = 2,
};

enum NDIS_802_11_AUTHENTICATION_MODE : std::int32_t {
    Ndis802_11AuthModeOpen = 0,
    Ndis802_11AuthModeShared = 1,
    Ndis802_11AuthModeAutoSwitch = 2,
    Ndis802_11AuthModeWPA = 3,
    Ndis802_11AuthModeWPAPSK = 4,
    Ndis802_11AuthModeWPANone = 5,
};

enum NDIS_802_11_ENCRYPTION_STATUS : std::int32_t {
    Ndis802_11Encryption1Enabled = 0, // WEP
    Ndis802_11EncryptionDisabled = 1,
    Ndis802_11Encryption1KeyAbsent = 2,
    Ndis802_11EncryptionNotSupported = 3,
    Ndis802_11Encryption2Enabled = 4, // TKIP
    Ndis802_11Encryption2KeyAbsent = 5,
    Ndis802_11Encryption3Enabled = 6, // AES
    Ndis802_11Encryption3KeyAbsent = 7,
};

// The fixed part of one network in the scan result. Its variable information elements follow, up to Length.
struct WLAN_BSSID_EX {
    std::uint32_t Length; // bytes, including the information elements
    ::MacAddress MacAddress; // BSSID
    std::array<std::uint8_t, 2> Reserved;
    NDIS_802_11_SSID Ssid;
    std::uint32_t Privacy; // non-zero when the network requires encryption
    std::int32_t Rssi; // dBm
    std::uint32_t NetworkTypeInUse; // NDIS_802_11_NETWORK_TYPE
    NDIS_802_11_CONFIGURATION Configuration;
    std::int32_t InfrastructureMode; // NDIS_802_11_NETWORK_INFRASTRUCTURE
    std::array<std::uint8_t, 16> SupportedRates; // units of 500 kbit/s; bit 7 marks a basic rate
    std::uint32_t IELength; // bytes of information elements, including the 12 fixed bytes below
    std::array<std::uint8_t, 8> Timestamp;
    std::uint16_t BeaconInterval; // Kusec
    std::uint16_t Capabilities;
};
static_assert(sizeof(WLAN_BSSID_EX) == 128);
static_assert(offsetof(WLAN_BSSID_EX, Length) == 0);
static_assert(offsetof(WLAN_BSSID_EX, MacAddress) == 4);
static_assert(offsetof(WLAN_BSSID_EX, Reserved) == 10);
static_assert(offsetof(WLAN_BSSID_EX, Ssid) == 12);
static_assert(offsetof(WLAN_BSSID_EX, Ssid.Ssid) == 16);
static_assert(offsetof(WLAN_BSSID_EX, Privacy) == 48);
static_assert(offsetof(WLAN_BSSID_EX, Rssi) == 52);
static_assert(offsetof(WLAN_BSSID_EX, NetworkTypeInUse) == 56);
static_assert(offsetof(WLAN_BSSID_EX, Configuration) == 60);
static_assert(offsetof(WLAN_BSSID_EX, Configuration.DSConfig) == 72);
static_assert(offsetof(WLAN_BSSID_EX, InfrastructureMode) == 92);
static_assert(offsetof(WLAN_BSSID_EX, SupportedRates) == 96);
static_assert(offsetof(WLAN_BSSID_EX, IELength) == 112);
static_assert(offsetof(WLAN_BSSID_EX, Timestamp) == 116);
static_assert(offsetof(WLAN_BSSID_EX, BeaconInterval) == 124);
static_assert(offsetof(WLAN_BSSID_EX, Capabilities) == 126);

// The header of a scan result. NumberOfItems entries follow back to back, each with its own Length.
struct NDIS_802_11_BSSID_LIST {
    std::uint32_t NumberOfItems;
};
static_assert(sizeof(NDIS_802_11_BSSID_LIST) == 4);

// The fixed part of a key record; KeyLength bytes of key material follow.
struct NDIS_802_11_KEY {
    std::uint32_t Length; // KeyLength + 39: the driver expects this sum, not the packed size
    std::uint32_t KeyIndex; // 0 to 3, plus keyIndexTransmit for the default key
    std::uint32_t KeyLength; // bytes
    MacAddress BSSID; // FF-FF-FF-FF-FF-FF for WEP keys
    std::array<std::uint8_t, 2> Padding;
    std::uint64_t KeyRSC; // not filled in
};
static_assert(sizeof(NDIS_802_11_KEY) == 28);
static_assert(offsetof(NDIS_802_11_KEY, Length) == 0);
static_assert(offsetof(NDIS_802_11_KEY, KeyIndex) == 4);
static_assert(offsetof(NDIS_802_11_KEY, KeyLength) == 8);
static_assert(offsetof(NDIS_802_11_KEY, BSSID) == 12);
static_assert(offsetof(NDIS_802_11_KEY, Padding) == 18);
static_assert(offsetof(NDIS_802_11_KEY, KeyRSC) == 20);

inline constexpr std::uint32_t keyIndexTransmit = 0x80000000;
inline constexpr std::uint32_t keyRecordOverhead = 39; // Length - KeyLength

struct NDIS_802_11_REMOVE_KEY {
    std::uint32_t Length; // 16
    std::uint32_t KeyIndex;
    MacAddress BSSID;
    std::array<std::uint8_t, 2> Padding;
};
static_assert(sizeof(NDIS_802_11_REMOVE_KEY) == 16);
static_assert(offsetof(NDIS_802_11_REMOVE_KEY, Length) == 0);
static_assert(offsetof(NDIS_802_11_REMOVE_KEY, KeyIndex) == 4);
static_assert(offsetof(NDIS_802_11_REMOVE_KEY, BSSID) == 8);
static_assert(offsetof(NDIS_802_11_REMOVE_KEY, Padding) == 14);

// The driver sends the twelve counters right after the length, without alignment padding.
struct NDIS_802_11_STATISTICS {
    std::uint32_t Length; // 100
    std::int64_t TransmittedFragmentCount;
    std::int64_t MulticastTransmittedFrameCount;
    std::int64_t FailedCount;
    std::int64_t RetryCount;
    std::int64_t MultipleRetryCount;
    std::int64_t RTSSuccessCount;
    std::int64_t RTSFailureCount;
    std::int64_t ACKFailureCount;
    std::int64_t FrameDuplicateCount;
    std::int64_t ReceivedFragmentCount;
    std::int64_t MulticastReceivedFrameCount;
    std::int64_t FCSErrorCount;
};
static_assert(sizeof(NDIS_802_11_STATISTICS) == 100);
static_assert(offsetof(NDIS_802_11_STATISTICS, Length) == 0);
static_assert(offsetof(NDIS_802_11_STATISTICS, TransmittedFragmentCount) == 4);
static_assert(offsetof(NDIS_802_11_STATISTICS, MulticastTransmittedFrameCount) == 12);
static_assert(offsetof(NDIS_802_11_STATISTICS, FailedCount) == 20);
static_assert(offsetof(NDIS_802_11_STATISTICS, RetryCount) == 28);
static_assert(offsetof(NDIS_802_11_STATISTICS, MultipleRetryCount) == 36);
static_assert(offsetof(NDIS_802_11_STATISTICS, RTSSuccessCount) == 44);
static_assert(offsetof(NDIS_802_11_STATISTICS, RTSFailureCount) == 52);
static_assert(offsetof(NDIS_802_11_STATISTICS, ACKFailureCount) == 60);
static_assert(offsetof(NDIS_802_11_STATISTICS, FrameDuplicateCount) == 68);
static_assert(offsetof(NDIS_802_11_STATISTICS, ReceivedFragmentCount) == 76);
static_assert(offsetof(NDIS_802_11_STATISTICS, MulticastReceivedFrameCount) == 84);
static_assert(offsetof(NDIS_802_11_STATISTICS, FCSErrorCount) == 92);

// Rates in units of 500 kbit/s; unused entries are 0.
using NDIS_802_11_RATES = std::array<std::uint8_t, 8>;
static_assert(sizeof(NDIS_802_11_RATES) == 8);

#pragma pack(pop)
