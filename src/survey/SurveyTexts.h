#pragma once

#include <QString>

struct SurveyState {
    bool searchedForCard { false }; // the first search for a card has ended without one
    bool deviceExists { false };
    bool radioOn { false };
    bool surveyed { false }; // the first scan since the card was inserted has ended
};

// Explains why the list of networks is empty.
[[nodiscard]] QString emptyListText(const SurveyState& state);
