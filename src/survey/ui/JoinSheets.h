#pragma once

#include "survey/ConnectionRecord.h"
#include "survey/ui/HiddenSSIDController.h"
#include "survey/ui/SheetReceivers.h"
#include "survey/ui/WEPSettingController.h"

#include <functional>
#include <optional>

struct JoinSettings {
    NetworkChoice choice;
    std::unique_ptr<PROFILE_DATA> record;
};

// The sheets that ask for what a connection still lacks: the name of a hidden network, and the keys.
class JoinSheets final : private SecuritySettingsReceiver, private HiddenSSIDReceiver {
    Q_DISABLE_COPY_MOVE(JoinSheets)

public:
    // Returns whether the sheet ended with OK.
    using RunSheet = std::function<bool(QDialog&)>;

    JoinSheets(ModalSheets& sheets, AlertPanels& alerts, RunSheet runSheet);
    ~JoinSheets() override = default;

    void awakeFromNib();
    // Asks for what connecting to the entry's network lacks. Returns std::nullopt if the user cancels a sheet, and after
    // an alert if the network cannot be joined.
    [[nodiscard]] std::optional<JoinSettings> askForSettings(const BssidEntry& entry);

private:
    // Both return std::nullopt if the user cancels the sheet.
    [[nodiscard]] std::optional<NetworkName> askForHiddenName(const WLAN_BSSID_EX& network);
    [[nodiscard]] std::optional<SecuritySettings> askForSecuritySettings(const NetworkChoice& choice, bool tkip);
    void ReceiveWEPsetting(const SecuritySettings& settings) override;
    void ReceiveHiddenSSID(const NetworkName& HiddenSSIDtext) override;

    AlertPanels& m_alerts;
    RunSheet m_runSheet;
    WEPSettingController WEPSetting;
    HiddenSSIDController HiddenSSID;
    SecuritySettings m_securitySettings; // returned by the security sheet; empty while no sheet runs
    NetworkName m_hiddenName; // as the hidden-SSID sheet last returned it
};
