#include "driver/records/ChannelTable.h"

#include <cstddef>

namespace {

constexpr std::array<std::int32_t, G_nChanFreqCount> channels {
    1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, //
    34, 36, 38, 40, 42, 44, 46, 48, 52, 56, 60, 64, //
    100, 104, 108, 112, 116, 120, 124, 128, 132, 136, 140, //
    149, 153, 157, 161, //
};

constexpr std::uint32_t frequencyKhzOf(std::int32_t channel)
{
    const auto number = static_cast<std::uint32_t>(channel);
    if (channel == 14) // Japan only; not on the 5 MHz grid of the band
        return 2484000;
    return channel < 14 ? 2407000 + 5000 * number : 5000000 + 5000 * number;
}

constexpr auto makeTable()
{
    std::array<ChannelFreq, G_nChanFreqCount> table {};
    for (std::size_t row = 0; row < table.size(); ++row)
        table[row] = { channels[row], frequencyKhzOf(channels[row]) };
    return table;
}

} // namespace

constinit const std::array<ChannelFreq, G_nChanFreqCount> ChannelFreqTable = makeTable();

std::int32_t channelOfFrequency(std::uint32_t frequencyKhz)
{
    for (const auto& row : ChannelFreqTable) {
        if (row.frequencyKhz == frequencyKhz)
            return row.channel;
    }
    return -1;
}
