#include "advanced/AdvancedRequests.h"

#include "tests/advanced/CardFixture.h"

namespace {

class AdvancedRequests : public CardFixture {
protected:
    AdvancedSettings settings;
};

TEST_F(AdvancedRequests, SendTheModeIfTheDriverHasAnother)
{
    settings.nWirelessMode = 3;
    G_enumWirelessMode = 2;
    setDriverMode(1);
    EXPECT_EQ(
        standardErrorOf([this] { sendWirelessMode(adapter, settings); }), modeTrace(3, 1, 2) + "#### 111111111 ####\n");
    EXPECT_EQ(
        requests(), (Requests { query(VX_OID_802_11_PHY_MODE, 4), set(VX_OID_802_11_PHY_MODE, std::int32_t { 2 }) }));
}

TEST_F(AdvancedRequests, SendNoModeIfTheDriverAlreadyHasIt)
{
    settings.nWirelessMode = 3;
    G_enumWirelessMode = 1;
    setDriverMode(1);
    EXPECT_EQ(standardErrorOf([this] { sendWirelessMode(adapter, settings); }), modeTrace(3, 1, 1));
    EXPECT_EQ(requests(), (Requests { query(VX_OID_802_11_PHY_MODE, 4) }));
}

TEST_F(AdvancedRequests, TreatAFailedModeQueryAsModeZero)
{
    G_enumWirelessMode = 0;
    registry.fail(VX_OID_802_11_PHY_MODE);
    (void)standardErrorOf([this] { sendWirelessMode(adapter, settings); });
    EXPECT_EQ(requests(), (Requests { query(VX_OID_802_11_PHY_MODE, 4) }));
}

TEST_F(AdvancedRequests, UpdateTheDriversConfiguration)
{
    setDriverConfiguration({ 0, 1, 2, 1, 0, 0x11111111, 0x22222222, 0x33333333 });
    settings.bTXBurst = true;
    settings.bAdhocOfdm = true;
    settings.nBGProtection = 1;
    EXPECT_EQ(standardErrorOf([this] { (void)sendStationConfiguration(adapter, settings); }),
        "#### 222222222222 ####\n#### 222222-22222 ####\n");
    EXPECT_EQ(requests(),
        (Requests { query(VX_OID_802_11_STA_CONFIG, 32),
            set(VX_OID_802_11_STA_CONFIG,
                VX_802_11_STA_CONFIG { 1, 0, 1, 0, 1, 0x11111111, 0x22222222, 0x33333333 }) }));
}

TEST_F(AdvancedRequests, SendTheTwoSettingsWithoutAControl)
{
    settings.bTurboRate = true;
    settings.bShortSlot = true;
    (void)standardErrorOf([this] { (void)sendStationConfiguration(adapter, settings); });
    EXPECT_EQ(requests(),
        (Requests { query(VX_OID_802_11_STA_CONFIG, 32),
            set(VX_OID_802_11_STA_CONFIG, VX_802_11_STA_CONFIG { 0, 1, 0, 1, 0, 0, 0, 0 }) }));
}

TEST_F(AdvancedRequests, TraceBeforeAndAfterSettingTheConfiguration)
{
    settings.bTXBurst = true;
    std::string before;
    registry.onCall = [&before](const RecordedRegistryCall& call) {
        if (call.index != asSet(VX_OID_802_11_STA_CONFIG))
            return;
        before = testing::internal::GetCapturedStderr();
        testing::internal::CaptureStderr();
    };
    EXPECT_EQ(
        standardErrorOf([this] { (void)sendStationConfiguration(adapter, settings); }), "#### 222222-22222 ####\n");
    EXPECT_EQ(before, "#### 222222222222 ####\n");
}

TEST_F(AdvancedRequests, SendNoConfigurationIfTheDriverAlreadyHasIt)
{
    setDriverConfiguration({ 1, 0, 2, 0, 1, 1, 7, 1 });
    settings.bTXBurst = true;
    settings.bAdhocOfdm = true;
    settings.nBGProtection = 2;
    EXPECT_EQ(standardErrorOf([this] { (void)sendStationConfiguration(adapter, settings); }), "");
    EXPECT_EQ(requests(), (Requests { query(VX_OID_802_11_STA_CONFIG, 32) }));
}

TEST_F(AdvancedRequests, SendTheRatesForTheModeAndIndex)
{
    settings.nTxRate = 4;
    EXPECT_TRUE(sendDesiredRates(adapter, settings, assertions));
    settings = { .nTxRate = 8, .nWirelessMode = 2 };
    EXPECT_TRUE(sendDesiredRates(adapter, settings, assertions));
    EXPECT_EQ(requests(),
        (Requests { set(OID_802_11_DESIRED_RATES, NDIS_802_11_RATES { 22 }),
            set(OID_802_11_DESIRED_RATES, NDIS_802_11_RATES { 108 }) }));
}

TEST_F(AdvancedRequests, SendNoRatesIfTheHandlerStops)
{
    settings.nTxRate = 13;
    EXPECT_FALSE(sendDesiredRates(adapter, settings, assertions));
    EXPECT_EQ(requests(), Requests {});
    assertions.goOn = true;
    (void)standardErrorOf([this] { EXPECT_TRUE(sendDesiredRates(adapter, settings, assertions)); });
    EXPECT_EQ(requests(), (Requests { set(OID_802_11_DESIRED_RATES, mixedAutoRates) }));
}

TEST_F(AdvancedRequests, SendTheRadioFlagFollowedByThreeZeros)
{
    G_bRadio = 1;
    sendRadio(adapter);
    G_bRadio = 0;
    sendRadio(adapter);
    using Word = std::array<std::uint8_t, 4>;
    EXPECT_EQ(requests(),
        (Requests { set(VX_OID_802_11_RADIO, Word { 1, 0, 0, 0 }), set(VX_OID_802_11_RADIO, Word { 0, 0, 0, 0 }) }));
}

} // namespace
