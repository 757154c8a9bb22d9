#pragma once

#include <cstdint>
#include <string_view>

// The value of a hexadecimal digit, 0 to 15; 255 for any other character.
[[nodiscard]] unsigned char BtoH(char character);

// Converts 2n hexadecimal digits to n bytes. Nothing is validated: a character that is no digit counts as
// 255, and the byte it belongs to keeps the low 8 bits of the sum ("zz" gives EF). Callers check digits where
// it matters to them. The text must hold 2n characters.
void AtoH(const char* text, unsigned char* output, std::int32_t n);

// The same for a text of any length: digits missing at its end count as 0, what exceeds 2n is not read.
void AtoH(std::string_view text, unsigned char* output, std::int32_t n);
