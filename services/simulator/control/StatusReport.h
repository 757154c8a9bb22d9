#pragma once

#include "services/simulator/service/SimulatorService.h"

#include <QJsonObject>

#include <string_view>

// The state of the simulator as simctl shows it. Of keys it gives the lengths alone.
[[nodiscard]] QJsonObject statusReport(SimulatorService& service);

[[nodiscard]] std::string_view nameOfLinkState(LinkState state);
