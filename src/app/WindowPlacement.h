#pragma once

class QWidget;
class WindowSettings;

// A window's size and position, kept in the settings between runs.

// False, leaving the window unchanged, when no valid placement is stored.
[[nodiscard]] bool restoreWindowPlacement(const WindowSettings& settings, QWidget& window);
// Best effort: a window that cannot save its placement closes without a word.
void saveWindowPlacement(WindowSettings& settings, const QWidget& window);
