#include "platform/store/UnreadableFile.h"

#include "platform/store/AtomicFile.h"
#include "tests/platform/store/StoreFixture.h"

namespace {

using UnreadableFile = StoreFixture;

TEST_F(UnreadableFile, BacksUpEachContentOnce)
{
    for (const QByteArray content : { "one", "two", "one", "two", "six" }) {
        writePlainly(at("file"), content);
        EXPECT_TRUE(backUpUnreadableFile(at("file")));
        EXPECT_EQ(contentOf(at("file")), content);
        ASSERT_TRUE(writeFileAtomically(at("file"), "good"));
    }
    EXPECT_EQ(contentOf(at("file.unreadable")), "one");
    EXPECT_EQ(contentOf(at("file.unreadable.2")), "two");
    EXPECT_EQ(contentOf(at("file.unreadable.3")), "six");
    EXPECT_EQ(modeOf(at("file.unreadable")), 0600U);
    EXPECT_EQ(namesBeside(at("file")), "file file.unreadable file.unreadable.2 file.unreadable.3");
}

TEST_F(UnreadableFile, NeedsNoBackupWhenMissingOrEmpty)
{
    EXPECT_TRUE(backUpUnreadableFile(at("missing")));
    writePlainly(at("empty"), {});
    EXPECT_TRUE(backUpUnreadableFile(at("empty")));
    EXPECT_EQ(namesBeside(at("empty")), "empty");
}

TEST_F(UnreadableFile, BackupOfLinkHoldsContentOfItsTarget)
{
    writePlainly(at("real"), "damaged");
    ASSERT_TRUE(QFile::link(at("real"), at("link")));
    EXPECT_TRUE(backUpUnreadableFile(at("link")));
    ASSERT_TRUE(writeFileAtomically(at("link"), "good"));
    EXPECT_EQ(contentOf(at("link.unreadable")), "damaged");
}

TEST_F(UnreadableFile, FailsWhenAllBackupNamesAreTaken)
{
    writePlainly(at("file"), "damaged");
    writePlainly(at("file.unreadable"), "earlier");
    ASSERT_TRUE(QDir().mkdir(at("file.unreadable.2")));
    const SaveResult result = backUpUnreadableFile(at("file"), 2);
    EXPECT_EQ(result.error, std::errc::file_exists);
    EXPECT_EQ(result.path, at("file"));
    EXPECT_EQ(contentOf(at("file.unreadable")), "earlier");
    EXPECT_TRUE(backUpUnreadableFile(at("file"), 3));
    EXPECT_EQ(contentOf(at("file.unreadable.3")), "damaged");
}

} // namespace
