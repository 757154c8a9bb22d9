#pragma once

#include "posix/FileDescriptor.h"
#include "services/linux/kernel/RadioPosition.h"

#include <QSocketNotifier>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <system_error>

// The radio switches of the machine (/dev/rfkill).
class RadioSwitches {
    Q_DISABLE_COPY_MOVE(RadioSwitches)

public:
    using Changed = std::function<void(std::uint32_t index)>;

    explicit RadioSwitches(Changed changed)
        : m_changed(std::move(changed))
    {
    }
    ~RadioSwitches() = default;

    // Without the right to write, positions are followed but not set.
    [[nodiscard]] std::error_code open(const std::string& device = "/dev/rfkill");

    [[nodiscard]] std::optional<RadioPosition> position(std::uint32_t index) const;
    [[nodiscard]] std::error_code setSoftBlock(std::uint32_t index, bool isBlocked);

    // The switch of an interface, by name; std::nullopt if its device has none.
    [[nodiscard]] static std::optional<std::uint32_t> indexOf(const std::string& interfaceName);

private:
    void read();

    Changed m_changed;
    FileDescriptor m_device;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::map<std::uint32_t, RadioPosition> m_positions;
};
