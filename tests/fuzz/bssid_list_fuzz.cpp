// Whatever a driver calls a scan result: appended to, walked, turned into rows and read by the connect and profile
// paths. The sanitizers see what leaves the buffer; what must hold of the results is checked here.

#include "driver/BssidList.h"
#include "driver/MacAddressText.h"
#include "platform/AssertionHandler.h"
#include "survey/AccessPointRows.h"
#include "survey/ConnectionRecord.h"
#include "survey/ProfileProposal.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

namespace {

class GoingOn final : public AssertionHandler {
public:
    [[nodiscard]] bool handleFailureInMethod(const char* /*method*/, const char* /*object*/, const char* /*file*/,
        int /*lineNumber*/, const char* /*description*/) override
    {
        return true;
    }
};

void require(bool condition)
{
    if (!condition)
        std::abort();
}

// Reads each entry as the connect and profile paths do, and returns the addresses.
std::vector<QString> readEntries(std::span<std::byte> list, AssertionHandler& assertions)
{
    std::vector<QString> addresses;
    BssidListWalk walk(list);
    while (const auto entry = walk.next()) {
        const NetworkChoice choice { entry->fixedPart(), wpaClassOf(*entry), false, entry->fixedPart().Ssid };
        require(encryptionTextOf(*entry) != nullptr);
        require(connectionRecord(choice, nullptr)->DisassociateFirst == 1);
        require(profileProposal(*entry, assertions).has_value());
        addresses.push_back(macAddressText(choice.network.MacAddress));
    }
    require(addresses.size() <= bssidCount(list));
    return addresses;
}

// The buffer has its exact size, so that a byte beyond it is one that the sanitizer knows.
void readAll(std::vector<std::byte> list)
{
    GoingOn assertions;
    (void)readEntries(list, assertions);
    const auto result = accessPointRows(list, assertions);
    require(result.complete);
    // The rows rewrite the list, and an element that is cut off lets them rewrite the next entry's Length: row n is
    // entry n of the list as it is now.
    const auto addresses = readEntries(list, assertions);
    require(std::equal(result.rows.begin(), result.rows.end(), addresses.begin(), addresses.end(),
        [](const AccessPoint& row, const QString& address) { return row.bssid() == address; }));
    const auto entries = static_cast<std::uint32_t>(addresses.size());
    require(entries == 0 || bssidEntryAt(list, entries - 1).has_value());
    require(!bssidEntryAt(list, entries).has_value());
}

// The first two bytes say how much of the input is the list before the chunk is appended.
void appendChunk(std::span<const std::byte> input)
{
    std::vector<std::byte> list(8192);
    std::uint16_t split = 0;
    std::memcpy(&split, input.data(), sizeof(split));
    const auto rest = input.subspan(sizeof(split));
    const auto head = rest.first(std::min<std::size_t>({ split, rest.size(), list.size() }));
    std::copy(head.begin(), head.end(), list.begin());
    const std::uint32_t before = bssidCount(list);
    const auto chunk = rest.subspan(head.size());
    const std::uint32_t appended = appendBssidChunk(list, chunk).appended;
    require(appended <= bssidCount(chunk));
    const std::uint32_t countsLeft = std::numeric_limits<std::uint32_t>::max() - before;
    require(bssidCount(list) == before + std::min(appended, countsLeft));
    readAll(list);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto input = std::as_bytes(std::span(data, size));
    readAll({ input.begin(), input.end() });
    if (size >= sizeof(std::uint16_t))
        appendChunk(input);
    return 0;
}
