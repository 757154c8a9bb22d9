#include "tests/advanced/ui/AdvancePageFixture.h"

#include <QFile>

namespace {

class AdvancePageApply : public AdvancePageFixture {
protected:
    [[nodiscard]] std::vector<int> assertionLines() const
    {
        std::vector<int> lines;
        for (const auto& failure : assertions.failures)
            lines.push_back(failure.lineNumber);
        return lines;
    }
};

TEST_F(AdvancePageApply, SendsEverythingThatChanged)
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

TEST_F(AdvancePageApply, GivesTheDriverANewModeTheSecondTime)
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

TEST_F(AdvancePageApply, DropsARateThatTheCckModeItLeavesDoesNotHave)
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

TEST_F(AdvancePageApply, DropsTheProtectionOfTheSingleModeItLeaves)
{
    store(0, 0, 0, 0, 1);
    open();
    letDriverHaveMode(1);
    letDriverHave({ 0, 0, 2, 0, 0, 1, 0, 0 });
    choose(u"WirelessMode", 0);
    choose(u"BGprotection", 2);
    EXPECT_EQ(apply(),
        (Requests { query(0x0D71010C, 4), query(0x0D710111, 32),
            set(0x0DF10111, VX_802_11_STA_CONFIG { 0, 0, 0, 0, 0, 1, 0, 0 }), set(0x0D810210, mixedAutoRates) }));
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 0) }));
    // The list still shows what was chosen; what is chosen from now on holds.
    EXPECT_EQ(shown().protection, 2);
    choose(u"BGprotection", 1);
    EXPECT_EQ(apply(),
        (Requests { query(0x0D71010C, 4), set(0x0DF1010C, std::int32_t { 0 }), query(0x0D710111, 32),
            set(0x0DF10111, VX_802_11_STA_CONFIG { 0, 0, 1, 0, 0, 1, 0, 0 }), set(0x0D810210, mixedAutoRates) }));
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 1, 0, 0, 0) }));
}

TEST_F(AdvancePageApply, SendsNoProtectionWhereASingleModeIsSelected)
{
    store(0, 2, 0, 0, 0);
    open();
    letDriverHave({ 0, 0, 2, 0, 0, 1, 0, 0 });
    choose(u"WirelessMode", 1);
    EXPECT_EQ(apply(),
        (Requests { query(0x0D71010C, 4), query(0x0D710111, 32),
            set(0x0DF10111, VX_802_11_STA_CONFIG { 0, 0, 0, 0, 0, 1, 0, 0 }), set(0x0D810210, cckAutoRates) }));
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 1) }));
}

TEST_F(AdvancePageApply, GivesACardWithout5GhzMode0AndTheOfdmRatesForAStoredMode2)
{
    store(0, 0, 0, 0, 2);
    open();
    letDriverHaveMode(2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(apply(),
            (Requests { query(0x0D71010C, 4), set(0x0DF1010C, std::int32_t { 0 }), query(0x0D710111, 32),
                set(0x0D810210, ofdmAutoRates) }));
        EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 2) })) << "the choice itself stays";
    }
}

TEST_F(AdvancePageApply, SendsTheRateThatTheModesListNames)
{
    struct Choice {
        int mode;
        int index;
        const char16_t* text;
        std::uint8_t code;
    };
    G_bSupportAMode = 1;
    for (const Choice& choice : { Choice { 0, 4, u"11 Mbps", 22 }, Choice { 0, 12, u"54 Mbps", 108 },
             Choice { 1, 2, u"2", 4 }, Choice { 2, 4, u"18 Mbps", 36 }, Choice { 3, 4, u"11 Mbps", 22 } }) {
        SCOPED_TRACE(choice.mode);
        store(choice.index, 0, 0, 0, choice.mode);
        open();
        letDriverHaveMode(choice.mode);
        EXPECT_EQ(list(u"TXrate").objectValueOfSelectedItem(), choice.text);
        EXPECT_EQ(apply(),
            (Requests {
                query(0x0D71010C, 4), query(0x0D710111, 32), set(0x0D810210, NDIS_802_11_RATES { choice.code }) }));
    }
}

TEST_F(AdvancePageApply, SendsNoConfigurationThatTheDriverHas)
{
    store(0, 1, 1, 1, 0);
    open();
    letDriverHave({ 1, 0, 1, 0, 1, 1, 7, 1 });
    EXPECT_EQ(apply(), (Requests { query(0x0D71010C, 4), query(0x0D710111, 32), set(0x0D810210, mixedAutoRates) }));
    EXPECT_EQ(traces,
        "#### AdvancePageController - OnApply -  nWirelessMode = 0, enumWirelessMode = 0,  G_enumWirelessMode = 0 "
        "####\n");
}

TEST_F(AdvancePageApply, TakesFailedQueriesForZeros)
{
    store(0, 1, 1, 1, 0);
    open();
    registry.fail(0x0D71010C);
    registry.fail(0x0D710111);
    choose(u"WirelessMode", 1);
    (void)apply();
    click(u"EnableTXburst");
    // What the driver had of the rest is lost with the answer.
    EXPECT_EQ(apply(),
        (Requests { query(0x0D71010C, 4), set(0x0DF1010C, std::int32_t { 1 }), query(0x0D710111, 32),
            set(0x0DF10111, VX_802_11_STA_CONFIG { 0, 0, 0, 0, 1, 0, 0, 0 }), set(0x0D810210, cckAutoRates) }));
    EXPECT_EQ(traces,
        "#### AdvancePageController - OnApply -  nWirelessMode = 1, enumWirelessMode = 0,  G_enumWirelessMode = 1 "
        "####\n"
        "#### 111111111 ####\n"
        "#### 222222222222 ####\n"
        "#### 222222-22222 ####\n");
}

