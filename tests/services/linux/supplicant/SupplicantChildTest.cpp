#include "services/linux/supplicant/SupplicantChild.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

// At its end, lets the killed processes end, for which nobody else waits.
struct EndOfProcesses {
    EndOfProcesses() = default;
    Q_DISABLE_COPY_MOVE(EndOfProcesses)
    ~EndOfProcesses()
    {
        const auto isAnyLeft = [] {
            std::ifstream children("/proc/thread-self/children");
            return children.peek() != std::ifstream::traits_type::eof();
        };
        for (int waits = 0; isAnyLeft() && waits < 1000; ++waits)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

class SupplicantChildTest : public testing::Test, protected SupplicantListener {
protected:
    SupplicantChildTest()
    {
        // Its sockets need short paths.
        qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
        qputenv("STAND_IN_LOG", folder.filePath(QStringLiteral("log")).toUtf8());
        qputenv("STAND_IN_BEHAVIOUR", "");
    }

    void start() { child.start(*this); }

    template <typename Condition> bool waitFor(Condition condition, int limitMs = 15'000)
    {
        QElapsedTimer timer;
        timer.start();
        while (!condition() && timer.elapsed() < limitMs)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
        return condition();
    }

    [[nodiscard]] std::string commands() const
    {
        std::ifstream file(folder.filePath(QStringLiteral("log")).toStdString());
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }
    [[nodiscard]] bool isSaid(const std::string& text) const { return complaints.find(text) != std::string::npos; }

    static NetworkBlock network(const std::string& ssid)
    {
        NetworkBlock block;
        block.ssid.assign(ssid.begin(), ssid.end());
        block.security = BlockSecurity::WpaPsk;
        block.presharedKey.fill(0xAB);
        return block;
    }

    void supplicantReady() override { ++readyCount; }
    void supplicantLost() override { ++lostCount; }
    void supplicantEvent(const SupplicantEvent& event) override { lastEvent = event.kind; }
    void supplicantStatus(const SupplicantStatus& status) override { lastStatus = status; }
    bool supplicantProbed(const SupplicantStatus& status) override
    {
        ++probeCount;
        lastProbe = status;
        return isProbeNews;
    }

    int readyCount { 0 };
    int lostCount { 0 };
    SupplicantEventKind lastEvent { SupplicantEventKind::Other };
    int probeCount { 0 };
    bool isProbeNews { false };
    std::optional<SupplicantStatus> lastStatus;
    std::optional<SupplicantStatus> lastProbe;
    std::string complaints;
    QTemporaryDir folder { QStringLiteral("/tmp/child-XXXXXX") };
    EndOfProcesses endOfProcesses;
    SupplicantChild child { "card9", [this](const std::string& text) { complaints += text + '\n'; }, STAND_IN_PROGRAM,
        { .replyTimeoutMs = 3000, .probeIntervalMs = 300, .startTimeoutMs = 10'000, .provenMs = 1000 } };
};

TEST_F(SupplicantChildTest, JoinsWithTheSettingsOfTheBlock)
{
    start();
    ASSERT_TRUE(waitFor([this] { return readyCount == 1; }));
    child.join(network("cafe"));
    ASSERT_TRUE(waitFor([this] { return lastStatus.has_value(); }));
    EXPECT_EQ(lastEvent, SupplicantEventKind::Connected);
    EXPECT_TRUE(lastStatus->isCompleted);
    const std::string sent = commands();
    EXPECT_LT(
        sent.find("REMOVE_NETWORK all\nADD_NETWORK\nSET_NETWORK 0 ssid 63616665\n"), sent.find("SELECT_NETWORK 0"));
    EXPECT_NE(sent.find("SET_NETWORK 0 psk abab"), std::string::npos);
    EXPECT_TRUE(complaints.empty()) << complaints;
}

TEST_F(SupplicantChildTest, KeysAreNeitherArgumentsNorFilesAndLeaveNoCore)
{
    start();
    ASSERT_TRUE(waitFor([this] { return readyCount == 1; }));
    child.join(network("cafe"));
    ASSERT_TRUE(waitFor([this] { return lastStatus.has_value(); }));
    std::istringstream sent(commands());
    std::string started;
    std::getline(sent, started);
    EXPECT_EQ(started.find("abab"), std::string::npos);
    EXPECT_NE(started.find("filter=00000000"), std::string::npos) << started;
    EXPECT_NE(started.find("signals=set()"), std::string::npos) << started;
    EXPECT_EQ(complaints.find("abab"), std::string::npos);
}

TEST_F(SupplicantChildTest, IsStartedAgainAfterItsEnd)
{
    start();
    ASSERT_TRUE(waitFor([this] { return readyCount == 1; }));
    child.join(network("KILL"));
    ASSERT_TRUE(waitFor([this] { return readyCount == 2; }));
    EXPECT_EQ(lostCount, 1);
    EXPECT_TRUE(isSaid("status 9")) << complaints;
    child.join(network("cafe"));
    EXPECT_TRUE(waitFor([this] { return lastStatus.has_value(); }));
}

TEST_F(SupplicantChildTest, IsStartedAgainIfItDoesNotAnswer)
{
    qputenv("STAND_IN_BEHAVIOUR", "deaf");
    start();
    ASSERT_TRUE(waitFor([this] { return isSaid("does not answer"); }));
    EXPECT_EQ(readyCount, 0);
    qputenv("STAND_IN_BEHAVIOUR", "");
    EXPECT_TRUE(waitFor([this] { return readyCount == 1; }));
}

TEST_F(SupplicantChildTest, EndlessDeathsAreLoggedOnceAndPausedBetween)
{
    qputenv("STAND_IN_BEHAVIOUR", "short");
    start();
    const auto starts = [this] {
        std::istringstream lines(commands());
        int count = 0;
        for (std::string line; std::getline(lines, line);)
            count += line.starts_with("started") ? 1 : 0;
        return count;
    };
    ASSERT_TRUE(waitFor([&starts] { return starts() == 3; }));
    EXPECT_EQ(complaints, "wpa_supplicant: no such driver\nwpa_supplicant is started again: it ended with status 3\n");
    EXPECT_EQ(lostCount, 0); // it was never ready
}

TEST_F(SupplicantChildTest, MissingProgramIsSaid)
{
    SupplicantChild missing(
        "card9", [this](const std::string& text) { complaints += text; }, "/nowhere/wpa_supplicant", {});
    missing.start(*this);
    EXPECT_TRUE(waitFor([this] { return isSaid("cannot be started"); }));
}

TEST_F(SupplicantChildTest, ChildThatKeepsDyingIsPausedBetweenAlthoughItWasReady)
{
    start();
    for (int death = 1; death <= 3; ++death) {
        ASSERT_TRUE(waitFor([this, death] { return readyCount == death; }));
        child.join(network("KILL"));
        ASSERT_TRUE(waitFor([this, death] { return lostCount == death; }));
    }
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(waitFor([this] { return readyCount == 4; }));
    EXPECT_GE(timer.elapsed(), 700); // 200, 400, 800 ms
    EXPECT_EQ(complaints, "wpa_supplicant is started again: it ended with status 9\n");
    // One that works for a while starts the pauses over.
    (void)waitFor([] { return false; }, 1300);
    child.join(network("KILL"));
    ASSERT_TRUE(waitFor([this] { return lostCount == 4; }));
    timer.start();
    ASSERT_TRUE(waitFor([this] { return readyCount == 5; }));
    EXPECT_LT(timer.elapsed(), 700);
}

TEST_F(SupplicantChildTest, ReadinessNeedsTheConsentToSendEvents)
{
    qputenv("STAND_IN_BEHAVIOUR", "refuses=ATTACH");
    start();
    EXPECT_FALSE(waitFor([this] { return readyCount != 0; }, 1000));
}

TEST_F(SupplicantChildTest, StateIsProbedAndEventsAreAskedForAgainIfOneWasLost)
{
    start();
    ASSERT_TRUE(waitFor([this] { return probeCount >= 1; }));
    EXPECT_TRUE(lastProbe->isCompleted);
    EXPECT_EQ(commands().find("DETACH"), std::string::npos);
    isProbeNews = true;
    ASSERT_TRUE(waitFor([this] { return commands().find("DETACH\nATTACH\n") != std::string::npos; }));
    isProbeNews = false;
    child.join(network("cafe"));
    EXPECT_TRUE(waitFor([this] { return lastEvent == SupplicantEventKind::Connected; }));
    EXPECT_EQ(readyCount, 1);
}

TEST_F(SupplicantChildTest, StatusFromBeforeADisconnectionIsOutOfDate)
{
    qputenv("STAND_IN_BEHAVIOUR", "flickers");
    start();
    ASSERT_TRUE(waitFor([this] { return readyCount == 1; }));
    child.join(network("cafe"));
    ASSERT_TRUE(waitFor([this] { return lastEvent == SupplicantEventKind::Disconnected; }));
    EXPECT_FALSE(waitFor([this] { return lastStatus.has_value(); }, 500));
}

TEST_F(SupplicantChildTest, NewJoinReplacesOneThatIsStillBeingMade)
{
    start();
    ASSERT_TRUE(waitFor([this] { return readyCount == 1; }));
    child.join(network("first"));
    child.join(network("cafe"));
    ASSERT_TRUE(waitFor([this] { return lastStatus.has_value(); }));
    const std::string sent = commands();
    EXPECT_EQ(sent.find("6669727374"), std::string::npos); // "first"
    EXPECT_NE(sent.find("63616665"), std::string::npos);
}

TEST_F(SupplicantChildTest, RefusedSettingIsNamedWithoutItsValue)
{
    qputenv("STAND_IN_BEHAVIOUR", "refuses= psk ");
    start();
    ASSERT_TRUE(waitFor([this] { return readyCount == 1; }));
    child.join(network("cafe"));
    EXPECT_TRUE(waitFor([this] { return isSaid("refuses the setting psk"); }));
    EXPECT_FALSE(waitFor([this] { return commands().find("SELECT_NETWORK") != std::string::npos; }, 300));
    EXPECT_EQ(complaints.find("abab"), std::string::npos);
}

TEST_F(SupplicantChildTest, LeavesAndWidensItsSearch)
{
    start();
    ASSERT_TRUE(waitFor([this] { return readyCount == 1; }));
    child.widenSearch({ 2412 }, true); // nothing is joined
    child.join(network("cafe"));
    ASSERT_TRUE(waitFor([this] { return lastStatus.has_value(); }));
    child.widenSearch({ 2412, 5180 }, true);
    EXPECT_TRUE(waitFor(
        [this] {
            return commands().find("freq_list 2412 5180\nSET_NETWORK 0 scan_freq 2412 5180\nREASSOCIATE\n")
                != std::string::npos;
        },
        3000));
    child.leave();
    ASSERT_TRUE(waitFor([this] { return commands().find("DISCONNECT\nREMOVE_NETWORK all\n") != std::string::npos; }));
    EXPECT_EQ(commands().find("scan_freq 2412\n"), std::string::npos);
}

TEST_F(SupplicantChildTest, NextChildOfAnInterfaceWaitsForTheEndOfTheFirst)
{
    auto first = std::make_unique<SupplicantChild>(
        "card9", [](const std::string&) {}, STAND_IN_PROGRAM, SupplicantChild::Timing {});
    first->start(*this);
    ASSERT_TRUE(waitFor([this] { return readyCount == 1; }));
    first.reset();
    start();
    EXPECT_TRUE(waitFor([this] { return readyCount == 2; }));
    EXPECT_TRUE(complaints.empty()) << complaints; // the stand-in ends at once if it meets another one
}

TEST_F(SupplicantChildTest, SocketsAreInADirectoryOfItsOwn)
{
    start();
    ASSERT_TRUE(waitFor([this] { return readyCount == 1; }));
    const std::string started = commands();
    const auto first = started.find("-c") + 2;
    const QString directory = QString::fromStdString(started.substr(first, started.find("/settings") - first));
    EXPECT_EQ(QFile::permissions(directory) & (QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther),
        QFile::Permissions());
}

} // namespace
