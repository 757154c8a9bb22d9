#include "crypto/Sha1.h"

namespace {

constexpr Sha1Chain initialChain { 0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0 };
constexpr std::int32_t blockSize = sha1BlockSize;
constexpr std::int32_t lengthOffset = 56; // of the bit length in the last block

void appendByte(Sha1Context& context, std::uint8_t byte)
{
    std::uint32_t& word = context.lane.words[static_cast<std::size_t>(context.byteCount) / 4];
    word = (word << 8) | byte;
    ++context.byteCount;
    context.bitLengthLow += 8;
    if (context.bitLengthLow < 8)
        ++context.bitLengthHigh;
    if (context.byteCount % blockSize == 0) {
        shaHashBlock(context);
        context.byteCount = 0;
    }
}

void appendBigEndian(Sha1Context& context, std::uint32_t word)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        appendByte(context, static_cast<std::uint8_t>(word >> shift));
}

} // namespace

void A_SHAInit(Sha1Context& context)
{
    context.lane.chain = initialChain;
    context.lane.words.fill(0);
    context.byteCount = 0;
    context.bitLengthHigh = 0;
    context.bitLengthLow = 0;
}

void A_SHAUpdate(Sha1Context& context, const unsigned char* data, std::int32_t length)
{
    for (std::int32_t i = 0; i < length; ++i)
        appendByte(context, data[i]);
}

void A_SHAFinal(Sha1Context& context, unsigned char* digest)
{
    const std::uint32_t bitLengthHigh = context.bitLengthHigh; // saved first: the padding is counted too
    const std::uint32_t bitLengthLow = context.bitLengthLow;
    appendByte(context, 0x80);
    while (context.byteCount != lengthOffset)
        appendByte(context, 0);
    appendBigEndian(context, bitLengthHigh);
    appendBigEndian(context, bitLengthLow);
    for (const std::uint32_t word : context.lane.chain)
        for (int shift = 24; shift >= 0; shift -= 8)
            *digest++ = static_cast<unsigned char>(word >> shift);
    A_SHAInit(context);
}

void shaHashBlock(Sha1Context& context)
{
    sha1Engine().compress({ &context.lane, 1 });
}
