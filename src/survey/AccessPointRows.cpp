#include "survey/AccessPointRows.h"

#include "driver/BssidList.h"
#include "driver/MacAddressText.h"
#include "driver/VX7100Access.h"
#include "driver/records/ChannelTable.h"
#include "driver/records/DisplayNames.h"
#include "platform/AssertionHandler.h"
#include "platform/NetworkName.h"
#include "survey/WpaElement.h"

#include <cstddef>
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

// "WPA", "WPA-PSK" or "WPA-NONE"; the text as it is when the element names no known suite. Only the first
// pairwise suite is ever stepped over, so the count in the list itself is brought down to one for those who
// read it later.
QString authenticationText(BssidEntry& entry, const WpaElement& element, bool adHoc, const QString& otherwise)
{
    const std::uint16_t pairwiseSuites = pairwiseSuiteCount(entry, element) == 0 ? 0 : 1;
    setPairwiseSuiteCount(entry, element, pairwiseSuites);
    const auto suite = firstAuthenticationSuite(entry, element, pairwiseSuites);
    if (!suite)
        return otherwise;
    switch (*suite) {
    case 1:
        return QStringLiteral("WPA");
    case 0:
    case 2:
        return adHoc ? QStringLiteral("WPA-NONE") : QStringLiteral("WPA-PSK");
    default:
        return otherwise;
    }
}

AccessPoint accessPointRow(BssidEntry& entry, const WLAN_BSSID_EX& network, const QString& signal, std::int32_t channel)
{
    QString encryption = displayText(strAryEncryption[network.Privacy != 0 ? 0 : 1]);
    QString authentication = QStringLiteral("Unknown");
    if (const auto element = findWpaElement(entry)) {
        if (const char* const cipher = cipherText(*element))
            encryption = QLatin1String(cipher);
        authentication
            = authenticationText(entry, *element, network.InfrastructureMode == Ndis802_11IBSS, authentication);
    }
    // The name runs up to the first zero byte: its length field is not kept by all firmware, and a name of 32
    // bytes takes the bytes behind it along.
    const QString name = textFromBytes(entry.bytesUpToZero(offsetof(WLAN_BSSID_EX, Ssid.Ssid)));
    return AccessPoint::initWithSSID(name, macAddressText(network.MacAddress), signal, QString::number(channel),
        authentication, encryption, displayText(displayName(strAryNetworkType, network.InfrastructureMode)));
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
