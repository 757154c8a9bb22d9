#pragma once

#include "survey/connection/ProfileData.h"
#include "survey/keys/PresharedKey.h"

#include <cstdint>
#include <span>

// NDIS_802_11_KEY records with their key material. A record has as many bytes as its Length says, KeyLength + 39.

// Key 0 to 3, for all stations.
[[nodiscard]] KeyRecord wepKeyRecord(std::uint32_t keyIndex, bool transmitKey, std::span<const std::uint8_t> key);

// Always the transmit key with index 0.
[[nodiscard]] KeyRecord wpaKeyRecord(const PresharedKey& key);
