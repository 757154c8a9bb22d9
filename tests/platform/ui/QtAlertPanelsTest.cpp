#include "platform/ui/QtAlertPanels.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

// Shows a panel and inspects it; inspect must dismiss it.
template <typename Inspect> void runPanel(const QString& title, const QString& message, Inspect inspect)
{
    int inspected = 0;
    QTimer::singleShot(0, qApp, [&] {
        auto* const panel = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(panel, nullptr);
        ++inspected;
        inspect(*panel);
    });
    QtAlertPanels().NSRunAlertPanel(title, message, u"OK"_qs);
    EXPECT_EQ(inspected, 1);
}

TEST(QtAlertPanels, ShowsTitleMessageAndButton)
{
    runPanel(u"Device not exist."_qs, u"Please insert your Network Card."_qs, [](QMessageBox& panel) {
        EXPECT_EQ(panel.text(), u"Device not exist."_qs);
        EXPECT_EQ(panel.informativeText(), u"Please insert your Network Card."_qs);
        EXPECT_EQ(panel.windowModality(), Qt::ApplicationModal);
        EXPECT_EQ(panel.textFormat(), Qt::PlainText);
        ASSERT_EQ(panel.buttons().size(), 1);
        EXPECT_EQ(panel.buttons().first()->text(), u"OK"_qs);
        QTest::mouseClick(panel.buttons().first(), Qt::LeftButton);
    });
}

TEST(QtAlertPanels, ShowsTitleWithoutMessage)
{
    runPanel(u"WPA-Enterprise isn't supported yet!!!"_qs, QString(), [](QMessageBox& panel) {
        EXPECT_EQ(panel.informativeText(), QString());
        QTest::keyClick(&panel, Qt::Key_Return);
    });
}

TEST(QtAlertPanels, ShortTitleDoesNotNarrowALongMessage)
{
    const QString message = QString(u"The card did not accept the settings of this profile. "_qs).repeated(3);
    runPanel(u"Error"_qs, message, [](QMessageBox& panel) {
        const auto* const label = panel.findChild<QLabel*>(u"qt_msgbox_informativelabel"_qs);
        ASSERT_NE(label, nullptr);
        EXPECT_GE(label->width(), label->fontMetrics().averageCharWidth() * 60);
        EXPECT_GE(label->height(), label->heightForWidth(label->width())) << "no line is cut off";
        EXPECT_LE(panel.width(), 640);
        QTest::keyClick(&panel, Qt::Key_Escape);
    });
}

TEST(QtAlertPanels, LongTitleIsNotCutOff)
{
    const QString title = u"Encryption type is incorrect, please re-select the correct Encryption type."_qs;
    const QFont before = QApplication::font();
    for (const int size : { 6, 9, 12 }) { // whether the box wraps a title depends on its width and on the screen
        QFont font = before;
        font.setPixelSize(size);
        QApplication::setFont(font);
        runPanel(title, QString(), [](QMessageBox& panel) {
            const auto* const label = panel.findChild<QLabel*>(u"qt_msgbox_label"_qs);
            ASSERT_NE(label, nullptr);
            EXPECT_TRUE(label->wordWrap() || label->width() >= label->sizeHint().width());
            EXPECT_GE(label->height(), label->heightForWidth(label->width()));
            EXPECT_LE(panel.width(), 640);
            QTest::keyClick(&panel, Qt::Key_Escape);
        });
    }
    QApplication::setFont(before);
}

TEST(QtAlertPanels, EscapeDismissesPanel)
{
    runPanel(u"a"_qs, u"b"_qs, [](QMessageBox& panel) { QTest::keyClick(&panel, Qt::Key_Escape); });
}

TEST(QtAlertPanels, ParentIsVisibleWindow)
{
    QWidget window;
    window.show();
    runPanel(u"a"_qs, QString(), [&window](QMessageBox& panel) {
        EXPECT_EQ(panel.parentWidget(), &window);
        QTest::keyClick(&panel, Qt::Key_Escape);
    });
}

} // namespace
