#include "monitor/ui/LinkStatusPageController.h"

#include "app/shared/CardPresence.h"
#include "app/shared/Pages.h"
#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/VX7100Access.h"
#include "driver/records/ChannelTable.h"
#include "driver/records/NdisRecords.h"
#include "driver/records/Oids.h"
#include "driver/records/VxRecords.h"
#include "platform/AssertionHandler.h"
#include "platform/ByteText.h"
#include "platform/NetworkName.h"
#include "platform/RunLoop.h"
#include "ui_LinkStatusPage.h"

#include <QEvent>
#include <QLabel>

#include <algorithm>
#include <array>
#include <chrono>
#include <span>

namespace {

constexpr char className[] = "LinkStatusPageController";
constexpr std::chrono::milliseconds refreshInterval { 2000 };
constexpr int unknownFrequencyLine = 169;
constexpr int maxStatusLines = 3;

QString disconnectedText()
{
    return QStringLiteral("** Disconnected **");
}

QString radioOffText()
{
    return QStringLiteral("Radio Status <--> OFF");
}

} // namespace

LinkStatusPageController::LinkStatusPageController(VX7100Access& adapter, RunLoop& runLoop,
    AssertionHandler& assertions, SiteSurveyPage* siteSurveyPage, QWidget* parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::LinkStatusPage>())
    , Adapter(adapter)
    , m_runLoop(runLoop)
    , m_assertions(assertions)
    , m_siteSurveyPage(siteSurveyPage)
{
    traceEntry(className, "init");
    m_ui->setupUi(this);
    reserveFigureWidth();
}

LinkStatusPageController::~LinkStatusPageController() = default;

void LinkStatusPageController::awakeFromNib()
{
    traceEntry(className, "awakeFromNib");
    VX_802_11_LINK_COUNTERS counters {};
    m_countsAreFresh = queryRecord(Adapter, VX_OID_802_11_LINK_COUNTERS, counters);
    TxCount = counters.TxCount;
    RxCount = counters.RxCount;
    ChannelQuality = 0;
    SignalQuality = 0;
    m_ui->LinkQualityState->setRange(0, 100);
    m_ui->SignalStrengthState->setRange(0, 100);
    m_timer = m_runLoop.scheduleRepeatingTimer(refreshInterval, [this] { OnTimer(); });
}

void LinkStatusPageController::OnTimer()
{
    traceEntry(className, "OnTimer");
    const auto sample = refresh();
    m_countsAreFresh = sample.has_value();
    m_ui->Plot->append(sample);
}

std::optional<LinkSample> LinkStatusPageController::refresh()
{
    std::uint32_t mediaState = NdisMediaStateConnected;
    if (G_bDeviceExist == 0 || !queryRecord(Adapter, OID_GEN_MEDIA_CONNECT_STATUS, mediaState)) {
        showNoDevice();
        return std::nullopt;
    }
    if (mediaState != NdisMediaStateConnected) {
        showDisconnected();
        return std::nullopt;
    }
    return showConnected();
}

void LinkStatusPageController::showNoDevice()
{
    cardSwitchOn.reset();
    updateConnectStatus(disconnectedText());
    m_ui->Status->setText(QStringLiteral("No Device!!"));
    clearFigures();
}

void LinkStatusPageController::showDisconnected()
{
    if (G_bRadio == 0) {
        m_ui->Status->setText(radioOffText());
    } else {
        VX_802_11_STA_CONFIG configuration {};
        if (queryRecord(Adapter, VX_OID_802_11_STA_CONFIG, configuration))
            cardSwitchOn = configuration.HwRadioStatus != 0;
        m_ui->Status->setText(configuration.HwRadioStatus != 0 ? QStringLiteral("Disconnected") : radioOffText());
    }
    clearFigures();
    updateConnectStatus(disconnectedText());
    if (G_configFromProfile != 0)
        G_bCheckedProfileConnect = 0;
}

std::optional<LinkSample> LinkStatusPageController::showConnected()
{
    NDIS_802_11_SSID ssid {};
    (void)queryRecord(Adapter, OID_802_11_SSID, ssid);
    MacAddress bssid {};
    (void)queryRecord(Adapter, OID_802_11_BSSID, bssid);
    const QString connection = connectionText(NetworkName::upToZero(std::as_bytes(std::span(ssid.Ssid))).text(), bssid);
    m_ui->Status->setText(displayText(connection));

    if (!showChannel())
        return std::nullopt;

    // The station configuration is not shown here, but the query is part of the request sequence.
    VX_802_11_STA_CONFIG configuration {};
    if (queryRecord(Adapter, VX_OID_802_11_STA_CONFIG, configuration))
        cardSwitchOn = configuration.HwRadioStatus != 0;
    VX_802_11_LINK_COUNTERS counters {};
    (void)queryRecord(Adapter, VX_OID_802_11_LINK_COUNTERS, counters);

    LinkSample sample {};
    m_ui->CurrentTxRate->setText(transmitRateText(counters.TxRate));
    showThroughput(counters, sample);
    showLinkQuality(counters.ChannelQuality);
    showSignal();
    m_ui->LinkQualityState->setValue(static_cast<int>(ChannelQuality));
    m_ui->SignalStrengthState->setValue(static_cast<int>(SignalQuality));

    updateConnectStatus(connection);
    G_bCheckedProfileConnect = G_configFromProfile != 0 ? 1 : 0;

    sample.linkQualityPercent = ChannelQuality;
    sample.signalPercent = SignalQuality;
    return sample;
}

