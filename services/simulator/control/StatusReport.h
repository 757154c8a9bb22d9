#pragma once

#include "services/simulator/service/SimulatorService.h"

#include <QJsonObject>

// The state of the simulator as pellvane-simctl shows it. Keys are reported as lengths only.
[[nodiscard]] QJsonObject statusReport(SimulatorService& service);
