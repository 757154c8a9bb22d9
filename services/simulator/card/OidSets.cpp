#include "driver/records/ChannelTable.h"
#include "driver/records/Oids.h"
#include "services/simulator/card/OidHandlers.h"

#include <algorithm>
#include <array>

namespace {

using Input = std::span<const std::byte>;

constexpr std::uint32_t scanInputBytes = 4;
constexpr std::uint32_t maxThresholdBytes = 2347;
constexpr std::uint32_t minFragmentBytes = 256;
constexpr std::uint32_t maxPhyMode = 3;
constexpr std::uint32_t minFiveGhzPhyMode = 2;
constexpr std::uint32_t maxPowerMode = 2;

template <auto member, auto isAllowed> bool setSetting(CardState& state, Input input)
{
    using Value = std::remove_reference_t<decltype(state.settings.*member)>;
    const auto value = recordOf<Value>(input);
    if (!value || !isAllowed(state, *value))
        return false;
    state.settings.*member = *value;
    return true;
}

bool isAnything(const CardState&, std::uint32_t)
{
    return true;
}

bool isAnyRates(const CardState&, const NDIS_802_11_RATES&)
{
    return true;
}

bool isAuthenticationMode(const CardState&, std::int32_t mode)
{
    return mode >= Ndis802_11AuthModeOpen && mode <= Ndis802_11AuthModeWPANone;
}

// The other values report an absent key and cannot be set.
bool isEncryptionStatus(const CardState&, std::int32_t status)
{
    return status == Ndis802_11Encryption1Enabled || status == Ndis802_11EncryptionDisabled
        || status == Ndis802_11Encryption2Enabled || status == Ndis802_11Encryption3Enabled;
}

bool isRtsThreshold(const CardState&, std::uint32_t threshold)
{
    return threshold <= maxThresholdBytes;
}

bool isFragmentationThreshold(const CardState&, std::uint32_t threshold)
{
    return threshold == 0 || (threshold >= minFragmentBytes && threshold <= maxThresholdBytes);
}

bool isPowerMode(const CardState&, std::uint32_t mode)
{
    return mode <= maxPowerMode;
}

bool isTransmitPower(const CardState&, std::uint32_t percent)
{
    constexpr std::array<std::uint32_t, 5> steps { 100, 75, 50, 25, 12 };
    return std::find(steps.begin(), steps.end(), percent) != steps.end();
}

bool isPhyMode(const CardState& state, std::uint32_t mode)
{
    return mode <= maxPhyMode && (mode < minFiveGhzPhyMode || state.hardware.supportsFiveGhz);
}

bool isConfiguration(const CardState& state, const NDIS_802_11_CONFIGURATION& record)
{
    const std::int32_t channel = channelOfFrequency(record.DSConfig);
    return record.Length == sizeof(record) && channel > 0
        && (channel <= maxTwoGhzChannel || state.hardware.supportsFiveGhz);
}

bool setInfrastructureMode(CardState& state, Input input)
{
    const auto mode = recordOf<std::int32_t>(input);
    if (!mode || *mode < Ndis802_11IBSS || *mode > Ndis802_11AutoUnknown)
        return false;
    // A link of the other mode cannot continue.
    if (*mode != state.settings.infrastructureMode)
        state.association.disassociate();
    state.settings.infrastructureMode = *mode;
    return true;
}

bool setBssid(CardState& state, Input input)
{
    const auto bssid = recordOf<MacAddress>(input);
    if (!bssid)
        return false;
    state.association.joinBssid(*bssid, state.nowMs);
    return true;
}

bool setSsid(CardState& state, Input input)
{
    const auto record = recordOf<NDIS_802_11_SSID>(input);
    if (!record || record->SsidLength > record->Ssid.size())
        return false;
    const auto end = record->Ssid.begin() + static_cast<std::ptrdiff_t>(record->SsidLength);
    state.association.joinSsid(std::string(record->Ssid.begin(), end), state.nowMs);
    return true;
}

bool disassociate(CardState& state, Input input)
{
    if (input.size() != sizeof(std::uint32_t))
        return false;
    state.association.disassociate();
    return true;
}

bool startScan(CardState& state, Input input)
{
    if (input.size() != scanInputBytes)
        return false;
    state.scanList.startScan(state.nowMs);
    return true;
}

bool setKey(CardState& state, Input input)
{
    return addKey(state.settings, input);
}

bool setWpaKey(CardState& state, Input input)
{
    return addWpaKey(state.settings, input);
}

bool dropKey(CardState& state, Input input)
{
    return removeKey(state.settings, input);
}

bool resetCounters(CardState& state, Input input)
{
    if (!input.empty())
        return false;
    state.counters.reset();
    return true;
}

bool setRadio(CardState& state, Input input)
{
    const auto word = recordOf<std::array<std::uint8_t, 4>>(input);
    if (!word)
        return false;
    state.settings.radioOn = word->front() != 0;
    return true;
}

// The client cannot set the switch position, the reserved word and the error bits.
bool setStationConfig(CardState& state, Input input)
{
    auto record = recordOf<VX_802_11_STA_CONFIG>(input);
    if (!record)
        return false;
    record->HwRadioStatus = 0;
    record->Rsv1 = 0;
    record->SystemErrorBitmap = 0;
    state.settings.stationConfig = *record;
    return true;
}

struct SetRow {
    std::uint32_t oid;
    bool (*apply)(CardState&, Input);
};

constexpr std::array sets {
    SetRow { OID_802_11_BSSID, setBssid },
    SetRow { OID_802_11_SSID, setSsid },
    SetRow { OID_802_11_INFRASTRUCTURE_MODE, setInfrastructureMode },
    SetRow { OID_802_11_DISASSOCIATE, disassociate },
    SetRow { OID_802_11_AUTHENTICATION_MODE, setSetting<&CardSettings::authenticationMode, isAuthenticationMode> },
    SetRow { OID_802_11_BSSID_LIST_SCAN, startScan },
    SetRow { OID_802_11_ENCRYPTION_STATUS, setSetting<&CardSettings::encryptionStatus, isEncryptionStatus> },
    SetRow { OID_802_11_ADD_KEY, setKey },
    SetRow { OID_802_11_REMOVE_KEY, dropKey },
    SetRow { OID_802_11_FRAGMENTATION_THRESHOLD,
        setSetting<&CardSettings::fragmentationThresholdBytes, isFragmentationThreshold> },
    SetRow { OID_802_11_RTS_THRESHOLD, setSetting<&CardSettings::rtsThresholdBytes, isRtsThreshold> },
    SetRow { OID_802_11_DESIRED_RATES, setSetting<&CardSettings::desiredRates, isAnyRates> },
    SetRow { OID_802_11_CONFIGURATION, setSetting<&CardSettings::configuration, isConfiguration> },
    SetRow { OID_802_11_POWER_MODE, setSetting<&CardSettings::powerMode, isPowerMode> },
    SetRow { VX_OID_802_11_PREAMBLE, setSetting<&CardSettings::preamble, isAnything> },
    SetRow { VX_OID_802_11_RESET_COUNTERS, resetCounters },
    SetRow { VX_OID_802_11_RADIO, setRadio },
    SetRow { VX_OID_802_11_PHY_MODE, setSetting<&CardSettings::phyMode, isPhyMode> },
    SetRow { VX_OID_802_11_STA_CONFIG, setStationConfig },
    SetRow { VX_OID_802_11_ADD_WPA, setWpaKey },
    SetRow { VX_OID_802_11_TX_POWER, setSetting<&CardSettings::transmitPowerPercent, isTransmitPower> },
};

} // namespace

bool applySet(CardState& state, std::uint32_t oid, std::span<const std::byte> input)
{
    for (const SetRow& row : sets) {
        if (row.oid == oid)
            return row.apply(state, input);
    }
    return false;
}
