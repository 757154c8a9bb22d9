#include "app/shared/SharedState.h"
#include "platform/ui/ComboBox.h"
#include "survey/ui/SheetReceivers.h"
#include "survey/ui/WEPSettingController.h"
#include "tests/support/InitialSharedState.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/ScriptedModalSheets.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using Items = std::vector<QString>;

class KeepingReceiver final : public SecuritySettingsReceiver {
public:
    void ReceiveWEPsetting(const SecuritySettings& settings) override { received.push_back(settings); }
    std::vector<SecuritySettings> received;
};

class WEPSettingTest : public testing::Test {
protected:
    void SetUp() override
    {
        sheet.awakeFromNib();
        sheet.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&sheet));
    }

    template <typename Widget> Widget& control(const QString& name) { return *sheet.findChild<Widget*>(name); }
    ComboBox& authenType() { return control<ComboBox>(u"AuthenType"_qs); }
    ComboBox& encryType() { return control<ComboBox>(u"EncryType"_qs); }
    QLineEdit& keyText(int number) { return control<QLineEdit>(u"WEPKey%1Text"_qs.arg(number)); }
    ComboBox& keyFormat(int number) { return control<ComboBox>(u"WEPKey%1Combo"_qs.arg(number)); }
    QRadioButton& keyRadio(int number) { return control<QRadioButton>(u"WEPKey%1Radio"_qs.arg(number)); }
    QLineEdit& presharedKey() { return control<QLineEdit>(u"WPAPreSharedKey"_qs); }
    QLabel& hint(const QString& name) { return control<QLabel>(name); }

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
        while (combo.indexOfSelectedItem() < index)
            QTest::keyClick(&combo, Qt::Key_Down);
        while (combo.indexOfSelectedItem() > index)
            QTest::keyClick(&combo, Qt::Key_Up);
    }

    void press(QDialogButtonBox::StandardButton button)
    {
        QTest::mouseClick(control<QDialogButtonBox>(u"buttons"_qs).button(button), Qt::LeftButton);
    }

    void expectWepKeysVisible(bool visible)
    {
        for (int number = 1; number <= 4; ++number) {
            EXPECT_EQ(keyText(number).isVisible(), visible) << number;
            EXPECT_EQ(keyFormat(number).isVisible(), visible) << number;
            EXPECT_EQ(keyRadio(number).isVisible(), visible) << number;
        }
    }

    void expectWepKeysEnabled(bool enabled)
    {
        for (int number = 1; number <= 4; ++number) {
            EXPECT_EQ(keyText(number).isEnabled(), enabled) << number;
            EXPECT_EQ(keyFormat(number).isEnabled(), enabled) << number;
            EXPECT_EQ(keyRadio(number).isEnabled(), enabled) << number;
        }
    }

    InitialSharedState initialState;
    ScriptedModalSheets sheets;
    RecordingAlertPanels alerts;
    KeepingReceiver receiver;
    WEPSettingController sheet { sheets, alerts, receiver };
};

TEST_F(WEPSettingTest, StartsWithOpenAndNoEncryption)
{
    EXPECT_EQ(items(authenType()), (Items { u"Open"_qs, u"Shared"_qs, u"WPA-PSK"_qs }));
    EXPECT_EQ(items(encryType()), (Items { u"NONE"_qs, u"WEP"_qs }));
    EXPECT_EQ(sheet.getAuthenTypeCombo(), 0);
    for (int number = 1; number <= 4; ++number) {
        EXPECT_EQ(items(keyFormat(number)).size(), 2u);
        EXPECT_EQ(keyFormat(number).indexOfSelectedItem(), 0);
    }
    EXPECT_TRUE(keyRadio(1).isChecked());
    EXPECT_FALSE(presharedKey().isEnabled());
}

TEST_F(WEPSettingTest, SharedAfterOpenListsTheEncryptionsTwice)
{
    sheet.setAuthenTypeComboText(1);
    encryType().removeAllItems();
    encryType().insertItemWithObjectValue(u"NONE"_qs, 0);
    encryType().insertItemWithObjectValue(u"WEP"_qs, 1);
    encryType().selectItemAtIndex(1);
    choose(authenType(), 1);
    EXPECT_EQ(items(encryType()), (Items { u"NONE"_qs, u"WEP"_qs, u"NONE"_qs, u"WEP"_qs }));
    EXPECT_EQ(encryType().indexOfSelectedItem(), 1);
    expectWepKeysEnabled(true);
}

TEST_F(WEPSettingTest, WpaListsOnlyItsCiphersAndEnablesThePresharedKey)
{
    choose(authenType(), 2);
    EXPECT_EQ(items(encryType()), (Items { u"TKIP"_qs, u"AES"_qs }));
    EXPECT_EQ(encryType().indexOfSelectedItem(), 0);
    EXPECT_TRUE(presharedKey().isEnabled());
    expectWepKeysEnabled(false);
}

