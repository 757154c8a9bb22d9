# The scenario file: toml++ stays within Scenario.cpp.
vantrel_library(simulator_scenario
    SOURCES JoinHints.cpp Scenario.cpp ScenarioText.cpp ScenarioValues.cpp
    LINK driver_records)
target_link_libraries(simulator_scenario PRIVATE tomlplusplus::tomlplusplus)
