#pragma once

#include "profiles/ProfileEditorRules.h"
#include "profiles/ProfileEditorValues.h"
#include "profiles/ui/ThresholdFields.h"
#include "survey/connection/ProfileEditorSheet.h"

#include <QDialog>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

class AlertPanels;
class ModalSheets;
class ProfileStore;

namespace Ui {
class ProfileEditor;
}

// The sheet that creates or edits one profile. It works on its own copy of the list, loaded when the sheet opens and saved
// by OK. Stops with 1 for OK and 0 for Cancel. The sheet is reused: controls that an opening does not set keep their
// values.
class ProfileEditorController final : public QDialog, public ProfileEditorSheet {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ProfileEditorController)

public:
    ProfileEditorController(ModalSheets& sheets, AlertPanels& alerts, ProfileStore& store, QWidget* parent = nullptr);
    ~ProfileEditorController() override;

    void awakeFromNib();

    // Prepare the sheet for a new profile, for the profile in a row of the list, and for a scanned network.
    void AddInit();
    void EditInit(std::int32_t row);
    [[nodiscard]] bool AddProfile(const ProfileProposal& proposal) override;
    void selectFirstTab() override;
    [[nodiscard]] QDialog& ProfileEditorWindow() override { return *this; }

    // Keeps the sheet open if a key is refused.
    void OnOK();
    void OnCANCEL();
    void OnNetworkType();
    void OnAuthType();
    void OnEncryType();
    void OnSelchangeAuthType();
    void OnSelchangeEncryptionType();
    void OnSelRTS();
    void OnRtsSlider();
    void OnSelFrag();
    void OnFragSlider();

    // Fills the SSID list with the names of the current scan result.
    void GetBssidList();
    [[nodiscard]] QString GetNextProfileName() const;
    [[nodiscard]] Profile createProfileData();
    // Writes the list; a no-op while the sheet is closed.
    void saveProfile();
    // 0 lists the authentications of an ad hoc network, 1 those of an access point (SecurityControlRules.h), and selects
    // the first. Other values do nothing.
    void setAuthenTypeComboText(int kind);
    void setAuthenTypeCombo(int index);
    void setEncryTypeCombo(int index);
    // Shows an alert for the first rule that the keys break, then focuses the key.
    [[nodiscard]] bool VerifyKey();

private:
    void connectControls();
    void beginEditing(bool isNewData);
    void showSubject(const QString& subject);
    void enableNetworkTypeFields();
    void clearKeys();
    void showPowerSaving(bool powerSaving);
    void showKeys(const EditedProfile& profile);
    [[nodiscard]] ProfileControls controls() const;
    void releaseRecords(int code);

    ModalSheets& m_sheets;
    AlertPanels& m_alerts;
    ProfileStore& m_store;
    std::unique_ptr<Ui::ProfileEditor> m_ui;
    ThresholdFields m_rtsThreshold;
    ThresholdFields m_fragThreshold;

    std::optional<ProfileList> records; // while the sheet is open
    std::int32_t selFlag { 0 }; // 1 when the last authentication choice was WPA
    std::array<WepKey, wepKeyCount> m_keys {}; // the last converted Key1Material to Key4Material with their lengths
    std::int32_t modifyIndex { 0 };
    ProfileOrigin m_origin; // IsNewData, copyBSSID and bHidden
};
