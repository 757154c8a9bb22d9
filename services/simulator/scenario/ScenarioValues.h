#pragma once

#include "driver/records/NdisRecords.h"
#include "services/simulator/scenario/Scenario.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

// The keywords of a scenario file and their meanings.

template <typename Value> using Word = std::pair<std::string_view, Value>;

[[nodiscard]] std::span<const Word<Security>> securityWords();
[[nodiscard]] std::span<const Word<Cipher>> cipherWords();
[[nodiscard]] std::span<const Word<bool>> authenticationWords(); // true for shared key
[[nodiscard]] std::span<const Word<bool>> modeWords(); // true for ad hoc

// "1, 2, 3, …": the channels of ChannelFreqTable.
[[nodiscard]] std::string channelList();
[[nodiscard]] bool isChannel(std::int64_t number);

// Converts an even number of hexadecimal digits; std::nullopt for any other text.
[[nodiscard]] std::optional<std::string> bytesOfHex(std::string_view digits);
[[nodiscard]] std::string hexOfBytes(std::string_view bytes);

// Parses six pairs of hexadecimal digits separated by hyphens or colons.
[[nodiscard]] std::optional<MacAddress> macAddressOf(std::string_view text);
// Whether an address can belong to a station: neither a group address nor all zero.
[[nodiscard]] bool isStationAddress(const MacAddress& address);

// Characters 32 to 126, the ones that IEEE 802.11i allows in a passphrase.
[[nodiscard]] bool isPrintableAscii(std::string_view text);
