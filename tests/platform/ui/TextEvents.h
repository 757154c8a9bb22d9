#pragma once

#include <QAccessible>
#include <QStringList>

// Accessibility events as short texts, for example "insert 0 abc, caret 3".
namespace TextEvents {

inline QString describeCaret(const QAccessibleTextCursorEvent& event)
{
    return QStringLiteral(", caret %1").arg(event.cursorPosition());
}

inline QString describe(QAccessibleEvent* event)
{
    switch (event->type()) {
    case QAccessible::TextInserted: {
        const auto& insert = *static_cast<QAccessibleTextInsertEvent*>(event);
        return QStringLiteral("insert %1 ").arg(insert.changePosition()) + insert.textInserted()
            + describeCaret(insert);
    }
    case QAccessible::TextRemoved: {
        const auto& remove = *static_cast<QAccessibleTextRemoveEvent*>(event);
        return QStringLiteral("remove %1 ").arg(remove.changePosition()) + remove.textRemoved() + describeCaret(remove);
    }
    case QAccessible::TextUpdated: {
        const auto& update = *static_cast<QAccessibleTextUpdateEvent*>(event);
        return QStringLiteral("replace %1 ").arg(update.changePosition()) + update.textRemoved()
            + QStringLiteral(" by ") + update.textInserted() + describeCaret(update);
    }
    case QAccessible::TextCaretMoved:
        return QStringLiteral("caret %1").arg(static_cast<QAccessibleTextCursorEvent*>(event)->cursorPosition());
    default:
        return QStringLiteral("event %1").arg(int { event->type() }, 0, 16);
    }
}

// Returns the handler that QAccessible calls at present.
inline QAccessible::UpdateHandler installedHandler()
{
    const QAccessible::UpdateHandler handler = QAccessible::installUpdateHandler(nullptr);
    QAccessible::installUpdateHandler(handler);
    return handler;
}

// The events that SecretLineEdit passes on. Call recordForwardedEvents() before the first field is created.
inline QStringList forwarded;

inline void recordForwardedEvents()
{
    static const bool installed = [] {
        QAccessible::installUpdateHandler([](QAccessibleEvent* event) { forwarded.append(describe(event)); });
        return true;
    }();
    Q_UNUSED(installed)
    forwarded.clear();
}

inline QStringList takeForwarded()
{
    return std::exchange(forwarded, {});
}

} // namespace TextEvents
