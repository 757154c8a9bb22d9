#include "about/ui/AboutPageController.h"

#include "about/BundleInformation.h"
#include "driver/VX7100Access.h"
#include "driver/records/NdisRecords.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/Images.h"
#include "tests/about/InstalledBundles.h"
#include "tests/support/RecordedRequests.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingTickClock.h"
#include "tests/support/StandardErrorOf.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace {

using Requests = std::vector<RecordedRequest>;

const Requests allQueries { query(VX_OID_802_11_EEPROM_VERSION, 4), query(OID_802_3_CURRENT_ADDRESS, 6) };

// What the fields of each group show by default.
const QStringList utilityTexts { u"1.0.3"_qs, u"2004-11-05"_qs };
const QStringList driverTexts { u"2.1"_qs, u"2004-09-30"_qs };
const QStringList cardTexts { u"2.16"_qs, u"00-0A-BC-DE-F0-01"_qs };
const QStringList emptyGroup(2, QString());
const QStringList allEmpty(6, QString());

class AboutPageTest : public testing::Test {
protected:
    AboutPageTest()
    {
        page.awakeFromNib();
        answer({ 0x12, 0x34, 0x02, 0x10 }, { 0x00, 0x0a, 0xbc, 0xde, 0xf0, 0x01 });
    }

    void answer(const std::array<std::uint8_t, 4>& eepromVersion, const MacAddress& address)
    {
        registry.answer(VX_OID_802_11_EEPROM_VERSION, bytesOfRecord(eepromVersion));
        registry.answer(OID_802_3_CURRENT_ADDRESS, bytesOfRecord(address));
    }

    void installUtility(const QByteArray& content = InstalledBundles::informationList("1.0.3"),
        const QDateTime& changed = noonOf(2004, 11, 5)) const
    {
        InstalledBundles::install(utilityFile, content, changed);
    }
    void installDriver(const QByteArray& content = InstalledBundles::informationList("2.1"),
        const QDateTime& changed = noonOf(2004, 9, 30)) const
    {
        InstalledBundles::install(driverFile, content, changed);
    }
    void installBoth() const
    {
        installUtility();
        installDriver();
    }

    // Version and date of the utility, of the driver, EEPROM version, MAC address.
    [[nodiscard]] QStringList fields() const
    {
        QStringList texts;
        for (const char16_t* const name :
            { u"QvConfigVersion", u"QvConfigDate", u"DriverVersion", u"DriverDate", u"EEPROMVersion", u"MacAddress" })
            texts.push_back(label(name).text());
        return texts;
    }
    [[nodiscard]] QStringList fieldsAfterUpdate()
    {
        page.GetAllInformation();
        return fields();
    }
    [[nodiscard]] QLabel& label(const char16_t* name) const
    {
        return *page.findChild<QLabel*>(QStringView(name).toString());
    }

    [[nodiscard]] Requests requests() const { return recordedRequests(registry); }

    InstalledBundles bundles;
    QString utilityFile { utilityInformationPath(bundles.root()) };
    QString driverFile { driverInformationPath(bundles.root()) };
    RecordingIORegistry registry;
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    VX7100Access adapter { registry, clock, alerts };
    std::vector<QUrl> opened;
    bool opens { true };
    const QUrl makersSite { u"https://www.quorvane.example/"_qs };
    const UrlOpener opener = [this](const QUrl& url, const std::function<void()>& failed) {
        opened.push_back(url);
        if (!opens)
            failed();
    };
    AboutPageController page { adapter, alerts, makersSite, opener, bundles.root() };
};

TEST_F(AboutPageTest, IsEmptyBeforeTheFirstUpdate)
{
    EXPECT_EQ(fields(), allEmpty);
    EXPECT_EQ(requests(), Requests {});
}

TEST_F(AboutPageTest, ShowsVersionsDatesAndAddress)
{
    installBoth();
    EXPECT_EQ(fieldsAfterUpdate(), utilityTexts + driverTexts + cardTexts);
    EXPECT_EQ(requests(), allQueries);
}

TEST_F(AboutPageTest, ShowsEachValueBeforeTheNextQuery)
{
    installBoth();
    std::vector<QStringList> fieldsAtRequest;
    registry.onCall = [&](const RecordedRegistryCall& call) {
        if (call.call == RegistryCall::IOConnectMethodStructureIStructureO)
            fieldsAtRequest.push_back(fields());
    };
    page.GetAllInformation();
    EXPECT_EQ(fieldsAtRequest,
        (std::vector<QStringList> { utilityTexts + driverTexts + emptyGroup,
            utilityTexts + driverTexts + QStringList { u"2.16"_qs, QString() } }));
}

