#include "services/linux/card/ScanPlan.h"

#include "services/linux/card/NetworkList.h"

#include <algorithm>

namespace {

// Measured: 20 channels take 1.7 s if the interface may send probe requests, 2.9 s if it must wait for beacons.
constexpr std::int64_t activeChannelMs = 85;
constexpr std::int64_t passiveChannelMs = 145;
// A linked interface returns to its own channel in between.
constexpr std::int64_t returnMs = 110;
// How much longer ago a channel with known networks counts as scanned.
constexpr std::int64_t knownBonusMs = 10'000;

bool contains(const std::vector<std::uint32_t>& frequencies, std::uint32_t frequency)
{
    return std::find(frequencies.begin(), frequencies.end(), frequency) != frequencies.end();
}

} // namespace

void ScanPlan::add(const ChannelFacts& channel, bool isListening, bool isLinked)
{
    const std::int64_t cost = isListening || channel.isPassive ? passiveChannelMs : activeChannelMs;
    m_pending.push_back({ channel.frequencyMhz, cost + (isLinked ? returnMs : 0), isListening });
}

void ScanPlan::start(const std::vector<ChannelFacts>& channels, const Known& known, bool isLinked)
{
    m_pending.clear();
    for (const ChannelFacts& channel : channels)
        add(channel, contains(known.hiddenMhz, channel.frequencyMhz), isLinked);
    const auto dueMs = [this, &known](std::uint32_t frequency) {
        const auto last = m_lastScanMs.find(frequency);
        const std::int64_t lastMs = last == m_lastScanMs.end() ? -knownBonusMs : last->second;
        return lastMs - (contains(known.frequenciesMhz, frequency) ? knownBonusMs : 0);
    };
    std::stable_sort(m_pending.begin(), m_pending.end(), [&dueMs](const Pending& one, const Pending& other) {
        return dueMs(one.frequencyMhz) < dueMs(other.frequencyMhz);
    });
    if (isLinked)
        return;
    for (const ChannelFacts& channel : channels) {
        if (channel.frequencyMhz < firstFiveGhzMhz && !channel.isPassive
            && !contains(known.hiddenMhz, channel.frequencyMhz))
            add(channel, true, isLinked);
    }
}

ScanBatch ScanPlan::batch()
{
    ScanBatch batch;
    if (m_pending.empty())
        return batch;
    m_isListening = m_pending.front().isListening;
    batch.isListening = m_isListening;
    std::int64_t cost = 0;
    for (const Pending& pending : m_pending) {
        if (pending.isListening != m_isListening)
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
    for (const std::uint32_t frequency : frequenciesMhz)
        m_lastScanMs[frequency] = nowMs;
    std::erase_if(m_pending, [this, &frequenciesMhz](const Pending& pending) {
        return pending.isListening == m_isListening && contains(frequenciesMhz, pending.frequencyMhz);
    });
}
