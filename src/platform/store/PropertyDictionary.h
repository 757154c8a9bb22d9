#pragma once

#include "platform/store/ClearingText.h"

#include <QString>
#include <QStringView>

#include <initializer_list>
#include <utility>
#include <vector>

// Texts by key, in the order in which the keys were first set. Numbers are stored as decimal text. A linear search is
// fast enough: a dictionary has a few dozen keys at most.
class PropertyDictionary {
public:
    using Entry = std::pair<QString, ClearingText>; // key and text

    PropertyDictionary() = default;
    PropertyDictionary(std::initializer_list<Entry> entries);

    // Empty for a missing key.
    [[nodiscard]] QString text(QStringView key) const;
    // Parsed by integerOfText; 0 for a missing key.
    [[nodiscard]] int integer(QStringView key) const;
    [[nodiscard]] bool contains(QStringView key) const;

    // An existing key keeps its position.
    void set(const QString& key, const QString& text);
    void set(const QString& key, int number);

    [[nodiscard]] bool isEmpty() const { return m_entries.empty(); }
    [[nodiscard]] std::size_t size() const { return m_entries.size(); }
    [[nodiscard]] auto begin() const { return m_entries.begin(); }
    [[nodiscard]] auto end() const { return m_entries.end(); }

    // Compares the order of the keys too.
    bool operator==(const PropertyDictionary&) const = default;

private:
    std::vector<Entry> m_entries;
};

using PropertyDictionaries = std::vector<PropertyDictionary>;

// Parses a decimal number at the start of a text, after optional spaces and an optional sign. Anything after its last
// digit is ignored. 0 without a number; numbers out of range are clamped.
[[nodiscard]] int integerOfText(QStringView text);
