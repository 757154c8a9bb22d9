#include "services/card/SettingRequests.h"

#include "driver/records/ChannelTable.h"
#include "driver/records/Oids.h"

#include <algorithm>
#include <array>

namespace {

using Input = std::span<const std::byte>;

constexpr std::uint32_t maxThresholdBytes = 2347;
constexpr std::uint32_t minFragmentBytes = 256;
constexpr std::uint32_t maxPhyMode = 3;
constexpr std::uint32_t minFiveGhzPhyMode = 2;
constexpr std::uint32_t maxPowerMode = 2;

bool isAnything(bool, std::uint32_t)
{
    return true;
}

bool isAnyRates(bool, const NDIS_802_11_RATES&)
{
    return true;
}

bool isInfrastructureMode(bool, std::int32_t mode)
{
    return mode >= Ndis802_11IBSS && mode <= Ndis802_11AutoUnknown;
}

bool isAuthenticationMode(bool, std::int32_t mode)
{
    return mode >= Ndis802_11AuthModeOpen && mode <= Ndis802_11AuthModeWPANone;
}

// The other values report an absent key and cannot be set.
bool isEncryptionStatus(bool, std::int32_t status)
{
    return status == Ndis802_11Encryption1Enabled || status == Ndis802_11EncryptionDisabled
        || status == Ndis802_11Encryption2Enabled || status == Ndis802_11Encryption3Enabled;
}

bool isRtsThreshold(bool, std::uint32_t threshold)
{
    return threshold <= maxThresholdBytes;
}

bool isFragmentationThreshold(bool, std::uint32_t threshold)
{
    return threshold == 0 || (threshold >= minFragmentBytes && threshold <= maxThresholdBytes);
}

bool isPowerMode(bool, std::uint32_t mode)
{
    return mode <= maxPowerMode;
}

bool isTransmitPower(bool, std::uint32_t percent)
{
    constexpr std::array<std::uint32_t, 5> steps { 100, 75, 50, 25, 12 };
    return std::find(steps.begin(), steps.end(), percent) != steps.end();
}

bool isPhyMode(bool supportsFiveGhz, std::uint32_t mode)
{
    return mode <= maxPhyMode && (mode < minFiveGhzPhyMode || supportsFiveGhz);
}

bool isConfiguration(bool supportsFiveGhz, const NDIS_802_11_CONFIGURATION& record)
{
    const std::int32_t channel = channelOfFrequency(record.DSConfig);
    return record.Length == sizeof(record) && channel > 0 && (channel <= maxTwoGhzChannel || supportsFiveGhz);
}

template <auto member, auto isAllowed> bool store(CardSettings& settings, Input input, bool supportsFiveGhz)
{
    using Value = std::remove_reference_t<decltype(settings.*member)>;
    const auto value = recordOf<Value>(input);
    if (!value || !isAllowed(supportsFiveGhz, *value))
        return false;
    settings.*member = *value;
    return true;
}

template <auto change> bool changeKeys(CardSettings& settings, Input input, bool)
{
    return change(settings, input);
}

bool storeRadio(CardSettings& settings, Input input, bool)
{
    const auto word = recordOf<std::array<std::uint8_t, 4>>(input);
    if (!word)
        return false;
    settings.radioOn = word->front() != 0;
    return true;
}

// The client cannot set the switch position, the reserved word and the error bits.
bool storeStationConfig(CardSettings& settings, Input input, bool)
{
    auto record = recordOf<VX_802_11_STA_CONFIG>(input);
    if (!record)
        return false;
    record->HwRadioStatus = 0;
    record->Rsv1 = 0;
    record->SystemErrorBitmap = 0;
    settings.stationConfig = *record;
    return true;
}

template <auto member> Bytes stored(const CardSettings& settings)
{
    return bytesOf(settings.*member);
}

Bytes storedRadio(const CardSettings& settings)
{
    return bytesOf(std::array<std::uint8_t, 4> { settings.radioOn ? std::uint8_t { 1 } : std::uint8_t { 0 } });
}

struct SettingRow {
    std::uint32_t oid;
    bool (*store)(CardSettings&, Input, bool supportsFiveGhz);
    Bytes (*stored)(const CardSettings&); // nullptr: cannot be queried
};

template <auto member, auto isAllowed> constexpr SettingRow settingRow(std::uint32_t oid)
{
    return { oid, store<member, isAllowed>, stored<member> };
}

constexpr std::array settingRows {
    settingRow<&CardSettings::infrastructureMode, isInfrastructureMode>(OID_802_11_INFRASTRUCTURE_MODE),
    settingRow<&CardSettings::authenticationMode, isAuthenticationMode>(OID_802_11_AUTHENTICATION_MODE),
    settingRow<&CardSettings::encryptionStatus, isEncryptionStatus>(OID_802_11_ENCRYPTION_STATUS),
    SettingRow { OID_802_11_ADD_KEY, changeKeys<addKey>, nullptr },
    SettingRow { OID_802_11_REMOVE_KEY, changeKeys<removeKey>, nullptr },
    settingRow<&CardSettings::fragmentationThresholdBytes, isFragmentationThreshold>(
        OID_802_11_FRAGMENTATION_THRESHOLD),
    settingRow<&CardSettings::rtsThresholdBytes, isRtsThreshold>(OID_802_11_RTS_THRESHOLD),
    settingRow<&CardSettings::desiredRates, isAnyRates>(OID_802_11_DESIRED_RATES),
    settingRow<&CardSettings::configuration, isConfiguration>(OID_802_11_CONFIGURATION),
    settingRow<&CardSettings::powerMode, isPowerMode>(OID_802_11_POWER_MODE),
    settingRow<&CardSettings::preamble, isAnything>(VX_OID_802_11_PREAMBLE),
    SettingRow { VX_OID_802_11_RADIO, storeRadio, storedRadio },
    settingRow<&CardSettings::phyMode, isPhyMode>(VX_OID_802_11_PHY_MODE),
    SettingRow { VX_OID_802_11_STA_CONFIG, storeStationConfig, stored<&CardSettings::stationConfig> },
    SettingRow { VX_OID_802_11_ADD_WPA, changeKeys<addWpaKey>, nullptr },
    settingRow<&CardSettings::transmitPowerPercent, isTransmitPower>(VX_OID_802_11_TX_POWER),
};

const SettingRow* rowOf(std::uint32_t oid)
{
    const auto row
        = std::find_if(settingRows.begin(), settingRows.end(), [oid](const SettingRow& r) { return r.oid == oid; });
    return row == settingRows.end() ? nullptr : &*row;
}

} // namespace

std::optional<bool> storeSetting(CardSettings& settings, std::uint32_t oid, Input input, bool supportsFiveGhz)
{
    const SettingRow* const row = rowOf(oid);
    return row != nullptr ? std::optional(row->store(settings, input, supportsFiveGhz)) : std::nullopt;
}

std::optional<Bytes> storedSetting(const CardSettings& settings, std::uint32_t oid)
{
    const SettingRow* const row = rowOf(oid);
    return row != nullptr && row->stored != nullptr ? std::optional(row->stored(settings)) : std::nullopt;
}
