#include "survey/keys/ui/KeyFields.h"

#include "platform/ui/ComboBox.h"
#include "platform/ui/SecretLineEdit.h"

#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr int openAuthentication = 0;
constexpr int wpa = 2;
constexpr int none = 0;
constexpr int wep = 1;

class KeyFieldsTest : public testing::Test {
protected:
    KeyFieldsTest()
    {
        fields.selectHexadecimal();
        fields.show();
    }

    template <typename Widget> Widget& control(const QString& name) { return *fields.findChild<Widget*>(name); }
    QLineEdit& keyText(int number) { return control<QLineEdit>(u"WEPKey%1Text"_qs.arg(number)); }
    QString hint(int number) { return control<QLabel>(u"WEPKey%1Hint"_qs.arg(number)).text(); }
    QLineEdit& presharedKey() { return control<QLineEdit>(u"WPAPreSharedKey"_qs); }
    QString presharedKeyHint() { return control<QLabel>(u"WPAPreSharedKeyHint"_qs).text(); }

    KeyFields fields;
};

TEST_F(KeyFieldsTest, ReturnsTheTypedKeysWithTheGivenSelections)
{
    fields.enableFor(openAuthentication, wep);
    QTest::keyClicks(&keyText(3), u"abcdefABCD"_qs);
    QTest::keyClick(&control<ComboBox>(u"WEPKey4Combo"_qs), Qt::Key_Down);
    QTest::mouseClick(&control<QRadioButton>(u"WEPKey3Radio"_qs), Qt::LeftButton, {}, { 8, 8 });
    const KeyControls keys = fields.keyControls(openAuthentication, wep);
    EXPECT_EQ(keys.authenTypeIndex, openAuthentication);
    EXPECT_EQ(keys.encryTypeIndex, wep);
    EXPECT_EQ(keys.wepKeys[2].text, "abcdefABCD");
    EXPECT_TRUE(keys.wepKeys[2].radioOn);
    EXPECT_FALSE(keys.wepKeys[0].radioOn);
    EXPECT_EQ(keys.wepKeys[2].formatIndex, 0);
    EXPECT_EQ(keys.wepKeys[3].formatIndex, 1);
    EXPECT_EQ(keys.wepKeys[0].text, "");
    EXPECT_EQ(keys.WPAPSK, "");
}

TEST_F(KeyFieldsTest, HidesUnusedWepKeysOnlyOnRequest)
{
    fields.enableFor(wpa, none);
    EXPECT_TRUE(keyText(1).isVisible());
    EXPECT_FALSE(keyText(1).isEnabled());
    fields.setUnusedWepKeysHidden(true);
    EXPECT_FALSE(keyText(1).isVisible());
    fields.enableFor(openAuthentication, wep);
    EXPECT_TRUE(keyText(1).isVisible());
    fields.enableFor(openAuthentication, none);
    EXPECT_TRUE(keyText(1).isVisible()) << "WEP may be chosen next";
    EXPECT_TRUE(presharedKey().isVisible());
}

TEST_F(KeyFieldsTest, ShowsAStoredSetOfKeys)
{
    fields.setWepKey(1, 1, u"abcde"_qs);
    fields.selectTransmitKey(1);
    fields.selectTransmitKey(std::nullopt); // stays
    fields.setWPAPSK(u"north by northwest"_qs);
    const KeyControls keys = fields.keyControls(wpa, none);
    EXPECT_EQ(keys.wepKeys[1].formatIndex, 1);
    EXPECT_EQ(keys.wepKeys[1].text, "abcde");
    EXPECT_TRUE(keys.wepKeys[1].radioOn);
    EXPECT_EQ(keys.WPAPSK, "north by northwest");
    fields.clearTexts();
    fields.selectHexadecimal();
    const KeyControls cleared = fields.keyControls(wpa, none);
    EXPECT_EQ(cleared.wepKeys[1].formatIndex, 0);
    EXPECT_EQ(cleared.wepKeys[1].text, "");
    EXPECT_TRUE(cleared.wepKeys[1].radioOn);
    EXPECT_EQ(cleared.WPAPSK, "");
}

