#include "platform/ui/SecretLineEdit.h"

#include "tests/platform/ui/TextEvents.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

using TextEvents::takeForwarded;

// Without an accessibility bus Qt sends no events, so these tests call the installed handler themselves.
class SecretLineEditTest : public testing::Test {
protected:
    static void SetUpTestSuite() { TextEvents::recordForwardedEvents(); }

    static QStringList forwardedFor(QAccessibleEvent& event)
    {
        TextEvents::installedHandler()(&event);
        return takeForwarded();
    }

    SecretLineEdit m_field;
};

TEST_F(SecretLineEditTest, IsMaskedFromTheStart)
{
    EXPECT_TRUE(m_field.isMasked());
    EXPECT_EQ(m_field.echoMode(), QLineEdit::Password);
    m_field.setMasked(false);
    EXPECT_FALSE(m_field.isMasked());
    EXPECT_EQ(m_field.echoMode(), QLineEdit::Normal);
}

TEST_F(SecretLineEditTest, EveryEchoModeThatHidesTextCountsAsMasked)
{
    m_field.setEchoMode(QLineEdit::NoEcho);
    EXPECT_TRUE(m_field.isMasked());
    m_field.setEchoMode(QLineEdit::PasswordEchoOnEdit);
    EXPECT_TRUE(m_field.isMasked());
}

TEST_F(SecretLineEditTest, MasksInsertedText)
{
    QAccessibleTextInsertEvent event(&m_field, 2, u"key"_qs);
    event.setCursorPosition(9);
    EXPECT_EQ(forwardedFor(event), QStringList { u"insert 2 ***, caret 9"_qs });
}

TEST_F(SecretLineEditTest, MasksRemovedText)
{
    QAccessibleTextRemoveEvent event(&m_field, 2, u"key"_qs);
    event.setCursorPosition(1);
    EXPECT_EQ(forwardedFor(event), QStringList { u"remove 2 ***, caret 1"_qs });
}

TEST_F(SecretLineEditTest, MasksReplacedTextOnBothSides)
{
    QAccessibleTextUpdateEvent event(&m_field, 0, u"old key"_qs, u"new"_qs);
    event.setCursorPosition(3);
    EXPECT_EQ(forwardedFor(event), QStringList { u"replace 0 ******* by ***, caret 3"_qs });
}

TEST_F(SecretLineEditTest, MasksEventsMadeForItsInterface)
{
    QAccessibleTextInsertEvent event(QAccessible::queryAccessibleInterface(&m_field), 0, u"key"_qs);
    EXPECT_EQ(forwardedFor(event), QStringList { u"insert 0 ***, caret 3"_qs });
}

TEST_F(SecretLineEditTest, ForwardsCaretMovesUnchanged)
{
    QAccessibleTextCursorEvent event(&m_field, 5);
    EXPECT_EQ(forwardedFor(event), QStringList { u"caret 5"_qs });
}

TEST_F(SecretLineEditTest, ForwardsTheTextOfAnUnmaskedField)
{
    m_field.setMasked(false);
    QAccessibleTextInsertEvent event(&m_field, 0, u"key"_qs);
    EXPECT_EQ(forwardedFor(event), QStringList { u"insert 0 key, caret 3"_qs });
    m_field.setMasked(true);
    EXPECT_EQ(forwardedFor(event), QStringList { u"insert 0 ***, caret 3"_qs });
}

TEST_F(SecretLineEditTest, LeavesOtherWidgetsAlone)
{
    QLineEdit other;
    other.setEchoMode(QLineEdit::Password);
    QAccessibleTextInsertEvent inserted(&other, 0, u"text"_qs);
    EXPECT_EQ(forwardedFor(inserted), QStringList { u"insert 0 text, caret 4"_qs });
    QAccessibleEvent renamed(&other, QAccessible::NameChanged);
    EXPECT_EQ(forwardedFor(renamed), QStringList { u"event 800c"_qs });
}

TEST_F(SecretLineEditTest, InstallsOneHandlerForAllFields)
{
    SecretLineEdit second;
    QAccessibleTextInsertEvent event(&second, 0, u"key"_qs);
    EXPECT_EQ(forwardedFor(event), QStringList { u"insert 0 ***, caret 3"_qs });
}

TEST_F(SecretLineEditTest, AnswersQueriesWithoutTheText)
{
    m_field.setAccessibleName(u"Key"_qs);
    m_field.setText(u"wall"_qs);
    const QAccessibleInterface& interface = *QAccessible::queryAccessibleInterface(&m_field);
    EXPECT_EQ(interface.role(), QAccessible::EditableText);
    EXPECT_TRUE(interface.state().passwordEdit);
    for (const QAccessible::Text text : { QAccessible::Description, QAccessible::Help, QAccessible::Accelerator })
        EXPECT_EQ(interface.text(text), QString());
    EXPECT_EQ(interface.text(QAccessible::Name), u"Key"_qs);
    EXPECT_EQ(interface.text(QAccessible::Value), u"****"_qs);
}

TEST_F(SecretLineEditTest, OffersATextInterfaceWithTheLengthOnly)
{
    m_field.setText(u"wall"_qs);
    m_field.setSelection(1, 2);
    QAccessibleTextInterface& text = *QAccessible::queryAccessibleInterface(&m_field)->textInterface();
    EXPECT_EQ(text.characterCount(), 4);
    EXPECT_EQ(text.cursorPosition(), 3);
    EXPECT_EQ(text.text(0, 4), QString());
    int start = 0;
    int end = 0;
    text.selection(0, &start, &end);
    EXPECT_EQ(std::pair(start, end), std::pair(1, 3));
    for (int boundary = QAccessible::CharBoundary; boundary <= QAccessible::NoBoundary; ++boundary) {
        const auto type = static_cast<QAccessible::TextBoundaryType>(boundary);
        EXPECT_EQ(text.textBeforeOffset(2, type, &start, &end), QString());
        EXPECT_EQ(text.textAtOffset(2, type, &start, &end), QString());
        EXPECT_EQ(text.textAfterOffset(2, type, &start, &end), QString());
    }
    // The width of a character would reveal it.
    EXPECT_EQ(text.characterRect(0).width(), text.characterRect(2).width());
}

TEST_F(SecretLineEditTest, ClearsTheTextAndTheUndoHistory)
{
    QTest::keyClicks(&m_field, u"typed"_qs);
    m_field.setMasked(false);
    ASSERT_TRUE(m_field.isUndoAvailable());
    m_field.clearSecret();
    EXPECT_EQ(m_field.text(), QString());
    EXPECT_FALSE(m_field.isUndoAvailable());
    m_field.undo();
    m_field.redo();
    EXPECT_EQ(m_field.text(), QString());
    EXPECT_FALSE(m_field.isMasked());
}

TEST_F(SecretLineEditTest, ClearingLeavesTheStringsOfCallersIntact)
{
    const QString callers = QString(8, u'k');
    m_field.setText(callers);
    m_field.clearSecret();
    EXPECT_EQ(callers, u"kkkkkkkk"_qs);
    m_field.setText(callers + u"!"_qs);
    const QString copy = m_field.text();
    m_field.clearSecret();
    EXPECT_EQ(copy, u"kkkkkkkk!"_qs);
}

TEST_F(SecretLineEditTest, ClearsALiteralThatLiesInReadOnlyMemory)
{
    m_field.setText(QStringLiteral("constant"));
    m_field.clearSecret();
    EXPECT_EQ(m_field.text(), QString());
    m_field.clearSecret(); // of an empty field
    EXPECT_EQ(m_field.text(), QString());
}

} // namespace
