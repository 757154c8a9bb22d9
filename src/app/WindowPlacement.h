#pragma once

class QSettings;
class QWidget;

// A window's size and position, kept in the settings between runs.

// False, leaving the window unchanged, when no valid placement is stored.
[[nodiscard]] bool restoreWindowPlacement(const QSettings& settings, QWidget& window);
// Restricts the settings file to its owner: it may hold more than the placement.
void saveWindowPlacement(QSettings& settings, const QWidget& window);
