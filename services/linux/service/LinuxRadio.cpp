#include "services/linux/service/LinuxRadio.h"

#include <utility>

LinuxRadio::LinuxRadio(RadioSwitches& switches, const std::string& interfaceName, Log log)
    : m_switches(switches)
    , m_index(RadioSwitches::indexOf(interfaceName))
    , m_log(std::move(log))
{
}

RadioPosition LinuxRadio::position() const
{
    const auto position = m_index ? m_switches.position(*m_index) : std::nullopt;
    return position.value_or(RadioPosition {});
}

bool LinuxRadio::set(bool isOn)
{
    if (!m_index) {
        if (!isOn)
            m_log("the radio has no switch");
        return isOn;
    }
    const auto error = m_switches.setSoftBlock(*m_index, !isOn);
    if (error)
        m_log("the radio cannot be switched: " + error.message());
    return !error;
}
