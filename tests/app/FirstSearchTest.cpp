#include "app/QvConfig7100Controller.h"
#include "driver/VX7100Access.h"
#include "driver/records/Oids.h"
#include "platform/ui/TableView.h"
#include "platform/ui/WindowTickClock.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/RecordingIORegistry.h"
#include "tests/support/RecordingTickClock.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/survey/InitialSurveyState.h"

#include <QImage>
#include <QTabWidget>
#include <gtest/gtest.h>

namespace {

// The device watch with the real page of the networks: what that shows while the first search blocks the window.
class FirstSearchTest : public testing::Test {
protected:
    FirstSearchTest()
    {
        table = page.findChild<TableView*>(u"ApList"_qs);
        clock.onDelay = [this](std::uint32_t) {
            textDuringTheSearch = table->emptyText();
            duringTheSearch = shownList();
        };
        page.resize(900, 500);
        page.show();
    }

    [[nodiscard]] QImage shownList() const { return table->viewport()->grab().toImage(); }

    QImage listSaying(const QString& text)
    {
        table->setEmptyText(text);
        return shownList();
    }

    InitialSurveyState initialState;
    RecordingIORegistry registry;
    RecordingTickClock clock;
    WindowTickClock windowClock { clock };
    RecordingAlertPanels alerts;
    RecordingAssertionHandler assertions;
    ScriptedModalSheets sheets;
    ManualRunLoop runLoop;
    QTabWidget tabView;
    VX7100Access adapter { registry, windowClock, alerts };
    SiteSurveyPageController page { adapter, runLoop, assertions, alerts, sheets };
    QvConfig7100Controller controller { adapter, runLoop, tabView, { .siteSurvey = &page } };
    TableView* table { nullptr };
    QString textDuringTheSearch;
    QImage duringTheSearch;
};

TEST_F(FirstSearchTest, SaysThatNetworksAreBeingSearchedFor)
{
    registry.serviceCount = 0;
    controller.OnTimer();
    const QString withoutCard = table->emptyText();
    registry.serviceCount = 1;
    controller.OnTimer();
    const QString afterTheSearch = table->emptyText();

    ASSERT_EQ(clock.delays.size(), 1u);
    EXPECT_TRUE(withoutCard.contains(u"No wireless card"_qs));
    EXPECT_TRUE(textDuringTheSearch.contains(u"Searching for networks"_qs));
    EXPECT_TRUE(afterTheSearch.contains(u"No networks in range"_qs));
    EXPECT_NE(duringTheSearch, listSaying(withoutCard));
    EXPECT_NE(duringTheSearch, listSaying(afterTheSearch));
    EXPECT_EQ(duringTheSearch, listSaying(textDuringTheSearch));
}

TEST_F(FirstSearchTest, SaysSoAgainWhenTheCardComesBack)
{
    controller.OnTimer();
    registry.serviceCount = 0;
    controller.OnTimer();
    textDuringTheSearch.clear();
    registry.serviceCount = 1;
    controller.OnTimer();
    EXPECT_TRUE(textDuringTheSearch.contains(u"Searching for networks"_qs));
}

TEST_F(FirstSearchTest, AsksNothingMoreOfTheDriverForIt)
{
    controller.OnTimer();
    EXPECT_EQ(registry.oids(),
        (std::vector<std::uint32_t> { OID_GEN_MEDIA_CONNECT_STATUS, VX_OID_802_11_EVENT_FLAG, VX_OID_802_11_STA_CONFIG,
            OID_802_11_NETWORK_TYPES_SUPPORTED, OID_802_11_BSSID_LIST_SCAN | oidSetFlag, OID_802_11_BSSID_LIST,
            VX_OID_802_11_BSSID_LIST_NEXT }));
}

} // namespace
