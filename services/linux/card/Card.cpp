#include "services/linux/card/Card.h"

#include "driver/records/Oids.h"
#include "services/linux/card/CardRequests.h"
#include "services/linux/card/JoinPlan.h"
#include "services/linux/card/WirelessMode.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::int64_t busyRetryMs = 300;
constexpr std::int64_t interfaceUpMs = 100;

ScanPlan::Known knownChannels(const NetworkList& list)
{
    ScanPlan::Known known;
    for (const ListedNetwork& network : list.networks()) {
        known.frequenciesMhz.push_back(network.entry.frequencyMhz);
        if (networkName(network.entry.elements).empty())
            known.hiddenMhz.push_back(network.entry.frequencyMhz);
    }
    return known;
}

void append(Effects& effects, Effects more)
{
    std::move(more.begin(), more.end(), std::back_inserter(effects));
}

} // namespace

Card::Card(const CardHardware& hardware, bool isReturning, std::int64_t nowMs)
{
    m_state.hardware = hardware;
    m_state.settings.phyMode = wirelessModeABG; // everything that the hardware can hear, until the client chooses
    m_state.isEventRaised = isReturning;
    m_state.notReadySinceMs = nowMs;
}

CardReply Card::answer(
    std::uint32_t oid, std::span<const std::byte> input, std::uint32_t replyCapacity, std::int64_t nowMs)
{
    if ((oid & oidSetFlag) == 0) {
        auto output = answerQuery(m_state, oid, replyCapacity, nowMs);
        return output ? CardReply { true, std::move(*output), {} } : CardReply {};
    }
    SetOutcome outcome = applySet(m_state, oid & ~oidSetFlag, input, nowMs);
    if (outcome.startsScan) {
        m_state.scanPlan.start(
            m_state.allowedChannels(), knownChannels(m_state.networks), m_state.link.has_value(), nowMs);
        if (!m_state.scanStartMs)
            append(outcome.effects, nextScan(nowMs));
    }
    // A join comes first: the supplicant cannot scan while the kernel does.
    const bool isJoin = std::any_of(outcome.effects.begin(), outcome.effects.end(),
        [](const Effect& effect) { return std::holds_alternative<JoinNetwork>(effect); });
    if (isJoin && m_state.scanStartMs)
        outcome.effects.insert(outcome.effects.begin(), AbortScan {});
    return { outcome.accepted, {}, std::move(outcome.effects) };
}

Effects Card::wiphyRead(const WiphyFacts& wiphy, std::int64_t nowMs)
{
    const bool isFirst = m_state.wiphy.channels.empty();
    const bool isChanged = m_state.wiphy != wiphy;
    m_state.wiphy = wiphy;
    if (!isFirst) {
        Effects effects = isChanged ? followAllowedChannels(m_state, nowMs) : Effects {};
        if (isChanged && m_state.link) // the limits of the power may be others
            effects.emplace_back(transmitPowerEffect(m_state));
        return effects;
    }
    // The client finds a list when it asks for the first time.
    m_state.scanPlan.start(m_state.allowedChannels(), {}, false, nowMs);
    return nextScan(nowMs);
}

Effects Card::radioSwitched(bool isSoftBlocked, bool isHardBlocked, std::int64_t nowMs)
{
    const bool wasOn = m_state.isRadioOn();
    m_state.isSoftBlocked = isSoftBlocked;
    m_state.isHardBlocked = isHardBlocked;
    m_state.settings.radioOn = !isSoftBlocked;
    if (!m_state.isRadioOn()) {
        linkDown();
        m_state.networks.clear();
        m_state.scanPlan.cancel();
        m_state.scanStartMs.reset();
        m_bringUpDueMs.reset();
        return {};
    }
    if (wasOn)
        return {};
    // The kernel took the interface down with the radio, and leaves it so.
    Effects effects { BringUp {} };
    append(effects, radioSettings());
    m_state.scanPlan.start(m_state.allowedChannels(), {}, false, nowMs);
    m_state.requestMs = nowMs; // the supplicant joins again
    m_scanDueMs = nowMs + interfaceUpMs;
    return effects;
}

void Card::stationsRead(const std::vector<StationInfo>& stations)
{
    if (!m_state.link)
        return;
    m_state.counters.follow(stations);
    m_state.link->peers = stations;
}

void Card::noiseRead(std::optional<std::int32_t> noiseDbm)
{
    if (m_state.link)
        m_state.link->noiseDbm = noiseDbm;
}

Effects Card::scanRead(
    std::vector<ScanEntry> entries, const std::vector<std::uint32_t>& frequenciesMhz, std::int64_t nowMs)
{
    const auto allowed = m_state.allowedMhz();
    for (ScanEntry& entry : entries)
        entry.isAssociated = entry.isAssociated && m_state.link && m_state.isAllowed(entry.frequencyMhz);
    std::erase_if(entries, [&allowed](const ScanEntry& entry) {
        return !entry.isAssociated && std::find(allowed.begin(), allowed.end(), entry.frequencyMhz) == allowed.end();
    });
    if (m_state.isRadioOn())
        m_state.networks.update(std::move(entries), nowMs);
    if (frequenciesMhz.empty())
        return {};
    m_state.networks.scanEnded(frequenciesMhz, m_state.scanStartMs.value_or(nowMs - maxScanMs), nowMs);
    m_state.scanPlan.scanned(frequenciesMhz, nowMs);
    m_state.scanStartMs.reset();
    m_scanTries = 0;
    return nextScan(nowMs);
}

