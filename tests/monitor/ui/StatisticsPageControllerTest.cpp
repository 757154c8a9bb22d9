#include "monitor/ui/StatisticsPageController.h"

#include "driver/records/NdisRecords.h"
#include "tests/monitor/ui/MonitorDoubles.h"
#include "tests/support/StandardErrorOf.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr std::array counterNames { u"FTS", u"FTSWR", u"FTSAR", u"FFTRAAA", u"RFSRC", u"RFFTRC", u"FRS", u"FRWCE",
    u"FDDTO", u"DFR" };

// All counters have different values, including those that are not shown.
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

    void pressReset() const
    {
        QTest::mouseClick(page.findChild<QPushButton*>(QStringLiteral("ResetCounter")), Qt::LeftButton);
    }

    // What the page shows during each registry call of an operation.
    template <typename Operation> [[nodiscard]] std::vector<QStringList> countersDuring(const Operation& operation)
    {
        std::vector<QStringList> seen;
        card.registry.onCall = [&](const RecordedRegistryCall&) { seen.push_back(counters()); };
        operation();
        card.registry.onCall = nullptr;
        return seen;
    }
};

const Requests queriesOfTick { query(OID_802_11_STATISTICS, 100), query(OID_GEN_RCV_OK, 4),
    query(OID_GEN_RCV_NO_BUFFER, 4) };
const Requests reset { query(asSet(VX_OID_802_11_RESET_COUNTERS), 0) };
const QStringList zeros(10, QStringLiteral("0"));
const QStringList sampleTexts { u"5000000000"_qs, u"4999999960"_qs, u"40"_qs, u"3"_qs, u"5"_qs, u"6"_qs,
    u"4294967295"_qs, u"8"_qs, u"9"_qs, u"7"_qs };

TEST_F(StatisticsPageTest, AwakeningSendsNoRequestAndStartsATimerOfTwoSeconds)
{
    EXPECT_TRUE(card.registry.calls.empty());
    EXPECT_EQ(card.runLoop.activeIntervals(), std::vector { monitorInterval });
    EXPECT_EQ(counters(), zeros);
}

TEST_F(StatisticsPageTest, TickQueriesAndShowsTheDriversCounters)
{
    card.tick();
    EXPECT_EQ(card.takeRequests(), queriesOfTick);
    EXPECT_EQ(counters(), sampleTexts);
}

TEST_F(StatisticsPageTest, TickUpdatesTheFieldsOnlyAfterAllQueries)
{
    card.tick();
    ASSERT_EQ(counters(), sampleTexts);
    card.answer(OID_802_11_STATISTICS, NDIS_802_11_STATISTICS {});
    card.answer(OID_GEN_RCV_OK, std::uint32_t { 0 });
    const auto seen = countersDuring([this] { card.tick(); });
    EXPECT_FALSE(seen.empty());
    for (const QStringList& shown : seen)
        EXPECT_EQ(shown, sampleTexts);
    EXPECT_EQ(counter(u"FTS").text(), u"0");
}

TEST_F(StatisticsPageTest, CountersComeFromTheirFieldsInTheRecord)
{
    // Twelve unpadded counters after the length, with the values 1 to 12.
    std::vector<std::byte> bytes(100);
    for (std::size_t place = 0; place < 12; ++place)
        bytes[4 + place * 8] = static_cast<std::byte>(place + 1);
    card.registry.answer(OID_802_11_STATISTICS, bytes);
    card.tick();
    EXPECT_EQ(counters(),
        (QStringList {
            u"1"_qs, u"-3"_qs, u"4"_qs, u"3"_qs, u"6"_qs, u"7"_qs, u"4294967295"_qs, u"12"_qs, u"9"_qs, u"9"_qs }));
}

TEST_F(StatisticsPageTest, ShowsANegativeNumberForMoreRetriesThanFrames)
{
    auto statistics = sampleStatistics();
    statistics.TransmittedFragmentCount = 30;
    card.answer(OID_802_11_STATISTICS, statistics);
    card.tick();
    EXPECT_EQ(counter(u"FTSWR").text(), u"-10");
}

