#include "survey/ui/HiddenSSIDController.h"
#include "survey/ui/SheetReceivers.h"
#include "tests/support/ScriptedModalSheets.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class KeepingReceiver final : public HiddenSSIDReceiver {
public:
    void ReceiveHiddenSSID(const NetworkName& HiddenSSIDtext) override { received.push_back(HiddenSSIDtext.bytes()); }
    std::vector<QByteArray> received;
};

class HiddenSSIDTest : public testing::Test {
protected:
    HiddenSSIDTest()
    {
        text = sheet.findChild<QLineEdit*>(u"HiddenSSIDText"_qs);
        sheet.show();
    }

    void press(QDialogButtonBox::StandardButton button)
    {
        QTest::mouseClick(sheet.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    }

    ScriptedModalSheets sheets;
    KeepingReceiver receiver;
    HiddenSSIDController sheet { sheets, receiver };
    QLineEdit* text { nullptr };
};

TEST_F(HiddenSSIDTest, OkReturnsTheName)
{
    QTest::keyClicks(text, u"attic"_qs);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(receiver.received, (std::vector<QByteArray> { "attic" }));
    EXPECT_EQ(sheets.stops, (std::vector { 1 }));
}

TEST_F(HiddenSSIDTest, EmptyNameIsAccepted)
{
    press(QDialogButtonBox::Ok);
    EXPECT_EQ(receiver.received, (std::vector<QByteArray> { "" }));
    EXPECT_EQ(sheets.stops, (std::vector { 1 }));
}

TEST_F(HiddenSSIDTest, NameIsTruncatedTo32Bytes)
{
    text->setText(QString(40, u'x'));
    press(QDialogButtonBox::Ok);
    text->setText(QString(40, u'é'));
    press(QDialogButtonBox::Ok);
    ASSERT_EQ(receiver.received.size(), 2u);
    EXPECT_EQ(receiver.received[0], QByteArray(32, 'x'));
    EXPECT_EQ(receiver.received[1].size(), 32);
}

TEST_F(HiddenSSIDTest, MalformedBytesAreReturnedUnchanged)
{
    text->setText(u"Caf\uEFE9"_qs); // the text of the bytes 43 61 66 E9
    press(QDialogButtonBox::Ok);
    EXPECT_EQ(receiver.received, (std::vector<QByteArray> { "Caf\xE9" }));
}

TEST_F(HiddenSSIDTest, CancelReturnsNothing)
{
    QTest::keyClicks(text, u"attic"_qs);
    press(QDialogButtonBox::Cancel);
    EXPECT_TRUE(receiver.received.empty());
    EXPECT_EQ(sheets.stops, (std::vector { 0 }));
}

TEST_F(HiddenSSIDTest, FieldFitsANameOfMaximumLength)
{
    sheet.adjustSize();
    text->setText(QString(32, u'n'));
    text->home(false);
    const int before = text->inputMethodQuery(Qt::ImCursorRectangle).toRectF().toRect().left();
    text->end(false);
    const int shown = text->inputMethodQuery(Qt::ImCursorRectangle).toRectF().toRect().left() - before;
    EXPECT_GE(shown, text->fontMetrics().horizontalAdvance(text->text()) - 2);
}

} // namespace
