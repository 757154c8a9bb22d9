#include "platform/ui/QtModalSheets.h"
#include "tests/profiles/ui/ProfileEditorFixture.h"
#include "tests/support/StandardErrorOf.h"

#include <QTimer>

namespace {

using ProfileEditorTest = ProfileEditorFixture;
using Items = std::vector<QString>;

ProfileProposal proposal(const char* ssid, std::int32_t authenMode, std::int32_t ecrypStatus)
{
    return { NetworkName(ssid), { 0x0A, 0x1B, 0x2C, 0x3D, 0x4E, 0x5F }, ecrypStatus, authenMode,
        Ndis802_11Infrastructure, 6 };
}

TEST_F(ProfileEditorTest, NewProfileStartsFromTheDefaults)
{
    editor.AddInit();
    EXPECT_EQ(tabs().currentIndex(), 0);
    EXPECT_EQ(field(u"ProfileName"_qs).text(), u"PROF1"_qs);
    EXPECT_EQ(editor.focusWidget(), &field(u"ProfileName"_qs));
    EXPECT_EQ(items(combo(u"AuthenType"_qs)), (Items { u"Open"_qs, u"Shared"_qs, u"WPA-PSK"_qs }));
    EXPECT_EQ(items(combo(u"EncryType"_qs)), (Items { u"NONE"_qs, u"WEP"_qs }));
    EXPECT_EQ(combo(u"NetworkType"_qs).indexOfSelectedItem(), 1);
    EXPECT_EQ(combo(u"Channel"_qs).objectValueOfSelectedItem(), u"1"_qs);
    EXPECT_FALSE(combo(u"Channel"_qs).isEnabled());
    EXPECT_FALSE(widget(u"ChannelText"_qs).isEnabled());
    EXPECT_TRUE(radio(u"CAM"_qs).isChecked());
    EXPECT_FALSE(radio(u"PSMode"_qs).isChecked());
    EXPECT_TRUE(keyRadio(1).isChecked());
    expectKeysEnabled(false, false);
    pressOk();
    ASSERT_EQ(saved().size(), 1u);
    const Profile profile = saved().front();
    std::vector<QString> keys;
    for (const auto& [key, text] : profile)
        keys.push_back(key);
    EXPECT_EQ(keys, ProfileKey::inOrder());
    EXPECT_EQ(profile.text(ProfileKey::rtsThreshold), u"2347"_qs);
    EXPECT_EQ(profile.text(ProfileKey::fragmentationThreshold), u"2346"_qs);
    EXPECT_EQ(profile.text(ProfileKey::channel), u"1"_qs);
    EXPECT_EQ(prefs.arrays[u"Profiles"_qs], saved());
    EXPECT_EQ(sheets.stops, std::vector { 1 });
}

TEST_F(ProfileEditorTest, ProposesTheNextNumber)
{
    store.saveRecords({ sampleProfile(u"PROF2"_qs), sampleProfile(u"prof10"_qs), sampleProfile(u"Office"_qs) });
    editor.AddInit();
    EXPECT_EQ(field(u"ProfileName"_qs).text(), u"PROF11"_qs);
}

TEST_F(ProfileEditorTest, DuplicateNameAddsASecondProfile)
{
    store.saveRecords({ sampleProfile(u"same"_qs) });
    editor.AddInit();
    type(field(u"ProfileName"_qs), u"same"_qs);
    pressOk();
    EXPECT_EQ(saved().size(), 2u);
}

TEST_F(ProfileEditorTest, SharedAfterOpenListsTheEncryptionsTwiceAndWpaReplacesThem)
{
    editor.AddInit();
    choose(combo(u"AuthenType"_qs), 1);
    EXPECT_EQ(items(combo(u"EncryType"_qs)), (Items { u"NONE"_qs, u"WEP"_qs, u"NONE"_qs, u"WEP"_qs }));
    EXPECT_EQ(combo(u"EncryType"_qs).indexOfSelectedItem(), 0);
    expectKeysEnabled(true, false); // "NONE" does not matter with "Shared"
    choose(combo(u"AuthenType"_qs), 2);
    EXPECT_EQ(items(combo(u"EncryType"_qs)), (Items { u"TKIP"_qs, u"AES"_qs }));
    EXPECT_EQ(combo(u"EncryType"_qs).indexOfSelectedItem(), 0);
    expectKeysEnabled(false, true);
}

TEST_F(ProfileEditorTest, CardWithoutAesOffersOnlyTkip)
{
    G_encryCapa = 4;
    editor.AddInit();
    choose(combo(u"AuthenType"_qs), 2);
    EXPECT_EQ(items(combo(u"EncryType"_qs)), Items { u"TKIP"_qs });
}

TEST_F(ProfileEditorTest, EncryptionEnablesTheKeyFields)
{
    editor.AddInit();
    choose(combo(u"EncryType"_qs), 1);
    expectKeysEnabled(true, false);
    choose(combo(u"EncryType"_qs), 0);
    expectKeysEnabled(false, false);
}

TEST_F(ProfileEditorTest, AdHocNetworksHaveAChannelAndWpaNone)
{
    editor.AddInit();
    choose(combo(u"NetworkType"_qs), 0);
    EXPECT_EQ(items(combo(u"AuthenType"_qs)).back(), u"WPA-NONE"_qs);
    for (const QString& name : { u"Channel"_qs, u"ChannelText"_qs, u"PreambleType"_qs })
        EXPECT_TRUE(widget(name).isEnabled()) << name.toStdString();
    choose(combo(u"AuthenType"_qs), 2);
    choose(combo(u"NetworkType"_qs), 1);
    EXPECT_EQ(items(combo(u"AuthenType"_qs)), (Items { u"Open"_qs, u"Shared"_qs, u"WPA-PSK"_qs }));
    EXPECT_EQ(combo(u"AuthenType"_qs).indexOfSelectedItem(), 0);
    EXPECT_EQ(items(combo(u"EncryType"_qs)), (Items { u"NONE"_qs, u"WEP"_qs }));
    for (const QString& name : { u"Channel"_qs, u"ChannelText"_qs, u"PreambleType"_qs })
        EXPECT_FALSE(widget(name).isEnabled()) << name.toStdString();
}

TEST_F(ProfileEditorTest, AddAfterAnAdHocProfileKeepsItsAuthenticationListAndChannel)
{
    editor.AddInit();
    choose(combo(u"NetworkType"_qs), 0);
    press(QDialogButtonBox::Cancel);
    editor.AddInit();
    EXPECT_EQ(combo(u"NetworkType"_qs).indexOfSelectedItem(), 1);
    EXPECT_EQ(items(combo(u"AuthenType"_qs)).back(), u"WPA-NONE"_qs);
    EXPECT_TRUE(combo(u"Channel"_qs).isEnabled());
}

TEST_F(ProfileEditorTest, EditShowsTheProfileAndOkReplacesIt)
{
    const Profile before = sampleProfile(u"home profile"_qs);
    store.saveRecords({ sampleProfile(u"first"_qs), before });
    haveList({ EntryBuilder("other", 1) });
    editor.EditInit(1);
    EXPECT_EQ(field(u"ProfileName"_qs).text(), u"home profile"_qs);
    EXPECT_TRUE(control<QCheckBox>(u"CamWhenAcPower"_qs).isChecked());
    EXPECT_TRUE(radio(u"PSMode"_qs).isChecked());
    EXPECT_FALSE(radio(u"CAM"_qs).isChecked());
    EXPECT_EQ(combo(u"Channel"_qs).objectValueOfSelectedItem(), u"6"_qs);
    EXPECT_EQ(combo(u"PreambleType"_qs).indexOfSelectedItem(), 2);
    EXPECT_EQ(combo(u"TxPower"_qs).indexOfSelectedItem(), 3);
    EXPECT_EQ(combo(u"SSID"_qs).currentText(), u"home"_qs);
    EXPECT_EQ(keyText(1).text(), u"abcde"_qs);
    EXPECT_EQ(keyFormat(1).indexOfSelectedItem(), 1);
    EXPECT_EQ(keyFormat(2).indexOfSelectedItem(), 0);
    EXPECT_TRUE(keyRadio(2).isChecked());
    EXPECT_EQ(field(u"WPAPreSharedKey"_qs).text(), u"password"_qs);
    pressOk();
    ASSERT_EQ(saved().size(), 2u);
    EXPECT_EQ(saved()[1], before) << "nothing that was not touched has changed, BSSID and Hidden included";
}

TEST_F(ProfileEditorTest, EditSelectsTheStoredNameInTheList)
{
    store.saveRecords({ sampleProfile() });
    haveList({ EntryBuilder("other", 1), EntryBuilder("home", 2), EntryBuilder("home", 3) });
    editor.EditInit(0);
    EXPECT_EQ(items(combo(u"SSID"_qs)), (Items { u"other"_qs, u"home"_qs, u"home"_qs }));
    EXPECT_EQ(combo(u"SSID"_qs).indexOfSelectedItem(), 1);
}

TEST_F(ProfileEditorTest, WithoutAScanListTheNameDoesNotChange)
{
    store.saveRecords({ sampleProfile() });
    haveList({ EntryBuilder("other", 1) });
    editor.EditInit(0);
    press(QDialogButtonBox::Cancel);
    G_pBssidList.reset();
    store.saveRecords({ with(sampleProfile(), { { ProfileKey::ssid, u"different"_qs } }) });
    editor.EditInit(0);
    EXPECT_EQ(combo(u"SSID"_qs).currentText(), u"home"_qs);
    press(QDialogButtonBox::Cancel);
    editor.AddInit();
    EXPECT_EQ(combo(u"SSID"_qs).currentText(), u"home"_qs);
    press(QDialogButtonBox::Cancel);
    haveList({ EntryBuilder("other", 1) });
    editor.AddInit();
    EXPECT_EQ(combo(u"SSID"_qs).currentText(), QString());
}

TEST_F(ProfileEditorTest, TransmitKeyOutOfRangeDoesNotChangeTheRadioButtons)
{
    store.saveRecords({ with(sampleProfile(), { { ProfileKey::wepKeyUse, u"3"_qs } }),
        with(sampleProfile(), { { ProfileKey::wepKeyUse, u"4"_qs } }) });
    editor.EditInit(0);
    EXPECT_TRUE(keyRadio(4).isChecked());
    press(QDialogButtonBox::Cancel);
    editor.EditInit(1);
    EXPECT_TRUE(keyRadio(4).isChecked());
}

TEST_F(ProfileEditorTest, ChannelElevenIsTheTenthItem)
{
    editor.AddInit();
    choose(combo(u"NetworkType"_qs), 0);
    choose(combo(u"Channel"_qs), 10);
    pressOk();
    EXPECT_EQ(saved().front().text(ProfileKey::channel), u"11"_qs);
    editor.EditInit(0);
    EXPECT_EQ(combo(u"Channel"_qs).indexOfSelectedItem(), 10);
}

TEST_F(ProfileEditorTest, HiddenChannelIsKept)
{
    store.saveRecords(
        { with(sampleProfile(), { { ProfileKey::networkType, u"0"_qs }, { ProfileKey::channel, u"36"_qs } }) });
    editor.EditInit(0);
    EXPECT_EQ(combo(u"Channel"_qs).objectValueOfSelectedItem(), u"36"_qs);
    EXPECT_EQ(combo(u"Channel"_qs).indexOfSelectedItem(), 35);
    pressOk();
    EXPECT_EQ(saved().front().text(ProfileKey::channel), u"36"_qs);
}

TEST_F(ProfileEditorTest, InvalidChannelSelectsNothing)
{
    store.saveRecords({ with(sampleProfile(), { { ProfileKey::channel, u"2147483647"_qs } }) });
    editor.EditInit(0);
    EXPECT_EQ(combo(u"Channel"_qs).indexOfSelectedItem(), -1);
    EXPECT_LE(combo(u"Channel"_qs).numberOfItems(), 161);
}

TEST_F(ProfileEditorTest, RestoresTheSecurityOfAnAdHocProfile)
{
    store.saveRecords({ with(sampleProfile(),
        { { ProfileKey::networkType, u"0"_qs }, { ProfileKey::authenticationType, u"2"_qs },
            { ProfileKey::encryptionType, u"1"_qs } }) });
    editor.EditInit(0);
    EXPECT_EQ(combo(u"AuthenType"_qs).objectValueOfSelectedItem(), u"WPA-NONE"_qs);
    EXPECT_EQ(combo(u"EncryType"_qs).objectValueOfSelectedItem(), u"AES"_qs);
    EXPECT_TRUE(combo(u"Channel"_qs).isEnabled());
    expectKeysEnabled(false, true);
}

TEST_F(ProfileEditorTest, PickedNetworkIsSavedWithItsAddressAndNotHidden)
{
    haveList({ EntryBuilder("a", 1), EntryBuilder("b", 0xAB) });
    editor.AddInit();
    choose(combo(u"SSID"_qs), 1);
    pressOk();
    EXPECT_EQ(saved().front().text(ProfileKey::ssid), u"b"_qs);
    EXPECT_EQ(saved().front().text(ProfileKey::bssid), u"0011223344AB"_qs);
    EXPECT_EQ(saved().front().text(ProfileKey::hidden), u"0"_qs);
}

TEST_F(ProfileEditorTest, TypedNameIsSavedAsAHiddenNetworkWithTheKeptAddress)
{
    haveList({ EntryBuilder("net", 1) });
    (void)editor.AddProfile(proposal("net", 0, 1));
    press(QDialogButtonBox::Cancel);
    editor.AddInit();
    type(*combo(u"SSID"_qs).lineEdit(), u"secret"_qs);
    pressOk();
    EXPECT_EQ(saved().front().text(ProfileKey::bssid), u"0A1B2C3D4E5F"_qs);
    EXPECT_EQ(saved().front().text(ProfileKey::hidden), u"1"_qs);
    editor.AddInit();
    type(*combo(u"SSID"_qs).lineEdit(), u"secret"_qs);
    choose(combo(u"NetworkType"_qs), 0);
    pressOk();
    EXPECT_EQ(saved().back().text(ProfileKey::bssid), QString());
    EXPECT_EQ(saved().back().text(ProfileKey::hidden), u"0"_qs);
}

TEST_F(ProfileEditorTest, TypedNameIsNeitherCompletedNorMatchedWithTheList)
{
    haveList({ EntryBuilder("cafe guests", 1), EntryBuilder("cafe", 2) });
    editor.AddInit();
    type(*combo(u"SSID"_qs).lineEdit(), u"cafe"_qs);
    field(u"ProfileName"_qs).setFocus();
    EXPECT_EQ(combo(u"SSID"_qs).completer(), nullptr);
    EXPECT_EQ(combo(u"SSID"_qs).currentText(), u"cafe"_qs);
    EXPECT_EQ(combo(u"SSID"_qs).indexOfSelectedItem(), -1);
}

TEST_F(ProfileEditorTest, NameIsLimitedTo32Bytes)
{
    editor.AddInit();
    QLineEdit& line = *combo(u"SSID"_qs).lineEdit();
    type(line, QString(31, u'x'));
    line.insert(u"\u00e9"_qs); // two bytes
    EXPECT_EQ(line.text(), QString(31, u'x'));
    QTest::keyClicks(&line, u"yz"_qs);
    EXPECT_EQ(line.text(), QString(31, u'x') + u'y');
    line.setCursorPosition(0);
    QTest::keyClicks(&line, u"a"_qs);
    EXPECT_EQ(line.text(), QString(31, u'x') + u'y') << "nothing is pushed out at the end";
    line.clear();
    line.insert(QString(11, u'\u20ac')); // three bytes each
    EXPECT_EQ(line.text(), QString(10, u'\u20ac'));
    pressOk();
    EXPECT_EQ(saved().front().text(ProfileKey::ssid), QString(10, u'\u20ac'));
}

TEST_F(ProfileEditorTest, MalformedNameKeepsItsBytes)
{
    haveList({ EntryBuilder("\xff\xfe", 1) });
    EXPECT_TRUE(editor.AddProfile(proposal("\xff\xfe", 0, 1)));
    pressOk();
    EXPECT_EQ(saved().front().text(ProfileKey::ssid), u"\uEFFF\uEFFE"_qs);
}

TEST_F(ProfileEditorTest, ScannedNetworkFillsTheEditor)
{
    haveList({ EntryBuilder("a", 1), EntryBuilder("b", 2) });
    ProfileProposal network = proposal("b", 4, 4);
    EXPECT_TRUE(editor.AddProfile(network));
    EXPECT_EQ(combo(u"AuthenType"_qs).objectValueOfSelectedItem(), u"WPA-PSK"_qs);
    EXPECT_EQ(combo(u"EncryType"_qs).objectValueOfSelectedItem(), u"TKIP"_qs);
    EXPECT_EQ(combo(u"SSID"_qs).currentText(), u"b"_qs);
    EXPECT_EQ(combo(u"Channel"_qs).objectValueOfSelectedItem(), u"6"_qs);
    EXPECT_EQ(combo(u"NetworkType"_qs).indexOfSelectedItem(), 1);
    expectKeysEnabled(false, true);
    type(field(u"WPAPreSharedKey"_qs), u"passphrase"_qs);
    pressOk();
    EXPECT_EQ(saved().front().text(ProfileKey::bssid), u"001122334402"_qs) << "that of the list";
    EXPECT_EQ(saved().front().text(ProfileKey::wpaPsk), u"passphrase"_qs);
}

TEST_F(ProfileEditorTest, MissingScannedNetworkShowsTheFirstOfTheList)
{
    haveList({ EntryBuilder("a", 1), EntryBuilder("b", 2) });
    (void)editor.AddProfile(proposal("gone", 0, 1));
    EXPECT_EQ(combo(u"SSID"_qs).indexOfSelectedItem(), 0);
    EXPECT_EQ(combo(u"SSID"_qs).currentText(), u"a"_qs);
}

TEST_F(ProfileEditorTest, ModesOfAScannedNetworkSelectTheirItems)
{
    const auto shown = [this](std::int32_t mode, std::int32_t status) {
        (void)editor.AddProfile(proposal("n", mode, status));
        Items result { combo(u"AuthenType"_qs).objectValueOfSelectedItem(),
            combo(u"EncryType"_qs).objectValueOfSelectedItem() };
        press(QDialogButtonBox::Cancel);
        return result;
    };
    EXPECT_EQ(shown(0, 0), (Items { u"Open"_qs, u"WEP"_qs }));
    EXPECT_EQ(shown(0, 1), (Items { u"Open"_qs, u"NONE"_qs }));
    EXPECT_EQ(shown(2, 7), (Items { u"Open"_qs, u"NONE"_qs }));
    EXPECT_EQ(shown(1, 0), (Items { u"Shared"_qs, u"WEP"_qs }));
    EXPECT_EQ(shown(3, 6), (Items { u"WPA-PSK"_qs, u"AES"_qs }));
    EXPECT_EQ(shown(4, 4), (Items { u"WPA-PSK"_qs, u"TKIP"_qs }));
    EXPECT_EQ(shown(5, 6), (Items { u"Open"_qs, u"NONE"_qs })) << "WPA-None is not matched";
}

TEST_F(ProfileEditorTest, RefusedKeyKeepsTheSheetOpen)
{
    editor.AddInit();
    choose(combo(u"EncryType"_qs), 1);
    type(keyText(1), u"12345"_qs);
    pressOk();
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_EQ(alerts.alerts[0].title, u"Invalid WEP key 1 length. WEP should be 10 or 26 hexadecimal digits."_qs);
    EXPECT_EQ(alerts.alerts[0].message, QString());
    EXPECT_EQ(alerts.alerts[0].defaultButton, u"OK"_qs);
    EXPECT_TRUE(sheets.stops.empty());
    EXPECT_TRUE(saved().empty());
    EXPECT_EQ(keyText(1).text(), u"12345"_qs);
    type(keyText(1), u"0123456789"_qs);
    pressOk();
    EXPECT_EQ(saved().front().text(u"WEPKey1"), u"0123456789"_qs);
}

TEST_F(ProfileEditorTest, KeyIsSavedAsTextAndCheckedAsBytes)
{
    editor.AddInit();
    choose(combo(u"EncryType"_qs), 1);
    choose(keyFormat(1), 1);
    keyText(1).setText(u"caf\uEFE9s"_qs); // five bytes
    field(u"WPAPreSharedKey"_qs).setText(u"na\u00EFve"_qs);
    pressOk();
    EXPECT_TRUE(alerts.alerts.empty());
    ASSERT_EQ(saved().size(), 1u);
    EXPECT_EQ(saved().front().text(u"WEPKey1"), u"caf\uEFE9s"_qs);
    EXPECT_EQ(saved().front().text(ProfileKey::wpaPsk), u"na\u00EFve"_qs);
    editor.EditInit(0);
    pressOk();
    EXPECT_EQ(saved().front().text(u"WEPKey1"), u"caf\uEFE9s"_qs);
}

TEST_F(ProfileEditorTest, HintsShowWhatIsMissing)
{
    editor.AddInit();
    choose(combo(u"EncryType"_qs), 1);
    type(keyText(1), u"0102030405060708"_qs);
    EXPECT_TRUE(control<QLabel>(u"WEPKey1Hint"_qs).text().contains(u"16 of 26 hexadecimal digits"_qs));
    choose(combo(u"AuthenType"_qs), 2);
    EXPECT_TRUE(control<QLabel>(u"WEPKey1Hint"_qs).text().isEmpty());
    EXPECT_FALSE(control<QLabel>(u"WPAPreSharedKeyHint"_qs).text().isEmpty());
}

TEST_F(ProfileEditorTest, KeysAreHiddenEachTimeTheSheetOpens)
{
    editor.AddInit();
    control<QCheckBox>(u"showKeys"_qs).setChecked(true);
    EXPECT_EQ(keyText(2).echoMode(), QLineEdit::Normal);
    press(QDialogButtonBox::Cancel);
    editor.AddInit();
    EXPECT_EQ(keyText(2).echoMode(), QLineEdit::Password);
    EXPECT_EQ(field(u"WPAPreSharedKey"_qs).echoMode(), QLineEdit::Password);
}

TEST_F(ProfileEditorTest, CancelDoesNotChangeTheStore)
{
    store.saveRecords({ sampleProfile() });
    const int synchronizations = prefs.synchronizations;
    editor.EditInit(0);
    type(field(u"ProfileName"_qs), u"changed"_qs);
    press(QDialogButtonBox::Cancel);
    EXPECT_EQ(saved(), ProfileList { sampleProfile() });
    EXPECT_EQ(prefs.synchronizations, synchronizations);
    EXPECT_EQ(sheets.stops, std::vector { 0 });
}

TEST_F(ProfileEditorTest, EachOpeningReloadsTheList)
{
    editor.AddInit();
    pressOk();
    prefs.setArray(u"Profiles"_qs, { sampleProfile(u"PROF41"_qs) });
    editor.AddInit();
    EXPECT_EQ(field(u"ProfileName"_qs).text(), u"PROF42"_qs);
    pressOk();
    EXPECT_EQ(saved().size(), 2u);
}

TEST_F(ProfileEditorTest, ReturnIsOk)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor));
    editor.AddInit();
    QTest::keyClick(&field(u"ProfileName"_qs), Qt::Key_Return);
    EXPECT_EQ(sheets.stops, std::vector { 1 });
    EXPECT_EQ(saved().size(), 1u);
}

