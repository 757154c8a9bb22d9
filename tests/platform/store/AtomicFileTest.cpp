#include "platform/store/AtomicFile.h"

#include "tests/support/ContentOf.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

mode_t modeOf(const QString& path)
{
    struct stat status { };
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777U : 0;
}

void writePlainly(const QString& path, const QByteArray& content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

class AtomicFile : public testing::Test {
protected:
    [[nodiscard]] QString at(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }
    [[nodiscard]] QStringList names() const
    {
        return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    QTemporaryDir folder;
};

TEST_F(AtomicFile, IsItsUsersAloneAndSoAreItsFolders)
{
    const QString path = at("Library/Preferences/Profile.plist");
    ASSERT_TRUE(writeFileAtomically(path, "content"));
    EXPECT_EQ(contentOf(path), "content");
    EXPECT_EQ(modeOf(path), 0600u);
    EXPECT_EQ(modeOf(at("Library")), 0700u);
    EXPECT_EQ(modeOf(at("Library/Preferences")), 0700u);
}

TEST_F(AtomicFile, ReplacesAFileAndTakesOthersAccess)
{
    writePlainly(at("file"), "a longer content than before");
    ::chmod(QFile::encodeName(at("file")).constData(), 0666);
    ASSERT_TRUE(writeFileAtomically(at("file"), QByteArray("\0b", 2)));
    EXPECT_EQ(contentOf(at("file")), QByteArray("\0b", 2));
    EXPECT_EQ(modeOf(at("file")), 0600u);
    EXPECT_EQ(names(), QStringList { QStringLiteral("file") });
}

TEST_F(AtomicFile, ReplacesWhatALinkPointsTo)
{
    writePlainly(at("real"), "old");
    ASSERT_TRUE(QFile::link(at("real"), at("link")));
    ASSERT_TRUE(writeFileAtomically(at("link"), "new"));
    EXPECT_EQ(contentOf(at("real")), "new");
    EXPECT_TRUE(QFileInfo(at("link")).isSymLink());
}

TEST_F(AtomicFile, LeavesNothingBesideWhatItCannotReplace)
{
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("taken/inside")));
    EXPECT_FALSE(writeFileAtomically(at("taken"), "new"));
    EXPECT_EQ(names(), QStringList { QStringLiteral("taken") });
}

TEST_F(AtomicFile, FailsWhereAFolderIsAFile)
{
    writePlainly(at("file"), "old");
    EXPECT_FALSE(writeFileAtomically(at("file/below/it"), "new"));
    EXPECT_FALSE(makePrivateFolders(at("file")));
    EXPECT_EQ(contentOf(at("file")), "old");
}

TEST_F(AtomicFile, ReplacesWhatAnEndedProgramLeft)
{
    writePlainly(at("file.being-written"), "a key, and much more than the new content");
    ::chmod(QFile::encodeName(at("file.being-written")).constData(), 0644);
    ASSERT_TRUE(writeFileAtomically(at("file"), "new"));
    EXPECT_EQ(contentOf(at("file")), "new");
    EXPECT_EQ(modeOf(at("file")), 0600u);
    EXPECT_EQ(names(), QStringList { QStringLiteral("file") });
}

TEST_F(AtomicFile, DoesNotWriteThroughALinkInPlaceOfTheSecondFile)
{
    writePlainly(at("other"), "somebody's");
    ASSERT_TRUE(QFile::link(at("other"), at("file.being-written")));
    ASSERT_TRUE(writeFileAtomically(at("file"), "new"));
    EXPECT_EQ(contentOf(at("other")), "somebody's");
    EXPECT_EQ(contentOf(at("file")), "new");
    EXPECT_FALSE(QFileInfo(at("file")).isSymLink());
    EXPECT_EQ(names(), (QStringList { QStringLiteral("file"), QStringLiteral("other") }));
}

TEST_F(AtomicFile, FailsWhereAFolderIsInPlaceOfTheSecondFile)
{
    writePlainly(at("file"), "old");
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("file.being-written")));
    EXPECT_FALSE(writeFileAtomically(at("file"), "new"));
    EXPECT_EQ(contentOf(at("file")), "old");
}

