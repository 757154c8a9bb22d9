#include "driver/VX7100Access.h"
#include "driver/records/Oids.h"
#include "platform/registry/SocketIORegistry.h"
#include "tests/bench/BareClient.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingTickClock.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include <sys/socket.h>
#include <unistd.h>

// One complete driver request (search, open, call, complete, close), made by the utility and by the bare system calls.
// Both use the same service.

namespace {

// Replies to every request with success: four bytes for a structure call, none for others.
class Service {
public:
    Service()
    {
        std::array<char, 32> pattern { "/tmp/transport-bench-XXXXXX" };
        if (::mkdtemp(pattern.data()) == nullptr)
            std::abort();
        m_root = pattern.data();
        std::filesystem::create_directory(classFolder());
        std::filesystem::permissions(classFolder(), std::filesystem::perms::owner_all);
        m_listener = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
        const sockaddr_un address = addressOf(classFolder() + "/card");
        if (::bind(m_listener, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0
            || ::listen(m_listener, 16) != 0)
            std::abort();
        m_thread = std::thread([this] { serve(); });
    }

    ~Service()
    {
        (void)::shutdown(m_listener, SHUT_RDWR);
        m_thread.join();
        (void)::close(m_listener);
        std::filesystem::remove_all(m_root);
    }

    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    [[nodiscard]] std::string root() const { return m_root; }
    [[nodiscard]] std::string classFolder() const { return m_root + "/Pellvane"; }

private:
    void serve() const
    {
        for (int client = -1; (client = ::accept(m_listener, nullptr, nullptr)) != -1;) {
            std::array<std::uint32_t, 16> request {};
            while (::recv(client, request.data(), sizeof(request), 0) > 0) {
                constexpr std::uint32_t structureCall = 1;
                const std::array<std::uint32_t, 3> reply { 0, request[0] == structureCall ? 4u : 0u, 7 };
                (void)::send(client, reply.data(), 8 + reply[1], MSG_NOSIGNAL);
            }
            (void)::close(client);
        }
    }

    std::string m_root;
    int m_listener { -1 };
    std::thread m_thread;
};

void UtilityRequest(benchmark::State& state)
{
    const Service service;
    SocketIORegistry registry({ service.root() + "/no-such-root", service.root() });
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    VX7100Access adapter(registry, clock, alerts);
    for ([[maybe_unused]] auto _ : state) {
        std::uint32_t value = 0;
        if (!queryRecord(adapter, OID_GEN_MEDIA_CONNECT_STATUS, value) || value != 7) {
            state.SkipWithError("the request failed");
            break;
        }
    }
}

void BareSystemCalls(benchmark::State& state)
{
    const Service service;
    const std::string missing = service.root() + "/no-such-root/Pellvane";
    const std::string present = service.classFolder();
    std::vector<std::byte> reply(65544);
    for ([[maybe_unused]] auto _ : state) {
        bareSearch(missing.c_str(), present.c_str());
        const std::array<std::uint32_t, 5> call { 1, OID_GEN_MEDIA_CONNECT_STATUS, 4, 4, 0 };
        (void)bareRequest(present.c_str(), "card", std::as_bytes(std::span(call)), reply);
        benchmark::DoNotOptimize(reply.data());
    }
}

BENCHMARK(UtilityRequest)->UseRealTime();
BENCHMARK(BareSystemCalls)->UseRealTime();

} // namespace
