#pragma once

#include "services/simulator/scenario/Scenario.h"

#include <string>

// A table with one line per network, in the order of the scenario: name, kind, and what to type to join it. Bytes of a
// name that are not printable UTF-8 are shown as \xNN. Each line ends with a line feed.
[[nodiscard]] std::string joinHints(const Scenario& scenario);
