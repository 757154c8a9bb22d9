#pragma once

#include "services/linux/service/LinuxCard.h"
#include "services/linux/wire/LinkMessage.h"
#include "services/linux/wire/Nl80211Values.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

// Who is told what happens to the wireless interfaces of the machine.
class WirelessListener {
public:
    virtual ~WirelessListener() = default;

    // Interfaces may have come, gone, or changed their type.
    virtual void interfacesChanged() = 0;
    // Any network interface was added or changed; name and flags as they are now.
    virtual void linkChanged(const LinkMessage& link) = 0;
    virtual void linkRemoved(std::uint32_t index) = 0;
    virtual void scanEnded(std::uint32_t index, const std::vector<std::uint32_t>& frequenciesMhz) = 0;
    virtual void scanAborted(std::uint32_t index) = 0;
    virtual void radiosChanged() = 0;
    virtual void regulatoryDomainChanged() = 0;
    // Events were lost: whatever they said has to be read again.
    virtual void eventsMissed() = 0;
};

// The wireless interfaces of the machine.
class WirelessSystem {
public:
    using InterfacesRead = std::function<void(std::optional<std::vector<InterfaceFacts>>)>; // std::nullopt on failure

    virtual ~WirelessSystem() = default;

    virtual void start(WirelessListener& listener) = 0;
    // Opens again what could not be opened before, or was closed since.
    virtual void repair() = 0;
    // Calls back from the event loop.
    virtual void readInterfaces(InterfacesRead done) = 0;
    [[nodiscard]] virtual bool exists(const InterfaceFacts& interface) const = 0;
    // How long the machine has been suspended since it was started.
    [[nodiscard]] virtual std::int64_t suspendedMs() const = 0;

    [[nodiscard]] virtual CardHardware hardwareOf(const InterfaceFacts& interface) = 0;
    // What a card of the interface works with; without clock and log.
    [[nodiscard]] virtual LinuxCard::Parts partsFor(const InterfaceFacts& interface, const LinuxCard::Log& log) = 0;
};