TEST_F(KeyFieldsTest, EnablesOnlyTheUsedFieldsAndShowsOnlyTheirHints)
{
    fields.enableFor(openAuthentication, wep);
    EXPECT_TRUE(keyText(1).isEnabled());
    EXPECT_FALSE(presharedKey().isEnabled());
    EXPECT_FALSE(control<QLabel>(u"presharedKeyLabel"_qs).isEnabled());
    EXPECT_NE(hint(1), QString());
    EXPECT_EQ(presharedKeyHint(), QString());
    fields.enableFor(wpa, none);
    EXPECT_FALSE(keyText(1).isEnabled());
    EXPECT_TRUE(presharedKey().isEnabled());
    EXPECT_EQ(hint(1), QString());
    EXPECT_NE(presharedKeyHint(), QString());
    fields.enableFor(-1, none); // no change
    EXPECT_TRUE(presharedKey().isEnabled());
}

TEST_F(KeyFieldsTest, KeysAreReadableWhileShowKeysIsChecked)
{
    EXPECT_EQ(keyText(2).echoMode(), QLineEdit::Password);
    QTest::keyClick(&control<QCheckBox>(u"showKeys"_qs), Qt::Key_Space);
    EXPECT_EQ(keyText(2).echoMode(), QLineEdit::Normal);
    EXPECT_EQ(presharedKey().echoMode(), QLineEdit::Normal);
    fields.hideKeys();
    EXPECT_EQ(keyText(2).echoMode(), QLineEdit::Password);
    EXPECT_EQ(presharedKey().echoMode(), QLineEdit::Password);
}

TEST_F(KeyFieldsTest, EveryKeyIsASecretForScreenReaders)
{
    const auto lines = fields.findChildren<QLineEdit*>();
    EXPECT_EQ(lines.size(), 5);
    for (const QLineEdit* const line : lines)
        EXPECT_NE(qobject_cast<const SecretLineEdit*>(line), nullptr) << line->objectName().toStdString();
}

TEST_F(KeyFieldsTest, FocusesTheRefusedKeyWithItsTextSelected)
{
    fields.enableFor(openAuthentication, wep);
    fields.setWepKey(0, 0, u"0123456789"_qs);
    fields.setWepKey(2, 0, u"012"_qs);
    fields.selectTransmitKey(0);
    fields.focusRefusedKey(fields.keyControls(openAuthentication, wep));
    EXPECT_EQ(fields.focusWidget(), &keyText(3)) << "not the transmit key, which is valid";
    EXPECT_EQ(keyText(3).selectedText(), u"012"_qs);
    fields.enableFor(wpa, none);
    fields.focusRefusedKey(fields.keyControls(wpa, none));
    EXPECT_EQ(fields.focusWidget(), &presharedKey());
}

// The fields are reused for the next network.
TEST_F(KeyFieldsTest, UndoDoesNotRestoreClearedKeys)
{
    fields.enableFor(wpa, none);
    fields.clearTexts();
    QTest::keyClicks(&presharedKey(), u"typed and given up"_qs);
    fields.enableFor(openAuthentication, wep);
    for (int number = 1; number <= 4; ++number)
        QTest::keyClicks(&keyText(number), u"0123456789"_qs);
    fields.clearTexts();
    control<QCheckBox>(u"showKeys"_qs).click();
    for (QLineEdit* const field : fields.findChildren<QLineEdit*>()) {
        EXPECT_FALSE(field->isUndoAvailable()) << field->objectName().toStdString();
        field->undo();
        EXPECT_EQ(field->text(), QString());
    }
}

TEST_F(KeyFieldsTest, FocusesTheFieldToFillIn)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&fields));
    fields.activateWindow();
    fields.enableFor(openAuthentication, none);
    EXPECT_FALSE(fields.focusFirstKey());
    fields.enableFor(openAuthentication, wep);
    fields.selectTransmitKey(2);
    EXPECT_TRUE(fields.focusFirstKey());
    EXPECT_EQ(fields.focusWidget(), &keyText(3));
    fields.enableFor(wpa, none);
    EXPECT_TRUE(fields.focusFirstKey());
    EXPECT_EQ(fields.focusWidget(), &presharedKey());
}