TEST_F(AdvancePageApply, GoesOnBehindARefusedSet)
{
    store(2, 0, 1, 0, 1);
    open();
    const Requests all { query(0x0D71010C, 4), set(0x0DF1010C, std::int32_t { 1 }), query(0x0D710111, 32),
        set(0x0DF10111, VX_802_11_STA_CONFIG { 1, 0, 0, 0, 0, 0, 0, 0 }), set(0x0D810210, NDIS_802_11_RATES { 4 }) };
    for (const std::uint32_t oid : { 0x0DF1010Cu, 0x0DF10111u, 0x0D810210u }) {
        SCOPED_TRACE(oid);
        ASSERT_TRUE(QFile::remove(settingsFile()));
        page->EnableButton();
        registry.answerOnce(oid, { .succeeds = false });
        EXPECT_EQ(apply(), all);
        EXPECT_EQ(stored(), (PropertyDictionaries { record(2, 0, 1, 0, 1) }));
        EXPECT_FALSE(buttonsAreEnabled());
        EXPECT_TRUE(alerts.alerts.empty());
    }
}

TEST_F(AdvancePageApply, GivesAnUnknownStoredModeToTheDriverAndThenThatNoneIsSelected)
{
    G_bSupportAMode = 1;
    assertions.goOn = true;
    store(0, 0, 0, 0, 7);
    open();
    const auto requestsWithMode = [](std::int32_t mode) {
        return Requests { query(0x0D71010C, 4), set(0x0DF1010C, mode), query(0x0D710111, 32),
            set(0x0D810210, mixedAutoRates) };
    };
    EXPECT_EQ(apply(), requestsWithMode(7));
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, -1) }));
    EXPECT_EQ(apply(), requestsWithMode(-1));
    EXPECT_EQ(G_enumWirelessMode, -1);
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, -1) }));
    EXPECT_EQ(assertionLines(), (std::vector { 465, 121, 135, 121, 135 }));
}

TEST_F(AdvancePageApply, GivesACardWithout5GhzMode0ForAnUnknownStoredMode)
{
    assertions.goOn = true;
    store(0, 0, 0, 0, 7);
    open();
    EXPECT_EQ(apply(), (Requests { query(0x0D71010C, 4), query(0x0D710111, 32), set(0x0D810210, mixedAutoRates) }));
    EXPECT_EQ(apply(),
        (Requests { query(0x0D71010C, 4), set(0x0DF1010C, std::int32_t { -1 }), query(0x0D710111, 32),
            set(0x0D810210, mixedAutoRates) }));
}

TEST_F(AdvancePageApply, EndsTwiceBeforeItsRatesWithAnUnknownStoredMode)
{
    store(1, 1, 1, 1, 7);
    open();
    page->EnableButton();
    letDriverHave({ 1, 0, 1, 0, 1, 0, 0, 0 });
    EXPECT_EQ(apply(), (Requests { query(0x0D71010C, 4), query(0x0D710111, 32) }));
    EXPECT_EQ(
        apply(), (Requests { query(0x0D71010C, 4), set(0x0DF1010C, std::int32_t { -1 }), query(0x0D710111, 32) }));
    EXPECT_EQ(assertionLines(), (std::vector { 465, 121, 121 }));
    EXPECT_EQ(stored(), (PropertyDictionaries { record(1, 1, 1, 1, 7) }));
    EXPECT_TRUE(buttonsAreEnabled());
}

TEST_F(AdvancePageApply, ReportsThatNoRateIsSelected)
{
    struct Case {
        int mode;
        int line;
        NDIS_802_11_RATES rates;
    };
    G_bSupportAMode = 1;
    for (const Case& each : { Case { 0, 129, mixedAutoRates }, Case { 1, 129, cckAutoRates },
             Case { 2, 287, ofdmAutoRates }, Case { 3, 129, mixedAutoRates } }) {
        SCOPED_TRACE(each.mode);
        store(-1, 0, 0, 0, each.mode);
        open();
        letDriverHaveMode(each.mode);
        assertions.failures.clear();

        assertions.goOn = false;
        EXPECT_EQ(apply(), (Requests { query(0x0D71010C, 4), query(0x0D710111, 32) }));
        EXPECT_EQ(traces.find("ERROR"), std::string::npos);
        assertions.goOn = true;
        EXPECT_EQ(apply(), (Requests { query(0x0D71010C, 4), query(0x0D710111, 32), set(0x0D810210, each.rates) }));
        EXPECT_EQ(traces.substr(traces.find('\n') + 1), "Rates ERROR");
        EXPECT_EQ(assertionLines(), (std::vector { each.line, each.line }));
    }
}

TEST_F(AdvancePageApply, GivesACardWithout5GhzMode0ForAStoredMode3)
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

TEST_F(AdvancePageApply, SendsTheOfdmRatesOfMode2)
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

TEST_F(AdvancePageApply, EndsBeforeItStoresWhereAnAssertionFails)
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

TEST_F(AdvancePageApply, GoesOnBehindAnAssertionThatLetsIt)
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

TEST_F(AdvancePageApply, NamesEveryAssertionOfAnUnknownMode)
{
    assertions.goOn = true;
    store(0, 0, 0, 0, 7);
    open();
    assertions.failures.clear();
    EXPECT_EQ(apply(), (Requests { query(0x0D71010C, 4), query(0x0D710111, 32), set(0x0D810210, mixedAutoRates) }));
    EXPECT_EQ(traces,
        "#### AdvancePageController - OnApply -  nWirelessMode = -1, enumWirelessMode = 0,  G_enumWirelessMode = 0 "
        "####\nPhyMode ERRORPhyMode ERROR");
    EXPECT_EQ(assertionLines(), (std::vector { 121, 135 }));
}

} // namespace
