#pragma once

#include "platform/store/PropertyDictionary.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <cstddef>
#include <optional>
#include <variant>
#include <vector>

// XML property lists, version 1.0: a tree of values under one root.

struct PropertyValue;
struct PropertyEntry;
using PropertyArray = std::vector<PropertyValue>;
using PropertyTree = std::vector<PropertyEntry>; // a dictionary in the file's order; no key twice

// One value: string, true or false, integer, real, date (UTC, whole seconds), data, array, dict.
struct PropertyValue {
    std::variant<QString, bool, qint64, double, QDateTime, QByteArray, PropertyArray, PropertyTree> content;

    [[nodiscard]] const QString* text() const { return std::get_if<QString>(&content); }
    [[nodiscard]] const PropertyArray* array() const { return std::get_if<PropertyArray>(&content); }
    [[nodiscard]] const PropertyTree* tree() const { return std::get_if<PropertyTree>(&content); }
    // The value of a key; null when this is no dictionary and when it has no such key.
    [[nodiscard]] const PropertyValue* valueOf(QStringView key) const;
};

struct PropertyEntry {
    QString key;
    PropertyValue value;
};

bool operator==(const PropertyValue& left, const PropertyValue& right);
bool operator==(const PropertyEntry& left, const PropertyEntry& right);

inline constexpr qsizetype propertyListSizeLimit = qsizetype { 16 } * 1024 * 1024; // bytes
inline constexpr int propertyListDepthLimit = 64; // arrays and dictionaries within one another

// Nothing for anything that is not a whole and valid property list: also for one beyond the limits, one that declares
// entities, one with a key twice in a dictionary, and one with something behind its end. Comments are passed over.
[[nodiscard]] std::optional<PropertyValue> readPropertyList(const QByteArray& bytes);

// UTF-8, indented by tabs. Texts that XML cannot carry as they are go through carriableText, and readPropertyList
// gives them back; other readers see them as they are written. A value nested beyond the depth limit gives no bytes.
[[nodiscard]] QByteArray writePropertyList(const PropertyValue& root);

// A list of dictionaries of texts, which is the form of every file of settings. One that was written by hand may have
// numbers, which are taken as their decimal text, and true and false, which are 1 and 0. A key with anything else
// (date, data, array, dict) is left out. Nothing where the root is no array or where it holds anything but
// dictionaries.
[[nodiscard]] std::optional<PropertyDictionaries> dictionariesOf(const PropertyValue& root);
// Whether dictionariesOf gives such a list, and leaves nothing out.
[[nodiscard]] bool areDictionariesOfTexts(const PropertyValue& root);
[[nodiscard]] PropertyValue propertyValueOf(const PropertyDictionaries& dictionaries);
