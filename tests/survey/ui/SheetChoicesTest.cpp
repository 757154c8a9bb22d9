// The lists of the security sheet across openings, and unusual selections in it.

#include "tests/survey/ui/ConnectingFixture.h"

namespace {

using Items = std::vector<QString>;

class SheetChoicesTest : public ConnectingFixture {
protected:
    static ComboBox& combo(QDialog& sheet, const QString& name) { return *sheet.findChild<ComboBox*>(name); }

    static Items items(const ComboBox& combo)
    {
        Items result;
        for (int index = 0; index < combo.numberOfItems(); ++index)
            result.push_back(combo.itemObjectValueAtIndex(index));
        return result;
    }

    // Selects with the keyboard.
    static void choose(ComboBox& combo, int index)
    {
        combo.setFocus();
        for (int steps = combo.numberOfItems(); steps > 0 && combo.indexOfSelectedItem() != index; --steps)
            QTest::keyClick(&combo, combo.indexOfSelectedItem() < index ? Qt::Key_Down : Qt::Key_Up);
        EXPECT_EQ(combo.indexOfSelectedItem(), index);
    }

    // Records the lists of the sheet the next time it opens, and cancels it.
    void listsAtNextOpening(Items& authentications, Items& encryptions)
    {
        sheets.users.emplace_back([&authentications, &encryptions](QDialog& sheet) {
            authentications = items(combo(sheet, u"AuthenType"_qs));
            encryptions = items(combo(sheet, u"EncryType"_qs));
            press(sheet, QDialogButtonBox::Cancel);
        });
    }

    // Selects, types and presses OK the next time the sheet opens.
    void answer(int authenType, int encryType, const QString& field, const QString& key)
    {
        sheets.users.emplace_back([authenType, encryType, field, key](QDialog& sheet) {
            choose(combo(sheet, u"AuthenType"_qs), authenType);
            choose(combo(sheet, u"EncryType"_qs), encryType);
            if (!field.isEmpty())
                QTest::keyClicks(sheet.findChild<QLineEdit*>(field), key);
            press(sheet, QDialogButtonBox::Ok);
        });
    }

    // Takes the settings out of the queue.
    static void expectQueued(std::int32_t authenMode, std::int32_t encryStatus)
    {
        ASSERT_NE(queued(), nullptr);
        EXPECT_EQ(queued()->Profile()->AuthenMode, authenMode);
        EXPECT_EQ(queued()->Profile()->EncryStatus, encryStatus);
    }
};

TEST_F(SheetChoicesTest, WepNetworkKeepsTheAuthenticationListOfThePreviousNetwork)
{
    Items authentications;
    Items encryptions;
    listsAtNextOpening(authentications, encryptions);
    connectTo(wpaNetwork(tkip, 2, Ndis802_11IBSS));
    EXPECT_EQ(authentications, (Items { u"Open"_qs, u"Shared"_qs, u"WPA-NONE"_qs }));
    listsAtNextOpening(authentications, encryptions);
    connectTo(wepEntry());
    EXPECT_EQ(authentications, (Items { u"Open"_qs, u"Shared"_qs, u"WPA-NONE"_qs }));
    listsAtNextOpening(authentications, encryptions);
    connectTo(wpaNetwork(tkip, 2));
    EXPECT_EQ(authentications, (Items { u"Open"_qs, u"Shared"_qs, u"WPA-PSK"_qs }));
}

TEST_F(SheetChoicesTest, EachStepInsertsTheEncryptionsAgain)
{
    Items authentications;
    for (const std::size_t opened : { 1U, 2U, 3U }) {
        Items encryptions;
        listsAtNextOpening(authentications, encryptions);
        connectTo(wpaNetwork(tkip, 2));
        Items expected;
        for (std::size_t times = 0; times < opened * 2; ++times)
            expected.insert(expected.end(), { u"TKIP"_qs, u"AES"_qs });
        EXPECT_EQ(encryptions, expected);
    }
}

TEST_F(SheetChoicesTest, RepeatedTkipCountsAsAes)
{
    sheets.users.emplace_back([](QDialog& sheet) {
        ComboBox& encryption = combo(sheet, u"EncryType"_qs);
        choose(encryption, 2);
        EXPECT_EQ(encryption.objectValueOfSelectedItem(), u"TKIP"_qs);
        QTest::keyClicks(sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs), u"password"_qs);
        press(sheet, QDialogButtonBox::Ok);
    });
    connectTo(wpaNetwork(tkip, 2));
    expectQueued(4, 6);
}

