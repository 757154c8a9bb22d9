#pragma once

#include "driver/records/Oids.h"
#include "driver/records/VxRecords.h"
#include "services/card/CardSettings.h"
#include "tests/services/card/RequestRecords.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What every card must accept, simulated or not.
struct OidCase {
    std::uint32_t oid;
    const char* name;
    std::uint32_t queryLength; // 0: cannot be queried
    std::optional<Bytes> setInput; // a valid one; std::nullopt: cannot be set
    bool needsLink { false };
};

#define NAMED(oid) oid, #oid

// Every OID of the driver interface. bssid is the address of a network that the card may join.
inline std::vector<OidCase> everyOid(const MacAddress& bssid)
{
    using Word = std::uint32_t;
    const auto query = [](std::uint32_t oid, const char* name, std::uint32_t length) {
        return OidCase { oid, name, length, std::nullopt };
    };
    const auto set = [](std::uint32_t oid, const char* name, const auto& input) {
        return OidCase { oid, name, 0, bytesOf(input) };
    };
    const auto both = [](std::uint32_t oid, const char* name, const auto& input) {
        return OidCase { oid, name, sizeof(input), bytesOf(input) };
    };
    return {
        query(NAMED(OID_GEN_MEDIA_CONNECT_STATUS), 4),
        query(NAMED(OID_GEN_RCV_OK), 4),
        query(NAMED(OID_GEN_RCV_NO_BUFFER), 4),
        query(NAMED(OID_802_3_CURRENT_ADDRESS), 6),
        { NAMED(OID_802_11_BSSID), 6, bytesOf(bssid), true },
        both(NAMED(OID_802_11_SSID), ssidRecord("cafe")),
        both(NAMED(OID_802_11_INFRASTRUCTURE_MODE), Word { 1 }),
        set(NAMED(OID_802_11_DISASSOCIATE), Word { 0xDEAD }),
        both(NAMED(OID_802_11_AUTHENTICATION_MODE), Word { 4 }),
        set(NAMED(OID_802_11_BSSID_LIST_SCAN), Word { 0xBEEF }),
        both(NAMED(OID_802_11_ENCRYPTION_STATUS), Word { 6 }),
        { NAMED(OID_802_11_ADD_KEY), 0, keyRecord(keyIndexTransmit, "abcde") },
        set(NAMED(OID_802_11_REMOVE_KEY), removeKeyRecord(3)),
        query(NAMED(VX_OID_802_11_EVENT_FLAG), 4),
        query(NAMED(VX_OID_802_11_READY_FLAG), 4),
        query(NAMED(OID_802_11_NETWORK_TYPES_SUPPORTED), 20),
        { NAMED(OID_802_11_RSSI), 4, std::nullopt, true },
        both(NAMED(OID_802_11_FRAGMENTATION_THRESHOLD), Word { 0 }),
        both(NAMED(OID_802_11_RTS_THRESHOLD), Word { 2347 }),
        both(NAMED(OID_802_11_DESIRED_RATES), NDIS_802_11_RATES { 22 }),
        both(NAMED(OID_802_11_CONFIGURATION), CardSettings().configuration),
        both(NAMED(OID_802_11_POWER_MODE), Word { 2 }),
        query(NAMED(OID_802_11_BSSID_LIST), 4096),
        query(NAMED(VX_OID_802_11_BSSID_LIST_NEXT), 4096),
        query(NAMED(OID_802_11_STATISTICS), 100),
        both(NAMED(VX_OID_802_11_PREAMBLE), Word { 2 }),
        query(NAMED(VX_OID_802_11_LINK_COUNTERS), 16),
        { NAMED(VX_OID_802_11_RESET_COUNTERS), 0, Bytes() },
        both(NAMED(VX_OID_802_11_RADIO), Word { 1 }),
        both(NAMED(VX_OID_802_11_PHY_MODE), Word { 3 }),
        both(NAMED(VX_OID_802_11_STA_CONFIG), VX_802_11_STA_CONFIG {}),
        { NAMED(VX_OID_802_11_ADD_WPA), 0, keyRecord(keyIndexTransmit, std::string(32, 'p'), false) },
        both(NAMED(VX_OID_802_11_TX_POWER), Word { 12 }),
        query(NAMED(VX_OID_802_11_EEPROM_VERSION), 4),
    };
}

#undef NAMED
