#include "monitor/LinkHistory.h"

#include <algorithm>

std::optional<std::uint32_t> plausibleKbps(std::uint32_t kbps)
{
    return kbps <= maxLinkKbps ? std::optional(kbps) : std::nullopt;
}

void LinkHistory::append(const std::optional<LinkSample>& sample)
{
    auto& slot = m_ring[m_next];
    if (slot.has_value())
        --m_sampleCount;
    slot = sample;
    if (slot.has_value())
        ++m_sampleCount;
    m_next = (m_next + 1) % capacity;
    m_size = std::min(m_size + 1, capacity);
}

std::optional<LinkSample> LinkHistory::at(std::size_t age) const
{
    if (age >= m_size)
        return std::nullopt;
    return m_ring[(m_next + capacity - 1 - age) % capacity];
}

std::uint32_t LinkHistory::maxThroughputKbps() const
{
    std::uint32_t maximum = 0;
    for (const auto& sample : m_ring) {
        if (sample.has_value())
            maximum = std::max({ maximum, sample->transmitKbps.value_or(0), sample->receiveKbps.value_or(0) });
    }
    return maximum;
}
