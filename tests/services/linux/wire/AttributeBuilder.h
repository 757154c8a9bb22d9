#pragma once

#include "services/card/RecordBytes.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// Netlink attributes as the kernel sends them.
class AttributeBuilder {
public:
    AttributeBuilder& add(std::uint16_t type, const Bytes& payload)
    {
        const auto length = static_cast<std::uint16_t>(payload.size() + 4);
        append(bytesOf(length));
        append(bytesOf(type));
        append(payload);
        m_bytes.resize((m_bytes.size() + 3) / 4 * 4);
        return *this;
    }
    template <typename Number> AttributeBuilder& number(std::uint16_t type, Number value)
    {
        return add(type, bytesOf(value));
    }
    AttributeBuilder& text(std::uint16_t type, const std::string& value)
    {
        Bytes bytes;
        for (const char character : value + '\0')
            bytes.push_back(static_cast<std::byte>(character));
        return add(type, bytes);
    }
    AttributeBuilder& nest(std::uint16_t type, const AttributeBuilder& inner) { return add(type, inner.bytes()); }
    AttributeBuilder& flag(std::uint16_t type) { return add(type, {}); }

    [[nodiscard]] const Bytes& bytes() const { return m_bytes; }

private:
    void append(const Bytes& bytes) { m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end()); }

    Bytes m_bytes;
};

[[nodiscard]] inline Bytes toBytes(const std::vector<std::uint8_t>& octets)
{
    Bytes bytes;
    for (const std::uint8_t octet : octets)
        bytes.push_back(static_cast<std::byte>(octet));
    return bytes;
}
