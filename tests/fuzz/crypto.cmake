vantrel_fuzzer(crypto_fuzz
    SOURCES crypto_fuzz.cpp
    LINK crypto OpenSSL::Crypto
    CORPUS corpus/crypto)
