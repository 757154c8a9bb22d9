// Information elements as networks announce them.

#include "services/linux/wire/InformationElements.h"
#include "services/linux/wire/SecurityElements.h"
#include "tests/fuzz/Require.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Octets elements(data, data + size);
    require(networkName(elements).size() <= 32);
    require(announcedRates(elements).size() <= size);
    (void)atimWindowKusec(elements);
    const auto rsn = rsnElement(elements);
    const auto wpa = wpaElement(elements);

    // What is listed can be read again, says the same, and is not much longer.
    const Octets listed = listedElements(elements);
    constexpr std::size_t madeBytes = 24;
    require(listed.size() <= size + madeBytes);
    require(networkName(listed) == networkName(elements));
    require(announcedRates(listed) == announcedRates(elements));
    if (wpa)
        require(wpaElement(listed)->acceptsPresharedKey() == wpa->acceptsPresharedKey());
    else if (rsn && !wpaElement(listed))
        require(listed.size() > 1 && listed[0] == elementVendor); // a malformed WPA element stays as it is
    // Once listed, a list stays as it is.
    require(listedElements(listed) == listed);
    return 0;
}
