#include "services/linux/wire/NetlinkAttributes.h"

#include <algorithm>

#include <linux/netlink.h>

namespace {

constexpr std::size_t padded(std::size_t length)
{
    return (length + NLA_ALIGNTO - 1) / NLA_ALIGNTO * NLA_ALIGNTO;
}

} // namespace

std::optional<NetlinkAttribute> NetlinkAttributes::next()
{
    nlattr head {};
    if (m_rest.size() < sizeof(head))
        return std::nullopt;
    std::memcpy(&head, m_rest.data(), sizeof(head));
    if (head.nla_len < sizeof(head) || head.nla_len > m_rest.size())
        return std::nullopt;
    const auto payload = m_rest.subspan(sizeof(head), head.nla_len - sizeof(head));
    // The last attribute may lack its padding.
    m_rest = m_rest.subspan(std::min(padded(head.nla_len), m_rest.size()));
    return NetlinkAttribute { static_cast<std::uint16_t>(head.nla_type & NLA_TYPE_MASK), payload };
}

std::optional<std::span<const std::byte>> findAttribute(std::span<const std::byte> attributes, std::uint16_t type)
{
    NetlinkAttributes reader(attributes);
    while (const auto attribute = reader.next()) {
        if (attribute->type == type)
            return attribute->payload;
    }
    return std::nullopt;
}

std::string textIn(std::span<const std::byte> payload)
{
    const auto* const first = reinterpret_cast<const char*>(payload.data());
    return { first, std::find(first, first + payload.size(), '\0') };
}
