#include "services/host/ServiceHost.h"

#include "tests/services/host/TestClient.h"

#include <QSocketNotifier>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t echo = 0x10;
constexpr std::uint32_t keep = 0x11; // answered by the test
constexpr std::uint32_t refuse = 0x12;

// A host that echoes, refuses, or leaves the reply to the test.
class ServiceHostTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(host->publish(root, "Pellvane", "card0")); }

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
        else if (onOther)
            onOther(reply);
        else
            kept.push_back(reply);
    }

    TestClient openedClient()
    {
        TestClient client(path);
        EXPECT_TRUE(client.open());
        return client;
    }

    // The host must still serve others after whatever a test did to it.
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
    std::function<void(ServiceReply&)> onOther;
    std::unique_ptr<ServiceHost> host = std::make_unique<ServiceHost>(
        [this](const ServiceRequest& request, ServiceReply reply) { serve(request, std::move(reply)); });
};

TEST_F(ServiceHostTest, ServesOpenCallAndCompletion)
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

TEST_F(ServiceHostTest, CarriesTheLargestInputAndOutput)
{
    TestClient client = openedClient();
    Bytes largest(65'536);
    for (std::size_t i = 0; i < largest.size(); ++i)
        largest[i] = static_cast<std::byte>(i * 7);
    const auto reply = client.request(callPacket(echo, largest, 65'536));
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->output, largest);
}

TEST_F(ServiceHostTest, CutsOutputAtTheCapacity)
{
    TestClient client = openedClient();
    const auto reply = client.request(callPacket(echo, bytesOf("abcdef"), 4));
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->outputSize, 4u);
    EXPECT_EQ(reply->output, bytesOf("abcd"));
}

TEST_F(ServiceHostTest, SendsNoOutputWithAFailure)
{
    TestClient client = openedClient();
    const auto reply = client.request(callPacket(refuse, bytesOf("abcdef"), 16));
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->result, 5u);
    EXPECT_EQ(reply->outputSize, 0u);
    EXPECT_TRUE(reply->output.empty());
    EXPECT_TRUE(client.request(completionPacket()).has_value());
}

TEST_F(ServiceHostTest, TakesConnectionsThatEndWithoutAMessage)
{
    for (int i = 0; i < 50; ++i)
        TestClient(path).close();
    pump();
    EXPECT_TRUE(requests.empty());
    expectServing();
}

TEST_F(ServiceHostTest, ServesTwoClientsAtOnce)
{
    TestClient first = openedClient();
    TestClient second = openedClient();
    ASSERT_TRUE(first.send(callPacket(keep, {}, 16)));
    ASSERT_TRUE(pumpUntil([this] { return kept.size() == 1; }));
    const auto quick = second.request(callPacket(echo, bytesOf("two"), 16));
    ASSERT_TRUE(quick.has_value());
    EXPECT_EQ(quick->output, bytesOf("two"));
    EXPECT_FALSE(first.hasNews());
    kept[0].send(0, bytesOf("one"));
    const auto late = first.receiveReply();
    ASSERT_TRUE(late.has_value());
    EXPECT_EQ(late->output, bytesOf("one"));
}

TEST_F(ServiceHostTest, EndsTheConnectionOfARefusedUserClientThatGoesOn)
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

struct MalformedCase {
    const char* name;
    bool isOpened;
    Bytes packet;
};

class MalformedRequest : public ServiceHostTest, public testing::WithParamInterface<MalformedCase> { };

