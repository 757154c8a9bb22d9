#include "driver/records/Oids.h"
#include "services/card/SettingRequests.h"
#include "services/simulator/card/OidHandlers.h"

#include <array>

namespace {

using Input = std::span<const std::byte>;

constexpr std::uint32_t scanInputBytes = 4;

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

bool resetCounters(CardState& state, Input input)
{
    if (!input.empty())
        return false;
    state.counters.reset();
    return true;
}

struct SetRow {
    std::uint32_t oid;
    bool (*apply)(CardState&, Input);
};

constexpr std::array sets {
    SetRow { OID_802_11_BSSID, setBssid },
    SetRow { OID_802_11_SSID, setSsid },
    SetRow { OID_802_11_DISASSOCIATE, disassociate },
    SetRow { OID_802_11_BSSID_LIST_SCAN, startScan },
    SetRow { VX_OID_802_11_RESET_COUNTERS, resetCounters },
};

} // namespace

bool applySet(CardState& state, std::uint32_t oid, std::span<const std::byte> input)
{
    for (const SetRow& row : sets) {
        if (row.oid == oid)
            return row.apply(state, input);
    }
    const std::int32_t previousMode = state.settings.infrastructureMode;
    const bool isStored = storeSetting(state.settings, oid, input, state.hardware.supportsFiveGhz).value_or(false);
    // A link of the other mode cannot continue.
    if (state.settings.infrastructureMode != previousMode)
        state.association.disassociate();
    return isStored;
}
