#include "survey/ui/SiteSurveyPageController.h"

#include "app/shared/CardPresence.h"
#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/BssidList.h"
#include "platform/AlertPanels.h"
#include "platform/ByteText.h"
#include "platform/NetworkName.h"
#include "platform/RunLoop.h"
#include "platform/ui/Images.h"
#include "platform/ui/ModalSheets.h"
#include "platform/ui/SheetRun.h"
#include "platform/ui/TableSortOrder.h"
#include "platform/ui/TableView.h"
#include "survey/AccessPointRows.h"
#include "survey/ListedNetwork.h"
#include "survey/ProfileFromScan.h"
#include "survey/SurveyTexts.h"
#include "survey/connection/ProfileData.h"
#include "survey/connection/ProfileEditorSheet.h"
#include "survey/ui/SurveyColumns.h"
#include "ui_SiteSurveyPage.h"

#include <QShortcut>

#include <span>
#include <utility>

namespace {

constexpr char className[] = "SiteSurveyPageController";
constexpr std::chrono::milliseconds timerInterval { 2000 };

bool needsKey(const PROFILE_DATA& record)
{
    return record.AuthenMode != Ndis802_11AuthModeOpen || record.EncryStatus != Ndis802_11EncryptionDisabled;
}

std::unique_ptr<Ui::SiteSurveyPage> formOf(QWidget& page)
{
    auto form = std::make_unique<Ui::SiteSurveyPage>();
    form->setupUi(&page);
    return form;
}

} // namespace

SiteSurveyPageController::SiteSurveyPageController(VX7100Access& adapter, RunLoop& runLoop,
    AssertionHandler& assertions, AlertPanels& alerts, ModalSheets& sheets, QWidget* parent)
    : QWidget(parent)
    , Adapter(adapter)
    , m_runLoop(runLoop)
    , m_assertions(assertions)
    , m_alerts(alerts)
    , m_sheets(sheets)
    , m_ui(formOf(*this))
    , m_views(*m_ui, *this, [this] { return emptyText(); })
    , m_rowMenu(*m_ui->ApList, { m_ui->Connect, m_ui->AddProfile }, *m_ui->views)
    , m_joinSheets(sheets, alerts, [this](QDialog& sheet) { return runSheet(sheet); })
{
    traceEntry(className, "init");
    connect(&m_views, &NetworkViews::networkActivated, this, &SiteSurveyPageController::OnConnect);
}

SiteSurveyPageController::~SiteSurveyPageController() = default;

QString SiteSurveyPageController::emptyText() const
{
    return emptyListText({ .card = cardPresence,
        .deviceExists = G_bDeviceExist != 0,
        .radioOn = G_bRadio != 0,
        .cardSwitchOn = cardSwitchOn,
        .radioSwitched = radioSwitched,
        .surveyed = SiteSurveyTimer != nullptr });
}

// Presses the button, and names the keys in its tooltip.
void SiteSurveyPageController::setUpKey(const QKeySequence& keys, QPushButton& button)
{
    auto* const shortcut = new QShortcut(keys, this);
    connect(shortcut, &QShortcut::activated, &button, &QPushButton::click);
    button.setToolTip(tr("%1 (%2)").arg(button.toolTip(), shortcut->key().toString(QKeySequence::NativeText)));
}

void SiteSurveyPageController::awakeFromNib()
{
    traceEntry(className, "awakeFromNib");
    m_ui->ApList->setDoubleAction([this] { OnConnect(); });
    connect(m_ui->Connect, &QPushButton::clicked, this, [this] { OnConnect(); });
    connect(m_ui->AddProfile, &QPushButton::clicked, this, [this] { OnAddProfile(); });
    connect(m_ui->Rescan, &QPushButton::clicked, this, [this] { askForRescan(); });
    setUpKey(QKeySequence::Refresh, *m_ui->Rescan);
    setUpKey(Qt::CTRL | Qt::Key_G, *m_ui->showChannels);
    m_joinSheets.awakeFromNib();
    m_ui->JoinStatus->reserveRoomFor(JoinProgress::longText());
    showJoinProgress();
}

void SiteSurveyPageController::keepSortOrderIn(WindowSettings& settings)
{
    keepSortOrder(*m_ui->ApList, settings);
}

void SiteSurveyPageController::StartSiteSurveyTimer()
{
    traceEntry(className, "StartSiteSurveyTimer");
    // A card that briefly stops answering is started again without a stop in between. Replace the timer: two timers
    // would probe the link twice as often, and only one could be stopped.
    SiteSurveyTimer = m_runLoop.scheduleRepeatingTimer(timerInterval, [this] { OnTimer(); });
    m_views.updateEmptyTexts();
}

