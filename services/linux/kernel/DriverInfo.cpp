#include "services/linux/kernel/DriverInfo.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace {

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

DriverInfo::DriverInfo(std::string interfaceName)
    : m_interfaceName(std::move(interfaceName))
    , m_socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0))
{
    // A sandbox may allow netlink sockets only; any socket takes the request.
    if (!m_socket)
        m_socket = FileDescriptor(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, 0));
}

bool DriverInfo::request(void* data) const
{
    ifreq call {};
    m_interfaceName.copy(call.ifr_name, sizeof(call.ifr_name) - 1);
    call.ifr_data = static_cast<char*>(data);
    return ::ioctl(m_socket.get(), SIOCETHTOOL, &call) == 0;
}

MacAddress DriverInfo::permanentAddress() const
{
    MacAddress address {};
    auto storage = storageFor<ethtool_perm_addr>(address.size());
    auto* const permanent = reinterpret_cast<ethtool_perm_addr*>(storage.data());
    permanent->cmd = ETHTOOL_GPERMADDR;
    permanent->size = address.size();
    if (request(permanent) && permanent->size == address.size())
        std::memcpy(address.data(), permanent->data, address.size());
    return address;
}

std::string DriverInfo::firmwareVersion() const
{
    ethtool_drvinfo info {};
    info.cmd = ETHTOOL_GDRVINFO;
    if (!request(&info))
        return {};
    return { info.fw_version, ::strnlen(info.fw_version, sizeof(info.fw_version)) };
}

void DriverInfo::findStatistic(std::string_view name)
{
    m_isSearched = true;
    ethtool_drvinfo info {};
    info.cmd = ETHTOOL_GDRVINFO;
    if (!request(&info) || info.n_stats == 0)
        return;
    auto storage = storageFor<ethtool_gstrings>(std::size_t { info.n_stats } * ETH_GSTRING_LEN);
    auto* const names = reinterpret_cast<ethtool_gstrings*>(storage.data());
    names->cmd = ETHTOOL_GSTRINGS;
    names->string_set = ETH_SS_STATS;
    names->len = info.n_stats;
    if (!request(names))
        return;
    m_statisticCount = std::min<std::size_t>(names->len, info.n_stats);
    for (std::size_t i = 0; i < m_statisticCount; ++i) {
        const auto* const text = reinterpret_cast<const char*>(names->data) + i * ETH_GSTRING_LEN;
        if (name == std::string_view(text, ::strnlen(text, ETH_GSTRING_LEN)))
            m_statisticIndex = i;
    }
}

std::optional<std::uint64_t> DriverInfo::statistic(std::string_view name)
{
    if (!m_isSearched)
        findStatistic(name);
    if (!m_statisticIndex)
        return std::nullopt;
    auto storage = storageFor<ethtool_stats>(m_statisticCount * sizeof(std::uint64_t));
    auto* const stats = reinterpret_cast<ethtool_stats*>(storage.data());
    stats->cmd = ETHTOOL_GSTATS;
    stats->n_stats = static_cast<std::uint32_t>(m_statisticCount);
    if (!request(stats))
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
