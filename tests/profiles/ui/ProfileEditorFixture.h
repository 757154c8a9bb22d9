#pragma once

#include "app/shared/SharedState.h"
#include "platform/store/PropertyListFile.h"
#include "platform/ui/ComboBox.h"
#include "profiles/ProfileStore.h"
#include "profiles/ui/ProfileEditorController.h"
#include "survey/connection/ProfileProposal.h"
#include "tests/profiles/SampleProfile.h"
#include "tests/support/BssidListBuilder.h"
#include "tests/support/InitialSharedState.h"
#include "tests/support/MemoryUserDefaults.h"
#include "tests/support/PlantedBssidList.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/ScriptedModalSheets.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

// The visible profile editor with its own store.
class ProfileEditorFixture : public testing::Test {
protected:
    using Items = std::vector<QString>;

    ProfileEditorFixture()
    {
        editor.awakeFromNib();
        editor.show();
    }

    static void haveList(const std::vector<EntryBuilder>& entries) { plantBssidList(entries); }

    template <typename Widget> Widget& control(const QString& name) { return *editor.findChild<Widget*>(name); }
    ComboBox& combo(const QString& name) { return control<ComboBox>(name); }
    QLineEdit& field(const QString& name) { return control<QLineEdit>(name); }
    QRadioButton& radio(const QString& name) { return control<QRadioButton>(name); }
    QWidget& widget(const QString& name) { return control<QWidget>(name); }
    QLineEdit& keyText(int number) { return field(u"WEPKey%1Text"_qs.arg(number)); }
    ComboBox& keyFormat(int number) { return combo(u"WEPKey%1Combo"_qs.arg(number)); }
    QRadioButton& keyRadio(int number) { return radio(u"WEPKey%1Radio"_qs.arg(number)); }
    QTabWidget& tabs() { return control<QTabWidget>(u"TabView"_qs); }

    static Items items(const ComboBox& box)
    {
        Items result;
        for (int index = 0; index < box.numberOfItems(); ++index)
            result.push_back(box.itemObjectValueAtIndex(index));
        return result;
    }

    // Brings the page to the front and selects with the keyboard.
    void choose(ComboBox& box, int index)
    {
        show(box);
        box.setFocus();
        while (box.indexOfSelectedItem() < index)
            QTest::keyClick(&box, Qt::Key_Down);
        while (box.indexOfSelectedItem() > index)
            QTest::keyClick(&box, Qt::Key_Up);
    }

    void type(QLineEdit& line, const QString& text)
    {
        show(line);
        line.clear();
        QTest::keyClicks(&line, text);
    }

    void show(QWidget& on)
    {
        for (int page = 0; page < tabs().count(); ++page) {
            if (tabs().widget(page)->isAncestorOf(&on))
                tabs().setCurrentIndex(page);
        }
    }

    void press(QDialogButtonBox::StandardButton button)
    {
        QTest::mouseClick(control<QDialogButtonBox>(u"buttons"_qs).button(button), Qt::LeftButton);
    }
    void pressOk() { press(QDialogButtonBox::Ok); }

    void expectKeysEnabled(bool wepKeys, bool presharedKey)
    {
        for (int number = 1; number <= 4; ++number) {
            EXPECT_EQ(keyText(number).isEnabled(), wepKeys) << number;
            EXPECT_EQ(keyFormat(number).isEnabled(), wepKeys) << number;
            EXPECT_EQ(keyRadio(number).isEnabled(), wepKeys) << number;
        }
        EXPECT_EQ(field(u"WPAPreSharedKey"_qs).isEnabled(), presharedKey);
    }

    [[nodiscard]] ProfileList saved() const { return readDictionariesFile(recordsFile); }

    InitialSharedState initialState;
    QTemporaryDir folder;
    QString recordsFile { folder.filePath(u"Profile.plist"_qs) };
    MemoryUserDefaults prefs;
    ProfileStore store { prefs, recordsFile };
    ScriptedModalSheets sheets;
    RecordingAlertPanels alerts;
    ProfileEditorController editor { sheets, alerts, store };
};
