#include "services/linux/kernel/RadioSwitches.h"

#include "posix/SystemError.h"

#include <charconv>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <linux/rfkill.h>
#include <unistd.h>

namespace {

// Newer kernels append fields; this is what every one has.
constexpr std::size_t eventBytes = RFKILL_EVENT_SIZE_V1;

} // namespace

std::error_code RadioSwitches::open(const std::string& device)
{
    m_device = FileDescriptor(::open(device.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    if (!m_device)
        m_device = FileDescriptor(::open(device.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!m_device)
        return lastSystemError();
    m_notifier = std::make_unique<QSocketNotifier>(m_device.get(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { read(); });
    // The device begins with one event for each switch.
    read();
    return {};
}

void RadioSwitches::read()
{
    rfkill_event event {};
    ssize_t size = 0;
    while ((size = ::read(m_device.get(), &event, sizeof(event))) >= static_cast<ssize_t>(eventBytes)) {
        if (event.op == RFKILL_OP_DEL)
            m_positions.erase(event.idx);
        else
            m_positions[event.idx] = { event.soft != 0, event.hard != 0 };
        m_changed(event.idx);
    }
    if (size == 0 || (size < 0 && errno != EAGAIN && errno != EINTR))
        m_notifier->setEnabled(false);
}

std::optional<RadioPosition> RadioSwitches::position(std::uint32_t index) const
{
    const auto found = m_positions.find(index);
    return found == m_positions.end() ? std::nullopt : std::optional(found->second);
}

std::error_code RadioSwitches::setSoftBlock(std::uint32_t index, bool isBlocked)
{
    rfkill_event event {};
    event.idx = index;
    event.type = RFKILL_TYPE_WLAN;
    event.op = RFKILL_OP_CHANGE;
    event.soft = isBlocked ? 1 : 0;
    return ::write(m_device.get(), &event, eventBytes) < 0 ? lastSystemError() : std::error_code();
}

std::optional<std::uint32_t> RadioSwitches::indexOf(const std::string& interfaceName)
{
    constexpr std::string_view prefix = "rfkill";
    std::error_code error;
    const std::filesystem::path device = "/sys/class/net/" + interfaceName + "/phy80211";
    for (const auto& entry : std::filesystem::directory_iterator(device, error)) {
        const std::string name = entry.path().filename().string();
        std::uint32_t index = 0;
        if (!name.starts_with(prefix))
            continue;
        const auto* const digits = name.data() + prefix.size();
        if (std::from_chars(digits, name.data() + name.size(), index).ec == std::errc {})
            return index;
    }
    return std::nullopt;
}
