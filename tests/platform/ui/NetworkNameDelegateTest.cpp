#include "platform/ui/NetworkNameDelegate.h"

#include "platform/ByteText.h"

#include <QLineEdit>
#include <QPainter>
#include <QStandardItemModel>
#include <gtest/gtest.h>

#include <memory>

namespace {

class NetworkNameDelegateTest : public testing::Test {
protected:
    // The pixels of a cell that holds this text, drawn by a delegate.
    static QImage painted(const QStyledItemDelegate& delegate, const QString& text)
    {
        QStandardItemModel model;
        model.appendRow(new QStandardItem(text));
        QImage image(200, 24, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.rect = image.rect();
        option.state = QStyle::State_Enabled | QStyle::State_Active;
        delegate.paint(&painter, option, model.index(0, 0));
        return image;
    }

    const QString withRawBytes = textFromBytes(QByteArrayView("caf\xE9\x01", 5));
    NetworkNameDelegate delegate { u"(none)"_qs, nullptr };
    QStyledItemDelegate plain;
};

TEST_F(NetworkNameDelegateTest, ShowsOrdinaryNamesAsTheyAre)
{
    EXPECT_EQ(painted(delegate, u"Harbour Cafe"_qs), painted(plain, u"Harbour Cafe"_qs));
}

TEST_F(NetworkNameDelegateTest, ShowsAReplacementForEachByteThatHasNoCharacter)
{
    EXPECT_EQ(painted(delegate, withRawBytes), painted(plain, u"caf\uFFFD\uFFFD"_qs));
    EXPECT_NE(painted(delegate, withRawBytes), painted(plain, withRawBytes));
}

TEST_F(NetworkNameDelegateTest, ShowsAWordForNoNameThatStandsOutFromTheSameName)
{
    EXPECT_NE(painted(delegate, QString()), painted(plain, QString()));
    EXPECT_NE(painted(delegate, QString()), painted(delegate, u"(none)"_qs));
    const NetworkNameDelegate wordless(QString(), nullptr);
    EXPECT_EQ(painted(wordless, QString()), painted(plain, QString()));
}

TEST_F(NetworkNameDelegateTest, EditsTheNameItself)
{
    QStandardItemModel model;
    model.appendRow(new QStandardItem(withRawBytes));
    QWidget window;
    const std::unique_ptr<QWidget> editor(delegate.createEditor(&window, {}, model.index(0, 0)));
    delegate.setEditorData(editor.get(), model.index(0, 0));
    ASSERT_NE(qobject_cast<QLineEdit*>(editor.get()), nullptr);
    EXPECT_EQ(qobject_cast<QLineEdit*>(editor.get())->text(), withRawBytes);
}

} // namespace
