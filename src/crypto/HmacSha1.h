#pragma once

#include <cstdint>

// HMAC (RFC 2104) over SHA-1. Lengths are in bytes. Writes 20 bytes to digest, which may overlap text: the whole text
// is read before anything is written. A key longer than 64 bytes is modified: its SHA-1 digest overwrites its first 20
// bytes. Shorter keys are not changed.
void hmac_sha1(const unsigned char* text, std::int32_t textLength, unsigned char* key, std::int32_t keyLength,
    unsigned char* digest);
