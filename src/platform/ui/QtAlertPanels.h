#pragma once

#include "platform/AlertPanels.h"

// Application-modal message boxes over the current window. Timers keep firing while one is shown.
class QtAlertPanels final : public AlertPanels {
public:
    void NSRunAlertPanel(const QString& title, const QString& message, const QString& defaultButton) override;
};
