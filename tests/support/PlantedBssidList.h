#pragma once

#include "app/shared/SharedState.h"
#include "tests/support/BssidListBuilder.h"

#include <algorithm>
#include <memory>
#include <vector>

// Replaces the scan list of the utility.
inline void plantBssidList(const Bytes& list)
{
    G_pBssidList = std::make_unique<BssidListBuffer>();
    std::copy(list.begin(), list.end(), G_pBssidList->begin());
}

inline void plantBssidList(const std::vector<EntryBuilder>& entries)
{
    plantBssidList(bssidList(entries));
}
