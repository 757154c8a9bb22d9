#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

enum class ChannelBand { Band2GHz, Band5GHz };

// A contiguous part of a band; there are no channels between two parts.
struct ChannelRange {
    ChannelBand band;
    std::uint32_t lowKhz;
    std::uint32_t highKhz;
};

// The channels of IEEE 802.11b/g/a are 20 MHz wide.
inline constexpr std::uint32_t channelHalfWidthKhz = 10'000;

// In ascending order, each 2 MHz wider on either side than the channels of the channel table need.
inline constexpr std::array<ChannelRange, 4> channelRanges { {
    { ChannelBand::Band2GHz, 2'400'000, 2'496'000 }, // channels 1 to 14
    { ChannelBand::Band5GHz, 5'158'000, 5'332'000 }, // 34 to 64
    { ChannelBand::Band5GHz, 5'488'000, 5'712'000 }, // 100 to 140
    { ChannelBand::Band5GHz, 5'733'000, 5'817'000 }, // 149 to 161
} };

// Index of the range that holds the whole channel around a centre frequency.
[[nodiscard]] std::optional<std::size_t> channelRangeOf(std::uint32_t frequencyKhz);