// Returns false if a failed assertion ends the tick. Otherwise an unknown frequency is shown as the first channel.
bool LinkStatusPageController::showChannel()
{
    NDIS_802_11_CONFIGURATION configuration {};
    (void)queryRecord(Adapter, OID_802_11_CONFIGURATION, configuration);
    std::int32_t channel = channelOfFrequency(configuration.DSConfig);
    if (channel == -1) {
        if (!m_assertions.handleFailureInMethod(
                "OnTimer", className, "LinkStatusPageController", unknownFrequencyLine, invalidParameter))
            return false;
        channel = ChannelFreqTable.front().channel;
    }
    m_ui->CurrentChannel->setText(channelText(channel, configuration.DSConfig));
    return true;
}

void LinkStatusPageController::showThroughput(const VX_802_11_LINK_COUNTERS& counters, LinkSample& sample)
{
    const std::uint32_t transmitKbps = throughputKbps(counters.TxCount, TxCount);
    m_ui->ThroughputTx->setText(throughputText(transmitKbps));
    TxCount = counters.TxCount;
    const std::uint32_t receiveKbps = throughputKbps(counters.RxCount, RxCount);
    m_ui->ThroughputRx->setText(throughputText(receiveKbps));
    RxCount = counters.RxCount;
    if (m_countsAreFresh) {
        sample.transmitKbps = plausibleKbps(transmitKbps);
        sample.receiveKbps = plausibleKbps(receiveKbps);
    }
}

void LinkStatusPageController::showLinkQuality(std::uint32_t rawQuality)
{
    ChannelQuality = linkQualityPercent(rawQuality, ChannelQuality);
    LinkQualityGrade = gradeText(gradeOf(ChannelQuality));
    LinkQualityPercent = percentText(ChannelQuality);
    m_ui->LinkQuality->setText(LinkQualityGrade + LinkQualityPercent);
}

void LinkStatusPageController::showSignal()
{
    std::int32_t rssiDbm = 0;
    (void)queryRecord(Adapter, OID_802_11_RSSI, rssiDbm);
    SignalQuality = signalPercent(VX7100Access::ConvertRssiToSignalQuality(rssiDbm), SignalQuality);
    SignalQualityGrade = gradeText(gradeOf(SignalQuality));
    SignalQualityPercent = m_ui->dBm->isChecked() ? dBmText(rssiDbm) : percentText(SignalQuality);
    m_ui->SignalStrength->setText(SignalQualityGrade + SignalQualityPercent);
}

void LinkStatusPageController::clearFigures()
{
    const std::array texts { m_ui->CurrentChannel, m_ui->CurrentTxRate, m_ui->ThroughputTx, m_ui->ThroughputRx,
        m_ui->LinkQuality, m_ui->SignalStrength };
    for (QLabel* text : texts)
        text->setText(QString()); // unlike clear(), does not repaint a label that is already empty
    m_ui->LinkQualityState->setValue(0);
    m_ui->SignalStrengthState->setValue(0);
}

void LinkStatusPageController::updateConnectStatus(const QString& text)
{
    if (m_siteSurveyPage != nullptr)
        m_siteSurveyPage->UpdateConnectStatus(text);
}

// A long network name wraps in a narrow window. The minimum size of the layout includes only its first line.
QSize LinkStatusPageController::minimumSizeHint() const
{
    return QWidget::minimumSizeHint() + QSize(0, (maxStatusLines - 1) * m_ui->Status->fontMetrics().lineSpacing());
}

void LinkStatusPageController::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        reserveFigureWidth();
}

// Reserves the width of the longest text, so that the level indicators stay aligned and do not move.
void LinkStatusPageController::reserveFigureWidth()
{
    const QString widestText = gradeText(LinkGrade::Normal) + dBmText(-100);
    const QFontMetrics metrics = m_ui->SignalStrength->fontMetrics();
    // The size hint of a label is slightly larger than its text.
    const int width = metrics.horizontalAdvance(widestText) + metrics.averageCharWidth();
    m_ui->LinkQuality->setMinimumWidth(width);
    m_ui->SignalStrength->setMinimumWidth(width);
}
