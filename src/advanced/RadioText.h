#pragma once

#include "app/shared/CardPresence.h"

#include <QString>

#include <optional>

// What the utility knows about the radio. The card reports its own switch, but not whether software has switched the
// radio off.
struct RadioKnowledge {
    CardPresence card { CardPresence::Absent };
    bool cardExists { false };
    std::optional<bool> cardSwitchOn {}; // as the card last reported it
    std::optional<bool> chosenOn {}; // std::nullopt before the first switch in this window
    bool chosenForThisCard { false };
};

// Two lines: the card, and what was chosen in this window.
[[nodiscard]] QString radioText(const RadioKnowledge& radio);
