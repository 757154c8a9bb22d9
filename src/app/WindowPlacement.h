#pragma once

class QSettings;
class QWidget;

// A window's size and place between two runs, in the user's defaults. The file of the defaults is readable by the
// user alone, for what else is kept there.

// Puts the window where it was left; false when nothing usable is stored and the window stays as it is.
[[nodiscard]] bool restoreWindowPlacement(const QSettings& defaults, QWidget& window);
void saveWindowPlacement(QSettings& defaults, const QWidget& window);
