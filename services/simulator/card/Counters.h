#pragma once

#include "driver/records/NdisRecords.h"
#include "driver/records/VxRecords.h"

#include <cstdint>
#include <optional>
#include <random>

// The link as the traffic on it meets it.
struct LinkCondition {
    std::uint32_t rate { 0 }; // units of 500 kbit/s
    std::int32_t signalDbm { 0 };
    bool hasPeers { true }; // nobody talks to a card that is alone in its own network
    std::uint32_t rtsThresholdBytes { 2347 };
};

// Counts of a traffic that swells and ebbs as a person's does, bounded by the rate of the link and troubled by a weak
// signal. They stand still while the link is down.
class Counters {
public:
    explicit Counters(std::uint64_t seed);

    // Lets the time since the last call pass on a link in this condition; nothing for a link that is down.
    void advance(std::int64_t nowMs, const std::optional<LinkCondition>& link);

    // Zeroes the frame counters. The byte counts run on: their reader takes differences.
    void reset();

    [[nodiscard]] std::uint32_t transmittedBytes() const;
    [[nodiscard]] std::uint32_t receivedBytes() const;
    [[nodiscard]] std::uint32_t receivedFrames() const;
    [[nodiscard]] std::uint32_t framesWithoutBuffer() const;
    [[nodiscard]] NDIS_802_11_STATISTICS statistics() const;

private:
    struct FrameCounts {
        double transmitted { 0 };
        double multicastTransmitted { 0 };
        double failed { 0 };
        double retries { 0 };
        double multipleRetries { 0 };
        double rtsSuccesses { 0 };
        double rtsFailures { 0 };
        double duplicates { 0 };
        double received { 0 };
        double multicastReceived { 0 };
        double checksumErrors { 0 };
        double withoutBuffer { 0 };
    };

    [[nodiscard]] double jitter();
    void addTraffic(std::int64_t nowMs, double seconds, const LinkCondition& link);
    void addFrames(double transmitted, double received, double seconds, const LinkCondition& link);

    std::mt19937_64 m_random;
    std::optional<std::int64_t> m_lastMs;
    double m_transmittedBytes { 0 };
    double m_receivedBytes { 0 };
    FrameCounts m_frames;
};
