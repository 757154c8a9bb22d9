#pragma once

#include "driver/records/NdisRecords.h"

#include <QString>

// Six two-digit upper-case hexadecimal numbers joined by "-".
[[nodiscard]] QString macAddressText(const MacAddress& address);
