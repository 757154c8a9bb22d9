#include "services/simulator/control/ControlPath.h"

#include <QStandardPaths>

QString defaultControlPath(const QString& instance)
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)
        + QStringLiteral("/pellvane-sim/%1.control").arg(instance);
}
