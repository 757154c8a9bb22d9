#pragma once

#include "posix/SecureMemory.h"
#include "services/linux/card/NetworkBlock.h"

#include <string>
#include <vector>

// One setting of the supplicant's network block. The value may be a key: it is not for any log.
struct NetworkSetting {
    std::string name;
    SecretText value;
    bool isOptional { false }; // the join goes on if this build of the supplicant does not know it
};

// A network block as settings, in the order in which they are made. Names and keys are in hexadecimal.
[[nodiscard]] std::vector<NetworkSetting> networkSettings(const NetworkBlock& block);

// Frequencies in MHz, separated by spaces.
[[nodiscard]] std::string frequencyList(const std::vector<std::uint32_t>& frequenciesMhz);
