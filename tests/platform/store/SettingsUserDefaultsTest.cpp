#include "platform/store/SettingsUserDefaults.h"

#include "tests/platform/store/RandomTexts.h"
#include "tests/support/ContentOf.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLockFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const auto profiles = QStringLiteral("Profiles");

const PropertyDictionaries twoProfiles { { { u"Profile Name"_qs, u"PROF1"_qs }, { u"SSID"_qs, u"home, sweet"_qs } },
    { { u"Profile Name"_qs, u"PROF2"_qs }, { u"SSID"_qs, QString() } } };

class SettingsUserDefaultsTest : public testing::Test {
protected:
    void writePlainly(const QByteArray& content)
    {
        QFile file(path);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    [[nodiscard]] QByteArray content(const QString& suffix = {}) const { return contentOf(path + suffix); }
    [[nodiscard]] mode_t mode() const
    {
        struct stat status { };
        return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777U : 0;
    }
    // What another start of the program would find. The settings remember what they have read, so a copy is read.
    [[nodiscard]] std::optional<PropertyDictionaries> reread(const QString& key)
    {
        const QString copy = folder.filePath(QString::number(++m_files));
        EXPECT_TRUE(QFile::copy(path, copy));
        return SettingsUserDefaults(copy).arrayForKey(key);
    }

    QTemporaryDir folder;
    QString path { folder.filePath(QStringLiteral("Quorvane/settings.plist")) };

    int m_files { 0 };
};

TEST_F(SettingsUserDefaultsTest, HaveNothingBeforeAnythingIsSet)
{
    const SettingsUserDefaults defaults(path);
    EXPECT_FALSE(defaults.arrayForKey(profiles));
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(SettingsUserDefaultsTest, KeepWhatIsSet)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    EXPECT_EQ(defaults.arrayForKey(profiles), twoProfiles);
    defaults.synchronize();
    EXPECT_EQ(reread(profiles), twoProfiles);
    EXPECT_FALSE(reread(u"Profile Setting"_qs));
}

TEST_F(SettingsUserDefaultsTest, CanBeReadInTheFile)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, { { { u"SSID"_qs, u"home"_qs } } });
    defaults.setArray(u"Profile Setting"_qs, {});
    defaults.synchronize();
    EXPECT_TRUE(content().endsWith("<plist version=\"1.0\">\n"
                                   "\t<dict>\n"
                                   "\t\t<key>Profile Setting</key>\n"
                                   "\t\t<array/>\n"
                                   "\t\t<key>Profiles</key>\n"
                                   "\t\t<array>\n"
                                   "\t\t\t<dict>\n"
                                   "\t\t\t\t<key>SSID</key>\n"
                                   "\t\t\t\t<string>home</string>\n"
                                   "\t\t\t</dict>\n"
                                   "\t\t</array>\n"
                                   "\t</dict>\n"
                                   "</plist>\n"))
        << content().constData();
}

TEST_F(SettingsUserDefaultsTest, TellAnEmptyArrayFromNone)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, {});
    defaults.synchronize();
    EXPECT_EQ(reread(profiles), PropertyDictionaries());
    defaults.removeObjectForKey(profiles);
    EXPECT_FALSE(defaults.arrayForKey(profiles));
    defaults.synchronize();
    EXPECT_FALSE(reread(profiles));
}

TEST_F(SettingsUserDefaultsTest, LeaveNothingOfALongerArray)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.setArray(profiles, { { { u"SSID"_qs, u"other"_qs } }, {} });
    defaults.synchronize();
    EXPECT_EQ(reread(profiles), (PropertyDictionaries { { { u"SSID"_qs, u"other"_qs } }, {} }));
    EXPECT_FALSE(content().contains("PROF"));
}

TEST_F(SettingsUserDefaultsTest, GiveBackEveryText)
{
    RandomTexts texts(21);
    SettingsUserDefaults defaults(path);
    for (int i = 0; i < 60; ++i) {
        const auto array = texts.dictionaries([&texts] { return texts.any() + texts.plain(); });
        defaults.setArray(profiles, array);
        defaults.synchronize();
        ASSERT_EQ(reread(profiles), array);
    }
}

TEST_F(SettingsUserDefaultsTest, AreTheirUsersAloneFromTheBeginningAndEverAfter)
{
    const mode_t before = ::umask(0);
    SettingsUserDefaults defaults(path);
    for (int i = 0; i < 3; ++i) {
        defaults.setArray(profiles, PropertyDictionaries(static_cast<std::size_t>(i)));
        defaults.synchronize();
        EXPECT_EQ(mode(), 0600u) << i;
    }
    ::chmod(QFile::encodeName(path).constData(), 0666);
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    EXPECT_EQ(mode(), 0600u);
    ASSERT_TRUE(QFile::remove(path));
    defaults.setArray(profiles, {});
    defaults.synchronize();
    EXPECT_EQ(mode(), 0600u);
    (void)::umask(before);
}

