#pragma once

#include "services/card/RecordBytes.h"
#include "services/simulator/service/Faults.h"

#include <cstdint>

// Spoils a chunk of a scan result as the list faults say. A chunk without an entry is given one first, so that there is
// something to lie about.
[[nodiscard]] Bytes spoiledChunk(const Bytes& chunk, FaultKind kind);
