#include "services/linux/service/CardWatch.h"

#include "tests/services/host/TestClient.h"
#include "tests/services/linux/card/CardUnderTest.h"
#include "tests/services/linux/service/Fakes.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <filesystem>

#include <linux/nl80211.h>

namespace {

class FakeSystem final : public WirelessSystem {
public:
    void start(WirelessListener& one) override
    {
        listener = &one;
        listener->interfacesChanged();
    }
    void repair() override { }
    void readInterfaces(InterfacesRead done) override { done(interfaces); }
    [[nodiscard]] bool exists(const InterfaceFacts& wanted) const override
    {
        return std::any_of(interfaces->begin(), interfaces->end(), [&wanted](const InterfaceFacts& interface) {
            return interface.index == wanted.index && interface.name == wanted.name;
        });
    }
    [[nodiscard]] std::int64_t suspendedMs() const override { return suspended; }
    [[nodiscard]] CardHardware hardwareOf(const InterfaceFacts&) override { return { ownAddress, 1, 2 }; }
    [[nodiscard]] LinuxCard::Parts partsFor(const InterfaceFacts&, const LinuxCard::Log&) override
    {
        auto ownedKernel = std::make_unique<FakeKernel>();
        auto ownedSupplicant = std::make_unique<FakeSupplicant>();
        kernel = ownedKernel.get();
        supplicant = ownedSupplicant.get();
        kernel->wiphy = dualBandWiphy();
        kernel->isPrompt = isKernelPrompt;
        return { std::move(ownedKernel), std::move(ownedSupplicant), std::make_unique<FakeRadio>(), nullptr, nullptr };
    }

    WirelessListener* listener { nullptr };
    std::optional<std::vector<InterfaceFacts>> interfaces { std::vector<InterfaceFacts> {} };
    std::int64_t suspended { 0 };
    bool isKernelPrompt { true };
    // Of the card that was made last.
    FakeKernel* kernel { nullptr };
    FakeSupplicant* supplicant { nullptr };
};

class FakeManagers final : public OtherManagers {
public:
    void find(const std::string&, Found found) override { found(finding); }

    ManagerFinding finding;
};

class CardWatchTest : public testing::Test {
protected:
    CardWatchTest()
    {
        std::filesystem::permissions(folder.path().toStdString(), std::filesystem::perms::owner_all);
        options.root = folder.path().toStdString();
    }

    static InterfaceFacts interface(std::uint32_t index, const std::string& name)
    {
        return { index, 0, NL80211_IFTYPE_STATION, name };
    }
    void start()
    {
        watch = std::make_unique<CardWatch>(
            options, system, managers, [this] { return nowMs; },
            [this](const std::string& text) { log += text + '\n'; });
        watch->start();
        pump();
    }
    void poll()
    {
        watch->poll();
        pump();
    }
    void change(std::vector<InterfaceFacts> present)
    {
        system.interfaces = std::move(present);
        system.listener->interfacesChanged();
        pump();
    }
    [[nodiscard]] std::vector<std::string> published() const
    {
        std::vector<std::string> names;
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(options.root + "/Pellvane", error))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    // As a client reads it from the card that was made last.
    [[nodiscard]] bool isEventRaised(const std::string& name)
    {
        system.supplicant->listener->supplicantReady();
        TestClient client(options.root + "/Pellvane/" + name);
        EXPECT_TRUE(client.open());
        const auto reply = client.request(callPacket(VX_OID_802_11_EVENT_FLAG, Bytes(4), 4));
        return reply && reply->output == bytesOf({ 1, 0, 0, 0 });
    }
    [[nodiscard]] std::size_t countInLog(const std::string& text) const
    {
        std::size_t count = 0;
        for (std::size_t at = log.find(text); at != std::string::npos; at = log.find(text, at + 1))
            ++count;
        return count;
    }

    using Names = std::vector<std::string>;

