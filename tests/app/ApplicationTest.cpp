#include "app/Application.h"

#include "app/shared/SharedState.h"
#include "driver/records/Oids.h"
#include "platform/ui/TableView.h"
#include "tests/app/ApplicationFixture.h"
#include "tests/support/ContentOf.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace {

class ApplicationTest : public ApplicationFixture {
protected:
    template <typename PageController> [[nodiscard]] int tabOf()
    {
        const auto* const page = application.window().findChild<PageController*>();
        for (int index = 0; index < application.window().tabView().count(); ++index) {
            if (application.window().tabView().widget(index)->isAncestorOf(page))
                return index;
        }
        return -1;
    }

    [[nodiscard]] std::ptrdiff_t positionOf(std::uint32_t oid) const
    {
        const std::vector<std::uint32_t> oids = registry.oids();
        return std::find(oids.begin(), oids.end(), oid) - oids.begin();
    }
};

TEST_F(ApplicationTest, PutsEachPageInItsTab)
{
    EXPECT_EQ(tabOf<SiteSurveyPageController>(), 0);
    EXPECT_EQ(tabOf<ProfilePageController>(), 1);
    EXPECT_EQ(tabOf<LinkStatusPageController>(), 2);
    EXPECT_EQ(tabOf<StatisticsPageController>(), 3);
    EXPECT_EQ(tabOf<AdvancePageController>(), 4);
    EXPECT_EQ(tabOf<AboutPageController>(), 5);
}

TEST_F(ApplicationTest, ShowsTheWindowWithItsThirdTabAndStartsFourTimers)
{
    EXPECT_FALSE(application.window().isVisible());
    application.awakeFromNib();
    EXPECT_TRUE(application.window().isVisible());
    EXPECT_EQ(application.window().tabView().currentIndex(), 2);
    // Device watch, profiles, link status, statistics; the site survey's starts with a card.
    EXPECT_EQ(runLoop.activeIntervals(), std::vector<std::chrono::milliseconds>(4, std::chrono::milliseconds(2000)));
    tick();
    EXPECT_EQ(runLoop.activeIntervals().size(), 5u);
}

TEST_F(ApplicationTest, InitialisesTheCardBeforeThePagesQueryIt)
{
    application.awakeFromNib();
    registry.forgetCalls();
    tick();
    EXPECT_EQ(registry.oids().front(), OID_GEN_MEDIA_CONNECT_STATUS);
    EXPECT_LT(positionOf(asSet(OID_802_11_BSSID_LIST_SCAN)), positionOf(VX_OID_802_11_PHY_MODE));
    EXPECT_LT(positionOf(VX_OID_802_11_PHY_MODE), positionOf(OID_802_11_STATISTICS));
    EXPECT_EQ(registry.oids().back(), OID_GEN_RCV_NO_BUFFER) << "the statistics page is last";
}

TEST_F(ApplicationTest, StoresSettingsUnderTheHomeDirectory)
{
    application.awakeFromNib();
    tick();
    EXPECT_TRUE(contentOf(home.filePath(u"Library/Preferences/AdvancedProfileSetting.plist"_qs)).contains("Tx Rate"));
    sheets.users.emplace_back(
        [](QDialog& editor) { editor.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click(); });
    application.window().findChild<ProfilePageController*>()->OnAdd();
    EXPECT_TRUE(contentOf(home.filePath(u"Library/Preferences/Profile.plist"_qs)).contains("PROF"));
    EXPECT_EQ(userDefaults.arrays.count(u"Profiles"_qs), 1u);
}

TEST_F(ApplicationTest, KeepsTheSortOrderOfTheNetworksNextToTheWindowsPlacement)
{
    auto& networks = *application.window().findChild<TableView*>(u"ApList"_qs);
    networks.sortByColumnWithIdentifier({ u"signal"_qs, Qt::DescendingOrder });
    application.window().close();
    EXPECT_TRUE(userDefaults.arrays.empty());
    Application next { { registry, clock, runLoop, alerts, sheets, assertions, userDefaults, settings, home.path(),
        home.path() } };
    const auto sorted = next.window().findChild<TableView*>(u"ApList"_qs)->sortedColumn();
    EXPECT_EQ(sorted.identifier, u"signal"_qs);
    EXPECT_EQ(sorted.order, Qt::DescendingOrder);
}

TEST_F(ApplicationTest, LinkStatusPageUpdatesTheSiteSurveyPage)
{
    const auto* const label = application.window().findChild<QLabel*>(u"ConnectStatus"_qs);
    application.awakeFromNib();
    const QString before = label->text();
    registry.serviceCount = 0;
    tick();
    EXPECT_NE(label->text(), before);
    EXPECT_TRUE(label->text().contains(u"Disconnected"_qs));
}

} // namespace
