#include "crypto/HexDigits.h"

#include <cstddef>

namespace {

unsigned char byteOf(unsigned char high, unsigned char low)
{
    return static_cast<unsigned char>(high * 16 + low);
}

} // namespace

unsigned char BtoH(char character)
{
    if (character >= '0' && character <= '9')
        return static_cast<unsigned char>(character - '0');
    if (character >= 'A' && character <= 'F')
        return static_cast<unsigned char>(character - 'A' + 10);
    if (character >= 'a' && character <= 'f')
        return static_cast<unsigned char>(character - 'a' + 10);
    return 0xFF;
}

void AtoH(const char* text, unsigned char* output, std::int32_t n)
{
    for (std::int32_t i = 0; i < n; ++i, text += 2)
        output[i] = byteOf(BtoH(text[0]), BtoH(text[1]));
}

void AtoH(std::string_view text, unsigned char* output, std::int32_t n)
{
    const auto valueAt
        = [&](std::size_t position) -> unsigned char { return position < text.size() ? BtoH(text[position]) : 0; };
    std::size_t position = 0;
    for (std::int32_t i = 0; i < n; ++i, position += 2)
        output[i] = byteOf(valueAt(position), valueAt(position + 1));
}
