#pragma once

#include "platform/store/UserDefaults.h"
#include "profiles/ProfileKeys.h"

#include <QString>

// Stores the profiles in a file and in the user defaults, in this order. The entry of the active profile is stored in the
// defaults only. Write errors are not reported: the caller continues with the list in memory.
class ProfileStore {
public:
    // The defaults must outlive the store.
    explicit ProfileStore(UserDefaults& prefs, QString recordsFile = defaultRecordsFile());

    // "Library/Preferences/Profile.plist" in the home directory.
    [[nodiscard]] static QString defaultRecordsFile();

    // The defaults take precedence over the file. An unreadable file gives an empty list.
    [[nodiscard]] ProfileList loadRecords() const;

    // Loads the entry of the active profile, a list of at most one. Without one in the defaults, recordActivate does not
    // change.
    void loadActivation(ProfileList& recordActivate) const;

    // Backs up an unreadable file before replacing it.
    void saveRecords(const ProfileList& records);

    // Saves the entry of the active profile.
    void saveActivation(ProfileList& recordActivate, const Profile& entry);

    // Deletes the profile and saves the list. Also removes the entry of the active profile if it was written for this
    // row. After deleting a row above, that entry refers to the profile that moved into its row. A row out of range is
    // a no-op.
    void deleteRecord(ProfileList& records, ProfileList& recordActivate, int row);

private:
    void storeInDefaults(const ProfileList& records);
    void writeFile(const ProfileList& records) const;

    UserDefaults& prefs;
    QString recordsFile;
};
