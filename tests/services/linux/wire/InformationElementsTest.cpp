#include "services/linux/wire/InformationElements.h"

#include <gtest/gtest.h>

TEST(InformationElements, NameIsTheFirstSsidElement)
{
    EXPECT_EQ(networkName(Octets { 1, 1, 2, 0, 3, 'a', 0, 'c', 0, 1, 'x' }), (Octets { 'a', 0, 'c' }));
    EXPECT_EQ(networkName(Octets { 0, 2, 0xFF, 0xFE }), (Octets { 0xFF, 0xFE }));
}

TEST(InformationElements, HiddenNetworksHaveNoName)
{
    EXPECT_TRUE(networkName(Octets { 0, 0 }).empty());
    EXPECT_TRUE(networkName(Octets { 0, 4, 0, 0, 0, 0 }).empty());
    EXPECT_TRUE(networkName(Octets {}).empty());
}

TEST(InformationElements, NamesOfMoreThan32BytesAreIgnored)
{
    Octets elements { 0, 33 };
    elements.resize(35, 'n');
    EXPECT_TRUE(networkName(elements).empty());
    elements[1] = 32;
    elements.pop_back();
    EXPECT_EQ(networkName(elements).size(), 32U);
}

TEST(InformationElements, EndAtATruncatedOne)
{
    EXPECT_FALSE(findElement(Octets { 0, 4, 'a' }, 0));
    EXPECT_FALSE(findElement(Octets { 3, 1, 6, 0 }, 0));
    EXPECT_TRUE(findElement(Octets { 3, 1, 6, 0 }, 3));
}

TEST(InformationElements, RatesComeFromBothElementsWithoutRequirements)
{
    // 0xFF demands 802.11n, 0xFB protection against dictionary attacks; neither is a rate.
    const Octets elements { 1, 3, 0x82, 0x84, 0xFF, 50, 2, 0x6C, 0xFB };
    EXPECT_EQ(announcedRates(elements), (Octets { 0x82, 0x84, 0x6C }));
}

TEST(InformationElements, AtimWindowIsLittleEndian)
{
    EXPECT_EQ(atimWindowKusec(Octets { 6, 2, 0x34, 0x12 }), 0x1234);
    EXPECT_EQ(atimWindowKusec(Octets { 6, 1, 0x34 }), 0);
}
