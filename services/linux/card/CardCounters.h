#pragma once

#include "driver/records/NdisRecords.h"
#include "services/card/ResettableCounter.h"
#include "services/linux/wire/LinkMessage.h"
#include "services/linux/wire/Nl80211Values.h"

#include <cstdint>
#include <map>
#include <vector>

// The interface's counters as the driver interface has them. None runs backwards: the kernel counts frames per peer and
// starts again at each association.
class CardCounters {
public:
    void follow(const InterfaceCounters& counters);
    // All peers of the link: the access point, or the stations of an ad hoc network.
    void follow(const std::vector<StationInfo>& stations);
    void followDuplicates(std::uint64_t duplicates) { m_duplicates.follow(duplicates); }
    // The counters of the peers start again at 0.
    void linkChanged()
    {
        m_peers.clear();
        m_isBaseWanted = false;
    }

    // Resets the frame counters: they count from the next reading. The byte counts keep running, because their reader uses
    // differences.
    void reset();

    [[nodiscard]] std::uint32_t transmittedBytes() const { return narrow(m_transmittedBytes); }
    [[nodiscard]] std::uint32_t receivedBytes() const { return narrow(m_receivedBytes); }
    [[nodiscard]] std::uint32_t receivedFrames() const { return narrow(m_receivedFrames); }
    [[nodiscard]] std::uint32_t framesWithoutBuffer() const { return narrow(m_framesWithoutBuffer); }
    [[nodiscard]] NDIS_802_11_STATISTICS statistics() const;

private:
    using Counter = ResettableCounter<std::uint64_t>;
    [[nodiscard]] static std::uint32_t narrow(const Counter& counter)
    {
        return static_cast<std::uint32_t>(counter.value());
    }

    Counter m_transmittedBytes;
    Counter m_receivedBytes;
    Counter m_receivedFrames;
    Counter m_framesWithoutBuffer;
    Counter m_duplicates;
    Counter m_peerTransmitted;
    Counter m_peerRetries;
    Counter m_peerFailures;
    Counter m_peerReceived;
    std::map<MacAddress, StationInfo> m_peers; // as last read
    bool m_isBaseWanted { false }; // the next reading of the peers is what to count from
};
