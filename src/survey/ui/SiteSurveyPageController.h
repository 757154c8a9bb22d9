#pragma once

#include "app/shared/Pages.h"
#include "platform/ui/TableDataSource.h"
#include "survey/AccessPoint.h"
#include "survey/ConnectionTasks.h"
#include "survey/TaskQueue.h"

#include <QWidget>

#include <memory>
#include <vector>

class AssertionHandler;
class RunLoop;
class Timer;
class VX7100Access;

namespace Ui {
class SiteSurveyPage;
}

// The page of the networks in range. Row n of its list is entry n of G_pBssidList, however the view is sorted.
class SiteSurveyPageController final : public QWidget,
                                       public SiteSurveyPage,
                                       public TableDataSource,
                                       private SurveyList {
    Q_OBJECT

public:
    SiteSurveyPageController(
        VX7100Access& adapter, RunLoop& runLoop, AssertionHandler& assertions, QWidget* parent = nullptr);
    ~SiteSurveyPageController() override;
    SiteSurveyPageController(const SiteSurveyPageController&) = delete;
    SiteSurveyPageController& operator=(const SiteSurveyPageController&) = delete;

    void awakeFromNib();

    void StartSiteSurveyTimer() override;
    void StopSiteSurveyTimer() override;
    // Rebuilds the rows. After a failed assertion the rows made so far stay in tableData, and the table shows none.
    void RefreshAPList() override;
    void ClearAPList() override;
    void UpdateConnectStatus(const QString& text) override;

    void OnTimer();
    void OnRescan();
    void DoTask();
    void ProbeConnectStatus();
    void resetFlag();
    // Queues the connection that the record describes; the page's timer runs it.
    void SetTaskQueue(std::unique_ptr<PROFILE_DATA> record);

    [[nodiscard]] int numberOfRowsInTableView() const override;
    [[nodiscard]] QVariant objectValueForTableColumn(QStringView identifier, int row) const override;
    void setObjectValue(const QVariant& value, QStringView identifier, int row) override;
    [[nodiscard]] QString toolTipForTableColumn(QStringView identifier, int row) const override;

private:
    void setUpTable();
    void RescanTimeFunc();
    void reloadData() override;
    void showWhyListIsEmpty();

    VX7100Access& Adapter;
    RunLoop& m_runLoop;
    AssertionHandler& m_assertions;
    std::unique_ptr<Ui::SiteSurveyPage> m_form;
    ::TaskQueue TaskQueue;
    std::unique_ptr<Timer> SiteSurveyTimer;
    std::vector<AccessPoint> tableData;
    ConnectionState m_connection;
};
