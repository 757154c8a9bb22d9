// What the kernel says: the first byte chooses the reader, the rest are attributes, or the body of a link message.

#include "services/linux/wire/LinkMessage.h"
#include "services/linux/wire/NetlinkAttributes.h"
#include "services/linux/wire/Nl80211Values.h"
#include "tests/fuzz/Require.h"

#include <cstdint>
#include <span>
#include <vector>

namespace {

void read(std::uint8_t reader, Attributes bytes)
{
    WiphyFacts wiphy;
    switch (reader % 8) {
    case 0:
        if (const auto entry = scanEntry(bytes))
            require(entry->frequencyMhz != 0 && entry->elements.size() <= bytes.size());
        break;
    case 1:
        (void)stationInfo(bytes);
        break;
    case 2:
        addWiphy(wiphy, bytes);
        require(wiphy.channels.size() <= bytes.size() && wiphy.twoGhzRates.size() <= bytes.size());
        break;
    case 3:
        if (const auto facts = interfaceFacts(bytes))
            require(facts->name.size() <= bytes.size());
        break;
    case 4:
        (void)surveyFacts(bytes);
        break;
    case 5:
        require(scannedFrequencies(bytes).size() <= bytes.size());
        break;
    case 6:
        if (const auto link = linkMessage(bytes))
            require(link->name.size() <= bytes.size());
        break;
    default:
        (void)interfaceIndex(bytes);
        (void)wiphyIndex(bytes);
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    // A buffer of exactly this size lets the sanitizer detect reads beyond it.
    const auto rest = std::as_bytes(std::span(data, size)).subspan(1);
    const std::vector<std::byte> bytes(rest.begin(), rest.end());
    read(data[0], bytes);
    return 0;
}
