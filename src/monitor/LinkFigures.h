#pragma once

#include "driver/records/NdisRecords.h"

#include <QString>

#include <cstdint>

// How the driver's link values become the figures and texts of the link status page.

// "5.5 Mbps" or "54 Mbps" from units of 500 kbit/s.
[[nodiscard]] QString transmitRateText(std::uint32_t rateInHalfMbps);

// kbit/s over a tick of 2 s from two readings of a running byte count, which may have wrapped once between them.
// Whole kbit/s: the remainder of the division is lost.
[[nodiscard]] std::uint32_t throughputKbps(std::uint32_t byteCount, std::uint32_t lastByteCount);
// The figure with one decimal, which is always zero.
[[nodiscard]] QString throughputText(std::uint32_t kbps);

// Percent, smoothed with the figure of the last connected tick. A last figure of 0 means that there is none yet.
[[nodiscard]] std::uint32_t linkQualityPercent(std::uint32_t rawQuality, std::uint32_t lastPercent); // mean rounded
[[nodiscard]] std::uint32_t signalPercent(std::uint32_t signalQuality, std::uint32_t lastPercent); // mean truncated

enum class LinkGrade {
    Weak,
    Normal, // above normalAbovePercent
    Good, // above goodAbovePercent
};
inline constexpr std::uint32_t normalAbovePercent = 40;
inline constexpr std::uint32_t goodAbovePercent = 70;
[[nodiscard]] LinkGrade gradeOf(std::uint32_t percent);
// Ends with a blank: the number follows it.
[[nodiscard]] QString gradeText(LinkGrade grade);

[[nodiscard]] QString percentText(std::uint32_t percent);
[[nodiscard]] QString dBmText(std::int32_t rssiDbm);

// "6 <--> 2437000 KHz". A channel of -1 shows as the unsigned number that it is in 32 bits.
[[nodiscard]] QString channelText(std::int32_t channel, std::uint32_t frequencyKhz);
// "Connected <--> NAME <--> 00-11-22-33-44-55"
[[nodiscard]] QString connectionText(const QString& networkName, const MacAddress& bssid);
