#include "platform/store/AtomicFile.h"

#include "tests/platform/store/StoreFixture.h"

#include <chrono>
#include <csignal>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>

namespace {

using namespace std::chrono_literals;

class AtomicFileTest : public StoreFixture {
protected:
    QString path { at("file") };
    QString temporary { at("file.being-written") };
};

TEST_F(AtomicFileTest, CreatesPrivateFileInPrivateDirectories)
{
    const QString nested = at("Library/Preferences/Profile.plist");
    ASSERT_TRUE(writeFileAtomically(nested, "content"));
    EXPECT_EQ(contentOf(nested), "content");
    EXPECT_EQ(modeOf(nested), 0600U);
    EXPECT_EQ(modeOf(at("Library")), 0700U);
    EXPECT_EQ(modeOf(at("Library/Preferences")), 0700U);
}

TEST_F(AtomicFileTest, TemporaryFileIsPrivateBeforeItHasContent)
{
    const mode_t before = ::umask(0);
    AtomicFile file(path);
    EXPECT_TRUE(file.open());
    EXPECT_EQ(modeOf(temporary), 0600U);
    EXPECT_EQ(contentOf(temporary), "");
    (void)::umask(before);
}

TEST_F(AtomicFileTest, ReplacesFileAndMakesItPrivate)
{
    writePlainly(path, "a longer content than before");
    setMode(path, 0666);
    ASSERT_TRUE(writeFileAtomically(path, QByteArray("\0b", 2)));
    EXPECT_EQ(contentOf(path), QByteArray("\0b", 2));
    EXPECT_EQ(modeOf(path), 0600U);
    EXPECT_EQ(namesBeside(path), "file");
}

TEST_F(AtomicFileTest, ReplacesTargetOfSymbolicLink)
{
    writePlainly(at("real"), "old");
    ASSERT_TRUE(QFile::link(at("real"), at("link")));
    ASSERT_TRUE(writeFileAtomically(at("link"), "new"));
    EXPECT_EQ(contentOf(at("real")), "new");
    EXPECT_TRUE(QFileInfo(at("link")).isSymLink());
    EXPECT_EQ(namesBeside(path), "link real");
}

TEST_F(AtomicFileTest, LeavesOldFileWithoutCommit)
{
    writePlainly(path, "old");
    {
        AtomicFile file(path);
        ASSERT_TRUE(file.open());
    }
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(namesBeside(path), "file");
}

TEST_F(AtomicFileTest, CannotReplaceDirectory)
{
    ASSERT_TRUE(QDir(directory.path()).mkpath(QStringLiteral("file/inside")));
    EXPECT_FALSE(writeFileAtomically(path, "new"));
    EXPECT_EQ(namesBeside(path), "file");
}

TEST_F(AtomicFileTest, ReportsPathAndReasonOfFailure)
{
    writePlainly(path, "old");
    const SaveResult result = writeFileAtomically(at("file/below/it"), "new");
    EXPECT_FALSE(result);
    EXPECT_EQ(result.error, std::errc::not_a_directory);
    EXPECT_EQ(result.path, at("file/below"));
    EXPECT_FALSE(makePrivateDirectories(path));
    EXPECT_EQ(contentOf(path), "old");
}

TEST_F(AtomicFileTest, ReplacesLeftoverTemporaryFile)
{
    writePlainly(temporary, "a key, and much more than the new content");
    setMode(temporary, 0644);
    ASSERT_TRUE(writeFileAtomically(path, "new"));
    EXPECT_EQ(contentOf(path), "new");
    EXPECT_EQ(modeOf(path), 0600U);
    EXPECT_EQ(namesBeside(path), "file");
}

TEST_F(AtomicFileTest, DoesNotFollowLinkInPlaceOfTemporaryFile)
{
    writePlainly(at("other"), "someone's");
    ASSERT_TRUE(QFile::link(at("other"), temporary));
    ASSERT_TRUE(writeFileAtomically(path, "new"));
    EXPECT_EQ(contentOf(at("other")), "someone's");
    EXPECT_EQ(contentOf(path), "new");
    EXPECT_FALSE(QFileInfo(path).isSymLink());
    EXPECT_EQ(namesBeside(path), "file other");
}

TEST_F(AtomicFileTest, FailsWithDirectoryInPlaceOfTemporaryFile)
{
    writePlainly(path, "old");
    ASSERT_TRUE(QDir().mkdir(temporary));
    EXPECT_FALSE(writeFileAtomically(path, "new"));
    EXPECT_EQ(contentOf(path), "old");
}

TEST_F(AtomicFileTest, ProgramsThatSaveAtTheSameTimeAllSucceed)
{
    constexpr int size = 200000; // large enough for a reader to see a partial write
    std::vector<pid_t> writers;
    for (const char letter : { 'a', 'b', 'c' }) {
        writers.push_back(startProcess([this, letter] {
            bool allSaved = true;
            for (int i = 0; i < 20; ++i) {
                allSaved = writeFileAtomically(path, QByteArray(size, letter)) && allSaved;
                std::this_thread::sleep_for(1ms);
            }
            return allSaved;
        }));
    }
    const pid_t reader = startProcess([this] {
        for (int i = 0; i < 200; ++i) {
            const QByteArray content = contentOf(path);
            const bool isMissing = content == "cannot be read";
            if (!isMissing && content != QByteArray(size, content.isEmpty() ? '-' : content.front()))
                return false;
        }
        return true;
    });
    for (const pid_t process : writers)
        EXPECT_TRUE(succeeded(process));
    EXPECT_TRUE(succeeded(reader)) << "a partial write";
    EXPECT_EQ(namesBeside(path), "file");
}

TEST_F(AtomicFileTest, WaitsForSaveOfAnotherProgram)
{
    writePlainly(temporary, "half");
    const int other = ::open(QFile::encodeName(temporary).constData(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    std::thread release([other] {
        std::this_thread::sleep_for(50ms);
        ::close(other);
    });
    EXPECT_TRUE(writeFileAtomically(path, "new"));
    release.join();
    EXPECT_EQ(contentOf(path), "new");
}

TEST_F(AtomicFileTest, TimesOutWhileAnotherProgramIsStoppedInItsSave)
{
    writePlainly(path, "old");
    const pid_t other = startProcess([this] {
        AtomicFile file(path);
        return file.open() && ::raise(SIGSTOP) == 0;
    });
    int status = 0;
    ASSERT_EQ(::waitpid(other, &status, WUNTRACED), other);
    ASSERT_TRUE(WIFSTOPPED(status));
    {
        AtomicFile file(path);
        const SaveResult result = file.open(50ms);
        EXPECT_EQ(result.error, std::errc::timed_out);
        EXPECT_EQ(result.path, path);
    }
    EXPECT_TRUE(QFile::exists(temporary)) << "it belongs to the other program";
    EXPECT_EQ(contentOf(path), "old");

    ::kill(other, SIGKILL);
    EXPECT_FALSE(succeeded(other));
    EXPECT_TRUE(writeFileAtomically(path, "new"));
    EXPECT_EQ(contentOf(path), "new");
    EXPECT_EQ(namesBeside(path), "file");
}

// Writing fails at several sizes below that of the content, as on a full disk.
TEST_F(AtomicFileTest, KeepsOldContentWhenNewDoesNotFit)
{
    const QByteArray content(3000, 'n');
    writePlainly(path, "old");
    for (rlim_t limit = 0; limit < 3000; limit += 250) {
        const pid_t child = startProcess([&] {
            (void)std::signal(SIGXFSZ, SIG_IGN);
            const rlimit size { limit, limit };
            if (::setrlimit(RLIMIT_FSIZE, &size) != 0)
                return false;
            const SaveResult result = writeFileAtomically(path, content);
            return result.error == std::errc::file_too_large && result.path == path;
        });
        EXPECT_TRUE(succeeded(child)) << limit;
        EXPECT_EQ(contentOf(path), "old");
        EXPECT_EQ(namesBeside(path), "file");
    }
    EXPECT_TRUE(writeFileAtomically(path, content));
    EXPECT_EQ(contentOf(path), content);
}

} // namespace
