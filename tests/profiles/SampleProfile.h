#pragma once

#include "profiles/ProfileKeys.h"

// A complete profile of an open infrastructure network.
inline Profile sampleProfile(const QString& name = QStringLiteral("PROF1"))
{
    return { { ProfileKey::profileName, name }, { ProfileKey::acPowerCam, u"1"_qs },
        { ProfileKey::authenticationType, u"0"_qs }, { ProfileKey::channel, u"6"_qs },
        { ProfileKey::encryptionType, u"0"_qs }, { ProfileKey::fragmentationThreshold, u"2346"_qs },
        { ProfileKey::networkType, u"1"_qs }, { ProfileKey::preambleType, u"2"_qs },
        { ProfileKey::powerSaveMode, u"1"_qs }, { ProfileKey::rtsThreshold, u"2347"_qs },
        { ProfileKey::ssid, u"home"_qs }, { ProfileKey::txPower, u"3"_qs }, { ProfileKey::bssid, u"001122AABBCC"_qs },
        { ProfileKey::hidden, u"1"_qs }, { u"WEPKey1"_qs, u"abcde"_qs }, { u"WEPKey1 Type"_qs, u"1"_qs },
        { u"WEPKey2"_qs, u"0123456789"_qs }, { u"WEPKey2 Type"_qs, u"0"_qs }, { u"WEPKey3"_qs, QString() },
        { u"WEPKey3 Type"_qs, u"0"_qs }, { u"WEPKey4"_qs, u"fourth key 13"_qs }, { u"WEPKey4 Type"_qs, u"1"_qs },
        { ProfileKey::wepKeyUse, u"1"_qs }, { ProfileKey::wpaPsk, u"password"_qs } };
}

inline Profile with(Profile profile, std::initializer_list<Profile::Entry> changes)
{
    for (const auto& [key, text] : changes)
        profile.set(key, text);
    return profile;
}
