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

TEST_F(AdvancePageApply, SendsAndStoresAllChanges)
{
    G_bSupportAMode = 1;
    store(0, 0, 0, 0, 3);
    open();
    setDriverMode(1);
    setDriverConfiguration({ 0, 1, 0, 1, 0, 5, 6, 1 });
    choose(u"TXrate", 4);
    choose(u"BGprotection", 1);
    click(u"EnableTXburst");
    click(u"AdhocModeUseOFDMrate");
    registry.forgetCalls();
    traces = standardErrorOf([this] { click(u"Apply"); });
    EXPECT_EQ(requests(),
        expectedApply({ .mode = 3,
            .configuration = VX_802_11_STA_CONFIG { 1, 0, 1, 0, 1, 5, 6, 1 },
            .rates = NDIS_802_11_RATES { 22, 0, 0, 0, 0, 0, 0, 0 } }));
    EXPECT_EQ(traces,
        modeTrace(3, 1, 3)
            + "#### 111111111 ####\n"
              "#### 222222222222 ####\n"
              "#### 222222-22222 ####\n");
    EXPECT_EQ(stored(), oneRecord(4, 1, 1, 1, 3));
    EXPECT_FALSE(buttonsAreEnabled());
}

TEST_F(AdvancePageApply, SendsANewModeOnlyAtTheNextApply)
{
    open();
    choose(u"WirelessMode", 1);
    EXPECT_EQ(apply(), expectedApply({ .rates = cckAutoRates }));
    EXPECT_EQ(traces, modeTrace(1, 0, 0));
    EXPECT_EQ(stored(), oneRecord(0, 0, 0, 0, 1));
    EXPECT_EQ(G_enumWirelessMode, 0);
    EXPECT_EQ(apply(), expectedApply({ .mode = 1, .rates = cckAutoRates }));
    EXPECT_EQ(G_enumWirelessMode, 1);
}

TEST_F(AdvancePageApply, ResetsARateThatIsNotInThePreviousCckMode)
{
    store(2, 0, 0, 0, 1);
    open();
    chooseInPopup(u"WirelessMode", 0);
    choose(u"TXrate", 8);
    EXPECT_EQ(apply(), expectedApply({ .mode = 1, .rates = mixedAutoRates }));
    EXPECT_EQ(stored(), oneRecord(0, 0, 0, 0, 0));
    EXPECT_EQ(shown().rate, 8);
}

TEST_F(AdvancePageApply, ResetsProtectionIfThePreviousModeHasNone)
{
    store(0, 0, 0, 0, 1);
    open();
    setDriverMode(1);
    setDriverConfiguration({ 0, 0, 2, 0, 0, 1, 0, 0 });
    choose(u"WirelessMode", 0);
    choose(u"BGprotection", 2);
    EXPECT_EQ(apply(),
        expectedApply({ .configuration = VX_802_11_STA_CONFIG { 0, 0, 0, 0, 0, 1, 0, 0 }, .rates = mixedAutoRates }));
    EXPECT_EQ(stored(), oneRecord(0, 0, 0, 0, 0));
    // The list still shows the old selection. A new selection takes effect.
    EXPECT_EQ(shown().protection, 2);
    choose(u"BGprotection", 1);
    EXPECT_EQ(apply(),
        expectedApply(
            { .mode = 0, .configuration = VX_802_11_STA_CONFIG { 0, 0, 1, 0, 0, 1, 0, 0 }, .rates = mixedAutoRates }));
    EXPECT_EQ(stored(), oneRecord(0, 1, 0, 0, 0));
}

TEST_F(AdvancePageApply, SendsNoProtectionForACckMode)
{
    store(0, 2, 0, 0, 0);
    open();
    setDriverConfiguration({ 0, 0, 2, 0, 0, 1, 0, 0 });
    choose(u"WirelessMode", 1);
    EXPECT_EQ(apply(),
        expectedApply({ .configuration = VX_802_11_STA_CONFIG { 0, 0, 0, 0, 0, 1, 0, 0 }, .rates = cckAutoRates }));
    EXPECT_EQ(stored(), oneRecord(0, 0, 0, 0, 1));
}

