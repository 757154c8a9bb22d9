// The editor with keyboard and screen reader.

#include "tests/profiles/ui/ProfileEditorFixture.h"
#include "tests/profiles/ui/ProfilePageFixture.h"

#include <QAccessible>
#include <QGroupBox>
#include <QKeySequence>
#include <QScrollArea>
#include <QTabBar>

#include <map>

namespace {

using Items = std::vector<QString>;

// The widgets by mnemonic.
using Mnemonics = std::map<QString, Items>;

void collect(Mnemonics& mnemonics, const QString& text)
{
    const QString keys = QKeySequence::mnemonic(text).toString();
    if (!keys.isEmpty())
        mnemonics[keys].push_back(text);
}

Mnemonics mnemonicsShown(const QWidget& sheet, const QTabWidget& tabs)
{
    Mnemonics result;
    for (int page = 0; page < tabs.count(); ++page)
        collect(result, tabs.tabText(page));
    for (const QLabel* const label : sheet.findChildren<QLabel*>()) {
        if (label->isVisible())
            collect(result, label->text());
    }
    for (const QGroupBox* const group : sheet.findChildren<QGroupBox*>()) {
        if (group->isVisible())
            collect(result, group->title());
    }
    for (const QAbstractButton* const button : sheet.findChildren<QAbstractButton*>()) {
        if (button->isVisible() && button->parent()->objectName() != u"buttons"_qs)
            collect(result, button->text());
    }
    // Whether dialog buttons have mnemonics depends on the desktop; these are the usual ones.
    collect(result, u"&OK"_qs);
    collect(result, u"&Cancel"_qs);
    return result;
}

bool isInput(const QWidget& widget)
{
    return widget.inherits("QAbstractButton") || widget.inherits("QComboBox") || widget.inherits("QLineEdit")
        || widget.inherits("QSlider");
}

QString readAloud(QWidget& widget, QAccessible::Text part)
{
    return QAccessible::queryAccessibleInterface(&widget)->text(part);
}

class ProfileEditorAccessTest : public ProfileEditorFixture {
protected:
    // The names of the widgets that the Tab key reaches from here.
    Items after(QWidget& first, std::size_t count)
    {
        show(first);
        first.setFocus();
        Items visited;
        while (visited.size() < count) {
            QTest::keyClick(editor.focusWidget(), Qt::Key_Tab);
            visited.push_back(nameOf(*editor.focusWidget()));
        }
        return visited;
    }

    [[nodiscard]] QString nameOf(const QWidget& widget)
    {
        const auto* const buttons = &control<QDialogButtonBox>(u"buttons"_qs);
        if (&widget == buttons->button(QDialogButtonBox::Ok))
            return u"OK"_qs;
        if (&widget == buttons->button(QDialogButtonBox::Cancel))
            return u"Cancel"_qs;
        return widget.objectName();
    }

    void open()
    {
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor));
        editor.activateWindow();
        editor.AddInit();
    }
};

TEST_F(ProfileEditorAccessTest, MnemonicsAreUniqueOnEachPage)
{
    editor.AddInit();
    for (int page = 0; page < tabs().count(); ++page) {
        tabs().setCurrentIndex(page);
        const Mnemonics mnemonics = mnemonicsShown(editor, tabs());
        EXPECT_GE(mnemonics.size(), 9u) << page;
        for (const auto& [keys, texts] : mnemonics) {
            EXPECT_EQ(texts.size(), 1u) << keys.toStdString() << " of page " << page << " means "
                                        << texts.front().toStdString() << " and " << texts.back().toStdString();
        }
    }
}

TEST_F(ProfileEditorAccessTest, EveryInputHasAnAccessibleNameAndAToolTip)
{
    editor.AddInit();
    std::size_t inputs = 0;
    for (int page = 0; page < tabs().count(); ++page) {
        for (QWidget* const widget : tabs().widget(page)->findChildren<QWidget*>()) {
            if (!isInput(*widget) || widget->inherits("QComboBoxPrivateContainer"))
                continue;
            ++inputs;
            const std::string name = widget->metaObject()->className() + (" " + widget->objectName().toStdString());
            EXPECT_FALSE(readAloud(*widget, QAccessible::Name).isEmpty()) << name;
            const auto* const box = qobject_cast<QComboBox*>(widget->parentWidget());
            EXPECT_FALSE((box != nullptr ? box : widget)->toolTip().isEmpty()) << name;
        }
    }
    // General 5, with the line of the SSID box; Security 2, 3 for each WEP key and 2; Advanced 11.
    EXPECT_EQ(inputs, 5u + 16u + 11u);
    EXPECT_EQ(readAloud(*combo(u"SSID"_qs).lineEdit(), QAccessible::Name), u"SSID"_qs);
}

