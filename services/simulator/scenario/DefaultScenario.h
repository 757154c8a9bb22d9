#pragma once

#include <string_view>

// default-scenario.toml as it was when the program was built, so that it runs without files.
[[nodiscard]] std::string_view defaultScenarioText();
