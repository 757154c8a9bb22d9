#include "services/simulator/service/OidCatalogue.h"

#include "driver/records/Oids.h"

#include <array>
#include <charconv>

namespace {

struct OidName {
    std::uint32_t oid; // without the set flag
    std::string_view name;
};

constexpr std::array names {
    OidName { OID_GEN_MEDIA_CONNECT_STATUS, "OID_GEN_MEDIA_CONNECT_STATUS" },
    OidName { OID_GEN_RCV_OK, "OID_GEN_RCV_OK" },
    OidName { OID_GEN_RCV_NO_BUFFER, "OID_GEN_RCV_NO_BUFFER" },
    OidName { OID_802_3_CURRENT_ADDRESS, "OID_802_3_CURRENT_ADDRESS" },
    OidName { OID_802_11_BSSID, "OID_802_11_BSSID" },
    OidName { OID_802_11_SSID, "OID_802_11_SSID" },
    OidName { OID_802_11_INFRASTRUCTURE_MODE, "OID_802_11_INFRASTRUCTURE_MODE" },
    OidName { OID_802_11_DISASSOCIATE, "OID_802_11_DISASSOCIATE" },
    OidName { OID_802_11_AUTHENTICATION_MODE, "OID_802_11_AUTHENTICATION_MODE" },
    OidName { OID_802_11_BSSID_LIST_SCAN, "OID_802_11_BSSID_LIST_SCAN" },
    OidName { OID_802_11_ENCRYPTION_STATUS, "OID_802_11_ENCRYPTION_STATUS" },
    OidName { OID_802_11_ADD_KEY, "OID_802_11_ADD_KEY" },
    OidName { OID_802_11_REMOVE_KEY, "OID_802_11_REMOVE_KEY" },
    OidName { VX_OID_802_11_EVENT_FLAG, "VX_OID_802_11_EVENT_FLAG" },
    OidName { VX_OID_802_11_READY_FLAG, "VX_OID_802_11_READY_FLAG" },
    OidName { OID_802_11_NETWORK_TYPES_SUPPORTED, "OID_802_11_NETWORK_TYPES_SUPPORTED" },
    OidName { OID_802_11_RSSI, "OID_802_11_RSSI" },
    OidName { OID_802_11_FRAGMENTATION_THRESHOLD, "OID_802_11_FRAGMENTATION_THRESHOLD" },
    OidName { OID_802_11_RTS_THRESHOLD, "OID_802_11_RTS_THRESHOLD" },
    OidName { OID_802_11_DESIRED_RATES, "OID_802_11_DESIRED_RATES" },
    OidName { OID_802_11_CONFIGURATION, "OID_802_11_CONFIGURATION" },
    OidName { OID_802_11_POWER_MODE, "OID_802_11_POWER_MODE" },
    OidName { OID_802_11_BSSID_LIST, "OID_802_11_BSSID_LIST" },
    OidName { VX_OID_802_11_BSSID_LIST_NEXT, "VX_OID_802_11_BSSID_LIST_NEXT" },
    OidName { OID_802_11_STATISTICS, "OID_802_11_STATISTICS" },
    OidName { VX_OID_802_11_PREAMBLE, "VX_OID_802_11_PREAMBLE" },
    OidName { VX_OID_802_11_LINK_COUNTERS, "VX_OID_802_11_LINK_COUNTERS" },
    OidName { VX_OID_802_11_RESET_COUNTERS, "VX_OID_802_11_RESET_COUNTERS" },
    OidName { VX_OID_802_11_RADIO, "VX_OID_802_11_RADIO" },
    OidName { VX_OID_802_11_PHY_MODE, "VX_OID_802_11_PHY_MODE" },
    OidName { VX_OID_802_11_STA_CONFIG, "VX_OID_802_11_STA_CONFIG" },
    OidName { VX_OID_802_11_ADD_WPA, "VX_OID_802_11_ADD_WPA" },
    OidName { VX_OID_802_11_TX_POWER, "VX_OID_802_11_TX_POWER" },
    OidName { VX_OID_802_11_EEPROM_VERSION, "VX_OID_802_11_EEPROM_VERSION" },
};

std::optional<std::uint32_t> numberFromText(std::string_view text)
{
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
        base = 16;
    }
    std::uint32_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (text.empty() || result.ec != std::errc {} || result.ptr != text.data() + text.size())
        return std::nullopt;
    return number & ~oidSetFlag;
}

} // namespace

std::string_view nameOfOid(std::uint32_t oid)
{
    for (const OidName& row : names) {
        if (row.oid == (oid & ~oidSetFlag))
            return row.name;
    }
    return {};
}

std::optional<std::uint32_t> oidFromText(std::string_view text)
{
    for (const OidName& row : names) {
        if (row.name == text)
            return row.oid;
    }
    return numberFromText(text);
}
