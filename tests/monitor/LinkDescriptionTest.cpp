#include "monitor/LinkDescription.h"

#include <gtest/gtest.h>

namespace {

TEST(LinkDescription, ReportsAnEmptyHistory)
{
    EXPECT_EQ(describeNewest({}), u"No values yet.");
}

TEST(LinkDescription, ContainsOnlyTheNewestValues)
{
    LinkHistory history;
    history.append(LinkSample { 1, 2, 3, 4 });
    history.append(LinkSample { 85, 60, 120, 4500 });
    EXPECT_EQ(describeNewest(history),
        u"Link quality 85 percent, signal strength 60 percent, transmit 120 kilobits per second, receive 4500 "
        u"kilobits per second.");
}

TEST(LinkDescription, ReportsAnUnknownThroughput)
{
    LinkHistory history;
    history.append(LinkSample { 85, 60, std::nullopt, 0 });
    EXPECT_EQ(describeNewest(history),
        u"Link quality 85 percent, signal strength 60 percent, transmit unknown, receive 0 kilobits per second.");
}

TEST(LinkDescription, ReportsALostLink)
{
    LinkHistory history;
    history.append(LinkSample { 85, 60, 1, 1 });
    history.append(std::nullopt);
    EXPECT_EQ(describeNewest(history), u"Not connected.");
}

} // namespace
