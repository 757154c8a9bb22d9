#include "services/linux/card/CardCounters.h"

#include <utility>

namespace {

void addDifference(ResettableCounter<std::uint64_t>& counter, std::uint32_t previous, std::uint32_t reading)
{
    counter.add(reading >= previous ? reading - previous : reading);
}

} // namespace

void CardCounters::follow(const InterfaceCounters& counters)
{
    m_transmittedBytes.follow(counters.transmittedBytes);
    m_receivedBytes.follow(counters.receivedBytes);
    m_receivedFrames.follow(counters.receivedFrames);
    m_framesWithoutBuffer.follow(counters.framesWithoutBuffer);
}

void CardCounters::follow(const std::vector<StationInfo>& stations)
{
    const bool isBase = std::exchange(m_isBaseWanted, false);
    for (const StationInfo& station : stations) {
        StationInfo& previous = m_peers[station.address];
        if (isBase)
            previous = station;
        addDifference(m_peerTransmitted, previous.transmittedFrames, station.transmittedFrames);
        addDifference(m_peerRetries, previous.transmitRetries, station.transmitRetries);
        addDifference(m_peerFailures, previous.transmitFailures, station.transmitFailures);
        addDifference(m_peerReceived, previous.receivedFrames, station.receivedFrames);
        previous = station;
    }
}

void CardCounters::reset()
{
    for (Counter* const counter : { &m_receivedFrames, &m_framesWithoutBuffer, &m_duplicates, &m_peerTransmitted,
             &m_peerRetries, &m_peerFailures, &m_peerReceived })
        *counter = {};
    m_isBaseWanted = true;
}

// The kernel has no counts of multicast frames, RTS, acknowledgements and checksum errors: they read 0.
NDIS_802_11_STATISTICS CardCounters::statistics() const
{
    NDIS_802_11_STATISTICS record {};
    record.Length = sizeof(record);
    record.TransmittedFragmentCount = static_cast<std::int64_t>(m_peerTransmitted.value());
    record.FailedCount = static_cast<std::int64_t>(m_peerFailures.value());
    record.RetryCount = static_cast<std::int64_t>(m_peerRetries.value());
    record.FrameDuplicateCount = static_cast<std::int64_t>(m_duplicates.value());
    record.ReceivedFragmentCount = static_cast<std::int64_t>(m_peerReceived.value());
    return record;
}
