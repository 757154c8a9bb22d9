#include "tests/advanced/ui/AdvancePageFixture.h"

#include <QAccessible>
#include <QFile>

#include <functional>

namespace {

using Items = std::vector<QString>;

class AdvancePageTest : public AdvancePageFixture { };

TEST_F(AdvancePageTest, ShowsDefaultsWithoutAFile)
{
    open();
    EXPECT_EQ(shown(), (Shown { 0, 0, 0, false, false }));
    EXPECT_EQ(rateText(), u"Auto");
    EXPECT_EQ(items(u"TXrate").size(), 13u);
    EXPECT_TRUE(list(u"BGprotection").isEnabled());
    EXPECT_FALSE(buttonsAreEnabled());
    EXPECT_EQ(requests(), Requests {});
    EXPECT_FALSE(QFile::exists(settingsFile()));
}

TEST_F(AdvancePageTest, NamesModesAndProtectionInTheTermsOfTheStandard)
{
    open();
    EXPECT_EQ(items(u"WirelessMode"),
        (Items { u"802.11b/g mixed"_qs, u"802.11b only"_qs, u"802.11a only"_qs, u"802.11a/b/g mixed"_qs }));
    EXPECT_EQ(items(u"BGprotection"), (Items { u"Automatic"_qs, u"Always"_qs, u"Never"_qs }));
}

TEST_F(AdvancePageTest, ShowsTheStoredSettings)
{
    store(12, 2, 1, 1, 3);
    open();
    EXPECT_EQ(shown(), (Shown { 3, 12, 2, true, true }));
    EXPECT_FALSE(buttonsAreEnabled());
    EXPECT_EQ(requests(), Requests {});
}

TEST_F(AdvancePageTest, ResetsProtectionAndRateForAStoredCckMode)
{
    store(8, 2, 0, 0, 1);
    open();
    EXPECT_EQ(shown(), (Shown { 1, 0, 0, false, false }));
    EXPECT_FALSE(list(u"BGprotection").isEnabled());
}

TEST_F(AdvancePageTest, ReadsOnlyTheFirstRecord)
{
    ASSERT_TRUE(writeDictionariesFile(settingsFile(), { record(1, 1, 0, 1, 0), record(2, 2, 1, 0, 3) }));
    open();
    EXPECT_EQ(shown(), (Shown { 0, 1, 1, false, true }));
}

TEST_F(AdvancePageTest, ListsTheCckRatesForMode1)
{
    open();
    choose(u"TXrate", 7);
    EXPECT_EQ(rateText(), u"12 Mbps");
    choose(u"WirelessMode", 1);
    EXPECT_EQ(items(u"TXrate"), (Items { u"Auto"_qs, u"1"_qs, u"2"_qs, u"5.5 Mbps"_qs, u"11 Mbps"_qs }));
    EXPECT_EQ(rateText(), u"Auto");
    EXPECT_FALSE(list(u"BGprotection").isEnabled());
    EXPECT_TRUE(buttonsAreEnabled());
    choose(u"WirelessMode", 0);
    EXPECT_EQ(shown().rate, 0) << "the rate was reset";
    EXPECT_TRUE(list(u"BGprotection").isEnabled());
}

TEST_F(AdvancePageTest, KeepsARateIndexThatFitsMode1)
{
    open();
    choose(u"TXrate", 4);
    choose(u"WirelessMode", 1);
    EXPECT_EQ(shown().rate, 4);
    EXPECT_EQ(rateText(), u"11 Mbps");
}

TEST_F(AdvancePageTest, ListsTheOfdmRatesForMode2)
{
    open();
    choose(u"TXrate", 10);
    chooseInPopup(u"WirelessMode", 2);
    EXPECT_EQ(items(u"TXrate"),
        (Items { u"Auto"_qs, u"6 Mbps"_qs, u"9 Mbps"_qs, u"12 Mbps"_qs, u"18 Mbps"_qs, u"24 Mbps"_qs, u"36 Mbps"_qs,
            u"48 Mbps"_qs, u"54 Mbps"_qs }));
    EXPECT_EQ(rateText(), u"Auto");
    EXPECT_FALSE(list(u"BGprotection").isEnabled());
}

TEST_F(AdvancePageTest, KeepsTheIndexAndNotTheRateThatFitsMode2)
{
    open();
    choose(u"TXrate", 8);
    EXPECT_EQ(rateText(), u"18 Mbps");
    chooseInPopup(u"WirelessMode", 2);
    EXPECT_EQ(shown().rate, 8);
    EXPECT_EQ(rateText(), u"54 Mbps");
}

TEST_F(AdvancePageTest, ResetsProtectionInCckModeButKeepsItDisplayed)
{
    store(0, 2, 0, 0, 0);
    open();
    setDriverConfiguration({});
    choose(u"WirelessMode", 1);
    EXPECT_EQ(shown().protection, 2);
    choose(u"WirelessMode", 0);
    (void)apply();
    EXPECT_EQ(stored(), oneRecord(0, 0, 0, 0, 0));
}

TEST_F(AdvancePageTest, StoresTheDisplayedProtectionWhenSelectedAgain)
{
    store(0, 2, 0, 0, 0);
    open();
    choose(u"WirelessMode", 1);
    choose(u"WirelessMode", 0);
    (void)apply();
    ASSERT_EQ(stored(), oneRecord(0, 0, 0, 0, 0));
    ASSERT_EQ(list(u"BGprotection").objectValueOfSelectedItem(), u"Never");
    ASSERT_FALSE(buttonsAreEnabled());
    chooseInPopup(u"BGprotection", 2);
    EXPECT_TRUE(buttonsAreEnabled());
    (void)apply();
    EXPECT_EQ(stored(), oneRecord(0, 2, 0, 0, 0));
}

TEST_F(AdvancePageTest, StoresTheDisplayedRateWhenSelectedAgain)
{
    store(2, 0, 0, 0, 1);
    open();
    chooseInPopup(u"WirelessMode", 0);
    choose(u"TXrate", 8);
    (void)apply();
    // The first Apply after a mode change checks the rate against the previous mode.
    ASSERT_EQ(stored(), oneRecord(0, 0, 0, 0, 0));
    ASSERT_EQ(shown().rate, 8);
    ASSERT_FALSE(buttonsAreEnabled());
    chooseInPopup(u"TXrate", 8);
    EXPECT_TRUE(buttonsAreEnabled());
    // The index is stored now, so a rebuilt list selects it.
    chooseInPopup(u"WirelessMode", 3);
    EXPECT_EQ(shown().rate, 8);
    (void)apply();
    EXPECT_EQ(stored(), oneRecord(8, 0, 0, 0, 3));
}

TEST_F(AdvancePageTest, ShowsTheStoredRateWhenTheDisplayedModeIsSelectedAgain)
{
    store(2, 0, 0, 0, 1);
    open();
    chooseInPopup(u"WirelessMode", 0);
    choose(u"TXrate", 8);
    (void)apply();
    chooseInPopup(u"WirelessMode", 0);
    EXPECT_EQ(shown().rate, 0);
    EXPECT_TRUE(buttonsAreEnabled());
}

TEST_F(AdvancePageTest, SelectsNothingForAnUnknownStoredProtection)
{
    store(0, 5, 0, 0, 0);
    open();
    EXPECT_EQ(shown().protection, -1);
    EXPECT_EQ(apply(),
        expectedApply({ .configuration = VX_802_11_STA_CONFIG { 0, 0, 5, 0, 0, 0, 0, 0 }, .rates = mixedAutoRates }));
    EXPECT_EQ(stored(), oneRecord(0, 5, 0, 0, 0));
}

TEST_F(AdvancePageTest, ShowsAutoForAStoredRateThatIsNotInMode2)
{
    store(9, 0, 0, 0, 2);
    open();
    EXPECT_EQ(shown(), (Shown { 2, 0, 0, false, false }));
    choose(u"TXrate", 3);
    click(u"Reset");
    EXPECT_EQ(shown(), (Shown { 2, 0, 0, false, false }));
    EXPECT_EQ(stored(), oneRecord(9, 0, 0, 0, 2));
    (void)apply();
    EXPECT_EQ(stored(), oneRecord(0, 0, 0, 0, 2));
}

TEST_F(AdvancePageTest, EnablesItsButtonsOnAnyChange)
{
    open();
    const std::vector<std::function<void()>> changes {
        [this] { choose(u"TXrate", 1); },
        [this] { choose(u"BGprotection", 1); },
        [this] { click(u"EnableTXburst"); },
        [this] { click(u"AdhocModeUseOFDMrate"); },
        [this] { choose(u"WirelessMode", 1); },
    };
    for (const auto& change : changes) {
        change();
        EXPECT_TRUE(buttonsAreEnabled());
        page->DisabledButton();
        EXPECT_FALSE(buttonsAreEnabled());
    }
    EXPECT_EQ(requests(), Requests {});
}

TEST_F(AdvancePageTest, NoticesChecksByAssistiveTechnology)
{
    for (const char16_t* const name : { u"EnableTXburst", u"AdhocModeUseOFDMrate" }) {
        open();
        QAccessibleInterface* const box = QAccessible::queryAccessibleInterface(&check(name));
        box->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        EXPECT_TRUE(check(name).isChecked());
        EXPECT_TRUE(buttonsAreEnabled());
        (void)apply();
        EXPECT_TRUE(
            stored().front().integer(QStringView(name) == u"EnableTXburst" ? u"Tx Burst"_qs : u"Ad Hoc Use OFDM"_qs));
    }
}

TEST_F(AdvancePageTest, ResetShowsTheStoredSettingsAndSendsNoRequests)
{
    store(3, 1, 1, 0, 0);
    open();
    chooseInPopup(u"WirelessMode", 2);
    choose(u"TXrate", 7);
    click(u"EnableTXburst");
    click(u"AdhocModeUseOFDMrate");
    click(u"Reset");
    EXPECT_EQ(shown(), (Shown { 0, 3, 1, true, false }));
    EXPECT_TRUE(list(u"BGprotection").isEnabled());
    EXPECT_FALSE(buttonsAreEnabled());
    EXPECT_EQ(requests(), Requests {});
    EXPECT_EQ(stored(), oneRecord(3, 1, 1, 0, 0));
}

TEST_F(AdvancePageTest, ResetWithoutAFileShowsTheCurrentSettings)
{
    open();
    choose(u"TXrate", 3);
    choose(u"BGprotection", 2);
    click(u"EnableTXburst");
    chooseInPopup(u"WirelessMode", 3);
    click(u"Reset");
    // Only Apply stores the mode; the other settings were stored when they were selected.
    EXPECT_EQ(shown(), (Shown { 0, 3, 2, true, false }));
    EXPECT_FALSE(buttonsAreEnabled());
}

TEST_F(AdvancePageTest, ResetShowsTheAppliedSettingsEvenIfTheFileHasChanged)
{
    store(3, 1, 1, 0, 0);
    open();
    choose(u"TXrate", 5);
    click(u"EnableTXburst");
    (void)apply();
    registry.forgetCalls();
    store(9, 2, 1, 1, 3);
    choose(u"TXrate", 6);
    choose(u"BGprotection", 0);
    click(u"Reset");
    EXPECT_EQ(shown(), (Shown { 0, 5, 1, false, false }));
    EXPECT_FALSE(buttonsAreEnabled());
    EXPECT_EQ(requests(), Requests {});
    EXPECT_EQ(stored(), oneRecord(9, 2, 1, 1, 3)) << "the page does not write";
}

TEST_F(AdvancePageTest, ResetRestoresTheRatesAndProtectionOfTheMode)
{
    store(8, 0, 0, 1, 2);
    open();
    chooseInPopup(u"WirelessMode", 1);
    EXPECT_EQ(shown().rate, 0);
    click(u"Reset");
    EXPECT_EQ(shown(), (Shown { 2, 8, 0, false, true }));
    EXPECT_EQ(rateText(), u"54 Mbps");
    EXPECT_FALSE(list(u"BGprotection").isEnabled());
}

TEST_F(AdvancePageTest, UnknownStoredModeEndsLoadingWithAnAssertion)
{
    store(1, 1, 1, 1, 7);
    open();
    EXPECT_EQ(assertions.failures,
        (std::vector<RecordingAssertionHandler::Failure> { { "OnSelChangeWirelessMode", "AdvancePageController",
            "AdvancePageController", 465, "Invalid parameter not satisfying: FALSE" } }));
    EXPECT_EQ(shown(), (Shown { -1, -1, -1, false, false }));
    EXPECT_EQ(items(u"TXrate"), Items {});

    // The page works normally after a mode is selected.
    assertions.failures.clear();
    QTest::keyClick(&list(u"WirelessMode"), Qt::Key_Down);
    EXPECT_EQ(list(u"WirelessMode").indexOfSelectedItem(), 0);
    EXPECT_EQ(items(u"TXrate").size(), 13u);
    EXPECT_TRUE(buttonsAreEnabled());
    EXPECT_EQ(assertions.failures.size(), 0u);
}

TEST_F(AdvancePageTest, UnknownStoredModeIsTreatedAsMixedIfTheHandlerContinues)
{
    assertions.goOn = true;
    store(12, 2, 1, 1, 7);
    open();
    EXPECT_EQ(assertions.failures.size(), 1u);
    EXPECT_EQ(shown(), (Shown { -1, 12, 2, true, true }));
    EXPECT_TRUE(list(u"BGprotection").isEnabled());
    EXPECT_FALSE(buttonsAreEnabled());
}

TEST_F(AdvancePageTest, NeverWarnsAboutAChannelConflict)
{
    open();
    for (const int mode : { 1, 2, 3, 0 })
        choose(u"WirelessMode", mode);
    click(u"Reset");
    (void)apply();
    EXPECT_EQ(alerts.alerts.size(), 0u);
}

TEST_F(AdvancePageTest, TracesItsOperations)
{
    using Operation = void (AdvancePageController::*)();
    const auto tracesOfPage = [this](Operation operation) {
        return linesOf("AdvancePageController", tracesOf([&] { (page.get()->*operation)(); }));
    };
    const auto lines
        = [](const std::vector<std::string>& operations) { return entryLines("AdvancePageController", operations); };
    const std::string awake = linesOf("AdvancePageController", tracesOf([this] { open(); }));
    EXPECT_EQ(awake, lines({ "init", "awakeFromNib", "OnSelChangeWirelessMode", "EnableButton", "DisabledButton" }));
    EXPECT_EQ(tracesOfPage(&AdvancePageController::OnReset),
        lines({ "OnReset", "OnSelChangeWirelessMode", "EnableButton", "DisabledButton" }));
    EXPECT_EQ(tracesOfPage(&AdvancePageController::OnApply),
        lines({ "OnApply", "OnApply -  nWirelessMode = 0, enumWirelessMode = 0,  G_enumWirelessMode = 0",
            "DisabledButton" }));
    EXPECT_EQ(tracesOfPage(&AdvancePageController::OnRadioSwitch), lines({ "OnRadioSwitch", "RadioStatus" }));
    const std::vector<std::pair<Operation, std::string>> changes {
        { &AdvancePageController::OnSelChangeWirelessMode, "OnSelChangeWirelessMode" },
        { &AdvancePageController::OnTxRate, "OnTxRate" },
        { &AdvancePageController::OnSelBGProtection, "OnSelBGProtection" },
        { &AdvancePageController::OnTxBurst, "OnTxBurst" },
        { &AdvancePageController::OnAdHocUseOFDM, "OnAdHocUseOFDM" },
    };
    for (const auto& [operation, name] : changes)
        EXPECT_EQ(tracesOfPage(operation), lines({ name, "EnableButton" }));
    EXPECT_EQ(standardErrorOf([this] { page->OnReset(); }), "");
    EXPECT_EQ(standardErrorOf([this] { page->OnRadioSwitch(); }), "");
}

TEST_F(AdvancePageTest, IsOperableByKeyboard)
{
    open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(page.get()));
    const auto press = [this](Qt::Key key) { QTest::keyClick(page.get(), key, Qt::AltModifier); };
    press(Qt::Key_B);
    EXPECT_TRUE(QTest::qWaitFor([this] { return check(u"EnableTXburst").isChecked(); }));
    press(Qt::Key_O);
    EXPECT_TRUE(QTest::qWaitFor([this] { return check(u"AdhocModeUseOFDMrate").isChecked(); }));
    press(Qt::Key_M);
    EXPECT_TRUE(list(u"WirelessMode").hasFocus());
    press(Qt::Key_R);
    EXPECT_TRUE(list(u"TXrate").hasFocus());
    press(Qt::Key_G);
    EXPECT_TRUE(list(u"BGprotection").hasFocus());
    (void)standardErrorOf([&] {
        press(Qt::Key_A);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !button(u"Apply").isEnabled(); }));
    });
    EXPECT_EQ(stored(), oneRecord(0, 0, 1, 1, 0));
    QTest::keyClick(&check(u"EnableTXburst"), Qt::Key_Space);
    press(Qt::Key_E);
    EXPECT_TRUE(QTest::qWaitFor([this] { return check(u"EnableTXburst").isChecked(); }));
}

TEST_F(AdvancePageTest, RateListDoesNotChangeThePageWidth)
{
    open();
    const int width = page->sizeHint().width();
    choose(u"WirelessMode", 1);
    EXPECT_EQ(page->sizeHint().width(), width);
}

TEST_F(AdvancePageTest, UsesTheWidthOfASmallWindowAndNotAllOfALargeOne)
{
    open();
    const auto* const column = page->findChild<QWidget*>(u"column"_qs);
    for (const int width : { 600, 1400 }) {
        page->resize(width, 370);
        QCoreApplication::processEvents();
        EXPECT_EQ(page->width(), width);
        EXPECT_LE(std::abs(column->geometry().center().x() - width / 2), 2);
        EXPECT_GE(column->width(), std::min(column->maximumWidth(), width * 9 / 10));
    }
    EXPECT_LT(column->maximumWidth(), 1400);
}

} // namespace
