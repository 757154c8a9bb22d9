#include "survey/AccessPointRows.h"

#include "driver/BssidList.h"
#include "driver/ListedName.h"
#include "driver/MacAddressText.h"
#include "driver/VX7100Access.h"
#include "driver/records/ChannelTable.h"
#include "platform/AssertionHandler.h"
#include "survey/DisplayNames.h"
#include "survey/NetworkSecurity.h"
#include "survey/WpaElement.h"

#include <optional>

namespace {

QString displayText(std::string_view text)
{
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

std::optional<std::int32_t> channelOf(const WLAN_BSSID_EX& network, AssertionHandler& assertions)
{
    const std::int32_t channel = channelOfFrequency(network.Configuration.DSConfig);
    if (channel != -1)
        return channel;
    const bool goOn = assertions.handleFailureInMethod(
        "RescanTimeFunc", "SiteSurveyPageController", "SiteSurveyPageController", 978, invalidParameter);
    return goOn ? std::optional(ChannelFreqTable.front().channel) : std::nullopt;
}

// Rewrites the pairwise suite count in the list buffer, also for later readers: at most one suite is skipped.
WpaClass rewriteAndClassify(BssidEntry& entry)
{
    const auto element = findWpaElement(entry);
    if (!element)
        return WpaClass::NoWpa;
    const std::uint16_t pairwiseSuites = pairwiseSuiteCount(entry, *element) == 0 ? 0 : 1;
    setPairwiseSuiteCount(entry, *element, pairwiseSuites);
    return wpaClassOf(entry, *element, pairwiseSuites);
}

AccessPoint accessPointRow(BssidEntry& entry, const WLAN_BSSID_EX& network, const QString& signal, std::int32_t channel)
{
    const QString authentication = QLatin1String(authenticationText(rewriteAndClassify(entry)));
    return AccessPoint::initWithSSID(listedName(entry).text(), macAddressText(network.MacAddress), signal,
        QString::number(channel), authentication, QLatin1String(encryptionTextOf(entry)),
        displayText(displayName(strAryNetworkType, network.InfrastructureMode)));
}

} // namespace

AccessPointRowsResult accessPointRows(std::span<std::byte> bssidList, AssertionHandler& assertions)
{
    AccessPointRowsResult result;
    BssidListWalk walk(bssidList);
    while (auto entry = walk.next()) {
        const WLAN_BSSID_EX network = entry->fixedPart();
        const QString signal = QString::number(VX7100Access::ConvertRssiToSignalQuality(network.Rssi));
        const auto channel = channelOf(network, assertions);
        if (!channel) {
            result.complete = false;
            break;
        }
        result.rows.push_back(accessPointRow(*entry, network, signal, *channel));
    }
    return result;
}
