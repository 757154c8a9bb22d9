#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

// The SHA-1 compression function (FIPS 180-1, section 7) in the forms this program can run it in.

constexpr std::size_t sha1DigestSize = 20; // bytes
constexpr std::size_t sha1BlockSize = 64; // bytes

using Sha1Chain = std::array<std::uint32_t, 5>;

// Words 0 to 15 are the block, most significant byte first in each word. An engine may use the others for the
// message schedule; it leaves the block as it was.
using Sha1Words = std::array<std::uint32_t, 80>;

// A message being hashed: its chaining words and the block to be compressed into them next.
struct Sha1Lane {
    Sha1Chain chain;
    Sha1Words words;
};

// Compresses each lane's block into its chaining words. Lanes are independent of each other: given two, an
// engine may run them side by side, which takes less time than one after the other.
struct Sha1Engine {
    const char* name;
    void (*compress)(std::span<Sha1Lane> lanes);
};

// Runs on every processor.
[[nodiscard]] const Sha1Engine& portableSha1Engine();

// Uses the processor's SHA instructions; null where it has none.
[[nodiscard]] const Sha1Engine* processorSha1Engine();

// The engine that every digest of this process is made with: the processor's where there is one.
[[nodiscard]] const Sha1Engine& sha1Engine();

// While it lives, digests are made with the given engine instead: for tests, which hold every engine against
// the same vectors and count compressions, and for measurements. Not for use from several threads.
class ForcedSha1Engine {
public:
    explicit ForcedSha1Engine(const Sha1Engine& engine);
    ~ForcedSha1Engine();
    ForcedSha1Engine(const ForcedSha1Engine&) = delete;
    ForcedSha1Engine(ForcedSha1Engine&&) = delete;
    ForcedSha1Engine& operator=(const ForcedSha1Engine&) = delete;
    ForcedSha1Engine& operator=(ForcedSha1Engine&&) = delete;

private:
    const Sha1Engine* m_previous;
};
