#include "platform/store/AtomicFile.h"
#include "platform/store/PropertyListFile.h"
#include "platform/store/SettingsUserDefaults.h"
#include "profiles/ProfileConnection.h"
#include "profiles/ProfileStore.h"
#include "tests/profiles/KilledAtSystemCall.h"
#include "tests/profiles/SampleProfile.h"
#include "tests/profiles/StoreKeys.h"
#include "tests/support/ContentOf.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <functional>

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

// The profiles after an interrupted save: file and defaults each contain the old or the new list, complete, and other
// users can read nothing.

namespace {

// A user's home directory. QSettings caches in the process what it has read, so every start gets a new one.
struct Home {
    QString path;

    [[nodiscard]] QString file() const { return preferencesFile(QStringLiteral("Profile.plist"), path); }
    [[nodiscard]] QString defaultsFile() const { return path + QStringLiteral("/config/settings.plist"); }

    // Writes the files of an earlier run; empty content means no file.
    void write(const QByteArray& fileContent, const QByteArray& defaultsContent) const
    {
        EXPECT_TRUE(fileContent.isEmpty() || writeFileAtomically(file(), fileContent));
        EXPECT_TRUE(defaultsContent.isEmpty() || writeFileAtomically(defaultsFile(), defaultsContent));
    }
};

// The names of all files below a folder.
QStringList filesBelow(const QString& folder)
{
    QStringList names;
    QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (files.hasNext())
        names += QFileInfo(files.next()).fileName();
    names.sort();
    return names;
}

// Whether only the user can access them, temporary files included.
bool arePrivate(const QString& folder)
{
    QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        struct stat status { };
        if (::lstat(QFile::encodeName(files.next()).constData(), &status) != 0 || (status.st_mode & 07777U) != 0600)
            return false;
    }
    return true;
}

struct Stored {
    std::optional<ProfileList> file; // std::nullopt: missing or incomplete
    std::optional<ProfileList> defaults;
    std::optional<ProfileList> setting;
    bool operator==(const Stored&) const = default;
};

Stored storedIn(const Home& home)
{
    Stored stored;
    if (const auto root = readPropertyListFile(home.file()))
        stored.file = dictionariesOf(*root);
    const SettingsUserDefaults defaults(home.defaultsFile());
    stored.defaults = defaults.arrayForKey(profilesKey);
    stored.setting = defaults.arrayForKey(settingKey);
    return stored;
}

using Operation = std::function<void(ProfileStore&)>;

void run(const Home& home, const Operation& operation)
{
    SettingsUserDefaults defaults(home.defaultsFile());
    ProfileStore store(defaults, home.file());
    operation(store);
}

// Preferably in memory, because every save syncs the disk several times.
QString temporaryFolder()
{
    const auto memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/vantrel-XXXXXX");
}

class ProfileStoreFailure : public testing::Test {
protected:
    Home newHome()
    {
        const QString path = folder.filePath(QString::number(++m_homes));
        EXPECT_TRUE(QDir().mkpath(path));
        return { path };
    }

    // A home directory with the old list and active profile; its files are copied to every other one.
    void SetUp() override
    {
        m_umask = ::umask(0); // so that the mode of a new file is exactly the requested one
        const Home home = newHome();
        run(home, [this](ProfileStore& store) {
            store.saveRecords(oldList);
            ProfileList recordActivate;
            store.saveActivation(recordActivate, oldEntry);
        });
        before = storedIn(home);
        oldFile = contentOf(home.file());
        oldDefaults = contentOf(home.defaultsFile());
    }
    void TearDown() override { (void)::umask(m_umask); }

    // Kills the operation at each of its system calls in turn.
    void killEverywhere(const Operation& operation, const Stored& start, const Stored& end, bool empty = false);
    // Runs the operation in a prepared child process and checks the home directory afterwards.
    void runApart(const std::function<bool()>& prepare, const Operation& operation, const Home& home);

    QTemporaryDir folder { temporaryFolder() };
    const ProfileList oldList { sampleProfile(u"a"_qs), sampleProfile(u"b"_qs), sampleProfile(u"c"_qs) };
    const ProfileList newList { sampleProfile(u"a"_qs), sampleProfile(u"x"_qs), sampleProfile(u"c"_qs),
        sampleProfile(u"d"_qs) };
    const Profile oldEntry = activeEntry(oldList[1], 1);
    Stored before;
    QByteArray oldFile;
    QByteArray oldDefaults;

private:
    int m_homes { 0 };
    mode_t m_umask { 0 };
};

