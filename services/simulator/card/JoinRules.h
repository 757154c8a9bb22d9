#pragma once

#include "services/simulator/card/CardSettings.h"
#include "services/simulator/scenario/Scenario.h"

#include <optional>

// The 32-byte key that a WPA-PSK or WPA-None network wants: its own, or the one that its passphrase and name give
// (PBKDF2 with HMAC-SHA1 over 4096 rounds, as IEEE 802.11i has it). Nothing for other networks.
[[nodiscard]] std::optional<PresharedKey> expectedPresharedKey(const ScenarioNetwork& network);

// Whether a network lets a card with these settings in: infrastructure mode, authentication, encryption and key bytes.
[[nodiscard]] bool settingsFit(const CardSettings& settings, const ScenarioNetwork& network);

// The ad hoc network that a card with these settings puts up by itself, name and address left to the caller; nothing
// when the settings are not those of an ad hoc network or a key that they need is missing.
[[nodiscard]] std::optional<ScenarioNetwork> ownAdHocNetwork(const CardSettings& settings);
