#include "advanced/ui/AdvancePageController.h"

#include "advanced/AdvancedRequests.h"
#include "advanced/RateRules.h"
#include "advanced/SettingsFile.h"
#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/VX7100Access.h"
#include "platform/AlertPanels.h"
#include "platform/AssertionHandler.h"
#include "platform/ui/Images.h"
#include "ui_AdvancePage.h"

namespace {

constexpr char className[] = "AdvancePageController";
constexpr int unknownModeLine = 465;

} // namespace

AdvancePageController::AdvancePageController(
    VX7100Access& adapter, AlertPanels& alerts, AssertionHandler& assertions, const QString& homePath, QWidget* parent)
    : QWidget(parent)
    , Adapter(adapter)
    , m_alerts(alerts)
    , m_assertions(assertions)
    , m_ui(std::make_unique<Ui::AdvancePage>())
    , ProfileSettingFile(advancedSettingsPath(homePath))
{
    traceEntry(className, "init");
    m_ui->setupUi(this);
    m_ui->RadioSwitchPic->setImage(imageNamed(u"RADIOON"));
    connectControls();
}

AdvancePageController::~AdvancePageController() = default;

// Uses signals that only user actions emit, not changes made by the page. Selecting the displayed item again also counts,
// because the displayed item may differ from the stored value.
void AdvancePageController::connectControls()
{
    connect(m_ui->WirelessMode, &QComboBox::activated, this, [this] { OnSelChangeWirelessMode(); });
    connect(m_ui->TXrate, &QComboBox::activated, this, [this] { OnTxRate(); });
    connect(m_ui->BGprotection, &QComboBox::activated, this, [this] { OnSelBGProtection(); });
    connect(m_ui->EnableTXburst, &QCheckBox::clicked, this, [this] { OnTxBurst(); });
    connect(m_ui->AdhocModeUseOFDMrate, &QCheckBox::clicked, this, [this] { OnAdHocUseOFDM(); });
    connect(m_ui->Apply, &QPushButton::clicked, this, [this] { OnApply(); });
    connect(m_ui->Reset, &QPushButton::clicked, this, [this] { OnReset(); });
    connect(m_ui->Radio, &QPushButton::clicked, this, [this] { OnRadioSwitch(); });
}

void AdvancePageController::awakeFromNib()
{
    traceEntry(className, "awakeFromNib");
    records = readSettingsFile(ProfileSettingFile);
    readFirstRecord();
    showSettings();
}

void AdvancePageController::OnReset()
{
    traceEntry(className, "OnReset");
    readFirstRecord();
    showSettings();
}

void AdvancePageController::readFirstRecord()
{
    if (const auto record = firstRecord(records))
        readSettings(*record, m_settings);
}

void AdvancePageController::showSettings()
{
    m_ui->WirelessMode->selectItemAtIndex(m_settings.nWirelessMode);
    if (!rebuildRates())
        return;
    m_ui->BGprotection->selectItemAtIndex(m_settings.nBGProtection);
    m_ui->TXrate->selectItemAtIndex(m_settings.nTxRate);
    m_ui->EnableTXburst->setChecked(m_settings.bTXBurst);
    m_ui->AdhocModeUseOFDMrate->setChecked(m_settings.bAdhocOfdm);
    DisabledButton();
}

void AdvancePageController::OnSelChangeWirelessMode()
{
    (void)rebuildRates();
}

// Updates the other controls for the selected wireless mode; only Apply stores the mode itself. Returns false if a failed
// assertion ends the operation.
bool AdvancePageController::rebuildRates()
{
    traceEntry(className, "OnSelChangeWirelessMode");
    if (!bInitDlg) {
        m_alerts.NSRunAlertPanel(
            QStringLiteral("If there is a channel conflict in profile, then it will change to default channel."),
            QString(), QStringLiteral("OK"));
        return true;
    }
    m_ui->TXrate->removeAllItems();
    const std::int32_t mode = m_ui->WirelessMode->indexOfSelectedItem();
    if (!isKnownMode(mode)
        && !m_assertions.handleFailureInMethod(
            "OnSelChangeWirelessMode", className, className, unknownModeLine, invalidParameter)) {
        return false;
    }
    for (const QString& item : transmitRateItems(mode))
        m_ui->TXrate->addItemWithObjectValue(item);
    // A disabled list keeps its displayed item; only the setting becomes 0.
    m_ui->BGprotection->setEnabled(modeHasProtection(mode));
    if (!modeHasProtection(mode))
        m_settings.nBGProtection = 0;
    m_settings.nTxRate = transmitRateIndexFor(mode, m_settings.nTxRate);
    m_ui->TXrate->selectItemAtIndex(m_settings.nTxRate);
    EnableButton();
    return true;
}

void AdvancePageController::OnTxRate()
{
    traceEntry(className, "OnTxRate");
    m_settings.nTxRate = m_ui->TXrate->indexOfSelectedItem();
    EnableButton();
}

void AdvancePageController::OnSelBGProtection()
{
    traceEntry(className, "OnSelBGProtection");
    m_settings.nBGProtection = m_ui->BGprotection->indexOfSelectedItem();
    EnableButton();
}

void AdvancePageController::OnTxBurst()
{
    traceEntry(className, "OnTxBurst");
    m_settings.bTXBurst = m_ui->EnableTXburst->isChecked();
    EnableButton();
}

void AdvancePageController::OnAdHocUseOFDM()
{
    traceEntry(className, "OnAdHocUseOFDM");
    m_settings.bAdhocOfdm = m_ui->AdhocModeUseOFDMrate->isChecked();
    EnableButton();
}

void AdvancePageController::OnApply()
{
    traceEntry(className, "OnApply");
    applySelections(m_ui->TXrate->indexOfSelectedItem(), m_ui->WirelessMode->indexOfSelectedItem(), m_settings);
    sendWirelessMode(Adapter, m_settings);
    sendStationConfiguration(Adapter, m_settings);
    if (!sendDesiredRates(Adapter, m_settings, m_assertions))
        return;
    setFirstRecord(records, settingsRecord(m_settings));
    (void)writeSettingsFile(ProfileSettingFile, records);
    DisabledButton();
}

void AdvancePageController::EnableButton()
{
    traceEntry(className, "EnableButton");
    m_ui->Apply->setEnabled(true);
    m_ui->Reset->setEnabled(true);
}

void AdvancePageController::DisabledButton()
{
    traceEntry(className, "DisabledButton");
    m_ui->Apply->setEnabled(false);
    m_ui->Reset->setEnabled(false);
}

// The button names the action, the picture shows the state.
void AdvancePageController::RadioStatus()
{
    traceEntry(className, "RadioStatus");
    const bool isOn = G_bRadio != 0;
    m_ui->Radio->setText(isOn ? QStringLiteral("Radio Off") : QStringLiteral("Radio On"));
    m_ui->RadioSwitchPic->setImage(isOn ? imageNamed(u"RADIOON") : imageNamed(u"RADIOOFF"));
    m_ui->RadioSwitchPic->setAccessibleName(isOn ? tr("The radio is on") : tr("The radio is off"));
    m_ui->radioState->setText(m_ui->RadioSwitchPic->accessibleName());
    if (G_configFromProfile != 0)
        G_bCheckedProfileConnect = isOn ? 1 : 0;
}

void AdvancePageController::OnRadioSwitch()
{
    traceEntry(className, "OnRadioSwitch");
    G_bRadio = G_bRadio == 0 ? 1 : 0;
    RadioStatus();
    sendRadio(Adapter);
    Adapter.RescanBssidList();
    Adapter.QueryBssidList();
    G_bRescan = 1;
}
