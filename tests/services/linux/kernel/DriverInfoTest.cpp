#include "services/linux/kernel/DriverInfo.h"

#include <gtest/gtest.h>

TEST(FirmwareNumbers, AreTheFirstTwoOfTheVersion)
{
    const auto numbers = [](const char* version) {
        const FirmwareNumbers found = firmwareNumbers(version);
        return std::pair<int, int>(found.major, found.minor);
    };
    EXPECT_EQ(numbers("36.8"), (std::pair { 36, 8 }));
    EXPECT_EQ(numbers("FW v1.300-x"), (std::pair { 1, 255 }));
    EXPECT_EQ(numbers("7"), (std::pair { 7, 0 }));
    EXPECT_EQ(numbers("N/A"), (std::pair { 0, 0 }));
    EXPECT_EQ(numbers(""), (std::pair { 0, 0 }));
}

TEST(DriverInfo, InterfaceWithoutADriverHasNothingToSay)
{
    DriverInfo info("no-such-card");
    EXPECT_TRUE(info.firmwareVersion().empty());
    EXPECT_FALSE(info.statistic("rx_duplicates"));
    EXPECT_EQ(info.permanentAddress(), MacAddress {});
}
