#include "platform/ui/SecretLineEdit.h"

#include <QAccessible>

#include <algorithm>

namespace {

constexpr char16_t maskCharacter = u'*'; // as in the value that Qt reports for a masked line edit

QAccessible::UpdateHandler previousHandler = nullptr;

void forward(QAccessibleEvent& event)
{
    if (previousHandler) {
        previousHandler(&event);
        return;
    }
    // Qt passes an event to the platform only if no handler is installed; there is no other public way. As a result a
    // table's interface gets each model change twice, which is harmless: it rebuilds its cells from the model.
    const QAccessible::UpdateHandler current = QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(&event);
    QAccessible::installUpdateHandler(current);
}

QString mask(const QString& text)
{
    return QString(text.size(), maskCharacter);
}

// Constructors of text events assume a caret position; the original event has the actual one.
void forwardWithCaret(QAccessibleTextCursorEvent& maskedEvent, const QAccessibleTextCursorEvent& original)
{
    maskedEvent.setCursorPosition(original.cursorPosition());
    forward(maskedEvent);
}

void forwardMasked(QObject* field, const QAccessibleTextInsertEvent& event)
{
    QAccessibleTextInsertEvent maskedEvent(field, event.changePosition(), mask(event.textInserted()));
    forwardWithCaret(maskedEvent, event);
}

void forwardMasked(QObject* field, const QAccessibleTextRemoveEvent& event)
{
    QAccessibleTextRemoveEvent maskedEvent(field, event.changePosition(), mask(event.textRemoved()));
    forwardWithCaret(maskedEvent, event);
}

void forwardMasked(QObject* field, const QAccessibleTextUpdateEvent& event)
{
    QAccessibleTextUpdateEvent maskedEvent(
        field, event.changePosition(), mask(event.textRemoved()), mask(event.textInserted()));
    forwardWithCaret(maskedEvent, event);
}

// Null if the event comes from any other widget or from an unmasked field.
SecretLineEdit* maskedField(const QAccessibleEvent& event)
{
    QObject* object = event.object();
    if (!object) { // the event was made for an interface
        const QAccessibleInterface* interface = event.accessibleInterface();
        object = interface ? interface->object() : nullptr;
    }
    auto* field = qobject_cast<SecretLineEdit*>(object);
    return field && field->isMasked() ? field : nullptr;
}

void handleUpdate(QAccessibleEvent* event)
{
    switch (event->type()) {
    case QAccessible::TextInserted:
        if (QObject* field = maskedField(*event))
            return forwardMasked(field, *static_cast<QAccessibleTextInsertEvent*>(event));
        break;
    case QAccessible::TextRemoved:
        if (QObject* field = maskedField(*event))
            return forwardMasked(field, *static_cast<QAccessibleTextRemoveEvent*>(event));
        break;
    case QAccessible::TextUpdated:
        if (QObject* field = maskedField(*event))
            return forwardMasked(field, *static_cast<QAccessibleTextUpdateEvent*>(event));
        break;
    default:
        break;
    }
    forward(*event);
}

void installUpdateHandlerOnce()
{
    static const bool installed = [] {
        previousHandler = QAccessible::installUpdateHandler(handleUpdate);
        return true;
    }();
    Q_UNUSED(installed)
}

// Overwrites the characters if `text` and the field are the only strings that share them. A literal has no header and
// may lie in read-only memory.
void overwriteUnlessShared(QString text)
{
    constexpr int fieldAndText = 2;
    const auto* header = text.data_ptr().d_ptr();
    if (!header || header->ref_.loadRelaxed() != fieldAndText)
        return;
    // Not through data(), which would detach. Volatile, because a compiler may drop stores that nothing reads.
    auto* characters = static_cast<volatile char16_t*>(text.data_ptr().data());
    std::fill_n(characters, text.size(), maskCharacter);
}

} // namespace

SecretLineEdit::SecretLineEdit(QWidget* parent)
    : QLineEdit(parent)
{
    installUpdateHandlerOnce();
    setMasked(true);
}

void SecretLineEdit::setMasked(bool masked)
{
    setEchoMode(masked ? Password : Normal);
}

bool SecretLineEdit::isMasked() const
{
    return echoMode() != Normal;
}

void SecretLineEdit::clearSecret()
{
    overwriteUnlessShared(text());
    // A shared text was not overwritten. Mask it while Qt announces its removal.
    const EchoMode mode = echoMode();
    setEchoMode(Password);
    setText({});
    setEchoMode(mode);
}
