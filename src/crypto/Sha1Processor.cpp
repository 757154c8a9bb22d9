#include "crypto/Sha1Engine.h"

// The target attribute enables the SHA instructions for single functions; they are called only after a CPUID check.

#if defined(__x86_64__) || defined(__i386__)

#include <utility>

#include <cpuid.h>
#include <immintrin.h>

#define VANTREL_SHA_TARGET __attribute__((target("sha,sse4.1")))
#define VANTREL_SHA_INLINE __attribute__((target("sha,sse4.1"), always_inline)) inline

namespace {

// The instructions expect four words in a register, the first in the highest lane.
constexpr int reverseWords = 0x1B;
constexpr int highestWord = 3;

struct Registers {
    __m128i abcd;
    __m128i
        e; // in the highest word; after a group of rounds this is the previous abcd, from which the next e is computed
    __m128i words0, words1, words2, words3; // the last sixteen words of the message schedule
};

VANTREL_SHA_INLINE __m128i loadWords(const std::uint32_t* words)
{
    return _mm_shuffle_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(words)), reverseWords);
}

VANTREL_SHA_INLINE Registers load(const Sha1Lane& lane)
{
    const std::uint32_t* words = lane.words.data();
    return { loadWords(lane.chain.data()), _mm_slli_si128(_mm_cvtsi32_si128(static_cast<int>(lane.chain[4])), 12),
        loadWords(words), loadWords(words + 4), loadWords(words + 8), loadWords(words + 12) };
}

VANTREL_SHA_INLINE void addTo(Sha1Lane& lane, const Registers& registers)
{
    const Registers start = load(lane);
    const __m128i abcd = _mm_add_epi32(registers.abcd, start.abcd);
    const __m128i e = _mm_sha1nexte_epu32(registers.e, start.e);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(lane.chain.data()), _mm_shuffle_epi32(abcd, reverseWords));
    lane.chain[4] = static_cast<std::uint32_t>(_mm_extract_epi32(e, highestWord));
}

// Rounds 4 * Group to 4 * Group + 3. words0 holds their schedule words; the words then shift by one register.
template <int Group> VANTREL_SHA_INLINE void fourRounds(Registers& r)
{
    const __m128i e = Group == 0 ? _mm_add_epi32(r.e, r.words0) : _mm_sha1nexte_epu32(r.e, r.words0);
    r.e = r.abcd;
    r.abcd = _mm_sha1rnds4_epu32(r.abcd, e, Group / 5);
    const __m128i next = _mm_sha1msg2_epu32(_mm_xor_si128(_mm_sha1msg1_epu32(r.words0, r.words1), r.words2), r.words3);
    r.words0 = r.words1;
    r.words1 = r.words2;
    r.words2 = r.words3;
    r.words3 = next;
}

template <int... Groups> VANTREL_SHA_INLINE void allRounds(Registers& registers, std::integer_sequence<int, Groups...>)
{
    (fourRounds<Groups>(registers), ...);
}

// Each round depends on the previous one, so interleaving two lanes takes little longer than a single lane.
template <int... Groups>
VANTREL_SHA_INLINE void allRounds(Registers& first, Registers& second, std::integer_sequence<int, Groups...>)
{
    ((fourRounds<Groups>(first), fourRounds<Groups>(second)), ...);
}

VANTREL_SHA_TARGET void compress(std::span<Sha1Lane> lanes)
{
    constexpr std::make_integer_sequence<int, 20> groups;
    while (lanes.size() >= 2) {
        Registers first = load(lanes[0]);
        Registers second = load(lanes[1]);
        allRounds(first, second, groups);
        addTo(lanes[0], first);
        addTo(lanes[1], second);
        lanes = lanes.subspan(2);
    }
    if (!lanes.empty()) {
        Registers registers = load(lanes[0]);
        allRounds(registers, groups);
        addTo(lanes[0], registers);
    }
}

bool processorHasShaInstructions()
{
    unsigned eax = 0;
    unsigned ebx = 0;
    unsigned ecx = 0;
    unsigned edx = 0;
    if (__get_cpuid(1, &eax, &ebx, &ecx, &edx) == 0 || (ecx & bit_SSE4_1) == 0)
        return false;
    return __get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx) != 0 && (ebx & bit_SHA) != 0;
}

} // namespace

const Sha1Engine* processorSha1Engine()
{
    static constexpr Sha1Engine engine { "processor", compress };
    static const bool available = processorHasShaInstructions();
    return available ? &engine : nullptr;
}

#else

const Sha1Engine* processorSha1Engine()
{
    return nullptr;
}

#endif
