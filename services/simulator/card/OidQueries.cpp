#include "driver/records/Oids.h"
#include "services/card/SettingRequests.h"
#include "services/simulator/card/Beacon.h"
#include "services/simulator/card/LinkModel.h"
#include "services/simulator/card/OidHandlers.h"

#include <algorithm>
#include <array>

namespace {

using Answer = std::optional<Bytes>;

Answer mediaStatus(CardState& state)
{
    return bytesOf<std::uint32_t>(state.association.peer() ? NdisMediaStateConnected : NdisMediaStateDisconnected);
}

Answer receivedFrames(CardState& state)
{
    return bytesOf(state.counters.receivedFrames());
}

Answer framesWithoutBuffer(CardState& state)
{
    return bytesOf(state.counters.framesWithoutBuffer());
}

Answer currentAddress(CardState& state)
{
    return bytesOf(state.hardware.address);
}

Answer bssid(CardState& state)
{
    const auto& peer = state.association.peer();
    return peer ? Answer(bytesOf(peer->network.bssid)) : std::nullopt;
}

Answer ssid(CardState& state)
{
    NDIS_802_11_SSID record {};
    if (const auto& peer = state.association.peer()) {
        const std::string& name = peer->network.ssid;
        record.SsidLength = static_cast<std::uint32_t>(std::min(name.size(), record.Ssid.size()));
        std::copy_n(name.begin(), record.SsidLength, record.Ssid.begin());
    }
    return bytesOf(record);
}

// Reading the flag clears it: the utility reacts to each event with one connection, not with one per tick.
Answer eventFlag(CardState& state)
{
    const std::uint32_t value = state.isEventRaised ? 1 : 0;
    state.isEventRaised = false;
    return bytesOf(value);
}

Answer readyFlag(CardState& state)
{
    return bytesOf<std::uint32_t>(state.isReady() ? 1 : 0);
}

Answer networkTypes(CardState& state)
{
    if (state.hardware.supportsFiveGhz)
        return bytesOf(NDIS_802_11_NETWORK_TYPE_LIST { 3, { Ndis802_11DS, Ndis802_11OFDM24, Ndis802_11OFDM5 } });
    return bytesOf(NDIS_802_11_NETWORK_TYPE_LIST { 2, { Ndis802_11DS, Ndis802_11OFDM24 } });
}

Answer rssi(CardState& state)
{
    const auto& peer = state.association.peer();
    return peer ? Answer(bytesOf(peer->signalDbm)) : std::nullopt;
}

Answer configuration(CardState& state)
{
    NDIS_802_11_CONFIGURATION record = state.settings.configuration;
    if (const auto& peer = state.association.peer())
        record.DSConfig = frequencyOfChannel(peer->network.channel);
    return bytesOf(record);
}

Answer bssidList(CardState& state)
{
    return state.scanList.firstChunk(state.nowMs);
}

Answer bssidListNext(CardState& state)
{
    return state.scanList.nextChunk();
}

Answer statistics(CardState& state)
{
    return bytesOf(state.counters.statistics());
}

Answer linkCounters(CardState& state)
{
    VX_802_11_LINK_COUNTERS record { 0, 0, state.counters.transmittedBytes(), state.counters.receivedBytes() };
    if (const auto& peer = state.association.peer()) {
        record.TxRate = linkRate(peer->network, state.settings.desiredRates, peer->signalDbm);
        record.ChannelQuality = channelQuality(peer->signalDbm);
    }
    return bytesOf(record);
}

Answer stationConfig(CardState& state)
{
    VX_802_11_STA_CONFIG record = state.settings.stationConfig;
    record.HwRadioStatus = state.hardware.hardwareRadioOn ? 1 : 0;
    record.SystemErrorBitmap = state.hardware.eepromError ? 1 : 0;
    return bytesOf(record);
}

Answer eepromVersion(CardState& state)
{
    return bytesOf(std::array<std::uint8_t, 4> { 0, 0, state.hardware.eepromMajor, state.hardware.eepromMinor });
}

struct QueryRow {
    std::uint32_t oid;
    std::uint32_t length; // minimum reply capacity in bytes
    Answer (*answer)(CardState&);
};

constexpr std::array queries {
    QueryRow { OID_GEN_MEDIA_CONNECT_STATUS, 4, mediaStatus },
    QueryRow { OID_GEN_RCV_OK, 4, receivedFrames },
    QueryRow { OID_GEN_RCV_NO_BUFFER, 4, framesWithoutBuffer },
    QueryRow { OID_802_3_CURRENT_ADDRESS, sizeof(MacAddress), currentAddress },
    QueryRow { OID_802_11_BSSID, sizeof(MacAddress), bssid },
    QueryRow { OID_802_11_SSID, sizeof(NDIS_802_11_SSID), ssid },
    QueryRow { VX_OID_802_11_EVENT_FLAG, 4, eventFlag },
    QueryRow { VX_OID_802_11_READY_FLAG, 4, readyFlag },
    QueryRow { OID_802_11_NETWORK_TYPES_SUPPORTED, sizeof(NDIS_802_11_NETWORK_TYPE_LIST), networkTypes },
    QueryRow { OID_802_11_RSSI, 4, rssi },
    QueryRow { OID_802_11_CONFIGURATION, sizeof(NDIS_802_11_CONFIGURATION), configuration },
    QueryRow { OID_802_11_BSSID_LIST, ListDelivery::chunkBytes, bssidList },
    QueryRow { VX_OID_802_11_BSSID_LIST_NEXT, ListDelivery::chunkBytes, bssidListNext },
    QueryRow { OID_802_11_STATISTICS, sizeof(NDIS_802_11_STATISTICS), statistics },
    QueryRow { VX_OID_802_11_LINK_COUNTERS, sizeof(VX_802_11_LINK_COUNTERS), linkCounters },
    QueryRow { VX_OID_802_11_STA_CONFIG, sizeof(VX_802_11_STA_CONFIG), stationConfig },
    QueryRow { VX_OID_802_11_EEPROM_VERSION, 4, eepromVersion },
};

} // namespace

std::optional<Bytes> answerQuery(CardState& state, std::uint32_t oid, std::uint32_t replyCapacity)
{
    for (const QueryRow& row : queries) {
        if (row.oid == oid)
            return replyCapacity >= row.length ? row.answer(state) : std::nullopt;
    }
    Answer setting = storedSetting(state.settings, oid);
    return setting && replyCapacity >= setting->size() ? setting : std::nullopt;
}
