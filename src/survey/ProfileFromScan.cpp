#include "survey/ProfileFromScan.h"

#include "driver/ListedName.h"
#include "driver/records/ChannelTable.h"
#include "platform/AssertionHandler.h"
#include "survey/NetworkSecurity.h"

#include <string_view>

namespace {

void proposeSecurity(ProfileProposal& proposal, const BssidEntry& entry, const WLAN_BSSID_EX& network)
{
    const WpaClass wpaClass = IsItemWPA(entry);
    if (!usesPresharedKey(wpaClass)) {
        proposal.AuthenMode = Ndis802_11AuthModeOpen;
        proposal.EcrypStatus = network.Privacy != 0 ? Ndis802_11Encryption1Enabled : Ndis802_11EncryptionDisabled;
        return;
    }
    proposal.AuthenMode = wpaClass == WpaClass::WpaNone ? Ndis802_11AuthModeWPANone : Ndis802_11AuthModeWPAPSK;
    proposal.EcrypStatus = std::string_view(encryptionTextOf(entry)) == "TKIP" ? Ndis802_11Encryption2Enabled
                                                                               : Ndis802_11Encryption3Enabled;
}

} // namespace

std::optional<ProfileProposal> profileProposal(const BssidEntry& entry, AssertionHandler& assertions)
{
    const WLAN_BSSID_EX network = entry.fixedPart();
    ProfileProposal proposal;
    proposal.SSID = listedName(entry);
    proposal.BSSID = network.MacAddress;
    proposal.Networktype = network.InfrastructureMode;
    proposal.Channel = channelOfFrequency(network.Configuration.DSConfig);
    if (proposal.Channel == -1) {
        const bool goOn = assertions.handleFailureInMethod(
            "OnAddProfile", "SiteSurveyPageController", "SiteSurveyPageController", 1148, invalidParameter);
        if (!goOn)
            return std::nullopt;
        proposal.Channel = ChannelFreqTable.front().channel;
    }
    proposeSecurity(proposal, entry, network);
    return proposal;
}
