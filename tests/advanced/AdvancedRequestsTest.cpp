#include "advanced/AdvancedRequests.h"

#include "tests/advanced/CardFixture.h"

namespace {

class AdvancedRequests : public CardFixture {
protected:
    AdvancedSettings settings;
};

TEST_F(AdvancedRequests, SendTheModeWhereTheDriverHasAnother)
{
    settings.nWirelessMode = 3;
    G_enumWirelessMode = 2;
    letDriverHaveMode(1);
    EXPECT_EQ(standardErrorOf([this] { sendWirelessMode(adapter, settings); }),
        "#### AdvancePageController - OnApply -  nWirelessMode = 3, enumWirelessMode = 1,  G_enumWirelessMode = 2 "
        "####\n"
        "#### 111111111 ####\n");
    EXPECT_EQ(requests(), (Requests { query(0x0D71010C, 4), set(0x0DF1010C, std::int32_t { 2 }) }));
}

TEST_F(AdvancedRequests, SendNoModeWhereTheDriverHasIt)
{
    settings.nWirelessMode = 3;
    G_enumWirelessMode = 1;
    letDriverHaveMode(1);
    EXPECT_EQ(standardErrorOf([this] { sendWirelessMode(adapter, settings); }),
        "#### AdvancePageController - OnApply -  nWirelessMode = 3, enumWirelessMode = 1,  G_enumWirelessMode = 1 "
        "####\n");
    EXPECT_EQ(requests(), (Requests { query(0x0D71010C, 4) }));
}

TEST_F(AdvancedRequests, TakeAFailedQueryOfTheModeForModeZero)
{
    G_enumWirelessMode = 0;
    registry.fail(0x0D71010C);
    (void)standardErrorOf([this] { sendWirelessMode(adapter, settings); });
    EXPECT_EQ(requests(), (Requests { query(0x0D71010C, 4) }));
}

TEST_F(AdvancedRequests, PutTheOptionsIntoTheDriversConfiguration)
{
    letDriverHave({ 0, 1, 2, 1, 0, 0x11111111, 0x22222222, 0x33333333 });
    settings.bTXBurst = true;
    settings.bAdhocOfdm = true;
    settings.nBGProtection = 1;
    EXPECT_EQ(standardErrorOf([this] { sendStationConfiguration(adapter, settings); }),
        "#### 222222222222 ####\n#### 222222-22222 ####\n");
    EXPECT_EQ(requests(),
        (Requests { query(0x0D710111, 32),
            set(0x0DF10111, VX_802_11_STA_CONFIG { 1, 0, 1, 0, 1, 0x11111111, 0x22222222, 0x33333333 }) }));
}

TEST_F(AdvancedRequests, SendTheTwoOptionsWithoutAControl)
{
    settings.bTurboRate = true;
    settings.bShortSlot = true;
    (void)standardErrorOf([this] { sendStationConfiguration(adapter, settings); });
    EXPECT_EQ(requests(),
        (Requests { query(0x0D710111, 32), set(0x0DF10111, VX_802_11_STA_CONFIG { 0, 1, 0, 1, 0, 0, 0, 0 }) }));
}

TEST_F(AdvancedRequests, TraceTheSetOfTheConfigurationBeforeAndBehind)
{
    settings.bTXBurst = true;
    std::string before;
    registry.onCall = [&before](const RecordedRegistryCall& call) {
        if (call.index != 0x0DF10111)
            return;
        before = testing::internal::GetCapturedStderr();
        testing::internal::CaptureStderr();
    };
    EXPECT_EQ(standardErrorOf([this] { sendStationConfiguration(adapter, settings); }), "#### 222222-22222 ####\n");
    EXPECT_EQ(before, "#### 222222222222 ####\n");
}

TEST_F(AdvancedRequests, SendNoConfigurationWhereTheDriverHasIt)
{
    letDriverHave({ 1, 0, 2, 0, 1, 1, 7, 1 });
    settings.bTXBurst = true;
    settings.bAdhocOfdm = true;
    settings.nBGProtection = 2;
    EXPECT_EQ(standardErrorOf([this] { sendStationConfiguration(adapter, settings); }), "");
    EXPECT_EQ(requests(), (Requests { query(0x0D710111, 32) }));
}

TEST_F(AdvancedRequests, SendTheRatesOfTheModeAndIndex)
{
    settings.nTxRate = 4;
    EXPECT_TRUE(sendDesiredRates(adapter, settings, assertions));
    settings = { .nTxRate = 8, .nWirelessMode = 2 };
    EXPECT_TRUE(sendDesiredRates(adapter, settings, assertions));
    EXPECT_EQ(requests(),
        (Requests { set(0x0D810210, NDIS_802_11_RATES { 22 }), set(0x0D810210, NDIS_802_11_RATES { 108 }) }));
}

TEST_F(AdvancedRequests, SendNoRatesWhereAFailedAssertionEndsTheOperation)
{
    settings.nTxRate = 13;
    EXPECT_FALSE(sendDesiredRates(adapter, settings, assertions));
    EXPECT_EQ(requests(), Requests {});
    assertions.goOn = true;
    (void)standardErrorOf([this] { EXPECT_TRUE(sendDesiredRates(adapter, settings, assertions)); });
    EXPECT_EQ(requests(), (Requests { set(0x0D810210, mixedAutoRates) }));
}

TEST_F(AdvancedRequests, SendTheRadioFlagWithThreeZeros)
{
    G_bRadio = 1;
    sendRadio(adapter);
    G_bRadio = 0;
    sendRadio(adapter);
    using Word = std::array<std::uint8_t, 4>;
    EXPECT_EQ(requests(), (Requests { set(0x0DF10108, Word { 1, 0, 0, 0 }), set(0x0DF10108, Word { 0, 0, 0, 0 }) }));
}

} // namespace
