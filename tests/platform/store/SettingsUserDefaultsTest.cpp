#include "platform/SettingsUserDefaults.h"

#include "tests/support/RandomTexts.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>

#include <sys/stat.h>

namespace {

const auto profiles = QStringLiteral("Profiles");

// Keys are in order, as the defaults give them back.
const PropertyDictionaries twoProfiles { { { u"Profile Name"_qs, u"PROF1"_qs }, { u"SSID"_qs, u"home, sweet"_qs } },
    { { u"Profile Name"_qs, u"PROF2"_qs }, { u"SSID"_qs, QString() } } };

PropertyDictionaries sorted(const PropertyDictionaries& dictionaries)
{
    PropertyDictionaries result;
    for (const PropertyDictionary& dictionary : dictionaries) {
        std::vector<PropertyDictionary::Entry> entries(dictionary.begin(), dictionary.end());
        std::sort(entries.begin(), entries.end());
        PropertyDictionary ordered;
        for (const auto& [key, text] : entries)
            ordered.set(key, text);
        result.push_back(ordered);
    }
    return result;
}

class SettingsUserDefaultsTest : public testing::Test {
protected:
    void writePlainly(const QByteArray& content)
    {
        QFile file(path);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    [[nodiscard]] QByteArray content(const QString& suffix = {}) const
    {
        QFile file(path + suffix);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }
    [[nodiscard]] mode_t mode() const
    {
        struct stat status { };
        return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777U : 0;
    }
    // What another start of the program would find. The settings remember what they have read, so a copy is read.
    [[nodiscard]] std::optional<PropertyDictionaries> reread(const QString& key)
    {
        const QString copy = folder.filePath(QStringLiteral("copy%1.ini").arg(++m_copies));
        EXPECT_TRUE(QFile::copy(path, copy));
        return SettingsUserDefaults(copy).arrayForKey(key);
    }

    QTemporaryDir folder;
    QString path { folder.filePath(QStringLiteral("Quorvane/settings.ini")) };

private:
    int m_copies { 0 };
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
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    EXPECT_EQ(content(),
        "[Profiles]\n"
        "1\\Profile%20Name=PROF1\n"
        "1\\SSID=\"home, sweet\"\n"
        "2\\Profile%20Name=PROF2\n"
        "2\\SSID=\n"
        "size=2\n");
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
    for (int i = 0; i < 300; ++i) {
        const auto array = texts.dictionaries([&texts] { return texts.any() + texts.plain(); });
        defaults.setArray(profiles, array);
        defaults.synchronize();
        ASSERT_EQ(sorted(*reread(profiles)), sorted(array));
    }
}

TEST_F(SettingsUserDefaultsTest, TakeAnyKey)
{
    SettingsUserDefaults defaults(path);
    PropertyDictionary odd;
    for (const char16_t* key : { u"", u"/", u"a/b", u"a//b/", u"\\", u"size", u"1", u"\uEEFF", u"\uEEFF002F", u" a " })
        odd.set(QString::fromUtf16(key), QString::fromUtf16(key));
    defaults.setArray(u"a/b"_qs, { odd });
    defaults.synchronize();
    EXPECT_EQ(sorted(*reread(u"a/b"_qs)), sorted({ odd }));
    EXPECT_FALSE(reread(u"a"_qs));
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
    const QByteArray damaged = "[Profiles]\n1\\SSID=typed\nsize=1\n[Prof\nno line of settings\n";
    writePlainly(damaged);
    SettingsUserDefaults defaults(path);
    EXPECT_FALSE(defaults.arrayForKey(profiles));
    defaults.synchronize();
    EXPECT_EQ(content(), damaged);
    defaults.setArray(u"Profile Setting"_qs, twoProfiles);
    defaults.synchronize();
    EXPECT_EQ(content(u".unreadable"_qs), damaged);
    EXPECT_EQ(reread(u"Profile Setting"_qs), twoProfiles);
    EXPECT_FALSE(reread(profiles));
}

TEST_F(SettingsUserDefaultsTest, DoNotBelieveASizeThatIsNone)
{
    for (const QByteArray size : { "-1", "many", "2000000000", "1.5", "" }) {
        SCOPED_TRACE(size.constData());
        path = folder.filePath(u"size"_qs + QString::fromLatin1(size));
        writePlainly("[Profiles]\n1\\SSID=a\nsize=" + size + "\n");
        EXPECT_FALSE(SettingsUserDefaults(path).arrayForKey(profiles));
    }
}

// "size" is the last line of an array, so one that was cut off has none.
TEST_F(SettingsUserDefaultsTest, AreNoArrayWhenTheFileWasCutOff)
{
    SettingsUserDefaults defaults(path);
    defaults.setArray(profiles, twoProfiles);
    defaults.synchronize();
    const QByteArray whole = content();
    const qsizetype sizeLine = whole.indexOf("size=");
    for (qsizetype length = 0; length < sizeLine; ++length) {
        path = folder.filePath(QStringLiteral("cut%1").arg(length));
        writePlainly(whole.first(length));
        EXPECT_FALSE(SettingsUserDefaults(path).arrayForKey(profiles)) << length;
    }
}

TEST_F(SettingsUserDefaultsTest, LieInTheApplicationsOwnDomain)
{
    EXPECT_TRUE(SettingsUserDefaults().path().endsWith(u"/Quorvane/com.quorvane.vantrel.ini"_qs));
}

} // namespace
