#pragma once

#include "platform/store/PropertyDictionary.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <cstddef>
#include <optional>
#include <variant>
#include <vector>

// XML property lists, version 1.0: a tree of values.

struct PropertyValue;
struct PropertyEntry;
using PropertyArray = std::vector<PropertyValue>;
using PropertyTree = std::vector<PropertyEntry>; // a dictionary, in the order of the file; keys are unique

// One value: string, true/false, integer, real, date (UTC, whole seconds), data, array, dict.
struct PropertyValue {
    std::variant<ClearingText, bool, qint64, double, QDateTime, QByteArray, PropertyArray, PropertyTree> content;

    [[nodiscard]] const QString* text() const { return std::get_if<ClearingText>(&content); }
    [[nodiscard]] const PropertyArray* array() const { return std::get_if<PropertyArray>(&content); }
    [[nodiscard]] const PropertyTree* tree() const { return std::get_if<PropertyTree>(&content); }
    // The value of a key; null if this is not a dictionary or has no such key.
    [[nodiscard]] const PropertyValue* valueOf(QStringView key) const;
};

struct PropertyEntry {
    QString key;
    PropertyValue value;
};

bool operator==(const PropertyValue& left, const PropertyValue& right);
bool operator==(const PropertyEntry& left, const PropertyEntry& right);

inline constexpr qsizetype maxPropertyListSize = qsizetype { 16 } * 1024 * 1024; // bytes
inline constexpr int maxPropertyListDepth = 64; // nested arrays and dictionaries
inline constexpr int maxPropertyListValues = 200'000; // bounds the time to read a file
inline constexpr qsizetype maxPropertyListTag = 256; // bytes from < to >

// std::nullopt unless the bytes are a complete, valid property list. Also rejects documents that exceed the limits,
// declare entities, repeat a key in a dictionary or continue after the end of the root. Comments are skipped.
[[nodiscard]] std::optional<PropertyValue> readPropertyList(const QByteArray& bytes);

// UTF-8, indented by tabs. Texts are written with escapeForXml; readPropertyList reverses this, other readers see the
// escapes. Empty if the value is nested beyond the depth limit.
[[nodiscard]] QByteArray writePropertyList(const PropertyValue& root);

// Reads a list of dictionaries of texts, the form of every settings file. A file edited by hand may contain numbers,
// which become decimal text, and true and false, which become "1" and "0". Keys with any other value (date, data,
// array, dict) are skipped. std::nullopt if the root is not an array of dictionaries.
[[nodiscard]] std::optional<PropertyDictionaries> dictionariesOf(const PropertyValue& root);
// True if dictionariesOf reads the root without skipping anything.
[[nodiscard]] bool areDictionariesOfTexts(const PropertyValue& root);
[[nodiscard]] PropertyValue propertyValueOf(const PropertyDictionaries& dictionaries);
