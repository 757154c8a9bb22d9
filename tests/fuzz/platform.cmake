vantrel_fuzzer(driver_reply_fuzz
    SOURCES driver_reply_fuzz.cpp
    LINK platform_registry
    CORPUS corpus/driver_reply)
vantrel_fuzzer(network_name_fuzz
    SOURCES network_name_fuzz.cpp
    LINK platform
    CORPUS corpus/network_name)
