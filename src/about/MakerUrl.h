#pragma once

#include <QUrl>

class QSettings;

// The maker's web site: the address under the key "MakerUrl" of the user's settings, or the one that the program was
// built with. Only complete http and https addresses are taken from the settings: what is opened is handed to whatever
// program the desktop has for it.
[[nodiscard]] QUrl makerUrl(const QSettings& settings);
