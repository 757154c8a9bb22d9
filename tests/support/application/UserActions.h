#pragma once

#include "platform/ui/ComboBox.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTest>

// A user's actions on the pages and sheets.

// Selects every tab of the window that contains the control.
inline void bringToFront(QWidget& control)
{
    for (QWidget* page = &control; !page->isWindow(); page = page->parentWidget()) {
        auto* const stack = qobject_cast<QStackedWidget*>(page->parentWidget());
        if (auto* const tabs = stack ? qobject_cast<QTabWidget*>(stack->parentWidget()) : nullptr)
            tabs->setCurrentWidget(page);
    }
}

inline void press(QWidget& page, const QString& button)
{
    bringToFront(page);
    QTest::mouseClick(page.findChild<QPushButton*>(button), Qt::LeftButton);
}

inline void pressOk(QDialog& sheet)
{
    QTest::mouseClick(sheet.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

inline void type(QLineEdit& field, const QString& text)
{
    bringToFront(field);
    field.clear();
    QTest::keyClicks(&field, text);
}

inline void typeSsid(QDialog& editor, const QString& ssid)
{
    type(*editor.findChild<ComboBox*>(u"SSID"_qs)->lineEdit(), ssid);
}

inline void typePresharedKey(QDialog& sheet, const QString& text)
{
    type(*sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs), text);
}

inline void choose(QDialog& sheet, const QString& name, int index)
{
    auto* const combo = sheet.findChild<ComboBox*>(name);
    bringToFront(*combo);
    combo->setFocus();
    while (combo->indexOfSelectedItem() < index)
        QTest::keyClick(combo, Qt::Key_Down);
    while (combo->indexOfSelectedItem() > index)
        QTest::keyClick(combo, Qt::Key_Up);
}
