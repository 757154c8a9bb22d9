#pragma once

#include "services/card/RecordBytes.h"
#include "services/simulator/service/Faults.h"

// Applies a list fault to a chunk of a scan result. A chunk without entries gets one first, for the fault to spoil.
[[nodiscard]] Bytes spoiledChunk(const Bytes& chunk, FaultKind kind);
