#include "platform/store/PropertyListFile.h"

#include "tests/support/ContentOf.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

const PropertyDictionaries oneProfile { { { u"Profile Name"_qs, u"PROF1"_qs } } };

class PropertyListFile : public testing::Test {
protected:
    void writePlainly(const QByteArray& content)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    [[nodiscard]] QByteArray content(const QString& suffix = {}) const { return contentOf(path + suffix); }

    QTemporaryDir folder;
    QString path { folder.filePath(QStringLiteral("Profile.plist")) };
};

TEST_F(PropertyListFile, LiesInThePreferencesOfTheHomeFolder)
{
    EXPECT_EQ(preferencesFile(u"Profile.plist"_qs, u"/home/someone"_qs),
        u"/home/someone/Library/Preferences/Profile.plist"_qs);
    EXPECT_TRUE(preferencesFile(u"a"_qs).startsWith(QDir::homePath()));
}

TEST_F(PropertyListFile, GivesBackWhatWasWritten)
{
    ASSERT_TRUE(writeDictionariesFile(path, oneProfile));
    EXPECT_EQ(readDictionariesFile(path), oneProfile);
    ASSERT_TRUE(writeDictionariesFile(path, {}));
    EXPECT_EQ(readDictionariesFile(path), PropertyDictionaries());
    EXPECT_TRUE(readPropertyListFile(path));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList { QStringLiteral("Profile.plist") });
}

TEST_F(PropertyListFile, IsAnEmptyListWhereItIsMissingOrUnreadable)
{
    EXPECT_EQ(readDictionariesFile(path), PropertyDictionaries());
    EXPECT_EQ(readDictionariesFile(folder.path()), PropertyDictionaries());
    EXPECT_EQ(readDictionariesFile(u"/dev/zero"_qs), PropertyDictionaries());
    writePlainly("<plist><dict/></plist>");
    EXPECT_EQ(readDictionariesFile(path), PropertyDictionaries());
    writePlainly(QByteArray(maxPropertyListSize + 1, ' '));
    EXPECT_EQ(readDictionariesFile(path), PropertyDictionaries());
}

TEST_F(PropertyListFile, DoesNotWaitForAPipe)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    EXPECT_FALSE(readPropertyListFile(path));
}

TEST_F(PropertyListFile, KeepsAnUnreadableFileBesideWhatReplacesIt)
{
    writePlainly("<plist><array><dict><key>SSID</key><string>typed by hand</string></array></plist>");
    const QByteArray damaged = content();
    ASSERT_TRUE(writeDictionariesFile(path, oneProfile));
    EXPECT_EQ(content(u".unreadable"_qs), damaged);
    EXPECT_EQ(readDictionariesFile(path), oneProfile);
}

TEST_F(PropertyListFile, TakesNumbersTypedByHandAndKeepsNoCopyOfThem)
{
    writePlainly("<plist><array><dict><key>Channel</key><integer>6</integer></dict></array></plist>");
    const PropertyDictionaries typed { { { u"Channel"_qs, u"6"_qs } } };
    EXPECT_EQ(readDictionariesFile(path), typed);
    ASSERT_TRUE(writeDictionariesFile(path, typed));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList { QStringLiteral("Profile.plist") });
}

TEST_F(PropertyListFile, IsKeptBesideOnceWhereSomethingWasLeftOut)
{
    writePlainly("<plist><array><dict><key>SSID</key><string>home</string><key>Notes</key>"
                 "<array><string>typed by hand</string></array></dict></array></plist>");
    const QByteArray typed = content();
    const PropertyDictionaries read = readDictionariesFile(path);
    EXPECT_EQ(read, (PropertyDictionaries { { { u"SSID"_qs, u"home"_qs } } }));
    for (int i = 0; i < 2; ++i)
        ASSERT_TRUE(writeDictionariesFile(path, read));
    EXPECT_EQ(content(u".unreadable"_qs), typed);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 2);
}

TEST_F(PropertyListFile, IsNotReplacedWhereItCannotBeKept)
{
    writePlainly("damaged");
    ASSERT_TRUE(QDir().mkdir(path + u".unreadable"_qs));
    for (int number = 2; number <= 1000; ++number)
        ASSERT_TRUE(QDir().mkdir(path + QStringLiteral(".unreadable.%1").arg(number)));
    EXPECT_FALSE(writeDictionariesFile(path, oneProfile));
    EXPECT_EQ(content(), "damaged");
}

} // namespace
