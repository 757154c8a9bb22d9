#include "profiles/ProfileRows.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int wpa = 2; // "Authentication Type"

QString authenticationText(const Profile& profile)
{
    const int authentication = profile.integer(ProfileKey::authenticationType);
    const int network = profile.integer(ProfileKey::networkType);
    if (authentication == 0)
        return QStringLiteral("Open");
    if (authentication == 1)
        return QStringLiteral("Shared");
    if (authentication == wpa && network == 0)
        return QStringLiteral("WPA-NONE");
    if (authentication == wpa && network == 1)
        return QStringLiteral("WPA-PSK");
    return profile.text(ProfileKey::authenticationType);
}

// "UnKnown" means no encryption, and any encryption of an ad hoc network with WPA.
QString encryptionText(const Profile& profile)
{
    const int authentication = profile.integer(ProfileKey::authenticationType);
    const int encryption = profile.integer(ProfileKey::encryptionType);
    const int network = profile.integer(ProfileKey::networkType);
    const bool wep = authentication == 0 || authentication == 1;
    const bool wpaPsk = authentication == wpa && network == 1;
    if ((wep && encryption == 0) || (authentication == wpa && network == 0))
        return QStringLiteral("UnKnown");
    if (wep && encryption == 1)
        return QStringLiteral("WEP");
    if (wpaPsk && encryption == 0)
        return QStringLiteral("TKIP");
    if (wpaPsk && encryption == 1)
        return QStringLiteral("AES");
    return profile.text(ProfileKey::encryptionType);
}

QString networkTypeText(const Profile& profile)
{
    const int network = profile.integer(ProfileKey::networkType);
    if (network == 0)
        return QStringLiteral("Ad Hoc");
    if (network == 1)
        return QStringLiteral("Infrastructure");
    return profile.text(ProfileKey::networkType);
}

} // namespace

ProfileItem profileItem(const Profile& profile)
{
    // The channel is "Auto" even for ad hoc profiles, which store one.
    return ProfileItem::initWithProfile(profile.text(ProfileKey::profileName), profile.text(ProfileKey::ssid),
        QStringLiteral("Auto"), authenticationText(profile), encryptionText(profile), networkTypeText(profile));
}

std::vector<ProfileItem> profileItems(const ProfileList& profiles)
{
    std::vector<ProfileItem> items;
    std::transform(profiles.begin(), profiles.end(), std::back_inserter(items), profileItem);
    return items;
}
