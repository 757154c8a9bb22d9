#include "crypto/PasswordHash.h"
#include "crypto/Sha1Engine.h"

#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <array>

// The derivation of a pre-shared key by each of our SHA-1 engines and by OpenSSL's PBKDF2.

namespace {

constexpr char passphrase[] = "correct horse battery staple";
constexpr std::array<unsigned char, 12> ssid { 'n', 'e', 't', 'w', 'o', 'r', 'k', ' ', 'n', 'a', 'm', 'e' };
constexpr int passphraseLength = sizeof(passphrase) - 1;
constexpr int ssidLength = static_cast<int>(ssid.size());

using Output = std::array<unsigned char, 40>;

void measure(benchmark::State& state)
{
    Output output;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(PasswordHash(passphrase, ssid.data(), ssidLength, output.data()));
        benchmark::ClobberMemory();
    }
}

void PasswordHashAsShipped(benchmark::State& state)
{
    measure(state);
}

void PasswordHashPortable(benchmark::State& state)
{
    const ForcedSha1Engine forced(portableSha1Engine());
    measure(state);
}

void PasswordHashProcessor(benchmark::State& state)
{
    if (processorSha1Engine() == nullptr) {
        state.SkipWithError("this processor has no SHA instructions");
        return;
    }
    const ForcedSha1Engine forced(*processorSha1Engine());
    measure(state);
}

// 40 bytes like PasswordHash, although a key has 32, so that both compute the same number of blocks.
void LibraryPbkdf2(benchmark::State& state)
{
    Output output;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(PKCS5_PBKDF2_HMAC_SHA1(passphrase, passphraseLength, ssid.data(), ssidLength, 4096,
            static_cast<int>(output.size()), output.data()));
        benchmark::ClobberMemory();
    }
}

BENCHMARK(PasswordHashAsShipped)->Unit(benchmark::kMicrosecond);
BENCHMARK(PasswordHashPortable)->Unit(benchmark::kMicrosecond);
BENCHMARK(PasswordHashProcessor)->Unit(benchmark::kMicrosecond);
BENCHMARK(LibraryPbkdf2)->Unit(benchmark::kMicrosecond);

} // namespace
