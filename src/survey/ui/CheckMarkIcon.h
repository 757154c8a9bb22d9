#pragma once

#include <QIcon>

// A check mark for buttons that stay pressed: drawn while the button is checked, an empty space of the same size while
// it is not. It has the colour of the button's text.
[[nodiscard]] QIcon checkMarkIcon();
