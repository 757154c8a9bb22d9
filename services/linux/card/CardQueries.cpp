#include "driver/records/Oids.h"
#include "services/card/SettingRequests.h"
#include "services/linux/card/Card.h"
#include "services/linux/card/CardRequests.h"
#include "services/linux/card/WirelessMode.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

using Answer = std::optional<Bytes>;

constexpr std::int32_t usualNoiseDbm = -95;

Answer mediaStatus(const CardState& state)
{
    return bytesOf<std::uint32_t>(state.link ? NdisMediaStateConnected : NdisMediaStateDisconnected);
}

Answer receivedFrames(const CardState& state)
{
    return bytesOf(state.counters.receivedFrames());
}

Answer framesWithoutBuffer(const CardState& state)
{
    return bytesOf(state.counters.framesWithoutBuffer());
}

Answer currentAddress(const CardState& state)
{
    return bytesOf(state.hardware.address);
}

Answer bssid(const CardState& state)
{
    return state.link ? Answer(bytesOf(state.link->bssid)) : std::nullopt;
}

Answer ssid(const CardState& state)
{
    NDIS_802_11_SSID record {};
    if (state.link) {
        const Octets& name = state.link->ssid;
        record.SsidLength = static_cast<std::uint32_t>(std::min(name.size(), record.Ssid.size()));
        std::copy_n(name.begin(), record.SsidLength, record.Ssid.begin());
    }
    return bytesOf(record);
}

Answer networkTypes(const CardState& state)
{
    NDIS_802_11_NETWORK_TYPE_LIST list { 0, {} };
    const auto add = [&list](std::uint32_t type) { list.NetworkType[list.NumberOfItems++] = type; };
    const bool hasTwoGhz = !state.wiphy.twoGhzRates.empty();
    if (hasTwoGhz)
        add(Ndis802_11DS);
    if (hasTwoGhz && networkTypeOf(0, state.wiphy.twoGhzRates) == Ndis802_11OFDM24)
        add(Ndis802_11OFDM24);
    if (state.supportsFiveGhz())
        add(Ndis802_11OFDM5);
    return bytesOf(list);
}

// Drivers that tell nothing about the access point still give the signal of its beacons.
std::int32_t linkSignalDbm(const CardState& state)
{
    std::optional<std::int32_t> strongest;
    for (const StationInfo& peer : state.link->peers) {
        if (peer.signalDbm && (!strongest || *peer.signalDbm > *strongest))
            strongest = peer.signalDbm;
    }
    const ScanEntry* const entry = state.link->isAdHoc ? nullptr : state.networks.find(state.link->bssid);
    if (!strongest && entry != nullptr)
        strongest = entry->signalDbm;
    return strongest.value_or(NetworkList::ownCellSignalDbm);
}

Answer rssi(const CardState& state)
{
    return state.link ? Answer(bytesOf(linkSignalDbm(state))) : std::nullopt;
}

Answer configuration(const CardState& state)
{
    NDIS_802_11_CONFIGURATION record = state.settings.configuration;
    if (!state.link)
        return bytesOf(record);
    record.DSConfig = numberedFrequencyMhz(state.link->frequencyMhz) * 1000;
    if (const ScanEntry* const entry = state.networks.find(state.link->bssid)) {
        record.BeaconPeriod = entry->beaconIntervalKusec;
        record.ATIMWindow = atimWindowKusec(entry->elements);
    }
    return bytesOf(record);
}

Answer statistics(const CardState& state)
{
    return bytesOf(state.counters.statistics());
}

Answer linkCounters(const CardState& state)
{
    VX_802_11_LINK_COUNTERS record { 0, 0, state.counters.transmittedBytes(), state.counters.receivedBytes() };
    if (!state.link)
        return bytesOf(record);
    for (const StationInfo& peer : state.link->peers)
        record.TxRate = std::max<std::uint32_t>(record.TxRate, peer.transmitBitrate / 5);
    record.ChannelQuality = channelQuality(linkSignalDbm(state), state.link->noiseDbm);
    return bytesOf(record);
}

Answer stationConfig(const CardState& state)
{
    VX_802_11_STA_CONFIG record = state.settings.stationConfig;
    record.HwRadioStatus = state.isHardBlocked ? 0 : 1;
    return bytesOf(record);
}

