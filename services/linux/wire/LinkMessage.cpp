#include "services/linux/wire/LinkMessage.h"

#include "services/linux/wire/NetlinkAttributes.h"

#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

namespace {

// Kernels differ in how many counters follow the ones that we read.
std::optional<InterfaceCounters> countersIn(std::span<const std::byte> payload)
{
    rtnl_link_stats64 stats {};
    constexpr std::size_t needed = offsetof(rtnl_link_stats64, rx_missed_errors) + sizeof(stats.rx_missed_errors);
    if (payload.size() < needed)
        return std::nullopt;
    std::memcpy(&stats, payload.data(), needed);
    return InterfaceCounters { stats.rx_packets, stats.rx_bytes, stats.tx_bytes,
        stats.rx_missed_errors + stats.rx_fifo_errors };
}

} // namespace

std::optional<LinkMessage> linkMessage(std::span<const std::byte> body)
{
    ifinfomsg head {};
    if (body.size() < NLMSG_ALIGN(sizeof(head)))
        return std::nullopt;
    std::memcpy(&head, body.data(), sizeof(head));
    LinkMessage link;
    link.index = static_cast<std::uint32_t>(head.ifi_index);
    link.isUp = (head.ifi_flags & IFF_UP) != 0;
    forEachAttribute(body.subspan(NLMSG_ALIGN(sizeof(head))), [&link](std::uint16_t type, auto payload) {
        switch (type) {
        case IFLA_IFNAME:
            link.name = textIn(payload);
            break;
        case IFLA_STATS64:
            link.counters = countersIn(payload);
            break;
        default:
            break;
        }
    });
    return link;
}
