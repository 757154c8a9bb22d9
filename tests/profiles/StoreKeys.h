#pragma once

#include <QString>

// The keys of the user defaults that hold the profiles and the name of the active one.
inline const auto profilesKey = QStringLiteral("Profiles");
inline const auto settingKey = QStringLiteral("Profile Setting");
