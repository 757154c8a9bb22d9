#pragma once

#include "services/linux/kernel/NetlinkEvents.h"
#include "services/linux/kernel/NetlinkRequests.h"
#include "services/linux/kernel/RadioSwitches.h"
#include "services/linux/kernel/ThreadOwned.h"
#include "services/linux/service/WirelessSystem.h"

#include <functional>
#include <string>

// The machine's wireless interfaces through nl80211, route netlink and /dev/rfkill.
class LinuxSystem final : public WirelessSystem {
    Q_DISABLE_COPY_MOVE(LinuxSystem)

public:
    using Log = std::function<void(const std::string&)>;
    // The number of nl80211; negative while the kernel has not loaded it.
    using FindFamily = std::function<int()>;

    explicit LinuxSystem(Log log, FindFamily findFamily = resolveFamily);
    ~LinuxSystem() override = default;

    void start(WirelessListener& listener) override;
    void repair() override;
    void readInterfaces(InterfacesRead done) override;
    [[nodiscard]] bool exists(const InterfaceFacts& interface) const override;
    [[nodiscard]] std::int64_t suspendedMs() const override;
    [[nodiscard]] CardHardware hardwareOf(const InterfaceFacts& interface) override;
    [[nodiscard]] LinuxCard::Parts partsFor(const InterfaceFacts& interface, const LinuxCard::Log& log) override;

private:
    [[nodiscard]] static int resolveFamily();
    void findFamily();
    void familyFailed(int error);
    void listenToLinks();
    void listen();
    void receiveWireless(const NetlinkReply& message);
    void receiveLink(const NetlinkReply& message);
    void receiveScan(std::uint8_t command, Attributes attributes);

    Log m_log;
    FindFamily m_findFamily;
    WirelessListener* m_listener { nullptr };
    int m_family { -1 };
    RadioSwitches m_switches;
    ThreadOwned<NetlinkRequests> m_requests; // they wait while any driver is being opened
    NetlinkEvents m_wirelessEvents;
    NetlinkEvents m_linkEvents;
};
