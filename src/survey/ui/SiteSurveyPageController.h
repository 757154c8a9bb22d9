#pragma once

#include "app/shared/Pages.h"
#include "platform/NetworkName.h"
#include "platform/ui/RowMenu.h"
#include "platform/ui/TableDataSource.h"
#include "survey/AccessPoint.h"
#include "survey/ConnectionRecord.h"
#include "survey/RescanProgress.h"
#include "survey/connection/ConnectionQueue.h"
#include "survey/connection/ConnectionTasks.h"
#include "survey/connection/JoinProgress.h"
#include "survey/connection/TaskQueue.h"
#include "survey/ui/JoinSheets.h"
#include "survey/ui/NetworkViews.h"

#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

class AlertPanels;
class AssertionHandler;
class ModalSheets;
class ProfileEditorSheet;
class QKeySequence;
class QPushButton;
class RunLoop;
class Timer;
class VX7100Access;
class WindowSettings;

namespace Ui {
class SiteSurveyPage;
}

// The page that lists the networks in range. Row n is entry n of the scan list, however the view is sorted.
class SiteSurveyPageController final : public QWidget,
                                       public SiteSurveyPage,
                                       public TableDataSource,
                                       public ConnectionQueue,
                                       private SurveyList {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SiteSurveyPageController)

public:
    SiteSurveyPageController(VX7100Access& adapter, RunLoop& runLoop, AssertionHandler& assertions, AlertPanels& alerts,
        ModalSheets& sheets, QWidget* parent = nullptr);
    ~SiteSurveyPageController() override;

    void awakeFromNib();
    // Notified of connections made here and of new profiles; may be null.
    void setProfilePage(ProfilePage* profilePage) { m_profilePage = profilePage; }
    // May be null; then no profile can be created here.
    void setProfileEditor(ProfileEditorSheet* profileEditor) { ProfileEditor = profileEditor; }

    // Restores the order in which the user last sorted the list, and keeps it in the settings, which outlive the page.
    void keepSortOrderIn(WindowSettings& settings);

    void StartSiteSurveyTimer() override;
    void StopSiteSurveyTimer() override;
    // Rebuilds the rows. After a failed assertion tableData keeps the rows built so far, and the table shows none.
    void RefreshAPList() override;
    void ClearAPList() override;
    void UpdateConnectStatus(const QString& text) override;

    void OnTimer();
    void OnRescan();
    // Joins the selected network. Sheets ask for a missing name or key.
    void OnConnect();
    // Opens the profile editor with the selected network. Sends nothing to the driver.
    void OnAddProfile();
    void DoTask();
    void ProbeConnectStatus();
    void resetFlag() override;
    void SetTaskQueue(std::unique_ptr<PROFILE_DATA> record) override;
    [[nodiscard]] bool hasQueuedConnection() const override { return !m_queuedConnection.expired(); }
    [[nodiscard]] const JoinProgress& joinProgress() const override { return m_joinProgress; }

    [[nodiscard]] int numberOfRowsInTableView() const override;
    [[nodiscard]] QVariant objectValueForTableColumn(QStringView identifier, int row) const override;
    [[nodiscard]] QString imageTextForTableColumn(QStringView identifier, int row) const override;
    void setObjectValue(const QVariant& value, QStringView identifier, int row) override;
    [[nodiscard]] QString toolTipForTableColumn(QStringView identifier, int row) const override;

private:
    void setUpKey(const QKeySequence& keys, QPushButton& button);
    [[nodiscard]] QString emptyText() const;
    void RescanTimeFunc();
    void askForRescan();
    void clearRows();
    void reloadData() override;
    void showJoinedRow();
    void showJoinProgress();
    // Shown in place of the progress until the user does something else.
    void showNotice(const QString& text);
    void queueAndFollow(std::unique_ptr<PROFILE_DATA> record, const NDIS_802_11_SSID& ssid, bool typedName);

    // The entry of the network that the selected row shows. Returns std::nullopt after an alert if no row is selected,
    // after a notice if the network has left the list, and without a word if the list is empty.
    [[nodiscard]] std::optional<BssidEntry> selectedEntry();
    [[nodiscard]] std::optional<BssidEntry> entryInNewList(AccessPoint displayed);
    // Returns whether the sheet ended with OK. The page's actions are disabled until then.
    [[nodiscard]] bool runSheet(QDialog& sheet);
    void join(const NetworkChoice& choice, std::unique_ptr<PROFILE_DATA> record);

    VX7100Access& Adapter;
    RunLoop& m_runLoop;
    AssertionHandler& m_assertions;
    AlertPanels& m_alerts;
    ModalSheets& m_sheets;
    ProfilePage* m_profilePage { nullptr };
    ProfileEditorSheet* ProfileEditor { nullptr };
    std::unique_ptr<Ui::SiteSurveyPage> m_ui;
    ::TaskQueue TaskQueue;
    std::unique_ptr<Timer> SiteSurveyTimer;
    NetworkViews m_views;
    RowMenu m_rowMenu;
    std::vector<AccessPoint> tableData;
    ConnectionState m_connection;
    JoinProgress m_joinProgress;
    QString m_notice;
    RescanProgress m_rescanProgress;
    std::weak_ptr<ProfileData> m_queuedConnection; // the one that m_joinProgress follows

    JoinSheets m_joinSheets;
    std::int32_t CurrentSelectedItem { 0 }; // 1-based; 0 if no row was selected
};