Answer eepromVersion(const CardState& state)
{
    return bytesOf(std::array<std::uint8_t, 4> { 0, 0, state.hardware.firmwareMajor, state.hardware.firmwareMinor });
}

struct QueryRow {
    std::uint32_t oid;
    std::uint32_t length; // minimum reply capacity in bytes
    Answer (*answer)(const CardState&);
};

constexpr std::array queries {
    QueryRow { OID_GEN_MEDIA_CONNECT_STATUS, 4, mediaStatus },
    QueryRow { OID_GEN_RCV_OK, 4, receivedFrames },
    QueryRow { OID_GEN_RCV_NO_BUFFER, 4, framesWithoutBuffer },
    QueryRow { OID_802_3_CURRENT_ADDRESS, sizeof(MacAddress), currentAddress },
    QueryRow { OID_802_11_BSSID, sizeof(MacAddress), bssid },
    QueryRow { OID_802_11_SSID, sizeof(NDIS_802_11_SSID), ssid },
    QueryRow { OID_802_11_NETWORK_TYPES_SUPPORTED, sizeof(NDIS_802_11_NETWORK_TYPE_LIST), networkTypes },
    QueryRow { OID_802_11_RSSI, 4, rssi },
    QueryRow { OID_802_11_CONFIGURATION, sizeof(NDIS_802_11_CONFIGURATION), configuration },
    QueryRow { OID_802_11_STATISTICS, sizeof(NDIS_802_11_STATISTICS), statistics },
    QueryRow { VX_OID_802_11_LINK_COUNTERS, sizeof(VX_802_11_LINK_COUNTERS), linkCounters },
    QueryRow { VX_OID_802_11_STA_CONFIG, sizeof(VX_802_11_STA_CONFIG), stationConfig },
    QueryRow { VX_OID_802_11_EEPROM_VERSION, 4, eepromVersion },
};

bool isReady(const CardState& state, std::int64_t nowMs)
{
    return state.isSupplicantReady || nowMs - state.notReadySinceMs >= Card::maxNotReadyMs;
}

// Reading the flag clears it: the utility reacts to each event with one connection. It is withheld until the card is
// ready, because the utility then waits for the ready flag, and its window with it.
bool takeEvent(CardState& state, std::int64_t nowMs)
{
    return isReady(state, nowMs) && std::exchange(state.isEventRaised, false);
}

// Queries that depend on the time or change what the next one answers.
Answer answerStateful(CardState& state, std::uint32_t oid, std::int64_t nowMs)
{
    switch (oid) {
    case VX_OID_802_11_EVENT_FLAG:
        return bytesOf<std::uint32_t>(takeEvent(state, nowMs) ? 1 : 0);
    case VX_OID_802_11_READY_FLAG:
        return bytesOf<std::uint32_t>(isReady(state, nowMs) ? 1 : 0);
    case OID_802_11_BSSID_LIST:
        return state.delivery.start(state.networks.encoded());
    case VX_OID_802_11_BSSID_LIST_NEXT:
        return state.delivery.next();
    default:
        return std::nullopt;
    }
}

constexpr std::uint32_t statefulLength(std::uint32_t oid)
{
    switch (oid) {
    case OID_802_11_BSSID_LIST:
    case VX_OID_802_11_BSSID_LIST_NEXT:
        return ListDelivery::chunkBytes;
    default:
        return sizeof(std::uint32_t);
    }
}

} // namespace

std::uint32_t channelQuality(std::int32_t signalDbm, std::optional<std::int32_t> noiseDbm)
{
    return static_cast<std::uint32_t>(std::clamp(2 * (signalDbm - noiseDbm.value_or(usualNoiseDbm)), 0, 100));
}

std::optional<Bytes> answerQuery(CardState& state, std::uint32_t oid, std::uint32_t replyCapacity, std::int64_t nowMs)
{
    for (const QueryRow& row : queries) {
        if (row.oid == oid)
            return replyCapacity >= row.length ? row.answer(state) : std::nullopt;
    }
    if (const Answer setting = storedSetting(state.settings, oid))
        return replyCapacity >= setting->size() ? setting : std::nullopt;
    return replyCapacity >= statefulLength(oid) ? answerStateful(state, oid, nowMs) : std::nullopt;
}
