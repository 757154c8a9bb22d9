#pragma once

#include "tests/support/BssidListBuilder.h"
#include "tests/support/RecordedRequests.h"

#include <array>
#include <string_view>
#include <vector>

// What the driver is to be sent when it is made to connect, byte by byte. Numbers and layouts are written out here and
// are made by nothing that the utility itself uses, so that a mistake in its records does not repeat itself in what
// is expected of them.

using Requests = std::vector<RecordedRequest>;
using FourBytes = std::array<int, 4>; // a number as it is sent, the least significant byte first

[[nodiscard]] Requests operator+(Requests first, const Requests& second);
[[nodiscard]] Bytes bytesOfText(std::string_view text);

// How the card works, whatever it connects to.
struct ExpectedRadio {
    int preamble { 0 };
    FourBytes rtsThreshold {}; // bytes
    FourBytes fragmentationThreshold {}; // bytes
    int txPowerPercent { 0 };
};

// What every connection begins with, a disassociation first.
[[nodiscard]] Requests expectedSettings(const ExpectedRadio& radio, int networkType, int authenMode, int encryStatus);

[[nodiscard]] RecordedRequest setPowerMode(const FourBytes& mode);

// The card's whole configuration: what it answers, and what it is set to.
[[nodiscard]] Bytes configuration(const FourBytes& frequencyKhz);
// The card's configuration is asked for and sent back with another frequency.
[[nodiscard]] Requests setFrequency(const FourBytes& frequencyKhz);

[[nodiscard]] RecordedRequest associateByBssid(const Bytes& address);
[[nodiscard]] RecordedRequest associateBySsid(const Bytes& name); // of 0 to 32 bytes

// WEP keys, numbered 0 to 3.
[[nodiscard]] RecordedRequest addKey(int index, bool transmit, const Bytes& material);
[[nodiscard]] RecordedRequest removeKey(int index);

// Pre-shared keys, of 32 bytes: for an infrastructure network, and for one that is not.
[[nodiscard]] Requests addWpa(const Bytes& material);
[[nodiscard]] Requests addWpaNone(const Bytes& material);
// The key of passphrase "password" and SSID "IEEE" that IEEE 802.11i publishes.
[[nodiscard]] Bytes publishedKey();