TEST_F(SettingsUserDefaultsTest, ReadADamagedFileAsNothingAndKeepItBesideWhatReplacesIt)
{
    const QByteArray damaged = "<plist><dict><key>Profiles</key><array/><key>typed by hand";
    writePlainly(damaged);
    SettingsUserDefaults defaults(path);
    EXPECT_FALSE(defaults.arrayForKey(profiles));
    EXPECT_EQ(content(), damaged);
    defaults.setArray(u"Profile Setting"_qs, twoProfiles);
    defaults.synchronize();
    EXPECT_EQ(content(u".unreadable"_qs), damaged);
    EXPECT_EQ(reread(u"Profile Setting"_qs), twoProfiles);
    EXPECT_FALSE(reread(profiles));
}

TEST_F(SettingsUserDefaultsTest, LeaveADamagedFileThatCannotBeKept)
{
    writePlainly("damaged");
    ASSERT_TRUE(QDir().mkdir(path + u".unreadable"_qs));
    for (int number = 2; number <= 1000; ++number)
        ASSERT_TRUE(QDir().mkdir(path + QStringLiteral(".unreadable.%1").arg(number)));
    {
        SettingsUserDefaults defaults(path);
        defaults.setArray(profiles, twoProfiles);
        defaults.synchronize();
    }
    EXPECT_EQ(content(), "damaged");
}

TEST_F(SettingsUserDefaultsTest, HoldNothingButListsOfDictionaries)
{
    for (const QByteArray body : { "<array/>", "<string/>", "<dict><key>Profiles</key><string/></dict>",
             "<dict><key>Profiles</key><array><integer>1</integer></array></dict>" }) {
        SCOPED_TRACE(body.constData());
        path = folder.filePath(QString::number(++m_files));
        writePlainly("<plist>" + body + "</plist>");
        EXPECT_FALSE(SettingsUserDefaults(path).arrayForKey(profiles));
    }
}

TEST_F(SettingsUserDefaultsTest, TakeNumbersTypedByHandAndKeepNoCopyOfThem)
{
    writePlainly("<plist><dict><key>Profiles</key><array><dict><key>Channel</key><integer>6</integer><key>Hidden</key>"
                 "<true/></dict></array></dict></plist>");
    SettingsUserDefaults defaults(path);
    const PropertyDictionaries typed { { { u"Channel"_qs, u"6"_qs }, { u"Hidden"_qs, u"1"_qs } } };
    EXPECT_EQ(defaults.arrayForKey(profiles), typed);
    defaults.setArray(u"Profile Setting"_qs, twoProfiles);
    defaults.synchronize();
    EXPECT_EQ(reread(profiles), typed);
    EXPECT_EQ(reread(u"Profile Setting"_qs), twoProfiles);
    EXPECT_FALSE(QFile::exists(path + u".unreadable"_qs));
}

TEST_F(SettingsUserDefaultsTest, KeepAFileBesideOfWhichSomethingWasLeftOut)
{
    int kinds = 0;
    for (const QByteArray extra : { "<key>Other</key><string>typed by hand</string>",
             "<key>Other</key><array><dict><key>a</key><data>AAEC</data></dict></array>",
             "<key>Other</key><array><string/></array>" }) {
        SCOPED_TRACE(extra.constData());
        path = folder.filePath(u"kind%1/settings.plist"_qs.arg(++kinds));
        writePlainly("<plist><dict><key>Profiles</key><array><dict><key>SSID</key><string>home</string></dict></array>"
            + extra + "</dict></plist>");
        const QByteArray typed = content();
        SettingsUserDefaults defaults(path);
        EXPECT_EQ(defaults.arrayForKey(profiles), (PropertyDictionaries { { { u"SSID"_qs, u"home"_qs } } }));
        for (int i = 0; i < 2; ++i) {
            defaults.setArray(u"Profile Setting"_qs, PropertyDictionaries(static_cast<std::size_t>(i)));
            defaults.synchronize();
        }
        EXPECT_EQ(content(u".unreadable"_qs), typed);
        EXPECT_EQ(reread(profiles), defaults.arrayForKey(profiles));
        EXPECT_EQ(QFileInfo(path).dir().entryList(QDir::Files | QDir::Hidden).size(), 2);
    }
}

TEST_F(SettingsUserDefaultsTest, KeepAFileThatWasDamagedWhileTheyHeldIt)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    writePlainly("typed by hand");
    defaults.setArray(profiles, {});
    defaults.synchronize();
    EXPECT_EQ(content(u".unreadable"_qs), "typed by hand");
    EXPECT_EQ(reread(profiles), PropertyDictionaries());
}

