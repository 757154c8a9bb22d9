#pragma once

#include <QString>

#include <cstdint>

// The throughput axis of the plot: equal divisions that share their grid lines with the percent axis.
struct ThroughputScale {
    static constexpr std::uint32_t divisions = 5;
    std::uint32_t stepKbps; // 1, 2 or 5 times a power of ten, at least 10

    [[nodiscard]] std::uint32_t topKbps() const { return stepKbps * divisions; }
    // "kbit/s", or "Mbit/s" where every label is a whole number of them.
    [[nodiscard]] QString unitText() const;
    // The number at a grid line, in the axis' unit; line 0 is the lowest.
    [[nodiscard]] QString labelText(std::uint32_t line) const;

    bool operator==(const ThroughputScale&) const = default;
};

// The smallest scale whose top is not below the given throughput, at most fastestLinkKbps.
[[nodiscard]] ThroughputScale throughputScale(std::uint32_t largestKbps);
