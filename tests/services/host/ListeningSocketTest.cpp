#include "services/host/ListeningSocket.h"

#include "tests/services/host/TestClient.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <system_error>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

class ListeningSocketTest : public testing::Test {
protected:
    std::optional<ListeningSocket> publish(const std::string& instance = "card0")
    {
        return ListeningSocket::publish(root, "Pellvane", instance, error);
    }

    static mode_t modeOf(const fs::path& path)
    {
        struct stat status { };
        EXPECT_EQ(::stat(path.c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    bool isReachable(const std::string& instance = "card0") { return TestClient(directory / instance).isConnected(); }

    std::error_code error;
    QTemporaryDir temporary;
    std::string root = temporary.filePath(QStringLiteral("io-registry")).toStdString();
    fs::path directory = fs::path(root) / "Pellvane";
};

TEST_F(ListeningSocketTest, CreatesPrivateDirectories)
{
    const auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    EXPECT_EQ(modeOf(root), 0700u);
    EXPECT_EQ(modeOf(directory), 0700u);
    EXPECT_TRUE(isReachable());
}

TEST_F(ListeningSocketTest, GrantsAccessWhateverTheUmaskIs)
{
    const ServiceAccess access { 0755, mode_t { 0660 }, ::getegid() };
    const mode_t previous = ::umask(0077);
    const auto socket = ListeningSocket::publish(root, "Pellvane", "card0", error, access);
    ::umask(previous);
    ASSERT_TRUE(socket.has_value());
    EXPECT_EQ(modeOf(root), 0755u);
    EXPECT_EQ(modeOf(directory), 0755u);
    EXPECT_EQ(modeOf(directory / "card0"), 0660u);
    EXPECT_TRUE(isReachable());
}

TEST_F(ListeningSocketTest, LeavesNoSocketBehindIfAccessCannotBeGranted)
{
    // Only root may give files to a group that it is not a member of.
    if (::geteuid() == 0)
        GTEST_SKIP() << "root may do everything";
    constexpr gid_t foreignGroup = 12345;
    const auto socket
        = ListeningSocket::publish(root, "Pellvane", "card0", error, { 0755, mode_t { 0660 }, foreignGroup });
    EXPECT_FALSE(socket.has_value());
    EXPECT_FALSE(fs::exists(directory / "card0"));
}

TEST_F(ListeningSocketTest, UsesExistingDirectories)
{
    fs::create_directories(directory);
    fs::permissions(directory, fs::perms(0755));
    const auto socket = publish();
    EXPECT_TRUE(socket.has_value());
    EXPECT_EQ(modeOf(directory), 0755u);
}

TEST_F(ListeningSocketTest, SetsDescriptorsCloseOnExecAndNonBlocking)
{
    const auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    const TestClient client(directory / "card0");
    const FileDescriptor accepted = socket->accept(error);
    for (const int descriptor : { socket->descriptor(), accepted.get() }) {
        EXPECT_NE(::fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
        EXPECT_NE(::fcntl(descriptor, F_GETFL) & O_NONBLOCK, 0);
    }
}

TEST_F(ListeningSocketTest, AcceptDoesNotBlock)
{
    const auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    EXPECT_FALSE(socket->accept(error));
    EXPECT_EQ(error, std::errc::resource_unavailable_try_again);
}

TEST_F(ListeningSocketTest, RemovesItsNameWhenDestroyed)
{
    auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    EXPECT_TRUE(fs::exists(directory / "card0"));
    socket.reset();
    EXPECT_FALSE(fs::exists(directory / "card0"));
}

TEST_F(ListeningSocketTest, KeepsANameThatAnotherServiceHasTaken)
{
    auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    fs::remove(directory / "card0");
    const auto other = publish();
    ASSERT_TRUE(other.has_value());
    socket.reset();
    EXPECT_TRUE(isReachable());
}

TEST_F(ListeningSocketTest, ToleratesARemovedName)
{
    auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    fs::remove_all(root);
    socket.reset();
    EXPECT_FALSE(fs::exists(root));
}

TEST_F(ListeningSocketTest, ReplacesTheSocketOfADeadProcess)
{
    const auto first = publish();
    ASSERT_TRUE(first.has_value());
    // A process that dies leaves the socket's name behind, but no longer listens.
    ASSERT_EQ(::shutdown(first->descriptor(), SHUT_RDWR), 0);
    EXPECT_FALSE(isReachable());
    const auto second = publish();
    ASSERT_TRUE(second.has_value());
    EXPECT_TRUE(isReachable());
}

TEST_F(ListeningSocketTest, KeepsALiveService)
{
    const auto first = publish();
    ASSERT_TRUE(first.has_value());
    EXPECT_FALSE(publish().has_value());
    EXPECT_EQ(error, std::errc::address_in_use);
    EXPECT_TRUE(isReachable());
    EXPECT_TRUE(publish("card1").has_value());
}

TEST_F(ListeningSocketTest, KeepsALiveServiceWhoseQueueIsFull)
{
    const auto first = publish();
    ASSERT_TRUE(first.has_value());
    ASSERT_EQ(::listen(first->descriptor(), 0), 0);
    std::vector<TestClient> waiting;
    do
        waiting.emplace_back(directory / "card0");
    while (waiting.back().isConnected() && waiting.size() < 100);
    ASSERT_FALSE(waiting.back().isConnected());
    EXPECT_FALSE(publish().has_value());
    EXPECT_EQ(error, std::errc::address_in_use);
}

TEST_F(ListeningSocketTest, ReplacesOnlySockets)
{
    fs::create_directories(directory);
    std::ofstream(directory / "card0") << "notes";
    fs::create_symlink("card0", directory / "card1");
    EXPECT_FALSE(publish("card0").has_value());
    EXPECT_EQ(error, std::errc::file_exists);
    EXPECT_FALSE(publish("card1").has_value());
    EXPECT_EQ(error, std::errc::file_exists);
    EXPECT_TRUE(fs::exists(directory / "card1"));
}

TEST_F(ListeningSocketTest, RejectsADirectoryThatOthersMayWriteTo)
{
    fs::create_directories(directory);
    for (const unsigned mode : { 0770u, 0702u, 01777u }) {
        fs::permissions(directory, fs::perms(mode));
        EXPECT_FALSE(publish().has_value()) << std::oct << mode;
        EXPECT_EQ(error, std::errc::operation_not_permitted) << std::oct << mode;
        EXPECT_TRUE(fs::is_empty(directory)) << std::oct << mode;
    }
}

TEST_F(ListeningSocketTest, RejectsADirectoryOfAnotherUser)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can change the owner of a directory";
    constexpr uid_t nobody = 65534;
    fs::create_directories(directory);
    fs::permissions(directory, fs::perms(0700));
    ASSERT_EQ(::chown(directory.c_str(), nobody, nobody), 0);
    EXPECT_FALSE(publish().has_value());
    EXPECT_EQ(error, std::errc::operation_not_permitted);
}

TEST_F(ListeningSocketTest, RejectsASymbolicLinkAsClassDirectory)
{
    fs::create_directories(fs::path(root) / "elsewhere");
    fs::create_directory_symlink("elsewhere", directory);
    EXPECT_FALSE(publish().has_value());
    EXPECT_TRUE(fs::is_empty(fs::path(root) / "elsewhere"));
}

TEST_F(ListeningSocketTest, FailsIfTheRootCannotBeCreated)
{
    root = "/proc/io-registry";
    EXPECT_FALSE(publish().has_value());
    root = temporary.filePath(QStringLiteral("missing/io-registry")).toStdString();
    EXPECT_FALSE(publish().has_value());
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
}

TEST_F(ListeningSocketTest, RejectsNamesThatAreNotFileNames)
{
    for (const std::string& name :
        { std::string(), std::string("."), std::string(".."), std::string("a/b"), std::string("a\0b", 3) }) {
        EXPECT_FALSE(ListeningSocket::publish(root, "Pellvane", name, error).has_value()) << name;
        EXPECT_EQ(error, std::errc::invalid_argument) << name;
        EXPECT_FALSE(ListeningSocket::publish(root, name, "card0", error).has_value()) << name;
        EXPECT_EQ(error, std::errc::invalid_argument) << name;
    }
    EXPECT_FALSE(fs::exists(root));
}

TEST_F(ListeningSocketTest, SupportsDirectoryPathsLongerThanASocketAddress)
{
    root = temporary.filePath(QString(60, u'd') + u'/' + QString(60, u'e')).toStdString();
    directory = fs::path(root) / "Pellvane";
    fs::create_directories(root);
    auto socket = publish();
    ASSERT_TRUE(socket.has_value());
    EXPECT_TRUE(fs::is_socket(directory / "card0"));
    EXPECT_TRUE(isReachable());
    socket.reset();
    EXPECT_FALSE(fs::exists(directory / "card0"));
}

TEST_F(ListeningSocketTest, RejectsANameTooLongForASocketAddress)
{
    EXPECT_FALSE(publish(std::string(120, 'n')).has_value());
    EXPECT_EQ(error, std::errc::filename_too_long);
    EXPECT_TRUE(fs::is_empty(directory));
}

} // namespace
