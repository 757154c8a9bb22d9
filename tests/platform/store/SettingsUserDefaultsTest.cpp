#include "platform/store/SettingsUserDefaults.h"

#include "tests/platform/store/RandomTexts.h"
#include "tests/platform/store/StoreFixture.h"

#include <QStandardPaths>

#include <vector>

namespace {

const auto profiles = QStringLiteral("Profiles");
const auto setting = QStringLiteral("Profile Setting");

const PropertyDictionaries twoProfiles { { { u"Profile Name"_qs, u"PROF1"_qs }, { u"SSID"_qs, u"home, sweet"_qs } },
    { { u"Profile Name"_qs, u"PROF2"_qs }, { u"SSID"_qs, QString() } } };

class SettingsUserDefaultsTest : public StoreFixture {
protected:
    [[nodiscard]] QByteArray content(const QString& suffix = {}) const { return contentOf(path + suffix); }

    // What the next start of the program reads.
    [[nodiscard]] std::optional<PropertyDictionaries> reread(const QString& key) const
    {
        return SettingsUserDefaults(path).arrayForKey(key);
    }

    QString path { at("Quorvane/settings.plist") };
};

TEST_F(SettingsUserDefaultsTest, AreEmptyBeforeAnythingIsSet)
{
    const SettingsUserDefaults defaults(path);
    EXPECT_FALSE(defaults.arrayForKey(profiles));
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(SettingsUserDefaultsTest, StoreArrays)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    EXPECT_EQ(defaults.arrayForKey(profiles), twoProfiles);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(defaults.arrayForKey(profiles), twoProfiles);
    EXPECT_EQ(reread(profiles), twoProfiles);
    EXPECT_FALSE(reread(setting));
}

TEST_F(SettingsUserDefaultsTest, FileIsDictionaryOfArraysSortedByKey)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, { { { u"SSID"_qs, u"home"_qs } } });
    defaults.setArray(setting, {});
    defaults.synchronize();
    EXPECT_EQ(content().toStdString(),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist>\n"
        "<plist version=\"1.0\">\n"
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
        "</plist>\n");
}

TEST_F(SettingsUserDefaultsTest, DistinguishEmptyArrayFromMissingOne)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, {});
    defaults.synchronize();
    EXPECT_EQ(reread(profiles), PropertyDictionaries());
    defaults.removeObjectForKey(profiles);
    EXPECT_FALSE(defaults.arrayForKey(profiles));
    defaults.synchronize();
    EXPECT_FALSE(defaults.arrayForKey(profiles));
    EXPECT_FALSE(reread(profiles));
}

TEST_F(SettingsUserDefaultsTest, ReplaceLongerArrayCompletely)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    defaults.setArray(profiles, { { { u"SSID"_qs, u"other"_qs } }, {} });
    defaults.synchronize();
    EXPECT_EQ(reread(profiles), (PropertyDictionaries { { { u"SSID"_qs, u"other"_qs } }, {} }));
    EXPECT_FALSE(content().contains("PROF"));
}

TEST_F(SettingsUserDefaultsTest, PreserveAnyText)
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

TEST_F(SettingsUserDefaultsTest, FileIsAlwaysPrivate)
{
    const mode_t before = ::umask(0);
    SettingsUserDefaults defaults(path);
    for (int i = 0; i < 3; ++i) {
        defaults.setArray(profiles, PropertyDictionaries(static_cast<std::size_t>(i)));
        defaults.synchronize();
        EXPECT_EQ(modeOf(path), 0600U) << i;
    }
    setMode(path, 0666);
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    EXPECT_EQ(modeOf(path), 0600U);
    ASSERT_TRUE(QFile::remove(path));
    defaults.setArray(profiles, {});
    defaults.synchronize();
    EXPECT_EQ(modeOf(path), 0600U);
    (void)::umask(before);
}

// Programs that run at the same time must not undo each other's changes.
TEST_F(SettingsUserDefaultsTest, KeepKeysThatAnotherProgramHasChanged)
{
    SettingsUserDefaults first(path);
    SettingsUserDefaults second(path);
    first.setArray(profiles, twoProfiles);
    first.synchronize();
    second.setArray(setting, {});
    second.synchronize();
    EXPECT_EQ(reread(profiles), twoProfiles);
    EXPECT_EQ(reread(setting), PropertyDictionaries());
    EXPECT_EQ(second.arrayForKey(profiles), twoProfiles) << "read when it saved";

    first.removeObjectForKey(profiles);
    first.synchronize();
    second.setArray(setting, twoProfiles);
    second.synchronize();
    EXPECT_FALSE(reread(profiles));
}

