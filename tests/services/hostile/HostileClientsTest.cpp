#include "driver/records/Oids.h"
#include "services/host/TransportPackets.h"
#include "tests/services/host/TestClient.h"
#include "tests/services/hostile/ServiceUnderAttack.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

// After each attack the service answers a good client, and memory and descriptors are what they were before.

namespace {

using Make = std::unique_ptr<ServiceUnderAttack> (*)();

// One connection of the control socket, never waiting.
FileDescriptor controlConnection(const std::string& path)
{
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    std::copy_n(path.begin(), std::min(path.size(), sizeof(address.sun_path) - 1), address.sun_path);
    if (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0)
        return {};
    return socket;
}

void sendText(const FileDescriptor& socket, const std::string& text)
{
    (void)!::send(socket.get(), text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}

// A well-formed conversation: open, one query, its completion.
std::array<Bytes, 3> conversation()
{
    return { openPacket(), callPacket(OID_GEN_MEDIA_CONNECT_STATUS, Bytes(4), 4), completionPacket() };
}

// Clients and service may be the same process. Processes that it starts inherit the limit.
class ManyDescriptors {
protected:
    ManyDescriptors()
    {
        rlimit limit {};
        EXPECT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
        limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, 16'384);
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    }
};

class HostileClients : private ManyDescriptors, public testing::TestWithParam<Make> {
protected:
    // Connects, with pauses in which the service takes connections from its queue.
    TestClient connected()
    {
        TestClient client(m_service->socketPath());
        EXPECT_TRUE(pumpUntil([&] {
            if (!client.isConnected())
                client = TestClient(m_service->socketPath());
            return client.isConnected();
        }));
        return client;
    }

    // A client that has had its first replies.
    TestClient after(std::size_t exchanges)
    {
        TestClient client = connected();
        const auto packets = conversation();
        for (std::size_t sent = 0; sent < exchanges; ++sent)
            EXPECT_TRUE(client.request(packets[sent]).has_value());
        return client;
    }

    void expectServing()
    {
        TestClient client = connected();
        for (const Bytes& packet : conversation()) {
            const auto reply = client.request(packet);
            ASSERT_TRUE(reply.has_value());
            EXPECT_EQ(reply->result, 0U);
        }
    }

    // Runs the attack a few times until the heap has its usual size, and then checks that repeating it leaves nothing behind.
    template <typename Attack> void attack(Attack attack, int times)
    {
        for (int time = 0; time < 2; ++time)
            attack();
        expectServing();
        settle();
        const std::size_t descriptors = m_service->openDescriptors();
        const std::size_t memory = m_service->memoryBytes();
        for (int time = 0; time < times; ++time)
            attack();
        expectServing();
        EXPECT_TRUE(pumpUntil([&] { return m_service->openDescriptors() <= descriptors; }))
            << m_service->openDescriptors() << " descriptors instead of " << descriptors;
        settle();
        EXPECT_LE(m_service->memoryBytes(), memory + m_service->memoryTolerance()) << "before: " << memory;
    }

    static void settle()
    {
        for (int turn = 0; turn < 3; ++turn)
            pump();
    }

    std::unique_ptr<ServiceUnderAttack> m_service { GetParam()() };
};

TEST_P(HostileClients, SendHalfPacketsAtEachPointOfAConversation)
{
    const auto packets = conversation();
    attack(
        [&] {
            for (std::size_t point = 0; point < packets.size(); ++point) {
                for (std::size_t size = 0; size < packets[point].size(); ++size) {
                    TestClient client = after(point);
                    ASSERT_TRUE(client.send(
                        Bytes(packets[point].begin(), packets[point].begin() + static_cast<std::ptrdiff_t>(size))));
                    EXPECT_TRUE(client.isHungUpOn()) << "point " << point << ", " << size << " bytes";
                }
            }
        },
        2);
}

TEST_P(HostileClients, LieInTheirHeaders)
{
    constexpr std::array<std::uint32_t, 7> values { 0, 1, 2, 3, 65'536, 65'537, 0xFFFF'FFFF };
    int lies = 0;
    attack(
        [&] {
            for (const std::uint32_t kind : values) {
                for (const std::uint32_t inputSize : values) {
                    for (const std::uint32_t capacity : values) {
                        // Four bytes follow, which only a size of four would describe.
                        TestClient client = after(1);
                        ASSERT_TRUE(client.send(requestPacket(kind, OID_GEN_RCV_OK, inputSize, capacity, Bytes(4))));
                        EXPECT_TRUE(client.isHungUpOn()) << kind << ", " << inputSize << ", " << capacity;
                        ++lies;
                    }
                }
            }
        },
        1);
    std::cout << lies << " headers" << std::endl;
}

TEST_P(HostileClients, LeaveAtEachPointOfAConversation)
{
    const auto packets = conversation();
    attack(
        [&] {
            for (std::size_t point = 0; point <= packets.size(); ++point) {
                after(point).close();
                if (point == packets.size())
                    continue;
                TestClient client = after(point); // leaves before it reads the reply
                ASSERT_TRUE(client.send(packets[point]));
                client.close();
            }
        },
        30);
}

TEST_P(HostileClients, ComeByTheThousand)
{
    constexpr std::size_t crowdSize = 2'000;
    attack(
        [&] {
            std::vector<TestClient> crowd;
            for (std::size_t number = 0; number < crowdSize; ++number) {
                crowd.push_back(connected());
                (void)crowd.back().send(number % 2 == 0 ? openPacket() : Bytes(3));
            }
            expectServing();
        },
        1);
    attack([&] { connected().close(); }, static_cast<int>(crowdSize));
}

TEST_P(HostileClients, NeverReadTheirReplies)
{
    constexpr std::size_t clients = 50;
    constexpr int requestsEach = 20;
    attack(
        [&] {
            std::vector<TestClient> idle;
            for (std::size_t number = 0; number < clients; ++number)
                idle.push_back(after(1));
            for (int request = 0; request < requestsEach; ++request) {
                for (TestClient& client : idle)
                    (void)client.send(callPacket(OID_802_11_BSSID_LIST, Bytes(65'000), 65'536));
                pump();
            }
            expectServing();
        },
        3);
}

TEST_P(HostileClients, MisuseTheControlSocket)
{
    const std::string path = m_service->controlPath();
    if (path.empty())
        GTEST_SKIP() << "this service has none";
    constexpr std::size_t crowdSize = 500;
    attack(
        [&] {
            std::vector<FileDescriptor> crowd;
            for (std::size_t number = 0; number < crowdSize; ++number) {
                crowd.push_back(controlConnection(path));
                if (!crowd.back())
                    continue; // the queue is full
                sendText(crowd.back(), number % 2 == 0 ? "{\"command\":" : std::string(100'000, 'x'));
            }
            const FileDescriptor deaf = controlConnection(path);
            for (int line = 0; deaf && line < 1'000; ++line)
                sendText(deaf, "{\"command\":\"status\"}\n");
            expectServing();
        },
        4);
}

INSTANTIATE_TEST_SUITE_P(, HostileClients, testing::Values(&hostInThisProcess, &simulatorProcess),
    [](const testing::TestParamInfo<Make>& info) { return info.index == 0 ? "Host" : "Simulator"; });

} // namespace
