#include "profiles/ui/ProfilePageController.h"

#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "platform/AlertPanels.h"
#include "platform/NetworkName.h"
#include "platform/RunLoop.h"
#include "platform/ui/Images.h"
#include "platform/ui/ModalSheets.h"
#include "platform/ui/NetworkNameDelegate.h"
#include "platform/ui/RowMenu.h"
#include "platform/ui/SheetRun.h"
#include "profiles/ProfileConnection.h"
#include "profiles/ProfileRows.h"
#include "profiles/ProfileStore.h"
#include "survey/connection/ConnectionQueue.h"
#include "survey/connection/JoinProgress.h"
#include "survey/connection/ProfileData.h"
#include "ui_ProfilePage.h"

#include <chrono>

namespace {

const QString PIColumn = QStringLiteral("pi");
const QString ssidColumn = QStringLiteral("SSID");
constexpr char className[] = "ProfilePageController";
constexpr std::chrono::milliseconds timerInterval { 2000 };

std::vector<TableColumn> columns()
{
    using Kind = TableColumn::Kind;
    const auto tr = [](const char* text) { return ProfilePageController::tr(text); };
    // The edit key of the platform starts editing; a double click activates the profile.
    constexpr bool editable = true;
    return {
        { PIColumn, {}, Kind::Image, tr("The profile activated last, checked while it is connected") },
        { u"Profile"_qs, tr("Profile"), Kind::Text, tr("Name of the profile"), editable },
        { ssidColumn, tr("SSID"), Kind::Text, tr("Network name"), editable },
        { u"Channel"_qs, tr("Channel"), Kind::Text, tr("Radio channel"), editable },
        { u"AuthenType"_qs, tr("Authentication"), Kind::Text, tr("How the network admits a station"), editable },
        { u"Encryption"_qs, tr("Encryption"), Kind::Text, tr("How the network protects its data"), editable },
        { u"NetworkType"_qs, tr("Network Type"), Kind::Text, tr("Access point or ad hoc network"), editable },
    };
}

} // namespace

ProfilePageController::ProfilePageController(VX7100Access& adapter, RunLoop& runLoop, AlertPanels& alerts,
    ModalSheets& sheets, ProfileStore& store, ConnectionQueue& siteSurveyPage, QWidget* parent)
    : QWidget(parent)
    , Adapter(adapter)
    , m_runLoop(runLoop)
    , m_alerts(alerts)
    , m_sheets(sheets)
    , m_store(store)
    , SiteSurveyPage(siteSurveyPage)
    , m_ui(std::make_unique<Ui::ProfilePage>())
    , ProfileEditor(sheets, alerts, store)
{
    traceEntry(className, "init");
    m_ui->setupUi(this);
    setUpTable();
}

ProfilePageController::~ProfilePageController()
{
    m_ui->profileList->setDataSource(nullptr);
}

void ProfilePageController::setUpTable()
{
    m_ui->profileList->setTableColumns(columns());
    m_ui->profileList->setDelegateForTableColumn(ssidColumn, new NetworkNameDelegate({}, m_ui->profileList));
    m_ui->profileList->setDataSource(this);
    // Otherwise the page would be scrolled to keep the preferred height of the list, because the status line wraps.
    m_ui->profileList->setMinimumHeight(m_ui->profileList->minimumSizeHint().height());
    reloadData();
}

void ProfilePageController::awakeFromNib()
{
    traceEntry(className, "awakeFromNib");
    m_ui->profileList->setDoubleAction([this] { OnActivate(); });
    new RowMenu(*m_ui->profileList, { m_ui->Activate, m_ui->Edit, m_ui->Delete }, *m_ui->profileList);
    connect(m_ui->Add, &QPushButton::clicked, this, [this] { OnAdd(); });
    connect(m_ui->Edit, &QPushButton::clicked, this, [this] { OnEdit(); });
    connect(m_ui->Delete, &QPushButton::clicked, this, [this] { OnDelete(); });
    connect(m_ui->Activate, &QPushButton::clicked, this, [this] { OnActivate(); });
    ProfileEditor.awakeFromNib();
    m_ui->connectionStatus->reserveRoomFor(JoinProgress::longText());
    m_timer = m_runLoop.scheduleRepeatingTimer(timerInterval, [this] { OnTimer(); });
}

void ProfilePageController::OnTimer()
{
    traceEntry(className, "OnTimer");
    reloadData();
}

void ProfilePageController::reloadData()
{
    m_ui->profileList->setEmptyText(m_loaded
            ? tr("No profiles yet. Add one here, or from a network of the site survey.")
            : tr("Profiles are shown once a network card has been found."));
    m_ui->profileList->reloadData();
    m_ui->connectionStatus->announce(connectionText());
}

QString ProfilePageController::connectionText() const
{
    if (G_configFromProfile == 0)
        return {};
    if (G_bDeviceExist != 0)
        return SiteSurveyPage.joinProgress().text();
    // A profile deleted meanwhile is connected all the same if its connection was queued before.
    const bool reconnects = !recordActivate.empty() && isActiveEntry(recordActivate.front());
    return reconnects || SiteSurveyPage.hasQueuedConnection()
        ? tr("The connection starts when a wireless card is ready.")
        : QString();
}

