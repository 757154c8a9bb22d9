#include "profiles/ProfileStore.h"

#include "platform/store/PropertyListFile.h"
#include "platform/store/SaveReport.h"
#include "profiles/ProfileMerge.h"

#include <iterator>
#include <utility>

namespace {

const auto profilesKey = QStringLiteral("Profiles");
const auto profileSettingKey = QStringLiteral("Profile Setting");

QString reasonOf(const SaveResult& result)
{
    return QString::fromLocal8Bit(result.error.message().c_str());
}

} // namespace

ProfileStore::ProfileStore(UserDefaults& prefs, QString recordsFile, SaveReport* saves)
    : prefs(prefs)
    , recordsFile(std::move(recordsFile))
    , m_saves(saves)
{
}

QString ProfileStore::defaultRecordsFile()
{
    return preferencesFile(QStringLiteral("Profile.plist"));
}

ProfileList ProfileStore::loadRecords() const
{
    auto records = recordsInDefaults();
    return records ? *std::move(records) : readDictionariesFile(recordsFile);
}

ProfileList ProfileStore::latestRecords(const ProfileList& known) const
{
    return recordsInDefaults().value_or(known);
}

std::optional<ProfileList> ProfileStore::recordsInDefaults() const
{
    auto records = prefs.arrayForKey(profilesKey);
    if (!m_savedBefore || !records)
        return records;
    return mergedProfiles(*m_savedBefore, *records, prefs.savedArrayForKey(profilesKey).value_or(*m_savedBefore));
}

void ProfileStore::putProfile(ProfileList& records, Profile profile, std::optional<std::size_t> editedRow) const
{
    const bool exists = editedRow && *editedRow < records.size();
    const Profile opened = exists ? records[*editedRow] : Profile();
    records = latestRecords(records);
    const auto current = exists ? currentRow(records, opened, *editedRow) : std::nullopt;
    if (current)
        records[*current] = std::move(profile);
    else
        records.push_back(std::move(profile));
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
    if (m_savedBefore) // the list is saved as well
        if (const auto records = recordsInDefaults())
            prefs.setArray(profilesKey, *records);
    prefs.setArray(profileSettingKey, recordActivate);
    synchronizeDefaults();
}

void ProfileStore::deleteRecord(ProfileList& records, ProfileList& recordActivate, int row)
{
    if (row < 0 || static_cast<std::size_t>(row) >= records.size())
        return;
    const Profile profile = records[static_cast<std::size_t>(row)];
    records = latestRecords(records);
    if (const auto current = currentRow(records, profile, static_cast<std::size_t>(row)))
        records.erase(std::next(records.begin(), static_cast<std::ptrdiff_t>(*current)));
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
    synchronizeDefaults();
}

// A success does not name its file, so the last failed one is remembered.
void ProfileStore::synchronizeDefaults()
{
    auto saved = prefs.savedArrayForKey(profilesKey).value_or(ProfileList());
    const SaveResult result = prefs.synchronize();
    m_savedBefore = result ? std::nullopt : std::optional(std::move(saved));
    if (!m_saves)
        return;
    if (!m_failedDefaultsFile.isEmpty() && m_failedDefaultsFile != result.path)
        m_saves->saveSucceeded(m_failedDefaultsFile);
    if (!result)
        m_saves->saveFailed(result.path, reasonOf(result));
    m_failedDefaultsFile = result.path;
}

void ProfileStore::writeFile(const ProfileList& records)
{
    const SaveResult result = writeDictionariesFile(recordsFile, records);
    if (!m_saves)
        return;
    if (result)
        m_saves->saveSucceeded(recordsFile);
    else
        m_saves->saveFailed(recordsFile, reasonOf(result));
}
