#include "services/simulator/card/CardState.h"

#include "services/simulator/card/LinkModel.h"

#include <algorithm>

namespace {

// Cards use a locally administered variant of their own address for a network that they create.
MacAddress createdNetworkBssid(MacAddress address)
{
    address[0] = static_cast<std::uint8_t>((address[0] | 0x02) & ~0x01);
    address[5] = static_cast<std::uint8_t>(address[5] ^ 0x80);
    return address;
}

std::optional<LinkCondition> linkCondition(const CardState& state)
{
    const auto& peer = state.association.peer();
    if (!peer)
        return std::nullopt;
    return LinkCondition { linkRate(peer->network, state.settings.desiredRates, peer->signalDbm), peer->signalDbm,
        !state.association.isCreatedNetwork(), state.settings.rtsThresholdBytes };
}

} // namespace

CardState::CardState(const Scenario& scenario, std::uint64_t randomSeed)
    : hardware(scenario.card)
    , neighbourhood(scenario.networks, randomSeed)
    , association(createdNetworkBssid(scenario.card.address))
    , counters(randomSeed)
    , seed(randomSeed)
{
}

void CardState::advance(std::int64_t newNowMs)
{
    nowMs = std::max(nowMs, newNowMs);
    Air air { isRadioOn(), {} };
    if (air.radioOn)
        air.networks = neighbourhood.inRange(nowMs, hardware.supportsFiveGhz);
    association.advance(nowMs, settings, air);

    if (!air.radioOn)
        scanList.forgetAll();
    else if (scanList.isScanDone(nowMs))
        scanList.finishScan(air.networks);
    if (association.peer())
        scanList.keep(*association.peer());
    counters.advance(nowMs, linkCondition(*this));
}

void CardState::powerUp()
{
    settings = {};
    scanList = {};
    association.disassociate();
    counters = Counters(seed);
    isEventRaised = false;
    readyAtMs = nowMs;
}
