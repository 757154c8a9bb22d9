#include "services/linux/kernel/DriverInfo.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include <linux/ethtool.h>

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

namespace {

// A driver whose number of statistics changes. Like older kernels it ignores the number that it is given.
class FakeDriver {
public:
    [[nodiscard]] DriverInfo::Request request()
    {
        return [this](void* data) { return answer(data); };
    }

    std::vector<std::string> names { "rx_packets", "rx_duplicates" };
    std::uint32_t grownBy { 0 }; // between the questions for the number and for the values

private:
    bool answer(void* data)
    {
        std::uint32_t command = 0;
        std::memcpy(&command, data, sizeof(command));
        const auto present = static_cast<std::uint32_t>(names.size()) + grownBy;
        if (command == ETHTOOL_GDRVINFO) {
            static_cast<ethtool_drvinfo*>(data)->n_stats = static_cast<std::uint32_t>(names.size());
        } else if (command == ETHTOOL_GSTRINGS) {
            auto* const strings = static_cast<ethtool_gstrings*>(data);
            strings->len = present;
            for (std::size_t i = 0; i < names.size(); ++i)
                std::strncpy(
                    reinterpret_cast<char*>(strings->data) + i * ETH_GSTRING_LEN, names[i].c_str(), ETH_GSTRING_LEN);
        } else if (command == ETHTOOL_GSTATS) {
            auto* const stats = static_cast<ethtool_stats*>(data);
            stats->n_stats = present;
            for (std::uint32_t i = 0; i < present; ++i)
                stats->data[i] = 100 + i;
        }
        return true;
    }
};

} // namespace

TEST(DriverInfo, StatisticIsFoundByItsNameEachTimeTheirNumberChanges)
{
    FakeDriver driver;
    DriverInfo info(driver.request());
    EXPECT_EQ(info.statistic("rx_duplicates"), 101U);
    EXPECT_FALSE(info.statistic("no such counter"));
    driver.names = { "rx_packets", "rx_bytes", "rx_queue", "rx_duplicates" };
    EXPECT_EQ(info.statistic("rx_duplicates"), 103U);
}

TEST(DriverInfo, NumberThatGrowsMeanwhileIsNoOverflow)
{
    FakeDriver driver;
    DriverInfo info(driver.request());
    driver.grownBy = 500; // the values are written all the same
    EXPECT_FALSE(info.statistic("rx_duplicates"));
    driver.grownBy = 0;
    driver.names.insert(driver.names.begin(), "new");
    EXPECT_EQ(info.statistic("rx_duplicates"), 102U);
}
