#include "platform/store/PropertyList.h"

#include <QLocale>

#include <algorithm>

namespace {

// Converts a scalar to text; std::nullopt for values that have no text. Real numbers are written without an exponent,
// which integerOfText would not understand.
struct TextOf {
    std::optional<QString> operator()(const QString& text) const { return text; }
    std::optional<QString> operator()(bool yes) const { return yes ? QStringLiteral("1") : QStringLiteral("0"); }
    std::optional<QString> operator()(qint64 number) const { return QString::number(number); }
    std::optional<QString> operator()(double number) const
    {
        return QString::number(number, 'f', QLocale::FloatingPointShortest);
    }
    std::optional<QString> operator()(const QDateTime&) const { return std::nullopt; }
    std::optional<QString> operator()(const QByteArray&) const { return std::nullopt; }
    std::optional<QString> operator()(const PropertyArray&) const { return std::nullopt; }
    std::optional<QString> operator()(const PropertyTree&) const { return std::nullopt; }
};

std::optional<PropertyDictionary> dictionaryOf(const PropertyValue& value)
{
    const PropertyTree* tree = value.tree();
    if (!tree)
        return std::nullopt;
    PropertyDictionary dictionary;
    for (const PropertyEntry& entry : *tree)
        if (const auto text = std::visit(TextOf(), entry.value.content))
            dictionary.set(entry.key, *text);
    return dictionary;
}

bool hasOnlyTexts(const PropertyValue& dictionary)
{
    const PropertyTree* tree = dictionary.tree();
    return tree && std::all_of(tree->begin(), tree->end(), [](const PropertyEntry& entry) {
        return std::visit(TextOf(), entry.value.content).has_value();
    });
}

PropertyValue propertyValueOf(const PropertyDictionary& dictionary)
{
    PropertyTree tree;
    for (const auto& [key, text] : dictionary)
        tree.push_back({ key, { text } });
    return { std::move(tree) };
}

} // namespace

const PropertyValue* PropertyValue::valueOf(QStringView key) const
{
    const PropertyTree* entries = tree();
    if (!entries)
        return nullptr;
    const auto entry
        = std::find_if(entries->begin(), entries->end(), [key](const PropertyEntry& each) { return each.key == key; });
    return entry == entries->end() ? nullptr : &entry->value;
}

bool operator==(const PropertyValue& left, const PropertyValue& right)
{
    return left.content == right.content;
}

bool operator==(const PropertyEntry& left, const PropertyEntry& right)
{
    return left.key == right.key && left.value == right.value;
}

std::optional<PropertyDictionaries> dictionariesOf(const PropertyValue& root)
{
    const PropertyArray* array = root.array();
    if (!array)
        return std::nullopt;
    PropertyDictionaries dictionaries;
    for (const PropertyValue& element : *array) {
        auto dictionary = dictionaryOf(element);
        if (!dictionary)
            return std::nullopt;
        dictionaries.push_back(*std::move(dictionary));
    }
    return dictionaries;
}

bool areDictionariesOfTexts(const PropertyValue& root)
{
    const PropertyArray* array = root.array();
    return array && std::all_of(array->begin(), array->end(), hasOnlyTexts);
}

PropertyValue propertyValueOf(const PropertyDictionaries& dictionaries)
{
    PropertyArray array;
    for (const PropertyDictionary& dictionary : dictionaries)
        array.push_back(propertyValueOf(dictionary));
    return { std::move(array) };
}
