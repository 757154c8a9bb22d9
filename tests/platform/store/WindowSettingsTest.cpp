#include "platform/store/WindowSettings.h"

#include "platform/store/AtomicFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

class WindowSettingsTest : public testing::Test {
protected:
    [[nodiscard]] QString saved(const QString& key) const { return WindowSettings(path).text(key); }

    QTemporaryDir directory;
    QString path { directory.filePath(u"window.plist"_qs) };
};

TEST_F(WindowSettingsTest, AreThereAtTheNextStart)
{
    WindowSettings settings(path);
    EXPECT_EQ(settings.text(u"sort"_qs), QString());
    settings.setText(u"sort"_qs, u"signal"_qs);
    EXPECT_EQ(settings.text(u"sort"_qs), u"signal"_qs);
    EXPECT_EQ(saved(u"sort"_qs), QString()) << "not saved yet";
    EXPECT_TRUE(settings.save());
    EXPECT_EQ(saved(u"sort"_qs), u"signal"_qs);
    settings.setText(u"sort"_qs, QString());
    EXPECT_TRUE(settings.save());
    EXPECT_EQ(saved(u"sort"_qs), QString());
}

TEST_F(WindowSettingsTest, TwoWindowsKeepEachOthersKeys)
{
    WindowSettings first(path);
    WindowSettings second(path);
    first.setText(u"one"_qs, u"1"_qs);
    second.setText(u"two"_qs, u"2"_qs);
    EXPECT_TRUE(first.save());
    EXPECT_TRUE(second.save());
    EXPECT_EQ(saved(u"one"_qs), u"1"_qs);
    EXPECT_EQ(saved(u"two"_qs), u"2"_qs);
}

TEST_F(WindowSettingsTest, DamagedFileLosesNothingThatWasRead)
{
    WindowSettings settings(path);
    settings.setText(u"MakerUrl"_qs, u"https://maker.example/"_qs);
    ASSERT_TRUE(settings.save());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write("<plist>"), 7);
    file.close();
    settings.setText(u"sort"_qs, u"signal"_qs);
    EXPECT_TRUE(settings.save());
    EXPECT_EQ(saved(u"MakerUrl"_qs), u"https://maker.example/"_qs);
    EXPECT_EQ(saved(u"sort"_qs), u"signal"_qs);
    EXPECT_TRUE(QFile::exists(path + u".unreadable"_qs));
}

TEST_F(WindowSettingsTest, FailureKeepsTheChangesForTheNextSave)
{
    const QString parent = directory.filePath(u"parent"_qs);
    QFile inTheWay(parent);
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    path = parent + u"/window.plist"_qs;
    WindowSettings settings(path);
    settings.setText(u"sort"_qs, u"signal"_qs);
    EXPECT_FALSE(settings.save());
    ASSERT_TRUE(inTheWay.remove());
    EXPECT_TRUE(settings.save());
    EXPECT_EQ(saved(u"sort"_qs), u"signal"_qs);
}

TEST_F(WindowSettingsTest, UnchangedTextsAreNotWritten)
{
    WindowSettings settings(path);
    settings.setText(u"sort"_qs, QString());
    EXPECT_TRUE(settings.save());
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(WindowSettingsTest, AFifoIsNeverOpened)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), privateFileMode), 0);
    WindowSettings settings(path); // would wait for a writer
    EXPECT_EQ(settings.text(u"sort"_qs), QString());
    settings.setText(u"sort"_qs, u"signal"_qs);
    EXPECT_TRUE(settings.save());
    EXPECT_EQ(saved(u"sort"_qs), u"signal"_qs) << "the file has replaced it";
}

} // namespace
