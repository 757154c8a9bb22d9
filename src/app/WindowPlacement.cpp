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

bool restoreWindowPlacement(const QSettings& defaults, QWidget& window)
{
    return window.restoreGeometry(defaults.value(keyOf(window)).toByteArray());
}

void saveWindowPlacement(QSettings& defaults, const QWidget& window)
{
    defaults.setValue(keyOf(window), window.saveGeometry());
    defaults.sync();
    (void)QFile::setPermissions(defaults.fileName(), QFile::ReadOwner | QFile::WriteOwner);
}
