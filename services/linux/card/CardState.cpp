#include "services/linux/card/CardState.h"

#include "driver/records/ChannelTable.h"
#include "services/linux/card/WirelessMode.h"

#include <algorithm>

namespace {

bool isUsable(const ChannelFacts& channel)
{
    return !channel.isDisabled && channelOfFrequency(channel.frequencyMhz * 1000) != -1;
}

} // namespace

bool CardState::supportsFiveGhz() const
{
    return std::any_of(wiphy.channels.begin(), wiphy.channels.end(),
        [](const ChannelFacts& channel) { return channel.frequencyMhz >= firstFiveGhzMhz && isUsable(channel); });
}

void CardState::dropLink()
{
    link.reset();
    counters.linkChanged();
    networks.linkDropped();
}

std::vector<ChannelFacts> CardState::allowedChannels() const
{
    std::vector<ChannelFacts> allowed;
    std::copy_if(
        wiphy.channels.begin(), wiphy.channels.end(), std::back_inserter(allowed), [this](const ChannelFacts& channel) {
            return isUsable(channel) && modeAllows(settings.phyMode, channel.frequencyMhz);
        });
    return allowed;
}

std::vector<std::uint32_t> CardState::allowedMhz() const
{
    std::vector<std::uint32_t> frequencies;
    for (const ChannelFacts& channel : allowedChannels())
        frequencies.push_back(channel.frequencyMhz);
    return frequencies;
}

bool CardState::isAllowed(std::uint32_t frequencyMhz) const
{
    if (frequencyMhz == 0) // unknown
        return true;
    return modeAllows(settings.phyMode, frequencyMhz)
        && std::none_of(wiphy.channels.begin(), wiphy.channels.end(), [frequencyMhz](const ChannelFacts& channel) {
               return channel.frequencyMhz == frequencyMhz && channel.isDisabled;
           });
}
