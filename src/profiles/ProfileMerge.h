#pragma once

#include "profiles/ProfileKeys.h"

#include <cstddef>
#include <optional>

// The stored list with the changes that lead from `base` to `changed`. `base` is the list that was stored when `changed`
// was made from it; another program may have changed the stored one since. A profile that both changed is there twice, so
// that neither version is lost.
[[nodiscard]] ProfileList mergedProfiles(
    const ProfileList& base, const ProfileList& changed, const ProfileList& stored);

// The present row of the profile that was in this row; std::nullopt if it was deleted or changed.
[[nodiscard]] std::optional<std::size_t> currentRow(
    const ProfileList& records, const Profile& profile, std::size_t row);
