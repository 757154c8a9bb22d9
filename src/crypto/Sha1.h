#pragma once

#include "crypto/Sha1Engine.h"

// SHA-1 as FIPS 180-1 defines it.

struct Sha1Context {
    // The five chaining words, and the block into which message bytes are shifted as they arrive, with room
    // for the eighty words of the message schedule.
    Sha1Lane lane;
    std::int32_t byteCount; // bytes held in the current block, 0 to 63
    std::uint32_t bitLengthHigh; // length of the message so far, in bits, modulo 2^64
    std::uint32_t bitLengthLow;
};

// Starts a message. A context must be initialised before its first use.
void A_SHAInit(Sha1Context& context);

// Appends bytes to the message; a length of 0 or less appends none.
void A_SHAUpdate(Sha1Context& context, const unsigned char* data, std::int32_t length);

// Writes the 20 bytes of the message's digest and initialises the context for another message.
void A_SHAFinal(Sha1Context& context, unsigned char* digest);

// Compresses the 64-byte block that the context holds into the chaining words.
void shaHashBlock(Sha1Context& context);
