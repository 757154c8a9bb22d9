#include "monitor/ui/StatisticsPageController.h"

#include "driver/records/NdisRecords.h"
#include "driver/records/Oids.h"
#include "tests/monitor/ui/MonitorDoubles.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr std::array counterNames { u"FTS", u"FTSWR", u"FTSAR", u"FFTRAAA", u"RFSRC", u"RFFTRC", u"FRS", u"FRWCE",
    u"FDDTO", u"DFR" };

// Every counter another number, also those that are not shown.
NDIS_802_11_STATISTICS sampleStatistics()
{
    NDIS_802_11_STATISTICS statistics {};
    statistics.Length = 100;
    statistics.TransmittedFragmentCount = 5000000000;
    statistics.MulticastTransmittedFrameCount = 91;
    statistics.FailedCount = 3;
    statistics.RetryCount = 40;
    statistics.MultipleRetryCount = 92;
    statistics.RTSSuccessCount = 5;
    statistics.RTSFailureCount = 6;
    statistics.ACKFailureCount = 93;
    statistics.FrameDuplicateCount = 7;
    statistics.ReceivedFragmentCount = 94;
    statistics.MulticastReceivedFrameCount = 95;
    statistics.FCSErrorCount = 8;
    return statistics;
}

struct StatisticsPageTest : testing::Test {
    MonitoredCard card;
    StatisticsPageController page { card.adapter, card.runLoop };

    StatisticsPageTest()
    {
        card.answer(OID_802_11_STATISTICS, sampleStatistics());
        card.answer(OID_GEN_RCV_OK, std::numeric_limits<std::uint32_t>::max());
        card.answer(OID_GEN_RCV_NO_BUFFER, std::uint32_t { 9 });
        page.awakeFromNib();
    }

    [[nodiscard]] QLabel& counter(const char16_t* name) const
    {
        return *page.findChild<QLabel*>(QStringView(name).toString());
    }
    [[nodiscard]] QStringList counters() const
    {
        QStringList texts;
        for (const char16_t* const name : counterNames)
            texts << counter(name).text();
        return texts;
    }
};

const QStringList zeros(10, QStringLiteral("0"));

TEST_F(StatisticsPageTest, AwakeningAsksNothingAndStartsATimerOfTwoSeconds)
{
    EXPECT_TRUE(card.registry.calls.empty());
    EXPECT_EQ(card.runLoop.activeIntervals(), std::vector { monitorInterval });
    EXPECT_EQ(counters(), zeros);
}

TEST_F(StatisticsPageTest, ATickAsksThreeTimesInThisOrder)
{
    card.tick();
    EXPECT_EQ(card.takeRequests(),
        (std::vector<MonitoredCard::Request> {
            { OID_802_11_STATISTICS, 100 }, { OID_GEN_RCV_OK, 4 }, { OID_GEN_RCV_NO_BUFFER, 4 } }));
}

TEST_F(StatisticsPageTest, ATickShowsTheDriversCounters)
{
    card.tick();
    EXPECT_EQ(counter(u"FTS").text(), u"5000000000");
    EXPECT_EQ(counter(u"FTSWR").text(), u"4999999960");
    EXPECT_EQ(counter(u"FTSAR").text(), u"40");
    EXPECT_EQ(counter(u"FFTRAAA").text(), u"3");
    EXPECT_EQ(counter(u"RFSRC").text(), u"5");
    EXPECT_EQ(counter(u"RFFTRC").text(), u"6");
    EXPECT_EQ(counter(u"FRS").text(), u"4294967295");
    EXPECT_EQ(counter(u"FRWCE").text(), u"8");
    EXPECT_EQ(counter(u"FDDTO").text(), u"9");
    EXPECT_EQ(counter(u"DFR").text(), u"7");
}

TEST_F(StatisticsPageTest, MoreRetriesThanFramesShowANegativeNumber)
{
    auto statistics = sampleStatistics();
    statistics.TransmittedFragmentCount = 30;
    card.answer(OID_802_11_STATISTICS, statistics);
    card.tick();
    EXPECT_EQ(counter(u"FTSWR").text(), u"-10");
}

TEST_F(StatisticsPageTest, WithoutADeviceEveryCounterIsZeroAndNothingIsAsked)
{
    card.tick();
    card.registry.forgetCalls();
    G_bDeviceExist = 0;
    card.tick();
    EXPECT_EQ(counters(), zeros);
    EXPECT_TRUE(card.registry.calls.empty());
}

TEST_F(StatisticsPageTest, FailedQueriesReadAsZeros)
{
    card.tick();
    card.registry.serviceCount = 0;
    card.tick();
    EXPECT_EQ(counters(), zeros);
}

TEST_F(StatisticsPageTest, ResetCounterShowsZerosAtOnceAndSendsOneEmptyRequest)
{
    card.tick();
    card.registry.forgetCalls();
    QTest::mouseClick(page.findChild<QPushButton*>(QStringLiteral("ResetCounter")), Qt::LeftButton);
    EXPECT_EQ(counters(), zeros);
    EXPECT_EQ(card.takeRequests(), (std::vector<MonitoredCard::Request> { { 0x0DF10103, 0 } }));
}

TEST_F(StatisticsPageTest, TheTickBehindAResetShowsTheDriversCountersAgain)
{
    page.OnResetCounter();
    card.tick();
    EXPECT_EQ(counter(u"DFR").text(), u"7");
}

TEST_F(StatisticsPageTest, CountersOfBothGroupsStandInOneColumn)
{
    page.resize(page.sizeHint());
    page.show();
    card.tick();
    page.grab();
    const auto rightEdge = [this](const char16_t* name) {
        const QLabel& label = counter(name);
        return label.mapTo(&page, QPoint(label.width(), 0)).x();
    };
    for (const char16_t* const name : counterNames) {
        EXPECT_EQ(rightEdge(name), rightEdge(u"FTS"));
        EXPECT_TRUE(counter(name).alignment().testFlag(Qt::AlignRight));
        EXPECT_FALSE(counter(name).toolTip().isEmpty());
    }
    EXPECT_FALSE(page.findChild<QPushButton*>(QStringLiteral("ResetCounter"))->toolTip().isEmpty());
}

} // namespace
