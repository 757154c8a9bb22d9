#pragma once

#include "driver/BssidList.h"
#include "platform/NetworkName.h"

// The name of a scan list entry, read up to the first zero byte: not all firmware sets the length field. A name of 32
// bytes has no terminator in its field and continues into the bytes that follow it.
[[nodiscard]] NetworkName listedName(const BssidEntry& entry);
