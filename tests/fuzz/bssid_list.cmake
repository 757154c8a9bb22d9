vantrel_fuzzer(bssid_list_fuzz
    SOURCES bssid_list_fuzz.cpp
    LINK survey
    CORPUS corpus/bssid_list)
