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
class VX7100Access;

namespace Ui {
class ProfilePage;
}

// The page that lists the stored profiles. Row n is profile n of the store, however the view is sorted.
class ProfilePageController final : public QWidget, public ProfilePage, public TableDataSource {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ProfilePageController)

public:
    // The arguments must outlive the page.
    ProfilePageController(VX7100Access& adapter, RunLoop& runLoop, AlertPanels& alerts, ModalSheets& sheets,
        ProfileStore& store, ConnectionQueue& siteSurveyPage, QWidget* parent = nullptr);
    ~ProfilePageController() override;

    void awakeFromNib();
    [[nodiscard]] ProfileEditorSheet& profileEditor() { return ProfileEditor; }

    void OnTimer();
    void ClearProfileList();
    // Loads the store and rebuilds the rows.
    void RefreshProfileList() override;
    // Queues the stored entry of the active profile, if any. Later edits of the profile do not change that entry.
    void CheckProfileSettingForConnect() override;
    void DisabledActivateProfile() override;

    void OnAdd();
    void OnEdit();
    void OnDelete(); // without confirmation
    // Queues the selected profile and makes it the active one; a no-op without a selection.
    void OnActivate();

    [[nodiscard]] int numberOfRowsInTableView() const override;
    [[nodiscard]] QVariant objectValueForTableColumn(QStringView identifier, int row) const override;
    [[nodiscard]] QString imageTextForTableColumn(QStringView identifier, int row) const override;
    // Changes the displayed row until the next refresh, not the profile; saves the unchanged list.
    void setObjectValue(const QVariant& value, QStringView identifier, int row) override;
    [[nodiscard]] QString toolTipForTableColumn(QStringView identifier, int row) const override;

private:
    void setUpTable();
    void reloadData();
    // How the connection of a profile proceeds; empty if the last connection was made from the site survey.
    [[nodiscard]] QString connectionText() const;
    void runEditor();
    // The selected row; -1 after an alert if no row is selected.
    [[nodiscard]] int selectedRowOrAlert(const QString& message);
    void queue(const Profile& profile);

    VX7100Access& Adapter;
    RunLoop& m_runLoop;
    AlertPanels& m_alerts;
    ModalSheets& m_sheets;
    ProfileStore& m_store;
    ConnectionQueue& SiteSurveyPage;
    std::unique_ptr<Ui::ProfilePage> m_ui;
    ProfileEditorController ProfileEditor;
    std::unique_ptr<Timer> m_timer;

    std::vector<ProfileItem> profileData;
    ProfileList records;
    ProfileList recordActivate; // the entry of the active profile, or empty
    bool m_loaded { false };
    std::int32_t CurrentSelectedItem { -1 }; // the last activated row; does not follow when rows move
};
