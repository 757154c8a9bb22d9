#pragma once

#include "services/linux/kernel/RadioSwitches.h"
#include "services/linux/service/LinuxCard.h"

#include <functional>
#include <string>

// The radio switch of an interface, found by its name. An interface without one is always on.
class LinuxRadio final : public InterfaceRadio {
public:
    using Log = std::function<void(const std::string&)>;

    LinuxRadio(RadioSwitches& switches, const std::string& interfaceName, Log log);

    [[nodiscard]] RadioPosition position() const override;
    [[nodiscard]] bool set(bool isOn) override;

private:
    RadioSwitches& m_switches;
    std::optional<std::uint32_t> m_index;
    Log m_log;
};
