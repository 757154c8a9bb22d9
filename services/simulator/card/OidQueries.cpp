#include "driver/records/Oids.h"
#include "services/simulator/card/Beacon.h"
#include "services/simulator/card/LinkModel.h"
#include "services/simulator/card/OidHandlers.h"

#include <algorithm>
#include <array>

namespace {

using Answer = std::optional<Bytes>;

template <auto member> Answer settingOf(CardState& state)
{
    return bytesOf(state.settings.*member);
}

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

Answer radio(CardState& state)
{
    return bytesOf(std::array<std::uint8_t, 4> { state.settings.radioOn ? std::uint8_t { 1 } : std::uint8_t { 0 } });
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
    QueryRow { OID_802_11_INFRASTRUCTURE_MODE, 4, settingOf<&CardSettings::infrastructureMode> },
    QueryRow { OID_802_11_AUTHENTICATION_MODE, 4, settingOf<&CardSettings::authenticationMode> },
    QueryRow { OID_802_11_ENCRYPTION_STATUS, 4, settingOf<&CardSettings::encryptionStatus> },
    QueryRow { VX_OID_802_11_EVENT_FLAG, 4, eventFlag },
    QueryRow { VX_OID_802_11_READY_FLAG, 4, readyFlag },
    QueryRow { OID_802_11_NETWORK_TYPES_SUPPORTED, sizeof(NDIS_802_11_NETWORK_TYPE_LIST), networkTypes },
    QueryRow { OID_802_11_RSSI, 4, rssi },
    QueryRow { OID_802_11_FRAGMENTATION_THRESHOLD, 4, settingOf<&CardSettings::fragmentationThresholdBytes> },
    QueryRow { OID_802_11_RTS_THRESHOLD, 4, settingOf<&CardSettings::rtsThresholdBytes> },
    QueryRow { OID_802_11_DESIRED_RATES, sizeof(NDIS_802_11_RATES), settingOf<&CardSettings::desiredRates> },
    QueryRow { OID_802_11_CONFIGURATION, sizeof(NDIS_802_11_CONFIGURATION), configuration },
    QueryRow { OID_802_11_POWER_MODE, 4, settingOf<&CardSettings::powerMode> },
    QueryRow { OID_802_11_BSSID_LIST, ListDelivery::chunkBytes, bssidList },
    QueryRow { VX_OID_802_11_BSSID_LIST_NEXT, ListDelivery::chunkBytes, bssidListNext },
    QueryRow { OID_802_11_STATISTICS, sizeof(NDIS_802_11_STATISTICS), statistics },
    QueryRow { VX_OID_802_11_PREAMBLE, 4, settingOf<&CardSettings::preamble> },
    QueryRow { VX_OID_802_11_LINK_COUNTERS, sizeof(VX_802_11_LINK_COUNTERS), linkCounters },
    QueryRow { VX_OID_802_11_RADIO, 4, radio },
    QueryRow { VX_OID_802_11_PHY_MODE, 4, settingOf<&CardSettings::phyMode> },
    QueryRow { VX_OID_802_11_STA_CONFIG, sizeof(VX_802_11_STA_CONFIG), stationConfig },
    QueryRow { VX_OID_802_11_TX_POWER, 4, settingOf<&CardSettings::transmitPowerPercent> },
    QueryRow { VX_OID_802_11_EEPROM_VERSION, 4, eepromVersion },
};

} // namespace

std::optional<Bytes> answerQuery(CardState& state, std::uint32_t oid, std::uint32_t replyCapacity)
{
    for (const QueryRow& row : queries) {
        if (row.oid == oid)
            return replyCapacity >= row.length ? row.answer(state) : std::nullopt;
    }
    return std::nullopt;
}
