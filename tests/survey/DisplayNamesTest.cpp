#include "survey/DisplayNames.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace {

template <std::size_t size> std::vector<std::string_view> displayNames(const std::array<std::string_view, size>& table)
{
    std::vector<std::string_view> names;
    for (std::size_t value = 0; value < size; ++value)
        names.push_back(displayName(table, value));
    return names;
}

TEST(DisplayNames, AreIndexedByDriverValueAndEmptyForStatesThatAreNeverShown)
{
    using Names = std::vector<std::string_view>;
    EXPECT_EQ(displayNames(strAryEncryption), (Names { "WEP", "Not Used", "", "", "TKIP", "", "AES", "" }));
    EXPECT_EQ(displayNames(strAryNetworkType), (Names { "Ad Hoc", "Infrastructure", "Automatic" }));
    EXPECT_EQ(
        displayNames(strAryAuthenType), (Names { "Open System", "Shared Key", "", "WPA", "WPA-PSK", "WPA-None" }));
}

TEST(DisplayNames, AreEmptyForValuesOutsideTheTable)
{
    EXPECT_EQ(displayName(strAryEncryption, 8), "");
    EXPECT_EQ(displayName(strAryNetworkType, -1), "");
    EXPECT_EQ(displayName(strAryNetworkType, 0x7FFFFFFF), "");
}

} // namespace
