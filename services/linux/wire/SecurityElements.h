#pragma once

#include "services/linux/wire/InformationElements.h"

#include <cstdint>
#include <optional>
#include <vector>

// The WPA element (vendor element of 00-50-F2, type 1) and the RSN element of IEEE 802.11, and what they say about
// joining a network.

enum class CipherSuite : std::uint8_t {
    None, // no pairwise keys
    Wep,
    Tkip,
    Ccmp,
    Gcmp,
    Ccmp256,
    Gcmp256,
    Unknown,
};

enum class KeyManagement : std::uint8_t {
    None, // WPA-None
    Psk,
    PskSha256,
    FastPsk, // fast transition with a pre-shared key
    Other, // 802.1X, SAE, OWE and everything else that a pre-shared key alone does not open
};

struct SecurityElement {
    CipherSuite group { CipherSuite::Unknown };
    std::vector<CipherSuite> pairwise;
    std::vector<KeyManagement> keyManagement;

    [[nodiscard]] bool acceptsPresharedKey() const;
};

// std::nullopt for an absent or malformed element. Fields missing at the end have the default of the standard.
[[nodiscard]] std::optional<SecurityElement> wpaElement(OctetSpan elements);
[[nodiscard]] std::optional<SecurityElement> rsnElement(OctetSpan elements);

// The elements as the driver's list carries them. The client knows WPA elements only, so
//  - a network with an RSN element alone gets a WPA element made of it, with the pre-shared key or, if no such key opens
//    the network, with 802.1X, which the client cannot join. So does a network whose elements cannot be read: without
//    a WPA element the client would take it for WEP;
//  - the WPA element comes first: the client advances by the length byte of an element without its two header bytes, so
//    it would find the WPA element after other elements only by luck;
//  - elements that describe neither name, rates, channel nor security are dropped, so that a long list fits the
//    client's 65,536 bytes.
[[nodiscard]] Octets listedElements(OctetSpan elements);
