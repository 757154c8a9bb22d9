#pragma once

#include "profiles/ProfileItem.h"
#include "profiles/ProfileKeys.h"

#include <vector>

// The display texts of a profile. Numbers that have no word are shown as they are stored.
[[nodiscard]] ProfileItem profileItem(const Profile& profile);

[[nodiscard]] std::vector<ProfileItem> profileItems(const ProfileList& profiles);
