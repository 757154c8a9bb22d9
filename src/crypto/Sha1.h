#pragma once

#include "crypto/Sha1Engine.h"

// SHA-1 as FIPS 180-1 defines it.

struct Sha1Context {
    Sha1Lane lane; // chaining words and current block; message bytes are shifted into the block as they arrive
    std::int32_t byteCount; // bytes held in the current block, 0 to 63
    std::uint32_t bitLengthHigh; // message length in bits, modulo 2^64
    std::uint32_t bitLengthLow;
};

// Starts a new message. Required before the first use of a context.
void A_SHAInit(Sha1Context& context);

// Appends bytes to the message; a length of 0 or less appends nothing.
void A_SHAUpdate(Sha1Context& context, const unsigned char* data, std::int32_t length);

// Writes the 20-byte digest and re-initialises the context.
void A_SHAFinal(Sha1Context& context, unsigned char* digest);

// Compresses the 64-byte block in the context into the chaining words.
void shaHashBlock(Sha1Context& context);
