#pragma once

#include <QString>

#include <array>
#include <cstdint>

// The driver's reply: byte 2 is the major, byte 3 the minor number.
using EepromVersion = std::array<std::uint8_t, 4>;

// "2.16"
[[nodiscard]] QString eepromVersionText(const EepromVersion& version);
