#pragma once

#include "platform/NetworkName.h"
#include "posix/SecureMemory.h"

#include <cstddef>
#include <cstdint>

// The 32-byte pre-shared key (PSK) of WPA-PSK and WPA-None.

inline constexpr std::size_t presharedKeySize = 32; // bytes
using PresharedKey = SecretArray<std::uint8_t, presharedKeySize>;

// The key of a passphrase, with the network's name as salt (IEEE 802.11i). Returns fallback if the derivation refuses
// the passphrase (more than 63 bytes, control characters or non-ASCII) or the name (more than 32 bytes).
[[nodiscard]] PresharedKey derivePsk(
    const SecretText& passphrase, const NetworkName& name, const PresharedKey& fallback = {});

// The key given as hexadecimal digits. Missing digits count as 0; invalid ones are converted without an error.
[[nodiscard]] PresharedKey pskFromDigits(const SecretText& digits);

// The first 32 bytes of the text, zero-filled.
[[nodiscard]] PresharedKey pskFromBytes(const SecretText& text);
