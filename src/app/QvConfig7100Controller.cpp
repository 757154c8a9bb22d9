#include "app/QvConfig7100Controller.h"

#include "app/shared/CardPresence.h"
#include "app/shared/Pages.h"
#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/VX7100Access.h"
#include "driver/records/Oids.h"
#include "platform/RunLoop.h"

#include <QTabWidget>

namespace {

constexpr char className[] = "QvConfig7100Controller";
constexpr int firstPageShown = 2;
constexpr std::chrono::milliseconds watchInterval { 2000 };

} // namespace

QvConfig7100Controller::QvConfig7100Controller(
    VX7100Access& adapter, RunLoop& runLoop, QTabWidget& tabView, const WatchedPages& pages)
    : Adapter(adapter)
    , TabView(tabView)
    , m_pages(pages)
    , m_runLoop(runLoop)
{
    traceEntry(className, "init");
}

QvConfig7100Controller::~QvConfig7100Controller() = default;

void QvConfig7100Controller::awakeFromNib()
{
    traceEntry(className, "awakeFromNib");
    TabView.setCurrentIndex(firstPageShown);
    m_watchTimer = m_runLoop.scheduleRepeatingTimer(watchInterval, [this] { OnTimer(); });
}

bool QvConfig7100Controller::IsDeviceDriverExist()
{
    traceEntry(className, "IsDeviceDriverExist");
    if (!Adapter.SearchDevice()) {
        cardPresence = CardPresence::Absent;
        trace("!!!! QvConfig7100Controller - IsDeviceDriverExist - Device is not existenet. !!!!\n");
        Adapter.CloseConnectToDevice();
        return false;
    }
    if (!Adapter.OpenConnectToDevice()) {
        cardPresence = CardPresence::Silent;
        trace("!!!! QvConfig7100Controller - IsDeviceDriverExist - Can't connect to device. !!!!\n");
        Adapter.CloseConnectToDevice();
        return false;
    }
    Adapter.CloseConnectToDevice();
    return true;
}

void QvConfig7100Controller::OnTimer()
{
    traceEntry(className, "OnTimer");
    if (G_bDialogRunning != 0)
        return;
    if (m_pages.advance) // as of the last ticks of all timers
        m_pages.advance->ShowCard();

    std::uint32_t mediaState = 0;
    const bool answered = queryRecord(Adapter, OID_GEN_MEDIA_CONNECT_STATUS, mediaState);
    reapplyProfileOnRequest();

    if (G_bDeviceExist != 0 && G_bSelCard != 0 && answered) {
        if (G_bRadio == 0 && m_pages.siteSurvey)
            m_pages.siteSurvey->ClearAPList();
        G_bDeviceRemove = 0;
        cardPresence = CardPresence::Answering;
        return;
    }
    if (!answered && m_pages.siteSurvey)
        m_pages.siteSurvey->ClearAPList();
    const bool knownCard = G_bDeviceExist != 0;
    G_bDeviceExist = IsDeviceDriverExist() ? 1 : 0;
    if (G_bDeviceExist == 0) {
        G_bDeviceRemove = 1;
        if (m_pages.siteSurvey)
            m_pages.siteSurvey->StopSiteSurveyTimer();
        if (m_pages.advance)
            m_pages.advance->ForgetCard();
        return;
    }
    if (G_bSelCard == 0) {
        G_bDeviceRemove = 1;
        return;
    }
    G_bDeviceRemove = 0;
    // A card that appeared after this tick's query had no chance to answer it.
    cardPresence = answered || !knownCard ? CardPresence::Answering : CardPresence::Silent;
    initialiseCard();
}

// The driver sets its event flag to request the active profile again. The ready flag is polled without a limit,
// because a request sent to a resetting card would be lost.
void QvConfig7100Controller::reapplyProfileOnRequest()
{
    std::uint32_t eventFlag = 0;
    (void)queryRecord(Adapter, VX_OID_802_11_EVENT_FLAG, eventFlag);
    if ((eventFlag & 0xFF) != 1)
        return;
    std::uint32_t readyFlag = 0;
    do
        (void)queryRecord(Adapter, VX_OID_802_11_READY_FLAG, readyFlag);
    while (readyFlag != 1);
    if (m_pages.profile)
        m_pages.profile->CheckProfileSettingForConnect();
}

// The pages rely on this order: the list before its timer, the profile before the advanced settings, and display-only
// information last.
void QvConfig7100Controller::initialiseCard()
{
    (void)Adapter.InitCard();
    if (m_pages.siteSurvey) {
        m_pages.siteSurvey->RefreshAPList();
        m_pages.siteSurvey->StartSiteSurveyTimer();
    }
    if (m_pages.profile) {
        m_pages.profile->RefreshProfileList();
        m_pages.profile->CheckProfileSettingForConnect();
    }
    if (m_pages.advance) {
        m_pages.advance->RadioStatus();
        m_pages.advance->OnApply();
    }
    if (m_pages.about)
        m_pages.about->GetAllInformation();
}
