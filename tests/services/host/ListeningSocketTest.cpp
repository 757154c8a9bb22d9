#include "services/host/ListeningSocket.h"

#include "tests/services/host/TestClient.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

class ListeningSocketTest : public testing::Test {
protected:
    std::optional<ListeningSocket> publish(const std::string& instance = "card0")
    {
        errno = 0;
        return ListeningSocket::publish(root, "Pellvane", instance);
    }

    static mode_t modeOf(const fs::path& path)
    {
        struct stat status { };
        EXPECT_EQ(::stat(path.c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    bool isFound(const std::string& instance = "card0") { return TestClient(folder / instance).isConnected(); }

    QTemporaryDir temporary;
    std::string root = temporary.filePath(QStringLiteral("io-registry")).toStdString();
    fs::path folder = fs::path(root) / "Pellvane";
};

TEST_F(ListeningSocketTest, MakesItsFoldersForTheOwnerAlone)
{
    const auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    EXPECT_EQ(modeOf(root), 0700u);
    EXPECT_EQ(modeOf(folder), 0700u);
    EXPECT_TRUE(isFound());
}

TEST_F(ListeningSocketTest, UsesTheFoldersThatAreThere)
{
    fs::create_directories(folder);
    fs::permissions(folder, fs::perms(0755));
    const auto socket = publish();
    EXPECT_TRUE(socket.has_value());
    EXPECT_EQ(modeOf(folder), 0755u);
}

TEST_F(ListeningSocketTest, KeepsItsDescriptorsFromOtherPrograms)
{
    const auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    const TestClient client(folder / "card0");
    const FileDescriptor accepted = socket->accept();
    for (const int descriptor : { socket->descriptor(), accepted.get() }) {
        EXPECT_NE(::fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
        EXPECT_NE(::fcntl(descriptor, F_GETFL) & O_NONBLOCK, 0);
    }
}

TEST_F(ListeningSocketTest, AcceptsNobodyWithoutBlocking)
{
    const auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    EXPECT_FALSE(socket->accept());
    EXPECT_EQ(errno, EAGAIN);
}

TEST_F(ListeningSocketTest, GoesWithItsName)
{
    auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    EXPECT_TRUE(fs::exists(folder / "card0"));
    socket.reset();
    EXPECT_FALSE(fs::exists(folder / "card0"));
}

TEST_F(ListeningSocketTest, LeavesTheNameToAServiceThatTookIt)
{
    auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    fs::remove(folder / "card0");
    const auto other = publish();
    ASSERT_TRUE(other.has_value());
    socket.reset();
    EXPECT_TRUE(isFound());
}

TEST_F(ListeningSocketTest, DoesNotMissANameThatIsGone)
{
    auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    fs::remove_all(root);
    socket.reset();
    EXPECT_FALSE(fs::exists(root));
}

TEST_F(ListeningSocketTest, TakesThePlaceOfASocketThatADeadProcessLeft)
{
    const auto first = publish();
    ASSERT_TRUE(first.has_value());
    // A process that dies leaves its name: the same socket, listening no more.
    ASSERT_EQ(::shutdown(first->descriptor(), SHUT_RDWR), 0);
    EXPECT_FALSE(isFound());
    const auto second = publish();
    ASSERT_TRUE(second.has_value());
    EXPECT_TRUE(isFound());
}

TEST_F(ListeningSocketTest, RespectsALiveService)
{
    const auto first = publish();
    ASSERT_TRUE(first.has_value());
    EXPECT_FALSE(publish().has_value());
    EXPECT_EQ(errno, EADDRINUSE);
    EXPECT_TRUE(isFound());
    EXPECT_TRUE(publish("card1").has_value());
}

TEST_F(ListeningSocketTest, RespectsALiveServiceThatIsTooBusyToAccept)
{
    const auto first = publish();
    ASSERT_TRUE(first.has_value());
    ASSERT_EQ(::listen(first->descriptor(), 0), 0);
    std::vector<TestClient> waiting;
    do
        waiting.emplace_back(folder / "card0");
    while (waiting.back().isConnected() && waiting.size() < 100);
    ASSERT_FALSE(waiting.back().isConnected());
    EXPECT_FALSE(publish().has_value());
    EXPECT_EQ(errno, EADDRINUSE);
}

TEST_F(ListeningSocketTest, SweepsAwayNothingButSockets)
{
    fs::create_directories(folder);
    std::ofstream(folder / "card0") << "notes";
    fs::create_symlink("card0", folder / "card1");
    EXPECT_FALSE(publish("card0").has_value());
    EXPECT_EQ(errno, EEXIST);
    EXPECT_FALSE(publish("card1").has_value());
    EXPECT_EQ(errno, EEXIST);
    EXPECT_TRUE(fs::exists(folder / "card1"));
}

TEST_F(ListeningSocketTest, DistrustsAFolderThatOthersMayWriteTo)
{
    fs::create_directories(folder);
    for (const unsigned mode : { 0770u, 0702u, 01777u }) {
        fs::permissions(folder, fs::perms(mode));
        EXPECT_FALSE(publish().has_value()) << std::oct << mode;
        EXPECT_EQ(errno, EPERM) << std::oct << mode;
        EXPECT_TRUE(fs::is_empty(folder)) << std::oct << mode;
    }
}

TEST_F(ListeningSocketTest, DistrustsAFolderOfSomebodyElse)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a folder away";
    constexpr uid_t nobody = 65534;
    fs::create_directories(folder);
    fs::permissions(folder, fs::perms(0700));
    ASSERT_EQ(::chown(folder.c_str(), nobody, nobody), 0);
    EXPECT_FALSE(publish().has_value());
    EXPECT_EQ(errno, EPERM);
}

TEST_F(ListeningSocketTest, FollowsNoLinkToAClassFolder)
{
    fs::create_directories(fs::path(root) / "elsewhere");
    fs::create_directory_symlink("elsewhere", folder);
    EXPECT_FALSE(publish().has_value());
    EXPECT_TRUE(fs::is_empty(fs::path(root) / "elsewhere"));
}

TEST_F(ListeningSocketTest, NeedsAPlaceForItsRoot)
{
    root = "/proc/io-registry";
    EXPECT_FALSE(publish().has_value());
    root = temporary.filePath(QStringLiteral("missing/io-registry")).toStdString();
    EXPECT_FALSE(publish().has_value());
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(ListeningSocketTest, NeedsNamesThatStayInTheirFolder)
{
    for (const std::string& name :
        { std::string(), std::string("."), std::string(".."), std::string("a/b"), std::string("a\0b", 3) }) {
        EXPECT_FALSE(ListeningSocket::publish(root, "Pellvane", name).has_value()) << name;
        EXPECT_EQ(errno, EINVAL) << name;
        EXPECT_FALSE(ListeningSocket::publish(root, name, "card0").has_value()) << name;
        EXPECT_EQ(errno, EINVAL) << name;
    }
    EXPECT_FALSE(fs::exists(root));
}

TEST_F(ListeningSocketTest, ReachesFoldersDeeperThanASocketAddressIsLong)
{
    root = temporary.filePath(QString(60, u'd') + u'/' + QString(60, u'e')).toStdString();
    folder = fs::path(root) / "Pellvane";
    fs::create_directories(root);
    auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    EXPECT_TRUE(fs::is_socket(folder / "card0"));
    EXPECT_TRUE(isFound());
    socket.reset();
    EXPECT_FALSE(fs::exists(folder / "card0"));
}

TEST_F(ListeningSocketTest, RefusesANameThatNoClientCouldReach)
{
    EXPECT_FALSE(publish(std::string(120, 'n')).has_value());
    EXPECT_EQ(errno, ENAMETOOLONG);
    EXPECT_TRUE(fs::is_empty(folder));
}

} // namespace
