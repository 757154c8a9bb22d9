#pragma once

#include "app/shared/Pages.h"
#include "platform/ui/TableDataSource.h"
#include "profiles/ProfileItem.h"
#include "profiles/ProfileKeys.h"
#include "profiles/ui/ProfileEditorController.h"

#include <QWidget>

#include <cstdint>
#include <memory>
#include <vector>

class AlertPanels;
class ConnectionQueue;
class ModalSheets;
class ProfileStore;
class RunLoop;
class Timer;

namespace Ui {
class ProfilePage;
}

// The page of the stored profiles. Row n of its list is profile n of the store, however the view is sorted.
class ProfilePageController final : public QWidget, public ProfilePage, public TableDataSource {
    Q_OBJECT

public:
    // What is passed outlives the page.
    ProfilePageController(RunLoop& runLoop, AlertPanels& alerts, ModalSheets& sheets, ProfileStore& store,
        ConnectionQueue& siteSurveyPage, QWidget* parent = nullptr);
    ~ProfilePageController() override;
    Q_DISABLE_COPY_MOVE(ProfilePageController)

    void awakeFromNib();
    [[nodiscard]] ProfileEditorSheet& profileEditor() { return ProfileEditor; }

    void OnTimer();
    void ClearProfileList();
    // Loads the store and rebuilds the rows.
    void RefreshProfileList() override;
    // Queues the stored copy of the active profile, if there is one. That copy does not follow later edits.
    void CheckProfileSettingForConnect() override;
    void DisabledActivateProfile() override;

    void OnAdd();
    void OnEdit();
    void OnDelete(); // asks nothing
    // Queues the selected profile and makes it the active one; without a selection does nothing.
    void OnActivate();

    [[nodiscard]] int numberOfRowsInTableView() const override;
    [[nodiscard]] QVariant objectValueForTableColumn(QStringView identifier, int row) const override;
    [[nodiscard]] QString imageTextForTableColumn(QStringView identifier, int row) const override;
    // Changes the row that is shown, until the next refresh, and not the profile; saves the list as it is.
    void setObjectValue(const QVariant& value, QStringView identifier, int row) override;
    [[nodiscard]] QString toolTipForTableColumn(QStringView identifier, int row) const override;

private:
    void setUpTable();
    void reloadData();
    void runEditor();
    // The selected row; -1, after an alert, when none is selected.
    [[nodiscard]] int selectedRowOrAlert(const QString& message);
    void queue(const Profile& profile);

    RunLoop& m_runLoop;
    AlertPanels& m_alerts;
    ModalSheets& m_sheets;
    ProfileStore& m_store;
    ConnectionQueue& SiteSurveyPage;
    std::unique_ptr<Ui::ProfilePage> m_form;
    ProfileEditorController ProfileEditor;
    std::unique_ptr<Timer> m_timer;

    std::vector<ProfileItem> profileData;
    ProfileList records;
    ProfileList recordActivate; // the record of the active profile, or nothing
    bool m_loaded { false };
    std::int32_t CurrentSelectedItem { -1 }; // the row activated last, which keeps its number when rows move
};
