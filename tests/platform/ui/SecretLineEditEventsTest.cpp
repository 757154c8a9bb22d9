#include "platform/ui/SecretLineEdit.h"
#include "tests/platform/ui/TextEvents.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QTableWidget>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using TextEvents::takeForwarded;

QStringList sentByQt;
QAccessible::UpdateHandler handlerOfTheField = nullptr;

// Records what Qt sends, then passes it to the field's handler.
void recordAndPassOn(QAccessibleEvent* event)
{
    sentByQt.append(TextEvents::describe(event));
    handlerOfTheField(event);
}

// The events that Qt itself sends. Needs an accessibility bus.
class SecretLineEditEvents : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QTest::qWaitFor(&QAccessible::isActive)) << "no accessibility bus";
        TextEvents::recordForwardedEvents();
        m_field = std::make_unique<SecretLineEdit>();
        handlerOfTheField = QAccessible::installUpdateHandler(recordAndPassOn);
    }

    void TearDown() override
    {
        m_field.reset();
        if (handlerOfTheField)
            QAccessible::installUpdateHandler(std::exchange(handlerOfTheField, nullptr));
    }

    void startWith(const QString& text)
    {
        m_field->setText(text);
        sentByQt.clear();
        takeForwarded();
    }

    std::unique_ptr<SecretLineEdit> m_field;
};

TEST_F(SecretLineEditEvents, SetTextAnnouncesOnlyTheLength)
{
    m_field->setText(u"stored"_qs);
    EXPECT_TRUE(sentByQt.contains(u"insert 0 stored, caret 6"_qs)); // without masking this is what the bus receives
    EXPECT_EQ(takeForwarded(), QStringList({ u"caret 6"_qs, u"insert 0 ******, caret 6"_qs }));
}

TEST_F(SecretLineEditEvents, ReplacingTheTextAnnouncesBothLengths)
{
    startWith(u"stored"_qs);
    m_field->setText(u"other"_qs);
    EXPECT_EQ(takeForwarded(), QStringList({ u"caret 5"_qs, u"replace 0 ****** by *****, caret 5"_qs }));
    m_field->setText(QString());
    EXPECT_EQ(takeForwarded(), QStringList({ u"caret 0"_qs, u"remove 0 *****, caret 0"_qs }));
}

TEST_F(SecretLineEditEvents, TypingAnnouncesOneAsteriskPerCharacter)
{
    QTest::keyClicks(m_field.get(), u"ab"_qs);
    EXPECT_EQ(takeForwarded(),
        QStringList({ u"insert 0 *, caret 1"_qs, u"caret 1"_qs, u"insert 1 *, caret 2"_qs, u"caret 2"_qs }));
}

TEST_F(SecretLineEditEvents, TypingOverASelectionMasksTheOldText)
{
    startWith(u"stored"_qs);
    m_field->setSelection(1, 3);
    QTest::keyClicks(m_field.get(), u"Z"_qs);
    const QStringList events = takeForwarded();
    EXPECT_EQ(events.filter(u"remove"_qs).size(), 1);
    EXPECT_TRUE(events.filter(u"remove"_qs).first().startsWith(u"remove 1 ***,"_qs));
    EXPECT_EQ(events.filter(u"insert"_qs), QStringList { u"insert 1 *, caret 2"_qs });
    EXPECT_EQ(m_field->text(), u"sZed"_qs);
}

TEST_F(SecretLineEditEvents, DeletingAnnouncesOneAsteriskPerCharacter)
{
    startWith(u"stored"_qs);
    QTest::keyClick(m_field.get(), Qt::Key_Backspace);
    EXPECT_EQ(takeForwarded().filter(u"remove"_qs), QStringList { u"remove 5 *, caret 5"_qs });
    QTest::keyClick(m_field.get(), Qt::Key_Home);
    takeForwarded();
    QTest::keyClick(m_field.get(), Qt::Key_Delete);
    EXPECT_EQ(takeForwarded(), QStringList { u"remove 0 *, caret 0"_qs });
}

