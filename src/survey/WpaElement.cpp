#include "survey/WpaElement.h"

namespace {

// Offsets and sizes within an entry.
constexpr std::size_t firstElementOffset = sizeof(WLAN_BSSID_EX);
constexpr std::uint32_t fixedElementsSize = 12; // timestamp, beacon interval, capabilities
constexpr std::uint32_t maxLengthWithoutElements = 104; // of an entry

// Offsets within the element.
constexpr std::size_t ouiOffset = 2;
constexpr std::size_t groupSuiteOffset = 8;
constexpr std::size_t pairwiseCountOffset = 12;
constexpr std::size_t pairwiseSuitesOffset = 14;
constexpr std::size_t suiteSize = 4;

constexpr std::uint8_t vendorElementId = 221;
constexpr std::uint8_t maxOtherElementLength = 15; // a WPA element is longer
constexpr std::uint32_t wpaOuiAndType = 0x0050F201;
constexpr std::uint32_t suiteOui = 0x0050F200;
constexpr std::uint32_t ouiMask = 0xFFFFFF00;

// The first vendor-specific element that is long enough, whatever its OUI.
std::optional<std::size_t> findCandidate(const BssidEntry& entry, std::uint32_t elementsLength)
{
    std::size_t offset = firstElementOffset;
    std::uint64_t position = fixedElementsSize;
    while (elementsLength > position + 3) {
        const std::uint8_t length = entry.byteAt(offset + 1);
        if (entry.byteAt(offset) == vendorElementId && length > maxOtherElementLength)
            return offset;
        offset += length;
        position += length;
        if (entry.byteAt(offset + 1) == 0)
            break;
    }
    return std::nullopt;
}

} // namespace

std::optional<WpaElement> findWpaElement(const BssidEntry& entry)
{
    const WLAN_BSSID_EX fixedPart = entry.fixedPart();
    if (fixedPart.Length <= maxLengthWithoutElements || fixedPart.IELength <= fixedElementsSize)
        return std::nullopt;
    const auto offset = findCandidate(entry, fixedPart.IELength);
    if (!offset || entry.bigEndian32At(*offset + ouiOffset) != wpaOuiAndType)
        return std::nullopt;
    const std::uint32_t groupSuite = entry.bigEndian32At(*offset + groupSuiteOffset);
    if ((groupSuite & ouiMask) != suiteOui)
        return std::nullopt;
    return WpaElement { *offset, static_cast<std::uint8_t>(groupSuite & ~ouiMask) };
}

const char* cipherText(const WpaElement& element)
{
    switch (element.groupSuiteType) {
    case 2:
        return "TKIP";
    case 3:
        return "AES-WRAP";
    case 4:
        return "AES-CCMP";
    default:
        return nullptr;
    }
}

std::optional<std::uint8_t> firstAkmSuite(
    const BssidEntry& entry, const WpaElement& element, std::uint16_t pairwiseSuites)
{
    const std::size_t countOffset = element.offset + pairwiseSuitesOffset + pairwiseSuites * suiteSize;
    if (entry.littleEndian16At(countOffset) == 0)
        return std::nullopt;
    const std::uint32_t suite = entry.bigEndian32At(countOffset + sizeof(std::uint16_t));
    if ((suite & ouiMask) != suiteOui)
        return std::nullopt;
    return static_cast<std::uint8_t>(suite & ~ouiMask);
}

std::uint16_t pairwiseSuiteCount(const BssidEntry& entry, const WpaElement& element)
{
    return entry.littleEndian16At(element.offset + pairwiseCountOffset);
}

void setPairwiseSuiteCount(BssidEntry& entry, const WpaElement& element, std::uint16_t count)
{
    entry.setLittleEndian16At(element.offset + pairwiseCountOffset, count);
}
