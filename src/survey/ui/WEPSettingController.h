#pragma once

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

// The security sheet: authentication, encryption and the keys of a network to be joined. Stops with 1 for OK, after
// the settings were handed to the site survey, and with 0 for Cancel.
class WEPSettingController final : public QDialog {
    Q_OBJECT

public:
    WEPSettingController(
        ModalSheets& sheets, AlertPanels& alerts, SecuritySettingsReceiver& siteSurvey, QWidget* parent = nullptr);
    ~WEPSettingController() override;
    WEPSettingController(const WEPSettingController&) = delete;
    WEPSettingController& operator=(const WEPSettingController&) = delete;

    void awakeFromNib();

    // 0 lists "WPA-NONE" as the third authentication, 1 "WPA-PSK"; the first item is selected. Other values do nothing.
    void setAuthenTypeComboText(int kind);
    void setAuthenTypeCombo(int index);
    void setEncryTypeCombo(int index);
    [[nodiscard]] int getAuthenTypeCombo() const;
    // Empties the key fields.
    void clearText();
    // The keyboard goes to the field that the user has to fill in.
    void focusFirstKey();

    void OnAuthType();
    void OnEncryType();
    void OnSelchangeAuthType();
    void OnSelchangeEncryptionType();
    void OnOK();
    void OnCANCEL();

private:
    void connectControls();
    // Shows the alert of the first rule that the keys break.
    [[nodiscard]] bool VerifyKey(const KeyControls& controls);

    ModalSheets& m_sheets;
    AlertPanels& m_alerts;
    SecuritySettingsReceiver& SiteSurvey;
    std::unique_ptr<Ui::WEPSetting> m_form;

    SecuritySettings m_settings; // keeps the key bytes of the last conversion
    std::int32_t selFlag { 0 }; // 1 while the authentication is WPA
    std::int32_t selAuth { 0 }; // the indices that the fields were last enabled for
    std::int32_t selEncry { 0 };
};
