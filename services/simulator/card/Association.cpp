#include "services/simulator/card/Association.h"

#include "services/simulator/card/JoinRules.h"

#include <algorithm>

namespace {

constexpr MacAddress anyBssid { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF };

std::optional<HeardNetwork> heardAt(const Air& air, const MacAddress& bssid)
{
    for (const HeardNetwork& heard : air.networks) {
        if (heard.network.bssid == bssid)
            return heard;
    }
    return std::nullopt;
}

} // namespace

Association::Association(const MacAddress& createdBssid)
    : m_createdBssid(createdBssid)
{
}

void Association::joinSsid(const std::string& ssid, std::int64_t nowMs)
{
    m_ssid = ssid;
    m_bssid.reset();
    m_createWhenAbsent = !ssid.empty();
    start(nowMs);
}

void Association::joinBssid(const MacAddress& bssid, std::int64_t nowMs)
{
    if (bssid == anyBssid)
        m_bssid.reset();
    else
        m_bssid = bssid;
    if (!m_bssid && !m_ssid)
        m_ssid = std::string();
    m_createWhenAbsent = false;
    start(nowMs);
}

void Association::disassociate()
{
    m_peer.reset();
    m_ssid.reset();
    m_bssid.reset();
    m_state = LinkState::Idle;
}

void Association::start(std::int64_t nowMs)
{
    m_peer.reset();
    m_startMs = nowMs;
    m_state = LinkState::Joining;
}

void Association::advance(std::int64_t nowMs, const CardSettings& settings, const Air& air)
{
    switch (m_state) {
    case LinkState::Idle:
    case LinkState::Refused:
        return;
    case LinkState::Joining:
        if (nowMs - m_startMs >= joinDurationMs)
            finish(settings, air);
        return;
    case LinkState::Up:
        follow(air);
        return;
    case LinkState::Waiting:
        if (air.radioOn && isWorthJoining(settings, air))
            start(nowMs);
        return;
    }
}

// Joins the strongest requested network that accepts the settings. If some were heard but all reject the settings, the
// request is refused for good: a retry with the same settings would not help.
void Association::finish(const CardSettings& settings, const Air& air)
{
    for (const HeardNetwork& heard : air.networks) {
        if (isRequested(heard.network) && settingsFit(settings, heard.network)
            && (!m_peer || heard.signalDbm > m_peer->signalDbm))
            m_peer = heard;
    }
    if (!m_peer && air.radioOn && !isRequestedHeard(air) && mayCreate(settings))
        m_peer = createdNetwork(settings);
    if (m_peer) {
        m_createWhenAbsent = isCreatedNetwork();
        m_state = LinkState::Up;
        return;
    }
    const bool isRefused = isRequestedHeard(air) || (air.radioOn && mayCreate(settings));
    m_state = isRefused ? LinkState::Refused : LinkState::Waiting;
}

void Association::follow(const Air& air)
{
    if (isCreatedNetwork() && air.radioOn)
        return;
    m_peer = heardAt(air, m_peer->network.bssid);
    if (!m_peer)
        m_state = LinkState::Waiting;
}

// A hidden network answers only a card that sends its name, so a request by address needs the name as well.
bool Association::isRequested(const ScenarioNetwork& network) const
{
    if (m_bssid)
        return network.bssid == *m_bssid && (!network.hidden || m_ssid == network.ssid);
    if (!m_ssid)
        return false;
    return m_ssid->empty() ? !network.hidden : *m_ssid == network.ssid;
}

bool Association::isAnyNetworkRequested() const
{
    return !m_bssid && m_ssid && m_ssid->empty();
}

// A request for any network cannot be refused: the card keeps looking.
bool Association::isRequestedHeard(const Air& air) const
{
    return !isAnyNetworkRequested()
        && std::any_of(air.networks.begin(), air.networks.end(),
            [this](const HeardNetwork& heard) { return isRequested(heard.network); });
}

bool Association::isWorthJoining(const CardSettings& settings, const Air& air) const
{
    if (mayCreate(settings) || isRequestedHeard(air))
        return true;
    return isAnyNetworkRequested()
        && std::any_of(air.networks.begin(), air.networks.end(), [this, &settings](const HeardNetwork& heard) {
               return isRequested(heard.network) && settingsFit(settings, heard.network);
           });
}

bool Association::mayCreate(const CardSettings& settings) const
{
    return m_createWhenAbsent && settings.infrastructureMode == Ndis802_11IBSS;
}

std::optional<HeardNetwork> Association::createdNetwork(const CardSettings& settings) const
{
    auto network = createdAdHocNetwork(settings);
    if (!network)
        return std::nullopt;
    network->ssid = *m_ssid;
    network->bssid = m_createdBssid;
    return HeardNetwork { *network, network->signalDbm };
}
