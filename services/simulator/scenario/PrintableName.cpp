#include "services/simulator/scenario/PrintableName.h"

#include "services/simulator/scenario/ScenarioValues.h"

#include <algorithm>

namespace {

bool isContinuation(char character)
{
    return (static_cast<unsigned char>(character) & 0xC0U) == 0x80;
}

// The length in bytes of the printable UTF-8 character at the start of the text; 0 if there is none.
std::size_t printableLength(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80)
        return lead >= 0x20 && lead != 0x7F && lead != '\\' ? 1 : 0;
    const std::size_t length = lead >= 0xC2 && lead < 0xE0 ? 2 : lead >= 0xE0 && lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (lead < 0xC2 || length == 0 || text.size() < length)
        return 0;
    if (!std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length), isContinuation))
        return 0;
    // Overlong forms, surrogates, code points above U+10FFFF, and the control characters U+0080 to U+009F.
    const auto second = static_cast<unsigned char>(text[1]);
    const bool isForbidden = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0)
        || (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90) || (lead == 0xC2 && second < 0xA0);
    return isForbidden ? 0 : length;
}

} // namespace

std::string printableName(std::string_view ssid)
{
    std::string text;
    while (!ssid.empty()) {
        const std::size_t length = printableLength(ssid);
        if (length == 0)
            text += "\\x" + hexOfBytes(ssid.substr(0, 1));
        else
            text += ssid.substr(0, length);
        ssid.remove_prefix(std::max<std::size_t>(1, length));
    }
    return text;
}

std::size_t widthOfText(const std::string& text)
{
    return text.size() - static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isContinuation));
}