TEST_F(WEPSettingTest, CardWithoutAesOffersOnlyTkip)
{
    G_encryCapa = 4;
    choose(authenType(), 2);
    EXPECT_EQ(items(encryType()), (Items { u"TKIP"_qs }));
}

TEST_F(WEPSettingTest, EncryptionEnablesTheKeyFields)
{
    expectWepKeysEnabled(false);
    choose(encryType(), 1);
    expectWepKeysEnabled(true);
    choose(encryType(), 0);
    expectWepKeysEnabled(false);
}

TEST_F(WEPSettingTest, AuthenticationListFollowsTheKindOfNetwork)
{
    choose(authenType(), 1);
    sheet.setAuthenTypeComboText(0);
    EXPECT_EQ(items(authenType()), (Items { u"Open"_qs, u"Shared"_qs, u"WPA-NONE"_qs }));
    EXPECT_EQ(sheet.getAuthenTypeCombo(), 0);
    sheet.setAuthenTypeComboText(5);
    EXPECT_EQ(items(authenType()).back(), u"WPA-NONE"_qs);
    sheet.setAuthenTypeComboText(1);
    EXPECT_EQ(items(authenType()).back(), u"WPA-PSK"_qs);
}

TEST_F(WEPSettingTest, ClearTextClearsAndHidesAllKeys)
{
    choose(encryType(), 1);
    for (int number = 1; number <= 4; ++number)
        keyText(number).setText(u"12345"_qs);
    presharedKey().setText(u"12345678"_qs);
    control<QCheckBox>(u"showKeys"_qs).setChecked(true);
    sheet.clearText();
    for (int number = 1; number <= 4; ++number)
        EXPECT_TRUE(keyText(number).text().isEmpty());
    EXPECT_TRUE(presharedKey().text().isEmpty());
    EXPECT_EQ(presharedKey().echoMode(), QLineEdit::Password);
}

