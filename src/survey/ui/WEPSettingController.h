#pragma once

#include "platform/NetworkName.h"
#include "survey/ConnectionRecord.h"

#include <QDialog>

#include <cstdint>
#include <memory>

class AlertPanels;
class ModalSheets;
class SecuritySettingsReceiver;

namespace Ui {
class WEPSetting;
}

// The security sheet: authentication, encryption and keys for joining a network. Stops with 1 for OK, after passing the
// settings to the site survey, and with 0 for Cancel.
class WEPSettingController final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(WEPSettingController)

public:
    WEPSettingController(
        ModalSheets& sheets, AlertPanels& alerts, SecuritySettingsReceiver& siteSurvey, QWidget* parent = nullptr);
    ~WEPSettingController() override;

    void awakeFromNib();

    // Lists authenticationItems(kind) (SecurityControlRules.h) and selects the first. A no-op for any other kind.
    void setAuthenTypeComboText(int kind);
    void setAuthenTypeCombo(int index);
    void setEncryTypeCombo(int index);
    [[nodiscard]] int getAuthenTypeCombo() const;
    // Says in the sheet which network the settings are for: its name, or the address of its access point without one.
    void setNetwork(const NetworkName& name, const QString& bssid);
    // Clears the key fields and hides their text.
    void clearText();
    // Focuses the field that the user has to fill in.
    void focusFirstKey();

    void OnAuthType();
    void OnEncryType();
    void OnSelchangeAuthType();
    void OnSelchangeEncryptionType();
    void OnOK();
    void OnCANCEL();
    // Shows an alert for the first rule that the keys break.
    [[nodiscard]] bool VerifyKey();

private:
    void connectControls();
    [[nodiscard]] KeyControls controls() const;

    ModalSheets& m_sheets;
    AlertPanels& m_alerts;
    SecuritySettingsReceiver& SiteSurvey;
    std::unique_ptr<Ui::WEPSetting> m_ui;

    SecuritySettings m_settings; // keeps the WEP keys of the last conversion; WPAPSK is cleared after use
    std::int32_t selFlag { 0 }; // 1 while the authentication is WPA
    std::int32_t selAuth { 0 }; // the indices for which the fields were last enabled
    std::int32_t selEncry { 0 };
};
