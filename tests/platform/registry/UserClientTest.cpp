#include "driver/records/Oids.h"
#include "platform/registry/RegistryDirectory.h"
#include "tests/platform/registry/RegistryFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <set>
#include <thread>

#include <fcntl.h>
#include <pthread.h>

namespace {

using namespace std::chrono_literals;
using Double = SocketServiceDouble;
using Bytes = std::vector<std::byte>;

Bytes filled(std::size_t size, int value)
{
    return Bytes(size, static_cast<std::byte>(value));
}

class UserClientTest : public RegistryFixture {
protected:
    UserClientTest()
        : service(startService(0, "card"))
        , registry(roots, 30s)
    {
    }

    // For tests with services that hang.
    void useShortTimeout() { registry = SocketIORegistry(roots, shortTimeout); }

    struct Outcome {
        kern_return_t result;
        std::uint32_t outputSize;
        Bytes output;
    };

    Outcome call(io_connect_t connection, const Bytes& input, std::uint32_t capacity, std::size_t bufferSize)
    {
        Outcome outcome { KERN_FAILURE, capacity, filled(bufferSize, 0xEE) };
        outcome.result = registry.IOConnectMethodStructureIStructureO(
            connection, OID_802_11_BSSID, input, outcome.outputSize, outcome.output);
        return outcome;
    }

    // One call on a new connection.
    Outcome callOnce(Double::Script script, std::uint32_t capacity = 16)
    {
        service.onStructureCall(std::move(script));
        const io_connect_t connection = open(registry);
        EXPECT_NE(connection, 0u);
        Outcome outcome = call(connection, filled(4, 1), capacity, 16);
        registry.IOServiceClose(connection);
        return outcome;
    }

    static void expectFailed(const Outcome& outcome)
    {
        EXPECT_NE(outcome.result, KERN_SUCCESS);
        EXPECT_EQ(outcome.outputSize, 0u);
        EXPECT_EQ(outcome.output, filled(outcome.output.size(), 0xEE));
    }

    // Expects that a call with this reply fails and closes the connection: nothing else is sent to the service.
    void expectCallClosesConnection(Double::Script script)
    {
        service.onStructureCall(std::move(script));
        const io_connect_t connection = open(registry);
        expectFailed(call(connection, filled(4, 1), 16, 16));
        const std::size_t requests = service.requests().size();
        EXPECT_NE(registry.IOConnectMethodScalarIScalarO(connection, 1), KERN_SUCCESS);
        expectFailed(call(connection, filled(4, 1), 16, 16));
        EXPECT_EQ(service.requests().size(), requests);
        registry.IOServiceClose(connection);
        // A new connection to the service works, at the latest when a silent service has answered a probe.
        service.onStructureCall([](const auto&) { return Double::answer(); });
        const io_connect_t next = openWhenAnswering();
        EXPECT_EQ(call(next, {}, 0, 0).result, KERN_SUCCESS);
        registry.IOServiceClose(next);
    }

    io_connect_t openWhenAnswering()
    {
        const auto giveUp = std::chrono::steady_clock::now() + 30s;
        io_connect_t connection = 0;
        while ((connection = open(registry)) == 0 && std::chrono::steady_clock::now() < giveUp) { }
        return connection;
    }

