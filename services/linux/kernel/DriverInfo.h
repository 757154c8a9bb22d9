#pragma once

#include "driver/records/NdisRecords.h"
#include "posix/FileDescriptor.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What the driver of an interface says of itself (ethtool).
class DriverInfo {
public:
    explicit DriverInfo(std::string interfaceName);

    // The address that the adapter was made with, whatever it was changed to; zeros if it cannot be read.
    [[nodiscard]] MacAddress permanentAddress() const;
    // Empty if the driver names none.
    [[nodiscard]] std::string firmwareVersion() const;
    // A counter by name; std::nullopt if the driver does not have it.
    [[nodiscard]] std::optional<std::uint64_t> statistic(std::string_view name);

private:
    [[nodiscard]] bool request(void* data) const;
    void findStatistic(std::string_view name);

    std::string m_interfaceName;
    FileDescriptor m_socket;
    bool m_isSearched { false };
    std::size_t m_statisticCount { 0 };
    std::optional<std::size_t> m_statisticIndex;
};

// The first two numbers of a version, each at most 255: "12.345" is 12 and 255.
struct FirmwareNumbers {
    std::uint8_t major { 0 };
    std::uint8_t minor { 0 };
};
[[nodiscard]] FirmwareNumbers firmwareNumbers(std::string_view version);
