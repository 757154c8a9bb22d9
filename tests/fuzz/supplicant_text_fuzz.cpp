// Replies and events of the supplicant.

#include "services/linux/wire/SupplicantText.h"
#include "tests/fuzz/Require.h"

#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto event = supplicantEvent(text))
        require(event->text.size() < size);
    require(supplicantStatus(text).ssid.size() <= size);
    if (const auto address = addressFromText(text))
        require(addressFromText(addressText(*address)) == address);
    return 0;
}
