#pragma once

#include "driver/records/NdisRecords.h"

#include <QString>

// "00-11-22-AA-BB-CC"
[[nodiscard]] QString macAddressText(const MacAddress& address);
