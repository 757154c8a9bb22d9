#include "driver/VX7100Access.h"
#include "driver/records/Oids.h"
#include "platform/registry/SocketIORegistry.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingTickClock.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

// One complete driver request (search, open, call, complete, close), made by the utility and by the bare system calls.
// Both use the same service.

namespace {

constexpr std::array<std::uint32_t, 4> header(std::uint32_t kind, std::uint32_t selector, std::uint32_t size)
{
    return { kind, selector, size, size };
}

sockaddr_un addressOf(const std::string& path)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return address;
}

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

int bareConnect(int folder, const char* name)
{
    const int instance = ::openat(folder, name, O_PATH | O_NOFOLLOW | O_CLOEXEC);
    const int client = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    (void)std::snprintf(address.sun_path, sizeof(address.sun_path), "/proc/self/fd/%d", instance);
    if (::connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0)
        std::abort();
    (void)::close(instance);
    return client;
}

int bareFolder(const char* path)
{
    const int folder = ::open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    struct stat status { };
    if (folder != -1)
        (void)::fstat(folder, &status);
    return folder;
}

void bareSearch(const char* missing, const char* present)
{
    if (bareFolder(missing) != -1)
        std::abort();
    const int folder = bareFolder(present);
    DIR* const listing = ::fdopendir(folder);
    while (const dirent* const entry = ::readdir(listing)) {
        if (entry->d_type == DT_SOCK)
            (void)::close(bareConnect(folder, entry->d_name));
    }
    (void)::closedir(listing);
}

void bareRoundTrip(int client, const void* request, std::size_t size, std::span<std::byte> reply)
{
    iovec part { const_cast<void*>(request), size };
    msghdr message {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    (void)::sendmsg(client, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
    pollfd watched { client, POLLIN, 0 };
    (void)::poll(&watched, 1, 2000);
    if (::recv(client, reply.data(), reply.size(), MSG_DONTWAIT | MSG_TRUNC) < 8)
        std::abort();
}

void BareSystemCalls(benchmark::State& state)
{
    const Service service;
    const std::string missing = service.root() + "/no-such-root/Pellvane";
    const std::string present = service.classFolder();
    std::vector<std::byte> reply(65544);
    for ([[maybe_unused]] auto _ : state) {
        bareSearch(missing.c_str(), present.c_str());
        const int folder = bareFolder(present.c_str());
        const int client = bareConnect(folder, "card");
        (void)::close(folder);
        const auto open = header(0, 0, 0);
        bareRoundTrip(client, open.data(), sizeof(open), reply);
        const std::array<std::uint32_t, 5> call { 1, OID_GEN_MEDIA_CONNECT_STATUS, 4, 4, 0 };
        bareRoundTrip(client, call.data(), sizeof(call), reply);
        const auto complete = header(2, 1, 0);
        bareRoundTrip(client, complete.data(), sizeof(complete), reply);
        (void)::close(client);
        benchmark::DoNotOptimize(reply.data());
    }
}

BENCHMARK(UtilityRequest)->UseRealTime();
BENCHMARK(BareSystemCalls)->UseRealTime();

} // namespace
