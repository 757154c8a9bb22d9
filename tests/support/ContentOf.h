#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

// The bytes of a file; "cannot be read" where it is missing or cannot be opened, which is not what an empty one gives.
inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}
