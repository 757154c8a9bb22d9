// State that the profile editor keeps between openings.

#include "tests/profiles/ui/ProfileEditorFixture.h"

#include <QAbstractItemView>

namespace {

using ProfileEditorOpeningsTest = ProfileEditorFixture;
using Items = std::vector<QString>;

ProfileProposal proposal(const char* ssid, std::int32_t networkType = Ndis802_11Infrastructure)
{
    return { NetworkName(ssid), { 0x0A, 0x1B, 0x2C, 0x3D, 0x4E, 0x5F }, Ndis802_11EncryptionDisabled,
        Ndis802_11AuthModeOpen, networkType, 6 };
}

const Items ofInfrastructure { u"Open"_qs, u"Shared"_qs, u"WPA-PSK"_qs };
const Items ofAdHoc { u"Open"_qs, u"Shared"_qs, u"WPA-NONE"_qs };

TEST_F(ProfileEditorOpeningsTest, AdHocProfileKeepsTheAddressOfThePreviousProfile)
{
    store.saveRecords({ with(sampleProfile(), { { ProfileKey::bssid, u"001122AABBCC"_qs } }),
        with(sampleProfile(), { { ProfileKey::bssid, u"665544332211"_qs }, { ProfileKey::networkType, u"0"_qs } }) });
    editor.EditInit(0);
    press(QDialogButtonBox::Cancel);
    editor.EditInit(1);
    pressOk();
    ASSERT_EQ(saved().size(), 2u);
    EXPECT_EQ(saved()[1].text(ProfileKey::bssid), u"001122AABBCC"_qs);
}

TEST_F(ProfileEditorOpeningsTest, EachAddInsertsAnotherPairOfEncryptions)
{
    Items expected;
    for (int opening = 1; opening <= 3; ++opening) {
        editor.AddInit();
        expected.insert(expected.end(), { u"NONE"_qs, u"WEP"_qs });
        EXPECT_EQ(items(combo(u"EncryType"_qs)), expected) << opening;
        EXPECT_EQ(combo(u"EncryType"_qs).indexOfSelectedItem(), 0) << opening;
        press(QDialogButtonBox::Cancel);
    }
}

TEST_F(ProfileEditorOpeningsTest, SecondPairIsSavedByItsIndexAndDoesNotChangeTheKeyFields)
{
    editor.AddInit();
    press(QDialogButtonBox::Cancel);
    editor.AddInit();
    choose(combo(u"EncryType"_qs), 1);
    expectKeysEnabled(true, false);
    choose(combo(u"EncryType"_qs), 2);
    EXPECT_EQ(combo(u"EncryType"_qs).objectValueOfSelectedItem(), u"NONE"_qs);
    expectKeysEnabled(true, false);
    pressOk();
    ASSERT_EQ(saved().size(), 1u);
    EXPECT_EQ(saved().back().text(ProfileKey::encryptionType), u"2"_qs);

    editor.AddInit();
    expectKeysEnabled(false, false);
    editor.setEncryTypeCombo(3);
    editor.OnSelchangeEncryptionType();
    EXPECT_EQ(combo(u"EncryType"_qs).objectValueOfSelectedItem(), u"WEP"_qs);
    expectKeysEnabled(false, false);
    pressOk();
    ASSERT_EQ(saved().size(), 2u);
    EXPECT_EQ(saved().back().text(ProfileKey::encryptionType), u"3"_qs);
}

TEST_F(ProfileEditorOpeningsTest, MissingNetworkIsSavedAsTheFirstOfTheList)
{
    haveList({ EntryBuilder("first", 0xF1), EntryBuilder("second", 2) });
    EXPECT_TRUE(editor.AddProfile(proposal("gone")));
    pressOk();
    ASSERT_EQ(saved().size(), 1u);
    EXPECT_EQ(saved().front().text(ProfileKey::ssid), u"first"_qs);
    EXPECT_EQ(saved().front().text(ProfileKey::bssid), u"0011223344F1"_qs);
    EXPECT_EQ(saved().front().text(ProfileKey::hidden), u"0"_qs);
}

TEST_F(ProfileEditorOpeningsTest, ScannedNetworkWithoutAScanListDoesNotChangeTheName)
{
    haveList({ EntryBuilder("left", 1) });
    EXPECT_TRUE(editor.AddProfile(proposal("left")));
    press(QDialogButtonBox::Cancel);
    G_pBssidList.reset();
    EXPECT_TRUE(editor.AddProfile(proposal("other")));
    EXPECT_EQ(combo(u"SSID"_qs).numberOfItems(), 0);
    EXPECT_EQ(combo(u"SSID"_qs).currentText(), u"left"_qs);
}

TEST_F(ProfileEditorOpeningsTest, ScannedAdHocNetworkKeepsThePreviousListsAndEnabledStates)
{
    const auto expectLeft = [this](bool enabled, const Items& authentications) {
        EXPECT_TRUE(editor.AddProfile(proposal("peers", Ndis802_11IBSS)));
        EXPECT_EQ(combo(u"NetworkType"_qs).indexOfSelectedItem(), 0);
        for (const QString& name : { u"Channel"_qs, u"ChannelText"_qs, u"PreambleType"_qs })
            EXPECT_EQ(widget(name).isEnabled(), enabled) << name.toStdString();
        EXPECT_EQ(items(combo(u"AuthenType"_qs)), authentications);
        press(QDialogButtonBox::Cancel);
    };
    store.saveRecords({ sampleProfile(), with(sampleProfile(), { { ProfileKey::networkType, u"0"_qs } }) });
    editor.EditInit(0);
    press(QDialogButtonBox::Cancel);
    expectLeft(false, ofInfrastructure);
    editor.EditInit(1);
    press(QDialogButtonBox::Cancel);
    expectLeft(true, ofAdHoc);
}

TEST_F(ProfileEditorOpeningsTest, CardOfUnknownCapabilityHasNoEncryption)
{
    for (const int capability : { 0, 5, 7 }) {
        G_encryCapa = static_cast<decltype(G_encryCapa)>(capability);
        editor.AddInit();
        choose(combo(u"AuthenType"_qs), 2);
        EXPECT_EQ(items(combo(u"EncryType"_qs)), Items()) << capability;
        expectKeysEnabled(false, true);
        type(field(u"WPAPreSharedKey"_qs), u"passphrase"_qs);
        pressOk();
        ASSERT_FALSE(saved().empty()) << capability;
        EXPECT_EQ(saved().back().text(ProfileKey::authenticationType), u"2"_qs) << capability;
        EXPECT_EQ(saved().back().text(ProfileKey::encryptionType), u"-1"_qs) << capability;
    }
    EXPECT_EQ(saved().size(), 3u);
}

TEST_F(ProfileEditorOpeningsTest, AuthenticationListChangesNothingElse)
{
    editor.AddInit();
    choose(combo(u"NetworkType"_qs), 0);
    choose(combo(u"AuthenType"_qs), 2);
    choose(combo(u"EncryType"_qs), 1);
    const auto expectTheRestUnchanged = [this] {
        EXPECT_EQ(items(combo(u"EncryType"_qs)), (Items { u"TKIP"_qs, u"AES"_qs }));
        EXPECT_EQ(combo(u"EncryType"_qs).indexOfSelectedItem(), 1);
        expectKeysEnabled(false, true);
        for (const QString& name : { u"Channel"_qs, u"ChannelText"_qs, u"PreambleType"_qs })
            EXPECT_TRUE(widget(name).isEnabled()) << name.toStdString();
    };
    for (const int other : { -1, 2, 255 }) {
        editor.setAuthenTypeComboText(other);
        EXPECT_EQ(items(combo(u"AuthenType"_qs)), ofAdHoc) << other;
        EXPECT_EQ(combo(u"AuthenType"_qs).indexOfSelectedItem(), 2) << other;
        expectTheRestUnchanged();
    }
    editor.setAuthenTypeComboText(1);
    EXPECT_EQ(items(combo(u"AuthenType"_qs)), ofInfrastructure);
    EXPECT_EQ(combo(u"AuthenType"_qs).indexOfSelectedItem(), 0);
    expectTheRestUnchanged();
    editor.setAuthenTypeCombo(1);
    editor.setAuthenTypeComboText(0);
    EXPECT_EQ(items(combo(u"AuthenType"_qs)), ofAdHoc);
    EXPECT_EQ(combo(u"AuthenType"_qs).indexOfSelectedItem(), 0);
    expectTheRestUnchanged();
}

// This opening selects the network type without enabling its fields.
TEST_F(ProfileEditorOpeningsTest, ChoosingAdHocAgainEnablesItsFieldsAndKeepsTheAuthentication)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor));
    ProfileProposal network = proposal("ad hoc", Ndis802_11IBSS);
    network.AuthenMode = Ndis802_11AuthModeShared;
    EXPECT_TRUE(editor.AddProfile(network));
    ASSERT_EQ(combo(u"NetworkType"_qs).indexOfSelectedItem(), 0);
    ASSERT_FALSE(combo(u"Channel"_qs).isEnabled());
    const Items authentications = items(combo(u"AuthenType"_qs));
    combo(u"NetworkType"_qs).showPopup();
    QTest::keyClick(combo(u"NetworkType"_qs).view(), Qt::Key_Return);
    EXPECT_TRUE(combo(u"Channel"_qs).isEnabled());
    EXPECT_TRUE(control<QLabel>(u"ChannelText"_qs).isEnabled());
    EXPECT_TRUE(combo(u"PreambleType"_qs).isEnabled());
    EXPECT_EQ(items(combo(u"AuthenType"_qs)), authentications);
    EXPECT_EQ(combo(u"AuthenType"_qs).indexOfSelectedItem(), 1);
}

