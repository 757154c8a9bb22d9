#include "crypto/PasswordHash.h"

#include "crypto/Sha1.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr std::size_t maxPassphraseLength = 63; // bytes
constexpr std::int32_t maxSsidLength = 32; // bytes
constexpr std::int32_t keyIterations = 4096;

// The two blocks of a key are independent, so an engine can compute them in parallel.
constexpr std::size_t blocksPerKey = 2;

constexpr std::size_t lengthWord = 15; // of the last block; the messages here are shorter than 2^32 bits
constexpr std::uint32_t firstPaddingWord = 0x80000000;

// The chaining words after the inner and the outer pad: every HMAC with this key starts from them.
struct HmacKey {
    Sha1Chain inner;
    Sha1Chain outer;
};

struct Salt {
    const unsigned char* ssid;
    std::size_t ssidLength;
};

// Prints the error if the passphrase contains a byte that is not allowed.
bool checkPassphrase(const char* passphrase)
{
    for (const char* position = passphrase; *position != 0; ++position) {
        // Compared as signed char: bytes from 0x80 are negative and rejected like control characters. The comparison
        // with 127 never matters; it documents that DEL is allowed.
        const auto character = static_cast<signed char>(*position);
        if (character < 32 && character != 127) { // NOLINT(misc-redundant-expression)
            (void)std::fputs("Password error!!\n", stderr);
            return false;
        }
    }
    return true;
}

// Fills the block with up to 64 bytes, padded with zeros.
void setBlock(Sha1Words& words, const unsigned char* bytes, std::size_t size)
{
    std::fill_n(words.begin(), sha1BlockSize / 4, 0U);
    for (std::size_t i = 0; i < size; ++i)
        words[i / 4] |= std::uint32_t { bytes[i] } << (24 - 8 * (i % 4));
}

// HMAC replaces a key longer than a block by its digest; this works on a copy.
HmacKey prepareKey(const char* passphrase)
{
    std::array<unsigned char, sha1BlockSize> key {};
    const std::size_t length = std::strlen(passphrase);
    if (length > key.size()) {
        Sha1Context context;
        A_SHAInit(context);
        for (const char* position = passphrase; *position != 0; ++position)
            A_SHAUpdate(context, reinterpret_cast<const unsigned char*>(position), 1);
        A_SHAFinal(context, key.data());
    } else {
        std::memcpy(key.data(), passphrase, length);
    }

    Sha1Context start;
    A_SHAInit(start);
    std::array<Sha1Lane, 2> pads { start.lane, start.lane };
    setBlock(pads[0].words, key.data(), key.size());
    for (std::size_t i = 0; i < sha1BlockSize / 4; ++i) {
        pads[1].words[i] = pads[0].words[i] ^ 0x5C5C5C5C;
        pads[0].words[i] ^= 0x36363636;
    }
    sha1Engine().compress(pads);
    return { pads[0].chain, pads[1].chain };
}

// Builds the message block of the first HMAC: SSID, block index and padding.
void setSaltBlock(Sha1Words& words, const Salt& salt, std::uint32_t blockIndex)
{
    std::array<unsigned char, maxSsidLength + 5> message {};
    std::copy_n(salt.ssid, salt.ssidLength, message.begin()); // an empty SSID may be a null pointer
    for (std::size_t i = 0; i < 4; ++i)
        message[salt.ssidLength + i] = static_cast<unsigned char>(blockIndex >> (24 - 8 * i));
    message[salt.ssidLength + 4] = 0x80;
    setBlock(words, message.data(), salt.ssidLength + 5);
    words[lengthWord] = static_cast<std::uint32_t>((sha1BlockSize + salt.ssidLength + 4) * 8);
}

// Pads a block whose message is one digest.
void setDigestPadding(Sha1Words& words)
{
    std::fill(words.begin() + std::tuple_size_v<Sha1Chain>, words.begin() + lengthWord, 0U);
    words[std::tuple_size_v<Sha1Chain>] = firstPaddingWord;
    words[lengthWord] = (sha1BlockSize + sha1DigestSize) * 8;
}

