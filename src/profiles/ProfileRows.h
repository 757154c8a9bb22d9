#pragma once

#include "profiles/ProfileItem.h"
#include "profiles/ProfileKeys.h"

#include <vector>

// The display texts of a profile. Unknown numbers are shown as stored.
[[nodiscard]] ProfileItem profileItem(const Profile& profile);

[[nodiscard]] std::vector<ProfileItem> profileItems(const ProfileList& profiles);
