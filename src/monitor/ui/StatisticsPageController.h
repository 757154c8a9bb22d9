#pragma once

#include <QWidget>

#include <array>
#include <memory>

class QLabel;
class RunLoop;
class Timer;
class VX7100Access;
namespace Ui {
class StatisticsPage;
}

// The statistics page: every 2 s it shows the driver's frame counters as the driver reports them, also while it is not
// in front. It keeps no baseline of its own.
class StatisticsPageController : public QWidget {
    Q_OBJECT

public:
    // What is passed outlives the page.
    StatisticsPageController(VX7100Access& adapter, RunLoop& runLoop, QWidget* parent = nullptr);
    ~StatisticsPageController() override;
    Q_DISABLE_COPY_MOVE(StatisticsPageController)

    void awakeFromNib();
    void OnTimer();
    void OnResetCounter();

protected:
    void changeEvent(QEvent* event) override;

private:
    void showZeros();
    void alignColumns();

    std::unique_ptr<Ui::StatisticsPage> m_ui;
    VX7100Access& Adapter;
    RunLoop& m_runLoop;
    std::unique_ptr<Timer> m_timer;
    std::array<QLabel*, 10> m_counters {}; // in the order of the form
    std::array<QLabel*, 10> m_captions {};
};