TEST_F(SecretLineEditEvents, UndoMasksTheRemovedText)
{
    QTest::keyClicks(m_field.get(), u"typed"_qs);
    takeForwarded();
    m_field->undo();
    const QStringList removed = takeForwarded().filter(u"remove"_qs);
    ASSERT_EQ(removed.size(), 1);
    EXPECT_TRUE(removed.first().startsWith(u"remove 0 *****,"_qs));
}

TEST_F(SecretLineEditEvents, PasteAnnouncesOnlyTheLength)
{
    QGuiApplication::clipboard()->setText(u"pasted"_qs);
    m_field->paste();
    EXPECT_EQ(takeForwarded(), QStringList({ u"insert 0 ******, caret 6"_qs, u"caret 6"_qs }));
}

TEST_F(SecretLineEditEvents, InputMethodsAnnounceOnlyTheLength)
{
    QInputMethodEvent event;
    event.setCommitString(u"im"_qs);
    QCoreApplication::sendEvent(m_field.get(), &event);
    EXPECT_EQ(takeForwarded(), QStringList({ u"insert 0 **, caret 2"_qs, u"caret 2"_qs }));
}

TEST_F(SecretLineEditEvents, UnmaskedFieldsAnnounceTheirText)
{
    startWith(u"stored"_qs);
    m_field->setMasked(false);
    EXPECT_EQ(takeForwarded(), QStringList());
    QTest::keyClicks(m_field.get(), u"Z"_qs);
    EXPECT_EQ(takeForwarded(), QStringList({ u"insert 6 Z, caret 7"_qs, u"caret 7"_qs }));
    m_field->setMasked(true);
    QTest::keyClicks(m_field.get(), u"Y"_qs);
    EXPECT_EQ(takeForwarded(), QStringList({ u"insert 7 *, caret 8"_qs, u"caret 8"_qs }));
}

// Qt's own event about the removed text shows what the field's buffer held in the end.
TEST_F(SecretLineEditEvents, ClearSecretOverwritesTheBufferOfTheField)
{
    startWith(QString(6, u'k'));
    m_field->clearSecret();
    EXPECT_TRUE(sentByQt.contains(u"remove 0 ******, caret 0"_qs)) << sentByQt.join(u'\n').toStdString();
    EXPECT_EQ(takeForwarded(), QStringList({ u"caret 0"_qs, u"remove 0 ******, caret 0"_qs }));
}

TEST_F(SecretLineEditEvents, ClearSecretMasksATextThatACallerShares)
{
    const QString callers(6, u'k');
    startWith(callers);
    m_field->setMasked(false);
    m_field->clearSecret();
    EXPECT_TRUE(sentByQt.contains(u"remove 0 kkkkkk, caret 0"_qs)) << sentByQt.join(u'\n').toStdString();
    EXPECT_EQ(takeForwarded(), QStringList({ u"caret 0"_qs, u"remove 0 ******, caret 0"_qs }));
}

// For a process of its own, in which no test has recorded the forwarded events: without another handler they go through
// Qt a second time, which applies model changes to a table twice.
TEST(SecretLineEditWithoutOtherHandlers, LeavesTheRowsOfTablesIntact)
{
    ASSERT_TRUE(QTest::qWaitFor(&QAccessible::isActive)) << "no accessibility bus";
    ASSERT_EQ(TextEvents::installedHandler(), nullptr);
    const SecretLineEdit field;
    QTableWidget table(3, 1);
    for (int row = 0; row < 3; ++row)
        table.setItem(row, 0, new QTableWidgetItem(QString::number(row)));
    QAccessibleTableInterface& cells = *QAccessible::queryAccessibleInterface(&table)->tableInterface();
    const auto name = [&cells](int row) { return cells.cellAt(row, 0)->text(QAccessible::Name); };
    const auto id = [&cells](int row) { return QAccessible::uniqueId(cells.cellAt(row, 0)); };
    const std::vector<QAccessible::Id> ids { id(0), id(1), id(2) };
    table.removeRow(0);
    EXPECT_EQ((std::vector { id(0), id(1) }), (std::vector { ids[1], ids[2] }));
    table.insertRow(1);
    EXPECT_EQ((std::vector { id(0), id(2) }), (std::vector { ids[1], ids[2] }));
    EXPECT_EQ(name(0), u"1"_qs);
    EXPECT_EQ(name(2), u"2"_qs);
}

} // namespace