void SiteSurveyPageController::StopSiteSurveyTimer()
{
    traceEntry(className, "StopSiteSurveyTimer");
    m_notice.clear();
    SiteSurveyTimer.reset();
    m_joinProgress.reset();
    m_views.updateEmptyTexts();
    showJoinProgress();
}

void SiteSurveyPageController::OnTimer()
{
    traceEntry(className, "OnTimer");
    if (G_bDeviceExist == 0)
        return;
    ProbeConnectStatus();
    DoTask();
    m_joinProgress.tick(m_connection.linkUp, hasQueuedConnection());
    showJoinProgress();
}

void SiteSurveyPageController::OnRescan()
{
    traceEntry(className, "OnRescan");
    if (m_sheets.isRunning())
        return;
    showNotice({});
    m_rescanProgress.begin(queueRescan());
    showJoinProgress();
}

// A second scan right after one that is still waiting would only block the window for longer.
void SiteSurveyPageController::askForRescan()
{
    if (!m_rescanProgress.isQueued())
        OnRescan();
}

void SiteSurveyPageController::RefreshAPList()
{
    RescanTimeFunc();
}

void SiteSurveyPageController::RescanTimeFunc()
{
    traceEntry(className, "RefreshAPList"); // RefreshAPList() itself writes no trace
    m_rowMenu.close(); // it belongs to a row of the old list
    clearRows();
    AccessPointRowsResult result = accessPointRows(currentBssidList(), m_assertions);
    tableData = std::move(result.rows);
    m_rescanProgress.endUnlessQueued();
    m_views.setNetworks(tableData);
    if (!result.complete)
        return;
    reloadData();
    m_ui->ApList->deselectAll();
}

void SiteSurveyPageController::ClearAPList()
{
    traceEntry(className, "ClearAPList");
    clearRows();
}

void SiteSurveyPageController::clearRows()
{
    tableData.clear();
    m_views.setNetworks({});
    reloadData();
}

void SiteSurveyPageController::reloadData()
{
    m_views.reloadData(G_bCurSelItem);
}

void SiteSurveyPageController::showJoinProgress()
{
    QString text = m_notice;
    if (text.isEmpty())
        text = m_joinProgress.text();
    if (text.isEmpty())
        text = m_rescanProgress.text(G_bDeviceExist != 0);
    m_ui->JoinStatus->announce(text);
}

void SiteSurveyPageController::OnConnect()
{
    traceEntry(className, "OnConnect");
    if (m_sheets.isRunning())
        return;
    showNotice({});
    m_connection.TimerCount = 0;
    G_bRescan = 0; // a scan that has ended is not taken up by the next tick
    m_rescanProgress.endUnlessQueued();
    const auto entry = selectedEntry();
    if (!entry)
        return;
    if (auto settings = m_joinSheets.askForSettings(*entry))
        join(settings->choice, std::move(settings->record));
}

void SiteSurveyPageController::OnAddProfile()
{
    traceEntry(className, "OnAddProfile");
    if (m_sheets.isRunning())
        return;
    showNotice({});
    const auto entry = selectedEntry();
    if (!entry || ProfileEditor == nullptr)
        return;
    const auto proposal = profileProposal(*entry, m_assertions);
    if (!proposal || !ProfileEditor->AddProfile(*proposal))
        return;
    ProfileEditor->selectFirstTab();
    (void)runSheet(ProfileEditor->ProfileEditorWindow());
    if (m_profilePage)
        m_profilePage->RefreshProfileList();
}

std::optional<BssidEntry> SiteSurveyPageController::selectedEntry()
{
    CurrentSelectedItem = m_ui->ApList->selectedRow() + 1;
    if (CurrentSelectedItem == 0) {
        m_alerts.NSRunAlertPanel(QStringLiteral("No selected item"),
            QStringLiteral("Please select an item to connect to."), QStringLiteral("OK"));
        return std::nullopt;
    }
    const std::size_t row = static_cast<std::size_t>(CurrentSelectedItem - 1);
    if (row >= tableData.size())
        return std::nullopt;
    if (const auto entry = entryAtRow(currentBssidList(), CurrentSelectedItem - 1, tableData[row]))
        return entry;
    const bool emptyList = !bssidEntryAt(currentBssidList(), 0);
    return emptyList ? std::nullopt : entryInNewList(tableData[row]);
}

// A scan has replaced the list since the rows were built. The user means the network that the row shows.
// Takes a copy, because the refresh replaces the rows. NOLINTNEXTLINE(performance-unnecessary-value-param)
std::optional<BssidEntry> SiteSurveyPageController::entryInNewList(AccessPoint displayed)
{
    RefreshAPList();
    if (const auto network = findNetwork(currentBssidList(), displayed)) {
        m_ui->ApList->selectRowNumber(network->row);
        CurrentSelectedItem = network->row + 1;
        return network->entry;
    }
    const QString name = NetworkName::fromText(displayed.ssid()).displayText();
    showNotice(name.isEmpty() ? tr("That network is no longer in range. The list is now up to date.")
                              : tr("“%1” is no longer in range. The list is now up to date.").arg(name));
    return std::nullopt;
}

