#include "services/linux/service/CardWatch.h"

#include "services/linux/kernel/DriverInfo.h"
#include "services/linux/kernel/Nl80211Interface.h"
#include "services/linux/service/LinuxRadio.h"
#include "services/linux/supplicant/SupplicantChild.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <utility>

#include <linux/genetlink.h>
#include <linux/netlink.h>
#include <linux/nl80211.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

namespace {

constexpr const char* familyName = "nl80211";
// A clock that has jumped by less was only read at another moment.
constexpr std::int64_t minSuspendMs = 1000;

bool isStation(const InterfaceFacts& interface)
{
    return interface.type == NL80211_IFTYPE_STATION || interface.type == NL80211_IFTYPE_ADHOC;
}

std::int64_t milliseconds(clockid_t clock)
{
    timespec time {};
    (void)::clock_gettime(clock, &time);
    return static_cast<std::int64_t>(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
}

Attributes attributesOf(std::span<const std::byte> body)
{
    return body.size() < genericHeaderBytes ? Attributes {} : body.subspan(genericHeaderBytes);
}

} // namespace

CardWatch::CardWatch(WatchOptions options, OtherManagers& managers, LinuxCard::Clock clock, Log log)
    : m_options(std::move(options))
    , m_managers(managers)
    , m_clock(std::move(clock))
    , m_log(std::move(log))
    , m_switches([this](std::uint32_t) {
        for (const auto& [index, published] : m_published)
            published.card->radioChanged();
    })
    , m_requests(NETLINK_GENERIC)
    , m_wirelessEvents(
          [this](const NetlinkReply& message) { receiveWireless(message); }, [this] { everythingMissed(); })
    , m_linkEvents([this](const NetlinkReply& message) { receiveLink(message); }, [this] { readInterfaces(); })
{
    m_poll.setInterval(pollIntervalMs);
    QObject::connect(&m_poll, &QTimer::timeout, &m_poll, [this] { poll(); });
}

void CardWatch::start()
{
    if (const auto error = m_switches.open())
        m_log("radio switches cannot be read: " + error.message());
    if (const auto error = m_linkEvents.listen(NETLINK_ROUTE, { RTNLGRP_LINK }))
        m_log("interfaces cannot be watched: " + error.message());
    m_lastSuspendedMs = suspendedMs();
    m_poll.start();
    findFamily();
}

// The kernel has no nl80211 before the first wireless device.
void CardWatch::findFamily()
{
    if (m_family >= 0)
        return;
    m_family = GenericFamily::resolve(familyName).id;
    if (m_family < 0)
        return;
    listen();
    readInterfaces();
}

void CardWatch::listen()
{
    std::vector<int> groups;
    for (const char* const name :
        { NL80211_MULTICAST_GROUP_CONFIG, NL80211_MULTICAST_GROUP_SCAN, NL80211_MULTICAST_GROUP_REG }) {
        const int group = GenericFamily::group(familyName, name);
        if (group >= 0)
            groups.push_back(group);
    }
    if (const auto error = m_wirelessEvents.listen(NETLINK_GENERIC, groups))
        m_log("wireless events cannot be watched: " + error.message());
}

void CardWatch::readInterfaces()
{
    if (m_family < 0)
        return;
    m_requests.send(
        NetlinkMessage::generic(m_family, NL80211_CMD_GET_INTERFACE, NLM_F_DUMP), [this](const NetlinkResult& result) {
            if (result.error != 0)
                return; // the next poll tries again
            std::vector<InterfaceFacts> present;
            for (const auto& body : result.bodies) {
                if (auto interface = interfaceFacts(attributesOf(body)))
                    present.push_back(std::move(*interface));
            }
            compare(present);
        });
}

void CardWatch::compare(const std::vector<InterfaceFacts>& present)
{
    std::vector<std::uint32_t> gone;
    for (const auto& entry : m_published) {
        const bool isThere = std::any_of(present.begin(), present.end(), [&entry](const InterfaceFacts& interface) {
            return interface.index == entry.first && interface.name == entry.second.name && isStation(interface);
        });
        if (!isThere)
            gone.push_back(entry.first);
    }
    for (const std::uint32_t index : gone)
        withdraw(index);
    for (const InterfaceFacts& interface : present)
        consider(interface);
}

void CardWatch::consider(const InterfaceFacts& interface)
{
    const bool isWanted = m_options.interfaceName.empty() || interface.name == m_options.interfaceName;
    if (!isWanted || !isStation(interface) || m_published.contains(interface.index))
        return;
    m_managers.find(interface.name, [this, interface](const std::string& holder) {
        if (!holder.empty()) {
            // Once for each holder, although the question is asked again and again.
            if (std::exchange(m_holders[interface.name], holder) != holder)
                log(interface.name, "left alone: " + holder);
            return;
        }
        m_holders.erase(interface.name);
        // It may have gone while its managers were asked.
        const bool isStillThere = ::if_nametoindex(interface.name.c_str()) == interface.index;
        if (isStillThere && !m_published.contains(interface.index))
            publish(interface);
    });
}

void CardWatch::publish(const InterfaceFacts& interface)
{
    const std::string& name = interface.name;
    auto kernel = std::make_unique<Nl80211Interface>(m_family, interface.index, interface.wiphy, name);
    const auto firmware = firmwareNumbers(DriverInfo(name).firmwareVersion());
    const CardHardware hardware { DriverInfo(name).permanentAddress(), firmware.major, firmware.minor };
    const auto withdrawn = m_withdrawnMs.find(name);
    const bool isReturning = withdrawn != m_withdrawnMs.end() && m_clock() - withdrawn->second < returnMs;

    const auto logIt = [this, name](const std::string& text) { log(name, text); };
    Published published { name, interface.wiphy, nullptr, nullptr };
    published.card = std::make_unique<LinuxCard>(hardware, isReturning,
        LinuxCard::Parts { std::move(kernel), std::make_unique<SupplicantChild>(name, logIt),
            std::make_unique<LinuxRadio>(m_switches, name, logIt), m_clock, logIt });
    published.host = std::make_unique<ServiceHost>(
        [this, serve = published.card->handler()](const ServiceRequest& request, ServiceReply reply) {
            noticeResume(); // before the client asks for the event
            serve(request, std::move(reply));
        });
    if (const auto error = published.host->publish(m_options.root, ServiceHost::adapterClass, name, m_options.access)) {
        if (std::exchange(m_holders[name], error.message()) != error.message())
            log(name, "cannot be published in " + m_options.root + ": " + error.message());
        return;
    }
    LinuxCard& card = *published.card;
    m_published.emplace(interface.index, std::move(published));
    log(name, "published");
    card.start();
}

void CardWatch::withdraw(std::uint32_t index)
{
    auto found = m_published.extract(index);
    if (!found)
        return;
    found.mapped().host.reset();
    m_withdrawnMs[found.mapped().name] = m_clock();
    log(found.mapped().name, "withdrawn");
}

void CardWatch::receiveWireless(const NetlinkReply& message)
{
    if (message.type != m_family || message.body.size() < genericHeaderBytes)
        return;
    const auto command = std::to_integer<std::uint8_t>(message.body.front());
    switch (command) {
    case NL80211_CMD_NEW_SCAN_RESULTS:
    case NL80211_CMD_SCAN_ABORTED:
        scanMessage(command, attributesOf(message.body));
        break;
    case NL80211_CMD_NEW_INTERFACE:
    case NL80211_CMD_DEL_INTERFACE:
    case NL80211_CMD_SET_INTERFACE:
    case NL80211_CMD_NEW_WIPHY:
    case NL80211_CMD_DEL_WIPHY:
        readInterfaces();
        break;
    case NL80211_CMD_REG_CHANGE:
    case NL80211_CMD_WIPHY_REG_CHANGE:
        for (const auto& [index, published] : m_published)
            published.card->regulatoryDomainChanged();
        break;
    default:
        break;
    }
}

void CardWatch::scanMessage(std::uint8_t command, Attributes attributes)
{
    const auto index = interfaceIndex(attributes);
    const auto found = index ? m_published.find(*index) : m_published.end();
    if (found == m_published.end())
        return;
    if (command == NL80211_CMD_NEW_SCAN_RESULTS)
        found->second.card->scanEnded(scannedFrequencies(attributes));
    else
        found->second.card->scanAborted();
}

void CardWatch::receiveLink(const NetlinkReply& message)
{
    const auto link = linkMessage(message.body);
    if (!link || (message.type != RTM_NEWLINK && message.type != RTM_DELLINK))
        return;
    const auto found = m_published.find(link->index);
    const bool isKnown = found != m_published.end();
    if (message.type == RTM_DELLINK) {
        if (isKnown)
            withdraw(link->index);
        return;
    }
    findFamily();
    // The kernel also reports every change of the carrier.
    if (!isKnown || found->second.name != link->name)
        readInterfaces();
    else
        found->second.card->interfaceChanged(link->isUp);
}

void CardWatch::everythingMissed()
{
    m_log("the kernel had more to say than fits: reading everything anew");
    readInterfaces();
    for (const auto& [index, published] : m_published)
        published.card->eventsMissed();
}

// What no event tells: an interface that was released by its manager, a resumed machine.
void CardWatch::poll()
{
    findFamily();
    if (m_published.empty() || m_options.interfaceName.empty())
        readInterfaces();
    noticeResume();
}

void CardWatch::noticeResume()
{
    const std::int64_t suspended = suspendedMs();
    if (suspended - std::exchange(m_lastSuspendedMs, suspended) < minSuspendMs)
        return;
    m_log("the machine was suspended");
    for (const auto& [index, published] : m_published)
        published.card->resumed();
}

// How long the machine has been suspended since it was started: only one of the clocks runs meanwhile.
std::int64_t CardWatch::suspendedMs()
{
    return milliseconds(CLOCK_BOOTTIME) - milliseconds(CLOCK_MONOTONIC);
}

void CardWatch::log(const std::string& interfaceName, const std::string& text) const
{
    m_log(interfaceName + ": " + text);
}
