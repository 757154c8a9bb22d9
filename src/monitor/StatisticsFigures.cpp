#include "monitor/StatisticsFigures.h"

std::int64_t transmittedWithoutRetry(const NDIS_802_11_STATISTICS& statistics)
{
    const auto transmitted = static_cast<std::uint64_t>(statistics.TransmittedFragmentCount);
    const auto retried = static_cast<std::uint64_t>(statistics.RetryCount);
    return static_cast<std::int64_t>(transmitted - retried);
}

QString counterText(std::int64_t counter)
{
    return QString::number(static_cast<qlonglong>(counter));
}

QString generalCounterText(std::uint32_t counter)
{
    return QString::number(counter);
}
