#include "services/linux/wire/SecurityElements.h"

#include <algorithm>
#include <array>

namespace {

using Oui = std::array<std::uint8_t, 3>;
constexpr Oui wpaOui { 0x00, 0x50, 0xF2 };
constexpr Oui rsnOui { 0x00, 0x0F, 0xAC };
constexpr std::uint8_t wpaVendorType = 1;
constexpr std::size_t suiteBytes = 4;

// Suite types of WPA; RSN numbers these ciphers alike and adds others.
constexpr std::uint8_t wpaWep40 = 1;
constexpr std::uint8_t wpaTkip = 2;
constexpr std::uint8_t wpaCcmp = 4;
constexpr std::uint8_t wpaEnterprise = 1;
constexpr std::uint8_t wpaPsk = 2;

// Takes fields from the front; std::nullopt once a field is missing.
class FieldReader {
public:
    explicit FieldReader(OctetSpan bytes)
        : m_rest(bytes)
    {
    }

    [[nodiscard]] std::optional<OctetSpan> take(std::size_t count)
    {
        if (m_rest.size() < count)
            return std::nullopt;
        const OctetSpan field = m_rest.first(count);
        m_rest = m_rest.subspan(count);
        return field;
    }

    [[nodiscard]] std::optional<std::uint16_t> takeNumber()
    {
        const auto field = take(2);
        return field ? std::optional(static_cast<std::uint16_t>((*field)[0] | (*field)[1] << 8)) : std::nullopt;
    }

private:
    OctetSpan m_rest;
};

bool hasOui(OctetSpan suite, const Oui& oui)
{
    return std::equal(oui.begin(), oui.end(), suite.begin());
}

CipherSuite cipherOf(OctetSpan suite, const Oui& oui)
{
    if (!hasOui(suite, oui))
        return CipherSuite::Unknown;
    switch (suite[3]) {
    case 0:
        return CipherSuite::None; // RSN: use the group cipher
    case 1:
    case 5:
        return CipherSuite::Wep;
    case 2:
        return CipherSuite::Tkip;
    case 4:
        return CipherSuite::Ccmp;
    case 8:
        return CipherSuite::Gcmp;
    case 9:
        return CipherSuite::Gcmp256;
    case 10:
        return CipherSuite::Ccmp256;
    default:
        return CipherSuite::Unknown;
    }
}

KeyManagement keyManagementOf(OctetSpan suite, const Oui& oui)
{
    if (!hasOui(suite, oui))
        return KeyManagement::Other;
    if (oui == wpaOui && suite[3] == 0)
        return KeyManagement::None;
    switch (suite[3]) {
    case 2:
        return KeyManagement::Psk;
    case 4:
        return KeyManagement::FastPsk;
    case 6:
        return KeyManagement::PskSha256;
    default:
        return KeyManagement::Other;
    }
}

// Reads a counted list of suites. Returns false for a list that is cut off; an absent list is left empty.
template <typename Suite>
bool readSuites(FieldReader& reader, std::vector<Suite>& suites, const Oui& oui, Suite (*read)(OctetSpan, const Oui&))
{
    const auto count = reader.takeNumber();
    for (std::uint16_t i = 0; i < count.value_or(0); ++i) {
        const auto suite = reader.take(suiteBytes);
        if (!suite)
            return false;
        suites.push_back(read(*suite, oui));
    }
    return true;
}

// The part that WPA and RSN share: version, group suite, pairwise suites, AKM suites. Capabilities may follow.
std::optional<SecurityElement> readSecurity(OctetSpan content, const Oui& oui, CipherSuite defaultCipher)
{
    FieldReader reader(content);
    SecurityElement element;
    if (reader.takeNumber() != 1)
        return std::nullopt;
    const auto group = reader.take(suiteBytes);
    element.group = group ? cipherOf(*group, oui) : defaultCipher;
    if (!readSuites(reader, element.pairwise, oui, cipherOf)
        || !readSuites(reader, element.keyManagement, oui, keyManagementOf))
        return std::nullopt;
    if (element.pairwise.empty())
        element.pairwise.push_back(defaultCipher);
    if (element.keyManagement.empty())
        element.keyManagement.push_back(KeyManagement::Other); // 802.1X
    return element;
}

bool isWpaElement(const InformationElement& element)
{
    return element.id == elementVendor && element.content.size() > suiteBytes && hasOui(element.content, wpaOui)
        && element.content[3] == wpaVendorType;
}

std::optional<OctetSpan> wpaContent(OctetSpan elements)
{
    InformationElements reader(elements);
    while (const auto element = reader.next()) {
        if (isWpaElement(*element))
            return element->content;
    }
    return std::nullopt;
}

// The nearest cipher of WPA. Those that WPA does not have are all forms of AES.
std::uint8_t wpaCipher(CipherSuite cipher, std::uint8_t none)
{
    switch (cipher) {
    case CipherSuite::None:
        return none;
    case CipherSuite::Wep:
        return wpaWep40;
    case CipherSuite::Tkip:
        return wpaTkip;
    case CipherSuite::Ccmp:
    case CipherSuite::Gcmp:
    case CipherSuite::Ccmp256:
    case CipherSuite::Gcmp256:
    case CipherSuite::Unknown:
        break;
    }
    return wpaCcmp;
}

void appendSuite(Octets& content, std::uint8_t type)
{
    content.insert(content.end(), wpaOui.begin(), wpaOui.end());
    content.push_back(type);
}

void appendSuiteCount(Octets& content, std::size_t count)
{
    content.push_back(static_cast<std::uint8_t>(count));
    content.push_back(0);
}

Octets wpaContentOf(const SecurityElement& rsn)
{
    Octets content;
    appendSuite(content, wpaVendorType);
    content.insert(content.end(), { 1, 0 }); // version
    const std::uint8_t group = wpaCipher(rsn.group, wpaCcmp);
    appendSuite(content, group);
    // One pairwise suite, the strongest: the client reads no further one.
    const bool hasAes = std::any_of(rsn.pairwise.begin(), rsn.pairwise.end(),
        [](CipherSuite cipher) { return wpaCipher(cipher, wpaTkip) == wpaCcmp && cipher != CipherSuite::Unknown; });
    appendSuiteCount(content, 1);
    appendSuite(content, hasAes ? wpaCcmp : wpaCipher(rsn.pairwise.front(), group));
    appendSuiteCount(content, 1);
    appendSuite(content, rsn.acceptsPresharedKey() ? wpaPsk : wpaEnterprise);
    return content;
}

bool isListed(std::uint8_t id)
{
    constexpr std::array listed { elementSsid, elementSupportedRates, elementDsParameters, elementIbssParameters,
        elementErp, elementRsn, elementExtendedRates };
    return std::find(listed.begin(), listed.end(), id) != listed.end();
}

} // namespace

