#include "survey/AccessPoint.h"

#include <gtest/gtest.h>

namespace {

AccessPoint sample()
{
    return AccessPoint::initWithSSID(QStringLiteral("home"), QStringLiteral("00-11-22-33-44-55"), QStringLiteral("63"),
        QStringLiteral("6"), QStringLiteral("WPA-PSK"), QStringLiteral("TKIP"), QStringLiteral("Infrastructure"));
}

TEST(AccessPoint, StartsWithSevenEmptyTexts)
{
    EXPECT_EQ(AccessPoint().description(), QStringLiteral("      "));
}

TEST(AccessPoint, DescriptionHasTheOrderOfTheFields)
{
    EXPECT_EQ(sample().description(), QStringLiteral("home 00-11-22-33-44-55 63 6 WPA-PSK TKIP Infrastructure"));
}

TEST(AccessPoint, HasAValueForEachColumnKey)
{
    const AccessPoint row = sample();
    EXPECT_EQ(row.value(u"ssid"), row.ssid());
    EXPECT_EQ(row.value(u"bssid"), QStringLiteral("00-11-22-33-44-55"));
    EXPECT_EQ(row.value(u"signal"), QStringLiteral("63"));
    EXPECT_EQ(row.value(u"channel"), QStringLiteral("6"));
    EXPECT_EQ(row.value(u"authentication"), QStringLiteral("WPA-PSK"));
    EXPECT_EQ(row.value(u"encryption"), QStringLiteral("TKIP"));
    EXPECT_EQ(row.value(u"network"), QStringLiteral("Infrastructure"));
    EXPECT_TRUE(row.value(u"pi").isNull());
}

TEST(AccessPoint, StoresATextUnderEachKey)
{
    AccessPoint row = sample();
    for (const QStringView key :
        { u"ssid", u"bssid", u"signal", u"channel", u"authentication", u"encryption", u"network" }) {
        row.setValue(key, key.toString().toUpper());
        EXPECT_EQ(row.value(key), key.toString().toUpper());
    }
    row.setValue(u"pi", QStringLiteral("x"));
    EXPECT_EQ(row.description(), QStringLiteral("SSID BSSID SIGNAL CHANNEL AUTHENTICATION ENCRYPTION NETWORK"));
}

} // namespace
