// The controls that an opening resets after a profile was shown, and those that it does not.

#include "tests/profiles/ui/ProfileEditorFixture.h"

namespace {

using Items = std::vector<QString>;

class ProfileEditorResetsTest : public ProfileEditorFixture {
protected:
    // A profile in which no control has its default.
    void showAnotherProfile(const QString& networkType = u"1"_qs)
    {
        store.saveRecords({ with(sampleProfile(),
            { { ProfileKey::networkType, networkType }, { u"WEPKey3"_qs, u"9876543210"_qs },
                { u"WEPKey3 Type"_qs, u"1"_qs }, { u"WEPKey2 Type"_qs, u"1"_qs }, { ProfileKey::wepKeyUse, u"2"_qs },
                { ProfileKey::encryptionType, u"1"_qs } }) });
        editor.EditInit(0);
        ASSERT_TRUE(radio(u"PSMode"_qs).isChecked());
        ASSERT_TRUE(control<QCheckBox>(u"CamWhenAcPower"_qs).isChecked());
        ASSERT_EQ(combo(u"TxPower"_qs).indexOfSelectedItem(), 3);
        ASSERT_EQ(combo(u"PreambleType"_qs).indexOfSelectedItem(), 2);
        ASSERT_EQ(combo(u"Channel"_qs).indexOfSelectedItem(), 5);
        ASSERT_EQ(combo(u"EncryType"_qs).indexOfSelectedItem(), 1);
        ASSERT_TRUE(keyRadio(3).isChecked());
        for (int number = 1; number <= 4; ++number) {
            ASSERT_EQ(keyFormat(number).indexOfSelectedItem(), 1) << number;
            ASSERT_FALSE(keyText(number).text().isEmpty()) << number;
        }
        ASSERT_EQ(field(u"WPAPreSharedKey"_qs).text(), u"password"_qs);
        tabs().setCurrentIndex(2);
        press(QDialogButtonBox::Cancel);
    }

    void expectDefaults()
    {
        EXPECT_EQ(tabs().currentIndex(), 0);
        EXPECT_EQ(field(u"ProfileName"_qs).text(), u"PROF2"_qs);
        EXPECT_TRUE(radio(u"CAM"_qs).isChecked());
        EXPECT_FALSE(radio(u"PSMode"_qs).isChecked());
        EXPECT_FALSE(control<QCheckBox>(u"CamWhenAcPower"_qs).isChecked());
        EXPECT_EQ(combo(u"TxPower"_qs).indexOfSelectedItem(), 0);
        EXPECT_EQ(combo(u"PreambleType"_qs).indexOfSelectedItem(), 0);
        for (int number = 1; number <= 4; ++number) {
            EXPECT_EQ(keyFormat(number).indexOfSelectedItem(), 0) << number;
            EXPECT_EQ(keyText(number).text(), QString()) << number;
            EXPECT_EQ(keyRadio(number).isChecked(), number == 1) << number;
        }
        EXPECT_EQ(field(u"WPAPreSharedKey"_qs).text(), QString());
    }
};

TEST_F(ProfileEditorResetsTest, AddStartsFromTheDefaults)
{
    showAnotherProfile();
    editor.AddInit();
    expectDefaults();
    EXPECT_EQ(combo(u"AuthenType"_qs).indexOfSelectedItem(), 0);
    EXPECT_EQ(combo(u"EncryType"_qs).indexOfSelectedItem(), 0);
    EXPECT_EQ(combo(u"Channel"_qs).indexOfSelectedItem(), 0);
    EXPECT_EQ(combo(u"NetworkType"_qs).indexOfSelectedItem(), 1);
    expectKeysEnabled(false, false);
}

TEST_F(ProfileEditorResetsTest, ScannedNetworkStartsFromTheDefaults)
{
    showAnotherProfile();
    ProfileProposal network;
    network.AuthenMode = Ndis802_11AuthModeOpen;
    network.EcrypStatus = Ndis802_11EncryptionDisabled;
    network.Networktype = Ndis802_11Infrastructure;
    network.Channel = 11;
    EXPECT_TRUE(editor.AddProfile(network));
    expectDefaults();
    EXPECT_EQ(combo(u"EncryType"_qs).indexOfSelectedItem(), 0);
    EXPECT_EQ(combo(u"Channel"_qs).indexOfSelectedItem(), 10);
}

TEST_F(ProfileEditorResetsTest, ScannedWpaNetworkAfterAnAdHocProfileShowsTheInfrastructureList)
{
    for (const std::int32_t mode : { Ndis802_11AuthModeWPA, Ndis802_11AuthModeWPAPSK }) {
        showAnotherProfile(u"0"_qs);
        ASSERT_EQ(items(combo(u"AuthenType"_qs)).back(), u"WPA-NONE"_qs);
        ProfileProposal network;
        network.AuthenMode = mode;
        network.EcrypStatus = Ndis802_11Encryption3Enabled;
        network.Networktype = Ndis802_11Infrastructure;
        EXPECT_TRUE(editor.AddProfile(network));
        EXPECT_EQ(items(combo(u"AuthenType"_qs)), (Items { u"Open"_qs, u"Shared"_qs, u"WPA-PSK"_qs })) << mode;
        EXPECT_EQ(combo(u"AuthenType"_qs).objectValueOfSelectedItem(), u"WPA-PSK"_qs) << mode;
        EXPECT_EQ(combo(u"EncryType"_qs).objectValueOfSelectedItem(), u"AES"_qs) << mode;
        expectKeysEnabled(false, true);
        press(QDialogButtonBox::Cancel);
    }
}

TEST_F(ProfileEditorResetsTest, FirstAddLeavesThePreambleEnabled)
{
    editor.AddInit();
    ASSERT_TRUE(combo(u"PreambleType"_qs).isEnabled());
    EXPECT_TRUE(widget(u"preambleLabel"_qs).isEnabled());
    choose(combo(u"PreambleType"_qs), 1);
    pressOk();
    ASSERT_EQ(saved().size(), 1u);
    EXPECT_EQ(saved().front().text(ProfileKey::preambleType), u"1"_qs);
    EXPECT_EQ(saved().front().text(ProfileKey::networkType), u"1"_qs);
}

TEST_F(ProfileEditorResetsTest, ProfileOutOfRangeShowsItsNameWithTheLastItemSelected)
{
    store.saveRecords({ sampleProfile() });
    haveList({ EntryBuilder("one", 1), EntryBuilder("two", 2), EntryBuilder("three", 3) });
    editor.EditInit(0);
    EXPECT_EQ(combo(u"SSID"_qs).indexOfSelectedItem(), 2);
    EXPECT_EQ(combo(u"SSID"_qs).currentText(), u"home"_qs);
    pressOk();
    EXPECT_EQ(saved(), ProfileList { sampleProfile() });
}

} // namespace