Effects Card::scanFailed(bool isPassing, std::int64_t nowMs)
{
    m_state.scanStartMs.reset();
    m_state.scanPlan.failed();
    if (isPassing && ++m_scanTries < maxScanTries) {
        m_scanDueMs = nowMs + busyRetryMs;
    } else {
        m_scanTries = 0;
        m_state.scanPlan.cancel();
    }
    return {};
}

void Card::interfaceRead(bool isUp, std::int64_t nowMs)
{
    if (isUp)
        m_bringUpDueMs.reset();
    else if (m_state.isRadioOn() && !m_bringUpDueMs)
        m_bringUpDueMs = nowMs + bringUpDelayMs;
}

// The next batch, unless a join is going on, which comes first.
Effects Card::nextScan(std::int64_t nowMs)
{
    m_scanDueMs.reset();
    if (m_state.scanPlan.isDone() || !m_state.isRadioOn())
        return {};
    const std::int64_t headStartMs = m_state.scanPlan.isNextAdditional() ? listenHeadStartMs : joinHeadStartMs;
    const std::int64_t freeAtMs = m_state.requestMs + headStartMs;
    if (m_state.request && !m_state.link && m_state.isSupplicantReady && nowMs < freeAtMs) {
        m_scanDueMs = freeAtMs;
        return {};
    }
    m_state.scanStartMs = nowMs;
    const ScanBatch batch = m_state.scanPlan.batch();
    // One name beside the empty one, which asks all networks.
    const bool hasRoomForName = m_state.wiphy.maxScanSsids >= 2;
    return { StartScan { batch.frequenciesMhz, batch.isListening,
        m_state.request && hasRoomForName ? m_state.request->ssid : Octets {} } };
}

Effects Card::supplicantReady(std::int64_t nowMs)
{
    const bool isRestart = std::exchange(m_state.wasSupplicantReady, true);
    m_state.isSupplicantReady = true;
    if (!m_state.request)
        return isRestart ? Effects {} : radioSettings();
    Effects effects = radioSettings();
    // What was asked for meanwhile was not lost.
    if (std::exchange(m_state.isRequestWaiting, false) || !isRestart) {
        append(effects, restore(nowMs));
        return effects;
    }
    m_state.isEventRaised = true;
    m_state.restoreAtMs = nowMs + restoreDelayMs;
    return effects;
}

void Card::supplicantLost(std::int64_t nowMs)
{
    if (m_state.isSupplicantReady)
        m_state.notReadySinceMs = nowMs;
    m_state.isSupplicantReady = false;
    linkDown();
}

Effects Card::restore(std::int64_t nowMs)
{
    m_state.restoreAtMs.reset();
    if (!m_state.request)
        return {};
    m_state.requestMs = nowMs;
    const auto block = planJoin(m_state, *m_state.request);
    return block ? Effects { JoinNetwork { *block } } : Effects {};
}

Effects Card::linkUp(const SupplicantStatus& status, std::int64_t nowMs)
{
    if (!status.isCompleted || !status.bssid || !m_state.request)
        return {};
    const bool isNew = !m_state.link || m_state.link->bssid != *status.bssid;
    if (isNew)
        m_state.counters.linkChanged();
    if (isNew)
        m_state.link.emplace();
    m_state.link->bssid = *status.bssid;
    m_state.link->ssid = status.ssid;
    m_state.link->frequencyMhz = status.frequencyMhz;
    m_state.link->isAdHoc = status.isAdHoc;
    if (m_state.request->bssid && m_state.request->ssid.empty()) {
        m_state.request->ssid = status.ssid;
        m_state.lastSsid = status.ssid;
    }
    Effects effects = radioSettings();
    if (!m_state.scanStartMs)
        append(effects, nextScan(nowMs));
    return effects;
}

bool Card::isNews(const SupplicantStatus& status) const
{
    if (!m_state.request)
        return false;
    if (!m_state.link)
        return status.isCompleted && status.bssid;
    return status.isDown
        || (status.isCompleted && status.bssid
            && (m_state.link->bssid != *status.bssid || m_state.link->frequencyMhz != status.frequencyMhz));
}

Effects Card::networkNotFound(std::int64_t nowMs)
{
    if (!m_state.request)
        return {};
    // An ad hoc network that is not found is created, but only in the supplicant's own time.
    const bool isUrgent
        = m_state.settings.infrastructureMode != Ndis802_11IBSS && nowMs - m_state.requestMs < urgentSearchMs;
    return { WidenSearch { m_state.allowedMhz(), isUrgent } };
}

void Card::resumed()
{
    if (m_state.request)
        m_state.isEventRaised = true;
}

Effects Card::radioSettings() const
{
    return radioEffects(m_state);
}

Effects Card::timePassed(std::int64_t nowMs)
{
    Effects effects;
    if (m_state.restoreAtMs && nowMs >= *m_state.restoreAtMs)
        append(effects, restore(nowMs));
    // A scan whose end was never told: the message was lost.
    if (m_state.scanStartMs && nowMs - *m_state.scanStartMs >= maxScanMs)
        append(effects, scanFailed(false, nowMs));
    if (m_scanDueMs && nowMs >= *m_scanDueMs)
        append(effects, nextScan(nowMs));
    if (m_bringUpDueMs && nowMs >= *m_bringUpDueMs) {
        m_bringUpDueMs.reset();
        effects.emplace_back(BringUp {});
    }
    return effects;
}

std::optional<std::int64_t> Card::nextDueMs() const
{
    std::optional<std::int64_t> due = m_state.restoreAtMs;
    const auto consider = [&due](std::optional<std::int64_t> other) {
        if (other && (!due || *other < *due))
            due = other;
    };
    consider(m_scanDueMs);
    consider(m_bringUpDueMs);
    if (m_state.scanStartMs)
        consider(*m_state.scanStartMs + maxScanMs);
    return due;
}
