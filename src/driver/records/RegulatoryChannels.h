#pragma once

#include <array>
#include <cstdint>

// The channels allowed in each regulatory domain. Reference data only; no code uses it for decisions.

inline constexpr std::array<std::uint8_t, 11> Qv24Ghz_FCC { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11 };
inline constexpr std::array<std::uint8_t, 11> Qv24Ghz_IC { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11 };
// The spelling is intentional.
inline constexpr std::array<std::uint8_t, 13> Qv24Ghz_ESTI { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13 };
inline constexpr std::array<std::uint8_t, 2> Qv24Ghz_SPAIN { 10, 11 };
inline constexpr std::array<std::uint8_t, 4> Qv24Ghz_FRANCE { 10, 11, 12, 13 };
inline constexpr std::array<std::uint8_t, 1> Qv24Ghz_MKK { 14 };
inline constexpr std::array<std::uint8_t, 14> Qv24Ghz_MKK1 { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14 };
inline constexpr std::array<std::uint8_t, 7> Qv24Ghz_ISRAEL { 3, 4, 5, 6, 7, 8, 9 };
inline constexpr std::array<std::uint8_t, 12> Qv5Ghz_UNII { 36, 40, 44, 48, 52, 56, 60, 64, 149, 153, 157, 161 };
inline constexpr std::array<std::uint8_t, 4> Qv5Ghz_MMAC { 34, 38, 42, 46 };
inline constexpr std::array<std::uint8_t, 19> Qv5Ghz_HyperLAN2 { 36, 40, 44, 48, 52, 56, 60, 64, 100, 104, 108, 112,
    116, 120, 124, 128, 132, 136, 140 };
