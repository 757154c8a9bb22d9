#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <type_traits>
#include <vector>

#include <string.h> // explicit_bzero is not in namespace std

// Containers for key material that overwrite their memory before they release it.

inline void secureClear(void* memory, std::size_t size) noexcept
{
    explicit_bzero(memory, size); // unlike memset, never optimised away
}

template <typename T> struct ClearingAllocator {
    using value_type = T;

    ClearingAllocator() = default;
    template <typename U> ClearingAllocator(const ClearingAllocator<U>&) noexcept { }

    [[nodiscard]] T* allocate(std::size_t count) { return std::allocator<T>().allocate(count); }
    void deallocate(T* memory, std::size_t count) noexcept
    {
        secureClear(memory, count * sizeof(T));
        std::allocator<T>().deallocate(memory, count);
    }
    bool operator==(const ClearingAllocator&) const = default;
};

template <typename T> using SecretVector = std::vector<T, ClearingAllocator<T>>;

// Copied like any array; each copy clears itself. NOLINTNEXTLINE(cppcoreguidelines-special-member-functions)
template <typename T, std::size_t size> struct SecretArray : std::array<T, size> {
    ~SecretArray() { secureClear(this->data(), size * sizeof(T)); }
};

// A key as the user typed it.
class SecretText {
public:
    SecretText() = default;
    template <typename Text, typename = std::enable_if_t<std::is_convertible_v<const Text&, std::string_view>>>
    SecretText(const Text& text)
    {
        const std::string_view view = text;
        m_text.resize(view.size() + 1);
        view.copy(m_text.data(), view.size());
    }

    [[nodiscard]] std::size_t size() const { return view().size(); }
    [[nodiscard]] std::string_view view() const
    {
        return m_text.empty() ? std::string_view() : std::string_view(m_text.data(), m_text.size() - 1);
    }
    [[nodiscard]] const char* c_str() const { return m_text.empty() ? "" : m_text.data(); }

    friend bool operator==(const SecretText& one, const SecretText& other) { return one.view() == other.view(); }

private:
    SecretVector<char> m_text; // zero-terminated unless empty
};