void expectOldOrNew(const Stored& found, const Stored& start, const Stored& end)
{
    EXPECT_TRUE(found.file == start.file || found.file == end.file);
    EXPECT_TRUE(found.defaults == start.defaults || found.defaults == end.defaults);
    EXPECT_TRUE(found.setting == start.setting || found.setting == end.setting);
    const bool fileIsLate = start.file != end.file && found.defaults == end.defaults && found.file != end.file;
    EXPECT_FALSE(fileIsLate);
}

void ProfileStoreFailure::killEverywhere(const Operation& operation, const Stored& start, const Stored& end, bool empty)
{
    constexpr int maxCalls = 5000;
    const QStringList bothFiles { QStringLiteral("Profile.plist"), QStringLiteral("settings.plist") };
    bool leftSomething = false;
    bool foundStart = false;
    bool foundEnd = false;
    int calls = 1;
    for (; calls < maxCalls; ++calls) {
        SCOPED_TRACE(calls);
        const Home home = newHome();
        if (!empty)
            home.write(oldFile, oldDefaults);
        const auto outcome = runKilledAtSystemCall(calls, [&] { run(home, operation); });
        ASSERT_NE(outcome, KilledOutcome::Failed);
        EXPECT_TRUE(arePrivate(home.path)) << filesBelow(home.path).join(u' ').toStdString();
        const QStringList left = filesBelow(home.path);
        leftSomething = leftSomething
            || std::any_of(left.begin(), left.end(), [&](const QString& name) { return !bothFiles.contains(name); });
        const Stored found = storedIn(home);
        expectOldOrNew(found, start, end);
        foundStart = foundStart || found == start;
        foundEnd = foundEnd || found == end;
        if (outcome == KilledOutcome::Finished) {
            EXPECT_EQ(found, end);
            break;
        }
        run(home, operation); // remaining temporary files do not disturb the next start
        EXPECT_EQ(readDictionariesFile(home.file()), end.file.value_or(ProfileList()));
        EXPECT_EQ(filesBelow(home.path), bothFiles);
        if (testing::Test::HasFailure())
            return;
    }
    EXPECT_TRUE(foundStart);
    EXPECT_TRUE(foundEnd);
    EXPECT_LT(calls, maxCalls);
    EXPECT_TRUE(leftSomething); // for the next save to remove
}

TEST_F(ProfileStoreFailure, KilledSaveLeavesTheOldOrTheNewList)
{
    Stored after = before;
    after.file = newList;
    after.defaults = newList;
    killEverywhere([this](ProfileStore& store) { store.saveRecords(newList); }, before, after);
}

TEST_F(ProfileStoreFailure, KilledFirstSaveLeavesNothingOrTheList)
{
    const Stored after { newList, newList, std::nullopt };
    killEverywhere([this](ProfileStore& store) { store.saveRecords(newList); }, {}, after, true);
}

TEST_F(ProfileStoreFailure, KilledDeletionLeavesTheOldOrTheNewList)
{
    const ProfileList rest { oldList[0], oldList[2] };
    const Operation deletion = [this](ProfileStore& store) {
        ProfileList records = oldList;
        ProfileList recordActivate { oldEntry };
        store.deleteRecord(records, recordActivate, 1);
    };
    killEverywhere(deletion, before, { rest, rest, std::nullopt });
}

TEST_F(ProfileStoreFailure, KilledActivationLeavesTheOldOrTheNewEntry)
{
    const Profile entry = activeEntry(oldList[2], 2);
    Stored after = before;
    after.setting = ProfileList { entry };
    const Operation activation = [&entry](ProfileStore& store) {
        ProfileList recordActivate;
        store.loadActivation(recordActivate);
        store.saveActivation(recordActivate, entry);
    };
    killEverywhere(activation, before, after);
}

TEST_F(ProfileStoreFailure, KilledSaveOverADamagedFileLosesNothing)
{
    const QByteArray damaged = "typed by hand";
    for (int calls = 1;; ++calls) {
        SCOPED_TRACE(calls);
        const Home home = newHome();
        home.write(damaged, oldDefaults);
        const auto outcome = runKilledAtSystemCall(
            calls, [&] { run(home, [this](ProfileStore& store) { store.saveRecords(newList); }); });
        ASSERT_NE(outcome, KilledOutcome::Failed);
        EXPECT_TRUE(contentOf(home.file()) == damaged || contentOf(home.file() + u".unreadable"_qs) == damaged);
        EXPECT_TRUE(contentOf(home.file()) == damaged || storedIn(home).file == newList);
        if (outcome == KilledOutcome::Finished)
            break;
    }
}