TEST_P(MalformedRequest, EndsItsConnectionAndNoOther)
{
    TestClient bystander = openedClient();
    TestClient client(path);
    if (GetParam().isOpened) {
        ASSERT_TRUE(client.open());
    }
    const std::size_t before = requests.size();
    ASSERT_TRUE(client.send(GetParam().packet));
    EXPECT_TRUE(client.isHungUpOn());
    EXPECT_EQ(requests.size(), before);
    const auto reply = bystander.request(callPacket(echo, bytesOf("ok"), 16));
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->output, bytesOf("ok"));
    expectServing();
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, MalformedRequest,
    testing::Values( //
        MalformedCase { "Empty", true, {} }, //
        MalformedCase { "EmptyFirst", false, {} }, //
        MalformedCase { "OneByte", true, Bytes(1) }, //
        MalformedCase { "ShortHeader", true, Bytes(15) }, //
        MalformedCase { "UnknownKind", true, requestPacket(3, 0, 0, 0) }, //
        MalformedCase { "InputShorterThanItSays", true, requestPacket(1, echo, 9, 16, Bytes(8)) }, //
        MalformedCase { "InputLongerThanItSays", true, requestPacket(1, echo, 7, 16, Bytes(8)) }, //
        MalformedCase { "InputAboveTheLargest", true, requestPacket(1, echo, 65'537, 16, Bytes(65'537)) }, //
        MalformedCase { "InputFarAboveTheLargest", true, requestPacket(1, echo, 100'000, 16, Bytes(100'000)) }, //
        MalformedCase { "CutPacketThatWouldFit", true, requestPacket(1, echo, 65'536, 16, Bytes(65'540)) }, //
        MalformedCase { "CapacityAboveTheLargest", true, requestPacket(1, echo, 0, 65'537) }, //
        MalformedCase { "OpenWithInput", false, requestPacket(0, 0, 4, 0, Bytes(4)) }, //
        MalformedCase { "OpenWithCapacity", false, requestPacket(0, 0, 0, 4) }, //
        MalformedCase { "ScalarCallWithInput", true, requestPacket(2, 1, 4, 0, Bytes(4)) }, //
        MalformedCase { "ScalarCallWithCapacity", true, requestPacket(2, 1, 0, 4) }, //
        MalformedCase { "StructureCallBeforeOpen", false, callPacket(echo, {}, 16) }, //
        MalformedCase { "ScalarCallBeforeOpen", false, completionPacket() }, //
        MalformedCase { "SecondOpen", true, openPacket() }),
    [](const auto& parameter) { return std::string(parameter.param.name); });

TEST_F(ServiceHostTest, EndsAConnectionThatDoesNotAwaitItsReply)
{
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
    ASSERT_TRUE(pumpUntil([this] { return kept.size() == 1; }));
    ASSERT_TRUE(client.send(callPacket(echo, {}, 16)));
    EXPECT_TRUE(client.isHungUpOn());
    kept[0].send(0, bytesOf("too late"));
    expectServing();
}

TEST_F(ServiceHostTest, OutlivesAClientThatVanishesWhileItsRequestIsServed)
{
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
    ASSERT_TRUE(pumpUntil([this] { return kept.size() == 1; }));
    client.close();
    kept[0].send(0, bytesOf("nobody hears")); // the host has not noticed yet
    pump();
    kept[0].send(0);
    kept[0].sendPacket(bytesOf("nor this"));
    kept[0].hangUp();
    expectServing();
}

TEST_F(ServiceHostTest, OutlivesAClientThatVanishesBehindItsRequest)
{
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(echo, Bytes(60'000), 65'536)));
    client.close();
    pump();
    expectServing();
}

TEST_F(ServiceHostTest, IsNotHeldUpByAClientThatDoesNotRead)
{
    TestClient idler = openedClient();
    onOther = [this](ServiceReply& reply) {
        for (int i = 0; i < 20; ++i)
            reply.sendPacket(Bytes(65'000, static_cast<std::byte>(i)));
        kept.push_back(reply);
    };
    ASSERT_TRUE(idler.send(callPacket(keep, {}, 16)));
    ASSERT_TRUE(pumpUntil([this] { return kept.size() == 1; }));
    expectServing();
    for (int i = 0; i < 20; ++i) {
        const auto packet = idler.receive();
        ASSERT_TRUE(packet.has_value()) << i;
        EXPECT_EQ(*packet, Bytes(65'000, static_cast<std::byte>(i)));
    }
    EXPECT_TRUE(idler.request(callPacket(echo, bytesOf("awake"), 16)).has_value());
}

TEST_F(ServiceHostTest, EndsAConnectionThatAsksOnWithoutReading)
{
    TestClient greedy = openedClient();
    // The replies fill the socket; the host then stops taking requests instead of keeping replies without end.
    ASSERT_TRUE(pumpUntil([&greedy] {
        pump();
        return !greedy.send(callPacket(echo, Bytes(30'000), 65'536));
    }));
    EXPECT_LT(requests.size(), 100u);
    expectServing();
}

TEST_F(ServiceHostTest, AnswersLaterFromTheEventLoop)
{
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
    ASSERT_TRUE(pumpUntil([this] { return kept.size() == 1; }));
    pump();
    EXPECT_FALSE(client.hasNews());
    kept[0].send(0, bytesOf("later"));
    const auto reply = client.receiveReply();
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->output, bytesOf("later"));
    EXPECT_TRUE(client.request(completionPacket()).has_value());
}

TEST_F(ServiceHostTest, TakesOneAnswerToARequest)
{
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
    ASSERT_TRUE(pumpUntil([this] { return kept.size() == 1; }));
    ServiceReply copy = kept[0];
    kept[0].send(0, bytesOf("first"));
    kept[0].send(0, bytesOf("second"));
    ASSERT_EQ(client.receiveReply().value_or(TestReply {}).output, bytesOf("first"));
    ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
    ASSERT_TRUE(pumpUntil([this] { return kept.size() == 2; }));
    copy.send(0, bytesOf("third"));
    pump();
    EXPECT_FALSE(client.hasNews());
    kept[1].send(0, bytesOf("fourth"));
    EXPECT_EQ(client.receiveReply().value_or(TestReply {}).output, bytesOf("fourth"));
}

TEST_F(ServiceHostTest, LeavesTheClientOfADroppedReplyWaiting)
{
    onOther = [](ServiceReply&) {};
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
    ASSERT_TRUE(pumpUntil([this] { return requests.size() == 2; }));
    pump();
    EXPECT_FALSE(client.hasNews());
    expectServing();
}

TEST_F(ServiceHostTest, SendsPacketsAsTheyStand)
{
    onOther = [](ServiceReply& reply) { reply.sendPacket(bytesOf({ 0, 0, 0, 0, 9, 0, 0, 0, 1 })); };
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 4)));
    EXPECT_EQ(client.receive(), bytesOf({ 0, 0, 0, 0, 9, 0, 0, 0, 1 }));
}

TEST_F(ServiceHostTest, EndsTheConnectionForAPacketThatNoSocketTakes)
{
    onOther = [](ServiceReply& reply) { reply.sendPacket(Bytes(16'000'000)); };
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 4)));
    EXPECT_TRUE(client.isHungUpOn());
    expectServing();
}

