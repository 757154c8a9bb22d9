#pragma once

#include "driver/records/NdisRecords.h"

#include <QString>

#include <cstdint>

// Frames sent without a retry. Negative where the driver counts more retries than frames: nothing is clamped. Wraps in
// 64 bits.
[[nodiscard]] std::int64_t transmittedWithoutRetry(const NDIS_802_11_STATISTICS& statistics);

// Signed decimal.
[[nodiscard]] QString counterText(std::int64_t counter);
// Unsigned decimal: the two general counters have 32 bits.
[[nodiscard]] QString generalCounterText(std::uint32_t counter);
