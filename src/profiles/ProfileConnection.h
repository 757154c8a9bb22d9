#pragma once

#include "profiles/ProfileKeys.h"
#include "survey/connection/ProfileData.h"

#include <memory>

// From a stored profile to the settings of its connection. The profile's values are not checked: whatever is stored
// gives settings, which the driver may refuse.

// Always associates by SSID. A WEP key without text, and keys that the security does not use, give no key record. An
// ad hoc channel selects its row of ChannelFreqTable by position, right for channels 1 to 14 alone; beyond the table
// there is no frequency (0).
[[nodiscard]] std::unique_ptr<PROFILE_DATA> profileConnection(const Profile& profile);

// The record of an active profile: whole, with the row that it was activated from.
[[nodiscard]] Profile activeEntry(const Profile& profile, int row);

// The same for one that is no longer active; it leaves out "Hidden". entry is the record so far.
[[nodiscard]] Profile inactiveEntry(const Profile& entry, int row);

// Whether the record is one of a profile to be applied again by itself.
[[nodiscard]] bool isActiveEntry(const Profile& entry);
