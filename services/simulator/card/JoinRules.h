#pragma once

#include "services/card/CardSettings.h"
#include "services/simulator/scenario/Scenario.h"

#include <optional>

// The 32-byte key of a WPA-PSK or WPA-None network: its pre-shared key, or the key derived from its passphrase and name
// (PBKDF2 with HMAC-SHA1, 4096 rounds, IEEE 802.11i). std::nullopt for other networks.
[[nodiscard]] std::optional<PresharedKey> expectedPresharedKey(const ScenarioNetwork& network);

// Whether a network accepts a card with these settings: infrastructure mode, authentication, encryption and keys.
[[nodiscard]] bool settingsFit(const CardSettings& settings, const ScenarioNetwork& network);

// The ad hoc network (IBSS) that a card with these settings creates; the caller adds name and address. std::nullopt if
// the settings are not for an ad hoc network or lack a required key.
[[nodiscard]] std::optional<ScenarioNetwork> createdAdHocNetwork(const CardSettings& settings);
