#include "survey/ChannelViewText.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("ChannelView", text);
}

QString networkCount(std::size_t count)
{
    return count == 1 ? tr("1 network") : tr("%1 networks").arg(count);
}

// Names may contain place markers such as "%1", so every text below takes its arguments in one call.
QString bandText(const ChannelViewModel& model, ChannelBand band)
{
    std::vector<const ChannelViewNetwork*> networks;
    for (const ChannelViewNetwork& network : model.networks) {
        const auto range = channelRangeOf(network.frequencyKhz);
        if (range && channelRanges[*range].band == band)
            networks.push_back(&network);
    }
    if (networks.empty())
        return {};
    std::sort(
        networks.begin(), networks.end(), [](const auto* one, const auto* other) { return isStronger(*one, *other); });
    QStringList texts;
    for (std::size_t index = 0; index < std::min(networks.size(), maxDescribedNetworks); ++index)
        texts += channelNetworkText(*networks[index], networks[index]->row == model.joinedRow);
    if (networks.size() > maxDescribedNetworks)
        texts += tr("and %1 more").arg(networks.size() - maxDescribedNetworks);
    return tr("%1 on %2: %3.").arg(networkCount(networks.size()), bandName(band), texts.join(tr("; ")));
}

} // namespace

QString bandName(ChannelBand band)
{
    return band == ChannelBand::Band2GHz ? tr("2.4 GHz") : tr("5 GHz");
}

QString channelNetworkText(const ChannelViewNetwork& network, bool isJoined)
{
    const QString channel = isDrawn(network) ? tr("channel %1").arg(network.channel) : tr("an unknown channel");
    const QString text = isJoined ? tr("%1 on %2, signal %3, connected") : tr("%1 on %2, signal %3");
    return text.arg(network.name, channel, QString::number(network.signal));
}

QString channelViewDescription(const ChannelViewModel& model)
{
    QStringList texts;
    if (const ChannelViewNetwork* const selected = model.networkOfRow(model.selectedRow))
        texts += tr("Selected: %1.").arg(channelNetworkText(*selected, selected->row == model.joinedRow));
    for (const ChannelBand band : { ChannelBand::Band2GHz, ChannelBand::Band5GHz }) {
        const QString text = bandText(model, band);
        if (!text.isEmpty())
            texts += text;
    }
    const auto unknown = std::count_if(
        model.networks.begin(), model.networks.end(), [](const auto& network) { return !isDrawn(network); });
    if (unknown > 0)
        texts += tr("%1 on an unknown channel.").arg(networkCount(static_cast<std::size_t>(unknown)));
    return texts.join(u' ');
}