TEST_F(SettingsUserDefaultsTest, KeepAllKeysOfProgramsThatSaveAtTheSameTime)
{
    constexpr int programs = 4;
    constexpr int saves = 10;
    std::vector<pid_t> processes;
    for (int program = 0; program < programs; ++program) {
        processes.push_back(startProcess([this, program] {
            SettingsUserDefaults defaults(path);
            bool allSaved = true;
            for (int i = 0; i < saves; ++i) {
                defaults.setArray(u"%1 %2"_qs.arg(program).arg(i), twoProfiles);
                allSaved = defaults.synchronize() && allSaved;
                ::usleep(1000);
            }
            return allSaved;
        }));
    }
    for (const pid_t process : processes)
        EXPECT_TRUE(succeeded(process));
    const SettingsUserDefaults defaults(path);
    for (int program = 0; program < programs; ++program) {
        for (int i = 0; i < saves; ++i)
            EXPECT_EQ(defaults.arrayForKey(u"%1 %2"_qs.arg(program).arg(i)), twoProfiles) << program << ' ' << i;
    }
}

TEST_F(SettingsUserDefaultsTest, BackUpDamagedFileAndCountItAsEmpty)
{
    const QByteArray damaged = "<plist><dict><key>Profiles</key><array/><key>typed by hand";
    writePlainly(path, damaged);
    SettingsUserDefaults defaults(path);
    EXPECT_FALSE(defaults.arrayForKey(profiles));
    EXPECT_EQ(content(), damaged);
    defaults.setArray(setting, twoProfiles);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(content(u".unreadable"_qs), damaged);
    EXPECT_EQ(reread(setting), twoProfiles);
    EXPECT_FALSE(reread(profiles));
}

TEST_F(SettingsUserDefaultsTest, DoNotReplaceDamagedFileWithoutBackup)
{
    path = damagedFileWithoutBackup();
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_EQ(content(), "damaged");
    EXPECT_EQ(defaults.arrayForKey(profiles), twoProfiles);
}

TEST_F(SettingsUserDefaultsTest, ReadOnlyListsOfDictionaries)
{
    for (const QByteArray body : { "<array/>", "<string/>", "<dict><key>Profiles</key><string/></dict>",
             "<dict><key>Profiles</key><array><integer>1</integer></array></dict>" }) {
        writePlainly(path, "<plist>" + body + "</plist>");
        EXPECT_FALSE(reread(profiles)) << body.constData();
    }
}

TEST_F(SettingsUserDefaultsTest, ReadNumbersTypedByHandWithoutBackup)
{
    writePlainly(path,
        "<plist><dict><key>Profiles</key><array><dict><key>Channel</key><integer>6</integer><key>Hidden</key>"
        "<true/></dict></array></dict></plist>");
    SettingsUserDefaults defaults(path);
    const PropertyDictionaries typed { { { u"Channel"_qs, u"6"_qs }, { u"Hidden"_qs, u"1"_qs } } };
    EXPECT_EQ(defaults.arrayForKey(profiles), typed);
    defaults.setArray(setting, twoProfiles);
    defaults.synchronize();
    EXPECT_EQ(reread(profiles), typed);
    EXPECT_EQ(reread(setting), twoProfiles);
    EXPECT_FALSE(QFile::exists(path + u".unreadable"_qs));
}

TEST_F(SettingsUserDefaultsTest, BackUpFileWithSkippedEntries)
{
    int kinds = 0;
    for (const QByteArray extra : { "<key>Other</key><string>typed by hand</string>",
             "<key>Other</key><array><dict><key>a</key><data>AAEC</data></dict></array>",
             "<key>Other</key><array><string/></array>" }) {
        SCOPED_TRACE(extra.constData());
        path = directory.filePath(u"kind%1/settings.plist"_qs.arg(++kinds));
        writePlainly(path,
            "<plist><dict><key>Profiles</key><array><dict><key>SSID</key><string>home</string></dict></array>" + extra
                + "</dict></plist>");
        const QByteArray typed = content();
        SettingsUserDefaults defaults(path);
        EXPECT_EQ(defaults.arrayForKey(profiles), (PropertyDictionaries { { { u"SSID"_qs, u"home"_qs } } }));
        for (int i = 0; i < 2; ++i) {
            defaults.setArray(setting, PropertyDictionaries(static_cast<std::size_t>(i)));
            defaults.synchronize();
        }
        EXPECT_EQ(content(u".unreadable"_qs), typed);
        EXPECT_EQ(reread(profiles), defaults.arrayForKey(profiles));
        EXPECT_EQ(namesBeside(path), "settings.plist settings.plist.unreadable");
    }
}