TEST_F(AboutPageTest, DoesNothingIfTheUtilityIsNotInstalled)
{
    installDriver();
    EXPECT_EQ(fieldsAfterUpdate(), allEmpty);
    EXPECT_TRUE(registry.calls.empty());
}

TEST_F(AboutPageTest, KeepsItsTextsIfTheUtilityIsRemoved)
{
    installBoth();
    page.GetAllInformation();
    registry.forgetCalls();
    registry.fail(VX_OID_802_11_EEPROM_VERSION);
    ASSERT_TRUE(QFile::remove(utilityFile));
    EXPECT_EQ(fieldsAfterUpdate(), utilityTexts + driverTexts + cardTexts);
    EXPECT_TRUE(registry.calls.empty());
}

TEST_F(AboutPageTest, LeavesTheDriverFieldsEmptyWithoutItsPropertyList)
{
    installUtility();
    EXPECT_EQ(fieldsAfterUpdate(), utilityTexts + emptyGroup + cardTexts);
}

TEST_F(AboutPageTest, ClearsTheDriverFieldsIfItsPropertyListIsRemoved)
{
    installBoth();
    page.GetAllInformation();
    ASSERT_TRUE(QFile::remove(driverFile));
    EXPECT_EQ(fieldsAfterUpdate(), utilityTexts + emptyGroup + cardTexts);
}

TEST_F(AboutPageTest, ShowsOnlyTheDateOfAnUnreadablePropertyList)
{
    installUtility("no list");
    installDriver();
    EXPECT_EQ(fieldsAfterUpdate(), QStringList({ QString(), u"2004-11-05"_qs }) + driverTexts + cardTexts);
    EXPECT_EQ(requests(), allQueries);
}

TEST_F(AboutPageTest, ShowsOnlyTheDateOfAnUnreadableDriverPropertyList)
{
    installUtility();
    installDriver("no list");
    EXPECT_EQ(fieldsAfterUpdate(), utilityTexts + QStringList({ QString(), u"2004-09-30"_qs }) + cardTexts);
    EXPECT_EQ(requests(), allQueries);
}

TEST_F(AboutPageTest, ReadsEverythingAgainOnEachUpdate)
{
    installBoth();
    page.GetAllInformation();
    installUtility(InstalledBundles::informationList("1.1"), noonOf(2005, 1, 2));
    installDriver(InstalledBundles::informationList("2.2"), noonOf(2005, 3, 4));
    answer({ 0, 0, 3, 0 }, { 0xff, 0x0a, 0xbc, 0xde, 0xf0, 0x02 });
    EXPECT_EQ(fieldsAfterUpdate(),
        (QStringList { u"1.1"_qs, u"2005-01-02"_qs, u"2.2"_qs, u"2005-03-04"_qs, u"3.0"_qs, u"FF-0A-BC-DE-F0-02"_qs }));
}

TEST_F(AboutPageTest, FollowsALinkToTheUtilityAndDoesNothingIfItIsBroken)
{
    const QString target = bundles.root() + u"/elsewhere/Info.plist"_qs;
    InstalledBundles::install(target, InstalledBundles::informationList("1.0.3"), noonOf(2004, 11, 5));
    ASSERT_TRUE(QDir().mkpath(QFileInfo(utilityFile).path()));
    ASSERT_TRUE(QFile::link(target, utilityFile));
    EXPECT_EQ(fieldsAfterUpdate().first(2), utilityTexts);
    EXPECT_EQ(requests(), allQueries);

    registry.forgetCalls();
    ASSERT_TRUE(QFile::remove(target));
    EXPECT_EQ(fieldsAfterUpdate().first(2), utilityTexts);
    EXPECT_TRUE(registry.calls.empty());
}

TEST_F(AboutPageTest, ShowsZerosForAFailedQuery)
{
    installUtility();
    const std::vector<std::pair<std::uint32_t, QStringList>> cases {
        { VX_OID_802_11_EEPROM_VERSION, { u"0.0"_qs, cardTexts[1] } },
        { OID_802_3_CURRENT_ADDRESS, { cardTexts[0], u"00-00-00-00-00-00"_qs } },
    };
    for (const auto& [failing, expected] : cases) {
        SCOPED_TRACE(failing);
        ASSERT_EQ(fieldsAfterUpdate().last(2), cardTexts) << "so that stale values would be noticed";
        registry.forgetCalls();
        registry.answerOnce(failing, { .succeeds = false });
        EXPECT_EQ(fieldsAfterUpdate().last(2), expected);
        EXPECT_EQ(requests(), allQueries);
        EXPECT_TRUE(alerts.alerts.empty());
    }
}

