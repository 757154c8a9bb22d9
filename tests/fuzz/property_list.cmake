vantrel_fuzzer(property_list_fuzz
    SOURCES property_list_fuzz.cpp
    LINK platform_store
    CORPUS corpus/property_list)
