#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

// The bytes of a file. "cannot be read" for a file that is missing or cannot be opened, to tell it from an empty one.
inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}
