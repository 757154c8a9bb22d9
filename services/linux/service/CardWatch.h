#pragma once

#include "services/host/ServiceHost.h"
#include "services/linux/kernel/NetlinkEvents.h"
#include "services/linux/kernel/NetlinkRequests.h"
#include "services/linux/kernel/RadioSwitches.h"
#include "services/linux/service/LinuxCard.h"
#include "services/linux/service/OtherManagers.h"

#include <QTimer>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

struct WatchOptions {
    std::string root; // of the registry
    std::string interfaceName; // empty: every wireless interface
    ServiceAccess access;
};

// Publishes one service for each wireless interface while it exists, under the interface's name. Leaves interfaces
// alone that another program manages, until that program has released them.
class CardWatch {
    Q_DISABLE_COPY_MOVE(CardWatch)

public:
    using Log = std::function<void(const std::string&)>;
    static constexpr int pollIntervalMs = 10'000;
    // How long an interface may have been away for its return to be an event for the client.
    static constexpr std::int64_t returnMs = 60'000;

    CardWatch(WatchOptions options, OtherManagers& managers, LinuxCard::Clock clock, Log log);
    ~CardWatch() = default;

    void start();

private:
    struct Published {
        std::string name;
        std::uint32_t wiphy { 0 };
        std::unique_ptr<LinuxCard> card;
        std::unique_ptr<ServiceHost> host;
    };

    void findFamily();
    void listen();
    void readInterfaces();
    void compare(const std::vector<InterfaceFacts>& present);
    void consider(const InterfaceFacts& interface);
    void publish(const InterfaceFacts& interface);
    void withdraw(std::uint32_t index);
    void receiveWireless(const NetlinkReply& message);
    void receiveLink(const NetlinkReply& message);
    void scanMessage(std::uint8_t command, Attributes attributes);
    void everythingMissed();
    void poll();
    void noticeResume();
    [[nodiscard]] static std::int64_t suspendedMs();
    void log(const std::string& interfaceName, const std::string& text) const;

    WatchOptions m_options;
    OtherManagers& m_managers;
    LinuxCard::Clock m_clock;
    Log m_log;
    int m_family { -1 };
    RadioSwitches m_switches;
    NetlinkRequests m_requests;
    NetlinkEvents m_wirelessEvents;
    NetlinkEvents m_linkEvents;
    std::map<std::uint32_t, Published> m_published; // by interface index
    std::map<std::string, std::int64_t> m_withdrawnMs; // by name
    std::map<std::string, std::string> m_holders; // as last logged
    QTimer m_poll;
    std::int64_t m_lastSuspendedMs { 0 };
};
