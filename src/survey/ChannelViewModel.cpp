#include "survey/ChannelViewModel.h"

#include "driver/records/ChannelTable.h"
#include "platform/NetworkName.h"
#include "survey/AccessPoint.h"
#include "survey/ChannelBands.h"

#include <algorithm>
#include <tuple>

namespace {

using Networks = std::vector<const ChannelViewNetwork*>;

bool isEarlierOnAxis(const ChannelViewNetwork& one, const ChannelViewNetwork& other)
{
    return std::tuple(one.frequencyKhz, -one.signal, one.row)
        < std::tuple(other.frequencyKhz, -other.signal, other.row);
}

Networks drawnNetworks(
    const ChannelViewModel& model, bool (*isBefore)(const ChannelViewNetwork&, const ChannelViewNetwork&))
{
    Networks networks;
    for (const ChannelViewNetwork& network : model.networks) {
        if (isDrawn(network))
            networks.push_back(&network);
    }
    std::sort(networks.begin(), networks.end(),
        [isBefore](const auto* one, const auto* other) { return isBefore(*one, *other); });
    return networks;
}

} // namespace

const ChannelViewNetwork* ChannelViewModel::networkOfRow(int row) const
{
    const auto found
        = std::find_if(networks.begin(), networks.end(), [row](const auto& each) { return each.row == row; });
    return found == networks.end() ? nullptr : &*found;
}

std::vector<ChannelViewNetwork> channelViewNetworks(std::span<const AccessPoint> rows)
{
    std::vector<ChannelViewNetwork> networks;
    for (const AccessPoint& row : rows) {
        const NetworkName name = NetworkName::fromText(row.ssid());
        ChannelViewNetwork network { .row = static_cast<int>(networks.size()),
            .name = name.isEmpty() ? NetworkName::hiddenPlaceholder() : name.displayText() };
        network.signal = std::clamp(row.signal().toInt(), 0, 100);
        const auto channel = std::find_if(ChannelFreqTable.begin(), ChannelFreqTable.end(),
            [&row](const ChannelFreq& each) { return QString::number(each.channel) == row.channel(); });
        if (channel != ChannelFreqTable.end()) {
            network.channel = channel->channel;
            network.frequencyKhz = channel->frequencyKhz;
        }
        networks.push_back(std::move(network));
    }
    return networks;
}

bool isDrawn(const ChannelViewNetwork& network)
{
    return channelRangeOf(network.frequencyKhz).has_value();
}

bool isStronger(const ChannelViewNetwork& one, const ChannelViewNetwork& other)
{
    return std::tuple(-one.signal, one.frequencyKhz, one.row)
        < std::tuple(-other.signal, other.frequencyKhz, other.row);
}

int rowAfterStep(const ChannelViewModel& model, ChannelStep step)
{
    const bool bySignal = step == ChannelStep::Stronger || step == ChannelStep::Weaker;
    const Networks networks = drawnNetworks(model, bySignal ? isStronger : isEarlierOnAxis);
    if (networks.empty())
        return -1;
    const auto last = networks.end() - 1;
    const auto selected = std::find_if(
        networks.begin(), networks.end(), [&model](const auto* each) { return each->row == model.selectedRow; });
    const bool hasSelection = selected != networks.end();
    switch (step) {
    case ChannelStep::First:
        return networks.front()->row;
    case ChannelStep::Last:
        return networks.back()->row;
    case ChannelStep::LowerFrequency:
        if (!hasSelection)
            return networks.back()->row;
        [[fallthrough]];
    case ChannelStep::Stronger:
        return hasSelection && selected != networks.begin() ? (*(selected - 1))->row : networks.front()->row;
    case ChannelStep::HigherFrequency:
    case ChannelStep::Weaker:
        if (!hasSelection)
            return networks.front()->row;
        return (*(selected == last ? last : selected + 1))->row;
    }
    return -1;
}
