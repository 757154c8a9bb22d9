#pragma once

#include "survey/connection/ProfileData.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

// NDIS_802_11_KEY records with their key material: as many bytes as their Length says, KeyLength + 39.

inline constexpr std::size_t presharedKeySize = 32; // bytes
using PresharedKey = std::array<std::uint8_t, presharedKeySize>;

// Key number 0 to 3 for every station.
[[nodiscard]] KeyRecord wepKeyRecord(std::uint32_t keyIndex, bool transmitKey, std::span<const std::uint8_t> key);

// The pre-shared master key, always the transmit key with index 0.
[[nodiscard]] KeyRecord wpaKeyRecord(const PresharedKey& key);

// The pre-shared key of a passphrase (IEEE 802.11i) with this name as salt. A text that the derivation refuses stands
// for itself: its first 32 bytes, zero-filled, become the key. ssidLength is the driver's and may lie.
[[nodiscard]] PresharedKey presharedKeyOfPassphrase(
    const std::string& passphrase, std::span<const std::uint8_t> ssid, std::uint32_t ssidLength);