TEST_F(StatisticsPageTest, FailedQueryZeroesOnlyItsOwnCounters)
{
    const std::vector<std::pair<std::uint32_t, std::vector<qsizetype>>> zeroedFields {
        { OID_802_11_STATISTICS, { 0, 1, 2, 3, 4, 5, 7, 9 } },
        { OID_GEN_RCV_OK, { 6 } },
        { OID_GEN_RCV_NO_BUFFER, { 8 } },
    };
    for (const auto& [oid, fields] : zeroedFields) {
        QStringList expected = sampleTexts;
        for (const qsizetype field : fields)
            expected[field] = u"0"_qs;
        SCOPED_TRACE(oid);
        card.tick();
        ASSERT_EQ(counters(), sampleTexts) << "so that stale values would be noticed";
        (void)card.takeRequests();
        card.registry.answerOnce(oid, { .succeeds = false });
        card.tick();
        EXPECT_EQ(counters(), expected);
        EXPECT_EQ(card.takeRequests(), queriesOfTick);
        EXPECT_TRUE(card.alerts.alerts.empty());
    }
}

TEST_F(StatisticsPageTest, TruncatedReplyZeroesTheMissingCounters)
{
    card.tick();
    std::vector<std::byte> bytes = bytesOfRecord(sampleStatistics());
    bytes.resize(4 + 3 * 8); // up to FailedCount
    card.registry.answer(OID_802_11_STATISTICS, bytes);
    card.tick();
    EXPECT_EQ(counters(),
        (QStringList { u"5000000000"_qs, u"5000000000"_qs, u"0"_qs, u"3"_qs, u"0"_qs, u"0"_qs, u"4294967295"_qs,
            u"0"_qs, u"9"_qs, u"0"_qs }));
}

TEST_F(StatisticsPageTest, WithoutADeviceShowsZerosAndSendsNoRequests)
{
    card.tick();
    card.registry.forgetCalls();
    G_bDeviceExist = 0;
    for (int i = 0; i < 2; ++i) {
        card.tick();
        EXPECT_EQ(counters(), zeros);
    }
    EXPECT_TRUE(card.registry.calls.empty());
    G_bDeviceExist = 1;
    card.tick();
    EXPECT_EQ(counters(), sampleTexts);
}

TEST_F(StatisticsPageTest, ShowsZerosIfAllQueriesFail)
{
    card.tick();
    card.registry.serviceCount = 0;
    card.tick();
    EXPECT_EQ(counters(), zeros);
}

TEST_F(StatisticsPageTest, ResetCounterShowsZerosAndSendsOneRequest)
{
    card.tick();
    card.registry.forgetCalls();
    pressReset();
    EXPECT_EQ(counters(), zeros);
    EXPECT_EQ(card.takeRequests(), reset);
}

TEST_F(StatisticsPageTest, ResetCounterShowsZerosBeforeItsRequest)
{
    card.tick();
    const auto seen = countersDuring([this] { pressReset(); });
    EXPECT_FALSE(seen.empty());
    for (const QStringList& shown : seen)
        EXPECT_EQ(shown, zeros);
}

TEST_F(StatisticsPageTest, TickAfterAResetShowsTheDriversNewCounters)
{
    card.tick();
    card.registry.answerWith(asSet(VX_OID_802_11_RESET_COUNTERS), [this](auto) {
        NDIS_802_11_STATISTICS restarted {};
        restarted.TransmittedFragmentCount = 2;
        card.answer(OID_802_11_STATISTICS, restarted);
        card.answer(OID_GEN_RCV_OK, std::uint32_t { 1 });
        return RegistryAnswer {};
    });
    pressReset();
    EXPECT_EQ(counters(), zeros);
    card.tick();
    EXPECT_EQ(counters(),
        (QStringList { u"2"_qs, u"2"_qs, u"0"_qs, u"0"_qs, u"0"_qs, u"0"_qs, u"1"_qs, u"0"_qs, u"9"_qs, u"0"_qs }));
}

