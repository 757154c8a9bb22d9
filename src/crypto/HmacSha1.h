#pragma once

#include <cstdint>

// HMAC (RFC 2104) over SHA-1. Writes 20 bytes to digest, which may be the buffer that text is in: the text is
// read before the inner digest is written there, to be overwritten by the outer one. Lengths are in bytes.
// A key longer than 64 bytes is replaced in its own buffer: its first 20 bytes become its SHA-1 digest. A key
// of up to 64 bytes is left as it is.
void hmac_sha1(const unsigned char* text, std::int32_t textLength, unsigned char* key, std::int32_t keyLength,
    unsigned char* digest);
