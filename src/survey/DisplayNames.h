#pragma once

#include <array>
#include <cstddef>
#include <string_view>

// Display texts, indexed by driver value. Empty texts are deliberate: those states are never shown.

inline constexpr std::array<std::string_view, 3> strAryNetworkType { "Ad Hoc", "Infrastructure", "Automatic" };
inline constexpr std::array<std::string_view, 8> strAryEncryption { "WEP", "Not Used", "", "", "TKIP", "", "AES", "" };
inline constexpr std::array<std::string_view, 6> strAryAuthenType { "Open System", "Shared Key", "", "WPA", "WPA-PSK",
    "WPA-None" };

// The text for a driver value; empty if the value is not in the table.
template <std::size_t size>
[[nodiscard]] constexpr std::string_view displayName(const std::array<std::string_view, size>& table, auto value)
{
    const auto index = static_cast<std::size_t>(value);
    return index < size ? table[index] : std::string_view {};
}
