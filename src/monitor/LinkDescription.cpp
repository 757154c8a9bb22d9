#include "monitor/LinkDescription.h"

#include <QCoreApplication>

namespace {

struct LinkDescription {
    Q_DECLARE_TR_FUNCTIONS(LinkDescription)
};

QString throughputWords(const std::optional<std::uint32_t>& kbps)
{
    return kbps ? LinkDescription::tr("%1 kilobits per second").arg(*kbps) : LinkDescription::tr("unknown");
}

} // namespace

QString describeNewest(const LinkHistory& history)
{
    if (history.size() == 0)
        return LinkDescription::tr("No values yet.");
    const auto newest = history.at(0);
    if (!newest)
        return LinkDescription::tr("Not connected.");
    return LinkDescription::tr("Link quality %1 percent, signal strength %2 percent, transmit %3, receive %4.")
        .arg(QString::number(newest->linkQualityPercent), QString::number(newest->signalPercent),
            throughputWords(newest->transmitKbps), throughputWords(newest->receiveKbps));
}
