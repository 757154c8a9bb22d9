#include "crypto/PasswordHash.h"

#include "crypto/Sha1.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr std::size_t longestPassphrase = 63;
constexpr std::int32_t longestSsid = 32;
constexpr std::int32_t keyIterations = 4096;

// Both blocks of a key are derived side by side: they share the passphrase and nothing else.
constexpr std::size_t keyBlocks = 2;

constexpr std::size_t lengthWord = 15; // of a message's last block; messages here are short of 2^32 bits
constexpr std::uint32_t firstPaddingWord = 0x80000000;

// A passphrase as an HMAC key whose two pads have been compressed: where every HMAC with it starts.
struct HmacKey {
    Sha1Chain inner;
    Sha1Chain outer;
};

struct Salt {
    const unsigned char* ssid;
    std::size_t ssidLength;
};

// False, with the complaint, for a passphrase that may not be hashed.
bool acceptPassphrase(const char* passphrase)
{
    for (const char* position = passphrase; *position != 0; ++position) {
        // Read as signed: bytes from 0x80 on are negative and refused with the control characters. 127 can
        // never be less than 32; it is the exception that the rule names.
        const auto character = static_cast<signed char>(*position);
        if (character < 32 && character != 127) { // NOLINT(misc-redundant-expression)
            (void)std::fputs("Password error!!\n", stderr);
            return false;
        }
    }
    return true;
}

// Puts up to 64 bytes into the block's words, with zeros behind them.
void setBlock(Sha1Words& words, const unsigned char* bytes, std::size_t size)
{
    std::fill_n(words.begin(), sha1BlockSize / 4, 0U);
    for (std::size_t i = 0; i < size; ++i)
        words[i / 4] |= std::uint32_t { bytes[i] } << (24 - 8 * (i % 4));
}

// As HMAC asks, a passphrase longer than a block is replaced by its digest: here in a copy of it.
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

// The salt of a block, as the whole message behind the inner pad.
void setSaltBlock(Sha1Words& words, const Salt& salt, std::uint32_t blockIndex)
{
    std::array<unsigned char, longestSsid + 5> message {};
    std::copy_n(salt.ssid, salt.ssidLength, message.begin()); // an empty SSID may come as a null pointer
    for (std::size_t i = 0; i < 4; ++i)
        message[salt.ssidLength + i] = static_cast<unsigned char>(blockIndex >> (24 - 8 * i));
    message[salt.ssidLength + 4] = 0x80;
    setBlock(words, message.data(), salt.ssidLength + 5);
    words[lengthWord] = static_cast<std::uint32_t>((sha1BlockSize + salt.ssidLength + 4) * 8);
}

// What follows a digest that is the whole message behind a pad.
void setDigestPadding(Sha1Words& words)
{
    std::fill(words.begin() + std::tuple_size_v<Sha1Chain>, words.begin() + lengthWord, 0U);
    words[std::tuple_size_v<Sha1Chain>] = firstPaddingWord;
    words[lengthWord] = (sha1BlockSize + sha1DigestSize) * 8;
}

// Hashes the digest that each lane's chain holds, behind a pad.
void hashDigests(const Sha1Engine& engine, std::span<Sha1Lane> lanes, const Sha1Chain& pad)
{
    for (Sha1Lane& lane : lanes) {
        std::copy(lane.chain.begin(), lane.chain.end(), lane.words.begin());
        lane.chain = pad;
    }
    engine.compress(lanes);
}

// Leaves the first HMAC of each lane's block in its chain. The engines leave blocks as they are, so that the
// padding of a digest is set here for all the HMACs to come.
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

// Derives consecutive blocks, as many as there are sums.
void deriveBlocks(
    const HmacKey& key, const Salt& salt, std::int32_t iterations, std::uint32_t firstIndex, std::span<Sha1Chain> sums)
{
    const Sha1Engine& engine = sha1Engine();
    std::array<Sha1Lane, keyBlocks> storage;
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
    return { ssid, static_cast<std::size_t>(std::clamp(ssidLength, 0, longestSsid)) };
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
    if (std::strlen(passphrase) > longestPassphrase || ssidLength > longestSsid)
        return 0;
    // Each of the two blocks refuses the passphrase for itself, so the complaint appears twice; the result
    // does not tell of it, and callers go on with what their buffer held.
    if (!acceptPassphrase(passphrase)) {
        (void)acceptPassphrase(passphrase);
        return 1;
    }
    std::array<Sha1Chain, keyBlocks> blocks;
    deriveBlocks(prepareKey(passphrase), saltOf(ssid, ssidLength), keyIterations, 1, blocks);
    writeBigEndian(blocks[0], output);
    writeBigEndian(blocks[1], output + sha1DigestSize);
    return 1;
}

void F(const char* passphrase, const unsigned char* ssid, std::int32_t ssidLength, std::int32_t iterations,
    std::int32_t blockIndex, unsigned char* output)
{
    if (!acceptPassphrase(passphrase))
        return;
    std::array<Sha1Chain, 1> block;
    deriveBlocks(
        prepareKey(passphrase), saltOf(ssid, ssidLength), iterations, static_cast<std::uint32_t>(blockIndex), block);
    writeBigEndian(block[0], output);
}
