#include "monitor/PlotScale.h"

#include "monitor/LinkHistory.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace {

// With a smaller step, the beacons of an idle link would fill the plot.
constexpr std::uint32_t minStepKbps = 10;
constexpr std::uint32_t kbpsPerMbps = 1000;

} // namespace

QString ThroughputScale::unitText() const
{
    return stepKbps % kbpsPerMbps == 0 ? QCoreApplication::translate("ThroughputScale", "Mbit/s")
                                       : QCoreApplication::translate("ThroughputScale", "kbit/s");
}

QString ThroughputScale::labelText(std::uint32_t line) const
{
    const std::uint32_t unitKbps = stepKbps % kbpsPerMbps == 0 ? kbpsPerMbps : 1;
    return QString::number(line * (stepKbps / unitKbps));
}

ThroughputScale throughputScale(std::uint32_t maxKbps)
{
    const std::uint32_t minTop = std::min(maxKbps, maxLinkKbps);
    for (std::uint32_t decade = minStepKbps;; decade *= 10) {
        for (const std::uint32_t factor : std::array { 1U, 2U, 5U }) {
            const ThroughputScale scale { decade * factor };
            if (scale.topKbps() >= minTop)
                return scale;
        }
    }
}
