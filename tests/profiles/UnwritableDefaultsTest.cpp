#include "platform/store/AtomicFile.h"
#include "platform/store/PropertyListFile.h"
#include "platform/store/SettingsUserDefaults.h"
#include "profiles/ProfileConnection.h"
#include "profiles/ProfileStore.h"
#include "tests/profiles/SampleProfile.h"
#include "tests/profiles/StoreKeys.h"
#include "tests/support/ContentOf.h"
#include "tests/support/RecordingSaveReport.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>

#include <sys/resource.h>

// If writing fails, the program continues with the list in memory.

namespace {

// No byte can be written to any file during its lifetime, as on a full disk.
class FullDisk {
public:
    FullDisk()
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &m_before), 0);
        const rlimit nothing { 0, m_before.rlim_max };
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &nothing), 0);
    }
    ~FullDisk()
    {
        (void)::setrlimit(RLIMIT_FSIZE, &m_before);
        (void)std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit m_before {};
    void (*m_handler)(int);
};

class UnwritableDefaults : public testing::Test {
protected:
    // A store with saved profiles, unless its directory cannot be created.
    UnwritableDefaults() { store.saveRecords(oldList); }

    QTemporaryDir home;
    QString file { preferencesFile(QStringLiteral("Profile.plist"), home.path()) };
    SettingsUserDefaults defaults { home.filePath(QStringLiteral("config/settings.plist")) };
    RecordingSaveReport saves;
    ProfileStore store { defaults, file, &saves };
    ProfileList oldList { sampleProfile(u"first"_qs), sampleProfile(u"second"_qs) };
    ProfileList newList { sampleProfile(u"first"_qs), sampleProfile(u"changed"_qs), sampleProfile(u"third"_qs) };
};

TEST_F(UnwritableDefaults, KeepTheNewListInMemory)
{
    const QByteArray oldFile = contentOf(file);
    const QByteArray oldDefaults = contentOf(defaults.path());
    ASSERT_TRUE(oldFile.startsWith("<?xml"));
    ASSERT_TRUE(oldDefaults.startsWith("<?xml"));
    {
        const FullDisk fullDisk;
        store.saveRecords(newList);
        EXPECT_EQ(store.loadRecords(), newList);
        EXPECT_EQ(defaults.arrayForKey(u"Profiles"_qs), newList);
    }
    ASSERT_EQ(contentOf(file), oldFile) << "the save did not fail";
    ASSERT_EQ(contentOf(defaults.path()), oldDefaults) << "the save did not fail";
    EXPECT_EQ(store.loadRecords(), newList);

    defaults.synchronize();
    EXPECT_EQ(store.loadRecords(), newList);
    const auto root = readPropertyListFile(defaults.path());
    ASSERT_TRUE(root && root->tree() && !root->tree()->empty());
    EXPECT_EQ(dictionariesOf(root->tree()->front().value), newList) << "what is still there is written when it can be";
}

TEST_F(UnwritableDefaults, KeepTheNewActivationAndTheDeletionInMemory)
{
    ProfileList activation;
    ProfileList reloaded;
    ProfileList records = oldList;
    const FullDisk fullDisk;
    store.saveActivation(activation, activeEntry(oldList[1], 1));
    store.loadActivation(reloaded);
    EXPECT_EQ(reloaded, ProfileList { activeEntry(oldList[1], 1) });

    store.deleteRecord(records, activation, 1);
    EXPECT_EQ(store.loadRecords(), ProfileList { oldList[0] });
    EXPECT_FALSE(defaults.arrayForKey(settingKey));
}

TEST_F(UnwritableDefaults, BothFilesAreReportedUntilTheyAreSaved)
{
    EXPECT_TRUE(saves.failures.empty());
    ProfileList activation;
    {
        const FullDisk fullDisk;
        store.saveRecords(newList);
        EXPECT_EQ(saves.failures.size(), 2u);
        EXPECT_FALSE(saves.failures[file].isEmpty());
        EXPECT_FALSE(saves.failures[defaults.path()].isEmpty());
    }
    store.saveActivation(activation, activeEntry(newList[0], 0)); // writes the defaults only
    EXPECT_EQ(saves.failures.size(), 1u);
    EXPECT_TRUE(saves.failures.contains(file));
    store.deleteRecord(newList, activation, 2);
    EXPECT_TRUE(saves.failures.empty());
}

