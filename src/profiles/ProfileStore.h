#pragma once

#include "platform/store/UserDefaults.h"
#include "profiles/ProfileKeys.h"

#include <QString>

// Where the profiles are kept: a file and the user defaults, always both, the file first. The record of the active
// profile is in the defaults alone. Failures to write are not reported: whoever saves goes on with the list in memory.
class ProfileStore {
public:
    // The defaults must outlive the store.
    explicit ProfileStore(UserDefaults& prefs, QString recordsFile = defaultRecordsFile());

    // "Library/Preferences/Profile.plist" in the user's home folder.
    [[nodiscard]] static QString defaultRecordsFile();

    // The list in the defaults; where they have none, the one in the file; where that cannot be read, an empty one.
    [[nodiscard]] ProfileList loadRecords() const;

    // The record of the active profile, a list of at most one. Where the defaults have none, recordActivate stays.
    void loadActivation(ProfileList& recordActivate) const;

    // A file that is there and cannot be read is kept beside before it is replaced.
    void saveRecords(const ProfileList& records);

    // Makes this the record of the active profile.
    void saveActivation(ProfileList& recordActivate, const Profile& entry);

    // Takes the profile out of the list and saves the list. The record of the active profile goes with it when it
    // was written for this very row: for a profile further up the record stays, and now means the row's new profile.
    // A row that the list does not have is not deleted.
    void deleteRecord(ProfileList& records, ProfileList& recordActivate, int row);

private:
    void storeInDefaults(const ProfileList& records);
    void writeFile(const ProfileList& records) const;

    UserDefaults& prefs;
    QString recordsFile;
};
