#include "services/simulator/card/JoinRules.h"

#include "driver/records/ChannelTable.h"

#include <openssl/evp.h>

#include <algorithm>

namespace {

constexpr int pbkdf2Rounds = 4096;
constexpr std::int32_t createdNetworkSignalDbm = -50;

std::int32_t encryptionOf(Cipher cipher)
{
    return cipher == Cipher::Aes ? Ndis802_11Encryption3Enabled : Ndis802_11Encryption2Enabled;
}

bool modeFits(std::int32_t mode, const ScenarioNetwork& network)
{
    if (mode == Ndis802_11AutoUnknown)
        return true;
    return mode == (network.adHoc ? Ndis802_11IBSS : Ndis802_11Infrastructure);
}

bool openAuthentication(std::int32_t mode)
{
    return mode == Ndis802_11AuthModeOpen || mode == Ndis802_11AuthModeAutoSwitch;
}

bool wepKeyFits(const CardSettings& settings, const ScenarioNetwork& network, std::size_t index)
{
    const std::string& wanted = network.wepKeys[index];
    const WepKeyBytes& held = settings.wepKeys[index];
    return !wanted.empty()
        && std::equal(wanted.begin(), wanted.end(), held.begin(), held.end(),
            [](char wantedByte, std::uint8_t heldByte) { return static_cast<std::uint8_t>(wantedByte) == heldByte; });
}

// Each side must be able to decrypt what the other sends: the card's transmit key must equal the network's key of the
// same index, and the card must have the network's transmit key.
bool wepFits(const CardSettings& settings, const ScenarioNetwork& network)
{
    const std::int32_t wantedAuthentication
        = network.sharedKeyAuthentication ? Ndis802_11AuthModeShared : Ndis802_11AuthModeOpen;
    if (settings.authenticationMode != wantedAuthentication
        && settings.authenticationMode != Ndis802_11AuthModeAutoSwitch)
        return false;
    return settings.encryptionStatus == Ndis802_11Encryption1Enabled && settings.transmitKeyIndex
        && wepKeyFits(settings, network, *settings.transmitKeyIndex)
        && wepKeyFits(settings, network, static_cast<std::size_t>(network.transmitKeyIndex));
}

bool wpaFits(const CardSettings& settings, const ScenarioNetwork& network, std::int32_t authentication,
    const std::optional<PresharedKey>& held)
{
    return settings.authenticationMode == authentication && settings.encryptionStatus == encryptionOf(network.cipher)
        && held && held == expectedPresharedKey(network);
}

} // namespace

std::optional<PresharedKey> expectedPresharedKey(const ScenarioNetwork& network)
{
    if (network.security != Security::WpaPsk && network.security != Security::WpaNone)
        return std::nullopt;
    if (network.presharedKey)
        return network.presharedKey;
    PresharedKey key {};
    const auto* salt = reinterpret_cast<const unsigned char*>(network.ssid.data());
    if (PKCS5_PBKDF2_HMAC(network.passphrase.data(), static_cast<int>(network.passphrase.size()), salt,
            static_cast<int>(network.ssid.size()), pbkdf2Rounds, EVP_sha1(), static_cast<int>(key.size()), key.data())
        != 1)
        return std::nullopt;
    return key;
}

bool settingsFit(const CardSettings& settings, const ScenarioNetwork& network)
{
    if (!modeFits(settings.infrastructureMode, network))
        return false;
    switch (network.security) {
    case Security::Open:
        return openAuthentication(settings.authenticationMode)
            && settings.encryptionStatus == Ndis802_11EncryptionDisabled;
    case Security::Wep:
        return wepFits(settings, network);
    case Security::WpaPsk:
        return wpaFits(settings, network, Ndis802_11AuthModeWPAPSK, settings.wpaKey);
    case Security::WpaNone:
        return wpaFits(settings, network, Ndis802_11AuthModeWPANone, settings.adHocWpaKey);
    case Security::WpaEnterprise:
        return false; // 802.1X is not simulated
    }
    return false;
}

std::optional<ScenarioNetwork> createdAdHocNetwork(const CardSettings& settings)
{
    if (settings.infrastructureMode != Ndis802_11IBSS)
        return std::nullopt;
    ScenarioNetwork network;
    network.adHoc = true;
    network.channel = channelOfFrequency(settings.configuration.DSConfig);
    network.signalDbm = createdNetworkSignalDbm;
    if (settings.encryptionStatus == Ndis802_11Encryption1Enabled) {
        if (!settings.transmitKeyIndex)
            return std::nullopt;
        network.security = Security::Wep;
        network.transmitKeyIndex = static_cast<std::int32_t>(*settings.transmitKeyIndex);
        network.sharedKeyAuthentication = settings.authenticationMode == Ndis802_11AuthModeShared;
        for (std::size_t i = 0; i < network.wepKeys.size(); ++i)
            network.wepKeys[i].assign(settings.wepKeys[i].begin(), settings.wepKeys[i].end());
    } else if (settings.encryptionStatus != Ndis802_11EncryptionDisabled) {
        network.security = Security::WpaNone;
        network.cipher = settings.encryptionStatus == Ndis802_11Encryption3Enabled ? Cipher::Aes : Cipher::Tkip;
        network.presharedKey = settings.adHocWpaKey;
    }
    // The card must be able to join the network it creates. This rejects combinations such as WPA-None without a key.
    if (!settingsFit(settings, network))
        return std::nullopt;
    return network;
}
