#include "monitor/LinkDescription.h"

namespace {

QString throughputWords(const std::optional<std::uint32_t>& kbps)
{
    if (!kbps.has_value())
        return QStringLiteral("unknown");
    return QString::number(*kbps) + QStringLiteral(" kilobits per second");
}

} // namespace

QString describeNewest(const LinkHistory& history)
{
    if (history.size() == 0)
        return QStringLiteral("No values yet.");
    const auto newest = history.at(0);
    if (!newest.has_value())
        return QStringLiteral("Not connected.");
    return QStringLiteral("Link quality %1 percent, signal strength %2 percent, transmit %3, receive %4.")
        .arg(QString::number(newest->linkQualityPercent), QString::number(newest->signalPercent),
            throughputWords(newest->transmitKbps), throughputWords(newest->receiveKbps));
}
