#include "services/linux/wire/InformationElements.h"

#include <algorithm>

namespace {

constexpr std::size_t headBytes = 2;
constexpr std::size_t maxNameBytes = 32;
constexpr std::uint8_t rateMask = 0x7F;
// Values of this range are not rates but requirements ("BSS membership selectors").
constexpr std::uint8_t firstMembershipSelector = 122;

void appendRates(Octets& rates, std::optional<OctetSpan> content)
{
    if (!content)
        return;
    std::copy_if(content->begin(), content->end(), std::back_inserter(rates),
        [](std::uint8_t rate) { return (rate & rateMask) != 0 && (rate & rateMask) < firstMembershipSelector; });
}

} // namespace

std::optional<InformationElement> InformationElements::next()
{
    if (m_rest.size() < headBytes || m_rest.size() - headBytes < m_rest[1])
        return std::nullopt;
    const InformationElement element { m_rest[0], m_rest.subspan(headBytes, m_rest[1]) };
    m_rest = m_rest.subspan(headBytes + element.content.size());
    return element;
}

std::optional<OctetSpan> findElement(OctetSpan elements, std::uint8_t id)
{
    InformationElements reader(elements);
    while (const auto element = reader.next()) {
        if (element->id == id)
            return element->content;
    }
    return std::nullopt;
}

void appendElement(Octets& elements, std::uint8_t id, OctetSpan content)
{
    elements.push_back(id);
    elements.push_back(static_cast<std::uint8_t>(content.size()));
    elements.insert(elements.end(), content.begin(), content.end());
}

Octets networkName(OctetSpan elements)
{
    const auto name = findElement(elements, elementSsid);
    if (!name || name->size() > maxNameBytes
        || std::all_of(name->begin(), name->end(), [](std::uint8_t octet) { return octet == 0; }))
        return {};
    return { name->begin(), name->end() };
}

Octets announcedRates(OctetSpan elements)
{
    Octets rates;
    appendRates(rates, findElement(elements, elementSupportedRates));
    appendRates(rates, findElement(elements, elementExtendedRates));
    return rates;
}

std::uint16_t atimWindowKusec(OctetSpan elements)
{
    const auto content = findElement(elements, elementIbssParameters);
    if (!content || content->size() < 2)
        return 0;
    return static_cast<std::uint16_t>((*content)[0] | (*content)[1] << 8);
}
