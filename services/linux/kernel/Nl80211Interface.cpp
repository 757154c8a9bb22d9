#include "services/linux/kernel/Nl80211Interface.h"

#include <array>
#include <utility>

#include <linux/netlink.h>
#include <linux/nl80211.h>
#include <linux/rtnetlink.h>

namespace {

constexpr std::uint32_t thresholdOff = 0xFFFFFFFF;

Attributes attributesOf(const std::vector<std::byte>& body)
{
    return body.size() < genericHeaderBytes ? Attributes {} : Attributes(body).subspan(genericHeaderBytes);
}

// The kernel refuses a band that the device does not have.
void putBandRates(NetlinkMessage& message, int band, const std::optional<std::vector<std::uint8_t>>& rates,
    const WiphyFacts::NewerRates& newer)
{
    if (!rates)
        return;
    message.nest(band, [&rates, &newer](NetlinkMessage& nested) {
        // A band without any attribute allows all rates. An empty list or mask of the newer rates allows none of them.
        if (rates->empty())
            return;
        nested.put(NL80211_TXRATE_LEGACY, *rates);
        nested.put(NL80211_TXRATE_HT, std::span<const std::uint8_t> {});
        if (newer.hasVht)
            nested.put(NL80211_TXRATE_VHT, std::array<std::uint8_t, sizeof(nl80211_txrate_vht)> {});
        if (newer.hasHe)
            nested.put(NL80211_TXRATE_HE, std::array<std::uint8_t, sizeof(nl80211_txrate_he)> {});
    });
}

} // namespace

Nl80211Interface::Nl80211Interface(int family, std::uint32_t index, std::uint32_t wiphy, const std::string& name)
    : m_family(family)
    , m_index(index)
    , m_wiphy(wiphy)
    , m_driver(name)
    , m_requests(NETLINK_GENERIC)
    , m_routes(NETLINK_ROUTE)
{
}

NetlinkMessage Nl80211Interface::request(std::uint8_t command, int flags) const
{
    NetlinkMessage message = NetlinkMessage::generic(m_family, command, flags);
    message.put(NL80211_ATTR_IFINDEX, m_index);
    return message;
}

void Nl80211Interface::sendSet(NetlinkMessage message, Done done)
{
    m_requests.send(std::move(message), [done = std::move(done)](const NetlinkResult& result) { done(result.error); });
}

template <typename Value>
void Nl80211Interface::read(
    NetlinkMessage message, std::optional<Value> (*parse)(Attributes), Read<std::vector<Value>> done)
{
    m_requests.send(std::move(message), [parse, done = std::move(done)](const NetlinkResult& result) {
        if (result.error != 0) {
            done(std::nullopt);
            return;
        }
        std::vector<Value> values;
        for (const auto& body : result.bodies) {
            if (auto value = parse(attributesOf(body)))
                values.push_back(std::move(*value));
        }
        done(std::move(values));
    });
}

void Nl80211Interface::readWiphy(Read<WiphyFacts> done)
{
    NetlinkMessage message = NetlinkMessage::generic(m_family, NL80211_CMD_GET_WIPHY, NLM_F_DUMP);
    message.put(NL80211_ATTR_WIPHY, m_wiphy).putFlag(NL80211_ATTR_SPLIT_WIPHY_DUMP);
    m_requests.send(std::move(message), [wiphy = m_wiphy, done = std::move(done)](const NetlinkResult& result) {
        WiphyFacts facts;
        for (const auto& body : result.bodies) {
            if (wiphyIndex(attributesOf(body)) == wiphy)
                addWiphy(facts, attributesOf(body));
        }
        done(result.error == 0 ? std::optional(std::move(facts)) : std::nullopt);
    });
}

void Nl80211Interface::readScan(Read<std::vector<ScanEntry>> done)
{
    read<ScanEntry>(request(NL80211_CMD_GET_SCAN, NLM_F_DUMP), scanEntry, std::move(done));
}

void Nl80211Interface::readStations(const std::optional<MacAddress>& accessPoint, Read<std::vector<StationInfo>> done)
{
    NetlinkMessage message = request(NL80211_CMD_GET_STATION, accessPoint ? 0 : NLM_F_DUMP);
    if (accessPoint)
        message.put(NL80211_ATTR_MAC, *accessPoint);
    read<StationInfo>(std::move(message), stationInfo, std::move(done));
}

