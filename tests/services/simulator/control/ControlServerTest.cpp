#include "services/simulator/control/ControlServer.h"

#include "services/simulator/control/ControlClient.h"
#include "tests/services/host/DescriptorShortage.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class ControlServerTest : public testing::Test {
protected:
    static bool runUntil(const std::function<bool()>& condition)
    {
        const QDeadlineTimer deadline(10'000);
        while (!condition() && !deadline.hasExpired())
            QCoreApplication::processEvents();
        return condition();
    }

    static mode_t modeOf(const fs::path& file)
    {
        struct stat status { };
        EXPECT_EQ(::stat(file.c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    void connect(QLocalSocket& client)
    {
        client.connectToServer(QString::fromStdString(path));
        ASSERT_TRUE(client.waitForConnected());
    }

    QTemporaryDir temporary;
    fs::path directory = fs::path(temporary.path().toStdString()) / "control";
    std::string path = directory / "socket";
    QByteArray answer;
    ControlServer server { [this](const QByteArray& line) { return line + answer; } };
};

TEST_F(ControlServerTest, CreatesAPrivateSocketAndRemovesIt)
{
    {
        ControlServer other { [](const QByteArray&) { return QByteArray(); } };
        ASSERT_EQ(other.listen(path), std::error_code());
        EXPECT_EQ(modeOf(directory), 0700U);
        EXPECT_EQ(modeOf(path), 0600U);
    }
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(ControlServerTest, RejectsADirectoryThatOthersCanAccess)
{
    fs::create_directory(directory);
    for (const unsigned mode : { 0710U, 0701U, 0740U, 0777U }) {
        fs::permissions(directory, fs::perms(mode));
        EXPECT_EQ(server.listen(path), std::errc::permission_denied) << std::oct << mode;
    }
    EXPECT_TRUE(fs::is_empty(directory));
}

TEST_F(ControlServerTest, RejectsADirectoryOfAnotherUser)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can change the owner of a directory";
    fs::create_directory(directory);
    fs::permissions(directory, fs::perms(0700));
    ASSERT_EQ(::chown(directory.c_str(), 65534, 65534), 0);
    EXPECT_EQ(server.listen(path), std::errc::permission_denied);
}

TEST_F(ControlServerTest, RejectsPathsThatClientsCannotUse)
{
    EXPECT_EQ(server.listen(directory / std::string(120, 'n')), std::errc::filename_too_long);
    EXPECT_EQ(server.listen("/no/such/directory/socket"), std::errc::no_such_file_or_directory);
}

TEST_F(ControlServerTest, KeepsTheSocketOfALiveSimulatorButReplacesADeadOne)
{
    ControlServer other { [](const QByteArray&) { return QByteArray(); } };
    ASSERT_EQ(other.listen(path), std::error_code());
    EXPECT_EQ(server.listen(path), std::errc::address_in_use);
    QLocalSocket client;
    connect(client);

    // A dead process leaves a socket that no process listens on.
    std::error_code error;
    const std::string stale = directory / "stale";
    {
        auto socket = ListeningSocket::listen(
            FileDescriptor(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)), "stale", SOCK_STREAM, error);
        ASSERT_TRUE(socket);
        fs::rename(stale, directory / "kept");
    }
    fs::rename(directory / "kept", stale);
    EXPECT_EQ(server.listen(stale), std::error_code());
}

TEST_F(ControlServerTest, AnswersEveryLineInOrder)
{
    ASSERT_EQ(server.listen(path), std::error_code());
    answer = "!";
    QLocalSocket client;
    connect(client);
    client.write("one\ntwo\nthr");
    ASSERT_TRUE(runUntil([&] { return client.bytesAvailable() == 10; }));
    client.write("ee\n");
    ASSERT_TRUE(runUntil([&] { return client.bytesAvailable() == 17; }));
    EXPECT_EQ(client.readAll(), "one!\ntwo!\nthree!\n");
}

// The status of thousands of networks is larger than a socket buffer.
TEST_F(ControlServerTest, DeliversLargeAnswers)
{
    ASSERT_EQ(server.listen(path), std::error_code());
    answer = QByteArray(8 << 20, 'x');
    std::optional<QByteArray> received;
    QString error;
    const std::unique_ptr<QThread> client(
        QThread::create([&] { received = callControl(QString::fromStdString(path), "status", error); }));
    client->start();
    const bool isFinished = runUntil([&] { return client->isFinished(); });
    client->wait();
    ASSERT_TRUE(isFinished);
    ASSERT_TRUE(received) << error.toStdString();
    EXPECT_EQ(*received, "status" + answer + '\n');
}

TEST_F(ControlServerTest, QueuesOneAnswerForAClientThatDoesNotRead)
{
    int answered = 0;
    ControlServer counting { [&answered](const QByteArray&) {
        ++answered;
        return QByteArray(1 << 20, 'x');
    } };
    ASSERT_EQ(counting.listen(path), std::error_code());
    QLocalSocket client;
    client.setReadBufferSize(1);
    connect(client);
    client.write(QByteArray("line\n").repeated(20));
    ASSERT_TRUE(runUntil([&] { return answered > 0; }));
    for (int i = 0; i < 50; ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(answered, 1);
}

TEST_F(ControlServerTest, DisconnectsAClientWhoseLineIsTooLong)
{
    ASSERT_EQ(server.listen(path), std::error_code());
    QLocalSocket longest;
    connect(longest);
    longest.write(QByteArray(ControlServer::maxRequestBytes - 1, 'x') + '\n');
    EXPECT_TRUE(runUntil([&] { return longest.bytesAvailable() == ControlServer::maxRequestBytes; }));

    QLocalSocket tooLong;
    connect(tooLong);
    tooLong.write(QByteArray(ControlServer::maxRequestBytes + 1, 'x'));
    EXPECT_TRUE(runUntil([&] { return tooLong.state() == QLocalSocket::UnconnectedState; }));
    EXPECT_EQ(tooLong.bytesAvailable(), 0);
}

TEST_F(ControlServerTest, RecoversFromAShortageOfDescriptors)
{
    ASSERT_EQ(server.listen(path), std::error_code());
    QLocalSocket client;
    connect(client);
    {
        const DescriptorShortage shortage;
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents();
        // The server pauses instead of trying again and again.
        EXPECT_FALSE(QCoreApplication::eventDispatcher()->processEvents(QEventLoop::AllEvents));
    }
    client.write("hello\n");
    EXPECT_TRUE(runUntil([&] { return client.canReadLine(); }));
}

TEST_F(ControlServerTest, ReportsWhyACallFailed)
{
    QString error;
    EXPECT_FALSE(callControl(QString::fromStdString(path), "status", error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("no simulator answers at ")));
}

} // namespace
