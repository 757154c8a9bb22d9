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

#include <QDesktopServices>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>

namespace {

using Requests = std::vector<RecordedRequest>;

class AboutPageTest : public testing::Test {
protected:
    AboutPageTest()
    {
        page.awakeFromNib();
        registry.answer(0x0D710119, bytesOfRecord(std::array<std::uint8_t, 4> { 0x12, 0x34, 0x02, 0x10 }));
        registry.answer(0x01010102, bytesOfRecord(MacAddress { 0x00, 0x0a, 0xbc, 0xde, 0xf0, 0x01 }));
    }

    void installUtility() const
    {
        InstalledBundles::install(
            utilityInformationPath(bundles.root()), InstalledBundles::informationList("1.0.3"), noonOf(2004, 11, 5));
    }
    void installDriver() const
    {
        InstalledBundles::install(
            driverInformationPath(bundles.root()), InstalledBundles::informationList("2.1"), noonOf(2004, 9, 30));
    }

    void installBoth() const
    {
        installUtility();
        installDriver();
    }

    // Utility's version and date, driver's, EEPROM version, MAC address.
    [[nodiscard]] QStringList fields() const
    {
        QStringList texts;
        for (const char16_t* const name :
            { u"QvConfigVersion", u"QvConfigDate", u"DriverVersion", u"DriverDate", u"EEPROMVersion", u"MacAddress" })
            texts.push_back(page.findChild<QLabel*>(QStringView(name).toString())->text());
        return texts;
    }

    [[nodiscard]] Requests requests() const { return recordedRequests(registry); }

