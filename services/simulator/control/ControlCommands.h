#pragma once

#include "services/simulator/service/SimulatorService.h"

#include <QByteArray>

// Carries out one line of the control protocol (docs/simulator.md) and returns its answer, without the line's end:
// {"ok":true}, with "status" for the command of that name, or {"ok":false,"error":"…"}. A command that fails changes
// nothing.
[[nodiscard]] QByteArray answerControlLine(SimulatorService& service, const QByteArray& line);
