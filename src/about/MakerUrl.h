#pragma once

#include <QUrl>

class WindowSettings;

// The maker's web site: the "MakerUrl" entry of the user's settings, or the address compiled into the program. The
// entry must be a complete http or https address, because other schemes could start any program on the desktop.
[[nodiscard]] QUrl makerUrl(const WindowSettings& settings);
