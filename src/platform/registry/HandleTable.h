#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

// What stands behind handles of one kind. The few that are held at a time are searched in order.
template <typename Value> class HandleTable {
public:
    void insert(std::uint32_t handle, Value value) { m_entries.push_back({ handle, std::move(value) }); }

    // Null when the handle is not held. The pointer is good until the table changes.
    [[nodiscard]] Value* find(std::uint32_t handle)
    {
        const auto entry = entryOf(handle);
        return entry == m_entries.end() ? nullptr : &entry->value;
    }

    // The handle of the first value for which predicate holds, 0 when there is none.
    template <typename Predicate> [[nodiscard]] std::uint32_t handleOf(Predicate predicate) const
    {
        const auto entry = std::find_if(
            m_entries.begin(), m_entries.end(), [&](const Entry& held) { return predicate(held.value); });
        return entry == m_entries.end() ? 0 : entry->handle;
    }

    // Harmless when the handle is not held.
    void erase(std::uint32_t handle)
    {
        if (const auto entry = entryOf(handle); entry != m_entries.end())
            m_entries.erase(entry);
    }

private:
    struct Entry {
        std::uint32_t handle;
        Value value;
    };

    [[nodiscard]] typename std::vector<Entry>::iterator entryOf(std::uint32_t handle)
    {
        return std::find_if(
            m_entries.begin(), m_entries.end(), [handle](const Entry& held) { return held.handle == handle; });
    }

    std::vector<Entry> m_entries;
};