TEST_F(AtomicFile, IsWholeWhileProgramsWriteItAtOnce)
{
    constexpr int writes = 50;
    constexpr int size = 200000; // long enough to be met half written
    std::vector<pid_t> writers;
    for (const char letter : { 'a', 'b', 'c' }) {
        writers.push_back(::fork());
        ASSERT_NE(writers.back(), -1);
        if (writers.back() == 0) {
            int written = 0;
            while (written < writes) // fails as long as another one writes
                written += writeFileAtomically(at("file"), QByteArray(size, letter)) ? 1 : 0;
            ::_exit(0);
        }
    }
    for (const pid_t writer : writers) {
        int status = -1;
        while (::waitpid(writer, &status, WNOHANG) == 0) {
            const QByteArray content = contentOf(at("file"));
            const bool isMissing = content == "cannot be read"; // until the first has written it
            EXPECT_TRUE(isMissing || content == QByteArray(size, content.isEmpty() ? '-' : content.front()));
        }
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    EXPECT_EQ(names(), QStringList { QStringLiteral("file") });
}

// A program that was stopped in the middle of a save must not stop another one.
TEST_F(AtomicFile, IsNotWaitedForWhileAnotherProgramWritesIt)
{
    writePlainly(at("file"), "old");
    writePlainly(at("file.being-written"), "half");
    const int other = ::open(QFile::encodeName(at("file.being-written")).constData(), O_RDWR | O_CLOEXEC);
    ASSERT_NE(other, -1);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    EXPECT_FALSE(writeFileAtomically(at("file"), "new"));
    EXPECT_EQ(contentOf(at("file")), "old");
    EXPECT_EQ(contentOf(at("file.being-written")), "half");
    ::close(other);
    EXPECT_TRUE(writeFileAtomically(at("file"), "new"));
    EXPECT_EQ(contentOf(at("file")), "new");
}

// Writing stops at every size short of the content's, as on a disk that is full there.
TEST_F(AtomicFile, KeepsTheOldContentWhenTheNewOneDoesNotFit)
{
    const QByteArray content(3000, 'n');
    writePlainly(at("file"), "old");
    for (rlim_t limit = 0; limit < 3000; limit += 250) {
        const pid_t child = ::fork();
        ASSERT_NE(child, -1);
        if (child == 0) {
            (void)std::signal(SIGXFSZ, SIG_IGN);
            const rlimit size { limit, limit };
            if (::setrlimit(RLIMIT_FSIZE, &size) != 0)
                ::_exit(2);
            ::_exit(writeFileAtomically(at("file"), content) ? 1 : 0);
        }
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << limit;
        EXPECT_EQ(contentOf(at("file")), "old");
        EXPECT_EQ(names(), QStringList { QStringLiteral("file") });
    }
    EXPECT_TRUE(writeFileAtomically(at("file"), content));
    EXPECT_EQ(contentOf(at("file")), content);
}

TEST_F(AtomicFile, MakesAPrivateFileAndLeavesTheContentOfOneThatIsThere)
{
    ASSERT_TRUE(makePrivateFile(at("a/b")));
    EXPECT_EQ(contentOf(at("a/b")), QByteArray());
    EXPECT_EQ(modeOf(at("a/b")), 0600u);
    writePlainly(at("c"), "content");
    ::chmod(QFile::encodeName(at("c")).constData(), 0644);
    ASSERT_TRUE(makePrivateFile(at("c")));
    EXPECT_EQ(contentOf(at("c")), "content");
    EXPECT_EQ(modeOf(at("c")), 0600u);
}

TEST_F(AtomicFile, KeepsEveryUnreadableContentOnce)
{
    for (const QByteArray content : { "one", "two", "one", "two", "six" }) {
        writePlainly(at("file"), content);
        EXPECT_TRUE(keepUnreadableFile(at("file")));
        EXPECT_EQ(contentOf(at("file")), content);
        ASSERT_TRUE(writeFileAtomically(at("file"), "good"));
    }
    EXPECT_EQ(contentOf(at("file.unreadable")), "one");
    EXPECT_EQ(contentOf(at("file.unreadable.2")), "two");
    EXPECT_EQ(contentOf(at("file.unreadable.3")), "six");
    EXPECT_EQ(modeOf(at("file.unreadable")), 0600u);
    EXPECT_EQ(names().size(), 4);
}

TEST_F(AtomicFile, HasNothingToKeepOfAnEmptyFileAndOfNone)
{
    EXPECT_TRUE(keepUnreadableFile(at("none")));
    writePlainly(at("empty"), {});
    EXPECT_TRUE(keepUnreadableFile(at("empty")));
    EXPECT_EQ(names(), QStringList { QStringLiteral("empty") });
}

TEST_F(AtomicFile, KeepsTheFileThatALinkPointsTo)
{
    writePlainly(at("real"), "damaged");
    ASSERT_TRUE(QFile::link(at("real"), at("link")));
    EXPECT_TRUE(keepUnreadableFile(at("link")));
    ASSERT_TRUE(writeFileAtomically(at("link"), "good"));
    EXPECT_EQ(contentOf(at("link.unreadable")), "damaged");
}

} // namespace
