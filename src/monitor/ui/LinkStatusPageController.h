#pragma once

#include "monitor/LinkFigures.h"
#include "monitor/LinkHistory.h"

#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>

class AssertionHandler;
class QLabel;
class RunLoop;
class SiteSurveyPage;
class Timer;
class VX7100Access;
struct VX_802_11_LINK_COUNTERS;
namespace Ui {
class LinkStatusPage;
}

// The link status page. Reads the link from the driver and shows it every 2 s. The tick also updates the connection
// text of the site survey page and G_bCheckedProfileConnect, so it runs even while another tab is in front.
class LinkStatusPageController final : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LinkStatusPageController)

public:
    // The site survey page may be null. The arguments must outlive the page.
    LinkStatusPageController(VX7100Access& adapter, RunLoop& runLoop, AssertionHandler& assertions,
        SiteSurveyPage* siteSurveyPage, QWidget* parent = nullptr);
    ~LinkStatusPageController() override;

    // Reads the initial byte counts for the throughputs and starts the timer.
    void awakeFromNib();
    void OnTimer();

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    // Returns std::nullopt if there is no link or a failed assertion ended the tick.
    [[nodiscard]] std::optional<LinkSample> refresh();
    void showNoDevice();
    void showDisconnected();
    [[nodiscard]] std::optional<LinkSample> showConnected();
    [[nodiscard]] bool showChannel();
    void showThroughput(const VX_802_11_LINK_COUNTERS& counters, LinkSample& sample);
    void showLinkQuality(std::uint32_t rawQuality);
    void showSignal();
    void clearFigures();
    void updateConnectStatus(const QString& text);
    void reserveFigureWidth();

    std::unique_ptr<Ui::LinkStatusPage> m_ui;
    VX7100Access& Adapter;
    RunLoop& m_runLoop;
    AssertionHandler& m_assertions;
    SiteSurveyPage* m_siteSurveyPage;
    std::unique_ptr<Timer> m_timer;

    std::uint32_t TxCount { 0 }; // bytes, at the last tick
    std::uint32_t RxCount { 0 };
    std::uint32_t ChannelQuality { 0 }; // percent, smoothed; 0 before the first value
    std::uint32_t SignalQuality { 0 };
    QString LinkQualityGrade;
    QString LinkQualityPercent;
    QString SignalQualityGrade;
    QString SignalQualityPercent;
    // Whether the counts are from the previous tick. Otherwise their change covers more than one tick, and the plot
    // omits the throughputs.
    bool m_countsAreFresh { false };
};
