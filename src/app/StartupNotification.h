#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <vector>

class QWindow;

// A launch of the program under X11, as its launcher announced it (freedesktop.org Startup Notification).

// The time of the user's action, which ends the ID: "…_TIME12345".
[[nodiscard]] std::optional<std::uint32_t> launchTime(const QByteArray& startupId);

// The message that ends the launcher's feedback, in the parts in which it is sent.
[[nodiscard]] std::vector<QByteArray> launchEndParts(const QByteArray& startupId);

// Ends the launcher's feedback and gives the window the focus with the time of the launch. Without it, window managers
// refuse the focus to a window that was last used before the active one. A no-op on other platforms.
void activateForLaunch(const QWindow& window, const QByteArray& startupId);