void ProfilePageController::ClearProfileList()
{
    traceEntry(className, "ClearProfileList");
    profileData.clear();
    reloadData();
}

void ProfilePageController::RefreshProfileList()
{
    traceEntry(className, "RefreshProfileList");
    records = m_store.loadRecords();
    m_store.loadActivation(recordActivate);
    m_loaded = true;
    ClearProfileList();
    profileData = profileItems(records);
    reloadData();
    m_ui->profileList->deselectAll();
}

void ProfilePageController::OnAdd()
{
    traceEntry(className, "OnAdd");
    if (m_sheets.isRunning())
        return;
    if (G_bDeviceExist == 0) {
        m_alerts.NSRunAlertPanel(QStringLiteral("Device not exist."),
            QStringLiteral("Please insert your Network Card and then set profile."), QStringLiteral("OK"));
        return;
    }
    ProfileEditor.AddInit();
    runEditor();
}

void ProfilePageController::OnEdit()
{
    traceEntry(className, "OnEdit");
    if (m_sheets.isRunning())
        return;
    const int row = selectedRowOrAlert(QStringLiteral("Please select an item to edit."));
    if (row < 0)
        return;
    ProfileEditor.EditInit(row);
    runEditor();
}

void ProfilePageController::runEditor()
{
    // The editor saves the profile itself, so the list is reloaded after OK and Cancel.
    (void)runSheetOverPage(m_sheets, ProfileEditor, *this, { m_ui->Add, m_ui->Edit, m_ui->Delete, m_ui->Activate });
    RefreshProfileList();
}

void ProfilePageController::OnDelete()
{
    traceEntry(className, "OnDelete");
    if (m_sheets.isRunning())
        return;
    const int row = selectedRowOrAlert(QStringLiteral("Please select an item to delete."));
    if (row < 0)
        return;
    m_store.deleteRecord(records, recordActivate, row);
    RefreshProfileList();
}

int ProfilePageController::selectedRowOrAlert(const QString& message)
{
    const int row = m_ui->profileList->selectedRow();
    if (row < 0)
        m_alerts.NSRunAlertPanel(QStringLiteral("No selected item"), message, QStringLiteral("OK"));
    return row;
}

void ProfilePageController::OnActivate()
{
    traceEntry(className, "OnActivate");
    if (m_sheets.isRunning())
        return;
    const int row = m_ui->profileList->selectedRow();
    if (row < 0 || static_cast<std::size_t>(row) >= records.size())
        return;
    CurrentSelectedItem = row;
    const Profile& profile = records[static_cast<std::size_t>(row)];
    queue(profile);
    m_store.saveActivation(recordActivate, activeEntry(profile, row));
    SiteSurveyPage.resetFlag();
    G_configFromProfile = 1;
    reloadData();
}

void ProfilePageController::CheckProfileSettingForConnect()
{
    traceEntry(className, "CheckProfileSettingForConnect");
    if (recordActivate.empty() || !isActiveEntry(recordActivate.front()))
        return;
    CurrentSelectedItem = recordActivate.front().integer(ProfileKey::selected);
    queue(recordActivate.front());
    G_configFromProfile = 1;
    reloadData();
}

void ProfilePageController::queue(const Profile& profile)
{
    auto record = profileConnection(profile);
    G_bRescan = 0;
    SiteSurveyPage.SetTaskQueue(std::move(record));
}

void ProfilePageController::DisabledActivateProfile()
{
    traceEntry(className, "DisabledActivateProfile");
    if (!recordActivate.empty())
        m_store.saveActivation(recordActivate, inactiveEntry(recordActivate.front(), CurrentSelectedItem));
}

int ProfilePageController::numberOfRowsInTableView() const
{
    return static_cast<int>(profileData.size());
}

QVariant ProfilePageController::objectValueForTableColumn(QStringView identifier, int row) const
{
    if (identifier != PIColumn)
        return profileData[static_cast<std::size_t>(row)].value(identifier);
    if (row != CurrentSelectedItem)
        return {};
    return imageNamed(G_bCheckedProfileConnect != 0 ? u"CHECKMRK" : u"UNCHECKMRK");
}

QString ProfilePageController::imageTextForTableColumn(QStringView /*identifier*/, int /*row*/) const
{
    return G_bCheckedProfileConnect != 0 ? tr("Activated, connected") : tr("Activated, not connected");
}

void ProfilePageController::setObjectValue(const QVariant& value, QStringView identifier, int row)
{
    profileData[static_cast<std::size_t>(row)].setValue(identifier, value.toString());
    m_store.saveRecords(m_store.latestRecords(records));
}

QString ProfilePageController::toolTipForTableColumn(QStringView identifier, int row) const
{
    const bool known = row >= 0 && row < numberOfRowsInTableView(); // the table may still show older rows
    const QString name
        = known && identifier == ssidColumn ? profileData[static_cast<std::size_t>(row)].value(identifier) : QString();
    return name.isEmpty() ? QString() : NetworkName::fromText(name).toolTip();
}
