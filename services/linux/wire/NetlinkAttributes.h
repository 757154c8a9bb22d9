#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <type_traits>

// Netlink attributes (16-bit length, 16-bit type, payload, padding to 4 bytes), in host byte order.

struct NetlinkAttribute {
    std::uint16_t type { 0 }; // without the flag bits
    std::span<const std::byte> payload;
};

// Reads one attribute after the other. Ends at the first one that does not fit into its buffer.
class NetlinkAttributes {
public:
    explicit NetlinkAttributes(std::span<const std::byte> bytes)
        : m_rest(bytes)
    {
    }

    [[nodiscard]] std::optional<NetlinkAttribute> next();

private:
    std::span<const std::byte> m_rest;
};

// The payload of the first attribute of a type.
[[nodiscard]] std::optional<std::span<const std::byte>> findAttribute(
    std::span<const std::byte> attributes, std::uint16_t type);

// A number; std::nullopt unless the payload has exactly its size.
template <typename Number> [[nodiscard]] std::optional<Number> numberIn(std::span<const std::byte> payload)
{
    static_assert(std::is_arithmetic_v<Number>);
    if (payload.size() != sizeof(Number))
        return std::nullopt;
    Number number {};
    std::memcpy(&number, payload.data(), sizeof(Number));
    return number;
}

// A text up to its terminating zero, which may be absent.
[[nodiscard]] std::string textIn(std::span<const std::byte> payload);

// Calls visit(type, payload) for every attribute.
template <typename Visit> void forEachAttribute(std::span<const std::byte> attributes, Visit visit)
{
    NetlinkAttributes reader(attributes);
    while (const auto attribute = reader.next())
        visit(attribute->type, attribute->payload);
}
