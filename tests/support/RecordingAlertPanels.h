#pragma once

#include "platform/AlertPanels.h"

#include <functional>
#include <vector>

// Records every alert and dismisses it immediately.
class RecordingAlertPanels final : public AlertPanels {
public:
    struct Alert {
        QString title;
        QString message;
        QString defaultButton;
        bool operator==(const Alert&) const = default;
    };

    void NSRunAlertPanel(const QString& title, const QString& message, const QString& defaultButton) override
    {
        alerts.push_back({ title, message, defaultButton });
        if (onAlert)
            onAlert();
    }

    std::vector<Alert> alerts;
    std::function<void()> onAlert; // called while the panel is open
};