TEST_F(SheetChoicesTest, NetworkWithAnUnknownModeShowsWpaPskAndJoinsAsWpaNone)
{
    sheets.users.emplace_back([](QDialog& sheet) {
        EXPECT_EQ(combo(sheet, u"AuthenType"_qs).objectValueOfSelectedItem(), u"WPA-PSK"_qs);
        QTest::keyClicks(sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs), u"password"_qs);
        press(sheet, QDialogButtonBox::Ok);
    });
    connectTo(wpaNetwork(tkip, 2, Ndis802_11AutoUnknown));
    expectQueued(5, 4);
    EXPECT_EQ(queued()->Profile()->NetworkType, 2);
    EXPECT_EQ(queued()->Profile()->ConnectByBssid, 1);
}

TEST_F(SheetChoicesTest, AesNetworkSelectsNothingWithoutAesSupportAndJoinsAsAes)
{
    G_encryCapa = 4;
    sheets.users.emplace_back([](QDialog& sheet) {
        const ComboBox& encryption = combo(sheet, u"EncryType"_qs);
        EXPECT_EQ(items(encryption), (Items { u"TKIP"_qs, u"TKIP"_qs }));
        EXPECT_EQ(encryption.indexOfSelectedItem(), -1);
        QTest::keyClicks(sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs), u"password"_qs);
        press(sheet, QDialogButtonBox::Ok);
    });
    connectTo(wpaNetwork(ccmp, 2));
    EXPECT_TRUE(alerts.alerts.empty());
    expectQueued(4, 6);
}

TEST_F(SheetChoicesTest, OpenWithNoneJoinsAWpaNetworkWithoutAKey)
{
    answer(0, 0, {}, {});
    connectTo(wpaNetwork(tkip, 2));
    expectQueued(0, 1);
    EXPECT_TRUE(queued()->Profile()->pWpaKey.empty());
    EXPECT_TRUE(queued()->Profile()->pWepKey[0].empty());
    EXPECT_EQ(queued()->Profile()->ConnectByBssid, 1);
}

TEST_F(SheetChoicesTest, SharedJoinsAWpaNetworkWithWepKeys)
{
    answer(1, 1, u"WEPKey1Text"_qs, u"0123456789"_qs);
    connectTo(wpaNetwork(tkip, 2));
    expectQueued(1, 0);
    EXPECT_TRUE(queued()->Profile()->pWpaKey.empty());
    EXPECT_EQ(queued()->Profile()->pWepKey[0].size(), 44U);
}

TEST_F(SheetChoicesTest, SharedWithNoneJoinsAWpaNetworkWithWepKeysAndNoEncryption)
{
    answer(1, 0, u"WEPKey1Text"_qs, u"0123456789"_qs);
    connectTo(wpaNetwork(tkip, 2));
    expectQueued(1, 1);
    EXPECT_EQ(queued()->Profile()->pWepKey[0].size(), 44U);
}

TEST_F(SheetChoicesTest, WpaJoinsAWepNetworkWithAPresharedKey)
{
    answer(2, 0, u"WPAPreSharedKey"_qs, u"password"_qs);
    connectTo(wepEntry());
    expectQueued(4, 4);
    EXPECT_EQ(queued()->Profile()->pWpaKey.size(), 71U);
    EXPECT_TRUE(queued()->Profile()->pWepKey[0].empty());
}

TEST_F(SheetChoicesTest, OpenWithNoneJoinsAWepNetworkWithoutAKey)
{
    answer(0, 0, {}, {});
    connectTo(wepEntry());
    expectQueued(0, 1);
    EXPECT_TRUE(queued()->Profile()->pWepKey[0].empty());
}

