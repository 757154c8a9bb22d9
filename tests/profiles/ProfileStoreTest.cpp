#include "profiles/ProfileStore.h"

#include "platform/store/PropertyListFile.h"
#include "platform/store/SettingsUserDefaults.h"
#include "tests/profiles/SampleProfile.h"
#include "tests/profiles/StoreKeys.h"
#include "tests/support/ContentOf.h"
#include "tests/support/MemoryUserDefaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class ProfileStoreTest : public testing::Test {
protected:
    [[nodiscard]] ProfileList inFile() const { return readDictionariesFile(path); }
    [[nodiscard]] std::optional<ProfileList> inDefaults(const QString& key = profilesKey) const
    {
        return defaults.arrayForKey(key);
    }
    void writePlainly(const QByteArray& content)
    {
        QFile file(path);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir home;
    QString path { preferencesFile(QStringLiteral("Profile.plist"), home.path()) };
    MemoryUserDefaults defaults;
    ProfileStore store { defaults, path };
    const ProfileList three { sampleProfile(u"a"_qs), sampleProfile(u"b"_qs), sampleProfile(u"c"_qs) };
};

TEST_F(ProfileStoreTest, FileIsInTheUsersPreferences)
{
    EXPECT_EQ(ProfileStore::defaultRecordsFile(), QDir::homePath() + u"/Library/Preferences/Profile.plist"_qs);
}

TEST_F(ProfileStoreTest, IsEmptyWithoutAFileAndDefaults)
{
    EXPECT_EQ(store.loadRecords(), ProfileList());
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(ProfileStoreTest, SavesTheFileBeforeTheDefaults)
{
    std::vector<ProfileList> fileAtChange;
    defaults.onChange = [&] { fileAtChange.push_back(inFile()); };
    store.saveRecords(three);
    EXPECT_EQ(fileAtChange, (std::vector<ProfileList> { three }));
    EXPECT_EQ(inFile(), three);
    EXPECT_EQ(inDefaults(), three);
    EXPECT_EQ(defaults.synchronizations, 1);
}

TEST_F(ProfileStoreTest, DefaultsTakePrecedenceOverTheFile)
{
    store.saveRecords(three);
    ASSERT_TRUE(writeDictionariesFile(path, { sampleProfile(u"by hand"_qs) }));
    EXPECT_EQ(store.loadRecords(), three);
}

TEST_F(ProfileStoreTest, EmptyListInTheDefaultsTakesPrecedence)
{
    ASSERT_TRUE(writeDictionariesFile(path, three));
    defaults.setArray(profilesKey, {});
    EXPECT_EQ(store.loadRecords(), ProfileList());
}

TEST_F(ProfileStoreTest, ReadsTheFileIfTheDefaultsHaveNoList)
{
    ASSERT_TRUE(writeDictionariesFile(path, three));
    EXPECT_EQ(store.loadRecords(), three);
}

TEST_F(ProfileStoreTest, IsEmptyIfTheFileIsUnreadable)
{
    writePlainly("<plist><array><dict><key>SSID</key>");
    EXPECT_EQ(store.loadRecords(), ProfileList());
    EXPECT_FALSE(QFile::exists(path + u".unreadable"_qs));
}

TEST_F(ProfileStoreTest, BacksUpAnUnreadableFile)
{
    writePlainly("typed by hand");
    store.saveRecords(three);
    EXPECT_EQ(inFile(), three);
    EXPECT_EQ(contentOf(path + u".unreadable"_qs), "typed by hand");
}

TEST_F(ProfileStoreTest, ReadsAFileWithNumbersTypedByHand)
{
    writePlainly("<plist><array><dict><key>Profile Name</key><string>mine</string><key>Channel</key>"
                 "<integer>6</integer><key>Hidden</key><true/></dict></array></plist>");
    const ProfileList records = store.loadRecords();
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].integer(ProfileKey::channel), 6);
    EXPECT_EQ(records[0].text(ProfileKey::hidden), u"1"_qs);
}

TEST_F(ProfileStoreTest, SavesTheDefaultsIfTheFileCannotBeWritten)
{
    ASSERT_TRUE(QDir().mkpath(path));
    store.saveRecords(three);
    EXPECT_EQ(inDefaults(), three);
    EXPECT_EQ(store.loadRecords(), three);
}

TEST_F(ProfileStoreTest, KeepsUnknownKeys)
{
    const Profile profile = with(sampleProfile(), { { u"Comment"_qs, u"mine"_qs } });
    store.saveRecords({ profile });
    EXPECT_EQ(inFile(), ProfileList { profile });
}

TEST_F(ProfileStoreTest, LoadsTheActiveProfile)
{
    const ProfileList stored { sampleProfile(u"active"_qs) };
    defaults.setArray(settingKey, stored);
    ProfileList recordActivate { sampleProfile(u"before"_qs) };
    store.loadActivation(recordActivate);
    EXPECT_EQ(recordActivate, stored);
}