// Two windows of one user, on different displays, share the store.
TEST_F(ProfileEditorOpeningsTest, ProfilesSavedByAnotherProgramMeanwhileAreKept)
{
    const Profile first = sampleProfile(u"first"_qs);
    const Profile theirs = sampleProfile(u"theirs"_qs);
    const auto names = [this] {
        Items result;
        for (const Profile& profile : saved())
            result.push_back(profile.text(ProfileKey::profileName));
        return result;
    };
    store.saveRecords({ first });
    editor.AddInit();
    type(field(u"ProfileName"_qs), u"added"_qs);
    store.saveRecords({ theirs, first });
    pressOk();
    EXPECT_EQ(names(), (Items { u"theirs"_qs, u"first"_qs, u"added"_qs }));

    store.saveRecords({ first });
    editor.EditInit(0);
    type(field(u"ProfileName"_qs), u"edited"_qs);
    store.saveRecords({ theirs, first });
    pressOk();
    EXPECT_EQ(names(), (Items { u"theirs"_qs, u"edited"_qs }));

    store.saveRecords({ first });
    editor.EditInit(0);
    type(field(u"ProfileName"_qs), u"edited"_qs);
    store.saveRecords({ theirs });
    pressOk();
    EXPECT_EQ(names(), (Items { u"theirs"_qs, u"edited"_qs })) << "added again after their deletion";
}

TEST_F(ProfileEditorOpeningsTest, SheetSaysWhichProfileItEdits)
{
    const auto& subject = control<QLabel>(u"subject"_qs);
    store.saveRecords({ sampleProfile(u"<b>home</b>"_qs), sampleProfile(QString()) });
    editor.AddInit();
    EXPECT_EQ(subject.text(), u"New profile"_qs);
    editor.EditInit(0);
    EXPECT_TRUE(subject.text().contains(u"<b>home</b>"_qs));
    EXPECT_EQ(subject.textFormat(), Qt::PlainText);
    EXPECT_TRUE(subject.isVisible());
    type(field(u"ProfileName"_qs), u"office"_qs);
    EXPECT_TRUE(subject.text().contains(u"home"_qs)) << "the stored name";
    editor.EditInit(1);
    EXPECT_EQ(subject.text(), u"Profile without a name"_qs);
    EXPECT_TRUE(editor.AddProfile(proposal("caf\xE9")));
    EXPECT_TRUE(subject.text().startsWith(u"New profile"_qs));
    EXPECT_TRUE(subject.text().contains(NetworkName("caf\xE9").displayText())) << subject.text().toStdString();
    EXPECT_EQ(editor.accessibleDescription(), subject.text());
}

} // namespace
