#include "monitor/PlotScale.h"

#include "monitor/LinkHistory.h"

#include <algorithm>
#include <array>

namespace {

// Below it an idle link would fill the plot with its beacons.
constexpr std::uint32_t smallestStepKbps = 10;
constexpr std::uint32_t kbpsPerMbps = 1000;

} // namespace

QString ThroughputScale::unitText() const
{
    return stepKbps % kbpsPerMbps == 0 ? QStringLiteral("Mbit/s") : QStringLiteral("kbit/s");
}

QString ThroughputScale::labelText(std::uint32_t line) const
{
    const std::uint32_t unitKbps = stepKbps % kbpsPerMbps == 0 ? kbpsPerMbps : 1;
    return QString::number(line * (stepKbps / unitKbps));
}

ThroughputScale throughputScale(std::uint32_t largestKbps)
{
    const std::uint32_t wantedTop = std::min(largestKbps, fastestLinkKbps);
    for (std::uint32_t decade = smallestStepKbps;; decade *= 10) {
        for (const std::uint32_t factor : std::array { 1U, 2U, 5U }) {
            const ThroughputScale scale { decade * factor };
            if (scale.topKbps() >= wantedTop)
                return scale;
        }
    }
}
