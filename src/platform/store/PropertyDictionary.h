#pragma once

#include <QString>
#include <QStringView>

#include <initializer_list>
#include <utility>
#include <vector>

// Texts under keys, in the order in which the keys were first set. Numbers are kept as decimal text. There are a few
// dozen keys at most, so that looking for one from the front is as fast as anything else.
class PropertyDictionary {
public:
    using Entry = std::pair<QString, QString>; // key and text

    PropertyDictionary() = default;
    PropertyDictionary(std::initializer_list<Entry> entries);

    // Empty for a key that is missing.
    [[nodiscard]] QString text(QStringView key) const;
    // As integerOfText reads it; 0 for a key that is missing.
    [[nodiscard]] int integer(QStringView key) const;
    [[nodiscard]] bool contains(QStringView key) const;

    // A key that is there keeps its place.
    void set(const QString& key, const QString& text);
    void set(const QString& key, int number);

    [[nodiscard]] bool isEmpty() const { return m_entries.empty(); }
    [[nodiscard]] std::size_t size() const { return m_entries.size(); }
    [[nodiscard]] auto begin() const { return m_entries.begin(); }
    [[nodiscard]] auto end() const { return m_entries.end(); }

    // Equal with the same entries in the same order.
    bool operator==(const PropertyDictionary&) const = default;

private:
    std::vector<Entry> m_entries;
};

using PropertyDictionaries = std::vector<PropertyDictionary>;

// The decimal number at the start of a text, behind spaces and with or without a sign; 0 where there is none. What
// follows its last digit does not matter. A number out of range is the nearest that is in range.
[[nodiscard]] int integerOfText(QStringView text);
