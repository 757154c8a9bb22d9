#pragma once

#include "profiles/ProfileKeys.h"
#include "survey/connection/ProfileData.h"

#include <memory>

// Converts a stored profile to connection settings. The values are not checked; the driver may reject them.

// Always associates by SSID. Empty WEP keys, and keys that the security settings do not use, give no key record. The
// channel of an ad hoc network is the position of its row in ChannelFreqTable, which is correct for channels 1 to 14
// only; beyond the table the frequency is 0.
[[nodiscard]] std::unique_ptr<PROFILE_DATA> profileConnection(const Profile& profile);

// The entry of the active profile: all values and the row from which it was activated.
[[nodiscard]] Profile activeEntry(const Profile& profile, int row);

// The entry of a profile that is no longer active, made from the current entry. It has no "Hidden".
[[nodiscard]] Profile inactiveEntry(const Profile& entry, int row);

// Whether the profile of this entry is connected automatically.
[[nodiscard]] bool isActiveEntry(const Profile& entry);
