#pragma once

#include <QString>

// Modal alert panels with one button, in the window system's style.
class AlertPanels {
public:
    virtual ~AlertPanels() = default;
    // Returns once the user has dismissed the panel. An empty message shows only the title.
    virtual void NSRunAlertPanel(const QString& title, const QString& message, const QString& defaultButton) = 0;
};
