#include "app/WindowPlacement.h"

#include <QFile>
#include <QSettings>
#include <QWidget>

namespace {

QString keyOf(const QWidget& window)
{
    return QStringLiteral("%1/geometry").arg(window.objectName());
}

} // namespace

bool restoreWindowPlacement(const QSettings& settings, QWidget& window)
{
    return window.restoreGeometry(settings.value(keyOf(window)).toByteArray());
}

void saveWindowPlacement(QSettings& settings, const QWidget& window)
{
    settings.setValue(keyOf(window), window.saveGeometry());
    settings.sync();
    (void)QFile::setPermissions(settings.fileName(), QFile::ReadOwner | QFile::WriteOwner);
}
