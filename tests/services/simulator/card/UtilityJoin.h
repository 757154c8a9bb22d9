#pragma once

#include "services/simulator/card/JoinRules.h"
#include "tests/services/simulator/card/CardUnderTest.h"

#include <string>

// The settings that the utility sends to join a network.
struct UtilityJoin {
    std::int32_t networkType { Ndis802_11Infrastructure };
    std::int32_t authentication { Ndis802_11AuthModeOpen };
    std::int32_t encryption { Ndis802_11EncryptionDisabled };
    std::array<std::string, 4> wepKeys;
    std::size_t transmitKey { 0 };
    std::string presharedKey;
    bool byBssid { true };
    std::string ssid;
    MacAddress bssid {};
};

// The settings of a user who knows everything about the network.
[[nodiscard]] inline UtilityJoin correctJoin(const ScenarioNetwork& network)
{
    UtilityJoin join;
    join.networkType = network.adHoc ? Ndis802_11IBSS : Ndis802_11Infrastructure;
    join.byBssid = !network.adHoc && !network.hidden;
    join.ssid = network.ssid;
    join.bssid = network.bssid;
    const std::int32_t cipher
        = network.cipher == Cipher::Aes ? Ndis802_11Encryption3Enabled : Ndis802_11Encryption2Enabled;
    if (network.security == Security::Wep) {
        join.authentication = network.sharedKeyAuthentication ? Ndis802_11AuthModeShared : Ndis802_11AuthModeOpen;
        join.encryption = Ndis802_11Encryption1Enabled;
        join.wepKeys = network.wepKeys;
        join.transmitKey = static_cast<std::size_t>(network.transmitKeyIndex);
    } else if (network.security != Security::Open) {
        join.authentication = network.security == Security::WpaPsk ? Ndis802_11AuthModeWPAPSK
            : network.security == Security::WpaNone                ? Ndis802_11AuthModeWPANone
                                                                   : Ndis802_11AuthModeWPA;
        join.encryption = cipher;
        if (const auto key = expectedPresharedKey(network))
            join.presharedKey.assign(key->begin(), key->end());
    }
    return join;
}

inline void sendKeys(CardUnderTest& card, const UtilityJoin& join)
{
    if (join.authentication == Ndis802_11AuthModeWPAPSK || join.authentication == Ndis802_11AuthModeWPANone) {
        const std::uint32_t oid
            = join.authentication == Ndis802_11AuthModeWPAPSK ? VX_OID_802_11_ADD_WPA : OID_802_11_ADD_KEY;
        (void)card.setBytes(oid, keyRecord(keyIndexTransmit, join.presharedKey, false));
        return;
    }
    if (join.authentication != Ndis802_11AuthModeShared && join.encryption != Ndis802_11Encryption1Enabled)
        return;
    for (std::uint32_t i = 0; i < 4; ++i) {
        const std::uint32_t index = i == join.transmitKey ? i | keyIndexTransmit : i;
        if (join.wepKeys[i].empty())
            (void)card.set(OID_802_11_REMOVE_KEY, removeKeyRecord(i));
        else
            (void)card.setBytes(OID_802_11_ADD_KEY, keyRecord(index, join.wepKeys[i]));
    }
}

// Sends the requests in the utility's order and returns whether the link comes up.
[[nodiscard]] inline bool comesUp(CardUnderTest& card, const UtilityJoin& join)
{
    (void)card.set(OID_802_11_DISASSOCIATE, std::uint32_t { 0 });
    (void)card.set(OID_802_11_INFRASTRUCTURE_MODE, join.networkType);
    (void)card.set(VX_OID_802_11_PREAMBLE, std::uint32_t { 2 });
    (void)card.set(OID_802_11_RTS_THRESHOLD, std::uint32_t { 2347 });
    (void)card.set(OID_802_11_FRAGMENTATION_THRESHOLD, std::uint32_t { 0 });
    (void)card.set(OID_802_11_AUTHENTICATION_MODE, join.authentication);
    (void)card.set(OID_802_11_ENCRYPTION_STATUS, join.encryption);
    (void)card.set(VX_OID_802_11_TX_POWER, std::uint32_t { 100 });
    sendKeys(card, join);
    if (join.networkType != Ndis802_11IBSS) {
        (void)card.set(OID_802_11_POWER_MODE, std::uint32_t { 0 });
    } else if (auto configuration = card.query<NDIS_802_11_CONFIGURATION>(OID_802_11_CONFIGURATION)) {
        configuration->DSConfig = 0; // the site survey sends no channel
        (void)card.set(OID_802_11_CONFIGURATION, *configuration);
    }
    if (join.byBssid)
        (void)card.set(OID_802_11_BSSID, join.bssid);
    else
        (void)card.set(OID_802_11_SSID, ssidRecord(join.ssid));
    card.pass(2000);
    return card.isLinkUp();
}
