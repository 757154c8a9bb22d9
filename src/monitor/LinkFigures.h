#pragma once

#include "driver/records/NdisRecords.h"

#include <QString>

#include <cstdint>

// Converts the driver's link values to the numbers and texts of the link status page.

// "5.5 Mbps" or "54 Mbps" from units of 500 kbit/s.
[[nodiscard]] QString transmitRateText(std::uint32_t rateInHalfMbps);

// Throughput over one tick of 2 s from two readings of a byte counter, which may have wrapped around in between.
// Rounded down to whole kbit/s.
[[nodiscard]] std::uint32_t throughputKbps(std::uint32_t byteCount, std::uint32_t lastByteCount);
// With one decimal, which is always zero.
[[nodiscard]] QString throughputText(std::uint32_t kbps);

// Percentages, averaged with the last value; a last value of 0 means that there is none yet.
[[nodiscard]] std::uint32_t linkQualityPercent(std::uint32_t rawQuality, std::uint32_t lastPercent); // rounded
[[nodiscard]] std::uint32_t signalPercent(std::uint32_t signalQuality, std::uint32_t lastPercent); // truncated

enum class LinkGrade {
    Weak,
    Normal, // above normalAbovePercent
    Good, // above goodAbovePercent
};
inline constexpr std::uint32_t normalAbovePercent = 40;
inline constexpr std::uint32_t goodAbovePercent = 70;
[[nodiscard]] LinkGrade gradeOf(std::uint32_t percent);
// Ends with a space because the number follows.
[[nodiscard]] QString gradeText(LinkGrade grade);

[[nodiscard]] QString percentText(std::uint32_t percent);
[[nodiscard]] QString dBmText(std::int32_t rssiDbm);

// "6 <--> 2437000 KHz". The channel is formatted as an unsigned number.
[[nodiscard]] QString channelText(std::int32_t channel, std::uint32_t frequencyKhz);
// "Connected <--> NAME <--> 00-11-22-33-44-55"
[[nodiscard]] QString connectionText(const QString& networkName, const MacAddress& bssid);
