#include "tests/advanced/ui/AdvancePageFixture.h"

#include <QFile>

namespace {

using Items = std::vector<QString>;

class AdvancePageTest : public AdvancePageFixture { };

TEST_F(AdvancePageTest, ShowsDefaultsWithoutAFile)
{
    open();
    EXPECT_EQ(shown(), (Shown { 0, 0, 0, false, false }));
    EXPECT_EQ(list(u"TXrate").objectValueOfSelectedItem(), u"Auto");
    EXPECT_EQ(rateItems().size(), 13u);
    EXPECT_TRUE(list(u"BGprotection").isEnabled());
    EXPECT_FALSE(buttonsAreEnabled());
    EXPECT_EQ(requests(), Requests {});
    EXPECT_FALSE(QFile::exists(settingsFile()));
}

TEST_F(AdvancePageTest, NamesModesAndProtectionInTheWordsOfTheStandard)
{
    open();
    EXPECT_EQ(list(u"WirelessMode").itemObjectValueAtIndex(0), u"802.11b/g mixed");
    EXPECT_EQ(list(u"WirelessMode").itemObjectValueAtIndex(1), u"802.11b only");
    EXPECT_EQ(list(u"WirelessMode").itemObjectValueAtIndex(2), u"802.11a only");
    EXPECT_EQ(list(u"WirelessMode").itemObjectValueAtIndex(3), u"802.11a/b/g mixed");
    EXPECT_EQ(list(u"WirelessMode").numberOfItems(), 4);
    EXPECT_EQ(list(u"BGprotection").itemObjectValueAtIndex(0), u"Automatic");
    EXPECT_EQ(list(u"BGprotection").itemObjectValueAtIndex(1), u"Always");
    EXPECT_EQ(list(u"BGprotection").itemObjectValueAtIndex(2), u"Never");
    EXPECT_EQ(list(u"BGprotection").numberOfItems(), 3);
}

TEST_F(AdvancePageTest, ShowsWhatIsStored)
{
    store(12, 2, 1, 1, 3);
    open();
    EXPECT_EQ(shown(), (Shown { 3, 12, 2, true, true }));
    EXPECT_FALSE(buttonsAreEnabled());
    EXPECT_EQ(requests(), Requests {});
}

TEST_F(AdvancePageTest, ShowsNoProtectionAndAShortListForAStoredSingleMode)
{
    store(8, 2, 0, 0, 1);
    open();
    EXPECT_EQ(shown(), (Shown { 1, 0, 0, false, false }));
    EXPECT_FALSE(list(u"BGprotection").isEnabled());
}

TEST_F(AdvancePageTest, ReadsTheFirstRecordOnly)
{
    ASSERT_TRUE(writeDictionariesFile(settingsFile(), { record(1, 1, 0, 1, 0), record(2, 2, 1, 0, 3) }));
    open();
    EXPECT_EQ(shown(), (Shown { 0, 1, 1, false, true }));
}

TEST_F(AdvancePageTest, ListsTheCckRatesForMode1)
{
    open();
    choose(u"TXrate", 7);
    EXPECT_EQ(list(u"TXrate").objectValueOfSelectedItem(), u"12 Mbps");
    choose(u"WirelessMode", 1);
    EXPECT_EQ(rateItems(), (Items { u"Auto"_qs, u"1"_qs, u"2"_qs, u"5.5 Mbps"_qs, u"11 Mbps"_qs }));
    EXPECT_EQ(list(u"TXrate").objectValueOfSelectedItem(), u"Auto");
    EXPECT_FALSE(list(u"BGprotection").isEnabled());
    EXPECT_TRUE(buttonsAreEnabled());
    choose(u"WirelessMode", 0);
    EXPECT_EQ(list(u"TXrate").indexOfSelectedItem(), 0) << "the rate that did not fit is gone";
    EXPECT_TRUE(list(u"BGprotection").isEnabled());
}

TEST_F(AdvancePageTest, KeepsARateIndexThatFitsMode1)
{
    open();
    choose(u"TXrate", 4);
    choose(u"WirelessMode", 1);
    EXPECT_EQ(list(u"TXrate").indexOfSelectedItem(), 4);
    EXPECT_EQ(list(u"TXrate").objectValueOfSelectedItem(), u"11 Mbps");
}

TEST_F(AdvancePageTest, ListsTheOfdmRatesForMode2)
{
    open();
    choose(u"TXrate", 10);
    chooseAtOnce(u"WirelessMode", 2);
    EXPECT_EQ(rateItems(),
        (Items { u"Auto"_qs, u"6 Mbps"_qs, u"9 Mbps"_qs, u"12 Mbps"_qs, u"18 Mbps"_qs, u"24 Mbps"_qs, u"36 Mbps"_qs,
            u"48 Mbps"_qs, u"54 Mbps"_qs }));
    EXPECT_EQ(list(u"TXrate").objectValueOfSelectedItem(), u"Auto");
    EXPECT_FALSE(list(u"BGprotection").isEnabled());
}

TEST_F(AdvancePageTest, KeepsTheIndexAndNotTheRateThatFitsMode2)
{
    open();
    choose(u"TXrate", 8);
    EXPECT_EQ(list(u"TXrate").objectValueOfSelectedItem(), u"18 Mbps");
    chooseAtOnce(u"WirelessMode", 2);
    EXPECT_EQ(list(u"TXrate").indexOfSelectedItem(), 8);
    EXPECT_EQ(list(u"TXrate").objectValueOfSelectedItem(), u"54 Mbps");
}

TEST_F(AdvancePageTest, ForgetsTheProtectionInASingleModeWhileTheListGoesOnShowingIt)
{
    store(0, 2, 0, 0, 0);
    open();
    letDriverHave({});
    choose(u"WirelessMode", 1);
    EXPECT_EQ(list(u"BGprotection").indexOfSelectedItem(), 2);
    choose(u"WirelessMode", 0);
    (void)apply();
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 0) }));
}