TEST_F(KeyFieldsTest, HintIsAccessibleByItselfAndWithItsField)
{
    const auto read = [](QObject& object, QAccessible::Text part) {
        return QAccessible::queryAccessibleInterface(&object)->text(part);
    };
    fields.enableFor(openAuthentication, wep);
    for (int number = 1; number <= 4; ++number) {
        keyText(number).setText(QString(number, u'0'));
        EXPECT_TRUE(hint(number).startsWith(u"%1 of 10"_qs.arg(number)));
        EXPECT_EQ(read(control<QLabel>(u"WEPKey%1Hint"_qs.arg(number)), QAccessible::Name), hint(number));
        EXPECT_EQ(read(keyText(number), QAccessible::Description), hint(number));
        EXPECT_EQ(read(keyText(number), QAccessible::Name), u"Key %1"_qs.arg(number));
    }
    fields.enableFor(wpa, none);
    QTest::keyClicks(&presharedKey(), u"north"_qs);
    EXPECT_TRUE(presharedKeyHint().startsWith(u"5 of at least 8"_qs));
    EXPECT_EQ(read(control<QLabel>(u"WPAPreSharedKeyHint"_qs), QAccessible::Name), presharedKeyHint());
    EXPECT_EQ(read(presharedKey(), QAccessible::Description), presharedKeyHint());
    EXPECT_EQ(read(keyText(1), QAccessible::Description), keyText(1).toolTip()) << "no hint any more";
}

// A private-use character is one byte, as in network names.
TEST_F(KeyFieldsTest, CountsAndChecksTheBytesOfAKey)
{
    fields.enableFor(openAuthentication, wep);
    fields.setWepKey(0, 1, u"caf\uEFE9s"_qs);
    EXPECT_EQ(fields.keyControls(openAuthentication, wep).wepKeys[0].text, "caf\xE9s");
    EXPECT_TRUE(hint(1).startsWith(u"5 of 13 characters, complete"_qs)) << hint(1).toStdString();
    EXPECT_EQ(fields.wepKeyRows()[0].text, u"caf\uEFE9s"_qs);
    fields.setWPAPSK(u"caf\uEFE9"_qs);
    EXPECT_EQ(fields.keyControls(wpa, none).WPAPSK, "caf\xE9");
    EXPECT_EQ(fields.WPAPSK(), u"caf\uEFE9"_qs);
}

TEST_F(KeyFieldsTest, HintsDoNotChangeTheWidth)
{
    fields.enableFor(openAuthentication, wep);
    const int width = fields.minimumSizeHint().width();
    for (const QString& text : { u"0"_qs, u"0123456789"_qs, QString(40, u'x') }) {
        keyText(1).setText(text);
        EXPECT_EQ(fields.minimumSizeHint().width(), width) << text.toStdString();
    }
}

TEST_F(KeyFieldsTest, TypingAKeyMovesNoWidget)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&fields));
    const auto places = [this] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        std::vector<QRect> result;
        for (const QWidget* const widget : fields.findChildren<QWidget*>())
            result.push_back({ widget->mapTo(&fields, QPoint()), widget->size() });
        return result;
    };
    fields.enableFor(openAuthentication, none);
    const QSize size = fields.minimumSizeHint();
    const auto before = places();
    fields.enableFor(openAuthentication, wep);
    keyText(1).setText(u"0123456789"_qs);
    keyText(4).setText(u"x"_qs);
    EXPECT_NE(hint(4), QString());
    EXPECT_EQ(fields.minimumSizeHint(), size);
    EXPECT_TRUE(places() == before);
    fields.enableFor(wpa, none);
    for (const QString& key : { QString(), u"north by northwest"_qs, u"na\u00EFve"_qs, QString(70, u'0') }) {
        presharedKey().setText(key);
        EXPECT_NE(presharedKeyHint(), QString());
        EXPECT_EQ(fields.minimumSizeHint(), size) << key.toStdString();
        EXPECT_TRUE(places() == before) << key.toStdString();
    }
}

TEST_F(KeyFieldsTest, HintsHaveTheHeightOfTheirFont)
{
    QFont large = fields.font();
    large.setPointSize(large.pointSize() * 2);
    fields.setFont(large);
    for (const QString& name : { u"WPAPreSharedKeyHint"_qs, u"WEPKey1Hint"_qs, u"WEPKey4Hint"_qs }) {
        const auto& label = control<QLabel>(name);
        EXPECT_GE(label.minimumHeight(), label.fontMetrics().height()) << name.toStdString();
    }
}

} // namespace
