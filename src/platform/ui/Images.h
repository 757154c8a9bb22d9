#pragma once

#include <QIcon>
#include <QStringView>

// The application's image of this name (resources/images/NAME.svg); a null icon when there is none. Drawn from
// its vectors at whatever size and scale is asked for; what it paints in currentColor takes the text colour of the
// palette in use, so that it reads on light, dark and selected ground. Asking again gives the same image.
[[nodiscard]] QIcon imageNamed(QStringView name);

// The icon of the application itself.
[[nodiscard]] QIcon applicationIcon();
