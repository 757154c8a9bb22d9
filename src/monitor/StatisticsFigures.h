#pragma once

#include "driver/records/NdisRecords.h"

#include <QString>

#include <cstdint>

// Frames transmitted without a retry. Not clamped: negative if the driver counts more retries than frames. Wraps around
// at 64 bits.
[[nodiscard]] std::int64_t transmittedWithoutRetry(const NDIS_802_11_STATISTICS& statistics);

// Signed decimal number.
[[nodiscard]] QString counterText(std::int64_t counter);
// Unsigned decimal number; the general counters have 32 bits.
[[nodiscard]] QString generalCounterText(std::uint32_t counter);
