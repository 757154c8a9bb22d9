#pragma once

#include <cstdint>

// The pre-shared key of a passphrase, as IEEE 802.11i derives it: PBKDF2 over HMAC-SHA1 with the network's
// SSID as the salt.

// Writes 40 bytes to output: the 32 bytes of the key and 8 bytes that belong to no key. Takes 4096 iterations
// and runs to the end before it returns (milliseconds).
//
// Returns 0, with nothing written, for a passphrase longer than 63 bytes or an SSID longer than 32.
// Otherwise returns 1, also for a passphrase that F refuses: output then holds what it held before.
int PasswordHash(const char* passphrase, const unsigned char* ssid, std::int32_t ssidLength, unsigned char* output);

// Block number blockIndex (the first is 1) of the same derivation: writes 20 bytes to output. Fewer than one
// iteration counts as one. The SSID's length is taken into the range 0 to 32.
//
// A passphrase with a control character or a byte above 0x7F is refused: "Password error!!" goes to the
// standard error stream and nothing is written.
void F(const char* passphrase, const unsigned char* ssid, std::int32_t ssidLength, std::int32_t iterations,
    std::int32_t blockIndex, unsigned char* output);
