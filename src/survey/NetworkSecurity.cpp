#include "survey/NetworkSecurity.h"

#include "app/shared/Trace.h"
#include "survey/DisplayNames.h"

WpaClass wpaClassOf(const BssidEntry& entry, const WpaElement& element, std::uint16_t pairwiseSuites)
{
    const auto suite = firstAkmSuite(entry, element, pairwiseSuites);
    if (!suite)
        return WpaClass::NoWpa;
    switch (*suite) {
    case 1:
        return WpaClass::Enterprise;
    case 0:
    case 2:
        return entry.fixedPart().InfrastructureMode == Ndis802_11IBSS ? WpaClass::WpaNone : WpaClass::PreSharedKey;
    default:
        return WpaClass::NoWpa;
    }
}

WpaClass IsItemWPA(const BssidEntry& entry)
{
    traceEntry("SiteSurveyPageController", "IsItemWPA");
    const auto element = findWpaElement(entry);
    if (!element)
        return WpaClass::NoWpa;
    if (const char* const cipher = cipherText(*element))
        trace("**** SiteSurveyPageController -  RefreshAPList --> strEncryption = %s ****\n", cipher);
    const WpaClass wpaClass = wpaClassOf(entry, *element, pairwiseSuiteCount(entry, *element));
    if (wpaClass != WpaClass::NoWpa)
        trace("**** SiteSurveyPageController -  RefreshAPList --> strAuthentication = %s ****\n",
            authenticationText(wpaClass));
    return wpaClass;
}

const char* authenticationText(WpaClass wpaClass)
{
    switch (wpaClass) {
    case WpaClass::NoWpa:
        break;
    case WpaClass::Enterprise:
        return "WPA";
    case WpaClass::PreSharedKey:
        return "WPA-PSK";
    case WpaClass::WpaNone:
        return "WPA-NONE";
    }
    return "Unknown";
}

const char* encryptionTextOf(const BssidEntry& entry)
{
    const auto element = findWpaElement(entry);
    if (const char* const cipher = element ? cipherText(*element) : nullptr)
        return cipher;
    return strAryEncryption[entry.fixedPart().Privacy != 0 ? 0 : 1].data();
}
