#include "platform/PropertyList.h"

#include <algorithm>

namespace {

std::optional<PropertyDictionary> dictionaryOf(const PropertyValue& value)
{
    const PropertyTree* tree = value.tree();
    if (!tree)
        return std::nullopt;
    PropertyDictionary dictionary;
    for (const PropertyEntry& entry : *tree) {
        const QString* text = entry.value.text();
        if (!text)
            return std::nullopt;
        dictionary.set(entry.key, *text);
    }
    return dictionary;
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

PropertyValue propertyValueOf(const PropertyDictionaries& dictionaries)
{
    PropertyArray array;
    for (const PropertyDictionary& dictionary : dictionaries)
        array.push_back(propertyValueOf(dictionary));
    return { std::move(array) };
}
