#include "platform/ui/QtModalSheets.h"

#include "platform/ui/QtRunLoop.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

class QtModalSheetsTest : public testing::Test {
protected:
    QtModalSheetsTest() { window.show(); }

    // Runs the action once the sheet is shown.
    template <typename Action> void whenShown(Action action)
    {
        QTimer::singleShot(0, &sheet, [this, action] {
            EXPECT_TRUE(sheet.isVisible());
            action();
        });
    }

    QWidget window;
    QDialog sheet { &window };
    QtModalSheets sheets;
};

TEST_F(QtModalSheetsTest, ReturnsStopCode)
{
    whenShown([this] { sheets.stopModalWithCode(sheetAccepted); });
    EXPECT_EQ(sheets.runModalForWindow(sheet, window), 1);
    EXPECT_FALSE(sheet.isVisible());
    whenShown([this] { sheets.stopModalWithCode(7); });
    EXPECT_EQ(sheets.runModalForWindow(sheet, window), 7);
}

TEST_F(QtModalSheetsTest, BlocksOnlyItsWindow)
{
    whenShown([this] {
        EXPECT_EQ(sheet.windowModality(), Qt::WindowModal);
        EXPECT_EQ(sheet.parentWidget(), &window);
        sheets.stopModalWithCode(sheetCancelled);
    });
    EXPECT_EQ(sheets.runModalForWindow(sheet, window), 0);
}

TEST_F(QtModalSheetsTest, CancelsOnEscape)
{
    whenShown([this] { QTest::keyClick(&sheet, Qt::Key_Escape); });
    EXPECT_EQ(sheets.runModalForWindow(sheet, window), sheetCancelled);
}

TEST_F(QtModalSheetsTest, ClicksCancelButtonOnEscapeAndClose)
{
    auto* const layout = new QVBoxLayout(&sheet);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &sheet);
    layout->addWidget(buttons);
    int pressed = 0;
    QObject::connect(buttons->button(QDialogButtonBox::Cancel), &QPushButton::clicked, &sheet, [this, &pressed] {
        ++pressed;
        sheets.stopModalWithCode(sheetCancelled);
    });
    whenShown([this] { QTest::keyClick(&sheet, Qt::Key_Escape); });
    EXPECT_EQ(sheets.runModalForWindow(sheet, window), sheetCancelled);
    EXPECT_EQ(pressed, 1);
    whenShown([this] { sheet.close(); });
    EXPECT_EQ(sheets.runModalForWindow(sheet, window), sheetCancelled);
    EXPECT_EQ(pressed, 2);
}

TEST_F(QtModalSheetsTest, TimersFireWhileSheetRuns)
{
    QtRunLoop runLoop;
    int fired = 0;
    const auto timer = runLoop.scheduleRepeatingTimer(std::chrono::milliseconds(1), [this, &fired] {
        if (++fired == 3)
            sheets.stopModalWithCode(sheetAccepted);
    });
    EXPECT_EQ(sheets.runModalForWindow(sheet, window), sheetAccepted);
    EXPECT_EQ(fired, 3);
}

TEST_F(QtModalSheetsTest, StopsInnermostSheetFirst)
{
    QDialog inner(&window);
    whenShown([this, &inner] {
        QTimer::singleShot(0, &inner, [this] { sheets.stopModalWithCode(5); });
        EXPECT_EQ(sheets.runModalForWindow(inner, sheet), 5);
        EXPECT_TRUE(sheet.isVisible());
        sheets.stopModalWithCode(6);
    });
    EXPECT_EQ(sheets.runModalForWindow(sheet, window), 6);
}

TEST_F(QtModalSheetsTest, StopWithoutSheetIsNoOp)
{
    sheets.stopModalWithCode(1);
    whenShown([this] { sheets.stopModalWithCode(0); });
    EXPECT_EQ(sheets.runModalForWindow(sheet, window), 0);
}

} // namespace