void SiteSurveyPageController::showNotice(const QString& text)
{
    m_notice = text;
    showJoinProgress();
}

bool SiteSurveyPageController::runSheet(QDialog& sheet)
{
    m_rowMenu.setBlocked(true);
    const int code = runSheetOverPage(m_sheets, sheet, *this, { m_ui->Rescan, m_ui->AddProfile, m_ui->Connect });
    m_rowMenu.setBlocked(false);
    return code == sheetAccepted;
}

void SiteSurveyPageController::join(const NetworkChoice& choice, std::unique_ptr<PROFILE_DATA> record)
{
    m_connection.SsidSet = choice.ssid;
    m_connection.BssidSet = choice.network.MacAddress;
    const bool bySsid = record->ConnectByBssid == 0;
    G_bRescan = 0;
    queueAndFollow(std::move(record), choice.ssid, choice.hidden);
    m_connection.SetSsid = bySsid ? 1 : 0;
    m_connection.SetBssid = bySsid ? 0 : 1;
    G_configFromProfile = 0;
    if (m_profilePage)
        m_profilePage->DisabledActivateProfile();
}

void SiteSurveyPageController::queueAndFollow(
    std::unique_ptr<PROFILE_DATA> record, const NDIS_802_11_SSID& ssid, bool typedName)
{
    const bool adHoc = record && record->NetworkType == Ndis802_11IBSS;
    const JoinRequirements requirements { .key = record && needsKey(*record), .typedName = typedName, .adHoc = adHoc };
    m_queuedConnection = queueConnection(std::move(record));
    if (G_bDeviceExist == 0) // without a card no tick follows the progress
        return;
    m_joinProgress.begin(NetworkName::upToZero(std::as_bytes(std::span(ssid.Ssid))).displayText(), requirements);
    showJoinProgress();
}

void SiteSurveyPageController::UpdateConnectStatus(const QString& text)
{
    traceEntry(className, "UpdateConnectStatus");
    m_ui->ConnectStatus->setText(displayText(text));
}

void SiteSurveyPageController::DoTask()
{
    ::DoTask(m_connection, Adapter);
}

void SiteSurveyPageController::ProbeConnectStatus()
{
    ::ProbeConnectStatus(m_connection, Adapter, *this);
    showJoinedRow();
}

void SiteSurveyPageController::showJoinedRow()
{
    if (!m_connection.linkUp)
        m_views.forgetJoined();
    const int row = G_bCurSelItem; // NOLINT(bugprone-signed-char-misuse): negative for no row
    if (row >= 0 && row < numberOfRowsInTableView())
        m_views.showJoined(row, tableData[static_cast<std::size_t>(row)].bssid());
}

void SiteSurveyPageController::resetFlag()
{
    traceEntry(className, "resetFlag");
    m_connection.SetSsid = 0;
    m_connection.SetBssid = 0;
}

void SiteSurveyPageController::SetTaskQueue(std::unique_ptr<PROFILE_DATA> record)
{
    traceEntry(className, "SetTaskQueue");
    const NDIS_802_11_SSID ssid = record ? record->Ssid : NDIS_802_11_SSID();
    queueAndFollow(std::move(record), ssid, false);
}

int SiteSurveyPageController::numberOfRowsInTableView() const
{
    return static_cast<int>(tableData.size());
}

QVariant SiteSurveyPageController::objectValueForTableColumn(QStringView identifier, int row) const
{
    if (identifier == joinedColumn)
        return row == G_bCurSelItem ? QVariant(imageNamed(u"HANDSHAK")) : QVariant();
    return tableData[static_cast<std::size_t>(row)].value(identifier);
}

QString SiteSurveyPageController::imageTextForTableColumn(QStringView /*identifier*/, int /*row*/) const
{
    return tr("Connected");
}

void SiteSurveyPageController::setObjectValue(const QVariant& value, QStringView identifier, int row)
{
    tableData[static_cast<std::size_t>(row)].setValue(identifier, value.toString());
}

QString SiteSurveyPageController::toolTipForTableColumn(QStringView identifier, int row) const
{
    const bool known = row >= 0 && row < numberOfRowsInTableView(); // the table may still show older rows
    if (!known || identifier != u"ssid")
        return {};
    return NetworkName::fromText(tableData[static_cast<std::size_t>(row)].ssid()).toolTip();
}
