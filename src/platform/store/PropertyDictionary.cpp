#include "platform/store/PropertyDictionary.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

auto entryOf(auto& entries, QStringView key)
{
    return std::find_if(entries.begin(), entries.end(), [key](const auto& entry) { return entry.first == key; });
}

} // namespace

PropertyDictionary::PropertyDictionary(std::initializer_list<Entry> entries)
{
    for (const Entry& entry : entries)
        set(entry.first, entry.second);
}

QString PropertyDictionary::text(QStringView key) const
{
    const auto entry = entryOf(m_entries, key);
    return entry == m_entries.end() ? QString() : QString(entry->second);
}

int PropertyDictionary::integer(QStringView key) const
{
    return integerOfText(text(key));
}

bool PropertyDictionary::contains(QStringView key) const
{
    return entryOf(m_entries, key) != m_entries.end();
}

void PropertyDictionary::set(const QString& key, const QString& text)
{
    const auto entry = entryOf(m_entries, key);
    if (entry == m_entries.end())
        m_entries.emplace_back(key, text);
    else
        entry->second = text;
}

void PropertyDictionary::set(const QString& key, int number)
{
    set(key, QString::number(number));
}

int integerOfText(QStringView text)
{
    const auto* position = text.begin();
    while (position != text.end() && position->isSpace())
        ++position;
    const bool negative = position != text.end() && *position == u'-';
    if (negative || (position != text.end() && *position == u'+'))
        ++position;

    constexpr std::int64_t lowest = std::numeric_limits<int>::min();
    constexpr std::int64_t highest = std::numeric_limits<int>::max();
    std::int64_t number = 0;
    for (; position != text.end() && *position >= u'0' && *position <= u'9'; ++position)
        number = std::min(number * 10 + (position->unicode() - u'0'), -lowest);
    return static_cast<int>(std::clamp(negative ? -number : number, lowest, highest));
}
