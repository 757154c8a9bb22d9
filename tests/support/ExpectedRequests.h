#pragma once

#include "tests/support/BssidListBuilder.h"
#include "tests/support/RecordedRequests.h"

#include <array>
#include <string_view>
#include <vector>

// The requests that a connection sends to the driver. The records are written out byte by byte, not through the
// utility's own structs, so that a mistake in a struct cannot hide here.

using Requests = std::vector<RecordedRequest>;
using FourBytes = std::array<int, 4>; // a 32-bit number, little-endian

[[nodiscard]] Requests operator+(Requests first, const Requests& second);
[[nodiscard]] Bytes bytesOfText(std::string_view text);

// Radio settings that do not depend on the network.
struct ExpectedRadio {
    int preamble { 0 };
    FourBytes rtsThreshold {}; // bytes
    FourBytes fragmentationThreshold {}; // bytes
    int txPowerPercent { 0 };
};

// The first requests of every connection, starting with the disassociation.
[[nodiscard]] Requests expectedSettings(const ExpectedRadio& radio, int networkType, int authenMode, int encryStatus);

[[nodiscard]] RecordedRequest setPowerMode(const FourBytes& mode);

// An NDIS_802_11_CONFIGURATION as the card returns it, with this frequency.
[[nodiscard]] Bytes configuration(const FourBytes& frequencyKhz);
// Queries the card's configuration and sends it back with this frequency.
[[nodiscard]] Requests setFrequency(const FourBytes& frequencyKhz);

[[nodiscard]] RecordedRequest associateByBssid(const Bytes& address);
[[nodiscard]] RecordedRequest associateBySsid(const Bytes& name); // 0 to 32 bytes

// WEP keys; index is 0 to 3.
[[nodiscard]] RecordedRequest addKey(int index, bool transmit, const Bytes& material);
[[nodiscard]] RecordedRequest removeKey(int index);

// 32-byte pre-shared keys, for an infrastructure network and for an ad hoc network.
[[nodiscard]] Requests addWpa(const Bytes& material);
[[nodiscard]] Requests addWpaNone(const Bytes& material);
// The IEEE 802.11i test vector for passphrase "password" and SSID "IEEE".
[[nodiscard]] Bytes publishedKey();
