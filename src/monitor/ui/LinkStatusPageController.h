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

// The link status page: every 2 s it reads the link from the driver and shows it, also while it is not in front, since
// its tick keeps the site survey page's connection text and G_bCheckedProfileConnect.
class LinkStatusPageController : public QWidget {
    Q_OBJECT

public:
    // The site survey page may be absent. What is passed outlives the page.
    LinkStatusPageController(VX7100Access& adapter, RunLoop& runLoop, AssertionHandler& assertions,
        SiteSurveyPage* siteSurveyPage, QWidget* parent = nullptr);
    ~LinkStatusPageController() override;
    Q_DISABLE_COPY_MOVE(LinkStatusPageController)

    // Takes the driver's counts as the starting point of the throughputs and starts the timer.
    void awakeFromNib();
    void OnTimer();

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    // One refresh. Nothing where there is no link, or where a failed assertion ended the tick.
    [[nodiscard]] std::optional<LinkSample> refresh();
    void showNoDevice();
    void showDisconnected();
    [[nodiscard]] std::optional<LinkSample> showConnected();
    [[nodiscard]] bool showChannel();
    void showThroughput(const VX_802_11_LINK_COUNTERS& counters, LinkSample& sample);
    void showLinkQuality(std::uint32_t rawQuality);
    void showSignal();
    void emptyFigures();
    void updateConnectStatus(const QString& text);
    void reserveFigureWidth();

    std::unique_ptr<Ui::LinkStatusPage> m_ui;
    VX7100Access& Adapter;
    RunLoop& m_runLoop;
    AssertionHandler& m_assertions;
    SiteSurveyPage* m_siteSurveyPage;
    std::unique_ptr<Timer> m_timer;

    std::uint32_t TxCount { 0 }; // bytes, as last read
    std::uint32_t RxCount { 0 };
    std::uint32_t ChannelQuality { 0 }; // percent, smoothed; 0 while there is none yet
    std::uint32_t SignalQuality { 0 };
    QString LinkQualityGrade;
    QString LinkQualityPercent;
    QString SignalQualityGrade;
    QString SignalQualityPercent;
    // The counts were read one tick ago: otherwise their change says nothing about this tick alone, and the plot leaves
    // the throughputs out.
    bool m_countsAreFresh { false };
};
