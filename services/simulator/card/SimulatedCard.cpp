#include "services/simulator/card/SimulatedCard.h"

#include "driver/records/Oids.h"
#include "services/simulator/card/OidHandlers.h"

SimulatedCard::SimulatedCard(const Scenario& scenario, std::uint64_t seed)
    : m_state(scenario, seed)
{
}

CardAnswer SimulatedCard::answer(
    std::uint32_t oid, std::span<const std::byte> input, std::uint32_t replyCapacity, std::int64_t nowMs)
{
    m_state.advance(nowMs);
    if ((oid & oidSetFlag) != 0)
        return { applySet(m_state, oid & ~oidSetFlag, input), {} };
    auto output = answerQuery(m_state, oid, replyCapacity);
    return output ? CardAnswer { true, std::move(*output) } : CardAnswer {};
}

void SimulatedCard::powerUp(std::int64_t nowMs)
{
    m_state.advance(nowMs);
    m_state.powerUp();
}

void SimulatedCard::reset(std::int64_t nowMs)
{
    powerUp(nowMs);
    m_state.isEventRaised = true;
    m_state.readyAtMs = m_state.nowMs + resetDurationMs;
}

void SimulatedCard::setHardwareRadio(bool isOn, std::int64_t nowMs)
{
    m_state.advance(nowMs);
    m_state.hardware.hardwareRadioOn = isOn;
    m_state.advance(nowMs);
}

void SimulatedCard::raiseEvent()
{
    m_state.isEventRaised = true;
}

void SimulatedCard::holdReady(bool isHeld)
{
    m_state.isReadyHeld = isHeld;
}

bool SimulatedCard::addNetwork(const ScenarioNetwork& network, std::int64_t nowMs)
{
    m_state.advance(nowMs);
    const bool isAdded = m_state.neighbourhood.add(network);
    m_state.advance(nowMs);
    return isAdded;
}

bool SimulatedCard::removeNetwork(const MacAddress& bssid, std::int64_t nowMs)
{
    m_state.advance(nowMs);
    const bool isRemoved = m_state.neighbourhood.remove(bssid);
    m_state.advance(nowMs);
    return isRemoved;
}

bool SimulatedCard::moveNetwork(const MacAddress& bssid, std::int32_t signalDbm, std::int64_t nowMs)
{
    m_state.advance(nowMs);
    const bool isMoved = m_state.neighbourhood.move(bssid, signalDbm);
    m_state.advance(nowMs);
    return isMoved;
}

const CardState& SimulatedCard::stateAt(std::int64_t nowMs)
{
    m_state.advance(nowMs);
    return m_state;
}
