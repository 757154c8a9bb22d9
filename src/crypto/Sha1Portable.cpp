#include "crypto/Sha1Engine.h"

#include <algorithm>
#include <bit>

namespace {

// The four functions of FIPS 180-1, section 5, with the constants of section 6.
struct Choose {
    static constexpr std::uint32_t constant = 0x5A827999;
    static std::uint32_t of(std::uint32_t b, std::uint32_t c, std::uint32_t d) { return d ^ (b & (c ^ d)); }
};

template <std::uint32_t Constant> struct Parity {
    static constexpr std::uint32_t constant = Constant;
    static std::uint32_t of(std::uint32_t b, std::uint32_t c, std::uint32_t d) { return b ^ c ^ d; }
};

// The terms share no bits, so + equals |; the compiler can reorder the additions of a round.
struct Majority {
    static constexpr std::uint32_t constant = 0x8F1BBCDC;
    static std::uint32_t of(std::uint32_t b, std::uint32_t c, std::uint32_t d) { return (b & c) + (d & (b ^ c)); }
};

using FirstParity = Parity<0x6ED9EBA1>;
using SecondParity = Parity<0xCA62C1D6>;

// The last sixteen words of the message schedule, as a ring.
using RecentWords = std::array<std::uint32_t, 16>;

template <std::size_t T> [[gnu::always_inline]] inline std::uint32_t scheduleWord(RecentWords& w)
{
    if constexpr (T >= 16)
        w[T % 16] = std::rotl(w[(T - 3) % 16] ^ w[(T - 8) % 16] ^ w[(T - 14) % 16] ^ w[T % 16], 1);
    return w[T % 16];
}

// One round. The caller rotates the variables instead of moving the values: the new a is stored in e.
template <typename Function>
[[gnu::always_inline]] inline void round(
    std::uint32_t a, std::uint32_t& b, std::uint32_t c, std::uint32_t d, std::uint32_t& e, std::uint32_t word)
{
    e += word + Function::constant + Function::of(b, c, d) + std::rotl(a, 5);
    b = std::rotl(b, 30);
}

template <typename Function, std::size_t T>
[[gnu::always_inline]] inline void fiveRounds(Sha1Chain& chain, RecentWords& recent)
{
    auto& [a, b, c, d, e] = chain;
    round<Function>(a, b, c, d, e, scheduleWord<T>(recent));
    round<Function>(e, a, b, c, d, scheduleWord<T + 1>(recent));
    round<Function>(d, e, a, b, c, scheduleWord<T + 2>(recent));
    round<Function>(c, d, e, a, b, scheduleWord<T + 3>(recent));
    round<Function>(b, c, d, e, a, scheduleWord<T + 4>(recent));
}

template <typename Function, std::size_t T>
[[gnu::always_inline]] inline void twentyRounds(Sha1Chain& chain, RecentWords& recent)
{
    fiveRounds<Function, T>(chain, recent);
    fiveRounds<Function, T + 5>(chain, recent);
    fiveRounds<Function, T + 10>(chain, recent);
    fiveRounds<Function, T + 15>(chain, recent);
}

// All indices above are compile-time constants, so both arrays stay in registers; several times faster than a loop over
// the schedule.
void compressLane(Sha1Lane& lane)
{
    RecentWords recent;
    std::copy_n(lane.words.begin(), recent.size(), recent.begin());
    Sha1Chain chain = lane.chain;
    twentyRounds<Choose, 0>(chain, recent);
    twentyRounds<FirstParity, 20>(chain, recent);
    twentyRounds<Majority, 40>(chain, recent);
    twentyRounds<SecondParity, 60>(chain, recent);
    for (std::size_t i = 0; i < chain.size(); ++i)
        lane.chain[i] += chain[i];
}

void compress(std::span<Sha1Lane> lanes)
{
    for (Sha1Lane& lane : lanes)
        compressLane(lane);
}

} // namespace

const Sha1Engine& portableSha1Engine()
{
    static constexpr Sha1Engine engine { "portable", compress };
    return engine;
}
