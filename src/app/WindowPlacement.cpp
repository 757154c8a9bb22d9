#include "app/WindowPlacement.h"

#include "platform/store/WindowSettings.h"

#include <QWidget>

namespace {

QString keyOf(const QWidget& window)
{
    return QStringLiteral("%1/geometry").arg(window.objectName());
}

} // namespace

bool restoreWindowPlacement(const WindowSettings& settings, QWidget& window)
{
    return window.restoreGeometry(QByteArray::fromBase64(settings.text(keyOf(window)).toLatin1()));
}

void saveWindowPlacement(WindowSettings& settings, const QWidget& window)
{
    settings.setText(keyOf(window), QString::fromLatin1(window.saveGeometry().toBase64()));
    (void)settings.save();
}