TEST_F(AdvancePageTest, TakesTheShownProtectionThatIsChosenAgain)
{
    store(0, 2, 0, 0, 0);
    open();
    choose(u"WirelessMode", 1);
    choose(u"WirelessMode", 0);
    (void)apply();
    ASSERT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 0) }));
    ASSERT_EQ(list(u"BGprotection").objectValueOfSelectedItem(), u"Never");
    ASSERT_FALSE(buttonsAreEnabled());
    chooseAtOnce(u"BGprotection", 2);
    EXPECT_TRUE(buttonsAreEnabled());
    (void)apply();
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 2, 0, 0, 0) }));
}

TEST_F(AdvancePageTest, TakesTheShownRateThatIsChosenAgain)
{
    store(2, 0, 0, 0, 1);
    open();
    chooseAtOnce(u"WirelessMode", 0);
    choose(u"TXrate", 8);
    (void)apply();
    // The first Apply behind the mode that was left still checks the rate against that mode.
    ASSERT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 0) }));
    ASSERT_EQ(shown().rate, 8);
    ASSERT_FALSE(buttonsAreEnabled());
    chooseAtOnce(u"TXrate", 8);
    EXPECT_TRUE(buttonsAreEnabled());
    // Taken now: a list that is built anew selects it.
    chooseAtOnce(u"WirelessMode", 3);
    EXPECT_EQ(shown().rate, 8);
    (void)apply();
    EXPECT_EQ(stored(), (PropertyDictionaries { record(8, 0, 0, 0, 3) }));
}

TEST_F(AdvancePageTest, ShowsTheRateInUseWhereTheShownModeIsChosenAgain)
{
    store(2, 0, 0, 0, 1);
    open();
    chooseAtOnce(u"WirelessMode", 0);
    choose(u"TXrate", 8);
    (void)apply();
    chooseAtOnce(u"WirelessMode", 0);
    EXPECT_EQ(shown().rate, 0);
    EXPECT_TRUE(buttonsAreEnabled());
}

TEST_F(AdvancePageTest, SelectsNothingForAStoredProtectionThatTheListDoesNotHave)
{
    store(0, 5, 0, 0, 0);
    open();
    EXPECT_EQ(shown().protection, -1);
    EXPECT_EQ(apply(),
        (Requests { query(0x0D71010C, 4), query(0x0D710111, 32),
            set(0x0DF10111, VX_802_11_STA_CONFIG { 0, 0, 5, 0, 0, 0, 0, 0 }), set(0x0D810210, mixedAutoRates) }));
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 5, 0, 0, 0) }));
}

TEST_F(AdvancePageTest, ShowsAutoForAStoredRateThatMode2DoesNotHave)
{
    store(9, 0, 0, 0, 2);
    open();
    EXPECT_EQ(shown(), (Shown { 2, 0, 0, false, false }));
    choose(u"TXrate", 3);
    click(u"Reset");
    EXPECT_EQ(shown(), (Shown { 2, 0, 0, false, false }));
    EXPECT_EQ(stored(), (PropertyDictionaries { record(9, 0, 0, 0, 2) }));
    (void)apply();
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 2) }));
}

TEST_F(AdvancePageTest, EnablesItsButtonsOnAnyChange)
{
    open();
    choose(u"TXrate", 1);
    EXPECT_TRUE(buttonsAreEnabled());
    page->DisabledButton();
    choose(u"BGprotection", 1);
    EXPECT_TRUE(buttonsAreEnabled());
    page->DisabledButton();
    click(u"EnableTXburst");
    EXPECT_TRUE(buttonsAreEnabled());
    page->DisabledButton();
    click(u"AdhocModeUseOFDMrate");
    EXPECT_TRUE(buttonsAreEnabled());
    page->DisabledButton();
    choose(u"WirelessMode", 1);
    EXPECT_TRUE(buttonsAreEnabled());
    page->DisabledButton();
    EXPECT_FALSE(buttonsAreEnabled());
    EXPECT_EQ(requests(), Requests {});
}

