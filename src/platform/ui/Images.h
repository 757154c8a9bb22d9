#pragma once

#include <QIcon>
#include <QStringView>

// The application's image of this name (resources/images/NAME.svg); a null icon if there is none. It is rendered at the
// requested size and scale, with the palette's text colour as currentColor, so it is readable on light, dark and
// selected backgrounds. Images are cached.
[[nodiscard]] QIcon imageNamed(QStringView name);

// The icon of the application itself.
[[nodiscard]] QIcon applicationIcon();
