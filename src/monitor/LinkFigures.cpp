#include "monitor/LinkFigures.h"

#include "driver/MacAddressText.h"

#include <algorithm>

namespace {

// 1 kbit/s over 2 s, 8 bits per byte.
constexpr std::uint32_t bytesPerTickPerKbps = 250;
constexpr double maxPercent = 100.0;

} // namespace

QString transmitRateText(std::uint32_t rateInHalfMbps)
{
    if (rateInHalfMbps % 2 != 0)
        return QString::asprintf("%.1f Mbps", rateInHalfMbps / 2.0);
    return QString::asprintf("%d Mbps", static_cast<int>(rateInHalfMbps >> 1));
}

std::uint32_t throughputKbps(std::uint32_t byteCount, std::uint32_t lastByteCount)
{
    return (byteCount - lastByteCount) / bytesPerTickPerKbps;
}

QString throughputText(std::uint32_t kbps)
{
    return QString::asprintf("%.1f", static_cast<double>(kbps));
}

std::uint32_t linkQualityPercent(std::uint32_t rawQuality, std::uint32_t lastPercent)
{
    // Capped before the conversion because large results do not fit in 32 bits.
    const auto percent = static_cast<std::uint32_t>(std::min(rawQuality * 1.2 + 10.0, maxPercent));
    if (lastPercent == 0)
        return percent;
    return static_cast<std::uint32_t>((lastPercent + percent) / 2.0 + 0.5);
}

std::uint32_t signalPercent(std::uint32_t signalQuality, std::uint32_t lastPercent)
{
    return lastPercent == 0 ? signalQuality : (lastPercent + signalQuality) >> 1;
}

LinkGrade gradeOf(std::uint32_t percent)
{
    if (percent > goodAbovePercent)
        return LinkGrade::Good;
    return percent > normalAbovePercent ? LinkGrade::Normal : LinkGrade::Weak;
}

QString gradeText(LinkGrade grade)
{
    switch (grade) {
    case LinkGrade::Good:
        return QStringLiteral("GOOD ");
    case LinkGrade::Normal:
        return QStringLiteral("NORMAL ");
    case LinkGrade::Weak:
        return QStringLiteral("WEAK ");
    }
    return {};
}

QString percentText(std::uint32_t percent)
{
    return QString::asprintf("%d%%", static_cast<int>(percent));
}

QString dBmText(std::int32_t rssiDbm)
{
    return QString::asprintf("%d dBm", rssiDbm);
}

QString channelText(std::int32_t channel, std::uint32_t frequencyKhz)
{
    return QString::asprintf("%u <--> %d KHz", static_cast<unsigned>(channel), static_cast<int>(frequencyKhz));
}

QString connectionText(const QString& networkName, const MacAddress& bssid)
{
    return QStringLiteral("Connected <--> ") + networkName + QStringLiteral(" <--> ") + macAddressText(bssid);
}