TEST_F(AdvancePageTest, ResetShowsWhatWasStoredAndSendsNothing)
{
    store(3, 1, 1, 0, 0);
    open();
    chooseAtOnce(u"WirelessMode", 2);
    choose(u"TXrate", 7);
    click(u"EnableTXburst");
    click(u"AdhocModeUseOFDMrate");
    click(u"Reset");
    EXPECT_EQ(shown(), (Shown { 0, 3, 1, true, false }));
    EXPECT_TRUE(list(u"BGprotection").isEnabled());
    EXPECT_FALSE(buttonsAreEnabled());
    EXPECT_EQ(requests(), Requests {});
    EXPECT_EQ(stored(), (PropertyDictionaries { record(3, 1, 1, 0, 0) }));
}

TEST_F(AdvancePageTest, ResetWithoutAFileShowsTheFieldsAsTheyAre)
{
    open();
    choose(u"TXrate", 3);
    choose(u"BGprotection", 2);
    click(u"EnableTXburst");
    chooseAtOnce(u"WirelessMode", 3);
    click(u"Reset");
    // Mode is taken by Apply alone; the others were taken when they were chosen.
    EXPECT_EQ(shown(), (Shown { 0, 3, 2, true, false }));
    EXPECT_FALSE(buttonsAreEnabled());
}

TEST_F(AdvancePageTest, ResetShowsWhatWasAppliedAndNotWhatTheFileHasBecome)
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
    EXPECT_EQ(stored(), (PropertyDictionaries { record(9, 2, 1, 1, 3) })) << "it writes nothing";
}

TEST_F(AdvancePageTest, ResetOfAModeTakesItsRatesAndItsProtectionBack)
{
    store(8, 0, 0, 1, 2);
    open();
    chooseAtOnce(u"WirelessMode", 1);
    EXPECT_EQ(shown().rate, 0);
    click(u"Reset");
    EXPECT_EQ(shown(), (Shown { 2, 8, 0, false, true }));
    EXPECT_EQ(list(u"TXrate").objectValueOfSelectedItem(), u"54 Mbps");
    EXPECT_FALSE(list(u"BGprotection").isEnabled());
}

TEST_F(AdvancePageTest, AnUnknownStoredModeEndsTheLoadingWithAnAssertion)
{
    store(1, 1, 1, 1, 7);
    open();
    EXPECT_EQ(assertions.failures,
        (std::vector<RecordingAssertionHandler::Failure> { { "OnSelChangeWirelessMode", "AdvancePageController",
            "AdvancePageController", 465, "Invalid parameter not satisfying: FALSE" } }));
    EXPECT_EQ(shown(), (Shown { -1, -1, -1, false, false }));
    EXPECT_EQ(rateItems(), Items {});

    // What is chosen then is what holds.
    assertions.failures.clear();
    QTest::keyClick(&list(u"WirelessMode"), Qt::Key_Down);
    EXPECT_EQ(list(u"WirelessMode").indexOfSelectedItem(), 0);
    EXPECT_EQ(rateItems().size(), 13u);
    EXPECT_TRUE(buttonsAreEnabled());
    EXPECT_EQ(assertions.failures.size(), 0u);
}

TEST_F(AdvancePageTest, AnUnknownStoredModeIsTreatedAsMixedWhereTheAssertionLetsItGoOn)
{
    assertions.goOn = true;
    store(12, 2, 1, 1, 7);
    open();
    EXPECT_EQ(assertions.failures.size(), 1u);
    EXPECT_EQ(shown(), (Shown { -1, 12, 2, true, true }));
    EXPECT_TRUE(list(u"BGprotection").isEnabled());
    EXPECT_FALSE(buttonsAreEnabled());
}

TEST_F(AdvancePageTest, NeverWarnsOfAChannelConflict)
{
    open();
    for (const int mode : { 1, 2, 3, 0 })
        choose(u"WirelessMode", mode);
    click(u"Reset");
    (void)apply();
    EXPECT_EQ(alerts.alerts.size(), 0u);
}

TEST_F(AdvancePageTest, TracesItsOperationsWhenAskedTo)
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

TEST_F(AdvancePageTest, CanBeWorkedByTheKeyboard)
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
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 1, 1, 0) }));
    QTest::keyClick(&check(u"EnableTXburst"), Qt::Key_Space);
    press(Qt::Key_E);
    EXPECT_TRUE(QTest::qWaitFor([this] { return check(u"EnableTXburst").isChecked(); }));
}

TEST_F(AdvancePageTest, DoesNotChangeItsWidthWithTheRates)
{
    open();
    const int width = page->sizeHint().width();
    choose(u"WirelessMode", 1);
    EXPECT_EQ(page->sizeHint().width(), width);
}

} // namespace
