#include "profiles/ProfileStore.h"

#include "platform/store/PropertyListFile.h"

#include <utility>

namespace {

const auto profilesKey = QStringLiteral("Profiles");
const auto profileSettingKey = QStringLiteral("Profile Setting");

} // namespace

ProfileStore::ProfileStore(UserDefaults& prefs, QString recordsFile)
    : prefs(prefs)
    , recordsFile(std::move(recordsFile))
{
}

QString ProfileStore::defaultRecordsFile()
{
    return preferencesFile(QStringLiteral("Profile.plist"));
}

ProfileList ProfileStore::loadRecords() const
{
    auto records = prefs.arrayForKey(profilesKey);
    return records ? *std::move(records) : readDictionariesFile(recordsFile);
}

void ProfileStore::loadActivation(ProfileList& recordActivate) const
{
    if (auto stored = prefs.arrayForKey(profileSettingKey))
        recordActivate = *std::move(stored);
}

void ProfileStore::saveRecords(const ProfileList& records)
{
    writeFile(records);
    storeInDefaults(records);
}

void ProfileStore::saveActivation(ProfileList& recordActivate, const Profile& entry)
{
    if (recordActivate.empty())
        recordActivate.push_back(entry);
    else
        recordActivate.front() = entry;
    prefs.setArray(profileSettingKey, recordActivate);
    prefs.synchronize();
}

void ProfileStore::deleteRecord(ProfileList& records, ProfileList& recordActivate, int row)
{
    if (row < 0 || static_cast<std::size_t>(row) >= records.size())
        return;
    records.erase(records.begin() + row);
    writeFile(records);
    if (!recordActivate.empty() && recordActivate.front().integer(ProfileKey::selected) == row) {
        prefs.removeObjectForKey(profileSettingKey);
        recordActivate.clear();
    }
    storeInDefaults(records);
}

void ProfileStore::storeInDefaults(const ProfileList& records)
{
    prefs.setArray(profilesKey, records);
    prefs.synchronize();
}

void ProfileStore::writeFile(const ProfileList& records) const
{
    (void)writeDictionariesFile(recordsFile, records);
}
