#pragma once

#include <array>
#include <cstdint>

struct ChannelFreq {
    std::int32_t channel;
    std::uint32_t frequencyKhz;
};

inline constexpr std::int32_t G_nChanFreqCount = 41;
inline constexpr std::int32_t maxTwoGhzChannel = 14;

// 2.4 GHz channels first. The order matters: ad hoc profiles refer to a row by its index.
extern const std::array<ChannelFreq, G_nChanFreqCount> ChannelFreqTable;

// The channel of the first row with exactly this frequency; -1 if there is none.
[[nodiscard]] std::int32_t channelOfFrequency(std::uint32_t frequencyKhz);
