#include "app/SaveFailureLine.h"

#include <QDir>

namespace {

// With invisible places to wrap a long path, which would otherwise widen the window.
QString wrappable(QString text)
{
    constexpr char16_t zeroWidthSpace = 0x200B;
    return text.replace(u'/', QString(u'/') + zeroWidthSpace);
}

} // namespace

SaveFailureLine::SaveFailureLine(QWidget* parent)
    : AnnouncedLine(parent)
{
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFocusPolicy(Qt::StrongFocus);
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
    announce(message, wrappable(message));
}