TEST_F(ProfileStoreTest, KeepsTheActiveProfileInMemoryIfTheDefaultsHaveNone)
{
    const ProfileList before { sampleProfile(u"before"_qs) };
    ProfileList recordActivate = before;
    store.loadActivation(recordActivate);
    EXPECT_EQ(recordActivate, before);
    defaults.setArray(settingKey, {});
    store.loadActivation(recordActivate);
    EXPECT_EQ(recordActivate, ProfileList());
}

TEST_F(ProfileStoreTest, StoresTheActiveProfileOnlyInTheDefaults)
{
    ProfileList recordActivate;
    store.saveActivation(recordActivate, sampleProfile(u"first"_qs));
    store.saveActivation(recordActivate, sampleProfile(u"second"_qs));
    EXPECT_EQ(recordActivate, ProfileList { sampleProfile(u"second"_qs) });
    EXPECT_EQ(inDefaults(settingKey), recordActivate);
    EXPECT_EQ(defaults.synchronizations, 2);
    EXPECT_FALSE(inDefaults());
    EXPECT_FALSE(QFile::exists(path));
}

class DeletedProfile : public ProfileStoreTest {
protected:
    void activate(const QString& row)
    {
        store.saveRecords(three);
        store.saveActivation(recordActivate, with(sampleProfile(u"b"_qs), { { ProfileKey::selected, row } }));
        records = three;
    }

    ProfileList records;
    ProfileList recordActivate;
};

TEST_F(DeletedProfile, RemovesTheActiveEntryOfItsRow)
{
    activate(u"1"_qs);
    store.deleteRecord(records, recordActivate, 1);
    const ProfileList rest { three[0], three[2] };
    EXPECT_EQ(records, rest);
    EXPECT_EQ(inFile(), rest);
    EXPECT_EQ(inDefaults(), rest);
    EXPECT_EQ(recordActivate, ProfileList());
    EXPECT_FALSE(inDefaults(settingKey));
    EXPECT_EQ(defaults.synchronizations, 3);
}

TEST_F(DeletedProfile, KeepsTheActiveEntryOfARowBelow)
{
    activate(u"1"_qs);
    store.deleteRecord(records, recordActivate, 0);
    ASSERT_TRUE(inDefaults(settingKey));
    EXPECT_EQ(recordActivate.front().text(ProfileKey::selected), u"1"_qs);
    EXPECT_EQ(records[1].text(ProfileKey::profileName), u"c"_qs);
}

TEST_F(DeletedProfile, TreatsAnActiveEntryWithoutARowAsRowZero)
{
    activate(QString());
    store.deleteRecord(records, recordActivate, 2);
    EXPECT_TRUE(inDefaults(settingKey));
    store.deleteRecord(records, recordActivate, 0);
    EXPECT_FALSE(inDefaults(settingKey));
}

TEST_F(DeletedProfile, WritesTheFileBeforeTheDefaults)
{
    activate(u"1"_qs);
    defaults.onChange = [&] { EXPECT_EQ(inFile().size(), 2u); };
    store.deleteRecord(records, recordActivate, 1);
}

TEST_F(DeletedProfile, RowOutOfRangeIsANoOp)
{
    activate(u"1"_qs);
    for (const int row : { -1, 3, 1000000 })
        store.deleteRecord(records, recordActivate, row);
    EXPECT_EQ(records, three);
    EXPECT_EQ(defaults.synchronizations, 2);
}

TEST_F(DeletedProfile, DeletingTheLastProfileLeavesAnEmptyList)
{
    records = { sampleProfile() };
    store.deleteRecord(records, recordActivate, 0);
    EXPECT_EQ(inDefaults(), ProfileList());
    EXPECT_EQ(store.loadRecords(), ProfileList());
}

TEST(TwoProgramsTest, KeepEachOthersProfiles)
{
    const QTemporaryDir home;
    const QString path = home.filePath(u"Profile.plist"_qs);
    SettingsUserDefaults defaultsA(home.filePath(u"settings.plist"_qs));
    SettingsUserDefaults defaultsB(defaultsA.path());
    ProfileStore a(defaultsA, path);
    ProfileStore b(defaultsB, path);
    ProfileList expected;
    ProfileList activation;
    for (const QString& name : { u"a1"_qs, u"b1"_qs, u"a2"_qs, u"b2"_qs }) {
        ProfileStore& store = name.startsWith(u'a') ? a : b;
        ProfileList records = store.loadRecords();
        records.push_back(sampleProfile(name));
        store.saveRecords(records);
        expected.push_back(sampleProfile(name));
    }
    EXPECT_EQ(a.loadRecords(), expected);
    EXPECT_EQ(b.loadRecords(), expected);

    // B still shows the list of before when it deletes its second row.
    ProfileList shownByB = b.loadRecords();
    ProfileList shownByA = a.loadRecords();
    a.deleteRecord(shownByA, activation, 0);
    b.deleteRecord(shownByB, activation, 1);
    EXPECT_EQ(a.loadRecords(), (ProfileList { expected[2], expected[3] }));
    EXPECT_EQ(readDictionariesFile(path), a.loadRecords());
}

} // namespace
