#pragma once

#include <string_view>

// The contents of default-scenario.toml, compiled in so that the simulator runs without files.
[[nodiscard]] std::string_view defaultScenarioText();