TEST_F(SheetChoicesTest, KeysOfThePreviousConnectionAreNotSent)
{
    // The sheet of the second network converts no keys, and the keys of the first are not sent.
    answer(0, 1, u"WEPKey1Text"_qs, u"0123456789"_qs);
    connectTo(wepEntry());
    TaskQueue::RemoveTaskObject();
    answer(0, 0, {}, {});
    connectTo(wepEntry("other"));
    expectQueued(0, 1);
    EXPECT_TRUE(queued()->Profile()->pWepKey[0].empty());
}

TEST_F(SheetChoicesTest, SecuritySheetSaysWhichNetworkItIsFor)
{
    QString text;
    QString spoken;
    const auto readAndCancel = [&text, &spoken](QDialog& sheet) {
        text = sheet.findChild<QLabel*>(u"network"_qs)->text();
        spoken = sheet.accessibleDescription();
        press(sheet, QDialogButtonBox::Cancel);
    };
    sheets.users.emplace_back(readAndCancel);
    connectTo(wepEntry("<b>caf\xC3\xA9</b>"));
    EXPECT_TRUE(text.contains(u"“<b>café</b>”"_qs)) << qPrintable(text);
    EXPECT_EQ(spoken, text);
    EntryBuilder nameless = wepEntry("");
    nameless.fixedPart.InfrastructureMode = Ndis802_11IBSS;
    sheets.users.emplace_back(readAndCancel);
    connectTo(nameless);
    EXPECT_TRUE(text.contains(u"00-11-22-33-44-01"_qs)) << qPrintable(text);
}

TEST_F(SheetChoicesTest, HiddenNetworksSheetsSayWhichNetworkTheyAreFor)
{
    QString asked;
    QString joined;
    sheets.users.emplace_back([&asked](QDialog& sheet) {
        asked = sheet.findChild<QLabel*>(u"explanation"_qs)->text();
        sheet.findChild<QLineEdit*>(u"HiddenSSIDText"_qs)->setText(u"attic"_qs);
        press(sheet, QDialogButtonBox::Ok);
    });
    sheets.users.emplace_back([&joined](QDialog& sheet) {
        joined = sheet.findChild<QLabel*>(u"network"_qs)->text();
        press(sheet, QDialogButtonBox::Cancel);
    });
    connectTo(wepEntry(""));
    EXPECT_TRUE(asked.contains(u"00-11-22-33-44-01"_qs)) << qPrintable(asked);
    EXPECT_TRUE(joined.contains(u"“attic”"_qs)) << qPrintable(joined);
}

TEST_F(SheetChoicesTest, EmptyHiddenNameIsJoined)
{
    sheets.users.emplace_back([](QDialog& sheet) { press(sheet, QDialogButtonBox::Ok); });
    connectTo(EntryBuilder(""));
    ASSERT_NE(queued(), nullptr);
    const PROFILE_DATA& record = *queued()->Profile();
    EXPECT_EQ(record.ConnectByBssid, 0);
    EXPECT_EQ(recordBytes(record.Ssid), Bytes(36)); // SsidLength 0, no name
    EXPECT_EQ(record.Bssid, MacAddress {});
}

TEST_F(SheetChoicesTest, EmptyHiddenNameReplacesThePreviousOne)
{
    typeKey(u"HiddenSSIDText"_qs, u"attic"_qs);
    connectTo(EntryBuilder(""));
    TaskQueue::RemoveTaskObject();
    sheets.users.emplace_back([](QDialog& sheet) {
        sheet.findChild<QLineEdit*>(u"HiddenSSIDText"_qs)->clear();
        press(sheet, QDialogButtonBox::Ok);
    });
    connectTo(EntryBuilder(""));
    ASSERT_NE(queued(), nullptr);
    EXPECT_EQ(recordBytes(queued()->Profile()->Ssid), Bytes(36));
}

} // namespace
