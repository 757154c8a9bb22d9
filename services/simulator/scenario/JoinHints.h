#pragma once

#include "services/simulator/scenario/Scenario.h"

#include <string>

// One line a network, in the order of the scenario: its name, its kind, what a person types to join it. The columns are
// aligned, the lines end with a line feed. Bytes of a name that are no printable UTF-8 are shown as \xNN.
[[nodiscard]] std::string joinHints(const Scenario& scenario);
