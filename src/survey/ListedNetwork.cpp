#include "survey/ListedNetwork.h"

#include "driver/MacAddressText.h"

namespace {

bool isEntryOf(const AccessPoint& displayed, const BssidEntry& entry)
{
    return displayed.bssid() == macAddressText(entry.fixedPart().MacAddress);
}

} // namespace

std::optional<BssidEntry> entryAtRow(std::span<std::byte> list, int row, const AccessPoint& displayed)
{
    auto entry = bssidEntryAt(list, static_cast<std::uint32_t>(row));
    return entry && isEntryOf(displayed, *entry) ? entry : std::nullopt;
}

std::optional<ListedNetwork> findNetwork(std::span<std::byte> list, const AccessPoint& displayed)
{
    BssidListWalk walk(list);
    for (int row = 0; const auto entry = walk.next(); ++row) {
        if (isEntryOf(displayed, *entry))
            return ListedNetwork { row, *entry };
    }
    return std::nullopt;
}
