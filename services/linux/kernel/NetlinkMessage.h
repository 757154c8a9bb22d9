#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

struct nl_msg;

// A netlink request under construction.
class NetlinkMessage {
public:
    // A generic netlink request. Flags: NLM_F_DUMP or 0; an acknowledgement is always asked for.
    static NetlinkMessage generic(int family, std::uint8_t command, int flags);
    // A route netlink request about one interface; index 0 means all (with NLM_F_DUMP).
    static NetlinkMessage link(int type, int flags, std::uint32_t index);
    // Brings an interface up.
    static NetlinkMessage linkUp(std::uint32_t index);

    NetlinkMessage& put(int type, std::uint32_t value);
    NetlinkMessage& put(int type, std::span<const std::uint8_t> bytes);
    NetlinkMessage& putFlag(int type);
    // Calls fill(message) for the attributes inside.
    template <typename Fill> NetlinkMessage& nest(int type, Fill fill)
    {
        void* const start = beginNest(type);
        fill(*this);
        endNest(start);
        return *this;
    }

    // nullptr if memory ran out while the message was built.
    [[nodiscard]] nl_msg* get() const { return m_isComplete ? m_message.get() : nullptr; }

private:
    struct Free {
        void operator()(nl_msg* message) const;
    };

    NetlinkMessage();
    void* beginNest(int type);
    void endNest(void* start);

    std::unique_ptr<nl_msg, Free> m_message;
    bool m_isComplete { true };
};
