#pragma once

#include "services/simulator/scenario/Scenario.h"

#include <optional>
#include <string_view>

inline constexpr std::size_t maxScenarioBytes = 1'048'576;

// Rejects input that the TOML library cannot handle: files above the size limit, and dotted keys so deep that
// destroying the nested tables would overflow the stack. Returns std::nullopt if the text may be parsed.
[[nodiscard]] std::optional<ScenarioError> unfitForParsing(std::string_view text);
