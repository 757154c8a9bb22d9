vantrel_fuzzer(netlink_values_fuzz
    SOURCES netlink_values_fuzz.cpp
    LINK linux_wire
    CORPUS corpus/netlink_values)
vantrel_fuzzer(information_elements_fuzz
    SOURCES information_elements_fuzz.cpp
    LINK linux_wire
    CORPUS corpus/information_elements)
vantrel_fuzzer(supplicant_text_fuzz
    SOURCES supplicant_text_fuzz.cpp
    LINK linux_wire
    CORPUS corpus/supplicant_text)
