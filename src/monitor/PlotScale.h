#pragma once

#include <QString>

#include <cstdint>

// The throughput axis of the plot. Its divisions share the grid lines of the percent axis.
struct ThroughputScale {
    static constexpr std::uint32_t divisions = 5;
    std::uint32_t stepKbps; // 1, 2 or 5 times a power of ten, at least 10

    [[nodiscard]] std::uint32_t topKbps() const { return stepKbps * divisions; }
    // "Mbit/s" if all labels are whole numbers in this unit, otherwise "kbit/s".
    [[nodiscard]] QString unitText() const;
    // The number at a grid line, in that unit. Line 0 is the bottom.
    [[nodiscard]] QString labelText(std::uint32_t line) const;

    bool operator==(const ThroughputScale&) const = default;
};

// The smallest scale that covers the given throughput, up to maxLinkKbps.
[[nodiscard]] ThroughputScale throughputScale(std::uint32_t maxKbps);
