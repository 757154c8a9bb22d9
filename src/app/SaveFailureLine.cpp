#include "app/SaveFailureLine.h"

#include <QAccessibleWidget>
#include <QDir>

namespace {

// With invisible places to wrap a long path, which would otherwise widen the window.
QString wrappable(QString text)
{
    constexpr char16_t zeroWidthSpace = 0x200B;
    return text.replace(u'/', QString(u'/') + zeroWidthSpace);
}

// Screen readers announce an alert when it is shown.
QAccessibleInterface* accessibleAlert(const QString& className, QObject* object)
{
    if (className != QLatin1String("SaveFailureLine"))
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

SaveFailureLine::SaveFailureLine(QWidget* parent)
    : QLabel(parent)
{
    installAccessibleAlert();
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFocusPolicy(Qt::StrongFocus);
    hide();
}

void SaveFailureLine::saveFailed(const QString& path, const QString& reason)
{
    m_reasons[path] = reason;
    update();
}

void SaveFailureLine::saveSucceeded(const QString& path)
{
    if (m_reasons.erase(path) != 0)
        update();
}

void SaveFailureLine::update()
{
    QStringList sentences;
    for (const auto& [path, reason] : m_reasons)
        sentences.append(tr("Not saved: %1 (%2).").arg(QDir::toNativeSeparators(path), reason));
    if (!sentences.isEmpty())
        sentences.append(tr("The change is lost when Vantrel closes, unless it is saved again."));
    const QString message = sentences.join(u' ');
    if (message == accessibleName())
        return;
    hide(); // so that a changed message is announced as well
    setText(wrappable(message));
    setAccessibleName(message);
    setVisible(!message.isEmpty());
}
