#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

// The implementations of the SHA-1 compression function (FIPS 180-1, section 7).

constexpr std::size_t sha1DigestSize = 20; // bytes
constexpr std::size_t sha1BlockSize = 64; // bytes

using Sha1Chain = std::array<std::uint32_t, 5>;

// Words 0 to 15 hold the block, most significant byte first. Engines may use the other words for the message schedule
// but do not modify the block.
using Sha1Words = std::array<std::uint32_t, 80>;

// One message: its chaining words and the next block to compress.
struct Sha1Lane {
    Sha1Chain chain;
    Sha1Words words;
};

// Compresses the block of each lane into its chaining words. Lanes are independent, so an engine may process them in
// parallel, which is faster.
struct Sha1Engine {
    const char* name;
    void (*compress)(std::span<Sha1Lane> lanes);
};

// Runs on every processor.
[[nodiscard]] const Sha1Engine& portableSha1Engine();

// Uses the SHA instructions of the processor; null if it has none.
[[nodiscard]] const Sha1Engine* processorSha1Engine();

// The engine in use: the processor's if available, otherwise the portable one.
[[nodiscard]] const Sha1Engine& sha1Engine();

// Selects an engine for the lifetime of the object, for tests and benchmarks. Not thread-safe.
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
