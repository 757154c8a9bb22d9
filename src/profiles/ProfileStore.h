#pragma once

#include "platform/store/UserDefaults.h"
#include "profiles/ProfileKeys.h"

#include <QString>

#include <cstddef>
#include <optional>

class SaveReport;

// Stores the profiles in a file and in the user defaults, in this order. The entry of the active profile is stored in the
// defaults only. After a write error the caller continues with the list in memory; only the report receives the error.
class ProfileStore {
public:
    // The defaults and the report must outlive the store.
    explicit ProfileStore(UserDefaults& prefs, QString recordsFile = defaultRecordsFile(), SaveReport* saves = nullptr);

    // "Library/Preferences/Profile.plist" in the home directory.
    [[nodiscard]] static QString defaultRecordsFile();

    // The defaults take precedence over the file. An unreadable file gives an empty list.
    [[nodiscard]] ProfileList loadRecords() const;

    // The list to change and save: the stored one, which another program may have changed since `known` was loaded, or
    // `known` if the defaults have none.
    [[nodiscard]] ProfileList latestRecords(const ProfileList& known) const;

    // Loads the entry of the active profile, a list of at most one. Without one in the defaults, recordActivate does not
    // change.
    void loadActivation(ProfileList& recordActivate) const;

    // Replaces `records` by the latest list and puts the profile into it: over the one from the edited row, or at the end
    // if it is new or another program has changed or deleted that one, so that neither version is lost.
    void putProfile(ProfileList& records, Profile profile, std::optional<std::size_t> editedRow) const;

    // Backs up an unreadable file before replacing it.
    void saveRecords(const ProfileList& records);

    // Saves the entry of the active profile.
    void saveActivation(ProfileList& recordActivate, const Profile& entry);

    // Deletes the profile and saves the list. Also removes the entry of the active profile if it was written for this
    // row. After deleting a row above, that entry refers to the profile that moved into its row. A row out of range is
    // a no-op. Keeps what another program has changed meanwhile.
    void deleteRecord(ProfileList& records, ProfileList& recordActivate, int row);

private:
    // The list in the defaults; after a failed save, the list that was not saved, with what another program has changed
    // since.
    [[nodiscard]] std::optional<ProfileList> recordsInDefaults() const;
    void storeInDefaults(const ProfileList& records);
    void synchronizeDefaults();
    void writeFile(const ProfileList& records);

    UserDefaults& prefs;
    QString recordsFile;
    SaveReport* m_saves;
    QString m_failedDefaultsFile; // reported as failed; empty after a success
    std::optional<ProfileList> m_savedBefore; // the list in the file of the defaults when saving them failed
};