TEST_F(ProfileEditorTest, TabOrderIsReadingOrder)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor));
    editor.activateWindow();
    editor.AddInit();
    Items visited;
    for (int step = 0; step < 3; ++step) {
        visited.push_back(editor.focusWidget()->objectName());
        QTest::keyClick(editor.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(visited, (Items { u"ProfileName"_qs, u"SSID"_qs, u"NetworkType"_qs }));
}

TEST_F(ProfileEditorTest, TabOrderHasTheKeysBetweenEncryptionAndButtons)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor));
    editor.activateWindow();
    editor.AddInit();
    choose(combo(u"AuthenType"_qs), 1);
    combo(u"EncryType"_qs).setFocus();
    // Of the radio buttons, only the checked one takes the focus.
    Items expected { u"WEPKey1Radio"_qs };
    for (int number = 1; number <= 4; ++number)
        expected.insert(expected.end(), { u"WEPKey%1Combo"_qs.arg(number), u"WEPKey%1Text"_qs.arg(number) });
    expected.push_back(u"showKeys"_qs);
    Items visited;
    while (visited.size() < expected.size()) {
        QTest::keyClick(editor.focusWidget(), Qt::Key_Tab);
        visited.push_back(editor.focusWidget()->objectName());
    }
    EXPECT_EQ(visited, expected);
}

