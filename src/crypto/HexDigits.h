#pragma once

#include <cstdint>
#include <string_view>

// The value of a hexadecimal digit, 0 to 15; 255 for any other character.
[[nodiscard]] unsigned char BtoH(char character);

// Converts 2n hexadecimal digits to n bytes; the text must hold 2n characters. Invalid digits are converted without an
// error: each counts as 255, and its byte keeps the low 8 bits of the sum ("zz" gives EF). Callers validate the text.
void AtoH(const char* text, unsigned char* output, std::int32_t n);

// The same for a text of any length: missing digits count as 0, extra ones are ignored.
void AtoH(std::string_view text, unsigned char* output, std::int32_t n);
