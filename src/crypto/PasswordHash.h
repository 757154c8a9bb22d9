#pragma once

#include <cstdint>

// Derives the pre-shared key from a passphrase as IEEE 802.11i defines it: PBKDF2 over HMAC-SHA1, salted with the SSID.

// Writes 40 bytes to output: the 32-byte key and 8 unused bytes. Runs 4096 iterations synchronously, which takes
// milliseconds.
// Returns 0 and writes nothing if the passphrase is longer than 63 bytes or the SSID longer than 32. Returns 1 in all
// other cases, even if F rejects the passphrase; output is then unchanged.
int PasswordHash(const char* passphrase, const unsigned char* ssid, std::int32_t ssidLength, unsigned char* output);

// Computes one block of the derivation (blockIndex is 1-based) and writes its 20 bytes to output. An iteration count
// below 1 is treated as 1; the SSID length is clamped to 0 to 32.
// Rejects a passphrase with a control character or a byte above 0x7F: prints "Password error!!" to standard error and
// writes nothing.
void F(const char* passphrase, const unsigned char* ssid, std::int32_t ssidLength, std::int32_t iterations,
    std::int32_t blockIndex, unsigned char* output);
