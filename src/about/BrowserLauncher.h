#pragma once

#include <QUrl>

#include <functional>

// Opens an address with the desktop's xdg-open; the browser outlives this program. Calls failed, at once or later, if
// xdg-open is missing or finds no browser.
void openInBrowser(const QUrl& url, const std::function<void()>& failed);
