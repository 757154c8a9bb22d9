#include "driver/records/Oids.h"
#include "services/card/SettingRequests.h"
#include "services/linux/card/CardRequests.h"
#include "services/linux/card/JoinPlan.h"
#include "services/linux/card/WirelessMode.h"

#include <algorithm>

namespace {

using Input = std::span<const std::byte>;

constexpr MacAddress broadcastAddress { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF };
constexpr std::uint32_t scanInputBytes = 4;
// From here on no frame is long enough.
constexpr std::uint32_t offThresholdBytes = 2346;

SetOutcome accepted(Effects effects = {})
{
    return { true, false, std::move(effects) };
}

SetOutcome join(CardState& state, const JoinRequest& request, std::int64_t nowMs)
{
    auto block = planJoin(state, request);
    if (!block)
        return {};
    state.request = request;
    state.requestMs = nowMs;
    state.restoreAtMs.reset();
    // The list may have forgotten the name when the join is made again.
    state.request->ssid = block->ssid;
    state.lastSsid = block->ssid;
    state.dropLink();
    state.isRequestWaiting = !state.isSupplicantReady;
    if (state.isRequestWaiting)
        return accepted();
    return accepted({ JoinNetwork { std::move(*block) } });
}

SetOutcome setBssid(CardState& state, Input input, std::int64_t nowMs)
{
    const auto bssid = recordOf<MacAddress>(input);
    if (!bssid)
        return {};
    if (*bssid != broadcastAddress)
        return join(state, { {}, bssid }, nowMs);
    return state.lastSsid.empty() ? SetOutcome {} : join(state, { state.lastSsid, std::nullopt }, nowMs);
}

SetOutcome setSsid(CardState& state, Input input, std::int64_t nowMs)
{
    const auto record = recordOf<NDIS_802_11_SSID>(input);
    if (!record || record->SsidLength > record->Ssid.size())
        return {};
    const auto end = record->Ssid.begin() + static_cast<std::ptrdiff_t>(record->SsidLength);
    return join(state, { Octets(record->Ssid.begin(), end), std::nullopt }, nowMs);
}

Effects leave(CardState& state)
{
    state.request.reset();
    state.isRequestWaiting = false;
    state.restoreAtMs.reset();
    state.dropLink();
    return { LeaveNetwork {} };
}

SetOutcome disassociate(CardState& state, Input input)
{
    return input.size() == sizeof(std::uint32_t) ? accepted(leave(state)) : SetOutcome {};
}

SetOutcome startScan(const CardState& state, Input input)
{
    if (input.size() != scanInputBytes)
        return {};
    return { true, state.isRadioOn(), {} };
}

SetOutcome resetCounters(CardState& state, Input input)
{
    if (!input.empty())
        return {};
    state.counters.reset();
    return accepted();
}

// 802.1X needs more than a key, and the kernel has no WPA-None. A client that ignores the refusal must not be joined
// with the mode it had set before.
bool isSupportedAuthentication(CardState& state, Input input)
{
    const auto mode = recordOf<std::int32_t>(input);
    state.isUnsupportedAuthentication = mode && (*mode == Ndis802_11AuthModeWPA || *mode == Ndis802_11AuthModeWPANone);
    return !state.isUnsupportedAuthentication;
}

std::optional<std::uint32_t> threshold(std::uint32_t bytes)
{
    return bytes == 0 || bytes >= offThresholdBytes ? std::nullopt : std::optional(bytes);
}

// Of the link's channel; without a link, of all channels that are allowed.
std::int32_t maxPowerMbm(const CardState& state)
{
    std::int32_t power = 0;
    for (const ChannelFacts& channel : state.link ? state.wiphy.channels : state.allowedChannels()) {
        if (!state.link || channel.frequencyMhz == state.link->frequencyMhz)
            power = std::max(power, channel.maxPowerMbm);
    }
    return power;
}

Effects changedMode(CardState& state, std::int64_t nowMs)
{
    Effects effects { allowedRates(state.settings, state.wiphy) };
    Effects moved = followAllowedChannels(state, nowMs);
    std::move(moved.begin(), moved.end(), std::back_inserter(effects));
    return effects;
}

// What a stored setting changes outside. The others take effect with the next join.
Effects effectsOf(CardState& state, std::uint32_t oid, std::int64_t nowMs)
{
    switch (oid) {
    case OID_802_11_RTS_THRESHOLD:
        return { SetRtsThreshold { threshold(state.settings.rtsThresholdBytes) } };
    case OID_802_11_FRAGMENTATION_THRESHOLD:
        return { SetFragmentationThreshold { threshold(state.settings.fragmentationThresholdBytes) } };
    case OID_802_11_DESIRED_RATES:
        return { allowedRates(state.settings, state.wiphy) };
    case OID_802_11_POWER_MODE:
        return { SetPowerSave { state.settings.powerMode != 0 } };
    case VX_OID_802_11_TX_POWER:
        return { transmitPowerEffect(state) };
    case VX_OID_802_11_PHY_MODE:
        return changedMode(state, nowMs);
    case VX_OID_802_11_RADIO:
        return { SetRadio { state.settings.radioOn } };
    default:
        return {};
    }
}

SetOutcome changeSetting(CardState& state, std::uint32_t oid, Input input, std::int64_t nowMs)
{
    if (oid == OID_802_11_AUTHENTICATION_MODE && !isSupportedAuthentication(state, input))
        return {};
    const std::int32_t previousMode = state.settings.infrastructureMode;
    const bool hadNoneKey = state.settings.adHocWpaKey.has_value();
    if (!storeSetting(state.settings, oid, input, state.supportsFiveGhz()).value_or(false))
        return {};
    if (!hadNoneKey && state.settings.adHocWpaKey) {
        state.settings.adHocWpaKey.reset(); // the key of WPA-None
        return {};
    }
    Effects effects = effectsOf(state, oid, nowMs);
    // A link of the other mode cannot continue.
    if (state.settings.infrastructureMode != previousMode && state.request) {
        const Effects left = leave(state);
        effects.insert(effects.begin(), left.begin(), left.end());
    }
    return accepted(std::move(effects));
}

} // namespace

