#include "tests/advanced/ui/AdvancePageFixture.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

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

TEST_F(AdvancePageTest, ApplyBehindNoFileWritesFiveZeros)
{
    open();
    EXPECT_EQ(apply(), (Requests { query(0x0D71010C, 4), query(0x0D710111, 32), set(0x0D810210, mixedAutoRates) }));
    EXPECT_EQ(traces,
        "#### AdvancePageController - OnApply -  nWirelessMode = 0, enumWirelessMode = 0,  G_enumWirelessMode = 0 "
        "####\n");
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 0) }));
    const auto permissions = QFile::permissions(settingsFile());
    EXPECT_FALSE(permissions.testAnyFlags(QFile::ReadGroup | QFile::ReadOther));
}

TEST_F(AdvancePageTest, ApplySendsEverythingThatChanged)
{
    G_bSupportAMode = 1;
    store(0, 0, 0, 0, 3);
    open();
    letDriverHaveMode(1);
    letDriverHave({ 0, 1, 0, 1, 0, 5, 6, 1 });
    choose(u"TXrate", 4);
    choose(u"BGprotection", 1);
    click(u"EnableTXburst");
    click(u"AdhocModeUseOFDMrate");
    registry.forgetCalls();
    traces = standardErrorOf([this] { click(u"Apply"); });
    EXPECT_EQ(requests(),
        (Requests { query(0x0D71010C, 4), set(0x0DF1010C, std::int32_t { 3 }), query(0x0D710111, 32),
            set(0x0DF10111, VX_802_11_STA_CONFIG { 1, 0, 1, 0, 1, 5, 6, 1 }),
            set(0x0D810210, NDIS_802_11_RATES { 22, 0, 0, 0, 0, 0, 0, 0 }) }));
    EXPECT_EQ(traces,
        "#### AdvancePageController - OnApply -  nWirelessMode = 3, enumWirelessMode = 1,  G_enumWirelessMode = 3 "
        "####\n"
        "#### 111111111 ####\n"
        "#### 222222222222 ####\n"
        "#### 222222-22222 ####\n");
    EXPECT_EQ(stored(), (PropertyDictionaries { record(4, 1, 1, 1, 3) }));
    EXPECT_FALSE(buttonsAreEnabled());
}

TEST_F(AdvancePageTest, ANewModeReachesTheDriverAtTheSecondApply)
{
    open();
    choose(u"WirelessMode", 1);
    EXPECT_EQ(apply(), (Requests { query(0x0D71010C, 4), query(0x0D710111, 32), set(0x0D810210, cckAutoRates) }));
    EXPECT_EQ(traces,
        "#### AdvancePageController - OnApply -  nWirelessMode = 1, enumWirelessMode = 0,  G_enumWirelessMode = 0 "
        "####\n");
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 1) }));
    EXPECT_EQ(G_enumWirelessMode, 0);
    EXPECT_EQ(apply(),
        (Requests { query(0x0D71010C, 4), set(0x0DF1010C, std::int32_t { 1 }), query(0x0D710111, 32),
            set(0x0D810210, cckAutoRates) }));
    EXPECT_EQ(G_enumWirelessMode, 1);
}

TEST_F(AdvancePageTest, LeavingTheCckModeDropsARateThatItDoesNotHave)
{
    store(2, 0, 0, 0, 1);
    open();
    chooseAtOnce(u"WirelessMode", 0);
    choose(u"TXrate", 8);
    // The checks still see the mode of the last load.
    EXPECT_EQ(apply(),
        (Requests { query(0x0D71010C, 4), set(0x0DF1010C, std::int32_t { 1 }), query(0x0D710111, 32),
            set(0x0D810210, mixedAutoRates) }));
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 0) }));
    EXPECT_EQ(list(u"TXrate").indexOfSelectedItem(), 8);
}

TEST_F(AdvancePageTest, LeavingASingleModeDropsTheProtectionOnce)
{
    store(0, 0, 0, 0, 1);
    open();
    choose(u"WirelessMode", 0);
    choose(u"BGprotection", 2);
    (void)apply();
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 0) }));
}

TEST_F(AdvancePageTest, ACardWithout5GhzIsGivenMode0ForAStoredMode3)
{
    store(0, 1, 0, 0, 3);
    open();
    letDriverHaveMode(2);
    letDriverHave({ 0, 0, 1, 0, 0, 0, 0, 0 });
    EXPECT_EQ(apply(),
        (Requests { query(0x0D71010C, 4), set(0x0DF1010C, std::int32_t { 0 }), query(0x0D710111, 32),
            set(0x0D810210, mixedAutoRates) }));
    EXPECT_EQ(traces,
        "#### AdvancePageController - OnApply -  nWirelessMode = 3, enumWirelessMode = 2,  G_enumWirelessMode = 0 "
        "####\n"
        "#### 111111111 ####\n");
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 1, 0, 0, 3) }));
}

TEST_F(AdvancePageTest, ApplySendsTheOfdmRatesOfMode2)
{
    G_bSupportAMode = 1;
    store(0, 0, 0, 0, 2);
    open();
    letDriverHaveMode(2);
    EXPECT_EQ(apply(), (Requests { query(0x0D71010C, 4), query(0x0D710111, 32), set(0x0D810210, ofdmAutoRates) }));
    choose(u"TXrate", 8);
    EXPECT_EQ(apply(),
        (Requests { query(0x0D71010C, 4), query(0x0D710111, 32), set(0x0D810210, NDIS_802_11_RATES { 108 }) }));
}

