#include "services/linux/card/JoinPlan.h"

#include "services/card/BssidEncoder.h"
#include "services/linux/card/WirelessMode.h"

#include <algorithm>

namespace {

using Candidates = std::vector<const ScanEntry*>;

bool contains(const std::vector<std::uint32_t>& frequencies, std::uint32_t frequency)
{
    return std::find(frequencies.begin(), frequencies.end(), frequency) != frequencies.end();
}

Candidates candidates(const CardState& state, const JoinRequest& request)
{
    if (!request.bssid)
        return request.ssid.empty() ? Candidates {} : state.networks.named(request.ssid);
    const ScanEntry* const entry = state.networks.find(*request.bssid);
    return entry != nullptr ? Candidates { entry } : Candidates {};
}

bool isAdHocEntry(const ScanEntry& entry)
{
    return (entry.capabilities & capabilityIbss) != 0;
}

bool isAdHoc(const CardSettings& settings, const Candidates& known)
{
    if (settings.infrastructureMode == Ndis802_11AutoUnknown)
        return !known.empty() && isAdHocEntry(*known.front());
    return settings.infrastructureMode == Ndis802_11IBSS;
}

// The ciphers that a network really has, whatever the client believes: it sees only the WPA element.
void addCiphers(std::vector<CipherSuite>& ciphers, const std::optional<SecurityElement>& element)
{
    if (!element || !element->acceptsPresharedKey())
        return;
    for (const CipherSuite cipher : element->pairwise) {
        if (std::find(ciphers.begin(), ciphers.end(), cipher) == ciphers.end())
            ciphers.push_back(cipher);
    }
}

// The cipher that was asked for, if the network has it or nothing is known of the network; else what it has.
std::vector<CipherSuite> pairwiseCiphers(std::int32_t encryptionStatus, const Candidates& known)
{
    const CipherSuite wanted = encryptionStatus == Ndis802_11Encryption2Enabled ? CipherSuite::Tkip : CipherSuite::Ccmp;
    std::vector<CipherSuite> offered;
    for (const ScanEntry* const entry : known) {
        addCiphers(offered, wpaElement(entry->elements));
        addCiphers(offered, rsnElement(entry->elements));
    }
    if (offered.empty())
        return { CipherSuite::Ccmp, CipherSuite::Tkip };
    if (std::find(offered.begin(), offered.end(), wanted) != offered.end())
        return { wanted };
    return offered;
}

bool needsFastTransition(const std::optional<SecurityElement>& element)
{
    return element && element->acceptsPresharedKey()
        && std::none_of(element->keyManagement.begin(), element->keyManagement.end(),
            [](KeyManagement suite) { return suite == KeyManagement::Psk || suite == KeyManagement::PskSha256; });
}

bool addWepKeys(NetworkBlock& block, const CardSettings& settings)
{
    block.security = BlockSecurity::Wep;
    block.sharedKeyAuthentication = settings.authenticationMode == Ndis802_11AuthModeShared;
    block.wepKeys = settings.wepKeys;
    const auto firstKey = std::find_if(
        settings.wepKeys.begin(), settings.wepKeys.end(), [](const WepKeyBytes& key) { return !key.empty(); });
    if (firstKey == settings.wepKeys.end())
        return false;
    block.transmitKeyIndex
        = settings.transmitKeyIndex.value_or(static_cast<std::size_t>(firstKey - settings.wepKeys.begin()));
    return true;
}

bool addSecurity(NetworkBlock& block, const CardState& state, const Candidates& known)
{
    const CardSettings& settings = state.settings;
    switch (settings.authenticationMode) {
    case Ndis802_11AuthModeOpen:
    case Ndis802_11AuthModeShared:
    case Ndis802_11AuthModeAutoSwitch:
        if (settings.encryptionStatus == Ndis802_11Encryption1Enabled)
            return addWepKeys(block, settings);
        return settings.encryptionStatus == Ndis802_11EncryptionDisabled;
    case Ndis802_11AuthModeWPAPSK:
        if (!settings.wpaKey || block.isAdHoc)
            return false;
        block.security = BlockSecurity::WpaPsk;
        block.presharedKey = *settings.wpaKey;
        block.pairwise = pairwiseCiphers(settings.encryptionStatus, known);
        block.needsFastTransition = std::any_of(known.begin(), known.end(),
            [](const ScanEntry* entry) { return needsFastTransition(rsnElement(entry->elements)); });
        return true;
    default:
        return false;
    }
}

// A name that the list does not have may be that of a hidden network.
Candidates hiddenNetworks(const CardState& state)
{
    return state.networks.named({});
}

void addFrequencies(NetworkBlock& block, const CardState& state, const Candidates& known)
{
    block.allowedMhz = state.allowedMhz();
    for (const ScanEntry* const entry : known) {
        if (contains(block.allowedMhz, entry->frequencyMhz) && !contains(block.scanMhz, entry->frequencyMhz))
            block.scanMhz.push_back(entry->frequencyMhz);
    }
    if (!block.isAdHoc)
        return;
    const std::uint32_t configured = state.settings.configuration.DSConfig / 1000;
    const bool isAllowed = block.allowedMhz.empty() || contains(block.allowedMhz, configured);
    block.adHocMhz = isAllowed ? configured : block.allowedMhz.front();
    // A cell that exists already decides the channel.
    if (!block.scanMhz.empty())
        block.adHocMhz = block.scanMhz.front();
    else
        block.scanMhz.push_back(block.adHocMhz);
}

} // namespace

std::optional<NetworkBlock> planJoin(const CardState& state, const JoinRequest& request)
{
    if (state.isUnsupportedAuthentication)
        return std::nullopt;
    const Candidates known = candidates(state, request);
    NetworkBlock block;
    block.ssid = request.ssid;
    block.bssid = request.bssid;
    block.isAdHoc = isAdHoc(state.settings, known);
    if (block.ssid.empty() && request.bssid && !known.empty())
        block.ssid = networkName(known.front()->elements);
    if (block.isAdHoc) {
        // Stations of an ad hoc network find each other by name; its address changes when cells merge.
        block.bssid.reset();
        if (block.ssid.empty())
            return std::nullopt;
    }
    // Every named network is also asked for by name, because it may be hidden.
    block.asksByName = !block.isAdHoc && !block.ssid.empty();
    block.isLegacyOnly = isLegacyOnly(state.settings);
    if (!addSecurity(block, state, known))
        return std::nullopt;
    const bool mayBeHidden = known.empty() && block.asksByName;
    addFrequencies(block, state, mayBeHidden ? hiddenNetworks(state) : known);
    return block;
}
