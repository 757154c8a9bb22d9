#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

// Information elements of IEEE 802.11: an id byte, a length byte, that many bytes. All readers accept any bytes.

using Octets = std::vector<std::uint8_t>;
using OctetSpan = std::span<const std::uint8_t>;

inline constexpr std::uint8_t elementSsid = 0;
inline constexpr std::uint8_t elementSupportedRates = 1;
inline constexpr std::uint8_t elementDsParameters = 3;
inline constexpr std::uint8_t elementIbssParameters = 6;
inline constexpr std::uint8_t elementErp = 42;
inline constexpr std::uint8_t elementRsn = 48;
inline constexpr std::uint8_t elementExtendedRates = 50;
inline constexpr std::uint8_t elementVendor = 221;

struct InformationElement {
    std::uint8_t id { 0 };
    OctetSpan content;
};

// Reads one element after the other. Ends at the first one that does not fit into its buffer.
class InformationElements {
public:
    explicit InformationElements(OctetSpan bytes)
        : m_rest(bytes)
    {
    }

    [[nodiscard]] std::optional<InformationElement> next();

private:
    OctetSpan m_rest;
};

// The content of the first element with this id.
[[nodiscard]] std::optional<OctetSpan> findElement(OctetSpan elements, std::uint8_t id);

void appendElement(Octets& elements, std::uint8_t id, OctetSpan content);

// The network's name; empty for a hidden network, which announces no name or only zeros.
[[nodiscard]] Octets networkName(OctetSpan elements);

// Supported and extended rates in units of 500 kbit/s; bit 7 marks a basic rate. Markers of other requirements, which
// share the element, are left out.
[[nodiscard]] Octets announcedRates(OctetSpan elements);

// The ATIM window of an ad hoc network (IBSS) in Kusec; 0 if it announces none.
[[nodiscard]] std::uint16_t atimWindowKusec(OctetSpan elements);
