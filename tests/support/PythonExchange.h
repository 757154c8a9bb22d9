#pragma once

#include "platform/store/PropertyDictionary.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QString>

// Converts between property lists and JSON with Python's plistlib (exchange.py). In JSON, a dictionary is a list of
// [key, text] pairs.

inline QJsonArray jsonOf(const PropertyDictionary& dictionary)
{
    QJsonArray pairs;
    for (const auto& [key, text] : dictionary)
        pairs.append(QJsonArray { key, text });
    return pairs;
}

inline QJsonArray jsonOf(const PropertyDictionaries& list)
{
    QJsonArray array;
    for (const PropertyDictionary& dictionary : list)
        array.append(jsonOf(dictionary));
    return array;
}

inline PropertyDictionary dictionaryOf(const QJsonArray& pairs)
{
    PropertyDictionary dictionary;
    for (const auto& pair : pairs)
        dictionary.set(pair.toArray().at(0).toString(), pair.toArray().at(1).toString());
    return dictionary;
}

inline PropertyDictionaries dictionariesOfJson(const QJsonArray& array)
{
    PropertyDictionaries list;
    for (const auto& pairs : array)
        list.push_back(dictionaryOf(pairs.toArray()));
    return list;
}

inline bool writeJson(const QString& path, const QJsonArray& array)
{
    QFile file(path);
    const QByteArray bytes = QJsonDocument(array).toJson();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QJsonArray readJson(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array() : QJsonArray();
}

// Runs exchange.py; false on failure.
[[nodiscard]] bool exchange(const QString& direction, const QString& source, const QString& target);