SetOutcome applySet(CardState& state, std::uint32_t oid, std::span<const std::byte> input, std::int64_t nowMs)
{
    switch (oid) {
    case OID_802_11_BSSID:
        return setBssid(state, input, nowMs);
    case OID_802_11_SSID:
        return setSsid(state, input, nowMs);
    case OID_802_11_DISASSOCIATE:
        return disassociate(state, input);
    case OID_802_11_BSSID_LIST_SCAN:
        return startScan(state, input);
    case VX_OID_802_11_RESET_COUNTERS:
        return resetCounters(state, input);
    default:
        return changeSetting(state, oid, input, nowMs);
    }
}

Effects followAllowedChannels(CardState& state, std::int64_t nowMs)
{
    if (state.link && !state.isAllowed(state.link->frequencyMhz)) {
        const JoinRequest request = *state.request;
        SetOutcome again = join(state, request, nowMs);
        Effects effects = again.accepted ? std::move(again.effects) : leave(state);
        state.networks.retain(state.allowedMhz());
        return effects;
    }
    state.networks.retain(state.allowedMhz());
    // A join that is still searching goes on, on other channels.
    if (state.request && !state.link)
        return { WidenSearch { state.allowedMhz(), false } };
    return {};
}

Effects radioEffects(const CardState& state)
{
    const CardSettings& settings = state.settings;
    return {
        SetRtsThreshold { threshold(settings.rtsThresholdBytes) },
        SetFragmentationThreshold { threshold(settings.fragmentationThresholdBytes) },
        allowedRates(settings, state.wiphy),
        transmitPowerEffect(state),
        SetPowerSave { settings.powerMode != 0 },
    };
}

SetTransmitPower transmitPowerEffect(const CardState& state)
{
    return transmitPower(state.settings.transmitPowerPercent, maxPowerMbm(state));
}
