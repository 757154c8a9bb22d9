#include "services/linux/kernel/DriverInfo.h"

#include "posix/FileDescriptor.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace {

constexpr std::size_t spareStatistics = 1024;
constexpr std::uint32_t maxStatistics = 65'536;

// Both structures end with an array whose size the kernel was asked for before.
template <typename Head> std::vector<std::uint64_t> storageFor(std::size_t payloadBytes)
{
    return std::vector<std::uint64_t>((sizeof(Head) + payloadBytes) / sizeof(std::uint64_t) + 1);
}

std::uint8_t takeNumber(std::string_view& text)
{
    const std::size_t start = text.find_first_of("0123456789");
    if (start == std::string_view::npos)
        return 0;
    text.remove_prefix(start);
    unsigned number = 0;
    while (!text.empty() && text.front() >= '0' && text.front() <= '9') {
        number = std::min(number * 10 + static_cast<unsigned>(text.front() - '0'), 255U);
        text.remove_prefix(1);
    }
    return static_cast<std::uint8_t>(number);
}

} // namespace

DriverInfo::Request DriverInfo::requestTo(const std::string& interfaceName)
{
    auto socket = std::make_shared<FileDescriptor>(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    // A sandbox may allow netlink sockets only; any socket takes the request.
    if (!*socket)
        *socket = FileDescriptor(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, 0));
    return [interfaceName, socket](void* data) {
        ifreq call {};
        interfaceName.copy(call.ifr_name, sizeof(call.ifr_name) - 1);
        call.ifr_data = static_cast<char*>(data);
        return ::ioctl(socket->get(), SIOCETHTOOL, &call) == 0;
    };
}

MacAddress DriverInfo::permanentAddress() const
{
    MacAddress address {};
    auto storage = storageFor<ethtool_perm_addr>(address.size());
    auto* const permanent = reinterpret_cast<ethtool_perm_addr*>(storage.data());
    permanent->cmd = ETHTOOL_GPERMADDR;
    permanent->size = address.size();
    if (m_request(permanent) && permanent->size == address.size())
        std::memcpy(address.data(), permanent->data, address.size());
    return address;
}

std::string DriverInfo::firmwareVersion() const
{
    ethtool_drvinfo info {};
    info.cmd = ETHTOOL_GDRVINFO;
    if (!m_request(&info))
        return {};
    return { info.fw_version, ::strnlen(info.fw_version, sizeof(info.fw_version)) };
}

std::uint32_t DriverInfo::statisticCount() const
{
    ethtool_drvinfo info {};
    info.cmd = ETHTOOL_GDRVINFO;
    return m_request(&info) ? info.n_stats : 0;
}

std::optional<std::size_t> DriverInfo::indexOf(std::string_view name, std::uint32_t count) const
{
    auto storage = storageFor<ethtool_gstrings>((std::size_t { count } + spareStatistics) * ETH_GSTRING_LEN);
    auto* const names = reinterpret_cast<ethtool_gstrings*>(storage.data());
    names->cmd = ETHTOOL_GSTRINGS;
    names->string_set = ETH_SS_STATS;
    names->len = count;
    if (!m_request(names) || names->len != count)
        return std::nullopt;
    for (std::size_t i = 0; i < count; ++i) {
        const auto* const text = reinterpret_cast<const char*>(names->data) + i * ETH_GSTRING_LEN;
        if (name == std::string_view(text, ::strnlen(text, ETH_GSTRING_LEN)))
            return i;
    }
    return std::nullopt;
}

// The kernel writes as many as the driver has at that moment, whatever room it is told of. So the number is read right
// before, and there is room for more.
std::optional<std::uint64_t> DriverInfo::statistic(std::string_view name)
{
    const std::uint32_t count = statisticCount();
    if (count == 0 || count > maxStatistics)
        return std::nullopt;
    if (count != m_searchedCount || name != m_searchedName) {
        m_statisticIndex = indexOf(name, count);
        m_searchedCount = count;
        m_searchedName = name;
    }
    if (!m_statisticIndex)
        return std::nullopt;
    auto storage = storageFor<ethtool_stats>((std::size_t { count } + spareStatistics) * sizeof(std::uint64_t));
    auto* const stats = reinterpret_cast<ethtool_stats*>(storage.data());
    stats->cmd = ETHTOOL_GSTATS;
    stats->n_stats = count;
    if (!m_request(stats) || stats->n_stats != count)
        return std::nullopt;
    std::uint64_t value = 0;
    std::memcpy(
        &value, reinterpret_cast<const std::byte*>(stats->data) + *m_statisticIndex * sizeof(value), sizeof(value));
    return value;
}

FirmwareNumbers firmwareNumbers(std::string_view version)
{
    const std::uint8_t major = takeNumber(version);
    return { major, takeNumber(version) };
}
