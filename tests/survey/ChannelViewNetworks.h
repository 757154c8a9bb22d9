#pragma once

#include "driver/records/ChannelTable.h"
#include "survey/ChannelViewModel.h"

#include <algorithm>

inline ChannelViewNetwork networkOn(int row, const QString& name, int channel, int signal)
{
    const auto found = std::find_if(ChannelFreqTable.begin(), ChannelFreqTable.end(),
        [channel](const ChannelFreq& each) { return each.channel == channel; });
    return { row, name, found == ChannelFreqTable.end() ? 0 : found->frequencyKhz, channel, signal };
}

// As many networks as a list can hold in practice, spread over all channels.
inline std::vector<ChannelViewNetwork> manyNetworks()
{
    std::vector<ChannelViewNetwork> networks;
    for (int row = 0; row < 99; ++row) {
        const int channel = ChannelFreqTable[static_cast<std::size_t>(row * 7) % ChannelFreqTable.size()].channel;
        networks.push_back(networkOn(row, QStringLiteral("Network %1").arg(row), channel, row * 37 % 101));
    }
    return networks;
}
