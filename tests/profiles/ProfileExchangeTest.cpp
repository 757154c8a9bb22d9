#include "platform/ByteText.h"
#include "platform/store/PropertyListFile.h"
#include "platform/store/PropertyText.h"
#include "platform/store/SettingsUserDefaults.h"
#include "profiles/ProfileConnection.h"
#include "profiles/ProfileStore.h"
#include "tests/platform/store/RandomTexts.h"
#include "tests/profiles/StoreKeys.h"
#include "tests/support/PythonExchange.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

// Python's plistlib reads and writes the file and the defaults like this program,
// with any text in a profile. It sees the escaped form of characters that XML cannot contain.

namespace {

// A name of 32 bytes, most of them malformed.
QString longestName(RandomTexts& texts)
{
    QByteArray bytes;
    while (bytes.size() < 32)
        bytes += static_cast<char>(texts.below(256));
    return textFromBytes(bytes);
}

// All keys of a profile, each with a number or a difficult text.
Profile randomProfile(RandomTexts& texts)
{
    Profile profile;
    for (const QString& key : ProfileKey::inOrder())
        profile.set(key, texts.below(4) == 0 ? QString::number(texts.below(3000) - 10) : texts.any());
    profile.set(ProfileKey::ssid, texts.below(2) == 0 ? longestName(texts) : texts.plain());
    return profile;
}

ProfileList randomProfiles(unsigned seed)
{
    RandomTexts texts(seed);
    ProfileList list;
    while (list.size() < 200)
        list.push_back(randomProfile(texts));
    return list;
}

// The texts as stored in a file.
ProfileList carriable(ProfileList list)
{
    for (Profile& profile : list) {
        const Profile before = profile;
        for (const auto& [key, text] : before)
            profile.set(key, escapeForXml(text));
    }
    return list;
}

// Without carriage returns, which Python converts to line feeds.
ProfileList withoutReturns(ProfileList list)
{
    for (Profile& profile : list) {
        const Profile before = profile;
        for (const auto& [key, text] : before)
            profile.set(key, QString(text).remove(QChar(u'\r')));
    }
    return list;
}

bool hasText(const ProfileList& list, const std::function<bool(const QString&)>& isMeant)
{
    return std::any_of(list.begin(), list.end(), [&](const Profile& profile) {
        return std::any_of(profile.begin(), profile.end(), [&](const auto& entry) { return isMeant(entry.second); });
    });
}

class ProfileExchange : public testing::Test {
protected:
    QTemporaryDir folder;
    QString file { folder.filePath(QStringLiteral("Profile.plist")) };
    QString domain { folder.filePath(QStringLiteral("settings.plist")) };
    QString json { folder.filePath(QStringLiteral("exchanged.json")) };
};

TEST_F(ProfileExchange, ProfilesContainDifficultTexts)
{
    const ProfileList list = randomProfiles(21);
    EXPECT_TRUE(hasText(list, [](const QString& text) { return text.isEmpty(); }));
    EXPECT_TRUE(hasText(list, [](const QString& text) { return text.contains(u"]]><!--"); }));
    EXPECT_TRUE(hasText(list, [](const QString& text) { return text.contains(QChar(1)); }));
    EXPECT_TRUE(hasText(list, [](const QString& text) { return text.contains(QChar(0x20AC)); }));
    EXPECT_TRUE(hasText(list, [](const QString& text) { return escapeForXml(text) != text; }));
    for (const Profile& profile : list)
        EXPECT_EQ(profile.size(), 24u);
}

TEST_F(ProfileExchange, PythonReadsFileAndDefaults)
{
    const ProfileList list = randomProfiles(22);
    const ProfileList setting { activeEntry(list.back(), 199) };
    SettingsUserDefaults defaults(domain);
    ProfileStore store(defaults, file);
    store.saveRecords(list);
    ProfileList activation;
    store.saveActivation(activation, setting.front());

    ASSERT_TRUE(exchange(QStringLiteral("to-json"), file, json));
    EXPECT_EQ(dictionariesOfJson(readJson(json)), carriable(list));

    ASSERT_TRUE(exchange(QStringLiteral("domain-to-json"), domain, json));
    const QJsonArray arrays = readJson(json);
    ASSERT_EQ(arrays.size(), 2);
    for (const auto& each : arrays) {
        const QString key = each.toArray().at(0).toString();
        ASSERT_TRUE(key == profilesKey || key == settingKey);
        EXPECT_EQ(dictionariesOfJson(each.toArray().at(1).toArray()), carriable(key == profilesKey ? list : setting));
    }
    EXPECT_NE(arrays.at(0).toArray().at(0), arrays.at(1).toArray().at(0));
}

TEST_F(ProfileExchange, FileWrittenByPythonIsReadAndReplaced)
{
    const ProfileList list = withoutReturns(randomProfiles(23));
    ASSERT_TRUE(writeJson(json, jsonOf(carriable(list))));
    ASSERT_TRUE(exchange(QStringLiteral("to-plist"), json, file));
    SettingsUserDefaults defaults(domain);
    ProfileStore store(defaults, file);
    EXPECT_EQ(store.loadRecords(), list);
    store.saveRecords({});
    EXPECT_FALSE(QDir(folder.path()).entryList().contains(u"Profile.plist.unreadable"_qs)) << "nothing was left out";
    EXPECT_EQ(readDictionariesFile(file), ProfileList());
}

TEST_F(ProfileExchange, DefaultsWrittenByPythonAreReadAndReplaced)
{
    const ProfileList list = withoutReturns(randomProfiles(24));
    const ProfileList setting { activeEntry(list.front(), 0) };
    const QJsonArray arrays { QJsonArray { profilesKey, jsonOf(carriable(list)) },
        QJsonArray { settingKey, jsonOf(carriable(setting)) } };
    ASSERT_TRUE(writeJson(json, arrays));
    ASSERT_TRUE(exchange(QStringLiteral("domain-to-plist"), json, domain));
    SettingsUserDefaults defaults(domain);
    ProfileStore store(defaults, file);
    EXPECT_EQ(store.loadRecords(), list);
    ProfileList activation;
    store.loadActivation(activation);
    EXPECT_EQ(activation, setting);
    store.saveRecords({});
    EXPECT_EQ(defaults.arrayForKey(settingKey), setting);
    EXPECT_FALSE(QDir(folder.path()).entryList().contains(u"settings.plist.unreadable"_qs)) << "nothing was left out";
}

} // namespace
