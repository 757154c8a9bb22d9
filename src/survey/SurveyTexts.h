#pragma once

#include "app/shared/CardState.h"

#include <QString>

struct SurveyState {
    CardState card { CardState::Unknown };
    bool deviceExists { false };
    bool radioOn { false };
    bool surveyed { false }; // the first scan since the card was inserted has ended
};

// Explains why the list of networks is empty.
[[nodiscard]] QString emptyListText(const SurveyState& state);
