#include "survey/ChannelBands.h"

std::optional<std::size_t> channelRangeOf(std::uint32_t frequencyKhz)
{
    for (std::size_t index = 0; index < channelRanges.size(); ++index) {
        const ChannelRange& range = channelRanges[index];
        if (frequencyKhz >= range.lowKhz + channelHalfWidthKhz && frequencyKhz <= range.highKhz - channelHalfWidthKhz)
            return index;
    }
    return std::nullopt;
}
