#include "monitor/ui/StatisticsPageController.h"

#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/VX7100Access.h"
#include "driver/records/NdisRecords.h"
#include "driver/records/Oids.h"
#include "monitor/StatisticsFigures.h"
#include "platform/RunLoop.h"
#include "platform/ui/CaptionAlignment.h"
#include "ui_StatisticsPage.h"

#include <QEvent>

#include <chrono>

namespace {

constexpr char className[] = "StatisticsPageController";
constexpr std::chrono::milliseconds refreshInterval { 2000 };
constexpr int maxCounterLength = 20; // characters of a signed 64-bit number

} // namespace

StatisticsPageController::StatisticsPageController(VX7100Access& adapter, RunLoop& runLoop, QWidget* parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::StatisticsPage>())
    , Adapter(adapter)
    , m_runLoop(runLoop)
{
    traceEntry(className, "init");
    m_ui->setupUi(this);
    m_counters = { m_ui->FTS, m_ui->FTSWR, m_ui->FTSAR, m_ui->FFTRAAA, m_ui->RFSRC, m_ui->RFFTRC, m_ui->FRS,
        m_ui->FRWCE, m_ui->FDDTO, m_ui->DFR };
    alignColumns();
    connect(m_ui->ResetCounter, &QPushButton::clicked, this, &StatisticsPageController::OnResetCounter);
}

StatisticsPageController::~StatisticsPageController() = default;

void StatisticsPageController::awakeFromNib()
{
    traceEntry(className, "awakeFromNib");
    m_timer = m_runLoop.scheduleRepeatingTimer(refreshInterval, [this] { OnTimer(); });
}

void StatisticsPageController::OnTimer()
{
    traceEntry(className, "OnTimer");
    if (G_bDeviceExist == 0) {
        showZeros();
        return;
    }
    NDIS_802_11_STATISTICS statistics {};
    (void)queryRecord(Adapter, OID_802_11_STATISTICS, statistics);
    std::uint32_t framesReceived = 0;
    (void)queryRecord(Adapter, OID_GEN_RCV_OK, framesReceived);
    std::uint32_t framesDropped = 0;
    (void)queryRecord(Adapter, OID_GEN_RCV_NO_BUFFER, framesDropped);

    m_ui->FTS->setText(counterText(statistics.TransmittedFragmentCount));
    m_ui->FTSWR->setText(counterText(transmittedWithoutRetry(statistics)));
    m_ui->FTSAR->setText(counterText(statistics.RetryCount));
    m_ui->FFTRAAA->setText(counterText(statistics.FailedCount));
    m_ui->RFSRC->setText(counterText(statistics.RTSSuccessCount));
    m_ui->RFFTRC->setText(counterText(statistics.RTSFailureCount));
    m_ui->FRS->setText(generalCounterText(framesReceived));
    m_ui->FRWCE->setText(counterText(statistics.FCSErrorCount));
    m_ui->FDDTO->setText(generalCounterText(framesDropped));
    m_ui->DFR->setText(counterText(statistics.FrameDuplicateCount));
}

void StatisticsPageController::OnResetCounter()
{
    traceEntry(className, "OnResetCounter");
    showZeros();
    std::uint32_t returned = 0;
    // A set sent as a query: the driver accepts the reset only in this form.
    (void)Adapter.OidQueryInformation(VX_OID_802_11_RESET_COUNTERS | oidSetFlag, nullptr, 0, &returned);
}

void StatisticsPageController::showZeros()
{
    for (QLabel* counter : m_counters)
        counter->setText(QStringLiteral("0"));
}

void StatisticsPageController::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        alignColumns();
}

void StatisticsPageController::alignColumns()
{
    alignCaptions(*this);
    for (QLabel* counter : m_counters)
        counter->setMinimumWidth(counter->fontMetrics().horizontalAdvance(QString(maxCounterLength, u'0')));
}
