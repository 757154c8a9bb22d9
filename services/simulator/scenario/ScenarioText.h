#pragma once

#include "services/simulator/scenario/Scenario.h"

#include <optional>
#include <string_view>

inline constexpr std::size_t largestScenarioBytes = 1'048'576;

// What the TOML library would not survive: files that are too large, and keys of so many dots that letting go of the
// tables within tables ends the stack. Nothing when the text may be parsed.
[[nodiscard]] std::optional<ScenarioError> unfitForParsing(std::string_view text);
