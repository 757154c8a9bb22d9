#pragma once

#include "services/host/ServiceHost.h"
#include "services/linux/service/OtherManagers.h"
#include "services/linux/service/WirelessSystem.h"

#include <QTimer>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

struct WatchOptions {
    std::string root; // of the registry
    std::string interfaceName; // empty: every wireless interface
    ServiceAccess access;
};

// Publishes one service for each wireless interface while it exists, under the interface's name. Leaves interfaces
// alone that another program manages, until that program has released them.
class CardWatch final : private WirelessListener {
    Q_DISABLE_COPY_MOVE(CardWatch)

public:
    using Log = std::function<void(const std::string&)>;
    static constexpr int pollIntervalMs = 10'000;
    // A manager may learn of a new interface later than we do. So long must it not have known the interface.
    static constexpr std::int64_t settlingMs = 3000;
    // How long an interface may have been away for its return to be an event for the client.
    static constexpr std::int64_t returnMs = 60'000;

    CardWatch(WatchOptions options, WirelessSystem& system, OtherManagers& managers, LinuxCard::Clock clock, Log log);
    ~CardWatch() override = default;

    void start();
    // For what no event tells. Called every pollIntervalMs.
    void poll();

private:
    struct Published {
        std::string name;
        std::unique_ptr<LinuxCard> card;
        std::unique_ptr<ServiceHost> host; // once the card is prepared
    };

    void interfacesChanged() override { readInterfaces(); }
    void linkChanged(const LinkMessage& link) override;
    void linkRemoved(std::uint32_t index) override { withdraw(index); }
    void scanEnded(std::uint32_t index, const std::vector<std::uint32_t>& frequenciesMhz) override;
    void scanAborted(std::uint32_t index) override;
    void radiosChanged() override;
    void regulatoryDomainChanged() override;
    void eventsMissed() override;

    void readInterfaces();
    void compare(const std::vector<InterfaceFacts>& present);
    void consider(const InterfaceFacts& interface);
    void askManagers(const InterfaceFacts& interface);
    [[nodiscard]] bool isFree(const InterfaceFacts& interface, const ManagerFinding& finding);
    void leaveAlone(const InterfaceFacts& interface, const std::string& why);
    void publish(const InterfaceFacts& interface);
    void openService(std::uint32_t index);
    void withdraw(std::uint32_t index);
    [[nodiscard]] bool isReturning(const InterfaceFacts& interface);
    [[nodiscard]] LinuxCard* cardOf(std::uint32_t index);
    void noticeResume();
    void log(const std::string& interfaceName, const std::string& text) const;

    WatchOptions m_options;
    WirelessSystem& m_system;
    OtherManagers& m_managers;
    LinuxCard::Clock m_clock;
    Log m_log;
    std::map<std::uint32_t, Published> m_published; // by interface index
    // The client may not notice that one of these was away, or that the service was: its card raises the event flag.
    std::map<std::string, std::int64_t> m_withdrawnMs; // by name
    std::map<std::uint32_t, std::int64_t> m_withdrawnIndexMs; // by index, which survives a new name
    std::optional<std::set<std::uint32_t>> m_presentAtStart; // not yet published
    std::map<std::string, std::string> m_holders; // as last logged
    std::map<std::uint32_t, std::int64_t> m_unknownSinceMs; // by index: to every manager that runs
    QTimer m_poll;
    QTimer m_settling;
    std::int64_t m_lastSuspendedMs { 0 };
};
