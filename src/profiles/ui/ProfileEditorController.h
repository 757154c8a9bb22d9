#pragma once

#include "profiles/ProfileEditorRules.h"
#include "profiles/ProfileEditorValues.h"
#include "profiles/ui/ThresholdFields.h"
#include "survey/ProfileEditorSheet.h"

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

// The sheet in which one profile is made or changed. It works on its own copy of the list, loaded when it is opened
// and saved by OK. Stops with 1 for OK and 0 for Cancel. One sheet serves every opening: what an opening does not set
// shows what the one before left.
class ProfileEditorController final : public QDialog, public ProfileEditorSheet {
    Q_OBJECT

public:
    ProfileEditorController(ModalSheets& sheets, AlertPanels& alerts, ProfileStore& store, QWidget* parent = nullptr);
    ~ProfileEditorController() override;
    Q_DISABLE_COPY_MOVE(ProfileEditorController)

    void awakeFromNib();

    // The three openings: for a new profile, for the one in this row of the list, and for a network of a scan.
    void AddInit();
    void EditInit(std::int32_t row);
    [[nodiscard]] bool AddProfile(const ProfileProposal& proposal) override;
    void selectFirstTab() override;
    [[nodiscard]] QDialog& ProfileEditorWindow() override { return *this; }

    // Keeps the sheet open when a key is refused.
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
    // Writes the list; does nothing while there is none.
    void saveProfile();
    // 0 lists "WPA-NONE" as the third authentication, 1 "WPA-PSK"; the first item is selected. Other values do nothing.
    void setAuthenTypeComboText(int kind);
    void setAuthenTypeCombo(int index);
    void setEncryTypeCombo(int index);
    // Shows the alert of the first rule that the keys break.
    [[nodiscard]] bool VerifyKey();

private:
    void setUpSsidField();
    void connectControls();
    void beginEditing(bool isNewData);
    void clearKeys();
    void showSsid(const std::optional<SsidSelection>& selection);
    void showPowerSaving(bool powerSaving);
    void showKeys(const EditedProfile& profile);
    [[nodiscard]] ProfileControls controls() const;
    void releaseRecords(int code);

    ModalSheets& m_sheets;
    AlertPanels& m_alerts;
    ProfileStore& m_store;
    std::unique_ptr<Ui::ProfileEditor> m_form;
    ThresholdFields m_rtsThreshold;
    ThresholdFields m_fragThreshold;

    std::optional<ProfileList> records; // between an opening and its OK or Cancel
    std::int32_t selFlag { 0 }; // 1 when the last authentication choice was WPA
    std::array<WepKey, 4> m_keys {}; // Key1Material to Key4Material with their lengths, as converted last
    std::int32_t modifyIndex { 0 };
    ProfileOrigin m_origin; // IsNewData, copyBSSID and bHidden
};
