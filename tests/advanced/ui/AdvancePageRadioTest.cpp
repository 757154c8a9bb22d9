#include "platform/ui/Images.h"
#include "tests/advanced/ui/AdvancePageFixture.h"
#include "tests/support/BssidListBuilder.h"

#include <QLabel>

namespace {

class AdvancePageRadioTest : public AdvancePageFixture {
protected:
    AdvancePageRadioTest() { open(); }

    [[nodiscard]] bool pictureIs(const char16_t* name) const
    {
        return control<ImageView>(u"RadioSwitchPic").image().cacheKey() == imageNamed(name).cacheKey();
    }
    [[nodiscard]] QString spokenPicture() const { return control<ImageView>(u"RadioSwitchPic").accessibleName(); }
};

TEST_F(AdvancePageRadioTest, HasItsPictures)
{
    EXPECT_FALSE(imageNamed(u"RADIOON").isNull());
    EXPECT_FALSE(imageNamed(u"RADIOOFF").isNull());
    EXPECT_NE(imageNamed(u"RADIOON").cacheKey(), imageNamed(u"RADIOOFF").cacheKey());
}

TEST_F(AdvancePageRadioTest, NamesTheActionAndShowsTheState)
{
    page->RadioStatus();
    EXPECT_EQ(button(u"Radio").text(), u"Radio Off");
    EXPECT_TRUE(pictureIs(u"RADIOON"));
    EXPECT_EQ(spokenPicture(), u"The radio is on");
    G_bRadio = 0;
    page->RadioStatus();
    EXPECT_EQ(button(u"Radio").text(), u"Radio On");
    EXPECT_TRUE(pictureIs(u"RADIOOFF"));
    EXPECT_EQ(spokenPicture(), u"The radio is off");
    EXPECT_EQ(control<QLabel>(u"radioState").text(), u"The radio is off");
    EXPECT_EQ(requests(), Requests {}) << "the driver is not asked";
}

TEST_F(AdvancePageRadioTest, MarksAProfilesConnectionByTheRadio)
{
    G_configFromProfile = 1;
    page->RadioStatus();
    EXPECT_EQ(G_bCheckedProfileConnect, 1);
    G_bRadio = 0;
    page->RadioStatus();
    EXPECT_EQ(G_bCheckedProfileConnect, 0);
}

TEST_F(AdvancePageRadioTest, LeavesTheMarkAloneWithoutAProfile)
{
    page->RadioStatus();
    EXPECT_EQ(G_bCheckedProfileConnect, 0);
    G_bCheckedProfileConnect = 1;
    G_bRadio = 0;
    page->RadioStatus();
    EXPECT_EQ(G_bCheckedProfileConnect, 1);
}

TEST_F(AdvancePageRadioTest, SwitchesOffAtOnceAndScans)
{
    registry.answer(0x0D010217, bssidList(std::vector<EntryBuilder> { EntryBuilder("home") }));
    click(u"Radio");
    EXPECT_EQ(G_bRadio, 0);
    EXPECT_EQ(button(u"Radio").text(), u"Radio On");
    EXPECT_TRUE(pictureIs(u"RADIOOFF"));
    EXPECT_EQ(requests(),
        (Requests { set(0x0DF10108, std::array<std::uint8_t, 4> { 0, 0, 0, 0 }), query(0x0D81011A, 4),
            query(0x0D010217, 4096), query(0x0D010218, 4096) }));
    EXPECT_EQ(clock.delays, std::vector<std::uint32_t> { 120 });
    EXPECT_EQ(G_bRescan, 1);
    ASSERT_TRUE(G_pBssidList);
    EXPECT_EQ(std::to_integer<int>(G_pBssidList->front()), 1);
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
    EXPECT_EQ(requests().front(), set(0x0DF10108, std::array<std::uint8_t, 4> { 1, 0, 0, 0 }));
    EXPECT_EQ(G_bRescan, 1);
}

TEST_F(AdvancePageRadioTest, AsksForARescanOnlyBehindItsOwnScan)
{
    struct Step {
        std::uint32_t oid; // 0 for the wait of the scan
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
        == std::vector<Step> {
            { 0x0DF10108, 0, 0 }, { 0x0D81011A, 0, 0 }, { 0, 0, 0 }, { 0x0D010217, 0, 0 }, { 0x0D010218, 0, 0 } }));
    EXPECT_EQ(G_bRescan, 1);
}

TEST_F(AdvancePageRadioTest, MarksAProfilesConnectionBeforeTheDriverIsTold)
{
    G_configFromProfile = 1;
    G_bCheckedProfileConnect = 1;
    std::vector<int> marks;
    registry.onCall = [&](const RecordedRegistryCall&) { marks.push_back(G_bCheckedProfileConnect); };
    click(u"Radio");
    ASSERT_FALSE(marks.empty());
    EXPECT_EQ(marks, std::vector<int>(marks.size(), 0));
}

TEST_F(AdvancePageRadioTest, ScansAlsoWhereTheDriverRefusesTheSwitch)
{
    registry.fail(0x0DF10108);
    registry.fail(0x0D81011A);
    click(u"Radio");
    EXPECT_EQ(G_bRadio, 0) << "the page goes by what was asked for";
    EXPECT_EQ(button(u"Radio").text(), u"Radio On");
    EXPECT_EQ(requests(),
        (Requests { set(0x0DF10108, std::array<std::uint8_t, 4> { 0, 0, 0, 0 }), query(0x0D81011A, 4),
            query(0x0D010217, 4096), query(0x0D010218, 4096) }));
    EXPECT_EQ(clock.delays, std::vector<std::uint32_t> { 120 });
    EXPECT_EQ(G_bRescan, 1);
    EXPECT_TRUE(alerts.alerts.empty());
}

TEST_F(AdvancePageRadioTest, SwitchesWithoutACardToo)
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

TEST_F(AdvancePageRadioTest, IsNotSwitchedByApply)
{
    G_bRadio = 0;
    for (const auto& request : apply())
        EXPECT_NE(request.oid & ~0x00800000u, 0x0D710108u);
    EXPECT_EQ(G_bRadio, 0);
}

} // namespace