bool SecurityElement::acceptsPresharedKey() const
{
    return std::any_of(keyManagement.begin(), keyManagement.end(), [](KeyManagement suite) {
        return suite == KeyManagement::Psk || suite == KeyManagement::PskSha256 || suite == KeyManagement::FastPsk;
    });
}

std::optional<SecurityElement> wpaElement(OctetSpan elements)
{
    const auto content = wpaContent(elements);
    return content ? readSecurity(content->subspan(suiteBytes), wpaOui, CipherSuite::Tkip) : std::nullopt;
}

std::optional<SecurityElement> rsnElement(OctetSpan elements)
{
    const auto content = findElement(elements, elementRsn);
    return content ? readSecurity(*content, rsnOui, CipherSuite::Ccmp) : std::nullopt;
}

Octets listedElements(OctetSpan elements)
{
    Octets listed;
    const auto rsn = rsnElement(elements);
    if (wpaElement(elements))
        appendElement(listed, elementVendor, *wpaContent(elements));
    else if (rsn)
        appendElement(listed, elementVendor, wpaContentOf(*rsn));
    else if (wpaContent(elements) || findElement(elements, elementRsn)) // malformed, or of a later version
        appendElement(listed, elementVendor,
            wpaContentOf({ CipherSuite::Ccmp, { CipherSuite::Ccmp }, { KeyManagement::Other } }));

    InformationElements reader(elements);
    while (const auto element = reader.next()) {
        if (isListed(element->id))
            appendElement(listed, element->id, element->content);
    }
    return listed;
}
