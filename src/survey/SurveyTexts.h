#pragma once

#include "app/shared/CardPresence.h"

#include <QString>

#include <optional>

struct SurveyState {
    CardPresence card { CardPresence::Unknown };
    bool deviceExists { false };
    bool radioOn { false };
    std::optional<bool> cardSwitchOn {}; // the card's own radio switch, if known
    bool radioSwitched { false }; // in this window
    bool surveyed { false }; // the first scan since the card was inserted has ended
};

// Explains why the list of networks is empty.
[[nodiscard]] QString emptyListText(const SurveyState& state);
