#pragma once

#include <array>
#include <cstdint>

struct ChannelFreq {
    std::int32_t channel;
    std::uint32_t frequencyKhz;
};

inline constexpr std::int32_t G_nChanFreqCount = 41;

// 2.4 GHz rows first; the search for a frequency runs from the first row, and ad hoc profiles take a row by position.
extern const std::array<ChannelFreq, G_nChanFreqCount> ChannelFreqTable;

// The channel of the first row whose frequency is exactly this one, -1 when there is none.
[[nodiscard]] std::int32_t channelOfFrequency(std::uint32_t frequencyKhz);
