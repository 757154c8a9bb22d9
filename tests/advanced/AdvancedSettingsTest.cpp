#include "advanced/AdvancedSettings.h"

#include "tests/advanced/CardFixture.h"

namespace {

AdvancedSettings settingsOf(std::int32_t wirelessMode, std::int32_t protection = 0)
{
    AdvancedSettings settings;
    settings.nWirelessMode = wirelessMode;
    settings.nBGProtection = protection;
    return settings;
}

TEST(AdvancedSettings, AreStoredInTheUsersPreferences)
{
    EXPECT_EQ(advancedSettingsPath(u"/home/ann"_qs), u"/home/ann/Library/Preferences/AdvancedProfileSetting.plist");
}

TEST(AdvancedSettings, AreStoredAsDecimalTexts)
{
    const AdvancedSettings settings { 12, 3, 2, true, true, true, true };
    EXPECT_EQ(settingsRecord(settings),
        (PropertyDictionary { { u"Tx Rate"_qs, u"12"_qs }, { u"BG Protection"_qs, u"2"_qs },
            { u"Tx Burst"_qs, u"1"_qs }, { u"Ad Hoc Use OFDM"_qs, u"1"_qs }, { u"Wireless Mode"_qs, u"3"_qs } }));
}

TEST(AdvancedSettings, SurviveARoundTripThroughTheRecord)
{
    const AdvancedSettings settings { 7, 2, 1, false, true, false, true };
    AdvancedSettings read;
    readSettings(settingsRecord(settings), read);
    EXPECT_EQ(read, settings);
}

TEST(AdvancedSettings, ReadMissingKeysAsZero)
{
    AdvancedSettings settings { 7, 2, 1, true, true, true, true };
    readSettings({}, settings);
    EXPECT_EQ(settings, (AdvancedSettings { 0, 0, 0, true, false, true, false }));
}

TEST(AdvancedSettings, ReadInvalidNumbersAsZero)
{
    AdvancedSettings settings;
    readSettings(
        { { u"Tx Rate"_qs, u"fast"_qs }, { u"Tx Burst"_qs, u"YES"_qs }, { u"Wireless Mode"_qs, u"3"_qs } }, settings);
    EXPECT_EQ(settings, settingsOf(3));
}

class ApplySelections : public CardFixture { };

TEST_F(ApplySelections, GivesTheDriverTheModeOfThePreviousApply)
{
    AdvancedSettings settings = settingsOf(0);
    applySelections(3, 1, settings);
    EXPECT_EQ(G_enumWirelessMode, 0);
    EXPECT_EQ(settings.nWirelessMode, 1);
    EXPECT_EQ(settings.nTxRate, 3);
    applySelections(3, 1, settings);
    EXPECT_EQ(G_enumWirelessMode, 1);
}

TEST_F(ApplySelections, ReplacesModesThatNeed5GhzOnACardWithoutIt)
{
    for (const std::int32_t mode : { 2, 3 }) {
        AdvancedSettings settings = settingsOf(mode);
        G_enumWirelessMode = -1;
        applySelections(0, mode, settings);
        EXPECT_EQ(G_enumWirelessMode, 0);
        EXPECT_EQ(settings.nWirelessMode, mode);
    }
    AdvancedSettings settings = settingsOf(1);
    applySelections(0, 1, settings);
    EXPECT_EQ(G_enumWirelessMode, 1);
}

TEST_F(ApplySelections, KeepsModesThatNeed5GhzOnACardThatHasIt)
{
    G_bSupportAMode = 1;
    for (const std::int32_t mode : { 2, 3 }) {
        AdvancedSettings settings = settingsOf(mode);
        applySelections(0, 0, settings);
        EXPECT_EQ(G_enumWirelessMode, mode);
        EXPECT_EQ(settings.nWirelessMode, 0);
    }
}

TEST_F(ApplySelections, ResetsProtectionBasedOnThePreviousMode)
{
    G_bSupportAMode = 1;
    const auto protectionAfter = [](std::int32_t previousMode, std::int32_t selectedMode) {
        AdvancedSettings settings = settingsOf(previousMode, 2);
        applySelections(0, selectedMode, settings);
        return settings.nBGProtection;
    };
    EXPECT_EQ(protectionAfter(0, 1), 2);
    EXPECT_EQ(protectionAfter(1, 0), 0);
    EXPECT_EQ(protectionAfter(2, 0), 0);
    EXPECT_EQ(protectionAfter(3, 3), 2);
    G_bSupportAMode = 0;
    EXPECT_EQ(protectionAfter(2, 0), 2) << "the mode was changed to 0 first";
}

TEST_F(ApplySelections, ResetsRatesOnlyForAPreviousCckMode)
{
    G_bSupportAMode = 1;
    const auto rateAfter = [](std::int32_t previousMode, std::int32_t selectedMode, std::int32_t rate) {
        AdvancedSettings settings = settingsOf(previousMode);
        applySelections(rate, selectedMode, settings);
        return settings.nTxRate;
    };
    EXPECT_EQ(rateAfter(1, 1, 4), 4);
    EXPECT_EQ(rateAfter(1, 0, 5), 0);
    EXPECT_EQ(rateAfter(0, 1, 5), 5);
    EXPECT_EQ(rateAfter(2, 0, 12), 12);
    EXPECT_EQ(rateAfter(1, 1, -1), -1);
}

} // namespace