    QTemporaryDir folder { QStringLiteral("/tmp/watch-XXXXXX") };
    WatchOptions options;
    FakeSystem system;
    FakeManagers managers;
    std::int64_t nowMs { 100'000 };
    std::string log;
    std::unique_ptr<CardWatch> watch;
};

} // namespace

TEST_F(CardWatchTest, PublishesWirelessInterfacesWhileTheyExist)
{
    InterfaceFacts monitor = interface(5, "mon0");
    monitor.type = NL80211_IFTYPE_MONITOR;
    system.interfaces = { interface(3, "wlan0"), monitor };
    start();
    EXPECT_EQ(published(), Names { "wlan0" });
    change({ interface(3, "wlan0"), interface(4, "wlan1") });
    EXPECT_EQ(published(), (Names { "wlan0", "wlan1" }));
    system.listener->linkRemoved(3);
    EXPECT_EQ(published(), Names { "wlan1" });
    change({});
    EXPECT_EQ(published(), Names {});
}

TEST_F(CardWatchTest, PublishesOnlyTheInterfaceAskedFor)
{
    options.interfaceName = "wlan1";
    system.interfaces = { interface(3, "wlan0") };
    start();
    EXPECT_EQ(published(), Names {});
    change({ interface(3, "wlan0"), interface(4, "wlan1") });
    EXPECT_EQ(published(), Names { "wlan1" });
}

TEST_F(CardWatchTest, RenamedInterfaceIsPublishedUnderItsNewName)
{
    system.interfaces = { interface(3, "wlan0") };
    start();
    system.interfaces = { interface(3, "radio") };
    system.listener->linkChanged({ 3, "radio", true, std::nullopt });
    EXPECT_EQ(published(), Names { "radio" });
}

TEST_F(CardWatchTest, FailedReadingChangesNothing)
{
    system.interfaces = { interface(3, "wlan0") };
    start();
    system.interfaces.reset();
    system.listener->interfacesChanged();
    EXPECT_EQ(published(), Names { "wlan0" });
}

TEST_F(CardWatchTest, MissedEventsAreMadeUpForByReading)
{
    system.interfaces = { interface(3, "wlan0") };
    start();
    system.kernel->answerAll();
    system.kernel->calls.clear();
    system.interfaces->push_back(interface(4, "wlan1"));
    FakeKernel& first = *system.kernel;
    system.listener->eventsMissed();
    EXPECT_EQ(published(), (Names { "wlan0", "wlan1" }));
    EXPECT_EQ(first.count("wiphy"), 1U);
    EXPECT_EQ(first.count("scan results"), 1U);
}

TEST_F(CardWatchTest, ManagedInterfaceIsPublishedAfterItsRelease)
{
    managers.finding = { ManagerFinding::Kind::Held, "somebody manages it" };
    system.interfaces = { interface(3, "wlan0") };
    start();
    poll();
    EXPECT_EQ(published(), Names {});
    EXPECT_EQ(countInLog("wlan0: left alone: somebody manages it\n"), 1U);
    managers.finding = {};
    poll();
    EXPECT_EQ(published(), Names { "wlan0" });
}

TEST_F(CardWatchTest, FailedPublicationIsSaidOnceAndTriedAgain)
{
    const std::filesystem::path obstacle = options.root + "/Pellvane";
    std::filesystem::create_symlink("/nowhere", obstacle);
    system.interfaces = { interface(3, "wlan0") };
    start();
    poll();
    poll();
    EXPECT_EQ(countInLog("wlan0: cannot be published"), 1U) << log;
    std::filesystem::remove(obstacle);
    poll();
    EXPECT_EQ(published(), Names { "wlan0" });
}

TEST_F(CardWatchTest, SuspensionIsNoticedByTheClockThatRunsOn)
{
    system.suspended = 5000; // before the service was started
    start();
    system.suspended += 10;
    poll();
    EXPECT_EQ(countInLog("the machine was suspended"), 0U);
    system.suspended += 60'000;
    poll();
    poll();
    EXPECT_EQ(countInLog("the machine was suspended"), 1U);
}

TEST_F(CardWatchTest, InterfaceThatIsThereAtTheStartRaisesTheEvent)
{
    system.interfaces = { interface(3, "wlan0") };
    start(); // a client may have been connected to the service before
    EXPECT_TRUE(isEventRaised("wlan0"));
    change({ interface(3, "wlan0"), interface(4, "wlan1") });
    EXPECT_FALSE(isEventRaised("wlan1"));
}

TEST_F(CardWatchTest, FirstDeviceOfTheMachineIsNoReturn)
{
    system.interfaces.reset(); // the kernel does not know wireless devices yet
    start();
    poll();
    change({ interface(3, "wlan0") });
    EXPECT_FALSE(isEventRaised("wlan0"));
}

TEST_F(CardWatchTest, ReturnAndRenamingRaiseTheEvent)
{
    start();
    change({ interface(3, "wlan0") });
    EXPECT_FALSE(isEventRaised("wlan0"));
    change({ interface(3, "radio") });
    EXPECT_TRUE(isEventRaised("radio"));
    change({});
    change({ interface(4, "radio") });
    EXPECT_TRUE(isEventRaised("radio"));
    change({});
    nowMs += CardWatch::returnMs;
    change({ interface(5, "radio") });
    EXPECT_FALSE(isEventRaised("radio"));
}

TEST_F(CardWatchTest, PublishedInterfaceIsGivenToAManagerThatTakesItLater)
{
    system.interfaces = { interface(3, "wlan0") };
    start();
    managers.finding = { ManagerFinding::Kind::Unclear, "somebody does not answer" };
    poll(); // no reason to drop a link
    EXPECT_EQ(published(), Names { "wlan0" });
    managers.finding = { ManagerFinding::Kind::Held, "somebody manages it" };
    poll();
    EXPECT_EQ(published(), Names {});
    poll();
    EXPECT_EQ(countInLog("wlan0: left alone: somebody manages it\n"), 1U);
}

TEST_F(CardWatchTest, ManagerThatDoesNotAnswerMayHoldTheInterface)
{
    managers.finding = { ManagerFinding::Kind::Unclear, "somebody does not answer" };
    system.interfaces = { interface(3, "wlan0") };
    start();
    nowMs += CardWatch::settlingMs;
    poll();
    EXPECT_EQ(published(), Names {});
    EXPECT_EQ(countInLog("wlan0: left alone: somebody does not answer\n"), 1U);
}

TEST_F(CardWatchTest, ManagerHasTimeToLearnOfANewInterface)
{
    start();
    managers.finding.kind = ManagerFinding::Kind::NotKnown;
    change({ interface(3, "wlan0") });
    nowMs += CardWatch::settlingMs - 1;
    system.listener->interfacesChanged();
    EXPECT_EQ(published(), Names {});
    nowMs += 1;
    system.listener->interfacesChanged();
    EXPECT_EQ(published(), Names { "wlan0" });
    // Each interface has that time.
    change({});
    change({ interface(3, "wlan0") });
    EXPECT_EQ(published(), Names {});
}

TEST_F(CardWatchTest, CardIsPublishedOnceItKnowsItsChannels)
{
    system.isKernelPrompt = false;
    system.interfaces = { interface(3, "wlan0") };
    start();
    EXPECT_EQ(published(), Names {});
    system.kernel->answerAll();
    EXPECT_EQ(published(), Names { "wlan0" });
}