// Replaces the digest in each lane by the hash of the pad and that digest.
void hashDigests(const Sha1Engine& engine, std::span<Sha1Lane> lanes, const Sha1Chain& pad)
{
    for (Sha1Lane& lane : lanes) {
        std::copy(lane.chain.begin(), lane.chain.end(), lane.words.begin());
        lane.chain = pad;
    }
    engine.compress(lanes);
}

// Computes the first HMAC of each lane. Engines do not modify the blocks, so the digest padding set here remains valid
// for all later HMACs.
void startBlocks(
    const Sha1Engine& engine, std::span<Sha1Lane> lanes, const HmacKey& key, const Salt& salt, std::uint32_t firstIndex)
{
    for (Sha1Lane& lane : lanes) {
        setSaltBlock(lane.words, salt, firstIndex++);
        lane.chain = key.inner;
    }
    engine.compress(lanes);
    for (Sha1Lane& lane : lanes)
        setDigestPadding(lane.words);
    hashDigests(engine, lanes, key.outer);
}

// Derives one block for each sum, starting at firstIndex.
void deriveBlocks(
    const HmacKey& key, const Salt& salt, std::int32_t iterations, std::uint32_t firstIndex, std::span<Sha1Chain> sums)
{
    const Sha1Engine& engine = sha1Engine();
    std::array<Sha1Lane, blocksPerKey> storage;
    const std::span<Sha1Lane> lanes = std::span(storage).first(sums.size());
    startBlocks(engine, lanes, key, salt, firstIndex);
    for (std::size_t i = 0; i < lanes.size(); ++i)
        sums[i] = lanes[i].chain;
    for (std::int32_t iteration = 1; iteration < iterations; ++iteration) {
        hashDigests(engine, lanes, key.inner);
        hashDigests(engine, lanes, key.outer);
        for (std::size_t i = 0; i < lanes.size(); ++i)
            for (std::size_t word = 0; word < sums[i].size(); ++word)
                sums[i][word] ^= lanes[i].chain[word];
    }
}

Salt saltOf(const unsigned char* ssid, std::int32_t ssidLength)
{
    return { ssid, static_cast<std::size_t>(std::clamp(ssidLength, 0, maxSsidLength)) };
}

void writeBigEndian(const Sha1Chain& words, unsigned char* output)
{
    for (const std::uint32_t word : words)
        for (int shift = 24; shift >= 0; shift -= 8)
            *output++ = static_cast<unsigned char>(word >> shift);
}

} // namespace

int PasswordHash(const char* passphrase, const unsigned char* ssid, std::int32_t ssidLength, unsigned char* output)
{
    if (std::strlen(passphrase) > maxPassphraseLength || ssidLength > maxSsidLength)
        return 0;
    // The error is printed once for each block. The call still succeeds, and the caller uses what its buffer held.
    if (!checkPassphrase(passphrase)) {
        (void)checkPassphrase(passphrase);
        return 1;
    }
    std::array<Sha1Chain, blocksPerKey> blocks;
    deriveBlocks(prepareKey(passphrase), saltOf(ssid, ssidLength), keyIterations, 1, blocks);
    writeBigEndian(blocks[0], output);
    writeBigEndian(blocks[1], output + sha1DigestSize);
    return 1;
}

void F(const char* passphrase, const unsigned char* ssid, std::int32_t ssidLength, std::int32_t iterations,
    std::int32_t blockIndex, unsigned char* output)
{
    if (!checkPassphrase(passphrase))
        return;
    std::array<Sha1Chain, 1> block;
    deriveBlocks(
        prepareKey(passphrase), saltOf(ssid, ssidLength), iterations, static_cast<std::uint32_t>(blockIndex), block);
    writeBigEndian(block[0], output);
}