TEST_F(ServiceHostTest, HangsUpOnRequest)
{
    onOther = [](ServiceReply& reply) { reply.hangUp(); };
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
    EXPECT_TRUE(client.isHungUpOn());
    expectServing();
}

TEST_F(ServiceHostTest, DropsItsConnectionsAndGoesOnListening)
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

TEST_F(ServiceHostTest, MayDropItsConnectionsWhileItServesOne)
{
    onOther = [this](ServiceReply& reply) {
        host->dropConnections();
        reply.send(0);
    };
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
    EXPECT_TRUE(client.isHungUpOn());
    expectServing();
}

TEST_F(ServiceHostTest, MayEndWhileItServesAConnection)
{
    onOther = [this](ServiceReply& reply) {
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

TEST_F(ServiceHostTest, IsWithdrawnWithItsSocketAndItsConnections)
{
    TestClient client = openedClient();
    ASSERT_TRUE(client.send(callPacket(keep, {}, 16)));
    ASSERT_TRUE(pumpUntil([this] { return kept.size() == 1; }));
    host->withdraw();
    EXPECT_FALSE(host->isPublished());
    EXPECT_FALSE(fs::exists(path));
    EXPECT_TRUE(client.isHungUpOn());
    EXPECT_FALSE(TestClient(path).isConnected());
    kept[0].send(0);
    host->withdraw();
}

TEST_F(ServiceHostTest, HangsUpOnClientsThatWaitToBeAccepted)
{
    TestClient client(path);
    ASSERT_TRUE(client.isConnected());
    host->withdraw();
    EXPECT_TRUE(client.isHungUpOn());
}

TEST_F(ServiceHostTest, CanBePublishedAgain)
{
    for (int i = 0; i < 3; ++i) {
        host->withdraw();
        ASSERT_TRUE(host->publish(root, "Pellvane", "card0"));
        expectServing();
    }
}

TEST_F(ServiceHostTest, IsPublishedOnceAtATime)
{
    EXPECT_FALSE(host->publish(root, "Pellvane", "card1"));
    EXPECT_EQ(errno, EALREADY);
    EXPECT_TRUE(host->isPublished());
    expectServing();
}

TEST_F(ServiceHostTest, IsNotPublishedUnderTheNameOfALiveService)
{
    ServiceHost other([](const ServiceRequest&, ServiceReply reply) { reply.send(1); });
    EXPECT_FALSE(other.publish(root, "Pellvane", "card0"));
    EXPECT_EQ(errno, EADDRINUSE);
    EXPECT_FALSE(other.isPublished());
    expectServing();
}

TEST_F(ServiceHostTest, LeavesNoDescriptorsBehind)
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

TEST_F(ServiceHostTest, GetsOverAShortageOfDescriptors)
{
    // The sanitizer looks at an object of a type that it has not met before through a pipe, and there will be none.
    QSocketNotifier(STDIN_FILENO, QSocketNotifier::Exception).setEnabled(false);
    TestClient client(path);
    rlimit usual {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &usual), 0);
    rlimit none = usual;
    none.rlim_cur = 3;
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    pump();
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &usual), 0);
    EXPECT_TRUE(client.open());
}

} // namespace
