#include "services/linux/kernel/NetlinkMessage.h"

#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netlink/genl/genl.h>
#include <netlink/msg.h>

void NetlinkMessage::Free::operator()(nl_msg* message) const
{
    nlmsg_free(message);
}

NetlinkMessage::NetlinkMessage()
    : m_message(nlmsg_alloc())
    , m_isComplete(m_message != nullptr)
{
}

NetlinkMessage NetlinkMessage::generic(int family, std::uint8_t command, int flags)
{
    NetlinkMessage message;
    if (message.m_isComplete)
        message.m_isComplete = genlmsg_put(message.m_message.get(), NL_AUTO_PORT, NL_AUTO_SEQ, family, 0,
                                   NLM_F_REQUEST | NLM_F_ACK | flags, command, 0)
            != nullptr;
    return message;
}

NetlinkMessage NetlinkMessage::link(int type, int flags, std::uint32_t index)
{
    NetlinkMessage message;
    ifinfomsg head {};
    head.ifi_index = static_cast<int>(index);
    if (message.m_isComplete)
        message.m_isComplete
            = nlmsg_put(message.m_message.get(), NL_AUTO_PORT, NL_AUTO_SEQ, type, 0, NLM_F_REQUEST | NLM_F_ACK | flags)
                != nullptr
            && nlmsg_append(message.m_message.get(), &head, sizeof(head), NLMSG_ALIGNTO) == 0;
    return message;
}

NetlinkMessage NetlinkMessage::linkUp(std::uint32_t index)
{
    NetlinkMessage message = link(RTM_NEWLINK, 0, index);
    if (message.m_isComplete) {
        auto* const head = static_cast<ifinfomsg*>(nlmsg_data(nlmsg_hdr(message.m_message.get())));
        head->ifi_flags = IFF_UP;
        head->ifi_change = IFF_UP;
    }
    return message;
}

NetlinkMessage& NetlinkMessage::put(int type, std::uint32_t value)
{
    m_isComplete = m_isComplete && nla_put_u32(m_message.get(), type, value) == 0;
    return *this;
}

NetlinkMessage& NetlinkMessage::put(int type, std::span<const std::uint8_t> bytes)
{
    m_isComplete = m_isComplete && nla_put(m_message.get(), type, static_cast<int>(bytes.size()), bytes.data()) == 0;
    return *this;
}

NetlinkMessage& NetlinkMessage::putFlag(int type)
{
    m_isComplete = m_isComplete && nla_put_flag(m_message.get(), type) == 0;
    return *this;
}

void* NetlinkMessage::beginNest(int type)
{
    void* const start = m_isComplete ? nla_nest_start(m_message.get(), type) : nullptr;
    m_isComplete = start != nullptr;
    return start;
}

void NetlinkMessage::endNest(void* start)
{
    if (m_isComplete)
        m_isComplete = nla_nest_end(m_message.get(), static_cast<nlattr*>(start)) >= 0;
}
