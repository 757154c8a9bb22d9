#include "profiles/ProfileMerge.h"

#include <algorithm>
#include <iterator>

namespace {

bool contains(const ProfileList& records, const Profile& profile)
{
    return std::find(records.begin(), records.end(), profile) != records.end();
}

// The new version of a profile that was changed in its row; nullptr if it was not.
const Profile* newVersion(const ProfileList& base, const ProfileList& changed, std::size_t row)
{
    const bool changedInPlace = row < changed.size() && !contains(base, changed[row]) && !contains(changed, base[row]);
    return changedInPlace ? &changed[row] : nullptr;
}

} // namespace

ProfileList mergedProfiles(const ProfileList& base, const ProfileList& changed, const ProfileList& stored)
{
    if (stored == base)
        return changed;
    ProfileList merged = stored;
    for (std::size_t row = 0; row < base.size(); ++row) {
        const auto current = currentRow(merged, base[row], row);
        if (!current || contains(changed, base[row]))
            continue;
        if (const Profile* const version = newVersion(base, changed, row))
            merged[*current] = *version;
        else
            merged.erase(std::next(merged.begin(), static_cast<std::ptrdiff_t>(*current)));
    }
    std::copy_if(changed.begin(), changed.end(), std::back_inserter(merged),
        [&](const Profile& profile) { return !contains(base, profile) && !contains(merged, profile); });
    return merged;
}

std::optional<std::size_t> currentRow(const ProfileList& records, const Profile& profile, std::size_t row)
{
    if (row < records.size() && records[row] == profile)
        return row;
    const auto found = std::find(records.begin(), records.end(), profile);
    return found != records.end() ? std::optional(static_cast<std::size_t>(found - records.begin())) : std::nullopt;
}
