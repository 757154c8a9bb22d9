#pragma once

#include "driver/records/NdisRecords.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

// What the driver of an interface says of itself (ethtool).
class DriverInfo {
public:
    // One ethtool request, in place; returns whether the kernel accepted it.
    using Request = std::function<bool(void* data)>;

    explicit DriverInfo(const std::string& interfaceName)
        : DriverInfo(requestTo(interfaceName))
    {
    }
    explicit DriverInfo(Request request)
        : m_request(std::move(request))
    {
    }

    // The address that the adapter was made with, whatever it was changed to; zeros if it cannot be read.
    [[nodiscard]] MacAddress permanentAddress() const;
    // Empty if the driver names none.
    [[nodiscard]] std::string firmwareVersion() const;
    // A counter by name; std::nullopt if the driver does not have it.
    [[nodiscard]] std::optional<std::uint64_t> statistic(std::string_view name);

private:
    [[nodiscard]] static Request requestTo(const std::string& interfaceName);
    [[nodiscard]] std::uint32_t statisticCount() const;
    [[nodiscard]] std::optional<std::size_t> indexOf(std::string_view name, std::uint32_t count) const;

    Request m_request;
    // The place of a statistic is looked up again when the driver has another number of them.
    std::uint32_t m_searchedCount { 0 };
    std::string m_searchedName;
    std::optional<std::size_t> m_statisticIndex;
};

// The first two numbers of a version, each at most 255: "12.345" is 12 and 255.
struct FirmwareNumbers {
    std::uint8_t major { 0 };
    std::uint8_t minor { 0 };
};
[[nodiscard]] FirmwareNumbers firmwareNumbers(std::string_view version);