TEST_F(UnwritableDefaults, ActivationAndDeletionAreReported)
{
    ProfileList activation;
    const FullDisk fullDisk;
    store.saveActivation(activation, activeEntry(oldList[0], 0));
    EXPECT_EQ(saves.failures.size(), 1u);
    EXPECT_TRUE(saves.failures.contains(defaults.path()));
    saves.failures.clear();
    store.deleteRecord(oldList, activation, 1);
    EXPECT_EQ(saves.failures.size(), 2u);
}

TEST_F(UnwritableDefaults, KeepWhatAnotherProgramSavesMeanwhile)
{
    SettingsUserDefaults otherDefaults(defaults.path());
    ProfileStore other(otherDefaults, file);
    ProfileList records = oldList;
    {
        const FullDisk fullDisk;
        store.putProfile(records, sampleProfile(u"own"_qs), std::nullopt);
        store.saveRecords(records);
    }
    ProfileList otherRecords = other.loadRecords();
    other.putProfile(otherRecords, sampleProfile(u"other"_qs), std::nullopt);
    other.saveRecords(otherRecords);

    const ProfileList both { oldList[0], oldList[1], sampleProfile(u"other"_qs), sampleProfile(u"own"_qs) };
    EXPECT_EQ(store.loadRecords(), both);
    {
        const FullDisk fullDisk;
        store.putProfile(records, sampleProfile(u"late"_qs), std::nullopt);
        store.saveRecords(records);
    }
    ProfileList activation;
    other.deleteRecord(otherRecords, activation, 2); // must not come back with the list that failed
    store.putProfile(records, sampleProfile(u"last"_qs), std::nullopt);
    store.saveRecords(records);
    const ProfileList expected { oldList[0], oldList[1], sampleProfile(u"own"_qs), sampleProfile(u"late"_qs),
        sampleProfile(u"last"_qs) };
    EXPECT_EQ(other.loadRecords(), expected);
    EXPECT_EQ(readDictionariesFile(file), expected);
}

TEST_F(UnwritableDefaults, ActivationSavesTheListWithWhatAnotherProgramAdded)
{
    {
        const FullDisk fullDisk;
        store.saveRecords(newList);
    }
    SettingsUserDefaults otherDefaults(defaults.path());
    ProfileStore other(otherDefaults, file);
    ProfileList otherRecords = other.loadRecords();
    otherRecords.push_back(sampleProfile(u"other"_qs));
    other.saveRecords(otherRecords);

    ProfileList activation;
    store.saveActivation(activation, activeEntry(newList[0], 0));
    const ProfileList expected { newList[0], newList[1], sampleProfile(u"other"_qs), newList[2] };
    EXPECT_EQ(other.loadRecords(), expected);
    EXPECT_EQ(store.loadRecords(), expected);
}

TEST_F(UnwritableDefaults, KeepTheListInMemoryIfNoDirectoryCanBeCreated)
{
    const QString blocked = home.filePath(QStringLiteral("blocked"));
    ASSERT_TRUE(writeFileAtomically(blocked, "no folder"));
    SettingsUserDefaults nowhere(blocked + QStringLiteral("/config/settings.plist"));
    ProfileStore lost(nowhere, blocked + QStringLiteral("/Profile.plist"));
    EXPECT_EQ(lost.loadRecords(), ProfileList());
    lost.saveRecords(newList);
    EXPECT_EQ(lost.loadRecords(), newList);
    lost.saveRecords({});
    EXPECT_EQ(lost.loadRecords(), ProfileList());
    EXPECT_EQ(nowhere.arrayForKey(u"Profiles"_qs), ProfileList());
    EXPECT_EQ(contentOf(blocked), "no folder");
}

} // namespace