TEST_F(AboutPageTest, ShowsZerosForTheMissingBytesOfATruncatedReply)
{
    installUtility();
    registry.answer(VX_OID_802_11_EEPROM_VERSION, bytesOfRecord(std::array<std::uint8_t, 3> { 9, 9, 2 }));
    registry.answer(OID_802_3_CURRENT_ADDRESS, bytesOfRecord(std::array<std::uint8_t, 2> { 0xfe, 0xed }));
    EXPECT_EQ(fieldsAfterUpdate().last(2), (QStringList { u"2.0"_qs, u"FE-ED-00-00-00-00"_qs }));
}

TEST_F(AboutPageTest, ShowsZerosWithoutACard)
{
    installBoth();
    registry.serviceCount = 0;
    EXPECT_EQ(fieldsAfterUpdate(), utilityTexts + driverTexts + QStringList({ u"0.0"_qs, u"00-00-00-00-00-00"_qs }));
    EXPECT_EQ(requests(), Requests {});
    EXPECT_TRUE(registry.held().empty());
}

TEST_F(AboutPageTest, DoesNotInterpretAVersionAsMarkup)
{
    installUtility(InstalledBundles::informationList("&lt;b&gt;1&lt;/b&gt;"));
    page.GetAllInformation();
    EXPECT_EQ(label(u"QvConfigVersion").text(), u"<b>1</b>");
    EXPECT_EQ(label(u"QvConfigVersion").textFormat(), Qt::PlainText);
}

TEST_F(AboutPageTest, OpensTheMakersWebSite)
{
    auto& link = *page.findChild<QPushButton*>(u"QuorvaneWWW"_qs);
    EXPECT_TRUE(link.toolTip().contains(u"https://www.quorvane.example/"_qs));
    page.show();
    QTest::mouseClick(&link, Qt::LeftButton);
    EXPECT_EQ(opened, std::vector { makersSite });
    EXPECT_TRUE(alerts.alerts.empty());
    EXPECT_EQ(requests(), Requests {});
}

TEST_F(AboutPageTest, ReportsThatThereIsNoBrowser)
{
    opens = false;
    page.show();
    QTest::keyClick(page.findChild<QPushButton*>(u"QuorvaneWWW"_qs), Qt::Key_Space);
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_TRUE(alerts.alerts.front().message.contains(makersSite.toString()));
    EXPECT_EQ(requests(), Requests {});
}

TEST_F(AboutPageTest, ShowsItsPictureAndNotice)
{
    EXPECT_FALSE(imageNamed(u"QUORVANE").isNull());
    const auto& picture = *page.findChild<ImageView*>(u"QuorvanePicture"_qs);
    EXPECT_EQ(picture.image().cacheKey(), imageNamed(u"QUORVANE").cacheKey());
    EXPECT_FALSE(picture.accessibleName().isEmpty());
    EXPECT_TRUE(label(u"Notice").text().contains(u"Quorvane"));
}

TEST_F(AboutPageTest, AlignsTheFieldsOfAllGroups)
{
    page.show();
    const auto leftEdge = [this](const char16_t* name) { return label(name).mapTo(&page, QPoint(0, 0)).x(); };
    for (const char16_t* const name :
        { u"QvConfigDate", u"DriverVersion", u"DriverDate", u"EEPROMVersion", u"MacAddress" })
        EXPECT_EQ(leftEdge(name), leftEdge(u"QvConfigVersion"));
}

TEST_F(AboutPageTest, ShowsTheWholeNoticeAtItsMinimumSize)
{
    page.resize(page.minimumSizeHint());
    page.show();
    const QLabel& notice = label(u"Notice");
    EXPECT_GE(notice.height(), notice.heightForWidth(notice.width()));
}

TEST_F(AboutPageTest, TracesItsOperations)
{
    installUtility();
    const auto everyOperation = [this] {
        AboutPageController traced { adapter, alerts, makersSite, opener, bundles.root() };
        traced.awakeFromNib();
        traced.GetAllInformation();
        traced.OpenQuorvaneWeb();
    };
    EXPECT_EQ(linesOf("AboutPageController", tracesOf(everyOperation)),
        entryLines("AboutPageController", { "init", "awakeFromNib", "GetAllInformation", "OpenQuorvaneWeb" }));
    EXPECT_EQ(standardErrorOf(everyOperation), "");
}

TEST_F(AboutPageTest, TracesAnUpdateEvenIfTheUtilityIsNotInstalled)
{
    EXPECT_EQ(tracesOf([this] { page.GetAllInformation(); }), "#### AboutPageController - GetAllInformation ####\n");
}

TEST_F(AboutPageTest, TracesTheLinkEvenIfItCannotBeOpened)
{
    opens = false;
    EXPECT_EQ(tracesOf([this] { page.OpenQuorvaneWeb(); }), "#### AboutPageController - OpenQuorvaneWeb ####\n");
    EXPECT_EQ(opened.size(), 1u);
}

} // namespace
