#pragma once

#include "platform/ui/ComboBox.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

// The hands of somebody who works the pages and the profile editor.

inline void press(QWidget& page, const QString& button)
{
    QTest::mouseClick(page.findChild<QPushButton*>(button), Qt::LeftButton);
}

inline void pressOk(QDialog& sheet)
{
    QTest::mouseClick(sheet.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

inline void bringToFront(QDialog& editor, QWidget& control)
{
    auto* const tabs = editor.findChild<QTabWidget*>(u"TabView"_qs);
    for (int index = 0; index < tabs->count(); ++index) {
        if (tabs->widget(index)->isAncestorOf(&control))
            tabs->setCurrentIndex(index);
    }
}

inline void type(QDialog& editor, QLineEdit& field, const QString& text)
{
    bringToFront(editor, field);
    field.clear();
    QTest::keyClicks(&field, text);
}

inline void typeSsid(QDialog& editor, const QString& ssid)
{
    type(editor, *editor.findChild<ComboBox*>(u"SSID"_qs)->lineEdit(), ssid);
}

inline void typePresharedKey(QDialog& editor, const QString& text)
{
    type(editor, *editor.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs), text);
}

inline void choose(QDialog& editor, const QString& name, int index)
{
    auto* const combo = editor.findChild<ComboBox*>(name);
    bringToFront(editor, *combo);
    combo->setFocus();
    while (combo->indexOfSelectedItem() < index)
        QTest::keyClick(combo, Qt::Key_Down);
    while (combo->indexOfSelectedItem() > index)
        QTest::keyClick(combo, Qt::Key_Up);
}
