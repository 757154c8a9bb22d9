#include "services/linux/card/ScanPlan.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

// Measured: 20 channels take 1.7 s if the interface may send probe requests, 2.9 s if it must wait for beacons.
constexpr std::int64_t activeChannelMs = 85;
constexpr std::int64_t passiveChannelMs = 145;
// A linked interface returns to its own channel in between.
constexpr std::int64_t returnMs = 110;
// How much longer ago a channel with known networks counts as scanned.
constexpr std::int64_t knownBonusMs = 10'000;
// How much later a channel counts as listened to for hidden networks.
constexpr std::int64_t listenDelayMs = 10'000;

using Times = std::map<std::uint32_t, std::int64_t>;

bool contains(const std::vector<std::uint32_t>& frequencies, std::uint32_t frequency)
{
    return std::find(frequencies.begin(), frequencies.end(), frequency) != frequencies.end();
}

std::optional<std::int64_t> lastOf(const Times& times, std::uint32_t frequency)
{
    const auto last = times.find(frequency);
    return last == times.end() ? std::nullopt : std::optional(last->second);
}

std::int64_t costOf(bool isPassive, bool isLinked)
{
    return (isPassive ? passiveChannelMs : activeChannelMs) + (isLinked ? returnMs : 0);
}

} // namespace

void ScanPlan::start(const std::vector<ChannelFacts>& channels, const Known& known, bool isLinked, std::int64_t nowMs)
{
    m_pending.clear();
    for (const ChannelFacts& channel : channels) {
        const std::uint32_t frequency = channel.frequencyMhz;
        const bool isListening = contains(known.hiddenMhz, frequency);
        const std::int64_t lastMs = lastOf(m_lastScanMs, frequency).value_or(-knownBonusMs);
        const std::int64_t dueMs = lastMs - (contains(known.frequenciesMhz, frequency) ? knownBonusMs : 0);
        m_pending.push_back(
            { frequency, costOf(isListening || channel.isPassive, isLinked), dueMs, isListening, false });
        // Without probe requests every scan listens.
        if (!isListening && !channel.isPassive)
            addAdditional(channel, isLinked, nowMs);
    }
    std::stable_sort(m_pending.begin(), m_pending.end(),
        [](const Pending& one, const Pending& other) { return one.dueMs < other.dueMs; });
}

void ScanPlan::addAdditional(const ChannelFacts& channel, bool isLinked, std::int64_t nowMs)
{
    const auto lastMs = lastOf(m_lastListenMs, channel.frequencyMhz);
    if (isLinked && lastMs && nowMs - *lastMs < listenPauseMs)
        return;
    m_pending.push_back(
        { channel.frequencyMhz, costOf(true, isLinked), lastMs.value_or(0) + listenDelayMs, true, true });
}

ScanBatch ScanPlan::batch()
{
    ScanBatch batch;
    if (m_pending.empty())
        return batch;
    const Pending first = m_pending.front();
    m_isListening = first.isListening;
    batch.isListening = first.isListening;
    std::int64_t cost = 0;
    for (const Pending& pending : m_pending) {
        if (pending.isListening != first.isListening || pending.isAdditional != first.isAdditional)
            continue;
        cost += pending.costMs;
        if (cost > batchMs && !batch.frequenciesMhz.empty())
            break;
        batch.frequenciesMhz.push_back(pending.frequencyMhz);
    }
    return batch;
}

void ScanPlan::scanned(const std::vector<std::uint32_t>& frequenciesMhz, std::int64_t nowMs)
{
    const bool hasListened = std::exchange(m_isListening, false);
    for (const std::uint32_t frequency : frequenciesMhz) {
        m_lastScanMs[frequency] = nowMs;
        if (hasListened)
            m_lastListenMs[frequency] = nowMs;
    }
    std::erase_if(m_pending, [&frequenciesMhz, hasListened](const Pending& pending) {
        return (hasListened || !pending.isListening) && contains(frequenciesMhz, pending.frequencyMhz);
    });
}
