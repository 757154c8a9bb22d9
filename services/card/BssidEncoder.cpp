#include "services/card/BssidEncoder.h"

#include <algorithm>

namespace {

constexpr std::size_t fixedElementBytes = 12; // timestamp, beacon interval, capabilities

template <std::size_t size>
std::uint32_t copyUpTo(const std::vector<std::uint8_t>& from, std::array<std::uint8_t, size>& to)
{
    const std::size_t count = std::min(from.size(), size);
    std::copy_n(from.begin(), count, to.begin());
    return static_cast<std::uint32_t>(count);
}

NDIS_802_11_CONFIGURATION configurationOf(const BssDescription& bss)
{
    return { sizeof(NDIS_802_11_CONFIGURATION), bss.beaconIntervalKusec, bss.atimWindowKusec, bss.frequencyKhz,
        { sizeof(NDIS_802_11_CONFIGURATION_FH), 0, 0, 0 } };
}

WLAN_BSSID_EX fixedPart(const BssDescription& bss)
{
    WLAN_BSSID_EX entry {};
    entry.Length = static_cast<std::uint32_t>(sizeof(entry) + bss.elements.size());
    entry.MacAddress = bss.bssid;
    entry.Ssid.SsidLength = copyUpTo(bss.ssid, entry.Ssid.Ssid);
    entry.Privacy = (bss.capabilities & capabilityPrivacy) != 0 ? 1 : 0;
    entry.Rssi = bss.rssiDbm;
    entry.NetworkTypeInUse = bss.networkType;
    entry.Configuration = configurationOf(bss);
    entry.InfrastructureMode = (bss.capabilities & capabilityIbss) != 0 ? Ndis802_11IBSS : Ndis802_11Infrastructure;
    (void)copyUpTo(bss.rates, entry.SupportedRates);
    entry.IELength = static_cast<std::uint32_t>(fixedElementBytes + bss.elements.size());
    std::memcpy(entry.Timestamp.data(), &bss.timestampUs, sizeof(bss.timestampUs));
    entry.BeaconInterval = bss.beaconIntervalKusec;
    entry.Capabilities = bss.capabilities;
    return entry;
}

} // namespace

Bytes encodeBssidEntry(const BssDescription& bss)
{
    Bytes bytes = bytesOf(fixedPart(bss));
    const auto elements = std::as_bytes(std::span(bss.elements));
    bytes.insert(bytes.end(), elements.begin(), elements.end());
    return bytes;
}