TEST_F(ProfileEditorAccessTest, KeyHintIsTheAccessibleDescription)
{
    editor.AddInit();
    choose(combo(u"EncryType"_qs), 1);
    type(keyText(1), u"0123"_qs);
    auto& hint = control<QLabel>(u"WEPKey1Hint"_qs);
    EXPECT_FALSE(hint.text().isEmpty());
    EXPECT_EQ(readAloud(hint, QAccessible::Name), hint.text());
    EXPECT_EQ(readAloud(keyText(1), QAccessible::Description), hint.text());
}

TEST_F(ProfileEditorAccessTest, TabOrderOfGeneralIsReadingOrder)
{
    open();
    EXPECT_EQ(after(field(u"ProfileName"_qs), 4), (Items { u"SSID"_qs, u"NetworkType"_qs, u"OK"_qs, u"Cancel"_qs }));
    choose(combo(u"NetworkType"_qs), 0);
    EXPECT_EQ(after(field(u"ProfileName"_qs), 5),
        (Items { u"SSID"_qs, u"NetworkType"_qs, u"Channel"_qs, u"OK"_qs, u"Cancel"_qs }));
}

TEST_F(ProfileEditorAccessTest, TabOrderOfSecurityIsReadingOrder)
{
    open();
    choose(combo(u"AuthenType"_qs), 2);
    EXPECT_EQ(after(combo(u"AuthenType"_qs), 5),
        (Items { u"EncryType"_qs, u"WPAPreSharedKey"_qs, u"showKeys"_qs, u"OK"_qs, u"Cancel"_qs }));
    choose(combo(u"AuthenType"_qs), 1);
    EXPECT_EQ(after(combo(u"AuthenType"_qs), 3), (Items { u"EncryType"_qs, u"WEPKey1Radio"_qs, u"WEPKey1Combo"_qs }));
    EXPECT_EQ(after(keyText(4), 3), (Items { u"showKeys"_qs, u"OK"_qs, u"Cancel"_qs }));
}

TEST_F(ProfileEditorAccessTest, TabOrderOfAdvancedIsReadingOrder)
{
    open();
    const Items switchedOff { u"CamWhenAcPower"_qs, u"TxPower"_qs, u"PreambleType"_qs, u"RtsThresholdCheck"_qs,
        u"FragThresholdCheck"_qs, u"OK"_qs, u"Cancel"_qs };
    EXPECT_EQ(after(radio(u"CAM"_qs), switchedOff.size()), switchedOff);
    control<QCheckBox>(u"RtsThresholdCheck"_qs).setChecked(true);
    control<QCheckBox>(u"FragThresholdCheck"_qs).setChecked(true);
    const Items switchedOn { u"RtsThresholdCheck"_qs, u"RtsThresholdSlider"_qs, u"RtsThresholdText"_qs,
        u"FragThresholdCheck"_qs, u"FragThresholdSlider"_qs, u"FragThresholdText"_qs, u"OK"_qs, u"Cancel"_qs };
    EXPECT_EQ(after(combo(u"PreambleType"_qs), switchedOn.size()), switchedOn);
}

// A button's mnemonic does not move the focus out of the field.
TEST_F(ProfileEditorAccessTest, ThresholdIsCorrectedBeforeItIsSaved)
{
    struct Case {
        QString prefix;
        QString typed;
        QString saved;
    };
    const std::vector<Case> cases { { u"Rts"_qs, u"9999"_qs, u"2347"_qs }, { u"Rts"_qs, QString(), u"2347"_qs },
        { u"Rts"_qs, u"500"_qs, u"500"_qs }, { u"Frag"_qs, u"1"_qs, u"256"_qs }, { u"Frag"_qs, u"9999"_qs, u"2346"_qs },
        { u"Frag"_qs, u"300"_qs, u"300"_qs } };
    open();
    auto* const ok = control<QDialogButtonBox>(u"buttons"_qs).button(QDialogButtonBox::Ok);
    ok->setText(u"&OK"_qs);
    for (const Case& each : cases) {
        editor.AddInit();
        control<QCheckBox>(each.prefix + u"ThresholdCheck"_qs).setChecked(true);
        QLineEdit& text = field(each.prefix + u"ThresholdText"_qs);
        show(text);
        text.setFocus();
        text.selectAll();
        QTest::keyClick(&text, Qt::Key_Delete);
        QTest::keyClicks(&text, each.typed);
        ASSERT_EQ(text.text(), each.typed);
        const std::size_t before = sheets.stops.size();
        QTest::keyClick(&text, Qt::Key_O, Qt::AltModifier);
        ASSERT_TRUE(QTest::qWaitFor([&] { return sheets.stops.size() > before; })) << each.typed.toStdString();
        EXPECT_TRUE(text.hasFocus());
        const auto& key = each.prefix == u"Rts"_qs ? ProfileKey::rtsThreshold : ProfileKey::fragmentationThreshold;
        EXPECT_EQ(saved().back().text(key), each.saved) << each.typed.toStdString();
    }
}

