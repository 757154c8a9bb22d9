vantrel_fuzzer(bssid_list_fuzz
    SOURCES bssid_list_fuzz.cpp
    LINK survey test_support
    CORPUS corpus/bssid_list)
