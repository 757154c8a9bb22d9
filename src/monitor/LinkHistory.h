#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

// The figures of one connected tick, as the link status page shows them.
struct LinkSample {
    std::uint32_t linkQualityPercent; // 0 to 100
    std::uint32_t signalPercent; // 0 to 100
    // Absent where the byte counts say nothing about this tick alone.
    std::optional<std::uint32_t> transmitKbps;
    std::optional<std::uint32_t> receiveKbps;

    bool operator==(const LinkSample&) const = default;
};

// The rate of the fastest link the cards have (108 Mbit/s with both channels bonded). A higher throughput comes from
// counts that the driver has restarted.
inline constexpr std::uint32_t fastestLinkKbps = 108000;
// The figure, or nothing where no link can have carried it.
[[nodiscard]] std::optional<std::uint32_t> plausibleKbps(std::uint32_t kbps);

// The samples of the last five minutes, one a tick. A tick without a link is a gap.
class LinkHistory {
public:
    static constexpr std::size_t capacity = 150;
    static constexpr int secondsPerSample = 2;
    static constexpr int spanSeconds = static_cast<int>(capacity) * secondsPerSample;

    // Forgets the oldest sample when full.
    void append(const std::optional<LinkSample>& sample);

    [[nodiscard]] std::size_t size() const { return m_size; }
    // By age in ticks: 0 is the newest. A gap, and whatever lies behind the oldest, is nullopt.
    [[nodiscard]] std::optional<LinkSample> at(std::size_t age) const;
    // False when nothing but gaps is kept.
    [[nodiscard]] bool hasSamples() const { return m_sampleCount != 0; }
    // 0 when there is none.
    [[nodiscard]] std::uint32_t largestThroughputKbps() const;

private:
    std::array<std::optional<LinkSample>, capacity> m_ring;
    std::size_t m_next { 0 };
    std::size_t m_size { 0 }; // gaps included
    std::size_t m_sampleCount { 0 };
};
