#pragma once

#include <array>
#include <cstddef>
#include <string_view>

// Texts by driver value. The empty ones are deliberate: those states are never shown.

inline constexpr std::array<std::string_view, 3> strAryNetworkType { "Ad Hoc", "Infrastructure", "Automatic" };
inline constexpr std::array<std::string_view, 8> strAryEncryption { "WEP", "Not Used", "", "", "TKIP", "", "AES", "" };
inline constexpr std::array<std::string_view, 6> strAryAuthenType { "Open System", "Shared Key", "", "WPA", "WPA-PSK",
    "WPA-None" };

// The text at a driver's value; empty for a value that the table does not have.
template <std::size_t size>
[[nodiscard]] constexpr std::string_view displayName(const std::array<std::string_view, size>& table, auto value)
{
    const auto index = static_cast<std::size_t>(value);
    return index < size ? table[index] : std::string_view {};
}
