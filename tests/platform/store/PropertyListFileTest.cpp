#include "platform/store/PropertyListFile.h"

#include "tests/platform/store/StoreFixture.h"

namespace {

const PropertyDictionaries oneProfile { { { u"Profile Name"_qs, u"PROF1"_qs } } };

class PropertyListFile : public StoreFixture {
protected:
    QString path { at("Profile.plist") };
};

TEST_F(PropertyListFile, IsInPreferencesOfHomeDirectory)
{
    EXPECT_EQ(preferencesFile(u"Profile.plist"_qs, u"/home/someone"_qs),
        u"/home/someone/Library/Preferences/Profile.plist"_qs);
    EXPECT_TRUE(preferencesFile(u"a"_qs).startsWith(QDir::homePath()));
}

TEST_F(PropertyListFile, ReadsWhatItWrote)
{
    ASSERT_TRUE(writeDictionariesFile(path, oneProfile));
    EXPECT_EQ(readDictionariesFile(path), oneProfile);
    ASSERT_TRUE(writeDictionariesFile(path, {}));
    EXPECT_EQ(readDictionariesFile(path), PropertyDictionaries());
    EXPECT_TRUE(readPropertyListFile(path));
    EXPECT_EQ(namesBeside(path), "Profile.plist");
}

TEST_F(PropertyListFile, IsEmptyListWhenMissingOrUnreadable)
{
    EXPECT_EQ(readDictionariesFile(path), PropertyDictionaries());
    EXPECT_EQ(readDictionariesFile(directory.path()), PropertyDictionaries());
    EXPECT_EQ(readDictionariesFile(u"/dev/zero"_qs), PropertyDictionaries());
    writePlainly(path, "<plist><dict/></plist>");
    EXPECT_EQ(readDictionariesFile(path), PropertyDictionaries());
    writePlainly(path, QByteArray(maxPropertyListSize + 1, ' '));
    EXPECT_EQ(readDictionariesFile(path), PropertyDictionaries());
}

TEST_F(PropertyListFile, DoesNotBlockOnPipe)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    EXPECT_FALSE(readPropertyListFile(path));
}

TEST_F(PropertyListFile, BacksUpUnreadableFileBeforeReplacingIt)
{
    writePlainly(path, "<plist><array><dict><key>SSID</key><string>typed by hand</string></array></plist>");
    const QByteArray damaged = contentOf(path);
    ASSERT_TRUE(writeDictionariesFile(path, oneProfile));
    EXPECT_EQ(contentOf(path + u".unreadable"_qs), damaged);
    EXPECT_EQ(readDictionariesFile(path), oneProfile);
}

TEST_F(PropertyListFile, ReadsNumbersTypedByHandWithoutBackup)
{
    writePlainly(path, "<plist><array><dict><key>Channel</key><integer>6</integer></dict></array></plist>");
    const PropertyDictionaries typed { { { u"Channel"_qs, u"6"_qs } } };
    EXPECT_EQ(readDictionariesFile(path), typed);
    ASSERT_TRUE(writeDictionariesFile(path, typed));
    EXPECT_EQ(namesBeside(path), "Profile.plist");
}

TEST_F(PropertyListFile, BacksUpOnceFileWithSkippedEntries)
{
    writePlainly(path,
        "<plist><array><dict><key>SSID</key><string>home</string><key>Notes</key>"
        "<array><string>typed by hand</string></array></dict></array></plist>");
    const QByteArray typed = contentOf(path);
    const PropertyDictionaries read = readDictionariesFile(path);
    EXPECT_EQ(read, (PropertyDictionaries { { { u"SSID"_qs, u"home"_qs } } }));
    for (int i = 0; i < 2; ++i)
        ASSERT_TRUE(writeDictionariesFile(path, read));
    EXPECT_EQ(contentOf(path + u".unreadable"_qs), typed);
    EXPECT_EQ(namesBeside(path), "Profile.plist Profile.plist.unreadable");
}

TEST_F(PropertyListFile, IsNotReplacedWithoutBackup)
{
    path = damagedFileWithoutBackup();
    EXPECT_FALSE(writeDictionariesFile(path, oneProfile));
    EXPECT_EQ(contentOf(path), "damaged");
}

} // namespace