    InstalledBundles bundles;
    RecordingIORegistry registry;
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    VX7100Access adapter { registry, clock, alerts };
    std::vector<QUrl> opened;
    bool opens { true };
    const QUrl makersSite { u"https://www.quorvane.example/"_qs };
    const UrlOpener opener = [this](const QUrl& url) {
        opened.push_back(url);
        return opens;
    };
    AboutPageController page { adapter, makersSite, opener, bundles.root() };
};

const QStringList nothing(6, QString());
const Requests allRequests { query(0x0D710119, 4), query(0x01010102, 6) };

TEST_F(AboutPageTest, IsEmptyUntilACardComesIntoUse)
{
    EXPECT_EQ(fields(), nothing);
    EXPECT_EQ(requests(), Requests {});
}

TEST_F(AboutPageTest, TellsVersionsDatesAndAddress)
{
    installBoth();
    page.GetAllInformation();
    EXPECT_EQ(fields(),
        (QStringList {
            u"1.0.3"_qs, u"2004-11-05"_qs, u"2.1"_qs, u"2004-09-30"_qs, u"2.16"_qs, u"00-0A-BC-DE-F0-01"_qs }));
    EXPECT_EQ(requests(), allRequests);
}

TEST_F(AboutPageTest, ShowsEachAnswerBeforeItAsksForTheNext)
{
    installBoth();
    std::vector<QStringList> fieldsAtRequest;
    registry.onCall = [&](const RecordedRegistryCall& call) {
        if (call.call == RegistryCall::IOConnectMethodStructureIStructureO)
            fieldsAtRequest.push_back(fields());
    };
    page.GetAllInformation();
    EXPECT_EQ(fieldsAtRequest,
        (std::vector<QStringList> {
            { u"1.0.3"_qs, u"2004-11-05"_qs, u"2.1"_qs, u"2004-09-30"_qs, QString(), QString() },
            { u"1.0.3"_qs, u"2004-11-05"_qs, u"2.1"_qs, u"2004-09-30"_qs, u"2.16"_qs, QString() },
        }));
}

TEST_F(AboutPageTest, StaysAsItIsWhereTheUtilityIsNotInstalled)
{
    installDriver();
    page.GetAllInformation();
    EXPECT_EQ(fields(), nothing);
    EXPECT_EQ(requests(), Requests {});
    EXPECT_TRUE(registry.calls.empty());
}

TEST_F(AboutPageTest, KeepsWhatItShowsWhenTheUtilityIsTakenAway)
{
    installBoth();
    page.GetAllInformation();
    const QStringList before = fields();
    registry.forgetCalls();
    registry.fail(0x0D710119);
    ASSERT_TRUE(QFile::remove(utilityInformationPath(bundles.root())));
    page.GetAllInformation();
    EXPECT_EQ(fields(), before);
    EXPECT_TRUE(registry.calls.empty());
}

TEST_F(AboutPageTest, LeavesTheDriversFieldsEmptyWithoutItsPropertyList)
{
    installUtility();
    page.GetAllInformation();
    EXPECT_EQ(fields(),
        (QStringList { u"1.0.3"_qs, u"2004-11-05"_qs, QString(), QString(), u"2.16"_qs, u"00-0A-BC-DE-F0-01"_qs }));
}

TEST_F(AboutPageTest, EmptiesTheDriversFieldsWhenItsPropertyListIsTakenAway)
{
    installBoth();
    page.GetAllInformation();
    ASSERT_TRUE(QFile::remove(driverInformationPath(bundles.root())));
    page.GetAllInformation();
    EXPECT_EQ(fields(),
        (QStringList { u"1.0.3"_qs, u"2004-11-05"_qs, QString(), QString(), u"2.16"_qs, u"00-0A-BC-DE-F0-01"_qs }));
}

TEST_F(AboutPageTest, HasADateAndNoVersionForAnUnreadablePropertyList)
{
    installDriver();
    InstalledBundles::install(utilityInformationPath(bundles.root()), "no list", noonOf(2004, 11, 5));
    page.GetAllInformation();
    EXPECT_EQ(fields(),
        (QStringList {
            QString(), u"2004-11-05"_qs, u"2.1"_qs, u"2004-09-30"_qs, u"2.16"_qs, u"00-0A-BC-DE-F0-01"_qs }));
    EXPECT_EQ(requests(), allRequests);
}

TEST_F(AboutPageTest, HasADateAndNoVersionForADriversUnreadablePropertyList)
{
    installUtility();
    InstalledBundles::install(driverInformationPath(bundles.root()), "no list", noonOf(2004, 9, 30));
    page.GetAllInformation();
    EXPECT_EQ(fields(),
        (QStringList {
            u"1.0.3"_qs, u"2004-11-05"_qs, QString(), u"2004-09-30"_qs, u"2.16"_qs, u"00-0A-BC-DE-F0-01"_qs }));
    EXPECT_EQ(requests(), allRequests);
}

TEST_F(AboutPageTest, ReadsEverythingAgainForEveryCard)
{
    installBoth();
    page.GetAllInformation();
    InstalledBundles::install(
        utilityInformationPath(bundles.root()), InstalledBundles::informationList("1.1"), noonOf(2005, 1, 2));
    InstalledBundles::install(
        driverInformationPath(bundles.root()), InstalledBundles::informationList("2.2"), noonOf(2005, 3, 4));
    registry.answer(0x0D710119, bytesOfRecord(std::array<std::uint8_t, 4> { 0, 0, 3, 0 }));
    registry.answer(0x01010102, bytesOfRecord(MacAddress { 0xff, 0x0a, 0xbc, 0xde, 0xf0, 0x02 }));
    page.GetAllInformation();
    EXPECT_EQ(fields(),
        (QStringList { u"1.1"_qs, u"2005-01-02"_qs, u"2.2"_qs, u"2005-03-04"_qs, u"3.0"_qs, u"FF-0A-BC-DE-F0-02"_qs }));
}

TEST_F(AboutPageTest, FollowsALinkToTheUtilityAndStopsWhereItLeadsNowhere)
{
    const QString elsewhere = bundles.root() + u"/elsewhere/Info.plist"_qs;
    InstalledBundles::install(elsewhere, InstalledBundles::informationList("1.0.3"), noonOf(2004, 11, 5));
    const QString path = utilityInformationPath(bundles.root());
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    ASSERT_TRUE(QFile::link(elsewhere, path));
    page.GetAllInformation();
    EXPECT_EQ(fields().first(2), (QStringList { u"1.0.3"_qs, u"2004-11-05"_qs }));
    EXPECT_EQ(requests(), allRequests);

    registry.forgetCalls();
    ASSERT_TRUE(QFile::remove(elsewhere));
    page.GetAllInformation();
    EXPECT_EQ(fields().first(2), (QStringList { u"1.0.3"_qs, u"2004-11-05"_qs }));
    EXPECT_TRUE(registry.calls.empty());
}

TEST_F(AboutPageTest, ShowsZerosForAFailedQueryBesideTheOther)
{
    installUtility();
    const QString version = u"2.16"_qs;
    const QString address = u"00-0A-BC-DE-F0-01"_qs;
    const std::vector<std::pair<std::uint32_t, QStringList>> shownWithout {
        { 0x0D710119, { u"0.0"_qs, address } },
        { 0x01010102, { version, u"00-00-00-00-00-00"_qs } },
    };
    for (const auto& [oid, expected] : shownWithout) {
        SCOPED_TRACE(oid);
        page.GetAllInformation();
        ASSERT_EQ(fields().last(2), (QStringList { version, address })) << "what was shown before must not stay";
        registry.forgetCalls();
        registry.answerOnce(oid, { .succeeds = false });
        page.GetAllInformation();
        EXPECT_EQ(fields().last(2), expected);
        EXPECT_EQ(requests(), allRequests);
        EXPECT_TRUE(alerts.alerts.empty());
    }
}

TEST_F(AboutPageTest, ShowsZerosForWhatAShortAnswerLeavesOut)
{
    installUtility();
    registry.answer(0x0D710119, bytesOfRecord(std::array<std::uint8_t, 3> { 9, 9, 2 }));
    registry.answer(0x01010102, bytesOfRecord(std::array<std::uint8_t, 2> { 0xfe, 0xed }));
    page.GetAllInformation();
    EXPECT_EQ(fields().last(2), (QStringList { u"2.0"_qs, u"FE-ED-00-00-00-00"_qs }));
}

TEST_F(AboutPageTest, ShowsZerosWithoutACard)
{
    installBoth();
    registry.serviceCount = 0;
    page.GetAllInformation();
    EXPECT_EQ(fields(),
        (QStringList {
            u"1.0.3"_qs, u"2004-11-05"_qs, u"2.1"_qs, u"2004-09-30"_qs, u"0.0"_qs, u"00-00-00-00-00-00"_qs }));
    EXPECT_EQ(requests(), Requests {});
    EXPECT_TRUE(registry.held().empty());
}

TEST_F(AboutPageTest, ShowsTextsAsTheyAreWritten)
{
    InstalledBundles::install(utilityInformationPath(bundles.root()),
        InstalledBundles::informationList("&lt;b&gt;1&lt;/b&gt;"), noonOf(2004, 11, 5));
    page.GetAllInformation();
    auto& version = *page.findChild<QLabel*>(u"QvConfigVersion"_qs);
    EXPECT_EQ(version.text(), u"<b>1</b>");
    EXPECT_EQ(version.textFormat(), Qt::PlainText);
}

TEST_F(AboutPageTest, OpensTheMakersWebSite)
{
    auto& link = *page.findChild<QPushButton*>(u"QuorvaneWWW"_qs);
    EXPECT_TRUE(link.toolTip().contains(u"https://www.quorvane.example/"_qs));
    page.show();
    QTest::mouseClick(&link, Qt::LeftButton);
    EXPECT_EQ(opened, std::vector { makersSite });
    opens = false;
    QTest::keyClick(&link, Qt::Key_Space);
    EXPECT_EQ(opened.size(), 2u);
    EXPECT_TRUE(alerts.alerts.empty());
    EXPECT_EQ(requests(), Requests {});
}

TEST_F(AboutPageTest, HandsTheLinkToTheDesktopUnlessToldOtherwise)
{
    QTextBrowser desktop; // whose signal stands for the desktop's browser
    std::vector<QUrl> handed;
    QObject::connect(&desktop, &QTextBrowser::anchorClicked, [&handed](const QUrl& url) { handed.push_back(url); });
    QDesktopServices::setUrlHandler(u"https"_qs, &desktop, "anchorClicked");
    AboutPageController onDesktop { adapter, makersSite };
    onDesktop.OpenQuorvaneWeb();
    QDesktopServices::unsetUrlHandler(u"https"_qs);
    EXPECT_EQ(handed, std::vector { makersSite });
}

TEST_F(AboutPageTest, ShowsItsPictureAndNotice)
{
    EXPECT_FALSE(imageNamed(u"QUORVANE").isNull());
    const auto& picture = *page.findChild<ImageView*>(u"QuorvanePicture"_qs);
    EXPECT_EQ(picture.image().cacheKey(), imageNamed(u"QUORVANE").cacheKey());
    EXPECT_FALSE(picture.accessibleName().isEmpty());
    EXPECT_TRUE(page.findChild<QLabel*>(u"Notice"_qs)->text().contains(u"Quorvane"));
}

TEST_F(AboutPageTest, FieldsOfAllGroupsStandInOneColumn)
{
    page.show();
    const auto leftEdge = [this](const char16_t* name) {
        const QLabel& label = *page.findChild<QLabel*>(QStringView(name).toString());
        return label.mapTo(&page, QPoint(0, 0)).x();
    };
    for (const char16_t* const name :
        { u"QvConfigDate", u"DriverVersion", u"DriverDate", u"EEPROMVersion", u"MacAddress" })
        EXPECT_EQ(leftEdge(name), leftEdge(u"QvConfigVersion"));
}

TEST_F(AboutPageTest, ShowsTheWholeNoticeAtItsSmallest)
{
    page.resize(page.minimumSizeHint());
    page.show();
    const QLabel& notice = *page.findChild<QLabel*>(u"Notice"_qs);
    EXPECT_GE(notice.height(), notice.heightForWidth(notice.width()));
}

TEST_F(AboutPageTest, TracesItsOperationsWhenAskedTo)
{
    installUtility();
    const auto everyOperation = [this] {
        AboutPageController traced { adapter, makersSite, opener, bundles.root() };
        traced.awakeFromNib();
        traced.GetAllInformation();
        traced.OpenQuorvaneWeb();
    };
    EXPECT_EQ(linesOf("AboutPageController", tracesOf(everyOperation)),
        entryLines("AboutPageController", { "init", "awakeFromNib", "GetAllInformation", "OpenQuorvaneWeb" }));
    EXPECT_EQ(standardErrorOf(everyOperation), "");
}

TEST_F(AboutPageTest, TracesBeforeItLooksForTheUtility)
{
    EXPECT_EQ(tracesOf([this] { page.GetAllInformation(); }), "#### AboutPageController - GetAllInformation ####\n");
}

TEST_F(AboutPageTest, TracesTheLinkBeforeItIsOpened)
{
    opens = false;
    EXPECT_EQ(tracesOf([this] { page.OpenQuorvaneWeb(); }), "#### AboutPageController - OpenQuorvaneWeb ####\n");
    EXPECT_EQ(opened.size(), 1u);
}

} // namespace
