#include "driver/records/Oids.h"
#include "platform/ui/TableView.h"
#include "platform/ui/WindowTickClock.h"
#include "tests/app/ApplicationFixture.h"

#include <QImage>

#include <algorithm>

namespace {

// The network list while the first scan blocks the window.
class FirstSearchTest : public ApplicationFixture {
protected:
    FirstSearchTest()
    {
        sleeper.onDelay = [this](std::uint32_t) {
            textDuringScan = table->emptyText();
            imageDuringScan = listImage();
        };
        VX_802_11_STA_CONFIG configuration {};
        configuration.HwRadioStatus = 1; // the radio switch is on
        registry.answer(VX_OID_802_11_STA_CONFIG, bytesOfRecord(configuration));
        application.awakeFromNib();
        application.window().tabView().setCurrentIndex(0);
        // The application empties the list when it notices the missing card.
        registry.serviceCount = 0;
        tick();
        registry.serviceCount = 1;
    }

    [[nodiscard]] QImage listImage() const { return table->viewport()->grab().toImage(); }

    QImage listImageWithText(const QString& text)
    {
        table->setEmptyText(text);
        return listImage();
    }

    TableView* table { application.window().findChild<TableView*>(u"ApList"_qs) };
    QString textDuringScan;
    QImage imageDuringScan;
};

TEST_F(FirstSearchTest, ShowsThatNetworksAreBeingSearched)
{
    const QString textWithoutCard = table->emptyText();
    tick();
    const QString textAfterScan = table->emptyText();

    ASSERT_EQ(sleeper.delays.size(), 1u);
    EXPECT_TRUE(textWithoutCard.contains(u"No wireless card"_qs));
    EXPECT_TRUE(textDuringScan.contains(u"Searching for networks"_qs));
    EXPECT_TRUE(textAfterScan.contains(u"No networks in range"_qs));
    EXPECT_NE(imageDuringScan, listImageWithText(textWithoutCard));
    EXPECT_NE(imageDuringScan, listImageWithText(textAfterScan));
    EXPECT_EQ(imageDuringScan, listImageWithText(textDuringScan));
}

TEST_F(FirstSearchTest, ShowsItAgainWhenTheCardComesBack)
{
    tick();
    registry.serviceCount = 0;
    tick();
    textDuringScan.clear();
    registry.serviceCount = 1;
    tick();
    EXPECT_TRUE(textDuringScan.contains(u"Searching for networks"_qs));
}

TEST_F(FirstSearchTest, SendsNoExtraRequestsForIt)
{
    registry.forgetCalls();
    tick();
    const std::vector<std::uint32_t> expected { OID_GEN_MEDIA_CONNECT_STATUS, VX_OID_802_11_EVENT_FLAG,
        VX_OID_802_11_STA_CONFIG, OID_802_11_NETWORK_TYPES_SUPPORTED, asSet(OID_802_11_BSSID_LIST_SCAN),
        OID_802_11_BSSID_LIST, VX_OID_802_11_BSSID_LIST_NEXT,
        VX_OID_802_11_PHY_MODE }; // the last one comes from the advanced settings page
    std::vector<std::uint32_t> sent = registry.oids();
    ASSERT_GE(sent.size(), expected.size());
    sent.resize(expected.size());
    EXPECT_EQ(sent, expected);
}

} // namespace
