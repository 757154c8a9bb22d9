#pragma once

#include <QIcon>

// A check mark for a checked button, in the colour of the button's text.
[[nodiscard]] QIcon checkMarkIcon();
