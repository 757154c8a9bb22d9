#pragma once

#include "driver/records/NdisRecords.h"
#include "services/simulator/scenario/Scenario.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

// The words of a scenario file and what they stand for.

template <typename Value> using Word = std::pair<std::string_view, Value>;

[[nodiscard]] std::span<const Word<Security>> securityWords();
[[nodiscard]] std::span<const Word<Cipher>> cipherWords();
[[nodiscard]] std::span<const Word<bool>> authenticationWords(); // true for shared key
[[nodiscard]] std::span<const Word<bool>> modeWords(); // true for ad hoc

// "1, 2, 3, …": the channels of ChannelFreqTable.
[[nodiscard]] std::string channelList();
[[nodiscard]] bool isChannel(std::int64_t number);

// An even number of hexadecimal digits; nothing for anything else.
[[nodiscard]] std::optional<std::string> bytesOfHex(std::string_view digits);
[[nodiscard]] std::string hexOfBytes(std::string_view bytes);

// Six pairs of hexadecimal digits with hyphens or colons between them.
[[nodiscard]] std::optional<MacAddress> macAddressOf(std::string_view text);
// Whether an address can belong to one station: neither a group address nor all zero.
[[nodiscard]] bool isStationAddress(const MacAddress& address);

// Characters 32 to 126, those that a passphrase of IEEE 802.11i is made of.
[[nodiscard]] bool isPrintableAscii(std::string_view text);