TEST_F(SettingsUserDefaultsTest, SaveEverythingAgainWhenFileIsDamagedOrRemovedMeanwhile)
{
    for (const bool removed : { false, true }) {
        SettingsUserDefaults defaults(path);
        defaults.setArray(profiles, twoProfiles);
        defaults.setArray(setting, {});
        defaults.synchronize();
        if (removed)
            ASSERT_TRUE(QFile::remove(path));
        else
            writePlainly(path, "typed by hand");
        defaults.setArray(setting, twoProfiles);
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_EQ(reread(profiles), twoProfiles);
        EXPECT_EQ(reread(setting), twoProfiles);
        EXPECT_EQ(content(u".unreadable"_qs), "typed by hand");
    }
}

// Whoever may write a file of someone else's may also keep it open and read what is written into it.
TEST_F(SettingsUserDefaultsTest, WriteNothingIntoFileOfAnotherUser)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give a file away";
    writePlainly(path, "<plist><dict/></plist>");
    QFile opened(path);
    ASSERT_TRUE(opened.open(QIODevice::ReadOnly));
    setMode(path, 0666);
    setMode(QFileInfo(path).path(), 0777);
    setMode(directory.path(), 0777);
    constexpr uid_t nobody = 65534;
    const pid_t child = startProcess([this] {
        if (::setuid(nobody) != 0)
            return false;
        SettingsUserDefaults defaults(path);
        defaults.setArray(profiles, twoProfiles);
        defaults.synchronize();
        return defaults.arrayForKey(profiles) == twoProfiles;
    });
    EXPECT_TRUE(succeeded(child));
    EXPECT_EQ(opened.readAll(), "<plist><dict/></plist>");
    EXPECT_EQ(modeOf(path), 0600U);
    EXPECT_EQ(QFileInfo(path).ownerId(), nobody);
    EXPECT_EQ(namesBeside(path), "settings.plist");
}

TEST_F(SettingsUserDefaultsTest, KeepChangesAfterFailedSave)
{
    writePlainly(at("Quorvane"), "not a directory");
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.removeObjectForKey(setting);
    const SaveResult result = defaults.synchronize();
    EXPECT_EQ(result.error, std::errc::file_exists);
    EXPECT_EQ(result.path, at("Quorvane"));
    EXPECT_EQ(defaults.arrayForKey(profiles), twoProfiles);
    ASSERT_TRUE(QFile::remove(at("Quorvane")));
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(reread(profiles), twoProfiles);
}

TEST_F(SettingsUserDefaultsTest, AreEmptyWhenFileIsTruncated)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    const QByteArray whole = content();
    for (qsizetype length = 0; length < whole.size() - 1; length += 7) {
        writePlainly(path, whole.first(length));
        EXPECT_FALSE(reread(profiles)) << length;
    }
}

TEST_F(SettingsUserDefaultsTest, RemoveOwnLeftoverAndNothingElse)
{
    for (const auto& suffix : { u".being-written"_qs, u".backup"_qs, u".old"_qs })
        writePlainly(path + suffix, "of someone");
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    EXPECT_EQ(reread(profiles), twoProfiles);
    EXPECT_EQ(namesBeside(path), "settings.plist settings.plist.backup settings.plist.old");
    EXPECT_EQ(content(u".backup"_qs), "of someone");
}

TEST_F(SettingsUserDefaultsTest, ReplaceTargetOfSymbolicLink)
{
    const QString real = at("elsewhere/real.plist");
    writePlainly(real, {});
    writePlainly(real + u".being-written"_qs, {});
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    ASSERT_TRUE(QFile::link(real, path));
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(reread(profiles), twoProfiles);
    EXPECT_EQ(namesBeside(real), "real.plist");
    EXPECT_EQ(namesBeside(path), "settings.plist");
}

TEST_F(SettingsUserDefaultsTest, AreInConfigurationDirectoryOfApplication)
{
    EXPECT_EQ(SettingsUserDefaults().path(),
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
            + u"/Quorvane/com.quorvane.vantrel.plist"_qs);
}

} // namespace