TEST_F(StatisticsPageTest, TickAfterAFailedResetShowsTheOldCounters)
{
    card.registry.fail(asSet(VX_OID_802_11_RESET_COUNTERS));
    card.tick();
    pressReset();
    EXPECT_EQ(counters(), zeros);
    EXPECT_TRUE(card.alerts.alerts.empty());
    card.tick();
    EXPECT_EQ(counters(), sampleTexts);
}

TEST_F(StatisticsPageTest, ResetCounterWithoutACardShowsZerosAndReleasesEverything)
{
    card.tick();
    card.registry.forgetCalls();
    card.registry.serviceCount = 0;
    pressReset();
    EXPECT_EQ(counters(), zeros);
    EXPECT_EQ(card.registry.count(RegistryCall::IOMasterPort), 1);
    EXPECT_EQ(card.takeRequests(), Requests {});
    EXPECT_TRUE(card.registry.held().empty());
    EXPECT_TRUE(card.alerts.alerts.empty());
}

TEST_F(StatisticsPageTest, ResetCounterIsAQueryWithTheSetFlag)
{
    const std::string traces = tracesOf([this] { page.OnResetCounter(); });
    EXPECT_EQ(traces.find("OidSetInformation"), std::string::npos);
    EXPECT_NE(traces.find("#### VX7100Access - OidQueryInformation ####\n**** VX7100Access - Oid = 233898243 ****\n"),
        std::string::npos);
}

TEST_F(StatisticsPageTest, ResetCounterIsSentEvenIfTheCardHasNotBeenDetected)
{
    G_bDeviceExist = 0;
    pressReset();
    EXPECT_EQ(card.takeRequests(), reset);
}

TEST_F(StatisticsPageTest, TracesItsOperations)
{
    const auto everyOperation = [this] {
        StatisticsPageController traced { card.adapter, card.runLoop };
        traced.awakeFromNib();
        traced.OnTimer();
        traced.OnResetCounter();
    };
    EXPECT_EQ(linesOf("StatisticsPageController", tracesOf(everyOperation)),
        entryLines("StatisticsPageController", { "init", "awakeFromNib", "OnTimer", "OnResetCounter" }));
    EXPECT_EQ(standardErrorOf(everyOperation), "");
}

TEST_F(StatisticsPageTest, TracesATickWithoutADevice)
{
    G_bDeviceExist = 0;
    EXPECT_EQ(tracesOf([this] { card.tick(); }), "#### StatisticsPageController - OnTimer ####\n");
}

TEST_F(StatisticsPageTest, MaximumCountersFitWithoutChangingTheLayout)
{
    page.resize(page.minimumSizeHint());
    page.show();
    page.grab();
    const QSize before = page.minimumSizeHint();

    constexpr auto maximum = std::numeric_limits<std::int64_t>::max();
    NDIS_802_11_STATISTICS statistics {};
    statistics.TransmittedFragmentCount = std::numeric_limits<std::int64_t>::min();
    statistics.FailedCount = maximum;
    statistics.RTSSuccessCount = maximum;
    statistics.RTSFailureCount = maximum;
    statistics.FrameDuplicateCount = maximum;
    statistics.FCSErrorCount = maximum;
    card.answer(OID_802_11_STATISTICS, statistics);
    card.tick();
    page.grab();

    EXPECT_EQ(counter(u"FTS").text(), u"-9223372036854775808");
    EXPECT_EQ(counter(u"FTSWR").text(), u"-9223372036854775808");
    for (const char16_t* const name : { u"FFTRAAA", u"RFSRC", u"RFFTRC", u"FRWCE", u"DFR" })
        EXPECT_EQ(counter(name).text(), u"9223372036854775807");
    EXPECT_EQ(page.minimumSizeHint(), before);
    for (const char16_t* const name : counterNames)
        EXPECT_GE(counter(name).width(), counter(name).sizeHint().width()) << counter(name).text().toStdString();
}

TEST_F(StatisticsPageTest, AlignsTheCountersOfBothGroups)
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
