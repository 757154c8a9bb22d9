#include "services/host/ServiceHost.h"

#include "tests/services/host/DescriptorShortage.h"
#include "tests/services/host/TestClient.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <filesystem>
#include <system_error>

#include <sys/socket.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t echo = 0x10;
constexpr std::uint32_t keep = 0x11; // answered by the test, or by onKeep
constexpr std::uint32_t refuse = 0x12;

// The service echoes, refuses, or leaves the reply to the test.
class ServiceHostTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(publish(*host), std::error_code()); }

    std::error_code publish(ServiceHost& which, const std::string& instance = "card0")
    {
        return which.publish(root, "Pellvane", instance);
    }

    void serve(const ServiceRequest& request, ServiceReply reply)
    {
        requests.push_back(request);
        if (request.kind == RequestKind::Open)
            reply.send(openResult);
        else if (request.kind == RequestKind::ScalarCall)
            reply.send(0);
        else if (request.selector == echo)
            reply.send(0, request.input);
        else if (request.selector == refuse)
            reply.send(5, request.input);
        else if (onKeep)
            onKeep(reply);
        else
            kept.push_back(reply);
    }

    TestClient openedClient()
    {
        TestClient client(path);
        EXPECT_TRUE(client.open());
        return client;
    }

    // Sends a request that the test answers.
    void sendKept(TestClient& client)
    {
        const std::size_t before = requests.size();
        ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
        ASSERT_TRUE(pumpUntil([this, before] { return requests.size() > before; }));
    }

    // The host still serves new clients.
    void expectServing()
    {
        TestClient client = openedClient();
        const auto reply = client.request(callPacket(echo, bytesOf("still here"), 64));
        ASSERT_TRUE(reply.has_value());
        EXPECT_EQ(reply->output, bytesOf("still here"));
    }

    QTemporaryDir temporary;
    std::string root = temporary.filePath(QStringLiteral("io-registry")).toStdString();
    std::string path = root + "/Pellvane/card0";
    std::uint32_t openResult { 0 };
    std::vector<ServiceRequest> requests;
    std::vector<ServiceReply> kept;
    std::function<void(ServiceReply&)> onKeep;
    std::unique_ptr<ServiceHost> host = std::make_unique<ServiceHost>(
        [this](const ServiceRequest& request, ServiceReply reply) { serve(request, std::move(reply)); });
};

TEST_F(ServiceHostTest, AnswersOpenStructureCallAndScalarCall)
{
    TestClient client(path);
    ASSERT_TRUE(client.open());
    const auto answer = client.request(callPacket(echo, bytesOf("abc"), 16));
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(answer->result, 0u);
    EXPECT_EQ(answer->outputSize, 3u);
    EXPECT_EQ(answer->output, bytesOf("abc"));
    const auto completion = client.request(completionPacket());
    ASSERT_TRUE(completion.has_value());
    EXPECT_EQ(completion->result, 0u);
    EXPECT_EQ(completion->outputSize, 0u);

    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(requests[0].kind, RequestKind::Open);
    EXPECT_EQ(requests[1].kind, RequestKind::StructureCall);
    EXPECT_EQ(requests[1].selector, echo);
    EXPECT_EQ(requests[1].replyCapacity, 16u);
    EXPECT_EQ(requests[2].kind, RequestKind::ScalarCall);
    EXPECT_EQ(requests[2].selector, 1u);
}