void Nl80211Interface::readSurvey(Read<std::vector<SurveyFacts>> done)
{
    read<SurveyFacts>(request(NL80211_CMD_GET_SURVEY, NLM_F_DUMP), surveyFacts, std::move(done));
}

void Nl80211Interface::readLink(Read<LinkMessage> done)
{
    m_routes.send(NetlinkMessage::link(RTM_GETLINK, 0, m_index), [done = std::move(done)](const NetlinkResult& result) {
        done(result.error == 0 && !result.bodies.empty() ? linkMessage(result.bodies.front()) : std::nullopt);
    });
}

void Nl80211Interface::startScan(const StartScan& scan, Done done)
{
    NetlinkMessage message = request(NL80211_CMD_TRIGGER_SCAN);
    message.nest(NL80211_ATTR_SCAN_FREQUENCIES, [&scan](NetlinkMessage& list) {
        int i = 1;
        for (const std::uint32_t frequency : scan.frequenciesMhz)
            list.put(i++, frequency);
    });
    // The empty name asks all networks to answer; without any name the scan only listens.
    if (!scan.isListening)
        message.nest(NL80211_ATTR_SCAN_SSIDS, [&scan](NetlinkMessage& list) {
            list.put(1, std::span<const std::uint8_t> {});
            if (!scan.ssid.empty())
                list.put(2, scan.ssid);
        });
    sendSet(std::move(message), std::move(done));
}

void Nl80211Interface::abortScan()
{
    // Fails if the scan has ended meanwhile.
    sendSet(request(NL80211_CMD_ABORT_SCAN), [](int) {});
}

void Nl80211Interface::bringUp(Done done)
{
    m_routes.send(
        NetlinkMessage::linkUp(m_index), [done = std::move(done)](const NetlinkResult& result) { done(result.error); });
}

void Nl80211Interface::set(const SetRtsThreshold& threshold, Done done)
{
    sendSet(std::move(request(NL80211_CMD_SET_WIPHY)
                          .put(NL80211_ATTR_WIPHY_RTS_THRESHOLD, threshold.bytes.value_or(thresholdOff))),
        std::move(done));
}

void Nl80211Interface::set(const SetFragmentationThreshold& threshold, Done done)
{
    sendSet(std::move(request(NL80211_CMD_SET_WIPHY)
                          .put(NL80211_ATTR_WIPHY_FRAG_THRESHOLD, threshold.bytes.value_or(thresholdOff))),
        std::move(done));
}

void Nl80211Interface::set(const SetRates& rates, Done done)
{
    NetlinkMessage message = request(NL80211_CMD_SET_TX_BITRATE_MASK);
    message.nest(NL80211_ATTR_TX_RATES, [&rates](NetlinkMessage& bands) {
        putBandRates(bands, NL80211_BAND_2GHZ, rates.twoGhz, rates.twoGhzNewer);
        putBandRates(bands, NL80211_BAND_5GHZ, rates.fiveGhz, rates.fiveGhzNewer);
    });
    sendSet(std::move(message), std::move(done));
}

void Nl80211Interface::set(const SetPowerSave& powerSave, Done done)
{
    const std::uint32_t state = powerSave.isOn ? NL80211_PS_ENABLED : NL80211_PS_DISABLED;
    sendSet(std::move(request(NL80211_CMD_SET_POWER_SAVE).put(NL80211_ATTR_PS_STATE, state)), std::move(done));
}

void Nl80211Interface::set(const SetTransmitPower& power, Done done)
{
    NetlinkMessage message = request(NL80211_CMD_SET_WIPHY);
    message.put(NL80211_ATTR_WIPHY_TX_POWER_SETTING,
        power.mbm ? std::uint32_t { NL80211_TX_POWER_LIMITED } : std::uint32_t { NL80211_TX_POWER_AUTOMATIC });
    if (power.mbm)
        message.put(NL80211_ATTR_WIPHY_TX_POWER_LEVEL, static_cast<std::uint32_t>(*power.mbm));
    sendSet(std::move(message), std::move(done));
}