TEST_F(AdvancePageApply, SendsMode0WithOfdmRatesForAStoredMode2WithoutA5GhzRadio)
{
    store(0, 0, 0, 0, 2);
    open();
    setDriverMode(2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(apply(), expectedApply({ .mode = 0, .rates = ofdmAutoRates }));
        EXPECT_EQ(stored(), oneRecord(0, 0, 0, 0, 2)) << "the stored mode does not change";
    }
}

TEST_F(AdvancePageApply, SendsTheRateDisplayedInTheListOfTheMode)
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
        setDriverMode(choice.mode);
        EXPECT_EQ(rateText(), choice.text);
        EXPECT_EQ(apply(), expectedApply({ .rates = NDIS_802_11_RATES { choice.code } }));
    }
}

TEST_F(AdvancePageApply, SendsNoConfigurationIfTheDriverAlreadyHasIt)
{
    store(0, 1, 1, 1, 0);
    open();
    setDriverConfiguration({ 1, 0, 1, 0, 1, 1, 7, 1 });
    EXPECT_EQ(apply(), expectedApply({ .rates = mixedAutoRates }));
    EXPECT_EQ(traces, modeTrace(0, 0, 0));
}

TEST_F(AdvancePageApply, TreatsFailedQueriesAsZeros)
{
    store(0, 1, 1, 1, 0);
    open();
    registry.fail(VX_OID_802_11_PHY_MODE);
    registry.fail(VX_OID_802_11_STA_CONFIG);
    choose(u"WirelessMode", 1);
    (void)apply();
    click(u"EnableTXburst");
    // The other fields of the driver are unknown and sent as zeros.
    EXPECT_EQ(apply(),
        expectedApply(
            { .mode = 1, .configuration = VX_802_11_STA_CONFIG { 0, 0, 0, 0, 1, 0, 0, 0 }, .rates = cckAutoRates }));
    EXPECT_EQ(traces,
        modeTrace(1, 0, 1)
            + "#### 111111111 ####\n"
              "#### 222222222222 ####\n"
              "#### 222222-22222 ####\n");
}

TEST_F(AdvancePageApply, ContinuesAfterAFailedSet)
{
    store(2, 0, 1, 0, 1);
    open();
    const Requests all = expectedApply({ .mode = 1,
        .configuration = VX_802_11_STA_CONFIG { 1, 0, 0, 0, 0, 0, 0, 0 },
        .rates = NDIS_802_11_RATES { 4 } });
    for (const std::uint32_t oid :
        { asSet(VX_OID_802_11_PHY_MODE), asSet(VX_OID_802_11_STA_CONFIG), asSet(OID_802_11_DESIRED_RATES) }) {
        SCOPED_TRACE(oid);
        ASSERT_TRUE(QFile::remove(settingsFile()));
        page->EnableButton();
        registry.answerOnce(oid, { .succeeds = false });
        EXPECT_EQ(apply(), all);
        EXPECT_EQ(stored(), oneRecord(2, 0, 1, 0, 1));
        EXPECT_FALSE(buttonsAreEnabled());
        EXPECT_TRUE(alerts.alerts.empty());
    }
}

TEST_F(AdvancePageApply, SendsAnUnknownStoredModeAndThenNoSelection)
{
    G_bSupportAMode = 1;
    assertions.goOn = true;
    store(0, 0, 0, 0, 7);
    open();
    const auto requestsWithMode
        = [](std::int32_t mode) { return expectedApply({ .mode = mode, .rates = mixedAutoRates }); };
    EXPECT_EQ(apply(), requestsWithMode(7));
    EXPECT_EQ(stored(), oneRecord(0, 0, 0, 0, -1));
    EXPECT_EQ(apply(), requestsWithMode(-1));
    EXPECT_EQ(G_enumWirelessMode, -1);
    EXPECT_EQ(stored(), oneRecord(0, 0, 0, 0, -1));
    EXPECT_EQ(assertionLines(), (std::vector { 465, 121, 135, 121, 135 }));
}

TEST_F(AdvancePageApply, SendsMode0ForAnUnknownStoredModeWithoutA5GhzRadio)
{
    assertions.goOn = true;
    store(0, 0, 0, 0, 7);
    open();
    EXPECT_EQ(apply(), expectedApply({ .rates = mixedAutoRates }));
    EXPECT_EQ(apply(), expectedApply({ .mode = -1, .rates = mixedAutoRates }));
}

