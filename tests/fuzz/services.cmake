vantrel_fuzzer(scenario_fuzz
    SOURCES scenario_fuzz.cpp
    LINK simulator_scenario
    CORPUS corpus/scenario)
vantrel_fuzzer(service_request_fuzz
    SOURCES service_request_fuzz.cpp
    LINK service_host
    CORPUS corpus/service_request)
