#pragma once

#include "survey/AccessPoint.h"

#include <cstddef>
#include <span>
#include <vector>

class AssertionHandler;

struct AccessPointRowsResult {
    std::vector<AccessPoint> rows; // row n is entry n of the list
    bool complete { true }; // false when a failed assertion ended the refresh behind these rows
};

// Turns a scan result into rows. The list is rewritten on the way: the pairwise suite count of each WPA
// element becomes 1, or 0 where it was 0. A frequency outside ChannelFreqTable is a failed assertion; where
// its handler says to go on, the channel of the table's first row stands in.
[[nodiscard]] AccessPointRowsResult accessPointRows(std::span<std::byte> bssidList, AssertionHandler& assertions);
