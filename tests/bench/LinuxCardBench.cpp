#include "driver/records/Oids.h"
#include "tests/bench/BareClient.h"
#include "tests/services/linux/card/CardUnderTest.h"
#include "tests/services/linux/service/Fakes.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

// One request, and the list of 98 networks through all its continuations, made by bare system calls to the service of a
// Linux card, whose kernel is a stand-in, and to a service that does nothing but the system calls.

namespace {

constexpr std::size_t networkCount = 98;
constexpr std::size_t replyBytes = 65544;

std::int64_t steadyMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

class Registry {
public:
    Registry() { std::filesystem::permissions(folder.path().toStdString(), std::filesystem::perms::owner_all); }

    [[nodiscard]] std::string root() const { return folder.path().toStdString(); }
    [[nodiscard]] std::string classFolder() const { return root() + "/Pellvane"; }

private:
    QTemporaryDir folder { QStringLiteral("/tmp/linux-bench-XXXXXX") };
};

std::vector<ScanEntry> manyNetworks()
{
    std::vector<ScanEntry> networks;
    for (std::size_t i = 0; i < networkCount; ++i) {
        ScanEntry entry = rsnEntry("network " + std::to_string(i), static_cast<std::uint8_t>(i));
        appendElement(entry.elements, elementSupportedRates, Octets { 0x82, 0x84, 0x8B, 0x96, 12, 18, 24, 36 });
        networks.push_back(entry);
    }
    return networks;
}

// A card in the event loop of a thread of its own.
class CardService {
public:
    CardService()
        : m_thread([this] { run(); })
    {
        while (!std::filesystem::exists(registry.classFolder() + "/card"))
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    ~CardService()
    {
        m_loop->quit();
        m_thread.join();
    }
    CardService(const CardService&) = delete;
    CardService& operator=(const CardService&) = delete;

    Registry registry;

private:
    void run()
    {
        QEventLoop loop;
        m_loop = &loop;
        auto kernel = std::make_unique<FakeKernel>();
        FakeKernel& fake = *kernel;
        fake.wiphy = dualBandWiphy();
        fake.networks = manyNetworks();
        LinuxCard card({ ownAddress, 1, 2 }, false,
            { std::move(kernel), std::make_unique<FakeSupplicant>(), std::make_unique<FakeRadio>(), steadyMs,
                [](const std::string&) {} });
        card.start();
        fake.answerAll();
        // The stand-in's answers come at once, as the kernel's usually do.
        QTimer answers;
        QObject::connect(&answers, &QTimer::timeout, &answers, [&fake] { fake.answerAll(); });
        answers.start(50);
        ServiceHost host(card.handler());
        if (host.publish(registry.root(), "Pellvane", "card"))
            std::abort();
        (void)loop.exec();
    }

    QEventLoop* m_loop { nullptr };
    std::thread m_thread;
};

// Answers each structure call with the next reply of a fixed list.
class BareService {
public:
    explicit BareService(std::vector<std::vector<std::byte>> replies)
        : m_replies(std::move(replies))
    {
        std::filesystem::create_directory(registry.classFolder());
        std::filesystem::permissions(registry.classFolder(), std::filesystem::perms::owner_all);
        m_listener = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
        const sockaddr_un address = addressOf(registry.classFolder() + "/card");
        if (::bind(m_listener, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0
            || ::listen(m_listener, 16) != 0)
            std::abort();
        m_thread = std::thread([this] { serve(); });
    }
    ~BareService()
    {
        (void)::shutdown(m_listener, SHUT_RDWR);
        m_thread.join();
        (void)::close(m_listener);
    }
    BareService(const BareService&) = delete;
    BareService& operator=(const BareService&) = delete;

    Registry registry;

private:
    void serve() const
    {
        std::size_t next = 0;
        for (int client = -1; (client = ::accept(m_listener, nullptr, nullptr)) != -1;) {
            std::array<std::uint32_t, 2048> request {};
            while (::recv(client, request.data(), sizeof(request), 0) > 0) {
                constexpr std::uint32_t structureCall = 1;
                const std::array<std::uint32_t, 2> done { 0, 0 };
                if (request[0] == structureCall) {
                    const auto& reply = m_replies[next++ % m_replies.size()];
                    (void)::send(client, reply.data(), reply.size(), MSG_NOSIGNAL);
                } else {
                    (void)::send(client, done.data(), sizeof(done), MSG_NOSIGNAL);
                }
            }
            (void)::close(client);
        }
    }

    std::vector<std::vector<std::byte>> m_replies;
    int m_listener { -1 };
    std::thread m_thread;
};

std::size_t query(
    const std::string& classFolder, std::uint32_t oid, std::uint32_t capacity, std::vector<std::byte>& reply)
{
    std::vector<std::byte> call(16 + capacity);
    const auto head = header(1, oid, capacity);
    std::memcpy(call.data(), head.data(), sizeof(head));
    return bareRequest(classFolder.c_str(), "card", call, reply);
}

// Returns the number of networks.
std::size_t fetchList(const std::string& classFolder, std::vector<std::byte>& reply)
{
    constexpr std::size_t replyHeaderBytes = 8;
    std::size_t count = 0;
    for (std::uint32_t oid = OID_802_11_BSSID_LIST;; oid = VX_OID_802_11_BSSID_LIST_NEXT) {
        std::uint32_t inChunk = 0;
        if (query(classFolder, oid, 4096, reply) <= replyHeaderBytes)
            return count;
        std::memcpy(&inChunk, reply.data() + replyHeaderBytes, sizeof(inChunk));
        count += inChunk;
    }
}

std::vector<std::byte> packetOf(std::span<const std::byte> output)
{
    const std::array<std::uint32_t, 2> head { 0, static_cast<std::uint32_t>(output.size()) };
    std::vector<std::byte> packet(sizeof(head) + output.size());
    std::memcpy(packet.data(), head.data(), sizeof(head));
    std::copy(output.begin(), output.end(), packet.begin() + sizeof(head));
    return packet;
}

// The chunks of the same list, and the empty one at its end.
std::vector<std::vector<std::byte>> listPackets()
{
    NetworkList list;
    list.update(manyNetworks(), 0);
    ListDelivery delivery;
    std::vector<std::vector<std::byte>> packets { packetOf(delivery.start(list.encoded())) };
    while (packets.back().size() > 8)
        packets.push_back(packetOf(delivery.next()));
    return packets;
}

void CardRequest(benchmark::State& state)
{
    const CardService service;
    std::vector<std::byte> reply(replyBytes);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(query(service.registry.classFolder(), OID_GEN_MEDIA_CONNECT_STATUS, 4, reply));
}

void BareRequest(benchmark::State& state)
{
    const BareService service({ packetOf(std::vector<std::byte>(4)) });
    std::vector<std::byte> reply(replyBytes);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(query(service.registry.classFolder(), OID_GEN_MEDIA_CONNECT_STATUS, 4, reply));
}

void list(benchmark::State& state, const std::string& classFolder)
{
    std::vector<std::byte> reply(replyBytes);
    for ([[maybe_unused]] auto _ : state) {
        if (fetchList(classFolder, reply) != networkCount) {
            state.SkipWithError("the list is not complete");
            break;
        }
    }
}

void CardList(benchmark::State& state)
{
    const CardService service;
    list(state, service.registry.classFolder());
}

void BareList(benchmark::State& state)
{
    const BareService service(listPackets());
    list(state, service.registry.classFolder());
}

BENCHMARK(CardRequest)->UseRealTime();
BENCHMARK(BareRequest)->UseRealTime();
BENCHMARK(CardList)->UseRealTime();
BENCHMARK(BareList)->UseRealTime();

} // namespace

int main(int argumentCount, char** arguments)
{
    const QCoreApplication application(argumentCount, arguments);
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