TEST_F(ProfileEditorAccessTest, RefusedKeyIsShownWithTheFocus)
{
    open();
    choose(combo(u"AuthenType"_qs), 2);
    type(field(u"WPAPreSharedKey"_qs), u"short"_qs);
    tabs().setCurrentIndex(0);
    pressOk();
    EXPECT_EQ(alerts.alerts.size(), 1u);
    EXPECT_TRUE(field(u"WPAPreSharedKey"_qs).isVisible());
    EXPECT_EQ(editor.focusWidget(), &field(u"WPAPreSharedKey"_qs));
    EXPECT_EQ(field(u"WPAPreSharedKey"_qs).selectedText(), u"short"_qs);
}

TEST_F(ProfileEditorAccessTest, KeysAreClearedAndHiddenWhenTheSheetCloses)
{
    for (const auto button : { QDialogButtonBox::Ok, QDialogButtonBox::Cancel }) {
        open();
        choose(combo(u"EncryType"_qs), 1);
        control<QCheckBox>(u"showKeys"_qs).setChecked(true);
        type(keyText(1), u"0123456789"_qs);
        press(button);
        EXPECT_EQ(sheets.stops.back(), button == QDialogButtonBox::Ok ? sheetAccepted : sheetCancelled);
        EXPECT_EQ(keyText(1).text(), QString());
        EXPECT_EQ(keyText(1).echoMode(), QLineEdit::Password);
    }
    EXPECT_EQ(saved().front().text(u"WEPKey1"_qs), u"0123456789"_qs);
}

TEST_F(ProfileEditorAccessTest, FitsASmallScreenWithItsButtonsVisible)
{
    open();
    const QSize small(640, 400);
    for (const QScrollArea* const area : editor.findChildren<QScrollArea*>())
        EXPECT_GE(area->height(), area->widget()->sizeHint().height()) << "scrolled although the screen is large";
    EXPECT_LE(editor.minimumSizeHint().width(), small.width());
    EXPECT_LE(editor.minimumSizeHint().height(), small.height());
    editor.resize(small);
    QCoreApplication::processEvents();
    ASSERT_EQ(editor.size(), small);
    const auto isInside = [this](QWidget& widget) {
        return widget.isVisible() && widget.visibleRegion().boundingRect().height() == widget.height()
            && editor.rect().contains({ widget.mapTo(&editor, QPoint()), widget.size() });
    };
    for (int page = 0; page < tabs().count(); ++page) {
        tabs().setCurrentIndex(page);
        for (const auto button : { QDialogButtonBox::Ok, QDialogButtonBox::Cancel })
            EXPECT_TRUE(isInside(*control<QDialogButtonBox>(u"buttons"_qs).button(button))) << page;
    }
    choose(combo(u"EncryType"_qs), 1);
    keyText(4).setFocus();
    EXPECT_TRUE(isInside(keyText(4))) << "the field with the focus is scrolled into view";
}

using ProfilePageAccessTest = ProfilePageFixture;

TEST_F(ProfilePageAccessTest, TabOrderIsTheListThenTheButtons)
{
    page.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&page));
    haveProfiles({ sampleProfile() });
    table->setFocus();
    Items visited { page.focusWidget()->objectName() };
    while (visited.size() < 6) {
        QTest::keyClick(page.focusWidget(), Qt::Key_Tab);
        visited.push_back(page.focusWidget()->objectName());
    }
    EXPECT_EQ(
        visited, (Items { u"profileList"_qs, u"Add"_qs, u"Edit"_qs, u"Delete"_qs, u"Activate"_qs, u"profileList"_qs }));
}

} // namespace