TEST_F(SettingsUserDefaultsTest, SaveAllTheyHoldOverAFileThatWasDamagedMeanwhile)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.setArray(u"Profile Setting"_qs, {});
    defaults.synchronize();
    writePlainly("typed by hand");
    defaults.setArray(u"Profile Setting"_qs, twoProfiles);
    defaults.synchronize();
    EXPECT_EQ(reread(profiles), twoProfiles);
    EXPECT_EQ(reread(u"Profile Setting"_qs), twoProfiles);
}

// The file belongs to somebody else who lets everybody write it: keys would be everybody's to read.
TEST_F(SettingsUserDefaultsTest, WriteNothingIntoAFileThatCannotBeMadePrivate)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a file away";
    writePlainly("<plist><dict/></plist>");
    const QByteArray before = content();
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0666), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(QFileInfo(path).path()).constData(), 0777), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(folder.path()).constData(), 0777), 0);
    const pid_t child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        if (::setuid(nobody) != 0)
            ::_exit(2);
        bool holds = false;
        {
            SettingsUserDefaults defaults(path);
            defaults.setArray(profiles, twoProfiles);
            defaults.synchronize();
            holds = defaults.arrayForKey(profiles) == twoProfiles;
        }
        ::_exit(holds ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(content(), before);
    EXPECT_EQ(QFileInfo(path).dir().entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(SettingsUserDefaultsTest, DoNotWaitForAProcessThatSaves)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    SettingsUserDefaults defaults(path);
    {
        QLockFile other(path + u".lock"_qs);
        ASSERT_TRUE(other.tryLock(0));
        defaults.setArray(profiles, twoProfiles);
        defaults.synchronize();
        EXPECT_EQ(content(), "");
        EXPECT_EQ(defaults.arrayForKey(profiles), twoProfiles);
    }
    defaults.synchronize();
    EXPECT_EQ(reread(profiles), twoProfiles);
}

TEST_F(SettingsUserDefaultsTest, AreNoArrayWhenTheFileWasCutOff)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    const QByteArray whole = content();
    for (qsizetype length = 0; length < whole.size() - 1; length += 7) {
        path = folder.filePath(QString::number(++m_files));
        writePlainly(whole.first(length));
        EXPECT_FALSE(SettingsUserDefaults(path).arrayForKey(profiles)) << length;
    }
}

TEST_F(SettingsUserDefaultsTest, DoNotWaitForALockThatNobodyHolds)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile lock(path + u".lock"_qs);
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.close();
    QElapsedTimer timer;
    timer.start();
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    EXPECT_EQ(reread(profiles), twoProfiles);
    EXPECT_LT(timer.elapsed(), 20000);
    EXPECT_FALSE(lock.exists());
}

TEST_F(SettingsUserDefaultsTest, RemoveWhatAnEndedProcessLeftAndNothingElse)
{
    const QString left = path + u".AbCdEf"_qs;
    const QString mark = path + u".being-written"_qs;
    writePlainly("of a person");
    for (const auto& suffix : { u".backup"_qs, u".old"_qs, u".AbCdE1"_qs })
        ASSERT_TRUE(QFile::copy(path, path + suffix));
    ASSERT_TRUE(QFile::rename(path, left));
    ASSERT_EQ(::link(QFile::encodeName(left).constData(), QFile::encodeName(mark).constData()), 0);
    for (const auto& suffix : { u".note"_qs, u".UvWxYz"_qs }) // the latter of one that ended before it wrote
        ASSERT_TRUE(QFile(path + suffix).open(QIODevice::WriteOnly));
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    EXPECT_EQ(reread(profiles), twoProfiles);
    const QStringList names = QFileInfo(path).dir().entryList(QDir::Files | QDir::Hidden, QDir::Name);
    EXPECT_EQ(names.join(u' ').toStdString(),
        "settings.plist settings.plist.AbCdE1 settings.plist.backup settings.plist.note settings.plist.old");
    EXPECT_EQ(content(u".backup"_qs), "of a person");
}

TEST_F(SettingsUserDefaultsTest, ReplaceWhatALinkPointsToAndLeaveNothingBesideIt)
{
    const QString real = folder.filePath(u"elsewhere/real.plist"_qs);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(real).path()) && QDir().mkpath(QFileInfo(path).path()));
    for (const auto& file : { real, real + u".AbCdEf"_qs }) // the latter a leftover
        ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
    ASSERT_TRUE(QFile::link(real, path));
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(reread(profiles), twoProfiles);
    EXPECT_EQ(QFileInfo(real).dir().entryList(QDir::Files | QDir::Hidden), QStringList { u"real.plist"_qs });
    EXPECT_EQ(QFileInfo(path).dir().entryList(QDir::Files | QDir::Hidden), QStringList { u"settings.plist"_qs });
}

TEST_F(SettingsUserDefaultsTest, LieInTheApplicationsOwnDomain)
{
    EXPECT_TRUE(SettingsUserDefaults().path().endsWith(u"/Quorvane/com.quorvane.vantrel.plist"_qs));
}

} // namespace
