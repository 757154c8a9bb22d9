#include "survey/ui/JoinSheets.h"

#include "app/shared/Trace.h"
#include "driver/MacAddressText.h"
#include "platform/AlertPanels.h"
#include "survey/NetworkSecurity.h"
#include "survey/keys/SecurityControlRules.h"

#include <span>
#include <string_view>
#include <utility>

namespace {

constexpr char className[] = "SiteSurveyPageController"; // the page receives what the sheets return

} // namespace

JoinSheets::JoinSheets(ModalSheets& sheets, AlertPanels& alerts, RunSheet runSheet)
    : m_alerts(alerts)
    , m_runSheet(std::move(runSheet))
    , WEPSetting(sheets, alerts, *this)
    , HiddenSSID(sheets, *this)
{
}

void JoinSheets::awakeFromNib()
{
    WEPSetting.awakeFromNib();
}

std::optional<JoinSettings> JoinSheets::askForSettings(const BssidEntry& entry)
{
    // Copied: a rescan may replace the list while a sheet is open.
    NetworkChoice choice { entry.fixedPart(), IsItemWPA(entry), false, {} };
    choice.ssid = choice.network.Ssid;
    const bool tkip = std::string_view(encryptionTextOf(entry)) == "TKIP";
    if (choice.wpaClass == WpaClass::Enterprise) {
        m_alerts.NSRunAlertPanel(
            QStringLiteral("WPA-Enterprise isn't supported yet!!!"), QString(), QStringLiteral("OK"));
        return std::nullopt;
    }
    if (isHiddenNetwork(choice.network)) {
        const auto name = askForHiddenName(choice.network);
        if (!name)
            return std::nullopt;
        choice.hidden = true;
        choice.ssid = name->record();
    }
    if (!needsSecuritySettings(choice))
        return JoinSettings { choice, connectionRecord(choice, nullptr) };
    const auto settings = askForSecuritySettings(choice, tkip);
    if (!settings)
        return std::nullopt;
    return JoinSettings { choice, connectionRecord(choice, &*settings) };
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
