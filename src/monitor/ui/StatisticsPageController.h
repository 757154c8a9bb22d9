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

// The statistics page. Shows the driver's frame counters every 2 s, even while another tab is in front. The counters
// are shown as reported, without a baseline.
class StatisticsPageController final : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(StatisticsPageController)

public:
    // The arguments must outlive the page.
    StatisticsPageController(VX7100Access& adapter, RunLoop& runLoop, QWidget* parent = nullptr);
    ~StatisticsPageController() override;

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
    std::array<QLabel*, 10> m_counters {};
};