TEST_F(WEPSettingTest, ShowKeysMakesTheKeysReadable)
{
    QTest::mouseClick(&control<QCheckBox>(u"showKeys"_qs), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(presharedKey().echoMode(), QLineEdit::Normal);
    EXPECT_EQ(keyText(3).echoMode(), QLineEdit::Normal);
}

TEST_F(WEPSettingTest, OkReturnsTheWepKeysAsBytes)
{
    choose(encryType(), 1);
    QTest::mouseClick(&keyRadio(2), Qt::LeftButton, {}, QPoint(5, 5));
    choose(keyFormat(2), 1);
    QTest::keyClicks(&keyText(2), u"lighthousekey"_qs);
    QTest::keyClicks(&keyText(4), u"00ff11Ee22"_qs);
    press(QDialogButtonBox::Ok);
    ASSERT_EQ(receiver.received.size(), 1u);
    const SecuritySettings& settings = receiver.received.front();
    EXPECT_EQ(settings.AuthenType, 0);
    EXPECT_EQ(settings.EncryType, 1);
    EXPECT_EQ(settings.SelKeyIndex, 1);
    EXPECT_EQ(settings.WepKeys[0].length, 0);
    EXPECT_EQ(settings.WepKeys[1].length, 13);
    EXPECT_EQ(settings.WepKeys[1].material[12], 'y');
    EXPECT_EQ(settings.WepKeys[3].length, 5);
    EXPECT_EQ(settings.WepKeys[3].material[1], 0xFF);
    EXPECT_EQ(settings.WepKeys[3].material[3], 0xEE);
    EXPECT_EQ(sheets.stops, (std::vector { 1 }));
}

TEST_F(WEPSettingTest, OkReturnsThePresharedKeyAsTyped)
{
    choose(authenType(), 2);
    choose(encryType(), 1);
    const QString digits(64, u'a');
    QTest::keyClicks(&presharedKey(), digits);
    press(QDialogButtonBox::Ok);
    ASSERT_EQ(receiver.received.size(), 1u);
    EXPECT_EQ(receiver.received[0].AuthenType, 2);
    EXPECT_EQ(receiver.received[0].EncryType, 1);
    EXPECT_EQ(receiver.received[0].WPAPSK, digits.toStdString());
}

TEST_F(WEPSettingTest, ClosingTheSheetClearsTheKeyFields)
{
    for (const auto button : { QDialogButtonBox::Ok, QDialogButtonBox::Cancel }) {
        choose(authenType(), 2);
        QTest::keyClicks(&presharedKey(), u"password"_qs);
        keyText(1).setText(u"0102030405"_qs);
        press(button);
        EXPECT_TRUE(presharedKey().text().isEmpty());
        EXPECT_TRUE(keyText(1).text().isEmpty());
    }
}

TEST_F(WEPSettingTest, KeepsThePreviousWepKeysIfNoneIsInUse)
{
    choose(encryType(), 1);
    QTest::keyClicks(&keyText(1), u"0102030405"_qs);
    press(QDialogButtonBox::Ok);
    choose(encryType(), 0);
    keyText(1).clear();
    press(QDialogButtonBox::Ok);
    ASSERT_EQ(receiver.received.size(), 2u);
    EXPECT_EQ(receiver.received[1].EncryType, 0);
    EXPECT_EQ(receiver.received[1].WepKeys[0].length, 5);
}

TEST_F(WEPSettingTest, VerifyKeyChecksTheKeysOfTheSheet)
{
    choose(encryType(), 1);
    QTest::keyClicks(&keyText(1), u"0102030405"_qs);
    EXPECT_TRUE(sheet.VerifyKey());
    EXPECT_TRUE(alerts.alerts.empty());
    QTest::keyClicks(&keyText(1), u"06"_qs);
    EXPECT_FALSE(sheet.VerifyKey());
    EXPECT_EQ(alerts.alerts.size(), 1u);
}

TEST_F(WEPSettingTest, RefusedKeyKeepsTheSheetOpenWithItsText)
{
    choose(encryType(), 1);
    QTest::keyClicks(&keyText(1), u"12345"_qs);
    press(QDialogButtonBox::Ok);
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_EQ(alerts.alerts[0].title, u"Invalid WEP key 1 length. WEP should be 10 or 26 hexadecimal digits."_qs);
    EXPECT_EQ(alerts.alerts[0].message, QString());
    EXPECT_EQ(alerts.alerts[0].defaultButton, u"OK"_qs);
    EXPECT_TRUE(receiver.received.empty());
    EXPECT_TRUE(sheets.stops.empty());
    EXPECT_EQ(keyText(1).text(), u"12345"_qs);
}

TEST_F(WEPSettingTest, RefusesOkIfBothSelectionsChangedWithoutTheirHandlers)
{
    sheet.setAuthenTypeCombo(1);
    sheet.setEncryTypeCombo(1);
    press(QDialogButtonBox::Ok);
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_EQ(
        alerts.alerts[0].title, u"Encryption type is incorrect, please re-select the correct Encryption type."_qs);
    EXPECT_TRUE(sheets.stops.empty());
}

TEST_F(WEPSettingTest, AcceptsOneSelectionChangedWithoutItsHandler)
{
    sheet.setAuthenTypeCombo(1);
    QTest::keyClicks(&keyText(1), u"x"_qs); // disabled: stays empty
    press(QDialogButtonBox::Ok);
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_TRUE(alerts.alerts[0].title.startsWith(u"Invalid WEP key 1"_qs));
}

TEST_F(WEPSettingTest, CancelReturnsNothing)
{
    press(QDialogButtonBox::Cancel);
    EXPECT_TRUE(receiver.received.empty());
    EXPECT_EQ(sheets.stops, (std::vector { 0 }));
}

TEST_F(WEPSettingTest, ReturnIsOk)
{
    QTest::keyClick(&authenType(), Qt::Key_Return);
    EXPECT_EQ(sheets.stops, (std::vector { 1 }));
}

TEST_F(WEPSettingTest, HintsShowWhatIsMissing)
{
    choose(encryType(), 1);
    QTest::keyClicks(&keyText(1), u"0102030405060708"_qs);
    EXPECT_TRUE(hint(u"WEPKey1Hint"_qs).text().contains(u"16 of 26 hexadecimal digits"_qs))
        << hint(u"WEPKey1Hint"_qs).text().toStdString();
    EXPECT_TRUE(hint(u"WEPKey2Hint"_qs).text().isEmpty());
    choose(authenType(), 2);
    EXPECT_TRUE(hint(u"WEPKey1Hint"_qs).text().isEmpty());
    QTest::keyClicks(&presharedKey(), u"seven77"_qs);
    const QString seven = hint(u"WPAPreSharedKeyHint"_qs).text();
    EXPECT_FALSE(seven.isEmpty());
    QTest::keyClicks(&presharedKey(), u"8"_qs);
    EXPECT_NE(hint(u"WPAPreSharedKeyHint"_qs).text(), seven);
}

TEST_F(WEPSettingTest, FocusesTheFieldToFillIn)
{
    sheet.focusFirstKey();
    EXPECT_EQ(sheet.focusWidget(), &authenType());
    choose(encryType(), 1);
    sheet.focusFirstKey();
    EXPECT_EQ(sheet.focusWidget(), &keyText(1));
    choose(authenType(), 2);
    sheet.focusFirstKey();
    EXPECT_EQ(sheet.focusWidget(), &presharedKey());
}

TEST_F(WEPSettingTest, WepKeysTakeNoRoomWhileOnlyAPresharedKeyIsUsed)
{
    expectWepKeysVisible(true);
    const int height = sheet.height();
    choose(authenType(), 2);
    expectWepKeysVisible(false);
    EXPECT_LT(sheet.height(), height * 2 / 3);
    EXPECT_GT(presharedKey().width(), presharedKey().fontMetrics().averageCharWidth() * 20);
    choose(authenType(), 1);
    expectWepKeysVisible(true);
    expectWepKeysEnabled(true);
    EXPECT_GE(sheet.height(), sheet.minimumSizeHint().height());
    choose(authenType(), 0);
    expectWepKeysVisible(true);
}

} // namespace