TEST_F(ServiceHostTest, TransfersInputAndOutputOfMaximumSize)
{
    TestClient client = openedClient();
    Bytes largest(65'536);
    for (std::size_t i = 0; i < largest.size(); ++i)
        largest[i] = static_cast<std::byte>(i * 7);
    const auto reply = client.request(callPacket(echo, largest, 65'536));
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->output, largest);
}

TEST_F(ServiceHostTest, AcceptsConnectionsThatEndWithoutARequest)
{
    for (int i = 0; i < 50; ++i)
        TestClient(path).close();
    pump();
    EXPECT_TRUE(requests.empty());
    expectServing();
}

TEST_F(ServiceHostTest, ServesOtherClientsWhileAReplyIsPending)
{
    TestClient first = openedClient();
    TestClient second = openedClient();
    sendKept(first);
    const auto quick = second.request(callPacket(echo, bytesOf("two"), 16));
    ASSERT_TRUE(quick.has_value());
    EXPECT_EQ(quick->output, bytesOf("two"));
    EXPECT_FALSE(first.isReadable());
    kept[0].send(0, bytesOf("one"));
    const auto late = first.receiveReply();
    ASSERT_TRUE(late.has_value());
    EXPECT_EQ(late->output, bytesOf("one"));
}

TEST_F(ServiceHostTest, ClosesTheConnectionOfARefusedClientThatSendsACall)
{
    openResult = 5;
    TestClient client(path);
    const auto reply = client.request(openPacket());
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->result, 5u);
    ASSERT_TRUE(client.send(callPacket(echo, bytesOf("abc"), 16)));
    EXPECT_TRUE(client.isHungUpOn());
    EXPECT_EQ(requests.size(), 1u);
}

TEST_F(ServiceHostTest, ClosesOnlyTheConnectionThatSentAMalformedRequest)
{
    const struct {
        const char* name;
        bool isOpened;
        Bytes packet;
    } cases[] {
        { "empty", true, {} },
        { "empty, before open", false, {} },
        { "short header", true, Bytes(15) },
        { "above the size limit", true, requestPacket(1, echo, 65'537, 16, Bytes(65'537)) },
        { "far above the size limit", true, requestPacket(1, echo, 100'000, 16, Bytes(100'000)) },
        { "valid only if truncated", true, requestPacket(1, echo, 65'536, 16, Bytes(65'540)) },
        { "structure call before open", false, callPacket(echo, {}, 16) },
        { "scalar call before open", false, completionPacket() },
        { "second open", true, openPacket() },
    };
    TestClient bystander = openedClient();
    for (const auto& malformed : cases) {
        TestClient client(path);
        ASSERT_TRUE(!malformed.isOpened || client.open()) << malformed.name;
        const std::size_t before = requests.size();
        ASSERT_TRUE(client.send(malformed.packet)) << malformed.name;
        EXPECT_TRUE(client.isHungUpOn()) << malformed.name;
        EXPECT_EQ(requests.size(), before) << malformed.name;
    }
    EXPECT_TRUE(bystander.request(callPacket(echo, bytesOf("ok"), 16)).has_value());
    expectServing();
}

TEST_F(ServiceHostTest, ClosesAConnectionThatSendsARequestBeforeTheReply)
{
    TestClient client = openedClient();
    sendKept(client);
    ASSERT_TRUE(client.send(callPacket(echo, {}, 16)));
    EXPECT_TRUE(client.isHungUpOn());
    kept[0].send(0, bytesOf("too late"));
    expectServing();
}

TEST_F(ServiceHostTest, SurvivesAClientThatDisconnectsBeforeTheReply)
{
    TestClient client = openedClient();
    sendKept(client);
    client.close();
    kept[0].send(0, bytesOf("unheard")); // the host has not noticed the disconnect yet
    pump();
    kept[0].send(0);
    kept[0].sendPacket(bytesOf("nor this"));
    kept[0].hangUp();
    expectServing();
}

TEST_F(ServiceHostTest, SurvivesAClientThatDisconnectsAfterTheRequest)
{
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(echo, Bytes(60'000), 65'536)));
    client.close();
    pump();
    expectServing();
}

TEST_F(ServiceHostTest, QueuesPacketsForAClientThatDoesNotRead)
{
    TestClient idle = openedClient();
    onKeep = [this](ServiceReply& reply) {
        for (int i = 0; i < 20; ++i)
            reply.sendPacket(Bytes(65'000, static_cast<std::byte>(i)));
        kept.push_back(reply);
    };
    sendKept(idle);
    expectServing();
    for (int i = 0; i < 20; ++i) {
        const auto packet = idle.receive();
        ASSERT_TRUE(packet.has_value()) << i;
        EXPECT_EQ(*packet, Bytes(65'000, static_cast<std::byte>(i)));
    }
    EXPECT_TRUE(idle.request(callPacket(echo, bytesOf("awake"), 16)).has_value());
}

TEST_F(ServiceHostTest, ClosesAConnectionThatSendsRequestsWithoutReadingReplies)
{
    TestClient client = openedClient();
    // The replies fill the socket buffer; the host must not queue more of them without limit.
    ASSERT_TRUE(pumpUntil([&client] {
        pump();
        return !client.send(callPacket(echo, Bytes(30'000), 65'536));
    }));
    EXPECT_LT(requests.size(), 100u);
    expectServing();
}

TEST_F(ServiceHostTest, SendsOnlyTheFirstAnswerToARequest)
{
    TestClient client = openedClient();
    sendKept(client);
    ServiceReply copy = kept[0];
    kept[0].send(0, bytesOf("first"));
    kept[0].send(0, bytesOf("second"));
    ASSERT_EQ(client.receiveReply().value_or(TestReply {}).output, bytesOf("first"));
    sendKept(client);
    copy.send(0, bytesOf("third"));
    pump();
    EXPECT_FALSE(client.isReadable());
    kept[1].send(0, bytesOf("fourth"));
    EXPECT_EQ(client.receiveReply().value_or(TestReply {}).output, bytesOf("fourth"));
}

TEST_F(ServiceHostTest, SendsNothingIfTheReplyIsDropped)
{
    onKeep = [](ServiceReply&) {};
    TestClient client = openedClient();
    sendKept(client);
    pump();
    EXPECT_FALSE(client.isReadable());
    expectServing();
}

TEST_F(ServiceHostTest, SendsRawPacketsUnchanged)
{
    onKeep = [](ServiceReply& reply) { reply.sendPacket(bytesOf({ 0, 0, 0, 0, 9, 0, 0, 0, 1 })); };
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 4)));
    EXPECT_EQ(client.receive(), bytesOf({ 0, 0, 0, 0, 9, 0, 0, 0, 1 }));
}

TEST_F(ServiceHostTest, ClosesTheConnectionIfAPacketCannotBeSent)
{
    onKeep = [](ServiceReply& reply) { reply.sendPacket(Bytes(16'000'000)); };
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 4)));
    EXPECT_TRUE(client.isHungUpOn());
    expectServing();
}

