#pragma once

#include "driver/records/NdisRecords.h"
#include "driver/records/VxRecords.h"
#include "services/card/ResettableCounter.h"

#include <array>
#include <cstdint>
#include <optional>
#include <random>

struct LinkCondition {
    std::uint32_t rate { 0 }; // units of 500 kbit/s
    std::int32_t signalDbm { 0 };
    bool hasPeers { true }; // false for a card that is the only station of an ad hoc network it created
    std::uint32_t rtsThresholdBytes { 2347 };
};

// Counts simulated traffic that rises and falls like a person's, limited by the link rate and impaired by a weak
// signal. Nothing is counted while the link is down.
class Counters {
public:
    explicit Counters(std::uint64_t seed);

    // Simulates the time since the last call on a link in this condition; std::nullopt while the link is down.
    void advance(std::int64_t nowMs, const std::optional<LinkCondition>& link);

    // Resets the frame counters. The byte counts keep running: their reader uses differences.
    void reset();

    [[nodiscard]] std::uint32_t transmittedBytes() const;
    [[nodiscard]] std::uint32_t receivedBytes() const;
    [[nodiscard]] std::uint32_t receivedFrames() const;
    [[nodiscard]] std::uint32_t framesWithoutBuffer() const;
    [[nodiscard]] NDIS_802_11_STATISTICS statistics() const;

private:
    enum Frames {
        Transmitted,
        MulticastTransmitted,
        Failed,
        Retries,
        MultipleRetries,
        RtsSuccesses,
        RtsFailures,
        Duplicates,
        Received,
        MulticastReceived,
        ChecksumErrors,
        WithoutBuffer,
        FrameCounterCount,
    };

    [[nodiscard]] double jitter();
    void addTraffic(std::int64_t nowMs, double seconds, const LinkCondition& link);
    void addFrames(double transmitted, double received, double seconds, const LinkCondition& link);
    [[nodiscard]] std::int64_t whole(Frames counter) const;

    std::mt19937_64 m_random;
    std::optional<std::int64_t> m_lastMs;
    double m_transmittedBytes { 0 };
    double m_receivedBytes { 0 };
    std::array<ResettableCounter<double>, FrameCounterCount> m_frames;
};