    Double& service;
    SocketIORegistry registry;
};

TEST_F(UserClientTest, SendsOpenThenCallThenCompletion)
{
    service.onStructureCall([](const auto&) { return Double::answer(filled(3, 7)); });
    mach_port_t port = 0;
    ASSERT_EQ(registry.IOMasterPort(port), KERN_SUCCESS);
    io_connect_t connection = 0;
    ASSERT_EQ(registry.IOServiceOpen(find(registry).at(0), 9, connection), KERN_SUCCESS);
    const Bytes input { std::byte { 1 }, std::byte { 2 }, std::byte { 3 }, std::byte { 4 }, std::byte { 5 } };
    const Outcome outcome = call(connection, input, 8, 8);
    EXPECT_EQ(registry.IOConnectMethodScalarIScalarO(connection, 1), KERN_SUCCESS);
    EXPECT_EQ(outcome.result, KERN_SUCCESS);
    EXPECT_EQ(outcome.outputSize, 3u);
    Bytes expected = filled(8, 0xEE);
    std::fill_n(expected.begin(), 3, std::byte { 7 });
    EXPECT_EQ(outcome.output, expected);
    EXPECT_EQ(service.requests(),
        (std::vector<Double::Request> {
            { 0, 9, 0, 0, {} }, { 1, OID_802_11_BSSID, 5, 8, input }, { 2, 1, 0, 0, {} } }));
}

TEST_F(UserClientTest, AcceptsOneBufferForInputAndOutput)
{
    service.onStructureCall([](const Double::Request& request) {
        Bytes reversed = request.input;
        std::reverse(reversed.begin(), reversed.end());
        return Double::answer(reversed);
    });
    const io_connect_t connection = open(registry);
    Bytes buffer { std::byte { 1 }, std::byte { 2 }, std::byte { 3 } };
    auto size = static_cast<std::uint32_t>(buffer.size());
    EXPECT_EQ(registry.IOConnectMethodStructureIStructureO(connection, 1, buffer, size, buffer), KERN_SUCCESS);
    EXPECT_EQ(buffer, (Bytes { std::byte { 3 }, std::byte { 2 }, std::byte { 1 } }));
}

TEST_F(UserClientTest, TransfersLargestInputAndOutput)
{
    service.onStructureCall([](const Double::Request& request) { return Double::answer(request.input); });
    const io_connect_t connection = open(registry);
    const Outcome outcome = call(connection, filled(65536, 5), 65536, 65536);
    EXPECT_EQ(outcome.result, KERN_SUCCESS);
    EXPECT_EQ(outcome.outputSize, 65536u);
    EXPECT_EQ(outcome.output, filled(65536, 5));
}

TEST_F(UserClientTest, RejectsInputThatIsTooLong)
{
    const io_connect_t connection = open(registry);
    expectFailed(call(connection, filled(65537, 5), 16, 16));
    EXPECT_EQ(service.requests().size(), 1u); // only the open
    EXPECT_EQ(call(connection, filled(65536, 5), 16, 16).result, KERN_SUCCESS);
}

TEST_F(UserClientTest, LimitsReplyCapacity)
{
    const Outcome outcome = callOnce([](const auto&) { return Double::answer(filled(2, 7)); }, 0xFFFFFFFF);
    EXPECT_EQ(outcome.result, KERN_SUCCESS);
    EXPECT_EQ(outcome.outputSize, 2u);
    EXPECT_EQ(service.requests().back().replyCapacity, 65536u);
}

TEST_F(UserClientTest, WritesAtMostTheSizeOfTheBuffer)
{
    const Outcome outcome = callOnce([](const auto&) { return Double::answer(filled(40, 7)); }, 100);
    EXPECT_EQ(outcome.result, KERN_SUCCESS);
    EXPECT_EQ(outcome.outputSize, 40u); // what the driver returned
    EXPECT_EQ(outcome.output, filled(16, 7));
}

TEST_F(UserClientTest, StaysOpenAfterFailedCall)
{
    service.onStructureCall([](const auto&) { return Double::refuse(0xC0000001); });
    const io_connect_t connection = open(registry);
    expectFailed(call(connection, filled(4, 1), 16, 16));
    EXPECT_EQ(registry.IOConnectMethodScalarIScalarO(connection, 1), KERN_SUCCESS);
    expectFailed(callOnce([](const auto&) { return Double::sendRaw(Double::packet(1, 4, filled(4, 9))); }));
}

TEST_F(UserClientTest, IsClosedAfterMalformedReply)
{
    for (std::size_t size = 0; size < 8; ++size) // truncated header
        expectCallClosesConnection([size](const auto&) { return Double::sendRaw(filled(size, 0)); });
    const Bytes four = filled(4, 7);
    for (const std::uint32_t size : { 0U, 3U, 5U, 0xFFFFFFFFU }) // a size that disagrees with the packet
        expectCallClosesConnection([&](const auto&) { return Double::sendRaw(Double::packet(0, size, four)); });
    expectCallClosesConnection([](const auto&) { return Double::answer(filled(17, 7)); }); // one more than the capacity
    expectCallClosesConnection([](const auto&) { return Double::answer(filled(100'000, 7)); }); // more than the maximum
    expectCallClosesConnection([](const auto&) { return Double::sendRaw(Double::packet(0, 65536, filled(65537, 7))); });
}

TEST_F(UserClientTest, IsClosedWhenServiceHangsUp)
{
    expectCallClosesConnection([](const auto&) { return Double::hangUpNow(); });
    expectCallClosesConnection(
        [](const auto&) { return Double::Reaction { .packets = { filled(5, 0) }, .hangUp = true }; });
}

TEST_F(UserClientTest, AcceptsReplySentBeforeServiceHangsUp)
{
    const Outcome outcome = callOnce([](const auto&) {
        return Double::Reaction { .packets = { Double::packet(0, 2, filled(2, 7)) }, .hangUp = true };
    });
    EXPECT_EQ(outcome.result, KERN_SUCCESS);
    EXPECT_EQ(outcome.outputSize, 2u);
}

TEST_F(UserClientTest, TimesOutWhenServiceHangs)
{
    useShortTimeout();
    const auto begin = std::chrono::steady_clock::now();
    expectFailed(callOnce([](const auto&) { return Double::silence(); }));
    const auto time = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(time, shortTimeout);
    EXPECT_LT(time, 5s);
    expectCallClosesConnection([](const auto&) { return Double::silence(); });
}

TEST_F(UserClientTest, DoesNotMistakeLateReplyForThatOfAnotherCall)
{
    useShortTimeout();
    expectCallClosesConnection([](const auto&) {
        Double::Reaction late = Double::answer(filled(4, 7));
        late.delay = 2 * shortTimeout;
        return late;
    });
}

TEST_F(UserClientTest, WaitsForSlowReply)
{
    service.onStructureCall([](const auto&) {
        Double::Reaction slow = Double::answer(filled(4, 7));
        slow.delay = 30ms;
        return slow;
    });
    const io_connect_t connection = open(registry);
    Bytes output(4);
    std::uint32_t size = 4;
    EXPECT_EQ(registry.IOConnectMethodStructureIStructureO(connection, 1, {}, size, output), KERN_SUCCESS);
    EXPECT_EQ(output, filled(4, 7));
}

TEST_F(UserClientTest, TimeoutIsNotAffectedBySignals)
{
    useShortTimeout();
    struct sigaction ignoring { };
    struct sigaction before { };
    ignoring.sa_handler = [](int) {};
    ASSERT_EQ(sigaction(SIGUSR1, &ignoring, &before), 0);
    std::atomic<bool> done = false;
    std::thread sender([&done, waiting = pthread_self()] {
        while (!done) {
            pthread_kill(waiting, SIGUSR1);
            std::this_thread::yield();
        }
    });
    const auto begin = std::chrono::steady_clock::now();
    const Outcome outcome = callOnce([](const auto&) { return Double::silence(); });
    const auto time = std::chrono::steady_clock::now() - begin;
    done = true;
    sender.join();
    ASSERT_EQ(sigaction(SIGUSR1, &before, nullptr), 0);
    expectFailed(outcome);
    EXPECT_GE(time, shortTimeout);
    EXPECT_LT(time, 5s);
}

TEST_F(UserClientTest, IsNotOpenedWhenServiceDiesAfterSearch)
{
    for (const bool removeSocket : { false, true }) {
        ASSERT_TRUE(service.start());
        const auto found = find(registry);
        ASSERT_EQ(found.size(), 1u);
        service.die(removeSocket);
        io_connect_t connection = 5;
        EXPECT_NE(registry.IOServiceOpen(found[0], 0, connection), KERN_SUCCESS);
        EXPECT_EQ(connection, 0u);
        registry.IOObjectRelease(found[0]);
    }
}

TEST_F(UserClientTest, IsOpenedWhenServiceHasRestartedAfterSearch)
{
    const auto found = find(registry);
    ASSERT_EQ(found.size(), 1u);
    service.die(true);
    ASSERT_TRUE(service.start());
    io_connect_t connection = 0;
    EXPECT_EQ(registry.IOServiceOpen(found[0], 0, connection), KERN_SUCCESS);
    EXPECT_EQ(registry.IOConnectMethodScalarIScalarO(connection, 1), KERN_SUCCESS);
}

TEST_F(UserClientTest, FailsWhenServiceDiesAfterOpen)
{
    const io_connect_t connection = open(registry);
    ASSERT_NE(connection, 0u);
    service.die();
    expectFailed(call(connection, filled(4, 1), 16, 16));
    EXPECT_NE(registry.IOConnectMethodScalarIScalarO(connection, 1), KERN_SUCCESS);
    ASSERT_TRUE(service.start());
    EXPECT_NE(registry.IOConnectMethodScalarIScalarO(connection, 1), KERN_SUCCESS); // this connection stays closed
    const io_connect_t next = open(registry);
    EXPECT_EQ(call(next, filled(4, 1), 16, 16).result, KERN_SUCCESS);
}

TEST_F(UserClientTest, IsNotOpenedByServiceThatRefusesOrMisbehaves)
{
    useShortTimeout();
    const std::vector<Double::Reaction> reactions { Double::refuse(), Double::silence(), Double::hangUpNow(),
        Double::sendRaw(filled(7, 0)), Double::answer(filled(1, 0)), Double::sendRaw(Double::packet(0, 1)) };
    for (const auto& reaction : reactions) {
        service.onOpen([&reaction](const auto&) { return reaction; });
        EXPECT_EQ(open(registry), 0u);
    }
    service.onOpen([](const auto&) { return Double::answer(); });
    service.die(); // ends the probe that is waiting for the silent reaction
    ASSERT_TRUE(service.start());
    EXPECT_NE(openWhenAnswering(), 0u);
}

TEST_F(UserClientTest, SharesOneTimeLimitAmongThePacketsOfARequest)
{
    registry = SocketIORegistry(roots, 600ms);
    const auto late = [](const auto&) {
        Double::Reaction reaction = Double::answer();
        reaction.delay = 400ms;
        return reaction;
    };
    service.onOpen(late);
    service.onStructureCall(late);
    const auto begin = std::chrono::steady_clock::now();
    const io_connect_t connection = open(registry);
    EXPECT_NE(connection, 0u);
    EXPECT_NE(call(connection, {}, 0, 0).result, KERN_SUCCESS);
    EXPECT_NE(registry.IOConnectMethodScalarIScalarO(connection, 1), KERN_SUCCESS);
    registry.IOServiceClose(connection);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
}

TEST_F(UserClientTest, RefusesSilentServiceWithoutWaiting)
{
    registry = SocketIORegistry(roots, 500ms);
    service.onOpen([](const auto&) { return Double::silence(); });
    EXPECT_EQ(open(registry), 0u);
    const auto begin = std::chrono::steady_clock::now();
    for (int request = 0; request < 20; ++request)
        EXPECT_EQ(open(registry), 0u);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 20 * 500ms / 2);
}

TEST_F(UserClientTest, IsNotOpenedByServiceWithFullQueue)
{
    useShortTimeout();
    service.die();
    ASSERT_TRUE(service.start(0));
    service.stopAccepting();
    const RegistryDirectory directory = openRegistryDirectory(classDirectory(0));
    const FileDescriptor instance = openInstance(directory.descriptor.get(), "card");
    std::vector<FileDescriptor> queued;
    std::error_code error;
    while (!error) {
        ASSERT_LT(queued.size(), 10u);
        queued.push_back(makeClientSocket());
        error = connectToInstance(queued.back(), instance);
    }
    ASSERT_EQ(error, std::errc::resource_unavailable_try_again);
    EXPECT_EQ(find(registry).size(), 1u); // busy, but alive
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(open(registry), 0u);
    const auto time = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(time, shortTimeout);
    EXPECT_LT(time, 5s);
}

TEST_F(UserClientTest, ClosesIndependentlyOfOtherConnections)
{
    const io_connect_t first = open(registry);
    const io_connect_t second = open(registry);
    ASSERT_NE(first, second);
    registry.IOServiceClose(first);
    EXPECT_NE(registry.IOConnectMethodScalarIScalarO(first, 1), KERN_SUCCESS);
    EXPECT_EQ(registry.IOConnectMethodScalarIScalarO(second, 1), KERN_SUCCESS);
}

TEST_F(UserClientTest, LeaksNoDescriptor)
{
    startService(1, "stale").die();
    const std::ptrdiff_t before = openFiles();
    {
        SocketIORegistry scoped(roots, 30s);
        for (int round = 0; round < 10; ++round) {
            service.onOpen([round](const auto&) { return round % 3 == 1 ? Double::refuse() : Double::answer(); });
            service.onStructureCall(
                [round](const auto&) { return round % 3 == 2 ? Double::sendRaw({}) : Double::answer(); });
            const io_connect_t connection = open(scoped);
            std::uint32_t size = 0;
            (void)scoped.IOConnectMethodStructureIStructureO(connection, 1, {}, size, {});
            (void)scoped.IOConnectMethodScalarIScalarO(connection, 1);
            if (round % 2 == 0)
                scoped.IOServiceClose(connection);
        }
    }
    // The service closes its ends asynchronously.
    service.die();
    ASSERT_TRUE(service.start());
    EXPECT_EQ(openFiles(), before);
}

TEST_F(UserClientTest, SetsCloseOnExec)
{
    const auto descriptors = [] {
        std::set<int> result;
        for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
            result.insert(std::stoi(entry.path().filename()));
        return result;
    };
    const std::set<int> before = descriptors();
    ASSERT_NE(open(registry), 0u);
    std::size_t checked = 0;
    for (const int descriptor : descriptors()) {
        if (before.contains(descriptor))
            continue;
        EXPECT_NE(::fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0) << descriptor;
        ++checked;
    }
    EXPECT_GE(checked, 1u);
}

} // namespace
