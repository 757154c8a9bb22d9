#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

// The values of one tick with a link, as shown on the link status page.
struct LinkSample {
    std::uint32_t linkQualityPercent; // 0 to 100
    std::uint32_t signalPercent; // 0 to 100
    // std::nullopt if the byte counts do not cover exactly this tick.
    std::optional<std::uint32_t> transmitKbps;
    std::optional<std::uint32_t> receiveKbps;

    bool operator==(const LinkSample&) const = default;
};

// The maximum link rate of the cards (108 Mbit/s with two bonded channels). A higher throughput means that the driver
// has reset its counters.
inline constexpr std::uint32_t maxLinkKbps = 108000;
// Returns std::nullopt for a throughput above the maximum.
[[nodiscard]] std::optional<std::uint32_t> plausibleKbps(std::uint32_t kbps);

// The samples of the last five minutes, one per tick. Ticks without a link are gaps.
class LinkHistory {
public:
    static constexpr std::size_t capacity = 150;
    static constexpr int secondsPerSample = 2;
    static constexpr int spanSeconds = static_cast<int>(capacity) * secondsPerSample;

    // Drops the oldest sample when full.
    void append(const std::optional<LinkSample>& sample);

    [[nodiscard]] std::size_t size() const { return m_size; }
    // The sample of this age in ticks; 0 is the newest. std::nullopt for gaps and ages beyond the oldest sample.
    [[nodiscard]] std::optional<LinkSample> at(std::size_t age) const;
    // False if there are only gaps.
    [[nodiscard]] bool hasSamples() const { return m_sampleCount != 0; }
    // The highest known throughput in either direction; 0 if none is known.
    [[nodiscard]] std::uint32_t maxThroughputKbps() const;

private:
    std::array<std::optional<LinkSample>, capacity> m_ring;
    std::size_t m_next { 0 };
    std::size_t m_size { 0 }; // including gaps
    std::size_t m_sampleCount { 0 };
};