TEST_F(ServiceHostTest, HangsUp)
{
    onKeep = [](ServiceReply& reply) { reply.hangUp(); };
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
    EXPECT_TRUE(client.isHungUpOn());
    expectServing();
}

TEST_F(ServiceHostTest, DropsAllConnectionsAndKeepsListening)
{
    TestClient first = openedClient();
    TestClient second(path);
    pump();
    host->dropConnections();
    EXPECT_TRUE(first.isHungUpOn());
    EXPECT_TRUE(second.isHungUpOn());
    EXPECT_TRUE(host->isPublished());
    expectServing();
}

TEST_F(ServiceHostTest, CanDropConnectionsFromTheHandler)
{
    onKeep = [this](ServiceReply& reply) {
        host->dropConnections();
        reply.send(0);
    };
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
    EXPECT_TRUE(client.isHungUpOn());
    expectServing();
}

TEST_F(ServiceHostTest, CanBeDestroyedFromTheHandler)
{
    onKeep = [this](ServiceReply& reply) {
        host.reset();
        reply.send(0);
        kept.push_back(reply);
    };
    TestClient bystander = openedClient();
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
    EXPECT_TRUE(client.isHungUpOn());
    EXPECT_TRUE(bystander.isHungUpOn());
    EXPECT_FALSE(fs::exists(path));
    pump();
    kept[0].send(0);
}

TEST_F(ServiceHostTest, WithdrawsSocketAndConnectionsAndCanBePublishedAgain)
{
    TestClient client = openedClient();
    sendKept(client);
    host->withdraw();
    EXPECT_FALSE(host->isPublished());
    EXPECT_FALSE(fs::exists(path));
    EXPECT_TRUE(client.isHungUpOn());
    EXPECT_FALSE(TestClient(path).isConnected());
    kept[0].send(0);
    host->withdraw();
    EXPECT_EQ(publish(*host), std::error_code());
    expectServing();
}

TEST_F(ServiceHostTest, HangsUpOnClientsNotYetAccepted)
{
    TestClient client(path);
    ASSERT_TRUE(client.isConnected());
    host->withdraw();
    EXPECT_TRUE(client.isHungUpOn());
}

TEST_F(ServiceHostTest, RefusesToBePublishedTwice)
{
    EXPECT_EQ(publish(*host, "card1"), std::errc::already_connected);
    EXPECT_TRUE(host->isPublished());
    expectServing();
}

TEST_F(ServiceHostTest, RefusesTheNameOfALiveService)
{
    ServiceHost other([](const ServiceRequest&, ServiceReply reply) { reply.send(1); });
    EXPECT_EQ(publish(other), std::errc::address_in_use);
    EXPECT_FALSE(other.isPublished());
    expectServing();
}

TEST_F(ServiceHostTest, ClosesAllDescriptors)
{
    const auto descriptors
        = [] { return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()); };
    expectServing();
    pump();
    const auto before = descriptors();
    for (int i = 0; i < 20; ++i) {
        expectServing();
        TestClient malformed(path);
        ASSERT_TRUE(malformed.send(Bytes(3)));
        ASSERT_TRUE(malformed.isHungUpOn());
    }
    pump();
    EXPECT_EQ(descriptors(), before);
}

TEST_F(ServiceHostTest, RecoversFromAShortageOfDescriptors)
{
    // The undefined-behaviour sanitizer opens a pipe when it first checks a type, so it must see this type beforehand.
    QSocketNotifier(STDIN_FILENO, QSocketNotifier::Exception).setEnabled(false);
    TestClient client(path);
    {
        const DescriptorShortage shortage;
        pump();
        // The host pauses instead of trying again and again.
        EXPECT_FALSE(QCoreApplication::eventDispatcher()->processEvents(QEventLoop::AllEvents));
    }
    EXPECT_TRUE(client.open());
}

} // namespace
