#pragma once

#include "driver/BssidList.h"
#include "survey/AccessPoint.h"

#include <optional>
#include <span>

// Finds the network that a displayed row shows in the scan list, which may be newer than the row.

struct ListedNetwork {
    int row { 0 }; // its index in the list
    BssidEntry entry;
};

// The entry at the index, if it describes the displayed network.
[[nodiscard]] std::optional<BssidEntry> entryAtRow(std::span<std::byte> list, int row, const AccessPoint& displayed);

// The first entry of the displayed network.
[[nodiscard]] std::optional<ListedNetwork> findNetwork(std::span<std::byte> list, const AccessPoint& displayed);
