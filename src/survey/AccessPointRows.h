#pragma once

#include "survey/AccessPoint.h"

#include <cstddef>
#include <span>
#include <vector>

class AssertionHandler;

struct AccessPointRowsResult {
    std::vector<AccessPoint> rows; // row n is entry n of the list
    bool complete { true }; // false if a failed assertion ended the refresh after these rows
};

// Converts a scan result to rows. Modifies the list: the pairwise suite count of each WPA element becomes 1 unless it
// is 0. A frequency outside ChannelFreqTable is a failed assertion. If its handler lets the program continue, the
// channel of the table's first row is used.
[[nodiscard]] AccessPointRowsResult accessPointRows(std::span<std::byte> bssidList, AssertionHandler& assertions);
