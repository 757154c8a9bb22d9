// The two sheets in real modal runs.

#include "platform/ui/QtModalSheets.h"
#include "platform/ui/TableView.h"
#include "survey/connection/ProfileData.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/survey/SurveyFixture.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

namespace {

class RealSheetsTest : public SurveyFixture {
protected:
    RealSheetsTest()
    {
        page.awakeFromNib();
        page.resize(900, 500);
        page.show();
    }

    // Connects to the network and handles each sheet that opens.
    void connectTo(const EntryBuilder& entry, const std::function<void(QDialog&)>& user)
    {
        haveList({ entry });
        page.RefreshAPList();
        page.findChild<TableView*>(u"ApList"_qs)->selectRowNumber(0);
        QTimer::singleShot(0, &page, [this, user] {
            auto* const sheet = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(sheet, nullptr);
            opened.push_back(sheet->objectName());
            user(*sheet);
            EXPECT_FALSE(sheet->isVisible());
            if (sheet->isVisible()) // an open sheet would block the test
                sheet->done(sheetCancelled);
        });
        QTest::mouseClick(page.findChild<QPushButton*>(u"Connect"_qs), Qt::LeftButton);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }

    ManualRunLoop runLoop;
    RecordingAssertionHandler assertions;
    QtModalSheets sheets;
    SiteSurveyPageController page { adapter, runLoop, assertions, alerts, sheets };
    std::vector<QString> opened;
};

EntryBuilder wepNetwork()
{
    EntryBuilder entry("wep");
    entry.fixedPart.Privacy = 1;
    return entry;
}

// Sends the key to the focus widget.
void pressEscape(QDialog& sheet)
{
    ASSERT_NE(sheet.focusWidget(), nullptr);
    QTest::keyClick(sheet.focusWidget(), Qt::Key_Escape);
}

TEST_F(RealSheetsTest, EscapeCancelsTheSecuritySheet)
{
    connectTo(wepNetwork(), [](QDialog& sheet) {
        QTest::keyClicks(sheet.findChild<QLineEdit*>(u"WEPKey1Text"_qs), u"0123456789"_qs);
        pressEscape(sheet);
    });
    EXPECT_EQ(opened, (std::vector { u"WEPSettingWindow"_qs }));
    EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
    EXPECT_TRUE(alerts.alerts.empty());
}

TEST_F(RealSheetsTest, EscapeCancelsTheHiddenNameSheet)
{
    connectTo(EntryBuilder(""), [](QDialog& sheet) {
        QTest::keyClicks(sheet.findChild<QLineEdit*>(u"HiddenSSIDText"_qs), u"attic"_qs);
        pressEscape(sheet);
    });
    EXPECT_EQ(opened, (std::vector { u"HiddenSSIDWindow"_qs }));
    EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
}

TEST_F(RealSheetsTest, ClosingTheSecuritySheetCancelsIt)
{
    connectTo(wepNetwork(), [](QDialog& sheet) { sheet.close(); });
    EXPECT_EQ(opened.size(), 1U);
    EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
}

TEST_F(RealSheetsTest, CancelledSheetOpensAgainAndReturnAccepts)
{
    connectTo(wepNetwork(), pressEscape);
    connectTo(wepNetwork(), [](QDialog& sheet) {
        QTest::keyClicks(sheet.findChild<QLineEdit*>(u"WEPKey1Text"_qs), u"0123456789"_qs);
        QTest::keyClick(sheet.focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(opened.size(), 2U);
    ASSERT_NE(TaskQueue::GetTaskObject(), nullptr);
    EXPECT_EQ(TaskQueue::GetTaskObject()->Profile()->pWepKey[0].size(), 44U);
}

} // namespace
