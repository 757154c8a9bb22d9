#include "driver/BssidList.h"
#include "platform/ui/Images.h"
#include "tests/advanced/ui/AdvancePageFixture.h"
#include "tests/support/BssidListBuilder.h"

#include <QLabel>

namespace {

using RadioRecord = std::array<std::uint8_t, 4>;

const Requests switchOff { set(VX_OID_802_11_RADIO, RadioRecord { 0, 0, 0, 0 }),
    query(asSet(OID_802_11_BSSID_LIST_SCAN), 4), query(OID_802_11_BSSID_LIST, 4096),
    query(VX_OID_802_11_BSSID_LIST_NEXT, 4096) };

class AdvancePageRadioTest : public AdvancePageFixture {
protected:
    AdvancePageRadioTest()
    {
        cardPresence = CardPresence::Absent;
        open();
    }

    [[nodiscard]] bool pictureIs(const char16_t* name) const
    {
        return control<ImageView>(u"RadioSwitchPic").image().cacheKey() == imageNamed(name).cacheKey();
    }
    [[nodiscard]] QString stateText() const { return control<QLabel>(u"radioState").text(); }
    [[nodiscard]] QString spokenPicture() const { return control<ImageView>(u"RadioSwitchPic").accessibleName(); }
};

TEST_F(AdvancePageRadioTest, HasDistinctPictures)
{
    EXPECT_FALSE(imageNamed(u"RADIOON").isNull());
    EXPECT_FALSE(imageNamed(u"RADIOOFF").isNull());
    EXPECT_NE(imageNamed(u"RADIOON").cacheKey(), imageNamed(u"RADIOOFF").cacheKey());
}

TEST_F(AdvancePageRadioTest, ButtonNamesTheActionAndPictureShowsTheState)
{
    page->RadioStatus();
    EXPECT_EQ(button(u"Radio").text(), u"Radio Off");
    EXPECT_TRUE(pictureIs(u"RADIOON"));
    EXPECT_EQ(spokenPicture(), u"Radio setting: on");
    G_bRadio = 0;
    page->RadioStatus();
    EXPECT_EQ(button(u"Radio").text(), u"Radio On");
    EXPECT_TRUE(pictureIs(u"RADIOOFF"));
    EXPECT_EQ(spokenPicture(), u"Radio setting: off");
    EXPECT_EQ(requests(), Requests {});
}

TEST_F(AdvancePageRadioTest, SaysNothingAboutTheRadioOfAMissingCard)
{
    EXPECT_TRUE(stateText().startsWith(u"No wireless card found."_qs));
    click(u"Radio");
    EXPECT_TRUE(stateText().startsWith(u"No wireless card found."_qs));
    EXPECT_TRUE(stateText().contains(u"Switched off in this window before the card"_qs));
}

TEST_F(AdvancePageRadioTest, SaysWhatTheCardsOwnSwitchWasWhenApplyReadIt)
{
    G_bDeviceExist = 1;
    page->RadioStatus();
    EXPECT_TRUE(stateText().contains(u"did not report"_qs));
    VX_802_11_STA_CONFIG configuration {};
    setDriverConfiguration(configuration);
    (void)apply();
    EXPECT_TRUE(stateText().contains(u"switch was off"_qs));
    configuration.HwRadioStatus = 1;
    setDriverConfiguration(configuration);
    (void)apply();
    EXPECT_TRUE(stateText().contains(u"switch was on"_qs));
    registry.fail(VX_OID_802_11_STA_CONFIG);
    (void)apply();
    EXPECT_TRUE(stateText().contains(u"did not report"_qs)) << "the last report may be outdated";
}

TEST_F(AdvancePageRadioTest, ShowsWhatOtherPagesLearnAboutTheCard)
{
    G_bDeviceExist = 1;
    page->ShowCard();
    EXPECT_TRUE(stateText().contains(u"did not report"_qs));
    cardSwitchOn = false; // as the link status page has read it
    page->ShowCard();
    EXPECT_TRUE(stateText().contains(u"switch was off"_qs));
    cardPresence = CardPresence::Silent;
    page->ShowCard();
    EXPECT_TRUE(stateText().startsWith(u"The wireless card does not answer."_qs));
    cardPresence = CardPresence::Answering;
    page->ShowCard();
    EXPECT_FALSE(stateText().contains(u"does not answer"_qs));
    EXPECT_EQ(requests(), Requests {});
}

TEST_F(AdvancePageRadioTest, DoesNotClaimAChoiceOfAnEarlierRun)
{
    G_bDeviceExist = 1;
    page->RadioStatus();
    EXPECT_TRUE(stateText().contains(u"has not been switched"_qs));
    click(u"Radio");
    EXPECT_TRUE(stateText().contains(u"Switched off in this window."_qs));
}

TEST_F(AdvancePageRadioTest, ForgetsWhatItKnewAboutARemovedCard)
{
    G_bDeviceExist = 1;
    VX_802_11_STA_CONFIG configuration {};
    configuration.HwRadioStatus = 1;
    setDriverConfiguration(configuration);
    (void)apply();
    click(u"Radio");
    registry.forgetCalls();
    G_bDeviceExist = 0;
    page->ForgetCard();
    EXPECT_TRUE(stateText().startsWith(u"No wireless card found."_qs));
    G_bDeviceExist = 1;
    page->RadioStatus();
    EXPECT_TRUE(stateText().contains(u"did not report"_qs));
    EXPECT_TRUE(stateText().contains(u"before the card was inserted"_qs));
    EXPECT_EQ(requests(), Requests {});
}

TEST_F(AdvancePageRadioTest, SetsTheProfileCheckMarkFromTheRadio)
{
    G_configFromProfile = 1;
    page->RadioStatus();
    EXPECT_EQ(G_bCheckedProfileConnect, 1);
    G_bRadio = 0;
    page->RadioStatus();
    EXPECT_EQ(G_bCheckedProfileConnect, 0);
}

TEST_F(AdvancePageRadioTest, DoesNotChangeTheCheckMarkWithoutAProfile)
{
    page->RadioStatus();
    EXPECT_EQ(G_bCheckedProfileConnect, 0);
    G_bCheckedProfileConnect = 1;
    G_bRadio = 0;
    page->RadioStatus();
    EXPECT_EQ(G_bCheckedProfileConnect, 1);
}

TEST_F(AdvancePageRadioTest, SwitchesOffImmediatelyAndScans)
{
    registry.answer(OID_802_11_BSSID_LIST, bssidList(std::vector<EntryBuilder> { EntryBuilder("home") }));
    click(u"Radio");
    EXPECT_EQ(G_bRadio, 0);
    EXPECT_EQ(button(u"Radio").text(), u"Radio On");
    EXPECT_TRUE(pictureIs(u"RADIOOFF"));
    EXPECT_EQ(requests(), switchOff);
    EXPECT_EQ(clock.delays, std::vector<std::uint32_t> { 120 });
    EXPECT_EQ(G_bRescan, 1);
    EXPECT_EQ(bssidCount(currentBssidList()), 1u);
    EXPECT_FALSE(buttonsAreEnabled()) << "the radio needs no Apply";
}

TEST_F(AdvancePageRadioTest, SwitchesOnAgain)
{
    click(u"Radio");
    registry.forgetCalls();
    G_bRescan = 0;
    click(u"Radio");
    EXPECT_EQ(G_bRadio, 1);
    EXPECT_EQ(button(u"Radio").text(), u"Radio Off");
    EXPECT_TRUE(pictureIs(u"RADIOON"));
    EXPECT_EQ(requests().front(), set(VX_OID_802_11_RADIO, RadioRecord { 1, 0, 0, 0 }));
    EXPECT_EQ(G_bRescan, 1);
}

TEST_F(AdvancePageRadioTest, SetsTheRescanFlagOnlyAfterItsOwnScan)
{
    struct Step {
        std::uint32_t oid; // 0 for the delay
        int radio;
        int rescan;
        bool operator==(const Step&) const = default;
    };
    std::vector<Step> steps;
    const auto note = [&](std::uint32_t oid) {
        steps.push_back({ oid, G_bRadio, G_bRescan });
        EXPECT_EQ(button(u"Radio").text(), u"Radio On");
        EXPECT_TRUE(pictureIs(u"RADIOOFF"));
    };
    registry.onCall = [&](const RecordedRegistryCall& call) {
        if (call.call == RegistryCall::IOConnectMethodStructureIStructureO)
            note(call.index);
    };
    clock.onDelay = [&](std::uint32_t) { note(0); };
    click(u"Radio");
    EXPECT_TRUE((steps
        == std::vector<Step> { { asSet(VX_OID_802_11_RADIO), 0, 0 }, { asSet(OID_802_11_BSSID_LIST_SCAN), 0, 0 },
            { 0, 0, 0 }, { OID_802_11_BSSID_LIST, 0, 0 }, { VX_OID_802_11_BSSID_LIST_NEXT, 0, 0 } }));
    EXPECT_EQ(G_bRescan, 1);
}

TEST_F(AdvancePageRadioTest, ClearsTheProfileCheckMarkBeforeTheRequest)
{
    G_configFromProfile = 1;
    G_bCheckedProfileConnect = 1;
    std::vector<int> marks;
    registry.onCall = [&](const RecordedRegistryCall&) { marks.push_back(G_bCheckedProfileConnect); };
    click(u"Radio");
    ASSERT_FALSE(marks.empty());
    EXPECT_EQ(marks, std::vector<int>(marks.size(), 0));
}

TEST_F(AdvancePageRadioTest, ScansEvenIfTheSwitchFails)
{
    registry.fail(asSet(VX_OID_802_11_RADIO));
    registry.fail(asSet(OID_802_11_BSSID_LIST_SCAN));
    click(u"Radio");
    EXPECT_EQ(G_bRadio, 0) << "the page shows the requested state";
    EXPECT_EQ(button(u"Radio").text(), u"Radio On");
    EXPECT_EQ(requests(), switchOff);
    EXPECT_EQ(clock.delays, std::vector<std::uint32_t> { 120 });
    EXPECT_EQ(G_bRescan, 1);
    EXPECT_TRUE(alerts.alerts.empty());
}

TEST_F(AdvancePageRadioTest, SwitchesEvenWithoutACard)
{
    registry.serviceCount = 0;
    click(u"Radio");
    EXPECT_EQ(G_bRadio, 0);
    EXPECT_EQ(button(u"Radio").text(), u"Radio On");
    EXPECT_EQ(requests(), Requests {});
    EXPECT_EQ(registry.count(RegistryCall::IOMasterPort), 4);
    EXPECT_EQ(clock.delays, std::vector<std::uint32_t> { 120 });
    EXPECT_EQ(registry.held(), std::vector<std::uint32_t> {});
}

TEST_F(AdvancePageRadioTest, IsNotChangedByApply)
{
    G_bRadio = 0;
    for (const auto& request : apply())
        EXPECT_NE(request.oid & ~oidSetFlag, VX_OID_802_11_RADIO);
    EXPECT_EQ(G_bRadio, 0);
}

} // namespace