// In a real modal run, with keys pressed in one of the editor's fields.
class ProfileEditorKeysTest : public testing::TestWithParam<const char*> {
protected:
    int runAndPress(Qt::Key key)
    {
        QWidget window;
        window.show();
        QtModalSheets sheets;
        ProfileEditorController editor(sheets, alerts, store);
        editor.awakeFromNib();
        editor.AddInit();
        QTimer::singleShot(0, &editor, [&] {
            EXPECT_EQ(editor.focusWidget()->objectName(), u"ProfileName"_qs);
            auto* const field = editor.findChild<QWidget*>(QString::fromLatin1(GetParam()));
            auto* const tabs = editor.findChild<QTabWidget*>(u"TabView"_qs);
            while (!field->isVisibleTo(&editor))
                tabs->setCurrentIndex(tabs->currentIndex() + 1);
            field->setEnabled(true);
            field->setFocus();
            QTest::keyClick(field, key);
        });
        return sheets.runModalForWindow(editor, window);
    }

    QTemporaryDir folder;
    MemoryUserDefaults prefs;
    ProfileStore store { prefs, folder.filePath(u"Profile.plist"_qs) };
    RecordingAlertPanels alerts;
};

TEST_P(ProfileEditorKeysTest, ReturnSavesAndEscapeDoesNot)
{
    EXPECT_EQ(runAndPress(Qt::Key_Escape), sheetCancelled);
    EXPECT_FALSE(prefs.arrayForKey(u"Profiles"_qs));
    EXPECT_EQ(runAndPress(Qt::Key_Return), sheetAccepted);
    EXPECT_EQ(prefs.arrayForKey(u"Profiles"_qs).value_or(ProfileList()).size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Fields, ProfileEditorKeysTest,
    testing::Values("ProfileName", "SSID", "NetworkType", "WEPKey1Text", "WPAPreSharedKey", "CAM", "RtsThresholdText",
        "RtsThresholdSlider"));

TEST(ProfileEditorEnd, DestructorSavesAnOpenListOnly)
{
    const QTemporaryDir folder;
    MemoryUserDefaults prefs;
    ProfileStore store(prefs, folder.filePath(u"Profile.plist"_qs));
    ScriptedModalSheets sheets;
    RecordingAlertPanels alerts;
    const std::string written = standardErrorOf([&] {
        ProfileEditorController editor(sheets, alerts, store);
        editor.awakeFromNib();
        editor.AddInit();
    });
    EXPECT_EQ(written, "ProfileEditorController - dealloc \n");
    EXPECT_EQ(prefs.synchronizations, 1);
    {
        ProfileEditorController editor(sheets, alerts, store);
        editor.awakeFromNib();
        editor.AddInit();
        editor.OnCANCEL();
    }
    EXPECT_EQ(prefs.synchronizations, 1);
}

} // namespace