TEST_F(AdvancePageApply, StopsBeforeTheRatesForAnUnknownStoredMode)
{
    store(1, 1, 1, 1, 7);
    open();
    page->EnableButton();
    setDriverConfiguration({ 1, 0, 1, 0, 1, 0, 0, 0 });
    EXPECT_EQ(apply(), expectedApply({}));
    EXPECT_EQ(apply(), expectedApply({ .mode = -1 }));
    EXPECT_EQ(assertionLines(), (std::vector { 465, 121, 121 }));
    EXPECT_EQ(stored(), oneRecord(1, 1, 1, 1, 7));
    EXPECT_TRUE(buttonsAreEnabled());
}

TEST_F(AdvancePageApply, ReportsAMissingRateSelection)
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
        setDriverMode(each.mode);
        assertions.failures.clear();

        assertions.goOn = false;
        EXPECT_EQ(apply(), expectedApply({}));
        EXPECT_EQ(traces.find("ERROR"), std::string::npos);
        assertions.goOn = true;
        EXPECT_EQ(apply(), expectedApply({ .rates = each.rates }));
        EXPECT_EQ(traces.substr(traces.find('\n') + 1), "Rates ERROR");
        EXPECT_EQ(assertionLines(), (std::vector { each.line, each.line }));
    }
}

TEST_F(AdvancePageApply, SendsMode0ForAStoredMode3WithoutA5GhzRadio)
{
    store(0, 1, 0, 0, 3);
    open();
    setDriverMode(2);
    setDriverConfiguration({ 0, 0, 1, 0, 0, 0, 0, 0 });
    EXPECT_EQ(apply(), expectedApply({ .mode = 0, .rates = mixedAutoRates }));
    EXPECT_EQ(traces, modeTrace(3, 2, 0) + "#### 111111111 ####\n");
    EXPECT_EQ(stored(), oneRecord(0, 1, 0, 0, 3));
}

TEST_F(AdvancePageApply, SendsTheOfdmRatesOfMode2)
{
    G_bSupportAMode = 1;
    store(0, 0, 0, 0, 2);
    open();
    setDriverMode(2);
    EXPECT_EQ(apply(), expectedApply({ .rates = ofdmAutoRates }));
    choose(u"TXrate", 8);
    EXPECT_EQ(apply(), expectedApply({ .rates = NDIS_802_11_RATES { 108 } }));
}

TEST_F(AdvancePageApply, DoesNotStoreAfterAFailedAssertion)
{
    store(13, 0, 0, 0, 0);
    open();
    EXPECT_EQ(shown().rate, -1) << "there is no such item";
    choose(u"BGprotection", 1);
    setDriverConfiguration({ 0, 0, 1, 0, 0, 0, 0, 0 });
    EXPECT_EQ(apply(), expectedApply({}));
    EXPECT_EQ(assertions.failures,
        (std::vector<RecordingAssertionHandler::Failure> { { "OnApply", "AdvancePageController",
            "AdvancePageController", 129, "Invalid parameter not satisfying: FALSE" } }));
    EXPECT_EQ(stored(), oneRecord(13, 0, 0, 0, 0));
    EXPECT_TRUE(buttonsAreEnabled());
}

TEST_F(AdvancePageApply, SendsAutoAndStoresIfTheHandlerContinues)
{
    assertions.goOn = true;
    store(13, 0, 0, 0, 0);
    open();
    EXPECT_EQ(apply(), expectedApply({ .rates = mixedAutoRates }));
    EXPECT_EQ(traces, modeTrace(0, 0, 0) + "Rates ERROR");
    EXPECT_EQ(stored(), oneRecord(-1, 0, 0, 0, 0));
}

TEST_F(AdvancePageApply, ReportsAllAssertionsForAnUnknownMode)
{
    assertions.goOn = true;
    store(0, 0, 0, 0, 7);
    open();
    assertions.failures.clear();
    EXPECT_EQ(apply(), expectedApply({ .rates = mixedAutoRates }));
    EXPECT_EQ(traces, modeTrace(-1, 0, 0) + "PhyMode ERRORPhyMode ERROR");
    EXPECT_EQ(assertionLines(), (std::vector { 121, 135 }));
}

} // namespace
