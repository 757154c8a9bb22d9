#include "app/StartupNotification.h"

#include <gtest/gtest.h>

namespace {

QByteArray joined(const std::vector<QByteArray>& parts)
{
    QByteArray message;
    for (const QByteArray& part : parts)
        message += part;
    return message;
}

TEST(StartupNotification, TimeOfTheLaunchEndsTheId)
{
    EXPECT_EQ(launchTime("host/panel/1234-5-name_TIME4294967295"), 4294967295U);
    EXPECT_EQ(launchTime("a_TIME1_TIME22"), 22U);
    for (const char* const id : { "", "host", "12", "_TIME", "_TIME12x", "_TIME4294967296", "_TIME-1" })
        EXPECT_EQ(launchTime(id), std::nullopt) << id;
}

TEST(StartupNotification, EndOfTheLaunchIsSentInPartsOfAMessage)
{
    const QByteArray id = "host/panel/1234-5-\"a\\b\"_TIME12345";
    const auto parts = launchEndParts(id);
    for (const QByteArray& part : parts)
        EXPECT_LE(part.size(), 20);
    QByteArray expected = "remove: ID=\"host/panel/1234-5-\\\"a\\\\b\\\"_TIME12345\"";
    expected += '\0';
    EXPECT_EQ(joined(parts), expected);
}

} // namespace
