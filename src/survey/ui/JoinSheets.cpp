#include "survey/ui/JoinSheets.h"

#include "app/shared/Trace.h"
#include "driver/MacAddressText.h"
#include "survey/keys/SecurityControlRules.h"

#include <span>
#include <utility>

namespace {

constexpr char className[] = "SiteSurveyPageController"; // the page receives what the sheets return

} // namespace

JoinSheets::JoinSheets(ModalSheets& sheets, AlertPanels& alerts, RunSheet runSheet)
    : m_runSheet(std::move(runSheet))
    , WEPSetting(sheets, alerts, *this)
    , HiddenSSID(sheets, *this)
{
}

void JoinSheets::awakeFromNib()
{
    WEPSetting.awakeFromNib();
}

std::optional<NetworkName> JoinSheets::askForHiddenName(const WLAN_BSSID_EX& network)
{
    HiddenSSID.setNetwork(macAddressText(network.MacAddress));
    HiddenSSID.focusName();
    if (!m_runSheet(HiddenSSID))
        return std::nullopt;
    return m_hiddenName;
}

std::optional<SecuritySettings> JoinSheets::askForSecuritySettings(const NetworkChoice& choice, bool tkip)
{
    const NetworkName name = NetworkName::upToZero(std::as_bytes(std::span(choice.ssid.Ssid)));
    WEPSetting.setNetwork(name, macAddressText(choice.network.MacAddress));
    const bool wpa = choice.wpaClass != WpaClass::NoWpa;
    if (wpa)
        WEPSetting.setAuthenTypeComboText(choice.wpaClass == WpaClass::WpaNone ? 0 : 1);
    WEPSetting.setAuthenTypeCombo(wpa ? wpaAuthenTypeIndex : 0);
    WEPSetting.OnSelchangeAuthType();
    // WEP without WPA; otherwise the network's cipher, which is AES unless it is TKIP.
    WEPSetting.setEncryTypeCombo(wpa && tkip ? 0 : 1);
    WEPSetting.OnSelchangeEncryptionType();
    WEPSetting.clearText();
    WEPSetting.focusFirstKey();
    if (!m_runSheet(WEPSetting))
        return std::nullopt;
    return std::exchange(m_securitySettings, {}); // do not keep the keys
}

void JoinSheets::ReceiveWEPsetting(const SecuritySettings& settings)
{
    traceEntry(className, "ReceiveWEPsetting");
    m_securitySettings = settings;
}

void JoinSheets::ReceiveHiddenSSID(const NetworkName& HiddenSSIDtext)
{
    traceEntry(className, "ReceiveHiddenSSID");
    m_hiddenName = HiddenSSIDtext;
}