void ProfileStoreFailure::runApart(const std::function<bool()>& prepare, const Operation& operation, const Home& home)
{
    const pid_t child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        if (!prepare())
            ::_exit(2);
        run(home, operation);
        ::_exit(0);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

QStringList filesIn(const QString& path)
{
    return QDir(QFileInfo(path).path()).entryList(QDir::Files | QDir::Hidden);
}

// Limits the file size, as on a disk that becomes full.
TEST_F(ProfileStoreFailure, KeepsTheOldListsIfTheNewOnesDoNotFit)
{
    Stored after = before;
    after.file = newList;
    after.defaults = newList;
    bool keptBoth = false;
    bool replacedBoth = false;
    for (rlim_t limit = 0; !replacedBoth && limit < 65536; limit += 256) {
        SCOPED_TRACE(limit);
        const Home home = newHome();
        home.write(oldFile, oldDefaults);
        const auto limitFiles = [limit] {
            (void)std::signal(SIGXFSZ, SIG_IGN);
            const rlimit size { limit, limit };
            return ::setrlimit(RLIMIT_FSIZE, &size) == 0;
        };
        runApart(
            limitFiles, [this](ProfileStore& store) { store.saveRecords(newList); }, home);
        const Stored found = storedIn(home);
        EXPECT_TRUE(found.file == before.file || found.file == after.file);
        EXPECT_TRUE(found.defaults == before.defaults || found.defaults == after.defaults);
        EXPECT_EQ(found.setting, before.setting);
        EXPECT_EQ(filesIn(home.file()), QStringList { QStringLiteral("Profile.plist") });
        EXPECT_EQ(filesIn(home.defaultsFile()), QStringList { QStringLiteral("settings.plist") });
        keptBoth = keptBoth || found == before;
        replacedBoth = found == after;
    }
    EXPECT_TRUE(keptBoth);
    EXPECT_TRUE(replacedBoth);
}

// A small private file system that disappears with the process.
bool mountDisk(const QString& path)
{
    return ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("tmpfs", QFile::encodeName(path).constData(), "tmpfs", 0, "size=256k") == 0;
}

// Fills a disk with the old files and leaves some pages free.
bool fillDisk(const Home& home, const QByteArray& file, const QByteArray& defaults, int freePages)
{
    home.write(file, defaults);
    QFile filler(home.path + QStringLiteral("/filler"));
    constexpr qint64 page = 4096;
    if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    const QByteArray content(page, 'f');
    while (filler.write(content) == page) { }
    return filler.resize(std::max<qint64>(filler.size() - freePages * page, 0));
}

bool canMount(const QString& path)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(mountDisk(path) ? 0 : 1);
    int status = -1;
    return child > 0 && ::waitpid(child, &status, 0) == child && status == 0;
}

TEST_F(ProfileStoreFailure, KeepsTheOldListsOnAFullDisk)
{
    if (!canMount(newHome().path))
        GTEST_SKIP() << "no right to mount a disk to fill";
    Stored after = before;
    after.file = newList;
    after.defaults = newList;
    bool keptBoth = false;
    bool replacedBoth = false;
    for (int freePages = 0; freePages < 12; ++freePages) {
        SCOPED_TRACE(freePages);
        const Home disk = newHome();
        const Home copy = newHome(); // a copy, because the disk disappears with the process
        const Operation saveAndCopy = [&](ProfileStore& store) {
            store.saveRecords(newList);
            copy.write(contentOf(disk.file()), contentOf(disk.defaultsFile()));
        };
        runApart(
            [&] { return mountDisk(disk.path) && fillDisk(disk, oldFile, oldDefaults, freePages); }, saveAndCopy, disk);
        const Stored found = storedIn(copy);
        EXPECT_TRUE(found.file == before.file || found.file == after.file);
        EXPECT_TRUE(found.defaults == before.defaults || found.defaults == after.defaults);
        EXPECT_EQ(found.setting, before.setting);
        keptBoth = keptBoth || found == before;
        replacedBoth = replacedBoth || found == after;
    }
    EXPECT_TRUE(keptBoth);
    EXPECT_TRUE(replacedBoth);
}

} // namespace
