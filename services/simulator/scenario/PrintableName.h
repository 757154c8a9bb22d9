#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Network names as text for a terminal.

// The name in UTF-8. Bytes that are not part of a printable character, and backslashes, become \xNN.
[[nodiscard]] std::string printableName(std::string_view ssid);

// The number of characters in a UTF-8 text.
[[nodiscard]] std::size_t widthOfText(const std::string& text);
