#include "platform/ui/AnnouncedLine.h"

#include <QAccessibleWidget>

#include <algorithm>

namespace {

// Screen readers announce an alert when it is shown.
QAccessibleInterface* accessibleAlert(const QString& className, QObject* object)
{
    if (className != QLatin1String("AnnouncedLine"))
        return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::AlertMessage);
}

void installAccessibleAlert()
{
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(accessibleAlert);
        return true;
    }();
}

} // namespace

AnnouncedLine::AnnouncedLine(QWidget* parent)
    : QLabel(parent)
{
    installAccessibleAlert();
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    hide();
}

void AnnouncedLine::announce(const QString& message, const QString& displayText)
{
    if (message == accessibleName())
        return;
    hide(); // so that a changed message is announced as well
    setText(displayText.isEmpty() ? message : displayText);
    setAccessibleName(message);
    setVisible(!message.isEmpty());
}

void AnnouncedLine::reserveRoomFor(const QString& text)
{
    m_reservedText = text;
    QSizePolicy policy = sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    updateGeometry();
}

int AnnouncedLine::heightForWidth(int width) const
{
    constexpr int unlimited = 1 << 20;
    const QRect room(0, 0, width - 2 * margin(), unlimited);
    const int reserved = m_reservedText.isEmpty()
        ? 0
        : fontMetrics().boundingRect(room, Qt::TextWordWrap, m_reservedText).height() + 2 * margin();
    return std::max(QLabel::heightForWidth(width), reserved);
}
