#include "survey/NetworkSecurity.h"

#include "app/shared/Trace.h"
#include "driver/records/DisplayNames.h"
#include "survey/WpaElement.h"

WpaClass wpaClassOf(const BssidEntry& entry)
{
    traceEntry("SiteSurveyPageController", "IsItemWPA");
    const auto element = findWpaElement(entry);
    if (!element)
        return WpaClass::Unknown;
    if (const char* const cipher = cipherText(*element))
        trace("**** SiteSurveyPageController -  RefreshAPList --> strEncryption = %s ****\n", cipher);

    const auto suite = firstAuthenticationSuite(entry, *element, pairwiseSuiteCount(entry, *element));
    const bool adHoc = entry.fixedPart().InfrastructureMode == Ndis802_11IBSS;
    if (!suite)
        return WpaClass::Unknown;
    WpaClass result = WpaClass::Unknown;
    const char* text = nullptr;
    switch (*suite) {
    case 1:
        result = WpaClass::Enterprise;
        text = "WPA";
        break;
    case 0:
    case 2:
        result = adHoc ? WpaClass::None : WpaClass::PreSharedKey;
        text = adHoc ? "WPA-NONE" : "WPA-PSK";
        break;
    default:
        return WpaClass::Unknown;
    }
    trace("**** SiteSurveyPageController -  RefreshAPList --> strAuthentication = %s ****\n", text);
    return result;
}

const char* encryptionTextOf(const BssidEntry& entry)
{
    const auto element = findWpaElement(entry);
    if (const char* const cipher = element ? cipherText(*element) : nullptr)
        return cipher;
    return strAryEncryption[entry.fixedPart().Privacy != 0 ? 0 : 1].data();
}