TEST_F(AdvancePageTest, ApplyWithoutACardStillStores)
{
    registry.serviceCount = 0;
    open();
    choose(u"TXrate", 2);
    EXPECT_EQ(apply(), Requests {});
    // Both queries read as zeros, which is what the page has.
    EXPECT_EQ(traces,
        "#### AdvancePageController - OnApply -  nWirelessMode = 0, enumWirelessMode = 0,  G_enumWirelessMode = 0 "
        "####\n");
    EXPECT_EQ(stored(), (PropertyDictionaries { record(2, 0, 0, 0, 0) }));
    EXPECT_FALSE(buttonsAreEnabled());
    EXPECT_EQ(registry.held(), std::vector<std::uint32_t> {});
}

TEST_F(AdvancePageTest, ApplyReplacesTheFirstRecordAndKeepsTheOthers)
{
    PropertyDictionary first = record(1, 0, 0, 0, 0);
    first.set(u"Comment"_qs, u"mine"_qs);
    ASSERT_TRUE(writeDictionariesFile(settingsFile(), { first, record(2, 2, 1, 1, 3) }));
    open();
    (void)apply();
    EXPECT_EQ(stored(), (PropertyDictionaries { record(1, 0, 0, 0, 0), record(2, 2, 1, 1, 3) }));
}

TEST_F(AdvancePageTest, KeepsAnUnreadableFileBesideTheOneThatItWrites)
{
    ASSERT_TRUE(QDir().mkpath(home.filePath(u"Library/Preferences"_qs)));
    QFile file(settingsFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<plist>broken");
    file.close();
    open();
    EXPECT_EQ(shown(), (Shown { 0, 0, 0, false, false }));
    (void)apply();
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 0) }));
    QFile kept(settingsFile() + u".unreadable"_qs);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "<plist>broken");
}

TEST_F(AdvancePageTest, AFileThatCannotBeWrittenIsNoFailureOfApply)
{
    // A file stands where the folder would be.
    QFile file(home.filePath(u"Library"_qs));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    open();
    choose(u"TXrate", 2);
    EXPECT_EQ(apply().size(), 3u);
    EXPECT_FALSE(buttonsAreEnabled());
    EXPECT_EQ(alerts.alerts.size(), 0u);
    choose(u"TXrate", 5);
    click(u"Reset");
    EXPECT_EQ(shown().rate, 2) << "the page goes on with what was applied";
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

TEST_F(AdvancePageTest, AFailedAssertionEndsApplyBeforeItStores)
{
    store(13, 0, 0, 0, 0);
    open();
    EXPECT_EQ(shown().rate, -1) << "no item has this index";
    choose(u"BGprotection", 1);
    letDriverHave({ 0, 0, 1, 0, 0, 0, 0, 0 });
    EXPECT_EQ(apply(), (Requests { query(0x0D71010C, 4), query(0x0D710111, 32) }));
    EXPECT_EQ(assertions.failures,
        (std::vector<RecordingAssertionHandler::Failure> { { "OnApply", "AdvancePageController",
            "AdvancePageController", 129, "Invalid parameter not satisfying: FALSE" } }));
    EXPECT_EQ(stored(), (PropertyDictionaries { record(13, 0, 0, 0, 0) }));
    EXPECT_TRUE(buttonsAreEnabled());
}

TEST_F(AdvancePageTest, ApplyGoesOnBehindAnAssertionThatLetsIt)
{
    assertions.goOn = true;
    store(13, 0, 0, 0, 0);
    open();
    EXPECT_EQ(apply(), (Requests { query(0x0D71010C, 4), query(0x0D710111, 32), set(0x0D810210, mixedAutoRates) }));
    EXPECT_EQ(traces,
        "#### AdvancePageController - OnApply -  nWirelessMode = 0, enumWirelessMode = 0,  G_enumWirelessMode = 0 "
        "####\nRates ERROR");
    EXPECT_EQ(stored(), (PropertyDictionaries { record(-1, 0, 0, 0, 0) }));
}

TEST_F(AdvancePageTest, ApplyOfAnUnknownModeNamesEveryAssertion)
{
    assertions.goOn = true;
    store(0, 0, 0, 0, 7);
    open();
    assertions.failures.clear();
    EXPECT_EQ(apply(), (Requests { query(0x0D71010C, 4), query(0x0D710111, 32), set(0x0D810210, mixedAutoRates) }));
    EXPECT_EQ(traces,
        "#### AdvancePageController - OnApply -  nWirelessMode = -1, enumWirelessMode = 0,  G_enumWirelessMode = 0 "
        "####\nPhyMode ERRORPhyMode ERROR");
    std::vector<int> lines;
    for (const auto& failure : assertions.failures)
        lines.push_back(failure.lineNumber);
    EXPECT_EQ(lines, (std::vector { 121, 135 }));
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
    open();
    __DEBUG__ = 1;
    const std::string reset = standardErrorOf([this] { page->OnReset(); });
    __DEBUG__ = 0;
    EXPECT_EQ(reset,
        "#### AdvancePageController - OnReset ####\n"
        "#### AdvancePageController - OnSelChangeWirelessMode ####\n"
        "#### AdvancePageController - EnableButton ####\n"
        "#### AdvancePageController - DisabledButton ####\n");
    EXPECT_EQ(standardErrorOf([this] { page->OnReset(); }), "");
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
