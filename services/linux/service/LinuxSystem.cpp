#include "services/linux/service/LinuxSystem.h"

#include "services/linux/kernel/DriverInfo.h"
#include "services/linux/kernel/Nl80211Interface.h"
#include "services/linux/kernel/ThreadedKernel.h"
#include "services/linux/service/LinuxRadio.h"
#include "services/linux/supplicant/SupplicantChild.h"

#include <cerrno>
#include <ctime>
#include <utility>

#include <linux/genetlink.h>
#include <linux/netlink.h>
#include <linux/nl80211.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

namespace {

constexpr const char* familyName = "nl80211";

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

LinuxSystem::LinuxSystem(Log log, FindFamily findFamily)
    : m_log(std::move(log))
    , m_findFamily(std::move(findFamily))
    , m_switches([this](std::uint32_t) { m_listener->radiosChanged(); })
    , m_requests([] { return std::make_unique<NetlinkRequests>(NETLINK_GENERIC); })
    , m_wirelessEvents([this](const NetlinkReply& message) { receiveWireless(message); },
          [this] {
              m_log("the kernel had more to say than fits: reading everything anew");
              m_listener->eventsMissed();
          })
    , m_linkEvents(
          [this](const NetlinkReply& message) { receiveLink(message); }, [this] { m_listener->interfacesChanged(); })
{
}

void LinuxSystem::start(WirelessListener& listener)
{
    m_listener = &listener;
    if (const auto error = m_switches.open())
        m_log("radio switches cannot be read: " + error.message());
    listenToLinks();
    findFamily();
}

void LinuxSystem::repair()
{
    if (!m_linkEvents.isListening())
        listenToLinks();
    if (m_family >= 0 && !m_wirelessEvents.isListening())
        listen();
    findFamily();
}

void LinuxSystem::listenToLinks()
{
    if (const auto error = m_linkEvents.listen(NETLINK_ROUTE, { RTNLGRP_LINK }))
        m_log("interfaces cannot be watched: " + error.message());
}

int LinuxSystem::resolveFamily()
{
    return GenericFamily::resolve(familyName).id;
}

// The kernel has no nl80211 before the first wireless device.
void LinuxSystem::findFamily()
{
    if (m_family >= 0)
        return;
    m_family = m_findFamily();
    if (m_family < 0)
        return;
    listen();
    m_listener->interfacesChanged();
}

// A driver that was unloaded may have taken nl80211 with it. When it is loaded again, nl80211 has another number, and its
// groups have lost their members.
void LinuxSystem::familyFailed(int error)
{
    if (error != ENOENT)
        return;
    const int lost = std::exchange(m_family, m_findFamily());
    if (m_family < 0)
        return;
    listen();
    if (m_family != lost) // otherwise the next poll asks again
        m_listener->interfacesChanged();
}

void LinuxSystem::listen()
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

void LinuxSystem::readInterfaces(InterfacesRead done)
{
    if (m_family < 0)
        return;
    const std::function<void(NetlinkResult)> answered = [this, done = std::move(done)](const NetlinkResult& result) {
        if (result.error != 0) {
            done(std::nullopt);
            familyFailed(result.error);
            return;
        }
        std::vector<InterfaceFacts> present;
        for (const auto& body : result.bodies) {
            if (auto interface = interfaceFacts(attributesOf(body)))
                present.push_back(std::move(*interface));
        }
        done(std::move(present));
    };
    m_requests.call([family = m_family, answer = m_requests.fromMainThread(answered)](NetlinkRequests& requests) {
        requests.send(NetlinkMessage::generic(family, NL80211_CMD_GET_INTERFACE, NLM_F_DUMP), answer);
    });
}

bool LinuxSystem::exists(const InterfaceFacts& interface) const
{
    return ::if_nametoindex(interface.name.c_str()) == interface.index;
}

// Only one of the clocks runs while the machine is suspended.
std::int64_t LinuxSystem::suspendedMs() const
{
    return milliseconds(CLOCK_BOOTTIME) - milliseconds(CLOCK_MONOTONIC);
}

CardHardware LinuxSystem::hardwareOf(const InterfaceFacts& interface)
{
    const auto firmware = firmwareNumbers(DriverInfo(interface.name).firmwareVersion());
    return { DriverInfo(interface.name).permanentAddress(), firmware.major, firmware.minor };
}

LinuxCard::Parts LinuxSystem::partsFor(const InterfaceFacts& interface, const LinuxCard::Log& log)
{
    const auto makeKernel = [family = m_family, interface]() -> std::unique_ptr<InterfaceKernel> {
        return std::make_unique<Nl80211Interface>(family, interface.index, interface.wiphy, interface.name);
    };
    return { std::make_unique<ThreadedKernel>(makeKernel), std::make_unique<SupplicantChild>(interface.name, log),
        std::make_unique<LinuxRadio>(m_switches, interface.name, log), nullptr, nullptr };
}

void LinuxSystem::receiveWireless(const NetlinkReply& message)
{
    if (message.type != m_family || message.body.size() < genericHeaderBytes)
        return;
    const auto command = std::to_integer<std::uint8_t>(message.body.front());
    switch (command) {
    case NL80211_CMD_NEW_SCAN_RESULTS:
    case NL80211_CMD_SCAN_ABORTED:
        receiveScan(command, attributesOf(message.body));
        break;
    case NL80211_CMD_NEW_INTERFACE:
    case NL80211_CMD_DEL_INTERFACE:
    case NL80211_CMD_SET_INTERFACE:
    case NL80211_CMD_NEW_WIPHY:
    case NL80211_CMD_DEL_WIPHY:
        m_listener->interfacesChanged();
        break;
    case NL80211_CMD_REG_CHANGE:
    case NL80211_CMD_WIPHY_REG_CHANGE:
        m_listener->regulatoryDomainChanged();
        break;
    default:
        break;
    }
}

void LinuxSystem::receiveScan(std::uint8_t command, Attributes attributes)
{
    const auto index = interfaceIndex(attributes);
    if (!index)
        return;
    if (command == NL80211_CMD_NEW_SCAN_RESULTS)
        m_listener->scanEnded(*index, scannedFrequencies(attributes));
    else
        m_listener->scanAborted(*index);
}

void LinuxSystem::receiveLink(const NetlinkReply& message)
{
    const auto link = linkMessage(message.body);
    if (!link || (message.type != RTM_NEWLINK && message.type != RTM_DELLINK))
        return;
    if (message.type == RTM_DELLINK) {
        m_listener->linkRemoved(link->index);
        return;
    }
    findFamily();
    m_listener->linkChanged(*link);
}
